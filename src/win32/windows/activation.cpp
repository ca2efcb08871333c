// Which window is active, which has the focus, which holds the mouse.
//
// Among our own windows a change takes effect at once, and the display follows. When another program has the keyboard,
// the display is asked for it, and everything happens once it says that the keyboard has come.
#include "win32/windows/activation.h"

#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/sending.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr uint32_t kAnswerMs = 500; // how long the display may take to give the keyboard

void AskForKeyboard(HWND topLevel) {
  WindowSystem& system = TheWindows();
  system.askedFor = topLevel->top->shown.display;
  system.askedAt = DisplayTick();
  DisplayActivateWindow(system.askedFor);
}

void SendFocus(HWND before, HWND after) {
  if (IsLive(before)) Send(before, WM_KILLFOCUS, reinterpret_cast<WPARAM>(after), 0);
  if (IsLive(after) && TheWindows().focus == after) {
    Send(after, WM_SETFOCUS, reinterpret_cast<WPARAM>(before), 0);
  }
}

void MoveFocus(HWND window) {
  WindowSystem& system = TheWindows();
  const HWND before = system.focus;
  if (before == window) return;
  system.focus = window;
  SendFocus(before, window);
}

void Deactivate(HWND window) {
  if (IsLive(window)) Send(window, WM_NCACTIVATE, FALSE, 0);
  if (IsLive(window)) Send(window, WM_ACTIVATE, 0, 0);
}

// Makes a top-level window of a program that has the keyboard the active one.
void Switch(HWND topLevel, bool byClick) {
  WindowSystem& system = TheWindows();
  const HWND before = system.active;
  if (before == topLevel) return;
  if (system.menuOwner && TopLevelOf(system.menuOwner) != topLevel) CancelMenu();
  if (!IsLive(topLevel)) return;
  system.active = system.lastActive = topLevel;
  Deactivate(before);
  if (!IsLive(topLevel) || system.active != topLevel) return;
  Send(topLevel, WM_NCACTIVATE, TRUE, 0);
  if (IsLive(topLevel) && system.active == topLevel) Send(topLevel, WM_ACTIVATE, byClick ? 2 : 1, 0);
}

bool CanBeActive(HWND window) {
  return IsShown(*window) && !window->minimised && !Has(*window, WS_DISABLED) && !window->beingDestroyed;
}

// A window that may be active in the place of one that may not: one that it owns, be it by others, as a dialog over a
// dialog is by the frame that the first one disables. Of several the one that was active last, which a palette that
// floats above it was not; else the topmost.
HWND StandIn(HWND topLevel) {
  if (CanBeActive(topLevel)) return topLevel;
  const HWND last = TheWindows().lastActive;
  if (IsLive(last) && IsOwnedBy(last, topLevel) && CanBeActive(last)) return last;
  for (HWND window : TheWindows().topLevels) {
    if (IsOwnedBy(window, topLevel) && CanBeActive(window)) return window;
  }
  return nullptr;
}

HWND NextActive(HWND leaving) {
  for (HWND owner = leaving->owner; owner; owner = owner->owner) {
    if (CanBeActive(owner)) return owner;
  }
  for (HWND window : TheWindows().topLevels) {
    if (window != leaving && CanBeActive(window)) return window;
  }
  return nullptr;
}

} // namespace

void Activate(HWND topLevel, bool byClick) {
  WindowSystem& system = TheWindows();
  if (!CanBeActive(topLevel)) return;
  if (system.active == topLevel && system.hasKeyboard) return;
  AskForKeyboard(topLevel);
  if (system.hasKeyboard) Switch(topLevel, byClick);
}

void ActivateByPress(HWND topLevel) {
  if (const HWND window = StandIn(topLevel)) Activate(window, true);
}

void ActivateNextOf(HWND topLevel) {
  WindowSystem& system = TheWindows();
  if (system.active != topLevel) return;
  const HWND next = NextActive(topLevel);
  if (next) return Activate(next, false);
  system.active = nullptr;
  Deactivate(topLevel);
  MoveFocus(nullptr);
}

void AskForKeyboardAgain() {
  if (TheWindows().askedFor) DisplayActivateWindow(TheWindows().askedFor);
}

