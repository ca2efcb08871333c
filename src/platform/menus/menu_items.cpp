// Changing items, and what their menus make of it.
#include "platform/menus/menu_items.h"

#include "platform/menus/menu_listeners.h"
#include "platform/menus/platform_menus.h"

namespace framereel {
namespace {

// A menu follows its items: greyed with the last one that can be chosen, and back with the first.
void FollowItems(Menu* menu) {
  const bool any = HasEnabledItem(menu);
  if (menu->flags & kMenuEnabled && !any) {
    menu->flags = (menu->flags & ~kMenuEnabled) | kMenuWants;
  } else if (menu->flags & kMenuWants && any) {
    menu->flags = (menu->flags & ~kMenuWants) | kMenuEnabled;
  }
}

void ItemChanged(const MenuItem* item) {
  if (item->parent) RefreshMenu(item->parent);
}

void ItemsChanged(Menu* menu) {
  FollowItems(menu);
  RefreshMenu(menu);
}

void InsertAt(Menu* menu, uint16_t index, MenuItem* item) {
  GrowArrayInsert(&menu->items, index, ToListValue(item));
  item->parent = menu;
  ItemsChanged(menu);
  TellMenuListeners({MenuChangeCode::kInserted, MenuChangeKind::kItem, item});
}

} // namespace

bool HasEnabledItem(const Menu* menu) {
  for (uint16_t i = 0; i < menu->items.count; ++i) {
    if (ItemAt(menu, i)->flags & kItemEnabled) return true;
  }
  return false;
}

MenuItem* NewMenuItem(const char* text) {
  MenuItem* item = NewItemRecord(text);
  if (!IsSeparator(item)) item->flags = kItemEnabled;
  return item;
}

MenuItem* NewSeparator() {
  return NewMenuItem("-");
}

void FreeMenuItem(MenuItem* item) {
  RemoveMenuItem(item);
  DeleteItemRecord(item);
}

void SetItemMnemonic(MenuItem* item, uint8_t letter) {
  item->mnemonic = letter;
  ItemChanged(item);
}

void SetItemShortcut(MenuItem* item, uint8_t letter) {
  item->shortcut = letter;
  ItemChanged(item);
}

void SetItemEnabled(MenuItem* item, bool enabled) {
  const bool before = item->flags & kItemEnabled;
  if (before == enabled || IsSeparator(item)) return;
  item->flags ^= kItemEnabled;
  if (item->parent) ItemsChanged(item->parent);
}

void SetItemFunction(MenuItem* item, MenuFunction function, void* argument) {
  item->function = function;
  item->argument = argument;
}

void AddMenuItem(Menu* menu, MenuItem* item) {
  RemoveMenuItem(item);
  InsertAt(menu, menu->items.count, item);
}

void InsertMenuItemAfter(Menu* menu, const MenuItem* after, MenuItem* item) {
  if (item == after) return;
  RemoveMenuItem(item);
  const int32_t index = after ? GrowArrayFind(&menu->items, ToListValue(after)) : -1;
  InsertAt(menu, uint16_t(index + 1), item);
}

void RemoveMenuItem(MenuItem* item) {
  Menu* menu = item->parent;
  if (!menu) return;
  TellMenuListeners({MenuChangeCode::kRemoved, MenuChangeKind::kItem, item});
  GrowArrayRemove(&menu->items, ToListValue(item));
  item->parent = nullptr;
  ItemsChanged(menu);
}

} // namespace framereel
