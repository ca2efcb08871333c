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
  uint32_t changes; // how often it has been changed: whoever shows it looks whether to show it anew
};
