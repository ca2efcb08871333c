// The open list: its geometry, its drawing, and what the mouse does in it.
//
// Entries are numbered from 0; beside them a place in the list can be one of the arrows at its ends, alive where the
// list can scroll that way, else dead. The entry that the mouse is over is the current one. A click that has not moved
// the mouse off the selected entry leaves the list open: `moved` and `released` keep the two ways of choosing apart.
#include "toolkit/controls/popup_list.h"

#include <algorithm>

#include "core/memory.h"
#include "core/notices.h"
#include "core/numbers.h"
#include "core/rects.h"
#include "core/timers.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/input/mouse.h"
#include "platform/records/input_events.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"
#include "platform/windows/mouse_targets.h"
#include "platform/windows/paint_messages.h"
#include "platform/windows/window_geometry.h"
#include "toolkit/views/view.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr Scaled kTextLeft{4}, kRowGap{1}, kArrowBand{12}, kArrowReach{4};
constexpr Scaled kInset{2};                                // of its marks, and of a list that scrolls
constexpr Scaled kRoomAround{8};                           // of the main window's height that a list leaves free
constexpr int32_t kNone = -1, kUpAlive = -2, kUpDead = -3; // places that are no entry; two more follow the last

struct PopupState {
  ChildWindow* window;
  View* view;
  const PopupEntries* entries;
  PopupRoom room;
  void (*choose)(View* popup, uint16_t index);
  bool released, moved, scrolling;
  int32_t firstItem, currentItem;
  int16_t* tops; // of the entries, and behind the last one; owned
  int16_t listTop, listBottom;
  Timer* scrollTimer;
  int16_t lastX, lastY;
};

PopupState* open; // null while no list is

// ---- Places ------------------------------------------------------------------------------------------------------

int32_t DownAlive() {
  return open->entries->count + 1;
}
int32_t DownDead() {
  return open->entries->count + 2;
}

bool IsEntry(int32_t place) {
  return place >= 0 && place < open->entries->count;
}

// An entry that is no divider.
bool CanBeChosen(int32_t place) {
  return IsEntry(place) && open->entries->items[place].text;
}

bool IsAcross(int16_t x) {
  return x >= 0 && x < open->window->geometry.clientWidth;
}

bool IsInBand(int16_t y) {
  return y > open->listTop && y < open->listBottom;
}

int32_t PlaceOfUp() {
  return open->tops[0] < open->listTop ? kUpAlive : kUpDead;
}

int32_t PlaceOfDown() {
  return open->tops[open->entries->count] > open->listBottom ? DownAlive() : DownDead();
}

int32_t PlaceAt(int16_t y) {
  if (open->scrolling && y <= open->listTop) return PlaceOfUp();
  if (open->scrolling && y >= open->listBottom) return PlaceOfDown();
  int32_t place = kNone;
  while (place + 1 < open->entries->count && open->tops[place + 1] <= y) ++place;
  return place;
}

// ---- Drawing -----------------------------------------------------------------------------------------------------

Rect RowOf(int32_t entry) {
  return {int16_t(open->tops[entry] - kRowGap), 0, open->tops[entry + 1], open->window->geometry.clientWidth};
}

// Two strokes, two thin lines thick.
void DrawMark(int16_t middle) {
  const int32_t u = open->room.markWidth / 4;
  const int32_t corner = u + Scaled(3), right = 4 * u + Scaled(5);
  for (int32_t up = 0, lines = 2 * kThinLine; up < lines; ++up) {
    DrawLine(kInset, middle - up, corner, middle + u + 1 - up);
    DrawLine(corner, middle + u + 1 - up, right, middle - 2 * u - 1 - up);
  }
}

void DrawEntry(int32_t entry, bool highlighted) {
  const Rect row = RowOf(entry);
  const SavedClip clip = NarrowClip(0, open->listTop, row.right, open->listBottom);
  UseDrawState(DrawStateFill());
  SetForeColour(PrimaryColour(highlighted ? 0 : 7));
  FillRect(row);
  if (entry == open->entries->selected) {
    SetForeColour(PrimaryColour(highlighted ? 7 : 0));
    DrawMark(int16_t((row.top + row.bottom) / 2));
  }
  const Rect cell = {open->tops[entry], int16_t(kTextLeft + open->room.markRoom), row.bottom, row.right};
  DrawTextItem(open->view, open->entries->items[entry], cell, row, highlighted);
  RestoreClip(clip);
}

void DrawArrow(int32_t place) {
  const bool up = place == kUpAlive || place == kUpDead, alive = place == kUpAlive || place == DownAlive();
  const ChildWindow* window = open->window;
  const int16_t width = window->geometry.clientWidth, height = window->geometry.clientHeight;
  const auto top = int16_t(up ? 0 : height - kArrowBand);
  const int16_t reach = kArrowReach, middle = width / 2;
  const auto base = int16_t(top + (up ? 2 * reach : reach)), tip = int16_t(top + (up ? reach : 2 * reach));
  const Point corners[] = {{base, int16_t(middle - reach)}, {base, int16_t(middle + reach)}, {tip, middle}};
  UseDrawState(DrawStateFill());
  SetForeColour(PrimaryColour(7));
  FillRect({top, 0, int16_t(top + kArrowBand), width});
  SetForeColour(alive ? PrimaryColour(0) : ColourShadow());
  DrawPolygon(3, corners);
}

