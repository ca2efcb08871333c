// What the system tells of itself: its kind, its colours, its task bar; and its bell.
#include <algorithm>

#include "win32/drawing/system_colours.h"
#include "win32/windows/window.h"

namespace framereel {
namespace {

struct SystemColour {
  int index;
  COLORREF colour;
};
// All of them are among the sixteen standard colours or greys near to one, so that they stay apart on every screen.
constexpr SystemColour kColours[] = {
    {COLOR_ACTIVECAPTION, RGB(0, 0, 128)},
    {kColourInactiveCaption, RGB(128, 128, 128)},
    {COLOR_MENU, RGB(192, 192, 192)},
    {COLOR_WINDOW, RGB(255, 255, 255)},
    {COLOR_WINDOWFRAME, RGB(0, 0, 0)},
    {kColourMenuText, RGB(0, 0, 0)},
    {kColourCaptionText, RGB(255, 255, 255)},
    {COLOR_APPWORKSPACE, RGB(128, 128, 128)},
    {kColourHighlight, RGB(0, 0, 128)},
    {kColourHighlightText, RGB(255, 255, 255)},
    {COLOR_BTNFACE, RGB(192, 192, 192)},
    {COLOR_BTNSHADOW, RGB(128, 128, 128)},
    {COLOR_GRAYTEXT, RGB(128, 128, 128)},
    {kColourButtonText, RGB(0, 0, 0)},
    {kColourInactiveCaptionText, RGB(192, 192, 192)},
    {kColourButtonHighlight, RGB(255, 255, 255)},
    {kColourButtonDarkShadow, RGB(0, 0, 0)},
    {COLOR_3DLIGHT, RGB(223, 223, 223)},
};

} // namespace
} // namespace framereel

using namespace framereel;

DWORD GetSysColor(int which) {
  for (const SystemColour& known : kColours) {
    if (known.index == which) return known.colour;
  }
  return RGB(0, 0, 0);
}

DWORD GetVersion() {
  return 5;
}

BOOL MessageBeep(UINT) {
  DisplayBeep();
  return TRUE;
}

uintptr_t SHAppBarMessage(DWORD message, APPBARDATA* data) {
  if (message != ABM_GETTASKBARPOS || !data) return FALSE;
  const ScreenFacts screen = DisplayScreen();
  const PixelRect free = DisplayUsableArea();
  const int32_t left = free.left, top = free.top, right = screen.width - free.right,
                bottom = screen.height - free.bottom;
  const int32_t thickest = std::max({left, top, right, bottom});
  if (thickest <= 0) return FALSE;
  PixelRect bar = {0, 0, screen.width, screen.height};
  if (thickest == bottom) {
    bar.top = free.bottom;
  } else if (thickest == top) {
    bar.bottom = free.top;
  } else if (thickest == left) {
    bar.right = free.left;
  } else {
    bar.left = free.right;
  }
  data->rc = RectOf(bar);
  return TRUE;
}
