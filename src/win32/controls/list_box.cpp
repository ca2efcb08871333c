// The class "listbox": what it shows, keys, mouse and messages. Its entries stand in list_entries.cpp, its scroll bar
// in scroll_bar.cpp.
#include "win32/controls/list_box.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "win32/controls/control_base.h"
#include "win32/controls/list_entries.h"
#include "win32/controls/scroll_bar.h"
#include "win32/drawing/fitted_text.h"
#include "win32/drawing/relief.h"
#include "win32/drawing/system_colours.h"
#include "win32/input/keyboard.h"
#include "win32/pixels/rectangles.h"
#include "win32/pixels/utf8.h"
#include "win32/win32_controls.h"
#include "win32/win32_drawing.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_timers.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr uint32_t kRepeatMs = 50;       // between steps while the mouse is held on the bar or beside the list
constexpr uint32_t kFirstRepeatMs = 300; // and until the first of them, on the bar
constexpr uint32_t kTypingMs = 1000;     // letters closer together than that are typed of one entry
constexpr int kWheelNotch = 120, kWheelRows = 3;
constexpr Scaled kMargin{2};
constexpr int32_t kTabLetters = 8;

struct ListBoxState {
  ListEntries entries;
  HFONT font;
  int32_t top;         // the first entry seen
  int32_t selected;    // or kNoEntry
  bool dragging;       // the mouse is captured and selects
  ScrollPart held;     // of the bar: the mouse is captured and holds it
  int32_t thumbGrip;   // of a thumb that is held: from its top to the mouse
  std::string typed;   // the letters that find an entry
  uint32_t typedSince; // tick of the last of them
};

// In their order, whoever asks.
ListBoxState& State(HWND list) {
  ListBoxState& state = *StateOf<ListBoxState>(list);
  SortEntries(&state.entries);
  return state;
}

int32_t CountOf(HWND list) {
  return int32_t(State(list).entries.texts.size());
}

// ---- Where it shows what -----------------------------------------------------------------------------------------

int32_t RowHeight(HWND list) {
  return std::max(1, LineHeight(ControlContext(list, State(list).font)));
}

// How many whole rows are seen; at least one.
int32_t RowsSeen(HWND list) {
  return std::max(1, HeightOf(ClientBounds(*list)) / RowHeight(list));
}

bool HasBar(HWND list) {
  return Has(*list, WS_VSCROLL) && CountOf(list) > RowsSeen(list);
}

ScrollBar BarOf(HWND list) {
  const PixelRect all = ClientBounds(*list);
  const PixelRect place = {std::max(all.left, all.right - kScrollBarWidth), all.top, all.right, all.bottom};
  return {place, CountOf(list), RowsSeen(list), State(list).top};
}

int32_t RowsRight(HWND list) {
  return HasBar(list) ? BarOf(list).place.left : ClientBounds(*list).right;
}

// The entry at that height, which may be one beyond those that there are.
int32_t EntryAt(HWND list, int32_t y) {
  const int32_t row = y < 0 ? -1 : y / RowHeight(list);
  return State(list).top + row;
}

void ScrollTo(HWND list, int32_t top) {
  ListBoxState& state = State(list);
  const int32_t wanted = std::clamp(top, 0, std::max(0, CountOf(list) - RowsSeen(list)));
  if (wanted == std::exchange(state.top, wanted)) return;
  InvalidateAll(list);
}

void Reveal(HWND list, int32_t entry) {
  const int32_t top = State(list).top, seen = RowsSeen(list);
  if (entry != kNoEntry) ScrollTo(list, std::clamp(top, entry - seen + 1, entry));
}

// ---- Its look ----------------------------------------------------------------------------------------------------

// Text with tabs stands in columns; any other is shortened to the row.
void DrawEntryText(HDC context, HWND list, std::string_view text, const PixelRect& row, COLORREF ground, COLORREF ink) {
  const bool greyed = Has(*list, WS_DISABLED), columns = Has(*list, LBS_USETABSTOPS);
  TEXTMETRICA metrics = {};
  ::GetTextMetricsA(context, &metrics);
  const int32_t step = std::max(1, metrics.tmAveCharWidth * kTabLetters);
  int32_t x = row.left + kMargin;
  for (;;) {
    const size_t tab = columns ? text.find('\t') : std::string_view::npos;
    const std::string part = FittedText(context, text.substr(0, tab), row.right - kMargin - x, TextCut::kMiddle);
    DrawLabel(context, x, row.top, part, greyed, ground, ink);
    if (tab == std::string_view::npos) return;
    x += (TextWidth(context, part) / step + 1) * step;
    text.remove_prefix(tab + 1);
  }
}

