// Keeping the platform's menus in step.
#include "platform/menus/platform_menus.h"

#include "core/strings.h"
#include "core/text_format.h"
#include "platform/input/key_events.h"
#include "platform/records/window_records.h"
#include "win32/win32_menus.h"

namespace framereel {
namespace {

struct PlatformMenus {
  MenuBar* bar;
  bool dirty; // the bar is to be drawn
};

PlatformMenus state;

// ---- Texts -------------------------------------------------------------------------------------------------------

// A new string: the text with a sign ahead of the first place of the letter, if it has one.
char* WithMnemonic(const char* text, uint8_t letter) {
  const char* place = letter ? StrFindNoCase(text, char(letter)) : nullptr;
  if (!place) return StrDup(text);
  char* before = StrDupN(text, size_t(place - text));
  char* made = FormatNew("%s%&%s%", before, place);
  StrFree(before);
  return made;
}

char* TextOfItem(const MenuItem* item) {
  char* text = WithMnemonic(item->text, item->mnemonic);
  if (!item->shortcut) return text;
  const bool altCtrl = MenuKeyMask() & kFlagAlt;
  char* made = FormatNew("%s%\t%s%%c%", text, altCtrl ? "Alt+Ctrl+" : "Ctrl+", uint32_t{item->shortcut});
  StrFree(text);
  return made;
}

// ---- Building ----------------------------------------------------------------------------------------------------

bool IsApple(const Menu* menu) {
  return StrEqual(menu->title, "Apple");
}

UINT GreyedUnless(bool enabled) {
  return enabled ? 0 : MF_GRAYED;
}

void AppendItems(HMENU to, const Menu* menu) {
  for (uint16_t i = 0; i < menu->items.count; ++i) {
    const MenuItem* item = ItemAt(menu, i);
    if (IsSeparator(item)) {
      ::AppendMenuA(to, MF_SEPARATOR, 0, nullptr);
      continue;
    }
    const UINT checked = item->flags & kItemChecked ? MF_CHECKED : 0;
    char* text = TextOfItem(item);
    ::AppendMenuA(to, GreyedUnless(item->flags & kItemEnabled) | checked, item->id, text);
    StrFree(text);
  }
}

void BuildPopup(const Menu* menu) {
  while (::GetMenuItemCount(menu->popup) > 0) {
    if (!::DeleteMenu(menu->popup, 0, MF_BYPOSITION)) break;
  }
  AppendItems(menu->popup, menu);
}

void BuildSystemMenu(const Menu* menu) {
  const HWND window = TheMainWindow()->window;
  ::GetSystemMenu(window, TRUE);
  HMENU systemMenu = ::GetSystemMenu(window, FALSE);
  ::AppendMenuA(systemMenu, MF_SEPARATOR, 0, nullptr);
  AppendItems(systemMenu, menu);
}

void Build(const Menu* menu) {
  (IsApple(menu) ? BuildSystemMenu : BuildPopup)(menu);
}

// At a position of the platform's bar.
void InsertIntoBar(MenuBar* bar, int position, Menu* menu) {
  char* title = WithMnemonic(menu->title, menu->mnemonic);
  const UINT flags = MF_POPUP | MF_BYPOSITION | GreyedUnless(menu->flags & kMenuEnabled);
  ::InsertMenuA(bar->platformMenu, UINT(position), flags, reinterpret_cast<uintptr_t>(menu->popup), title);
  StrFree(title);
  menu->inserted = true;
}

// How many menus stand ahead of it in the platform's bar.
int PositionOf(const Menu* menu) {
  int position = 0;
  for (uint16_t i = 0; MenuAt(menu->parent, i) != menu; ++i) position += MenuAt(menu->parent, i)->inserted;
  return position;
}

void FillBar(MenuBar* bar) {
  while (::RemoveMenu(bar->platformMenu, 0, MF_BYPOSITION)) {
  }
  int position = 0;
  for (uint16_t i = 0; i < bar->menus.count; ++i) {
    if (!IsApple(MenuAt(bar, i))) InsertIntoBar(bar, position++, MenuAt(bar, i));
  }
}

void LeaveSystemMenu(const MenuBar* bar) {
  for (uint16_t i = 0; bar && i < bar->menus.count; ++i) {
    if (IsApple(MenuAt(bar, i))) ::GetSystemMenu(TheMainWindow()->window, TRUE);
  }
}

} // namespace

void SetMenuBar(MenuBar* bar) {
  LeaveSystemMenu(state.bar);
  state.bar = bar;
  if (bar) {
    for (uint16_t i = 0; i < bar->menus.count; ++i) Build(MenuAt(bar, i));
    FillBar(bar);
    state.dirty = true;
  }
  ::SetMenu(TheMainWindow()->window, bar ? bar->platformMenu : nullptr);
}

MenuBar* CurrentMenuBar() {
  return state.bar;
}

void RefreshMenu(Menu* menu) {
  if (!menu->parent || menu->parent != state.bar) return;
  state.dirty = true;
  if (IsApple(menu)) return BuildSystemMenu(menu);
  const int position = PositionOf(menu);
  if (menu->inserted) ::RemoveMenu(state.bar->platformMenu, UINT(position), MF_BYPOSITION);
  BuildPopup(menu);
  InsertIntoBar(state.bar, position, menu);
}

void ShowOnBar(Menu* menu) {
  if (menu->parent != state.bar) return;
  Build(menu);
  FillBar(state.bar);
  state.dirty = true;
}

void TakeFromBar(MenuBar* bar, Menu* menu) {
  menu->inserted = false;
  if (bar != state.bar) return;
  if (IsApple(menu)) ::GetSystemMenu(TheMainWindow()->window, TRUE);
  FillBar(bar);
  state.dirty = true;
}

void RedrawMenuBar() {
  if (!state.dirty) return;
  state.dirty = false;
  ::DrawMenuBar(TheMainWindow()->window);
}

void PlatformMenusStartUp() {
  state = {};
}

} // namespace framereel
