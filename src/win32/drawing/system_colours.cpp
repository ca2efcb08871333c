// The system's colours. They belong to the layer's look, not to the desktop.
#include "win32/drawing/system_colours.h"

#include "win32/win32_windows.h"

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
