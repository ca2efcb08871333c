// Asking the device for its colours: a palette, the sixteen standard ones, or what is nearest to an even spread.
#include "platform/bitmaps/screen_colours.h"

#include <algorithm>

#include "core/memory.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/shared_contexts.h"
#include "resources/standard_colours.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

Colour Widen(uint8_t red, uint8_t green, uint8_t blue) {
  return {uint16_t(red * 257), uint16_t(green * 257), uint16_t(blue * 257)};
}

void AllocateColours(ColourList* list, uint32_t count) {
  *list = {0, static_cast<Colour*>(MemAlloc(count * sizeof(Colour)))};
}

void Add(ColourList* list, const Colour& colour) {
  if (list->colours) list->colours[list->count++] = colour;
}

void AddOnce(ColourList* list, const Colour& colour) {
  for (uint32_t i = 0; i < list->count; ++i) {
    if (SameColour(list->colours[i], colour)) return;
  }
  Add(list, colour);
}

void ListPalette(ColourList* out) {
  PALETTEENTRY entries[256] = {};
  const auto count = uint32_t(::GetDeviceCaps(ScreenContext(), SIZEPALETTE));
  ::GetSystemPaletteEntries(ScreenContext(), 0, count, entries);
  AllocateColours(out, count);
  for (uint32_t i = 0; i < count; ++i) {
    Add(out, Widen(entries[i].peRed, entries[i].peGreen, entries[i].peBlue));
  }
}

void ListStandard(ColourList* out) {
  AllocateColours(out, kStandardColourCount);
  for (const PaletteColour& c : kStandardColours) Add(out, Widen(c.red, c.green, c.blue));
}

// Asks for an even spread of colours and keeps what the screen has for them, up to the number that it tells: -1 where
// it has more than it could count.
void ListNearest(ColourList* out) {
  constexpr uint32_t kSpread = 512;
  const auto most = uint32_t(::GetDeviceCaps(ScreenContext(), NUMCOLORS));
  AllocateColours(out, std::min(most, kSpread));
  for (uint32_t i = 0; i < kSpread && out->count < most; ++i) {
    const auto level = [i](int shift) { return BYTE((i >> shift & 7) * 255 / 7); };
    const COLORREF nearest = ::GetNearestColor(ScreenContext(), RGB(level(6), level(3), level(0)));
    AddOnce(out, Widen(GetRValue(nearest), GetGValue(nearest), GetBValue(nearest)));
  }
}

} // namespace

uint16_t ScreenDepth() {
  return TheDisplayCaps().screenDepth;
}

PixelSpec ScreenPixelSpec() {
  if (ScreenDepth() >= 16) return {2, {0, nullptr}, ScreenDepth()};
  PixelSpec spec = {1, {0, nullptr}, ScreenDepth()};
  ScreenColours(&spec.colours);
  return spec;
}

void ScreenColours(ColourList* out) {
  if (::GetDeviceCaps(ScreenContext(), RASTERCAPS) & RC_PALETTE) return ListPalette(out);
  if (ScreenDepth() == 4) return ListStandard(out);
  ListNearest(out);
}

} // namespace framereel
