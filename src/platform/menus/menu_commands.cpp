// Finding items by number and by letter, and running them.
#include "platform/menus/menu_commands.h"

#include "core/strings.h"
#include "platform/display/beep.h"
#include "platform/drawing/ports.h"
#include "platform/menus/platform_menus.h"
#include "platform/records/later_modules.h"
#include "platform/records/window_records.h"
#include "platform/windows/modal.h"

namespace framereel {
namespace {

// Cut, Copy and Paste leave an edit session running: they are for it.
bool SparesEditSession(const MenuItem* item) {
  return item && (item->shortcut == 'C' || item->shortcut == 'V' || item->shortcut == 'X');
}

bool HasShortcut(const MenuItem* item, uint8_t letter) {
  return item->shortcut && UpperCase(char(item->shortcut)) == UpperCase(char(letter));
}

// The first of all items with the letter, or null.
MenuItem* ItemWithShortcut(const MenuBar* bar, uint8_t letter) {
  for (uint16_t i = 0; i < bar->menus.count; ++i) {
    const Menu* menu = MenuAt(bar, i);
    for (uint16_t k = 0; k < menu->items.count; ++k) {
      if (HasShortcut(ItemAt(menu, k), letter)) return ItemAt(menu, k);
    }
  }
  return nullptr;
}

void Run(const MenuItem* item) {
  if (item->function) item->function(item->argument);
}

} // namespace

void FindMenuItem(const MenuBar* bar, uint32_t id, Menu** menu, MenuItem** item) {
  *menu = nullptr;
  *item = nullptr;
  for (uint16_t i = bar ? bar->menus.count : uint16_t{0}; i-- > 0 && !*menu;) {
    Menu* each = MenuAt(bar, i);
    for (uint16_t k = each->items.count; k-- > 0 && !*item;) {
      if (ItemAt(each, k)->id == id) *item = ItemAt(each, k);
    }
    if (each->id == id || *item) *menu = each;
  }
}

void MenuCommand(uint32_t id) {
  Menu* menu = nullptr;
  MenuItem* item = nullptr;
  FindMenuItem(CurrentMenuBar(), id, &menu, &item);
  if (!SparesEditSession(item)) TheLaterModules().endEditSession(nullptr);
  if (!item) return;
  // What has ended the session may have freed the item.
  FindMenuItem(CurrentMenuBar(), id, &menu, &item);
  ChildWindow* modal = GetModalWindow();
  if (item && modal) {
    SetPortWindow(modal);
    modal->methods.menuCommand(modal, item);
    FindMenuItem(CurrentMenuBar(), id, &menu, &item);
  }
  if (item) Run(item);
}

bool MenuShortcut(const KeyEvent& event) {
  const MenuBar* bar = CurrentMenuBar();
  if (!bar) return false;
  MenuItem* item = ItemWithShortcut(bar, event.unshifted);
  if (item && !(item->flags & kItemEnabled && item->parent->flags & kMenuEnabled)) {
    Beep();
    return true;
  }
  if (!SparesEditSession(item)) TheLaterModules().endEditSession(nullptr);
  if (item) Run(item);
  return item != nullptr;
}

void MenuCommandsStartUp() {
  TheLaterModules().menuShortcut = MenuShortcut;
}

} // namespace framereel
