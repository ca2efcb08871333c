// The geometry and the look of a popup.
#include "win32/menus/menu_popup.h"

#include <algorithm>

#include "win32/drawing/contexts.h"
#include "win32/drawing/mnemonics.h"
#include "win32/drawing/relief.h"
#include "win32/drawing/system_colours.h"
#include "win32/menus/menus.h"
#include "win32/pixels/rectangles.h"
#include "win32/pixels/scale.h"
#include "win32/win32_menus.h"
#include "win32/win32_windows.h"
#include "win32/windows/screen_room.h"
#include "win32/windows/window_surfaces.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr Scaled kBorder{3}, kItemMargin{2}, kTextLeft{20}, kTextGap{24}, kTextRight{16}, kSeparator{8};
constexpr Scaled kOverlap{3}; // of a popup at an item's side with the one that it comes from

// An item's text in its two halves.
struct ItemText {
  MnemonicText label;
  std::string keys;
};

ItemText TextOf(const MenuEntry& item) {
  const size_t tab = item.text.find('\t');
  return {MnemonicTextOf(item.text.substr(0, tab)), tab == std::string::npos ? "" : item.text.substr(tab + 1)};
}

const std::vector<MenuEntry>& ItemsOf(const MenuPopup& popup) {
  return popup.menu->items;
}

int32_t RowHeight(const MenuPopup& popup, const MenuEntry& item) {
  return IsSeparator(item) ? int32_t{kSeparator} : popup.lineHeight;
}

// In the popup's own coordinates.
PixelRect RowOfItem(const MenuPopup& popup, int32_t index) {
  int32_t top = kBorder;
  for (int32_t i = 0; i < index; ++i) top += RowHeight(popup, ItemsOf(popup)[size_t(i)]);
  return {kBorder, top, WidthOf(popup.place) - kBorder, top + RowHeight(popup, ItemsOf(popup)[size_t(index)])};
}

// ---- Its look ----------------------------------------------------------------------------------------------------

void DrawSeparator(HDC context, const PixelRect& row) {
  const int32_t y = (row.top + row.bottom) / 2;
  const COLORREF dark = Legible(context, ::GetSysColor(COLOR_BTNSHADOW), ::GetSysColor(COLOR_MENU));
  FillPixels(context, {row.left, y - kThinLine, row.right, y}, dark);
  FillPixels(context, {row.left, y, row.right, y + kThinLine}, ::GetSysColor(kColourButtonHighlight));
}

// A tick: down to the right and up again.
void DrawTick(HDC context, const PixelRect& row) {
  const int32_t side = PictureScale(), left = row.left + Scaled(6), middle = (row.top + row.bottom) / 2;
  for (int32_t i = 0; i < 7; ++i) {
    const int32_t x = left + i * side, y = middle + (i < 3 ? i - 1 : 3 - i) * side;
    FillPixels(context, {x, y - side, x + side, y + 2 * side}, context->textColour);
  }
}

// The sign of an item that opens a popup: it points to the right.
void DrawArrow(HDC context, const PixelRect& row) {
  const int32_t reach = Scaled(4), left = row.right - Scaled(10), middle = (row.top + row.bottom) / 2;
  for (int32_t i = 0; i < reach; ++i) {
    FillPixels(context, {left + i, middle - reach + 1 + i, left + i + 1, middle + reach - i}, context->textColour);
  }
}

void DrawItem(const MenuPopup& popup, int32_t index) {
  HDC context = popup.context;
  const MenuEntry& item = ItemsOf(popup)[size_t(index)];
  const PixelRect row = RowOfItem(popup, index);
  const bool marked = index == popup.marked;
  const COLORREF ground = ::GetSysColor(marked ? kColourHighlight : COLOR_MENU);
  FillPixels(context, row, ground);
  if (IsSeparator(item)) return DrawSeparator(context, row);
  const COLORREF ink = Legible(context, ::GetSysColor(marked ? kColourHighlightText : kColourMenuText), ground);
  const ItemText text = TextOf(item);
  const int32_t y = row.top + kItemMargin;
  DrawMnemonicText(context, row.left + kTextLeft, y, text.label, IsGreyed(item), ground, ink);
  DrawLabel(context, row.right - kTextRight - TextWidth(context, text.keys), y, text.keys, IsGreyed(item), ground, ink);
  if (item.flags & MF_CHECKED) DrawTick(context, row);
  if (item.popup) DrawArrow(context, row);
}

void Draw(MenuPopup* popup) {
  const PixelRect all = {0, 0, WidthOf(popup->place), HeightOf(popup->place)};
  FillPixels(popup->context, all, ::GetSysColor(COLOR_WINDOWFRAME));
  FillPixels(popup->context, Shrunk(all, kThinLine), ::GetSysColor(COLOR_MENU));
  for (int32_t i = 0; i < int32_t(ItemsOf(*popup).size()); ++i) DrawItem(*popup, i);
  NoteDamage(&popup->shown, all);
}

