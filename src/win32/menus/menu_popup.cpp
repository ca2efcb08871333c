// The popup of a menu: its look, and choosing from it with mouse and keyboard.
//
// It is a window of the display's but not one of the tree, and runs a loop of its own: while it is open all keys and
// the mouse are its own. A press outside, Escape, or another program taking the keyboard closes it.
#include "win32/menus/menu_popup.h"

#include <algorithm>
#include <cctype>

#include "win32/drawing/contexts.h"
#include "win32/drawing/relief.h"
#include "win32/drawing/system_colours.h"
#include "win32/input/keyboard.h"
#include "win32/input/message_loop.h"
#include "win32/pixels/rectangles.h"
#include "win32/windows/sending.h"
#include "win32/windows/window_surfaces.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

using Kind = DisplayEventKind;

constexpr uint32_t kNapMs = 10; // between looks at the queue while nothing happens
constexpr int32_t kBorder = 3, kItemMargin = 2, kTextLeft = 20, kTextGap = 24, kTextRight = 12, kSeparator = 8;
constexpr int32_t kNone = -1;

struct OpenMenu {
  const Win32Menu* menu;
  ShownSurface shown;
  HDC context;
  int32_t left, top, width, height; // on the screen
  int32_t lineHeight, baseline;
  int32_t marked; // index of the item that the next Return or release chooses, or kNone
  bool byDrag;    // the button that opened it is still down
  bool done;
  UINT chosen;
};

bool IsSeparator(const MenuItem& item) {
  return item.flags & MF_SEPARATOR;
}

bool CanBeChosen(const MenuItem& item) {
  return !IsSeparator(item) && !(item.flags & MF_GRAYED);
}

// An item's text in its two halves, without the sign before the letter that picks it.
struct ItemText {
  std::string label, keys;
  size_t letter; // place of that letter in the label, or npos
};

ItemText TextOf(const MenuItem& item) {
  const size_t tab = item.text.find('\t');
  ItemText text = {item.text.substr(0, tab), tab == std::string::npos ? "" : item.text.substr(tab + 1), 0};
  text.letter = text.label.find('&');
  if (text.letter != std::string::npos) text.label.erase(text.letter, 1);
  if (text.letter >= text.label.size()) text.letter = std::string::npos;
  return text;
}

int32_t WidthOf(HDC context, const std::string& text) {
  SIZE size = {0, 0};
  ::GetTextExtentPointA(context, text.data(), int(text.size()), &size);
  return size.cx;
}

int32_t HeightOf(const OpenMenu& open, const MenuItem& item) {
  return IsSeparator(item) ? kSeparator : open.lineHeight;
}

PixelRect ItemPlace(const OpenMenu& open, int32_t index) {
  int32_t top = kBorder;
  for (int32_t i = 0; i < index; ++i) top += HeightOf(open, open.menu->items[size_t(i)]);
  return {kBorder, top, open.width - kBorder, top + HeightOf(open, open.menu->items[size_t(index)])};
}

int32_t ItemAt(const OpenMenu& open, int32_t x, int32_t y) {
  for (int32_t i = 0; i < int32_t(open.menu->items.size()); ++i) {
    if (Holds(ItemPlace(open, i), x - open.left, y - open.top)) return i;
  }
  return kNone;
}

bool IsInside(const OpenMenu& open, int32_t x, int32_t y) {
  return Holds({open.left, open.top, open.left + open.width, open.top + open.height}, x, y);
}

// ---- Its look ----------------------------------------------------------------------------------------------------

void DrawSeparator(const OpenMenu& open, const PixelRect& place) {
  const int32_t y = (place.top + place.bottom) / 2;
  const COLORREF dark = Legible(open.context, ::GetSysColor(COLOR_BTNSHADOW), ::GetSysColor(COLOR_MENU));
  FillPixels(open.context, {place.left, y - 1, place.right, y}, dark);
  FillPixels(open.context, {place.left, y, place.right, y + 1}, ::GetSysColor(kColourButtonHighlight));
}

