// What frames, menus and controls are made of: flat fills, edges, colours that can be told apart.
#include "win32/drawing/relief.h"

#include "win32/drawing/system_colours.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"

namespace framereel {

void FillPixels(HDC context, const PixelRect& r, COLORREF colour) {
  HBRUSH brush = IsEmpty(r) ? nullptr : ::CreateSolidBrush(colour);
  const RECT rect = RectOf(r);
  ::FillRect(context, &rect, brush);
  ::DeleteObject(brush);
}

namespace {

void DrawEdgeIn(HDC context, const PixelRect& r, COLORREF leftTop, COLORREF rightBottom) {
  FillPixels(context, {r.left, r.top, r.right - 1, r.top + 1}, leftTop);
  FillPixels(context, {r.left, r.top + 1, r.left + 1, r.bottom - 1}, leftTop);
  FillPixels(context, {r.left, r.bottom - 1, r.right, r.bottom}, rightBottom);
  FillPixels(context, {r.right - 1, r.top, r.right, r.bottom - 1}, rightBottom);
}

// Every other pixel of the rectangle.
void FillDots(HDC context, const PixelRect& r, COLORREF colour) {
  for (int32_t y = r.top; y < r.bottom; ++y) {
    for (int32_t x = r.left + ((r.left + y) & 1); x < r.right; x += 2) ::SetPixel(context, x, y, colour);
  }
}

} // namespace

void DrawEdge(HDC context, const PixelRect& r, int leftTop, int rightBottom) {
  DrawEdgeIn(context, r, ::GetSysColor(leftTop), ::GetSysColor(rightBottom));
}

void DrawRaised(HDC context, const PixelRect& r, bool pressed) {
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
  const COLORREF light = Legible(context, ::GetSysColor(kColourButtonHighlight), face);
  const COLORREF dark = ::GetSysColor(kColourButtonDarkShadow);
  const COLORREF innerLight = ::GetSysColor(COLOR_3DLIGHT);
  const COLORREF innerDark = Legible(context, ::GetSysColor(COLOR_BTNSHADOW), face);
  FillPixels(context, r, face);
  DrawEdgeIn(context, r, pressed ? dark : light, pressed ? light : dark);
  DrawEdgeIn(context, Shrunk(r, 1), pressed ? innerDark : innerLight, pressed ? innerLight : innerDark);
}

void DrawDottedRect(HDC context, const PixelRect& r, COLORREF ground) {
  const COLORREF ink = Legible(context, RGB(0, 0, 0), ground);
  FillDots(context, {r.left, r.top, r.right, r.top + 1}, ink);
  FillDots(context, {r.left, r.bottom - 1, r.right, r.bottom}, ink);
  FillDots(context, {r.left, r.top + 1, r.left + 1, r.bottom - 1}, ink);
  FillDots(context, {r.right - 1, r.top + 1, r.right, r.bottom - 1}, ink);
}

int32_t TextWidth(HDC context, std::string_view text) {
  SIZE size = {0, 0};
  ::GetTextExtentPointA(context, text.data(), int(text.size()), &size);
  return size.cx;
}

int32_t LineHeight(HDC context) {
  TEXTMETRICA metrics = {};
  ::GetTextMetricsA(context, &metrics);
  return metrics.tmHeight;
}

void DrawLabel(HDC context, int32_t x, int32_t y, std::string_view text, bool greyed, COLORREF ground, COLORREF ink) {
  const COLORREF grey = ::GetSysColor(COLOR_GRAYTEXT);
  const COLORREF shown = ::GetNearestColor(context, grey);
  const bool hasGrey = shown != ::GetNearestColor(context, ground) && shown != ::GetNearestColor(context, ink);
  ::SetTextColor(context, greyed && hasGrey ? grey : ink);
  ::TextOutA(context, x, y, text.data(), int(text.size()));
  const PixelRect cell = {x, y, x + TextWidth(context, text), y + LineHeight(context)};
  if (greyed && !hasGrey) FillDots(context, cell, ground);
}

COLORREF Legible(HDC context, COLORREF colour, COLORREF ground) {
  const COLORREF under = ::GetNearestColor(context, ground);
  if (::GetNearestColor(context, colour) != under) return colour;
  return under == RGB(0, 0, 0) ? RGB(255, 255, 255) : RGB(0, 0, 0);
}

} // namespace framereel