namespace {

void KeyboardCame(HWND topLevel) {
  WindowSystem& system = TheWindows();
  if (!system.hasKeyboard) {
    system.hasKeyboard = true;
    SendToTopLevels(WM_ACTIVATEAPP, TRUE, 0);
  }
  if (!IsLive(topLevel)) return;
  const HWND window = StandIn(topLevel);
  if (window && window != topLevel) AskForKeyboard(window);
  if (window) Switch(window, false);
}

void KeyboardWent() {
  WindowSystem& system = TheWindows();
  const HWND before = system.active;
  CancelMenu();
  system.hasKeyboard = false;
  system.active = nullptr;
  Deactivate(before);
  SendToTopLevels(WM_ACTIVATEAPP, FALSE, 0);
  MoveFocus(nullptr);
}

} // namespace

void SettleKeyboard() {
  WindowSystem& system = TheWindows();
  // Between two windows of ours the display takes it from the one before it gives it to the other.
  if (system.askedFor && DisplayTick() - system.askedAt < kAnswerMs) return;
  system.askedFor = nullptr;
  const HWND holder = system.keyboardAt ? TopLevelOf(system.keyboardAt) : nullptr;
  // One that has been disabled, or minimised, meanwhile gives way as soon as there is who stands in for it.
  if (holder && (!system.hasKeyboard || holder != system.active || !CanBeActive(holder))) {
    KeyboardCame(holder);
  } else if (!holder && system.hasKeyboard) {
    KeyboardWent();
  }
}

void TellModal(HWND topLevel) {
  if (topLevel->top->role != WindowRole::kDialog || !topLevel->owner) return;
  DisplayModalWindow(topLevel->top->shown.display, Has(*topLevel->owner, WS_DISABLED));
}

void MoveCapture(HWND window) {
  WindowSystem& system = TheWindows();
  const HWND before = system.capture;
  system.capture = window;
  if (window) CancelMenu();
  if (before == window || !IsLive(before)) return;
  Send(before, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
}

bool AwaitsKeyboard() {
  return !TheWindows().hasKeyboard && TheWindows().askedFor;
}

void CancelMenu() {
  const HWND owner = TheWindows().menuOwner;
  if (IsLive(owner)) Send(owner, WM_CANCELMODE, 0, 0);
}

void ReleaseFrom(HWND window) {
  WindowSystem& system = TheWindows();
  if (system.menuOwner && IsWithin(system.menuOwner, window)) CancelMenu();
  if (system.capture && IsWithin(system.capture, window)) ::ReleaseCapture();
  if (system.focus && IsWithin(system.focus, window)) MoveFocus(nullptr);
}

} // namespace framereel

using namespace framereel;

BOOL EnableWindow(HWND window, BOOL enable) {
  if (!IsLive(window)) return FALSE;
  const BOOL before = Has(*window, WS_DISABLED);
  const bool changes = enable ? before : !before;
  if (!changes) return before;
  window->style = enable ? window->style & ~WS_DISABLED : window->style | WS_DISABLED;
  for (HWND topLevel : TheWindows().topLevels) {
    if (topLevel->owner == window) TellModal(topLevel);
  }
  if (!enable) ReleaseFrom(window);
  if (IsLive(window)) Send(window, WM_ENABLE, enable != FALSE, 0);
  return before;
}

HWND SetFocus(HWND window) {
  WindowSystem& system = TheWindows();
  const HWND before = system.focus;
  if (window && (!IsLive(window) || !IsEnabled(window) || IsGoing(window) || !system.hasKeyboard)) return before;
  const HWND topLevel = TopLevelOf(window);
  if (topLevel && topLevel->minimised) return before;
  if (topLevel && topLevel != system.active) Activate(topLevel, false);
  if (!window || (IsLive(window) && system.active == topLevel)) MoveFocus(window);
  return before;
}

HWND GetFocus() {
  return TheWindows().focus;
}

HWND SetCapture(HWND window) {
  WindowSystem& system = TheWindows();
  const HWND before = system.capture;
  if (!IsLive(window) || IsGoing(window)) return before;
  DisplayCapturePointer(TopLevelOf(window)->top->shown.display);
  MoveCapture(window);
  return before;
}

BOOL ReleaseCapture() {
  if (TheWindows().capture) DisplayCapturePointer(nullptr);
  MoveCapture(nullptr);
  return TRUE;
}