void DrawLabel(const OpenMenu& open, const MenuItem& item, const PixelRect& place) {
  const ItemText text = TextOf(item);
  const int32_t y = place.top + kItemMargin;
  ::TextOutA(open.context, place.left + kTextLeft, y, text.label.data(), int(text.label.size()));
  const int32_t right = place.right - kTextRight - WidthOf(open.context, text.keys);
  ::TextOutA(open.context, right, y, text.keys.data(), int(text.keys.size()));
  if (text.letter == std::string::npos) return;
  const int32_t from = place.left + kTextLeft + WidthOf(open.context, text.label.substr(0, text.letter));
  const int32_t to = place.left + kTextLeft + WidthOf(open.context, text.label.substr(0, text.letter + 1));
  const int32_t under = y + open.baseline + 1;
  FillPixels(open.context, {from, under, to, under + 1}, open.context->textColour);
}

void DrawCheck(const OpenMenu& open, const PixelRect& place) {
  // A tick: down to the right and up again.
  const int32_t left = place.left + 6, middle = (place.top + place.bottom) / 2;
  for (int32_t i = 0; i < 7; ++i) {
    const int32_t y = middle + (i < 3 ? i - 1 : 3 - i);
    FillPixels(open.context, {left + i, y - 1, left + i + 1, y + 2}, open.context->textColour);
  }
}

void DrawItem(const OpenMenu& open, int32_t index) {
  const MenuItem& item = open.menu->items[size_t(index)];
  const PixelRect place = ItemPlace(open, index);
  const bool marked = index == open.marked;
  const COLORREF ground = ::GetSysColor(marked ? kColourHighlight : COLOR_MENU);
  FillPixels(open.context, place, ground);
  if (IsSeparator(item)) return DrawSeparator(open, place);
  const int colour = item.flags & MF_GRAYED ? COLOR_GRAYTEXT : marked ? kColourHighlightText : kColourMenuText;
  ::SetTextColor(open.context, Legible(open.context, ::GetSysColor(colour), ground));
  DrawLabel(open, item, place);
  if (item.flags & MF_CHECKED) DrawCheck(open, place);
}

void DrawMenu(OpenMenu* open) {
  const PixelRect all = {0, 0, open->width, open->height};
  FillPixels(open->context, all, ::GetSysColor(COLOR_WINDOWFRAME));
  FillPixels(open->context, {1, 1, open->width - 1, open->height - 1}, ::GetSysColor(COLOR_MENU));
  for (int32_t i = 0; i < int32_t(open->menu->items.size()); ++i) DrawItem(*open, i);
  NoteDamage(&open->shown, all);
}

void Mark(OpenMenu* open, int32_t index) {
  if (open->marked == index) return;
  const int32_t before = open->marked;
  open->marked = index;
  for (const int32_t changed : {before, index}) {
    if (changed == kNone) continue;
    DrawItem(*open, changed);
    NoteDamage(&open->shown, ItemPlace(*open, changed));
  }
}

// ---- Opening and closing -----------------------------------------------------------------------------------------

void Measure(OpenMenu* open) {
  TEXTMETRICA metrics = {};
  ::GetTextMetricsA(open->context, &metrics);
  open->lineHeight = metrics.tmHeight + 2 * kItemMargin;
  open->baseline = metrics.tmAscent;
  int32_t label = 0, keys = 0;
  open->height = 2 * kBorder;
  for (const MenuItem& item : open->menu->items) {
    const ItemText text = TextOf(item);
    label = std::max(label, WidthOf(open->context, text.label));
    if (!text.keys.empty()) keys = std::max(keys, WidthOf(open->context, text.keys) + kTextGap);
    open->height += HeightOf(*open, item);
  }
  open->width = 2 * kBorder + kTextLeft + label + keys + kTextRight;
}

void FindPlace(OpenMenu* open, const PixelRect& strip) {
  const PixelRect room = DisplayUsableArea();
  open->left = std::max(room.left, std::min(strip.left, room.right - open->width));
  open->top = strip.bottom;
  if (open->top + open->height > room.bottom) open->top = strip.top - open->height;
  open->top = std::max(room.top, open->top);
}

