// What the display tells: the user's and the desktop's doings with our windows, and with the screen. Input goes into
// the queue; the rest takes effect at once.
#include "win32/input/desktop_events.h"

#include "win32/input/input_messages.h"
#include "win32/input/keyboard.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_windows.h"
#include "win32/windows/activation.h"
#include "win32/windows/message_queue.h"
#include "win32/windows/placement.h"
#include "win32/windows/screen_changes.h"
#include "win32/windows/window_surfaces.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

ShownSurface* ShownOf(const DisplayWindow* display) {
  for (ShownSurface* shown : TheWindows().shown) {
    if (shown->display == display) return shown;
  }
  return nullptr;
}

void OnActive(const DisplayEvent& event) {
  WindowSystem& system = TheWindows();
  if (event.flag) {
    if (!system.keyboardAt) SyncKeys();
    system.keyboardAt = event.window;
    if (system.askedFor == event.window) system.askedFor = nullptr;
  } else if (system.keyboardAt == event.window) {
    system.keyboardAt = nullptr;
  }
}

// Not every desktop gives a window the keyboard that is clicked on.
void OnPress(const DisplayEvent& event) {
  MSG message;
  if (!TheWindows().hasKeyboard) {
    const HWND taken = MessageOfInput(event, &message) ? TopLevelOf(message.hwnd) : TopLevelOf(event.window);
    if (taken) ActivateByPress(taken);
  }
  EnqueueInput(event);
}

void OnMinimised(HWND window, bool minimised) {
  CancelMenu();
  if (!IsLive(window)) return;
  if (minimised) {
    Minimise(window, true);
  } else {
    Restore(window, true);
  }
}

void OnCaptureLost(const DisplayEvent& event) {
  MoveCapture(nullptr);
  // For whoever follows the mouse in a loop of its own.
  EnqueueInput(event);
}

// A menu would not let it through.
void PostOfSession(HWND window, UINT message, WPARAM ends) {
  CancelMenu();
  if (IsLive(window)) Post(window, message, ends, 0, false);
}

void OnWindowEvent(HWND window, const DisplayEvent& event) {
  switch (event.kind) {
  case DisplayEventKind::kPlaced:
    return Place(window, event.rect, true);
  case DisplayEventKind::kMinimised:
    return OnMinimised(window, event.flag);
  case DisplayEventKind::kCloseRequest:
    CancelMenu();
    // A disabled window waits for its dialog.
    if (IsLive(window) && !Has(*window, WS_DISABLED)) Post(window, WM_SYSCOMMAND, SC_CLOSE, 0, false);
    return;
  case DisplayEventKind::kSessionAsks:
    return PostOfSession(window, WM_QUERYENDSESSION, FALSE);
  case DisplayEventKind::kSessionEnds:
    return PostOfSession(window, WM_ENDSESSION, event.flag);
  case DisplayEventKind::kDestroyed:
    ::DestroyWindow(window);
    return;
  default:
    return;
  }
}

void Handle(const DisplayEvent& event) {
  switch (event.kind) {
  case DisplayEventKind::kMouseDown:
    return OnPress(event);
  case DisplayEventKind::kMouseMove:
  case DisplayEventKind::kMouseUp:
  case DisplayEventKind::kMouseWheel:
  case DisplayEventKind::kKeyDown:
  case DisplayEventKind::kKeyUp:
  case DisplayEventKind::kKeysUnseen:
    return EnqueueInput(event);
  case DisplayEventKind::kExposed:
    if (ShownSurface* shown = ShownOf(event.window)) NoteDamage(shown, event.rect);
    return;
  case DisplayEventKind::kActive:
    return OnActive(event);
  case DisplayEventKind::kCaptureLost:
    return OnCaptureLost(event);
  case DisplayEventKind::kScreenChanged:
    return OnScreenChanged();
  default:
    if (const HWND window = TopLevelOf(event.window)) OnWindowEvent(window, event);
  }
}

} // namespace

void PumpDisplay() {
  DisplayEvent event;
  while (DisplayNextEvent(&event)) Handle(event);
  SettleKeyboard();
}

} // namespace framereel
