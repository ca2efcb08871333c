// The frame and the ground of containers.
#include "toolkit/views/container_look.h"

#include "core/rects.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "toolkit/views/view.h"
#include "win32/pixels/scale.h"

namespace framereel {

ContainerLook NewContainerLook() {
  return {true, false, PrimaryColour(7)};
}

void DrawContainerLook(const View* view, const ContainerLook& look) {
  Rect r = ViewBounds(view);
  if (look.framed) {
    UseDrawState(DrawStateDefault());
    FrameRect(r);
    r = RectGrow(r, -kThinLine, -kThinLine);
  }
  if (!look.filled) return;
  UseDrawState(DrawStateFill());
  SetForeColour(TheDisplayCaps().screenHasColour ? look.background : PrimaryColour(7));
  FillRect(r);
}

} // namespace framereel
