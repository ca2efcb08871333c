// The loop of an open menu.
//
// The titles are the system menu's button and those of the bar. One is marked; its popup may be open, and each popup
// may have one of an item's open at its side. Each turn of the loop takes one event or, when there is none, lets the
// owner do something else; what that has made of the menus is seen at the beginning of the next turn (Refresh), so that
// nothing below works with a menu that is gone.
#include "win32/menus/menu_tracking.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "win32/drawing/mnemonics.h"
#include "win32/input/cursors.h"
#include "win32/input/keyboard.h"
#include "win32/input/message_loop.h"
#include "win32/menus/menu_popup.h"
#include "win32/menus/menu_titles.h"
#include "win32/menus/menus.h"
#include "win32/menus/system_menu.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/menu_bar.h"
#include "win32/windows/message_queue.h"
#include "win32/windows/sending.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

using Kind = DisplayEventKind;

constexpr uint32_t kNapMs = 10;   // between looks at the queue while nothing happens
constexpr uint32_t kRestMs = 250; // the mouse rests on an item so long until the popups follow it, and on a title until
                                  // a press on it is one on a menu that was open

constexpr int32_t kNoLevel = -1;

struct Tracking {
  HWND owner;
  bool dropped;                                   // the marked title shows its popup, if it has one
  uint32_t droppedAt;                             // tick since when
  std::vector<std::unique_ptr<MenuPopup>> popups; // the title's and, each at the side of the one before, those of items
  bool byDrag;                                    // the button that opened it is still down
  BYTE keys[256];                                 // as they were ahead of the event at hand
  int32_t restsAt;                                // level of the popup in which the mouse marked an item, or kNoLevel
  uint32_t restsSince;                            // tick of that
  bool rests;                                     // the popups have not followed that item yet
  bool done;
  UINT message, chosen; // what is posted in the end; 0: nothing
};

Tracking* current; // null: none is open

// ---- Popups ------------------------------------------------------------------------------------------------------

// Closes those from the level on.
void CloseFrom(Tracking* t, size_t level) {
  while (t->popups.size() > level) t->popups.pop_back();
}

void Open(Tracking* t, HMENU menu, const PixelRect& beside, bool ofItem) {
  if (menu->items.empty()) return;
  t->rests = false;
  t->restsAt = kNoLevel;
  t->popups.push_back(std::make_unique<MenuPopup>(t->owner, menu, beside, ofItem));
}

void MarkFirst(Tracking* t) {
  if (!t->popups.empty()) StepInPopup(t->popups.back().get(), 1);
}

void DropTitle(Tracking* t, int32_t title) {
  CloseFrom(t, 0);
  MarkTitle(t->owner, title);
  t->dropped = true;
  t->droppedAt = DisplayTick();
  if (title == kSystemMenuTitle) GreySystemMenu(t->owner);
  if (HMENU menu = MenuOfTitle(t->owner, title)) Open(t, menu, PlaceOfTitle(t->owner, title), false);
}

const MenuEntry* MarkedItem(const MenuPopup& popup) {
  return popup.marked == kNoItem ? nullptr : &popup.menu->items[size_t(popup.marked)];
}

// The popup that the marked item opens now; null for none.
HMENU MenuOfItem(const MenuPopup& popup) {
  const MenuEntry* item = MarkedItem(popup);
  return item && !IsGreyed(*item) ? item->popup : nullptr;
}

// The item of a popup that opens the menu, or kNoItem.
int32_t ItemOpening(const MenuPopup& popup, HMENU menu) {
  const std::vector<MenuEntry>& items = popup.menu->items;
  const auto opens = [menu](const MenuEntry& item) { return item.popup == menu && !IsGreyed(item); };
  const auto found = std::find_if(items.begin(), items.end(), opens);
  return found == items.end() ? kNoItem : int32_t(found - items.begin());
}

// Has the popup of the level's marked item open at its side, and no other.
void FollowItem(Tracking* t, size_t level) {
  const MenuPopup& popup = *t->popups[level];
  HMENU menu = MenuOfItem(popup);
  const bool isOpen = menu && level + 1 < t->popups.size() && t->popups[level + 1]->menu == menu;
  CloseFrom(t, level + (isOpen ? 2 : 1));
  if (menu && !isOpen) Open(t, menu, ItemPlace(popup, popup.marked), true);
}

