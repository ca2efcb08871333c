// Making and freeing Offscreens; all that exist stand in a list, for the teardown.
#include "platform/bitmaps/offscreens.h"

#include "core/list.h"
#include "core/memory.h"
#include "platform/bitmaps/screen_colours.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/records/colour.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

constexpr Colour kBlack = {0, 0, 0}, kWhite = {0xFFFF, 0xFFFF, 0xFFFF};

List* offscreens; // all that exist

// What the two colours of a monochrome bitmap are.
bool IsBlackAndWhite(const ColourList& list) {
  if (list.count != 2) return false;
  const Colour *a = &list.colours[0], *b = &list.colours[1];
  return (SameColour(*a, kBlack) && SameColour(*b, kWhite)) || (SameColour(*a, kWhite) && SameColour(*b, kBlack));
}

// A record for the bitmap, or null when there is no bitmap.
Offscreen* AddOffscreen(int16_t width, int16_t height, HBITMAP bitmap) {
  if (!bitmap) return nullptr;
  auto* offscreen = static_cast<Offscreen*>(MemAlloc(sizeof(Offscreen)));
  if (!offscreen) {
    ::DeleteObject(bitmap);
    return nullptr;
  }
  *offscreen = {{kPortOffscreen}, width, height, bitmap};
  ListAppend(offscreens, ToListValue(offscreen));
  return offscreen;
}

// A bitmap in the display's format.
HBITMAP ScreenBitmap(int16_t width, int16_t height, uint32_t colourCount) {
  const DisplayCaps& caps = TheDisplayCaps();
  const BITMAPINFOHEADER header = {
      sizeof header, width, height, caps.screenPlanes, caps.screenPlaneBits, BI_RGB, 0, 2500, 2500, colourCount, 0};
  const HBITMAP bitmap = ::CreateDIBitmap(ScreenContext(), &header, 0, nullptr, nullptr, DIB_RGB_COLORS);
  return bitmap ? bitmap : ::CreateCompatibleBitmap(ScreenContext(), width, height);
}

Offscreen* NewMonochromeOffscreen(int16_t width, int16_t height) {
  return AddOffscreen(width, height, ::CreateBitmap(width, height, 1, 1, nullptr));
}

} // namespace

void OffscreensStartUp() {
  offscreens = ListNew();
}

void OffscreensShutDown() {
  while (ListFirst(offscreens)) FreeOffscreen(FromListValue<Offscreen>(ListFirst(offscreens)));
  ListDelete(offscreens);
  offscreens = nullptr;
}

Offscreen* NewOffscreen(int16_t width, int16_t height, bool compatible) {
  if (!compatible) return NewMonochromeOffscreen(width, height);
  const PixelSpec spec = ScreenPixelSpec();
  Offscreen* offscreen = IsBlackAndWhite(spec.colours)
                             ? NewMonochromeOffscreen(width, height)
                             : AddOffscreen(width, height, ScreenBitmap(width, height, spec.colours.count));
  MemFree(spec.colours.colours);
  return offscreen;
}

void FreeOffscreen(Offscreen* offscreen) {
  if (CurrentPort() == &offscreen->port) SetPortMain(nullptr);
  ::DeleteObject(offscreen->bitmap);
  ListFindRemove(offscreens, ToListValue(offscreen), ListSameValue);
  MemFree(offscreen);
}

Rect OffscreenBounds(const Offscreen* offscreen) {
  return {0, 0, offscreen->height, offscreen->width};
}

} // namespace framereel