void DrawPlace(int32_t place, bool highlighted) {
  if (IsEntry(place)) {
    DrawEntry(place, highlighted && CanBeChosen(place));
  } else if (open->scrolling && place != kNone) {
    DrawArrow(place);
  }
}

void Paint(ChildWindow*) {
  const bool shows = open->moved && IsAcross(open->lastX);
  for (int32_t i = 0; i < open->entries->count; ++i) {
    if (RectNeedsPaint(RowOf(i))) DrawEntry(i, shows && i == open->currentItem && CanBeChosen(i));
  }
  if (!open->scrolling) return;
  DrawArrow(PlaceOfUp());
  DrawArrow(PlaceOfDown());
}

// ---- Scrolling ---------------------------------------------------------------------------------------------------

// How far the entries go down for the next one above to be seen whole, or up for the one below; 0 at the ends.
int32_t ScrollStep(bool up) {
  const int16_t *tops = open->tops, *end = open->tops + open->entries->count + 1;
  if (up) {
    const int16_t* first = std::lower_bound(tops, end, open->listTop);
    return first == tops ? 0 : open->listTop - first[-1];
  }
  const int16_t* below = std::upper_bound(tops, end, open->listBottom);
  return below == end ? 0 : open->listBottom - *below;
}

void AskForMouse(void*) {
  open->scrollTimer = nullptr;
  ResetMousePoint();
}

// While the mouse stays at an arrow the list goes on, the faster the farther it is beyond the edge.
void Scroll(int16_t y) {
  const bool up = y <= open->listTop;
  const int32_t step = ScrollStep(up);
  if (step == 0 || open->scrollTimer) return;
  for (int32_t i = 0; i <= open->entries->count; ++i) open->tops[i] = int16_t(open->tops[i] + step);
  const Rect band = {open->listTop, 0, open->listBottom, open->window->geometry.clientWidth};
  ScrollPortRect(band, 0, step);
  DrawArrow(PlaceOfUp());
  DrawArrow(PlaceOfDown());
  const int32_t beyond = up ? open->listTop - y : y - open->listBottom;
  open->scrollTimer = TimerSchedule(AskForMouse, nullptr, uint32_t(600 / (beyond + 2)));
}

// ---- The mouse ---------------------------------------------------------------------------------------------------

// Until the mouse has left the entry that it opened the list over, nothing counts as moved. False: still so.
bool HasMoved(int32_t place, bool valid) {
  if (open->moved) return true;
  if (!valid) return false;
  if (place != open->entries->selected) {
    if (place == open->firstItem) return false;
    if (open->firstItem == kNone) {
      open->firstItem = place;
      return false;
    }
  }
  open->moved = true;
  return true;
}

void MouseMoved(ChildWindow*, int16_t x, int16_t y) {
  const bool across = IsAcross(x), wasInside = IsAcross(open->lastX) && IsInBand(open->lastY);
  open->lastX = x;
  open->lastY = y;
  if (open->scrolling && across && !IsInBand(y)) Scroll(y);
  int32_t place = across ? PlaceAt(y) : kNone;
  const bool valid = open->scrolling ? IsEntry(place) : CanBeChosen(place);
  if (!HasMoved(place, valid)) return;
  const int32_t selected = open->entries->selected;
  if (!across) place = selected;
  const bool changed = place != open->currentItem || (place == selected && valid != wasInside);
  if (!changed) return;
  if (place != selected) open->released = true;
  DrawPlace(open->currentItem, false);
  if (across) DrawPlace(place, true);
  open->currentItem = place;
}

void Close() {
  CloseChildWindow(open->window);
}

void MouseDown(ChildWindow* window, uint16_t, int16_t x, int16_t y) {
  if (!open->moved) return;
  if (RectHas(ChildBounds(window), x, y)) {
    open->released = true;
  } else {
    Close();
  }
}

void MouseUp(ChildWindow*, uint16_t, int16_t, int16_t) {
  if (!open->released) return;
  const int32_t place = open->currentItem;
  const bool chosen = CanBeChosen(place) && place != open->entries->selected;
  View* view = open->view;
  const auto choose = open->choose;
  Close();
  if (chosen) choose(view, uint16_t(place));
}

void KeyDown(ChildWindow*, const KeyEvent& event, int16_t, int16_t) {
  if (event.character == kKeyEscape) Close();
}

// ---- Opening and closing -----------------------------------------------------------------------------------------

void Dismiss(ChildWindow*, MenuItem*) {
  Close();
}

