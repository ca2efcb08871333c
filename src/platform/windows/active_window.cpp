// Choosing the active window and telling it.
#include "platform/windows/active_window.h"

#include "core/notices.h"
#include "platform/drawing/ports.h"
#include "platform/records/window_records.h"
#include "platform/windows/modal.h"
#include "platform/windows/window_list.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

struct ActivationState {
  ChildWindow* active;
  bool suspended;
};

ActivationState state;

void ActivatedStep(ChildWindow* window) {
  if (window->activated) return;
  window->activated = true;
  SetPortWindow(window);
  window->methods.activated(window);
}

void DeactivatedStep(ChildWindow* window) {
  if (!window->activated) return;
  window->activated = false;
  SetPortWindow(window);
  window->methods.deactivated(window);
}

// Tells the window as the platform tells a window of the desktop. Its own procedure may have taken the step already,
// and then this one is not taken again.
void TellActive(ChildWindow* window, bool active) {
  ::SendMessageA(window->window, WM_NCACTIVATE, active, 0);
  ::SendMessageA(window->window, WM_ACTIVATE, active, 0);
  (active ? ActivatedStep : DeactivatedStep)(window);
}

// Popups and palettes float above the one that is at work, and so does a picture such as the splash.
ChildWindow* TopDesktopWindow() {
  const HWND top = ::GetTopWindow(nullptr);
  ChildWindow* window = ::IsWindowVisible(top) ? FindChildWindow(top) : nullptr;
  return window && !(window->flags & (kWindowPalette | kWindowPopup | kWindowLoosePopup)) ? window : nullptr;
}

ChildWindow* ChooseActiveWindow() {
  for (ChildWindow* modal = GetModalWindow(); modal; modal = modal->previousModal) {
    if (!(modal->flags & kWindowPopup)) return modal;
  }
  if (ChildWindow* window = TopDesktopWindow()) return window;
  const HWND top = ::GetTopWindow(TheMainWindow()->window);
  return ::IsWindowVisible(top) ? FindChildWindow(top) : nullptr;
}

} // namespace

void ActiveWindowStartUp() {
  state = {};
  if (!ActiveGet()) ActiveSet(true);
}

ChildWindow* ActiveWindow() {
  return state.active;
}

void ForgetActiveWindow(const ChildWindow* window) {
  if (state.active == window) state.active = nullptr;
}

void EvaluateActiveWindow() {
  if (state.suspended) return;
  ChildWindow* next = ActiveGet() ? ChooseActiveWindow() : nullptr;
  if (next == state.active) return;
  if (ChildWindow* last = state.active) {
    state.active = nullptr;
    TellActive(last, false);
  }
  if (next && !(next->flags & kWindowClosed)) {
    state.active = next;
    TellActive(next, true);
    return;
  }
  RestoreFocus();
}

void RestoreFocus() {
  if (!ActiveGet()) return;
  const ChildWindow* modal = GetModalWindow();
  ::SetFocus(modal ? modal->window : TheMainWindow()->window);
}

void SuspendActivation() {
  state.suspended = true;
  if (state.active) TellActive(state.active, false);
}

void ResumeActivation() {
  state.suspended = false;
  if (state.active) return TellActive(state.active, true);
  EvaluateActiveWindow(); // the program has been left and come back to meanwhile
}

void CheckActiveState() {
  const MainWindow* main = TheMainWindow();
  const bool active = main->appActive && !main->iconic;
  if (active == ActiveGet()) return;
  ActiveSet(active);
  EvaluateActiveWindow();
  ::SendMessageA(main->window, WM_NCACTIVATE, active, 0);
}

void ChildActivated(ChildWindow* window) {
  if (!(window->flags & kWindowPalette)) ::SetFocus(window->window);
  ActivatedStep(window);
}

void ChildDeactivated(ChildWindow* window) {
  if (window == GetModalWindow()) DismissPopup();
  DeactivatedStep(window);
}

} // namespace framereel
