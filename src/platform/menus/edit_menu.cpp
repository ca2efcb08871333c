// The Edit menu's items and their target.
#include "platform/menus/edit_menu.h"

#include "core/strings.h"
#include "platform/menus/menu_items.h"
#include "platform/menus/menu_listeners.h"
#include "platform/menus/menus.h"
#include "platform/menus/platform_menus.h"

namespace framereel {
namespace {

struct EntryText {
  uint8_t shortcut, mnemonic;
  char* text; // owned; null until it is given
};

constexpr uint16_t kItems = 3;
constexpr uint16_t kCommands[kItems] = {kEditCut, kEditCopy, kEditPaste};

struct EditMenu {
  EntryText titles[2];
  EntryText texts[kItems];
  MenuItem* items[kItems]; // null for those that are not there
  MenuItem* separator;     // between them and what else the menu holds; null for none
  EditTarget target;
  uint16_t enabled;
};

EditMenu state;

void SetText(EntryText* entry, uint8_t shortcut, uint8_t mnemonic, const char* text) {
  StrFree(entry->text);
  *entry = {shortcut, mnemonic, StrDup(text)};
}

void TellTarget(uint16_t code) {
  if (state.target.command) state.target.command(state.target.data, code);
}

void OnChosen(void* command) {
  TellTarget(*static_cast<const uint16_t*>(command));
}

// Whoever frees an item of ours, we have it no more.
void OnMenuChange(intptr_t subject, void*) {
  const auto& change = *reinterpret_cast<const MenuChange*>(subject);
  if (change.code != MenuChangeCode::kRemoved) return;
  if (state.separator == change.object) state.separator = nullptr;
  for (MenuItem*& item : state.items) {
    if (item == change.object) item = nullptr;
  }
}

void FreeItems() {
  for (uint16_t i = 0; i < kItems; ++i) {
    if (state.items[i]) FreeMenuItem(state.items[i]);
  }
  if (state.separator) FreeMenuItem(state.separator);
}

void AddItem(Menu* menu, uint16_t index) {
  const EntryText& entry = state.texts[index];
  MenuItem* item = NewMenuItem(entry.text ? entry.text : "");
  SetItemMnemonic(item, entry.mnemonic);
  SetItemShortcut(item, entry.shortcut);
  SetItemEnabled(item, false);
  SetItemFunction(item, OnChosen, const_cast<uint16_t*>(&kCommands[index]));
  InsertMenuItemAfter(menu, nullptr, item);
  state.items[index] = item;
}

Menu* TitledBy(const EntryText& entry) {
  return entry.text ? MenuTitled(CurrentMenuBar(), entry.text) : nullptr;
}

} // namespace

void SetEditTitle(uint16_t index, uint8_t mnemonic, const char* text) {
  if (index < 2) SetText(&state.titles[index], 0, mnemonic, text);
}

void SetEditItem(uint16_t index, uint8_t shortcut, uint8_t mnemonic, const char* text) {
  if (index < kItems) SetText(&state.texts[index], shortcut, mnemonic, text);
}

const char* EditMenuTitle() {
  return state.titles[1].text;
}

void BuildEditMenu(uint16_t mask) {
  FreeItems();
  MenuBar* bar = CurrentMenuBar();
  if (mask == 0 || !bar || !state.titles[1].text) return;
  Menu* there = TitledBy(state.titles[1]);
  Menu* menu = there ? there : NewMenu(state.titles[1].text);
  if (!there) SetMenuMnemonic(menu, state.titles[1].mnemonic);
  if (menu->items.count > 0) {
    state.separator = NewSeparator();
    InsertMenuItemAfter(menu, nullptr, state.separator);
  }
  for (uint16_t i = kItems; i-- > 0;) {
    if (mask & kCommands[i]) AddItem(menu, i);
  }
  if (!there) InsertMenuAfter(bar, TitledBy(state.titles[0]), menu);
}

bool IsEditItem(const MenuItem* item) {
  for (const MenuItem* each : state.items) {
    if (item && item == each) return true;
  }
  return false;
}

void SetEditTarget(const EditTarget* target, EditTarget* before) {
  TellTarget(kEditRemoved);
  if (before) *before = state.target;
  state.target = target ? *target : EditTarget{};
  if (state.target.command) {
    TellTarget(kEditInstalled);
  } else {
    SetEditEnabled(0);
  }
}

void SetEditEnabled(uint16_t mask) {
  state.enabled = mask;
  for (uint16_t i = 0; i < kItems; ++i) {
    if (state.items[i]) SetItemEnabled(state.items[i], mask & kCommands[i]);
  }
}

uint16_t GetEditEnabled() {
  return state.enabled;
}

void EditMenuStartUp() {
  state = {};
  AddMenuListener(OnMenuChange, nullptr);
}

void EditMenuShutDown() {
  for (EntryText& entry : state.titles) StrFree(entry.text);
  for (EntryText& entry : state.texts) StrFree(entry.text);
  state = {};
}

} // namespace framereel
