// What frames, menus and controls are made of: flat fills, edges, colours that can be told apart.
#include "win32/drawing/relief.h"

#include "win32/drawing/system_colours.h"
#include "win32/pixels/rectangles.h"
#include "win32/pixels/scale.h"
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
  const int32_t line = kThinLine;
  FillPixels(context, {r.left, r.top, r.right - line, r.top + line}, leftTop);
  FillPixels(context, {r.left, r.top + line, r.left + line, r.bottom - line}, leftTop);
  FillPixels(context, {r.left, r.bottom - line, r.right, r.bottom}, rightBottom);
  FillPixels(context, {r.right - line, r.top, r.right, r.bottom - line}, rightBottom);
}

// Every other square, as wide as a thin line, of the rectangle.
void FillDots(HDC context, const PixelRect& r, COLORREF colour) {
  const int32_t side = kThinLine;
  for (int32_t y = r.top; y < r.bottom; y += side) {
    for (int32_t x = r.left; x < r.right; x += side) {
      if ((x / side + y / side) % 2 == 0) FillPixels(context, Intersect(r, {x, y, x + side, y + side}), colour);
    }
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
  DrawEdgeIn(context, Shrunk(r, kThinLine), pressed ? innerDark : innerLight, pressed ? innerLight : innerDark);
}

void DrawDottedRect(HDC context, const PixelRect& r, COLORREF ground) {
  const COLORREF ink = Legible(context, RGB(0, 0, 0), ground);
  const int32_t line = kThinLine;
  FillDots(context, {r.left, r.top, r.right, r.top + line}, ink);
  FillDots(context, {r.left, r.bottom - line, r.right, r.bottom}, ink);
  FillDots(context, {r.left, r.top + line, r.left + line, r.bottom - line}, ink);
  FillDots(context, {r.right - line, r.top + line, r.right, r.bottom - line}, ink);
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
