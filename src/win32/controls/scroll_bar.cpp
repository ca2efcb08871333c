// The scroll bar at the right of a control. Between its two arrows lies the shaft, and in it the thumb, as long in
// proportion as what is seen.
#include "win32/controls/scroll_bar.h"

#include <algorithm>

#include "win32/drawing/relief.h"
#include "win32/drawing/system_colours.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr Scaled kShortestThumb{12};
constexpr Scaled kArrowRows{4};

int32_t ArrowHeight(const ScrollBar& bar) {
  return std::min<int32_t>(kScrollBarWidth, HeightOf(bar.place) / 2);
}

PixelRect ArrowPlace(const ScrollBar& bar, bool up) {
  const PixelRect& r = bar.place;
  const int32_t height = ArrowHeight(bar);
  return up ? PixelRect{r.left, r.top, r.right, r.top + height}
            : PixelRect{r.left, r.bottom - height, r.right, r.bottom};
}

PixelRect ShaftPlace(const ScrollBar& bar) {
  const int32_t height = ArrowHeight(bar);
  return {bar.place.left, bar.place.top + height, bar.place.right, bar.place.bottom - height};
}

int32_t ThumbHeight(const ScrollBar& bar) {
  const int32_t shaft = HeightOf(ShaftPlace(bar));
  const auto share = int32_t(int64_t{shaft} * bar.seen / std::max(1, bar.total));
  return shaft < kShortestThumb ? 0 : std::max<int32_t>(kShortestThumb, share);
}

void DrawArrow(HDC context, const PixelRect& box, bool up, bool pressed) {
  DrawRaised(context, box, pressed);
  const int32_t shift = pressed ? PictureScale() : 0;
  const int32_t middle = (box.left + box.right) / 2 + shift;
  const int32_t top = (box.top + box.bottom - kArrowRows) / 2 + shift;
  for (int32_t row = 0, rows = kArrowRows; row < rows; ++row) {
    const int32_t half = up ? row : rows - 1 - row;
    FillPixels(context, {middle - 1 - half, top + row, middle + half, top + row + 1}, ::GetSysColor(kColourButtonText));
  }
}

} // namespace

PixelRect ThumbPlace(const ScrollBar& bar) {
  const PixelRect shaft = ShaftPlace(bar);
  const int32_t height = ThumbHeight(bar), most = std::max(1, bar.total - bar.seen);
  const auto down = int32_t(int64_t{HeightOf(shaft) - height} * std::min(bar.top, most) / most);
  return {shaft.left, shaft.top + down, shaft.right, shaft.top + down + height};
}

int32_t TopForThumb(const ScrollBar& bar, int32_t thumbTop) {
  const PixelRect shaft = ShaftPlace(bar);
  const int32_t room = HeightOf(shaft) - ThumbHeight(bar), most = bar.total - bar.seen;
  if (room <= 0) return bar.top;
  const int64_t down = std::clamp(thumbTop - shaft.top, 0, room);
  return int32_t((down * most + room / 2) / room);
}

ScrollPart ScrollPartAt(const ScrollBar& bar, int32_t x, int32_t y) {
  if (!Holds(bar.place, x, y)) return ScrollPart::kNone;
  if (Holds(ArrowPlace(bar, true), x, y)) return ScrollPart::kUp;
  if (Holds(ArrowPlace(bar, false), x, y)) return ScrollPart::kDown;
  const PixelRect thumb = ThumbPlace(bar);
  return y < thumb.top ? ScrollPart::kPageUp : y < thumb.bottom ? ScrollPart::kThumb : ScrollPart::kPageDown;
}

void DrawScrollBar(HDC context, const ScrollBar& bar, ScrollPart pressed) {
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
  FillPixels(context, bar.place, ::GetSysColor(COLOR_3DLIGHT));
  // On screens with few colours the shaft would be as white as the list beside it.
  const PixelRect line = {bar.place.left, bar.place.top, bar.place.left + kThinLine, bar.place.bottom};
  FillPixels(context, line, Legible(context, ::GetSysColor(COLOR_BTNSHADOW), face));
  DrawArrow(context, ArrowPlace(bar, true), true, pressed == ScrollPart::kUp);
  DrawArrow(context, ArrowPlace(bar, false), false, pressed == ScrollPart::kDown);
  const PixelRect thumb = ThumbPlace(bar);
  if (!IsEmpty(thumb)) DrawRaised(context, thumb, false);
}

} // namespace framereel
