// The cover, the corner that stays and the one that follows, and what ends it.
#include "area/selection.h"

#include <algorithm>

#include "area/ants.h"
#include "area/capture_area.h"
#include "area/readouts.h"
#include "area/window_picking.h"
#include "core/numbers.h"
#include "core/timers.h"
#include "gif/animation_stream.h"
#include "platform/display/beep.h"
#include "platform/display/display_caps.h"
#include "platform/input/mouse.h"
#include "platform/records/input_events.h"
#include "platform/records/window_records.h"
#include "platform/windows/child_window.h"
#include "platform/windows/cursor_shape.h"
#include "platform/windows/window_classes.h"
#include "platform/windows/window_geometry.h"
#include "recorder/engine/recorder_state.h"
#include "toolkit/views/view.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

constexpr uint16_t kArrowShape = 1, kCrossShape = 2; // of cursor_shape.h
constexpr uint16_t kBackdropClass = 201;             // without a background
constexpr int16_t kBackdropSide = 4000;              // pixels, so that a screen that grows is still covered
constexpr uint32_t kFollowInterval = 100;            // ms

AreaState& AreaOf(const ChildWindow* window) {
  return *static_cast<AreaState*>(window->userData);
}

// In one sum: wherever the main window has gone, what it comes to lies on the screen, but toolkit coordinates need not
// reach as far.
Point ToScreen(const ChildWindow* window, int16_t x, int16_t y) {
  const MainWindow* main = TheMainWindow();
  const WindowGeometry& g = window->geometry;
  return {PinToShort(y + g.clientTop + main->originY), PinToShort(x + g.clientLeft + main->originX)};
}

POINT Pointer() {
  POINT pointer = {};
  ::GetCursorPos(&pointer);
  return pointer;
}

Point PointerOnScreen() {
  const POINT pointer = Pointer();
  return {PinToShort(pointer.y), PinToShort(pointer.x)};
}

void MovePointer(int dx, int dy) {
  const POINT pointer = Pointer();
  ::SetCursorPos(pointer.x + dx, pointer.y + dy);
}

void SaveSettings(const AreaState& area) {
  if (area.panel.saveSettings) area.panel.saveSettings(area.panel.owner);
}

// ---- The rubber band; points are screen pixels -------------------------------------------------------------------

void SelectionUpdate(AreaState& area) {
  const bool up = AntsAreUp(area);
  if (up) AntsToggle(area);
  AreaFromCorners(area);
  ShowAreaReadouts(area);
  if (up) AntsToggle(area);
}

void PressAt(AreaState& area, Point p) {
  if (!area.selectionArmed) return;
  area.selectionArmed = false;
  area.selectionDragging = true;
  area.anchorX = area.cornerX = p.h;
  area.anchorY = area.cornerY = p.v;
  SelectionUpdate(area);
}

void DragTo(AreaState& area, Point p) {
  if (!area.selectionDragging || (p.h == area.cornerX && p.v == area.cornerY)) return;
  area.cornerX = p.h;
  area.cornerY = p.v;
  SelectionUpdate(area);
}

void FinishDrag(AreaState& area) {
  if (!area.selectionDragging) return;
  SelectionEnd(area);
  SaveSettings(area);
}

// In a keyboard drag no button is down: this is what keeps the band at the pointer.
void SelectionFollow(void* argument) {
  AreaState& area = *static_cast<AreaState*>(argument);
  area.followTimer = nullptr;
  DragTo(area, PointerOnScreen());
  area.followTimer = TimerSchedule(SelectionFollow, &area, kFollowInterval);
}

// A press at the pointer or, once that has been, a release.
void SelectionSpace(AreaState& area) {
  if (area.selectionArmed) {
    PressAt(area, PointerOnScreen());
    area.followTimer = TimerSchedule(SelectionFollow, &area, kFollowInterval);
  } else {
    FinishDrag(area);
  }
}

// A window, as far as it stands on the screen.
void TakeWindow(AreaState& area, const Rect& r) {
  const int16_t right = int16_t(TheDisplayCaps().screenWidth - 1), bottom = int16_t(TheDisplayCaps().screenHeight - 1);
  area.anchorX = int16_t(PinValue(0, r.left, right));
  area.anchorY = int16_t(PinValue(0, r.top, bottom));
  area.cornerX = int16_t(PinValue(0, r.right - 1, right));
  area.cornerY = int16_t(PinValue(0, r.bottom - 1, bottom));
  AreaFromCorners(area);
  ShowAreaReadouts(area);
}

// ---- The methods of the backdrop and the panel's window ----------------------------------------------------------

// Either button, with any modifiers.
void SelectionPress(ChildWindow* window, uint16_t, int16_t x, int16_t y) {
  PressAt(AreaOf(window), ToScreen(window, x, y));
}

void SelectionDrag(ChildWindow* window, int16_t x, int16_t y) {
  DragTo(AreaOf(window), ToScreen(window, x, y));
}

void SelectionRelease(ChildWindow* window, uint16_t, int16_t, int16_t) {
  FinishDrag(AreaOf(window));
}