void ActiveChanged(void*, bool active) {
  if (!active) Close();
}

// However the window goes, the state goes with it.
void ForgetList(intptr_t, void*) {
  ActiveRemove(ActiveChanged, nullptr);
  if (open->scrollTimer) TimerCancel(open->scrollTimer);
  MemFree(open->tops);
  MemFree(open);
  open = nullptr;
}

void LayEntries(PopupState* state) {
  const PopupEntries& entries = *state->entries;
  state->tops = static_cast<int16_t*>(MemAlloc((size_t{entries.count} + 1) * sizeof *state->tops));
  int32_t top = kRowGap;
  for (int32_t i = 0; i < entries.count; ++i) {
    state->tops[i] = PinToShort(top);
    top += entries.heights[i] + kRowGap;
  }
  state->tops[entries.count] = PinToShort(top);
}

void ShiftEntries(PopupState* state, int32_t by) {
  for (int32_t i = 0; i <= state->entries->count; ++i) state->tops[i] = PinToShort(state->tops[i] + by);
}

void SizeList(PopupState* state) {
  const int16_t needed = state->tops[state->entries->count];
  const auto available = int16_t(TheMainWindow()->geometry.clientHeight - kRoomAround);
  state->scrolling = needed > available;
  const int16_t height = state->scrolling ? available : needed;
  state->listTop = state->scrolling ? int16_t(kArrowBand) : int16_t{0};
  state->listBottom = int16_t(state->scrolling ? height - kArrowBand : height);
  const int32_t room = state->entries->widest + state->room.arrowWidth + state->room.markRoom + Scaled(10);
  SizeChildWindow(state->window, PinToShort(std::max(state->view->width - Scaled(3), room)), height);
}

// Over the Popup, its selected entry where the box is, as far as that can be. Answers how far from there it has come.
Point PlaceList(PopupState* state) {
  const View* view = state->view;
  const Point corner = ToToolkitPoint(view->window, {view->y, view->x});
  const int16_t selectedTop = state->tops[state->entries->selected];
  const auto x = int16_t(corner.h + kThinLine);
  const auto y = int16_t(state->scrolling ? TheMainWindow()->geometry.clientTop + kInset
                                          : corner.v - selectedTop + state->room.textTop);
  KeepChildWindowInside(state->window, x, y);
  const WindowGeometry& g = state->window->geometry;
  if (!state->scrolling) return {int16_t(g.clientTop - y), int16_t(g.clientLeft - x)};
  const int32_t wanted = corner.v - g.clientTop + state->room.textTop - selectedTop;
  ShiftEntries(
      state, PinValue(state->listBottom - state->tops[state->entries->count], wanted, state->listTop - state->tops[0]));
  return {0, int16_t(g.clientLeft - x)};
}

// The pointer stays over the selected entry.
void TakePointerAlong(const PopupState& state, Point moved) {
  int16_t x, y;
  GetMousePosition(&x, &y);
  if (state.scrolling) {
    const int16_t* top = &state.tops[state.entries->selected];
    const auto middle = int16_t(state.window->geometry.clientTop + (top[0] + top[1]) / 2);
    moved.v = int16_t(middle - y);
  }
  if (moved.h != 0 || moved.v != 0) SetMousePosition(int16_t(x + moved.h), int16_t(y + moved.v));
}

} // namespace

bool PopupListIsOpen() {
  return open;
}

void PopupListOpen(View* popup, const PopupEntries* entries, const PopupRoom& room, uint16_t flags, Point press,
                   void (*choose)(View* popup, uint16_t index)) {
  auto* state = static_cast<PopupState*>(MemAlloc(sizeof(PopupState)));
  *state = {};
  state->view = popup;
  state->entries = entries;
  state->room = room;
  state->choose = choose;
  state->firstItem = kNone;
  state->currentItem = entries->selected;
  ChildWindow* window = state->window = OpenChildWindow(nullptr, "", kWindowPopup | kWindowFilled);
  LayEntries(state);
  SizeList(state);
  const Point moved = PlaceList(state);
  open = state;
  NotifierAdd(&window->listeners, ForgetList, nullptr);
  SetWindowMethod(window, &WindowMethods::paint, Paint);
  SetWindowMethod(window, &WindowMethods::mouseDown, MouseDown);
  SetWindowMethod(window, &WindowMethods::mouseUp, MouseUp);
  SetWindowMethod(window, &WindowMethods::menuCommand, Dismiss);
  SetWindowMethod(window, &WindowMethods::mouseMoved, MouseMoved);
  SetWindowMethod(window, &WindowMethods::keyDown, KeyDown);
  ShowChildWindowFront(window);
  ReroutePress(window, flags, press.h, press.v);
  TakePointerAlong(*state, moved);
  ActiveAdd(ActiveChanged, nullptr);
}

void PopupListClose(const View* popup) {
  if (open && open->view == popup) Close();
}

} // namespace framereel