// Takes the level's marked item: opens its popup, or ends with it.
void Choose(Tracking* t, size_t level) {
  const MenuEntry* item = MarkedItem(*t->popups[level]);
  if (!item || IsGreyed(*item)) return;
  if (item->popup) return FollowItem(t, level);
  t->chosen = item->id;
  t->message = MarkedTitle() == kSystemMenuTitle ? WM_SYSCOMMAND : WM_COMMAND;
  t->done = true;
}

// ---- What has become of it ---------------------------------------------------------------------------------------

// The title whose popup is open has a new place in the bar, or is gone.
void FindTitle(Tracking* t) {
  const HMENU open = t->popups.empty() ? nullptr : t->popups.front()->menu;
  if (!open || MenuOfTitle(t->owner, MarkedTitle()) == open) return;
  for (int32_t title = 0; title < CountTitles(*t->owner); ++title) {
    if (MenuOfTitle(t->owner, title) != open) continue;
    MarkTitle(t->owner, title);
    MenuPopup* popup = t->popups.front().get();
    popup->beside = PlaceOfTitle(t->owner, title);
    return RenewPopup(popup);
  }
  CloseFrom(t, 0);
}

void RenewPopups(Tracking* t) {
  for (size_t level = 0; level < t->popups.size(); ++level) {
    MenuPopup* popup = t->popups[level].get();
    if (level > 0 && ItemOpening(*t->popups[level - 1], popup->menu) == kNoItem) return CloseFrom(t, level);
    if (popup->changed == popup->menu->changed) continue;
    if (MarkedTitle() == kSystemMenuTitle && level == 0) GreySystemMenu(t->owner);
    RenewPopup(popup);
  }
}

void Refresh(Tracking* t) {
  if (!IsLive(t->owner) || !IsShown(*t->owner) || DisplayIsLost()) t->done = true;
  if (t->done) return;
  FindTitle(t);
  if (!HasTitle(t->owner, MarkedTitle())) t->done = true;
  RenewPopups(t);
}

// ---- The mouse ---------------------------------------------------------------------------------------------------

// What a point is over: an item of a popup, a popup's border, a title, or nothing of the menu's.
struct Spot {
  int32_t level; // of a popup, or kNoLevel
  int32_t item, title;
};

Spot SpotAt(const Tracking& t, int32_t x, int32_t y) {
  for (size_t level = t.popups.size(); level-- > 0;) {
    const MenuPopup& popup = *t.popups[level];
    if (Holds(popup.place, x, y)) return {int32_t(level), ItemAt(popup, x, y), kNoTitle};
  }
  return {kNoLevel, kNoItem, TitleAt(t.owner, x, y)};
}

// The items that the popup at hand comes from are marked again, and the item in it.
void MarkSpot(Tracking* t, const Spot& spot) {
  const auto level = size_t(spot.level);
  for (size_t above = 0; above < level; ++above) {
    MarkItem(t->popups[above].get(), ItemOpening(*t->popups[above], t->popups[above + 1]->menu));
  }
  MenuPopup* popup = t->popups[level].get();
  if (popup->marked == spot.item && t->restsAt == spot.level) return;
  MarkItem(popup, spot.item);
  t->restsAt = spot.level;
  t->restsSince = DisplayTick();
  t->rests = true;
}

void OnMove(Tracking* t, const Spot& spot) {
  if (spot.item != kNoItem) return MarkSpot(t, spot);
  if (spot.title != kNoTitle && t->dropped && spot.title != MarkedTitle()) return DropTitle(t, spot.title);
  const bool outside = spot.level == kNoLevel && spot.title == kNoTitle;
  if (outside && !t->popups.empty()) MarkItem(t->popups.back().get(), kNoItem);
}

