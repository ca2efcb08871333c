// The sunken edge of check boxes and edit fields: dark at the left and top, light at the right and bottom.
#include "toolkit/controls/sunken_edge.h"

#include "core/rects.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

void DrawEdgeLines(const Rect& r, const Colour& leftTop, const Colour& rightBottom) {
  const auto right = int16_t(r.right - 1), bottom = int16_t(r.bottom - 1);
  const Point dark[] = {{int16_t(bottom - 1), r.left}, {r.top, r.left}, {r.top, int16_t(right - 1)}};
  const Point light[] = {{bottom, r.left}, {bottom, right}, {r.top, right}};
  SetForeColour(leftTop);
  DrawPolyline(3, dark);
  SetForeColour(rightBottom);
  DrawPolyline(3, light);
}

} // namespace

void DrawSunkenEdge(const Rect& r) {
  UseDrawState(DrawStateFill());
  const int32_t line = kThinLine;
  for (int32_t i = 0; i < line; ++i) {
    DrawEdgeLines(RectGrow(r, -i, -i), ColourShadow(), PrimaryColour(7));
    DrawEdgeLines(RectGrow(r, -line - i, -line - i), PrimaryColour(0), ColourLight());
  }
}

} // namespace framereel