void DrawEntry(HDC context, HWND list, int32_t entry, const PixelRect& row) {
  const ListBoxState& state = State(list);
  const COLORREF paper = ::GetSysColor(Has(*list, WS_DISABLED) ? COLOR_BTNFACE : COLOR_WINDOW);
  const bool marked = entry == state.selected;
  const COLORREF ground = marked ? Legible(context, ::GetSysColor(kColourHighlight), paper) : paper;
  const COLORREF ink = marked ? ::GetSysColor(kColourHighlightText) : RGB(0, 0, 0);
  if (marked) FillPixels(context, row, ground);
  if (entry < CountOf(list)) {
    DrawEntryText(context, list, state.entries.texts[size_t(entry)], row, ground, Legible(context, ink, ground));
  }
  // Where the keyboard is: at the selected entry, or at the first one seen while there is none.
  const bool here = marked || (state.selected == kNoEntry && entry == state.top);
  if (here && ::GetFocus() == list) DrawDottedRect(context, row, ground);
}

LRESULT OnPaint(HWND list, WPARAM, LPARAM) {
  const ListBoxState& state = State(list);
  const ControlPaint context(list, state.font);
  const PixelRect all = ClientBounds(*list);
  FillPixels(context, all, ::GetSysColor(Has(*list, WS_DISABLED) ? COLOR_BTNFACE : COLOR_WINDOW));
  const int32_t height = RowHeight(list), right = RowsRight(list);
  const int32_t rows = std::max(1, std::min(RowsSeen(list), CountOf(list) - state.top));
  for (int32_t i = 0; i < rows; ++i) {
    DrawEntry(context, list, state.top + i, {all.left, all.top + i * height, right, all.top + (i + 1) * height});
  }
  if (HasBar(list)) DrawScrollBar(context, BarOf(list), state.held);
  return 0;
}

// ---- Selecting ---------------------------------------------------------------------------------------------------

// The last thing that is done with the list: it may be gone afterwards.
void Notify(HWND list, WORD notice) {
  if (list->style & LBS_NOTIFY) NotifyParent(list, notice);
}

bool Select(HWND list, int32_t entry) {
  const bool changes = State(list).selected != entry;
  State(list).selected = entry;
  Reveal(list, entry);
  InvalidateAll(list);
  return changes;
}

void SelectByKey(HWND list, int32_t entry) {
  if (CountOf(list) == 0) return;
  if (Select(list, std::clamp(entry, 0, CountOf(list) - 1))) Notify(list, LBN_SELCHANGE);
}

void Step(HWND list, int32_t by) {
  const ListBoxState& state = State(list);
  SelectByKey(list, state.selected == kNoEntry ? state.top : state.selected + by);
}

LRESULT OnKeyDown(HWND list, WPARAM wParam, LPARAM) {
  const int32_t page = std::max(1, RowsSeen(list) - 1);
  switch (wParam) {
  case VK_UP:
  case VK_LEFT:
    Step(list, -1);
    return 0;
  case VK_DOWN:
  case VK_RIGHT:
    Step(list, 1);
    return 0;
  case VK_PRIOR:
    Step(list, -page);
    return 0;
  case VK_NEXT:
    Step(list, page);
    return 0;
  case VK_HOME:
    SelectByKey(list, 0);
    return 0;
  case VK_END:
    SelectByKey(list, INT32_MAX);
    return 0;
  default:
    return 0;
  }
}

// A byte of UTF-8. One letter again and again goes through the entries that begin with it.
LRESULT OnChar(HWND list, WPARAM wParam, LPARAM) {
  const auto byte = char(wParam);
  if (uint8_t(byte) < ' ' || uint8_t(byte) == 127) return 0;
  ListBoxState& state = State(list);
  if (DisplayTick() - state.typedSince > kTypingMs) state.typed.clear();
  state.typedSince = DisplayTick();
  const bool again = state.typed.size() == 1 && state.typed[0] == byte;
  if (!again) state.typed += byte;
  if (IsBegunCharacter(state.typed)) return 0;
  const bool next = state.typed.size() == 1;
  const int32_t from = state.selected == kNoEntry ? 0 : state.selected + (next ? 1 : 0);
  const int32_t found = EntryBeginning(state.entries, state.typed, from);
  if (found != kNoEntry) SelectByKey(list, found);
  return 0;
}

// ---- The mouse ---------------------------------------------------------------------------------------------------

POINT PointOf(LPARAM lParam) {
  return {SHORT(LOWORD(uintptr_t(lParam))), SHORT(HIWORD(uintptr_t(lParam)))};
}