void OnPress(Tracking* t, const Spot& spot) {
  if (spot.level != kNoLevel) {
    if (spot.item == kNoItem) return;
    MarkSpot(t, spot);
    return FollowItem(t, size_t(spot.level));
  }
  const bool isOpen = t->dropped && spot.title == MarkedTitle();
  // The way to a title opens it a moment ahead of the press on it.
  t->done = spot.title == kNoTitle || (isOpen && DisplayTick() - t->droppedAt >= kRestMs);
  t->byDrag = true;
  if (!t->done && !isOpen) DropTitle(t, spot.title);
}

// The release of the press that opened the menu may be over its title; elsewhere it is the end.
void OnRelease(Tracking* t, const Spot& spot) {
  const bool outside = spot.level == kNoLevel && spot.title == kNoTitle;
  if (outside && t->byDrag) t->done = true;
  t->byDrag = false;
  if (spot.item == kNoItem) return;
  MarkSpot(t, spot);
  Choose(t, size_t(spot.level));
}

void OnRest(Tracking* t) {
  if (!t->rests || DisplayTick() - t->restsSince < kRestMs) return;
  t->rests = false;
  const bool isOpen = t->restsAt != kNoLevel && size_t(t->restsAt) < t->popups.size();
  if (isOpen) FollowItem(t, size_t(t->restsAt));
}

// ---- The keyboard ------------------------------------------------------------------------------------------------

void OnUpOrDown(Tracking* t, int32_t by) {
  if (!t->popups.empty()) return StepInPopup(t->popups.back().get(), by);
  DropTitle(t, MarkedTitle());
  MarkFirst(t);
}

void OnLeftOrRight(Tracking* t, int32_t by) {
  const size_t depth = t->popups.size();
  if (by < 0 && depth > 1) return CloseFrom(t, depth - 1);
  if (by > 0 && depth > 0 && MenuOfItem(*t->popups.back())) {
    FollowItem(t, depth - 1);
    return MarkFirst(t);
  }
  const int32_t title = TitleBeside(t->owner, MarkedTitle(), by);
  if (!t->dropped) return MarkTitle(t->owner, title);
  if (title == MarkedTitle()) return;
  DropTitle(t, title);
  MarkFirst(t);
}

void OnReturn(Tracking* t) {
  const size_t depth = t->popups.size();
  if (depth == 0) return OnUpOrDown(t, 1);
  Choose(t, depth - 1);
  if (t->popups.size() > depth) MarkFirst(t);
}

// Back by a step: from a popup to the one it comes from, to the bar, out of the menu.
void OnEscape(Tracking* t) {
  if (t->popups.size() > 1) return CloseFrom(t, t->popups.size() - 1);
  t->done = !t->dropped || CountTitles(*t->owner) == 0;
  CloseFrom(t, 0);
  t->dropped = false;
}

// False when no item has the letter. One that several have marks the next of them.
bool PickItem(Tracking* t, uint8_t letter) {
  MenuPopup* popup = t->popups.back().get();
  const auto& items = popup->menu->items;
  const auto count = int32_t(items.size());
  int32_t found = kNoItem, matches = 0;
  for (int32_t i = 1; i <= count; ++i) {
    const int32_t index = (popup->marked + i + count) % count;
    const std::string& text = items[size_t(index)].text;
    if (!PicksText(MnemonicTextOf(text.substr(0, text.find('\t'))), letter)) continue;
    if (matches++ == 0) found = index;
  }
  if (matches == 0) return false;
  MarkItem(popup, found);
  if (matches == 1) OnReturn(t);
  return true;
}

void OnLetter(Tracking* t, uint8_t letter) {
  if (!t->popups.empty()) {
    if (!PickItem(t, letter)) DisplayBeep();
    return;
  }
  const int32_t title = letter == VK_SPACE ? kSystemMenuTitle : TitleOfLetter(t->owner, letter);
  if (!HasTitle(t->owner, title)) return DisplayBeep();
  DropTitle(t, title);
  MarkFirst(t);
}

