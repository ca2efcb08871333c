// The menus, out of texts that begin with their letters: a title with its mnemonic, an item with its shortcut and then
// its mnemonic, each a blank for none.
#include "app/menus.h"

#include <initializer_list>

#include "app/document.h"
#include "app/picture_windows.h"
#include "core/app_strings.h"
#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_items.h"
#include "platform/menus/menus.h"
#include "platform/menus/platform_menus.h"

namespace framereel {
namespace {

constexpr uint16_t kApple = 10, kAbout = 11, kFile = 12, kNew = 13, kSave = 16, kSaveAs = 17, kQuit = 18, kEdit = 91,
                   kFirstEditItem = 92; // of AppString

uint8_t Letter(char c) {
  return c == ' ' ? 0 : uint8_t(c);
}

Menu* MakeMenu(MenuBar* bar, uint16_t string) {
  const char* text = AppString(string);
  Menu* menu = NewMenu(text + 1);
  SetMenuMnemonic(menu, Letter(text[0]));
  AddMenu(bar, menu);
  return menu;
}

template <void (*command)(Application&)> void MakeMenuItem(Menu* menu, uint16_t string, Application& app) {
  const char* text = AppString(string);
  MenuItem* item = NewMenuItem(text + 2);
  SetItemShortcut(item, Letter(text[0]));
  SetItemMnemonic(item, Letter(text[1]));
  SetItemFunction(
      item, [](void* argument) { command(*static_cast<Application*>(argument)); }, &app);
  AddMenuItem(menu, item);
}

void NameEditMenu() {
  for (const uint16_t title : {kFile, kEdit}) {
    const char* text = AppString(title);
    SetEditTitle(title == kEdit, Letter(text[0]), text + 1);
  }
  for (uint16_t i = 0; i < 3; ++i) {
    const char* text = AppString(kFirstEditItem + i);
    SetEditItem(i, Letter(text[0]), Letter(text[1]), text + 2);
  }
}

} // namespace

void BuildMenus(Application& app) {
  NameEditMenu();
  MenuBar* bar = NewMenuBar();
  Menu* apple = MakeMenu(bar, kApple);
  MakeMenuItem<ShowAbout>(apple, kAbout, app);
  Menu* file = MakeMenu(bar, kFile);
  MakeMenuItem<CommandNew>(file, kNew, app);
  AddMenuItem(file, NewSeparator());
  MakeMenuItem<CommandSave>(file, kSave, app);
  MakeMenuItem<CommandSaveAs>(file, kSaveAs, app);
  AddMenuItem(file, NewSeparator());
  MakeMenuItem<CommandQuit>(file, kQuit, app);
  SetMenuBar(bar);
  BuildEditMenu(kEditCut | kEditCopy | kEditPaste);
}

} // namespace framereel
