// Titles by number, by place and by letter.
#include "win32/menus/menu_titles.h"

#include "win32/drawing/mnemonics.h"
#include "win32/menus/menus.h"
#include "win32/menus/system_menu.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_input.h"
#include "win32/windows/frame.h"
#include "win32/windows/menu_bar.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_tree.h"

namespace framereel {

int32_t MarkedTitle() {
  return TheWindows().markedTitle;
}

int32_t CountTitles(const Win32Window& owner) {
  return HasMenuBar(owner) ? int32_t(owner.menuBar->items.size()) : 0;
}

bool HasTitle(HWND owner, int32_t title) {
  if (title == kSystemMenuTitle) return SystemMenuOf(owner) && !IsEmpty(FramePart(*owner, HTSYSMENU));
  return title >= 0 && title < CountTitles(*owner);
}

HMENU MenuOfTitle(HWND owner, int32_t title) {
  if (!HasTitle(owner, title)) return nullptr;
  if (title == kSystemMenuTitle) return SystemMenuOf(owner);
  const MenuEntry& item = owner->menuBar->items[size_t(title)];
  return IsGreyed(item) ? nullptr : item.popup;
}

PixelRect PlaceOfTitle(HWND owner, int32_t title) {
  if (title == kSystemMenuTitle) return FramePart(*owner, HTSYSMENU);
  return MenuTitlePlaces(*owner, FramePart(*owner, HTMENU))[size_t(title)];
}

int32_t TitleAt(HWND owner, int32_t x, int32_t y) {
  for (int32_t title = kSystemMenuTitle; title < CountTitles(*owner); ++title) {
    if (HasTitle(owner, title) && Holds(PlaceOfTitle(owner, title), x, y)) return title;
  }
  return kNoTitle;
}

int32_t TitleBeside(HWND owner, int32_t title, int32_t by) {
  const int32_t count = CountTitles(*owner) + 1;
  do {
    title = (title - kSystemMenuTitle + by + count) % count + kSystemMenuTitle;
  } while (!HasTitle(owner, title));
  return title;
}

int32_t TitleOfLetter(HWND owner, uint8_t letter) {
  for (int32_t title = 0; title < CountTitles(*owner); ++title) {
    if (PicksText(MnemonicTextOf(owner->menuBar->items[size_t(title)].text), letter)) return title;
  }
  return kNoTitle;
}

void MarkTitle(HWND owner, int32_t title) {
  if (MarkedTitle() == title) return;
  TheWindows().markedTitle = title;
  if (IsLive(owner)) InvalidateFrame(owner);
}

} // namespace framereel
