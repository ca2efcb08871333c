// What the system menu of a window holds, and what of it can be done now.
#include "win32/menus/system_menu.h"

#include <algorithm>

#include "win32/menus/menus.h"
#include "win32/win32_windows.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

std::vector<MenuEntry> FirstItems() {
  return {
      {SC_RESTORE, 0, "&Restore", nullptr},     {SC_MOVE, 0, "&Move", nullptr},
      {SC_MINIMIZE, 0, "Mi&nimise", nullptr},   {0, MF_SEPARATOR, "", nullptr},
      {SC_CLOSE, 0, "&Close\tAlt+F4", nullptr},
  };
}

} // namespace

HMENU SystemMenuOf(HWND window) {
  if (!window->systemMenu && Has(*window, WS_SYSMENU)) {
    window->systemMenu = std::make_unique<Win32Menu>(Win32Menu{FirstItems(), 0});
  }
  return window->systemMenu.get();
}

void GreySystemMenu(HWND window) {
  HMENU menu = SystemMenuOf(window);
  if (!menu) return;
  const auto grey = [menu](UINT id, bool is) {
    for (MenuEntry& item : menu->items) {
      if (item.id == id && !item.popup) item.flags = is ? item.flags | MF_GRAYED : item.flags & ~MF_GRAYED;
    }
  };
  grey(SC_RESTORE, !window->minimised);
  grey(SC_MOVE, window->minimised);
  grey(SC_MINIMIZE, window->minimised || !Has(*window, WS_MINIMIZEBOX));
}

} // namespace framereel

using namespace framereel;

HMENU GetSystemMenu(HWND window, BOOL revert) {
  if (!IsLive(window)) return nullptr;
  HMENU menu = SystemMenuOf(window);
  if (menu && revert) {
    menu->items = FirstItems();
    NoteChange(menu);
  }
  return revert ? nullptr : menu;
}
