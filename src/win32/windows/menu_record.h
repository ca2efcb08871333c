// What a menu holds. Internal to the layer; menus/menus.h works with it, and the bar in a frame shows it.
#pragma once

#include <string>
#include <vector>

#include "win32/win32_menus.h"

namespace framereel {

struct MenuEntry {
  UINT id, flags; // MF_...
  std::string text;
  HMENU popup; // that it opens; null for none
};

} // namespace framereel

struct Win32Menu {
  std::vector<framereel::MenuEntry> items;
  uint32_t changed; // number of its last change among those of all menus: whoever shows it looks whether it is shown
};
