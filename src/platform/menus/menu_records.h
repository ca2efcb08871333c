// The menus of the toolkit as records: a MenuBar of Menus of MenuItems, each item with its function.
//
// An item is in one menu at a time and a menu on one bar. What changes one (menus.h, menu_items.h) keeps the platform's
// menus in step, which are made from these (platform_menus.h).
#pragma once

#include <cstdint>

#include "core/arrays.h"
#include "core/list.h"
#include "win32/win32_types.h"

namespace framereel {

struct Menu;
struct MenuBar;

using MenuFunction = void (*)(void* argument);

enum MenuItemFlag : uint32_t {
  kItemEnabled = 1,
  kItemChecked = 2,
};

struct MenuItem {
  Menu* parent;               // null: in no menu
  char* text;                 // owned; "-" is a separator
  uint8_t mnemonic, shortcut; // letters, 0 for none: the one marked in the text, and the one of its key
  uint32_t flags;             // of MenuItemFlag
  MenuFunction function;      // may be null
  void* argument;
  uint32_t id; // the platform's
  ListHandle node;
};

enum MenuFlag : uint32_t {
  kMenuEnabled = 1,
  kMenuBlocked = 2, // disabled for a modal window
  kMenuWants = 4,   // is to be enabled as soon as one of its items is
};

struct Menu {
  MenuBar* parent; // null: on no bar
  char* title;     // owned
  uint8_t mnemonic;
  uint32_t flags; // of MenuFlag
  GrowArray items;
  HMENU popup;
  uint32_t id;
  ListHandle node;
  bool inserted; // the popup stands in the platform's bar
};

struct MenuBar {
  GrowArray menus;
  HMENU platformMenu;
  ListHandle node;
};

inline MenuItem* ItemAt(const Menu* menu, uint16_t index) {
  return FromListValue<MenuItem>(menu->items.entries[index]);
}
inline Menu* MenuAt(const MenuBar* bar, uint16_t index) {
  return FromListValue<Menu>(bar->menus.entries[index]);
}
bool IsSeparator(const MenuItem* item);

// Blank records with all that is the platform's, on the list of their kind; and off it, with what they own given back.
// What they hold, and what they are in, is the caller's business. The text is copied.
MenuItem* NewItemRecord(const char* text);
Menu* NewMenuRecord(const char* title);
MenuBar* NewBarRecord();
void DeleteItemRecord(MenuItem* item);
void DeleteMenuRecord(Menu* menu);
void DeleteBarRecord(MenuBar* bar);

// Any one that is left, or null.
MenuItem* AnyItemRecord();
Menu* AnyMenuRecord();
MenuBar* AnyBarRecord();

void MenuRecordsStartUp();
void MenuRecordsShutDown(); // when no record is left

} // namespace framereel