// A key that repeats goes on through items and titles, and does nothing else: the one that opened the menu may still
// be down.
void OnKey(Tracking* t, const DisplayEvent& event) {
  switch (event.key) {
  case VK_UP:
  case VK_DOWN:
    return OnUpOrDown(t, event.key == VK_UP ? -1 : 1);
  case VK_LEFT:
  case VK_RIGHT:
    return OnLeftOrRight(t, event.key == VK_LEFT ? -1 : 1);
  default:
    if (t->keys[event.key] & 0x80) return;
  }
  switch (event.key) {
  case VK_RETURN:
    return OnReturn(t);
  case VK_ESCAPE:
    return OnEscape(t);
  case VK_MENU:
  case VK_F10:
    t->done = true;
    TheWindows().altAlone = false; // its release opens no other
    return;
  default:
    // Mnemonics are letters of ASCII.
    if (const char32_t letter = DisplayKeyCharacter(event.scan, false, false); letter >= ' ' && letter < 0x7F) {
      OnLetter(t, uint8_t(letter));
    }
  }
}

// ---- The loop ----------------------------------------------------------------------------------------------------

void Handle(Tracking* t, const DisplayEvent& event) {
  switch (event.kind) {
  case Kind::kKeyDown:
    OnKey(t, event);
    break;
  case Kind::kMouseMove:
    OnMove(t, SpotAt(*t, event.x, event.y));
    break;
  case Kind::kMouseDown:
    OnPress(t, SpotAt(*t, event.x, event.y));
    break;
  case Kind::kMouseUp:
    if (event.button == 1) OnRelease(t, SpotAt(*t, event.x, event.y));
    break;
  case Kind::kCaptureLost:
    t->done = true;
    break;
  default:
    break;
  }
  std::memcpy(t->keys, TheWindows().keys, sizeof t->keys);
}

void Run(Tracking* t) {
  while (!t->done) {
    DisplayEvent event;
    const bool some = NextInput(&event);
    Refresh(t);
    if (t->done) return;
    if (some) {
      Handle(t, event);
      continue;
    }
    OnRest(t);
    Send(t->owner, WM_ENTERIDLE, MSGF_MENU, 0);
    DisplaySleep(kNapMs);
  }
}

// Makes the menu the owner's, ends one that a loop further out has open, and has the mouse. False when that has cost
// the owner its life.
bool Begin(Tracking* t) {
  EndMenu();
  ::ReleaseCapture();
  if (!IsLive(t->owner) || !IsShown(*t->owner)) return false;
  WindowSystem& system = TheWindows();
  current = t;
  system.menuOwner = t->owner;
  system.markedTitle = kNoTitle;
  std::memcpy(t->keys, system.keys, sizeof t->keys);
  ShowPointerFor(t->owner, HTMENU);
  DisplayCapturePointer(TopLevelOf(t->owner)->top->shown.display);
  return true;
}

void RunToItsEnd(Tracking* t) {
  Run(t);
  if (current == t) EndMenu();
  if (t->chosen && IsLive(t->owner)) Post(t->owner, t->message, t->chosen, 0, false);
}

} // namespace

void RunMenuByMouse(HWND window, int hit, int32_t x, int32_t y) {
  Tracking t = {};
  t.owner = window;
  t.byDrag = KeyIsDown(VK_LBUTTON);
  const int32_t title = hit == HTSYSMENU ? kSystemMenuTitle : TitleAt(window, x, y);
  if (!MenuOfTitle(window, title) || !Begin(&t)) return;
  DropTitle(&t, title);
  RunToItsEnd(&t);
}

void RunMenuByKey(HWND window, uint8_t letter) {
  Tracking t = {};
  t.owner = window;
  const int32_t title = letter == VK_SPACE ? kSystemMenuTitle : letter ? TitleOfLetter(window, letter) : 0;
  if (!HasTitle(window, title)) {
    if (HasMenuBar(*window)) DisplayBeep();
    return;
  }
  if (!Begin(&t)) return;
  MarkTitle(window, title);
  if (letter) OnUpOrDown(&t, 1);
  RunToItsEnd(&t);
}

void EndMenu() {
  if (!current) return;
  Tracking* ended = std::exchange(current, nullptr);
  ended->done = true;
  CloseFrom(ended, 0);
  MarkTitle(ended->owner, kNoTitle);
  TheWindows().menuOwner = nullptr;
  // Somebody else may have it by now.
  if (!TheWindows().capture) DisplayCapturePointer(nullptr);
}

} // namespace framereel