POINT PointerIn(HWND list) {
  POINT at = {0, 0};
  ::GetCursorPos(&at);
  const PixelRect client = ClientOnScreen(*list);
  return {at.x - client.left, at.y - client.top};
}

// To the entry at that height, or beyond those that are seen.
void DragTo(HWND list, int32_t y) {
  if (CountOf(list) == 0) return;
  Select(list, std::clamp(EntryAt(list, y), 0, CountOf(list) - 1));
}

// The pointer rests above or below and the entries go on passing by.
void DragOn(HWND list) {
  const PixelRect all = ClientBounds(*list);
  const int32_t y = PointerIn(list).y;
  if (y < all.top || y >= all.bottom) DragTo(list, y);
}

void MoveByPart(HWND list) {
  const ListBoxState& state = State(list);
  const int32_t page = std::max(1, RowsSeen(list) - 1);
  switch (state.held) {
  case ScrollPart::kUp:
    return ScrollTo(list, state.top - 1);
  case ScrollPart::kDown:
    return ScrollTo(list, state.top + 1);
  case ScrollPart::kPageUp:
    return ScrollTo(list, state.top - page);
  case ScrollPart::kPageDown:
    return ScrollTo(list, state.top + page);
  default:
    return;
  }
}

// While the mouse is held on the bar: as long as the part under it is still the one that was pressed.
void HoldOn(HWND list) {
  const POINT at = PointerIn(list);
  if (ScrollPartAt(BarOf(list), at.x, at.y) == State(list).held) MoveByPart(list);
  StartTimer(list, HoldOn, kRepeatMs);
}

void PressBar(HWND list, ScrollPart part, POINT at) {
  ListBoxState& state = State(list);
  state.held = part;
  state.thumbGrip = at.y - ThumbPlace(BarOf(list)).top;
  MoveByPart(list);
  InvalidateAll(list);
  if (part != ScrollPart::kThumb) StartTimer(list, HoldOn, kFirstRepeatMs);
}

// False when the list has lost what it needs for it.
bool TakeMouse(HWND list) {
  ::SetFocus(list);
  if (IsLive(list)) ::SetCapture(list);
  return IsLive(list) && TheWindows().capture == list;
}

LRESULT OnLeftDown(HWND list, WPARAM, LPARAM lParam) {
  if (!TakeMouse(list)) return 0;
  const POINT at = PointOf(lParam);
  const ScrollPart part = HasBar(list) ? ScrollPartAt(BarOf(list), at.x, at.y) : ScrollPart::kNone;
  if (part != ScrollPart::kNone) {
    PressBar(list, part, at);
    return 0;
  }
  State(list).dragging = true;
  if (EntryAt(list, at.y) < CountOf(list)) DragTo(list, at.y);
  StartTimer(list, DragOn, kRepeatMs);
  return 0;
}

LRESULT OnDoubleClick(HWND list, WPARAM wParam, LPARAM lParam) {
  const POINT at = PointOf(lParam);
  const bool onBar = HasBar(list) && ScrollPartAt(BarOf(list), at.x, at.y) != ScrollPart::kNone;
  // Another entry may stand there by now.
  const bool onSame = State(list).selected != kNoEntry && EntryAt(list, at.y) == State(list).selected;
  if (onBar || !onSame) return OnLeftDown(list, wParam, lParam);
  Notify(list, LBN_DBLCLK);
  return 0;
}

LRESULT OnMouseMove(HWND list, WPARAM, LPARAM lParam) {
  const POINT at = PointOf(lParam);
  const ListBoxState& state = State(list);
  if (state.dragging) DragTo(list, at.y);
  if (state.held == ScrollPart::kThumb) ScrollTo(list, TopForThumb(BarOf(list), at.y - state.thumbGrip));
  return 0;
}

LRESULT OnLeftUp(HWND list, WPARAM, LPARAM) {
  const bool selects = State(list).dragging;
  if (selects || State(list).held != ScrollPart::kNone) ::ReleaseCapture();
  if (IsLive(list) && selects && State(list).selected != kNoEntry) Notify(list, LBN_SELCHANGE);
  return 0;
}

LRESULT OnCaptureChanged(HWND list, WPARAM, LPARAM) {
  StopTimer(list, DragOn);
  StopTimer(list, HoldOn);
  State(list).dragging = false;
  State(list).held = ScrollPart::kNone;
  InvalidateAll(list);
  return 0;
}

LRESULT OnMouseWheel(HWND list, WPARAM wParam, LPARAM) {
  const int notches = SHORT(HIWORD(wParam)) / kWheelNotch;
  ScrollTo(list, State(list).top - notches * kWheelRows);
  return 0;
}