// ---- Its place ---------------------------------------------------------------------------------------------------

SIZE SizeOf(const MenuPopup& popup) {
  int32_t label = 0, keys = 0, height = 2 * kBorder;
  for (const MenuEntry& item : ItemsOf(popup)) {
    const ItemText text = TextOf(item);
    label = std::max(label, TextWidth(popup.context, text.label.shown));
    if (!text.keys.empty()) keys = std::max(keys, TextWidth(popup.context, text.keys) + kTextGap);
    height += RowHeight(popup, item);
  }
  return {2 * kBorder + kTextLeft + label + keys + kTextRight, height};
}

// Below its title or at the right of its item; on the other side where there is no room.
PixelRect PlaceFor(const MenuPopup& popup, const SIZE& size) {
  const PixelRect room = RoomAround(popup.beside), &beside = popup.beside;
  int32_t left = beside.left, top = beside.bottom;
  if (popup.ofItem) {
    left = beside.right - kOverlap;
    top = beside.top - kBorder;
    if (left + size.cx > room.right) left = beside.left + kOverlap - size.cx;
  } else if (top + size.cy > room.bottom) {
    top = beside.top - size.cy;
  }
  left = Within(left, size.cx, room.left, room.right);
  top = Within(top, size.cy, room.top, room.bottom);
  return {left, top, left + size.cx, top + size.cy};
}

// What an item is known by when others come and go around it.
bool IsSameItem(const MenuEntry& a, const MenuEntry& b) {
  return a.popup ? a.popup == b.popup : !b.popup && a.id == b.id && !IsSeparator(a) && !IsSeparator(b);
}

} // namespace

MenuPopup::MenuPopup(HWND owner, HMENU itsMenu, const PixelRect& itsBeside, bool isOfItem)
    : menu(itsMenu), changed(itsMenu->changed), beside(itsBeside), ofItem(isOfItem), place{}, shown{},
      context(NewContext()), marked(kNoItem), markedItem{} {
  lineHeight = LineHeight(context) + 2 * kItemMargin;
  place = PlaceFor(*this, SizeOf(*this));
  shown.display = DisplayNewWindow({WindowRole::kPopup, place, TopLevelOf(owner)->top->shown.display, ""});
  if (!shown.display || !ResizeSurface(&shown, WidthOf(place), HeightOf(place))) return;
  context->surface = &shown.surface;
  TheWindows().shown.push_back(&shown);
  Draw(this);
  shown.onScreen = true;
  DisplayShowWindow(shown.display, true);
}

MenuPopup::~MenuPopup() {
  FreeShown(&shown);
  FreeContext(context);
}

void RenewPopup(MenuPopup* popup) {
  popup->changed = popup->menu->changed;
  const std::vector<MenuEntry>& items = ItemsOf(*popup);
  const auto same = std::find_if(items.begin(), items.end(),
                                 [=](const MenuEntry& item) { return IsSameItem(item, popup->markedItem); });
  const bool stays = popup->marked != kNoItem && same != items.end();
  popup->marked = stays ? int32_t(same - items.begin()) : kNoItem;
  if (!popup->shown.onScreen) return;
  const PixelRect place = PlaceFor(*popup, SizeOf(*popup));
  if (!Same(place, popup->place)) {
    popup->place = place;
    DisplayPlaceWindow(popup->shown.display, place);
    if (!ResizeSurface(&popup->shown, WidthOf(place), HeightOf(place))) return;
  }
  Draw(popup);
}

PixelRect ItemPlace(const MenuPopup& popup, int32_t index) {
  return Moved(RowOfItem(popup, index), popup.place.left, popup.place.top);
}

int32_t ItemAt(const MenuPopup& popup, int32_t x, int32_t y) {
  for (int32_t i = 0; i < int32_t(ItemsOf(popup).size()); ++i) {
    if (Holds(ItemPlace(popup, i), x, y)) return IsSeparator(ItemsOf(popup)[size_t(i)]) ? kNoItem : i;
  }
  return kNoItem;
}

void MarkItem(MenuPopup* popup, int32_t index) {
  if (popup->marked == index) return;
  const int32_t before = popup->marked;
  popup->marked = index;
  if (index != kNoItem) popup->markedItem = ItemsOf(*popup)[size_t(index)];
  for (const int32_t each : {before, index}) {
    if (each == kNoItem || !popup->shown.onScreen) continue;
    DrawItem(*popup, each);
    NoteDamage(&popup->shown, RowOfItem(*popup, each));
  }
}

void StepInPopup(MenuPopup* popup, int32_t by) {
  const auto count = int32_t(ItemsOf(*popup).size());
  int32_t index = popup->marked == kNoItem && by < 0 ? count : popup->marked;
  for (int32_t i = 0; i < count; ++i) {
    index = (index + by + count) % count;
    if (!IsSeparator(ItemsOf(*popup)[size_t(index)])) return MarkItem(popup, index);
  }
}

} // namespace framereel
