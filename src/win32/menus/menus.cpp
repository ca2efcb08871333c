// Menus as records: the system menu of each window, and changing items.
#include "win32/menus/menus.h"

#include <algorithm>

#include "win32/menus/menu_popup.h"
#include "win32/windows/frame.h"
#include "win32/windows/message_queue.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

MenuItem* ItemOf(HMENU menu, UINT id) {
  if (!menu) return nullptr;
  const auto found = std::find_if(menu->items.begin(), menu->items.end(),
                                  [=](const MenuItem& item) { return item.id == id && !(item.flags & MF_SEPARATOR); });
  return found == menu->items.end() ? nullptr : &*found;
}

std::string Copied(const char* text) {
  return text ? text : "";
}

std::unique_ptr<Win32Menu> NewSystemMenu() {
  auto menu = std::make_unique<Win32Menu>();
  menu->items = {
      {SC_RESTORE, 0, "&Restore"}, {SC_MOVE, 0, "&Move"},           {SC_MINIMIZE, 0, "Mi&nimise"},
      {0, MF_SEPARATOR, ""},       {SC_CLOSE, 0, "&Close\tAlt+F4"},
  };
  return menu;
}

// Null for a window whose style has none.
Win32Menu* SystemMenuOf(Win32Window* window) {
  if (!window->systemMenu && Has(*window, WS_SYSMENU)) window->systemMenu = NewSystemMenu();
  return window->systemMenu.get();
}

// What of the system menu can be done with the window as it is.
Win32Menu AsThingsStand(const Win32Menu& systemMenu, const Win32Window& window) {
  Win32Menu menu = systemMenu;
  const auto grey = [&menu](UINT id, bool is) {
    if (MenuItem* item = is ? ItemOf(&menu, id) : nullptr) item->flags |= MF_GRAYED;
  };
  grey(SC_RESTORE, !window.minimised);
  grey(SC_MOVE, window.minimised);
  grey(SC_MINIMIZE, window.minimised || !Has(window, WS_MINIMIZEBOX));
  return menu;
}

} // namespace

void RunSystemMenu(HWND window, bool byKeyboard) {
  const Win32Menu* menu = SystemMenuOf(window);
  if (!menu || !IsShown(*window)) return;
  const UINT chosen = ChooseFromMenu(window, AsThingsStand(*menu, *window), FramePart(*window, HTSYSMENU), byKeyboard);
  if (chosen && IsLive(window)) Post(window, WM_SYSCOMMAND, chosen, 0, false);
}

} // namespace framereel

using namespace framereel;

HMENU GetSystemMenu(HWND window, BOOL revert) {
  if (!IsLive(window)) return nullptr;
  if (revert) window->systemMenu = nullptr;
  return revert ? nullptr : SystemMenuOf(window);
}

BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, UINT id, const char* text) {
  MenuItem* found = ItemOf(menu, item);
  if (!found) return FALSE;
  *found = {id, flags, Copied(text)};
  return TRUE;
}

BOOL AppendMenuA(HMENU menu, UINT flags, UINT id, const char* text) {
  if (!menu) return FALSE;
  menu->items.push_back({id, flags, Copied(text)});
  return TRUE;
}