bool OpenOn(OpenMenu* open, HWND owner, const PixelRect& strip) {
  open->context = NewContext();
  Measure(open);
  FindPlace(open, strip);
  const PixelRect place = {open->left, open->top, open->left + open->width, open->top + open->height};
  open->shown.display = DisplayNewWindow({WindowRole::kPopup, place, TopLevelOf(owner)->top->shown.display, ""});
  if (!open->shown.display || !ResizeSurface(&open->shown, open->width, open->height)) return false;
  open->context->surface = &open->shown.surface;
  TheWindows().shown.push_back(&open->shown);
  DrawMenu(open);
  open->shown.onScreen = true;
  DisplayShowWindow(open->shown.display, true);
  DisplayCapturePointer(open->shown.display);
  return true;
}

void Close(OpenMenu* open) {
  DisplayCapturePointer(nullptr);
  FreeShown(&open->shown);
  FreeContext(open->context);
}

// ---- Choosing ----------------------------------------------------------------------------------------------------

void Choose(OpenMenu* open, int32_t index) {
  if (index == kNone || !CanBeChosen(open->menu->items[size_t(index)])) return;
  open->chosen = open->menu->items[size_t(index)].id;
  open->done = true;
}

// The next item up or down, going round at the ends.
void Step(OpenMenu* open, int32_t by) {
  const auto count = int32_t(open->menu->items.size());
  int32_t index = open->marked == kNone && by < 0 ? count : open->marked;
  for (int32_t i = 0; i < count; ++i) {
    index = (index + by + count) % count;
    if (!IsSeparator(open->menu->items[size_t(index)])) return Mark(open, index);
  }
}

// Virtual keys are named by capital letters and digits.
void PickByLetter(OpenMenu* open, uint8_t key) {
  for (int32_t i = 0; i < int32_t(open->menu->items.size()); ++i) {
    const ItemText text = TextOf(open->menu->items[size_t(i)]);
    if (text.letter == std::string::npos) continue;
    if (std::toupper(uint8_t(text.label[text.letter])) == key) return Choose(open, i);
  }
}

void OnKey(OpenMenu* open, const DisplayEvent& event) {
  switch (event.key) {
  case VK_UP:
    return Step(open, -1);
  case VK_DOWN:
    return Step(open, 1);
  case VK_RETURN:
    return Choose(open, open->marked);
  case VK_ESCAPE:
  case VK_MENU:
    open->done = true;
    return;
  default:
    return PickByLetter(open, event.key);
  }
}

void OnMouse(OpenMenu* open, const DisplayEvent& event) {
  const bool inside = IsInside(*open, event.x, event.y);
  const int32_t item = ItemAt(*open, event.x, event.y);
  if (inside && event.kind == Kind::kMouseMove && (item == kNone || IsSeparator(open->menu->items[size_t(item)]))) {
    return;
  }
  Mark(open, item != kNone && !IsSeparator(open->menu->items[size_t(item)]) ? item : kNone);
  if (event.kind == Kind::kMouseDown && !inside) open->done = true;
  if (event.kind != Kind::kMouseUp) return;
  // The release of the press that opened it chooses nothing unless it is over an item.
  const bool first = open->byDrag && !inside;
  open->byDrag = false;
  if (!first) Choose(open, item);
}

void Handle(OpenMenu* open, const DisplayEvent& event) {
  switch (event.kind) {
  case Kind::kKeyDown:
    return OnKey(open, event);
  case Kind::kMouseMove:
  case Kind::kMouseDown:
  case Kind::kMouseUp:
    return OnMouse(open, event);
  case Kind::kCaptureLost:
    open->done = true;
    return;
  default:
    return;
  }
}

void Run(OpenMenu* open, HWND owner) {
  constexpr WPARAM menuIsOpen = 2;
  while (!open->done && IsLive(owner) && TheWindows().hasKeyboard && !DisplayIsLost()) {
    DisplayEvent event;
    if (NextInput(&event)) {
      Handle(open, event);
      continue;
    }
    Send(owner, WM_ENTERIDLE, menuIsOpen, 0);
    DisplaySleep(kNapMs);
  }
}

} // namespace

UINT ChooseFromMenu(HWND owner, const Win32Menu& menu, const PixelRect& strip, bool byKeyboard) {
  OpenMenu open = {};
  open.menu = &menu;
  open.marked = kNone;
  open.byDrag = !byKeyboard && KeyIsDown(VK_LBUTTON);
  if (OpenOn(&open, owner, strip)) {
    if (byKeyboard) Step(&open, 1);
    Run(&open, owner);
  }
  Close(&open);
  return open.chosen;
}

} // namespace framereel