// The backdrop goes first, so that the window is looked for as the screen is without it.
void WindowPickPress(ChildWindow* window, uint16_t, int16_t x, int16_t y) {
  AreaState& area = AreaOf(window);
  const Point at = ToScreen(window, x, y);
  SelectionEnd(area);
  Rect picked;
  if (FindWindowAt(at.h, at.v, &picked)) {
    TakeWindow(area, picked);
  } else {
    Beep();
  }
  SaveSettings(area);
}

// At rest. Answers whether the key is to be looked at further.
bool KeyAtRest(AreaState& area, uint8_t key) {
  if (key == kKeyEscape) {
    if (area.panel.stopSlide) area.panel.stopSlide(area.panel.owner);
    return false;
  }
  if (key == ' ') {
    if (area.recorder->stream->streamSize != 0) return false;
    SelectionBegin(area);
  }
  return true;
}

// A chord of Ctrl and Alt is no key, nor is Space held on: its repeats outlast the chord whose other keys are let go
// first.
bool IsNoKey(const KeyEvent& event) {
  constexpr uint16_t kChord = kFlagCtrl | kFlagAlt;
  return (event.modifiers & kChord) == kChord || (event.unshifted == ' ' && event.repeated);
}

// Shift and Ctrl change nothing about a key.
void SelectionKey(ChildWindow* window, const KeyEvent& event, int16_t, int16_t) {
  AreaState& area = AreaOf(window);
  const uint8_t key = event.unshifted;
  if (IsNoKey(event)) return;
  if (!area.selectionArmed && !area.selectionDragging && !KeyAtRest(area, key)) return;
  switch (key) {
  case kKeyEscape:
    SelectionEnd(area);
    SaveSettings(area);
    break;
  case kKeyLeft:
    MovePointer(-1, 0);
    break;
  case kKeyUp:
    MovePointer(0, -1);
    break;
  case kKeyRight:
    MovePointer(1, 0);
    break;
  case kKeyDown:
    MovePointer(0, 1);
    break;
  case ' ':
    if (!area.windowMode) SelectionSpace(area);
    break;
  default:
    break;
  }
}

void TakeKeys(AreaState& area, ChildWindow* window) {
  window->userData = &area;
  SetWindowMethod(window, &WindowMethods::keyDown, SelectionKey);
}

// ---- The backdrop ------------------------------------------------------------------------------------------------

// Over the whole screen, from its corner on.
ChildWindow* OpenBackdrop() {
  SelectWindowClass(kBackdropClass);
  ChildWindow* backdrop = OpenChildWindow(nullptr, "", kWindowUnclamped | kWindowModal | kWindowPopup);
  const MainWindow* main = TheMainWindow();
  const int16_t width = std::max(kBackdropSide, TheDisplayCaps().screenWidth);
  const int16_t height = std::max(kBackdropSide, TheDisplayCaps().screenHeight);
  SetWindowLimits(backdrop, width, height);
  SizeChildWindow(backdrop, width, height);
  PlaceChildWindow(backdrop, PinToShort(-main->originX), PinToShort(-main->originY));
  return backdrop;
}

} // namespace

void SelectionTakeWindow(AreaState& area, ChildWindow* window) {
  TakeKeys(area, window);
  SetWindowMethod(window, &WindowMethods::mouseDown, SelectionPress);
  SetWindowMethod(window, &WindowMethods::mouseMoved, SelectionDrag);
  SetWindowMethod(window, &WindowMethods::mouseUp, SelectionRelease);
}

void SelectionBegin(AreaState& area) {
  if (area.backdrop || area.recorder->control.optionsFrozen) return;
  area.selectionArmed = true;
  SetCursorShape(kCrossShape);
  area.backdrop = OpenBackdrop();
  ShowChildWindow(area.backdrop);
  if (area.windowMode) {
    TakeKeys(area, area.backdrop);
    SetWindowMethod(area.backdrop, &WindowMethods::mouseDown, WindowPickPress);
    WindowPickBegin(area);
  } else {
    SelectionTakeWindow(area, area.backdrop);
  }
  SetWindowMethod(
      area.backdrop, &WindowMethods::mayClose, +[](ChildWindow*) { return false; });
  HoldCapture(area.backdrop);
  ::SetCursor(::LoadCursorA(nullptr, IDC_CROSS)); // at once, not with the next move of the mouse
  AntsShow(area);
  AntsResume(area); // the band is to be seen, even if the last selection has only just ended
}

void SelectionEnd(AreaState& area) {
  if (!area.backdrop) return;
  AntsHide(area);
  WindowPickEnd(area);
  ::SetCursor(::LoadCursorA(nullptr, IDC_ARROW));
  ReleaseHeldCapture();
  CloseChildWindow(area.backdrop);
  area.backdrop = nullptr;
  // What others painted under the line, and the read-outs that were painted on the panel, go with the backdrop.
  RefreshScreen(area);
  if (area.followTimer) TimerCancel(area.followTimer);
  area.followTimer = nullptr;
  area.selectionDragging = area.selectionArmed = false;
  SetCursorShape(kArrowShape);
}

} // namespace framereel
