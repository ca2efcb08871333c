// Reading what the display is.
#include "platform/display/display_caps.h"

#include "core/notices.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/shared_contexts.h"
#include "win32/pixels/display.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

DisplayCaps caps; // a depth of 0: not read yet

} // namespace

void ReadDisplayCaps() {
  const HDC screen = ScreenContext();
  const int numColours = ::GetDeviceCaps(screen, NUMCOLORS);
  caps.screenPlanes = uint16_t(::GetDeviceCaps(screen, PLANES));
  caps.screenPlaneBits = uint16_t(::GetDeviceCaps(screen, BITSPIXEL));
  caps.screenWidth = int16_t(::GetDeviceCaps(screen, HORZRES));
  caps.screenHeight = int16_t(::GetDeviceCaps(screen, VERTRES));

  auto depth = uint16_t(caps.screenPlanes * caps.screenPlaneBits);
  // A true-colour device tells -1 colours, which is below 3, but its depth is not below 2.
  const bool colour = numColours >= 3 || depth >= 2;
  if (!colour) {
    depth = 1;
  } else if (numColours == 16) {
    depth = 4;
  }
  if (depth == caps.screenDepth && colour == caps.screenHasColour) return;
  caps.screenDepth = depth;
  caps.screenHasColour = colour;
  SetPortMain(nullptr); // a listener may draw
  NotifySend(nullptr, kChangeDisplay);
}

void ForgetDisplayCaps() {
  caps = {};
}

const DisplayCaps& TheDisplayCaps() {
  return caps;
}

bool ScreenIsLost() {
  return DisplayIsLost();
}

} // namespace framereel
