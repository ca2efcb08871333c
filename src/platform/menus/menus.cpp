// Bars and menus; and the beginning and the end of all of them.
#include "platform/menus/menus.h"

#include "core/strings.h"
#include "platform/menus/menu_items.h"
#include "platform/menus/menu_listeners.h"
#include "platform/menus/platform_menus.h"

namespace framereel {
namespace {

void InsertAt(MenuBar* bar, uint16_t index, Menu* menu) {
  GrowArrayInsert(&bar->menus, index, ToListValue(menu));
  menu->parent = bar;
  ShowOnBar(menu);
  TellMenuListeners({MenuChangeCode::kInserted, MenuChangeKind::kMenu, menu});
}

void Remove(Menu* menu) {
  MenuBar* bar = menu->parent;
  if (!bar) return;
  TellMenuListeners({MenuChangeCode::kRemoved, MenuChangeKind::kMenu, menu});
  GrowArrayRemove(&bar->menus, ToListValue(menu));
  menu->parent = nullptr;
  TakeFromBar(bar, menu);
}

} // namespace

MenuBar* NewMenuBar() {
  return NewBarRecord();
}

void FreeMenuBar(MenuBar* bar) {
  if (bar == CurrentMenuBar()) SetMenuBar(nullptr);
  while (bar->menus.count > 0) FreeMenu(MenuAt(bar, 0));
  DeleteBarRecord(bar);
}

Menu* NewMenu(const char* title) {
  return NewMenuRecord(title);
}

void FreeMenu(Menu* menu) {
  Remove(menu);
  while (menu->items.count > 0) FreeMenuItem(ItemAt(menu, 0));
  DeleteMenuRecord(menu);
}

void SetMenuMnemonic(Menu* menu, uint8_t letter) {
  menu->mnemonic = letter;
  RefreshMenu(menu);
}

void SetMenuEnabled(Menu* menu, bool enabled) {
  const bool before = menu->flags & kMenuEnabled;
  if (!enabled) menu->flags &= ~kMenuWants;
  if (before == enabled) return;
  if (enabled && !HasEnabledItem(menu)) {
    menu->flags |= kMenuWants;
    return;
  }
  menu->flags ^= kMenuEnabled;
  RefreshMenu(menu);
}

void AddMenu(MenuBar* bar, Menu* menu) {
  Remove(menu);
  InsertAt(bar, bar->menus.count, menu);
}

void InsertMenuAfter(MenuBar* bar, const Menu* after, Menu* menu) {
  if (menu == after) return;
  Remove(menu);
  const int32_t index = after ? GrowArrayFind(&bar->menus, ToListValue(after)) : -1;
  InsertAt(bar, uint16_t(index + 1), menu);
}

Menu* MenuTitled(const MenuBar* bar, const char* title) {
  for (uint16_t i = 0; i < bar->menus.count; ++i) {
    if (StrEqual(MenuAt(bar, i)->title, title)) return MenuAt(bar, i);
  }
  return nullptr;
}

void MenusStartUp() {
  MenuRecordsStartUp();
  MenuListenersStartUp();
  PlatformMenusStartUp();
}

void MenusShutDown() {
  while (MenuBar* bar = AnyBarRecord()) FreeMenuBar(bar);
  while (Menu* menu = AnyMenuRecord()) FreeMenu(menu);
  while (MenuItem* item = AnyItemRecord()) FreeMenuItem(item);
  MenuListenersShutDown();
  MenuRecordsShutDown();
}

} // namespace framereel
