// A context's colours and modes.
#include <utility>

#include "win32/drawing/gdi.h"
#include "win32/win32_drawing.h"

int SetROP2(HDC context, int mode) {
  if (!context || (mode != R2_COPYPEN && mode != R2_NOTXORPEN)) return 0;
  return std::exchange(context->rop, mode);
}

int GetROP2(HDC context) {
  return context ? context->rop : 0;
}

COLORREF SetTextColor(HDC context, COLORREF colour) {
  return context ? std::exchange(context->textColour, colour) : CLR_INVALID;
}

COLORREF SetBkColor(HDC context, COLORREF colour) {
  return context ? std::exchange(context->backColour, colour) : CLR_INVALID;
}

int SetBkMode(HDC context, int mode) {
  return context && mode == TRANSPARENT ? TRANSPARENT : 0;
}

UINT SetTextAlign(HDC context, UINT mode) {
  return context ? std::exchange(context->textAlign, mode) : 0;
}

int SetTextCharacterExtra(HDC context, int extra) {
  return context ? std::exchange(context->characterExtra, extra) : 0;
}
