// What a menu holds. Internal to the layer; menus/menu.h works with it.
#pragma once

#include <string>
#include <vector>

#include "win32/win32_menus.h"

namespace framereel {

struct MenuItem {
  UINT id, flags; // MF_...
  std::string text;
};

} // namespace framereel

struct Win32Menu {
  std::vector<framereel::MenuItem> items;
};
