// A menu: its items, and the popup in which one is chosen. Internal to the layer.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "win32/pixels/surface.h"
#include "win32/win32_windows.h"

namespace framereel {

struct MenuItem {
  UINT id, flags; // MF_...
  std::string text;
};

} // namespace framereel

struct Win32Menu {
  std::vector<framereel::MenuItem> items;
};

namespace framereel {

// Shows the menu below the strip of the screen, or above it where there is no room below, and runs until one item is
// chosen or none will be. Answers the item's id, or 0. With `byKeyboard` the first item is marked. The owner gets
// WM_ENTERIDLE while nothing happens.
UINT ChooseFromMenu(HWND owner, const Win32Menu& menu, const PixelRect& strip, bool byKeyboard);

std::unique_ptr<Win32Menu> NewSystemMenu();

// The system menu of the window: what can be done with it now is not grey. Runs it and posts the choice.
void RunSystemMenu(HWND window, bool byKeyboard);

} // namespace framereel
