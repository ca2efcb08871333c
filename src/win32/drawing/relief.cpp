// What frames, menus and controls are made of: flat fills, edges, colours that can be told apart.
#include "win32/drawing/relief.h"

#include "win32/pixels/rectangles.h"

namespace framereel {

void FillPixels(HDC context, const PixelRect& r, COLORREF colour) {
  HBRUSH brush = IsEmpty(r) ? nullptr : ::CreateSolidBrush(colour);
  const RECT rect = RectOf(r);
  ::FillRect(context, &rect, brush);
  ::DeleteObject(brush);
}

void DrawEdge(HDC context, const PixelRect& r, int leftTop, int rightBottom) {
  const COLORREF light = ::GetSysColor(leftTop), dark = ::GetSysColor(rightBottom);
  FillPixels(context, {r.left, r.top, r.right - 1, r.top + 1}, light);
  FillPixels(context, {r.left, r.top + 1, r.left + 1, r.bottom - 1}, light);
  FillPixels(context, {r.left, r.bottom - 1, r.right, r.bottom}, dark);
  FillPixels(context, {r.right - 1, r.top, r.right, r.bottom - 1}, dark);
}

COLORREF Legible(HDC context, COLORREF colour, COLORREF ground) {
  const COLORREF under = ::GetNearestColor(context, ground);
  if (::GetNearestColor(context, colour) != under) return colour;
  return under == RGB(0, 0, 0) ? RGB(255, 255, 255) : RGB(0, 0, 0);
}

} // namespace framereel