// ---- What it is told and asked -----------------------------------------------------------------------------------

LRESULT OnNcCreate(HWND list, WPARAM, LPARAM) {
  auto state = std::make_shared<ListBoxState>();
  state->entries.sorted = Has(*list, LBS_SORT);
  state->selected = kNoEntry;
  list->control = std::move(state);
  return TRUE;
}

LRESULT OnErase(HWND, WPARAM, LPARAM) {
  return TRUE; // what is painted covers all of it
}

LRESULT OnSetFont(HWND list, WPARAM wParam, LPARAM) {
  State(list).font = reinterpret_cast<HFONT>(wParam);
  InvalidateAll(list);
  return 0;
}

LRESULT OnLookChanged(HWND list, WPARAM, LPARAM) {
  InvalidateAll(list);
  return 0;
}

LRESULT OnKillFocus(HWND list, WPARAM, LPARAM) {
  State(list).typed.clear();
  InvalidateAll(list);
  Notify(list, LBN_KILLFOCUS);
  return 0;
}

LRESULT OnGetDialogCode(HWND, WPARAM, LPARAM) {
  return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

LRESULT OnAddString(HWND list, WPARAM, LPARAM lParam) {
  const auto* text = reinterpret_cast<const char*>(lParam);
  // Without State, which would sort all of them each time.
  ListEntries* entries = &StateOf<ListBoxState>(list)->entries;
  if (!entries->unsorted) InvalidateAll(list);
  AddEntry(entries, text ? text : "");
  return 0;
}

LRESULT OnResetContent(HWND list, WPARAM, LPARAM) {
  ListBoxState& state = State(list);
  state.entries.texts.clear();
  state.entries.unsorted = false;
  state.top = 0;
  state.selected = kNoEntry;
  InvalidateAll(list);
  return 0;
}

LRESULT OnSetSelection(HWND list, WPARAM wParam, LPARAM) {
  const auto entry = int32_t(wParam);
  if (entry < kNoEntry || entry >= CountOf(list)) return LB_ERR;
  Select(list, entry);
  return entry;
}

LRESULT OnGetSelection(HWND list, WPARAM, LPARAM) {
  const int32_t selected = State(list).selected;
  return selected == kNoEntry ? LB_ERR : selected;
}

// Null for an entry that is not there.
const std::string* TextOf(HWND list, WPARAM entry) {
  const std::vector<std::string>& texts = State(list).entries.texts;
  return entry < texts.size() ? &texts[entry] : nullptr;
}

LRESULT OnGetText(HWND list, WPARAM wParam, LPARAM lParam) {
  const std::string* text = TextOf(list, wParam);
  auto* to = reinterpret_cast<char*>(lParam);
  if (!text || !to) return LB_ERR;
  std::memcpy(to, text->c_str(), text->size() + 1);
  return LRESULT(text->size());
}

LRESULT OnGetTextLength(HWND list, WPARAM wParam, LPARAM) {
  const std::string* text = TextOf(list, wParam);
  return text ? LRESULT(text->size()) : LB_ERR;
}

constexpr MessageHandler kHandlers[] = {
    {WM_NCCREATE, OnNcCreate},
    {WM_PAINT, OnPaint},
    {WM_ERASEBKGND, OnErase},
    {WM_SETFONT, OnSetFont},
    {WM_ENABLE, OnLookChanged},
    {WM_SIZE, OnLookChanged},
    {WM_SETFOCUS, OnLookChanged},
    {WM_KILLFOCUS, OnKillFocus},
    {WM_GETDLGCODE, OnGetDialogCode},
    {WM_KEYDOWN, OnKeyDown},
    {WM_CHAR, OnChar},
    {WM_LBUTTONDOWN, OnLeftDown},
    {WM_LBUTTONDBLCLK, OnDoubleClick},
    {WM_MOUSEMOVE, OnMouseMove},
    {WM_LBUTTONUP, OnLeftUp},
    {WM_CAPTURECHANGED, OnCaptureChanged},
    {WM_MOUSEWHEEL, OnMouseWheel},
    {LB_ADDSTRING, OnAddString},
    {LB_RESETCONTENT, OnResetContent},
    {LB_SETCURSEL, OnSetSelection},
    {LB_GETCURSEL, OnGetSelection},
    {LB_GETTEXT, OnGetText},
    {LB_GETTEXTLEN, OnGetTextLength},
};

} // namespace

LRESULT ListBoxProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return HandleControlMessage(kHandlers, window, message, wParam, lParam);
}

} // namespace framereel
