// Menus as records: making and destroying them, changing their items, giving them to windows.
#include "win32/menus/menus.h"

#include <algorithm>

#include "win32/pixels/rectangles.h"
#include "win32/win32_menus.h"
#include "win32/windows/frame.h"
#include "win32/windows/placement.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

using Items = std::vector<MenuEntry>;

HMENU NewMenu() {
  auto& menus = TheWindows().menus;
  menus.push_back(std::make_unique<Win32Menu>());
  NoteChange(menus.back().get());
  return menus.back().get();
}

// The item, or the end when there is none.
Items::iterator ItemOf(HMENU menu, UINT item, UINT flags) {
  Items& items = menu->items;
  if (flags & MF_BYPOSITION) return item < items.size() ? items.begin() + item : items.end();
  return std::find_if(items.begin(), items.end(),
                      [=](const MenuEntry& each) { return each.id == item && !IsSeparator(each) && !each.popup; });
}

MenuEntry MadeOf(UINT flags, uintptr_t idOrPopup, const char* text) {
  MenuEntry made = {0, flags & ~(MF_POPUP | MF_BYPOSITION), text ? text : "", nullptr};
  if (flags & MF_POPUP) {
    made.popup = reinterpret_cast<HMENU>(idOrPopup);
  } else {
    made.id = UINT(idOrPopup);
  }
  return made;
}

bool CanBeMade(HMENU menu, const MenuEntry& item) {
  return IsMenu(menu) && (!item.popup || IsMenu(item.popup));
}

// No item opens it any more, and no window shows it.
void TakeOut(HMENU menu) {
  WindowSystem& system = TheWindows();
  for (const auto& other : system.menus) {
    for (MenuEntry& item : other->items) {
      if (item.popup != menu) continue;
      item.popup = nullptr;
      NoteChange(other.get());
    }
  }
  for (const auto& window : system.windows) {
    if (window->menuBar == menu) window->menuBar = nullptr;
  }
}

} // namespace

bool IsMenu(HMENU menu) {
  const WindowSystem& system = TheWindows();
  const auto isIt = [=](const auto& each) { return each.get() == menu; };
  const auto hasIt = [=](const auto& window) { return window->systemMenu.get() == menu; };
  return menu && (std::any_of(system.menus.begin(), system.menus.end(), isIt) ||
                  std::any_of(system.windows.begin(), system.windows.end(), hasIt));
}

void NoteChange(HMENU menu) {
  menu->changed = ++TheWindows().menuChanges;
}

bool IsSeparator(const MenuEntry& item) {
  return item.flags & MF_SEPARATOR;
}

bool IsGreyed(const MenuEntry& item) {
  return item.flags & MF_GRAYED;
}

} // namespace framereel

using namespace framereel;

HMENU CreateMenu() {
  return NewMenu();
}

HMENU CreatePopupMenu() {
  return NewMenu();
}

BOOL DestroyMenu(HMENU menu) {
  auto& menus = TheWindows().menus;
  const auto found = std::find_if(menus.begin(), menus.end(), [=](const auto& each) { return each.get() == menu; });
  if (found == menus.end()) return FALSE;
  TakeOut(menu);
  menus.erase(found);
  return TRUE;
}

BOOL SetMenu(HWND window, HMENU menu) {
  if (!IsLive(window) || (menu && !IsMenu(menu))) return FALSE;
  window->menuBar = menu;
  return ::DrawMenuBar(window);
}

BOOL DrawMenuBar(HWND window) {
  if (!IsLive(window)) return FALSE;
  InvalidateFrame(window);
  const bool fits = window->minimised || Same(ClientInside(*window, window->place), window->client);
  if (!fits) RenewFrame(window);
  return TRUE;
}

int GetMenuItemCount(HMENU menu) {
  return IsMenu(menu) ? int(menu->items.size()) : -1;
}

BOOL AppendMenuA(HMENU menu, UINT flags, uintptr_t idOrPopup, const char* text) {
  const MenuEntry made = MadeOf(flags, idOrPopup, text);
  if (!CanBeMade(menu, made)) return FALSE;
  menu->items.push_back(made);
  NoteChange(menu);
  return TRUE;
}

BOOL InsertMenuA(HMENU menu, UINT item, UINT flags, uintptr_t idOrPopup, const char* text) {
  const MenuEntry made = MadeOf(flags, idOrPopup, text);
  if (!CanBeMade(menu, made)) return FALSE;
  const auto at = ItemOf(menu, item, flags);
  // A position behind the last item is the end.
  if (at == menu->items.end() && !(flags & MF_BYPOSITION)) return FALSE;
  menu->items.insert(at, made);
  NoteChange(menu);
  return TRUE;
}

BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, uintptr_t idOrPopup, const char* text) {
  const MenuEntry made = MadeOf(flags, idOrPopup, text);
  if (!CanBeMade(menu, made)) return FALSE;
  const auto at = ItemOf(menu, item, flags);
  if (at == menu->items.end()) return FALSE;
  *at = made;
  NoteChange(menu);
  return TRUE;
}

BOOL RemoveMenu(HMENU menu, UINT item, UINT flags) {
  if (!IsMenu(menu)) return FALSE;
  const auto at = ItemOf(menu, item, flags);
  if (at == menu->items.end()) return FALSE;
  menu->items.erase(at);
  NoteChange(menu);
  return TRUE;
}

BOOL DeleteMenu(HMENU menu, UINT item, UINT flags) {
  if (!IsMenu(menu)) return FALSE;
  const auto at = ItemOf(menu, item, flags);
  if (at == menu->items.end()) return FALSE;
  const HMENU popup = at->popup;
  ::RemoveMenu(menu, item, flags);
  ::DestroyMenu(popup);
  return TRUE;
}
