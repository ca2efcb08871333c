// See mouse.h. Any handler may close its window or destroy its View, so whoever goes on after a call looks at the
// flags of the records again; those stay readable until the pass of the event loop ends.
#include "platform/input/mouse.h"

#include "platform/input/keys.h"
#include "platform/records/later_modules.h"
#include "platform/records/view_record.h"
#include "platform/windows/active_window.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"
#include "platform/windows/modal.h"

namespace framereel {
namespace {

constexpr Point kNoPoint = {0, INT16_MIN}; // no mouse is ever there
constexpr uint32_t kPollInterval = 100;    // ms

struct MouseState {
  Point last;
  ChildWindow* enteredWindow; // it and the View have had their mouseEntered
  View* enteredView;
  bool pressed;
  ChildWindow* pressWindow;
  View* pressView; // null: the press is the window's
  bool captureHeld;
  uint32_t pollTick;
};

MouseState state;

bool IsOpen(const ChildWindow* window) {
  return window && !(window->flags & kWindowClosed);
}

bool IsAlive(const View* view) {
  return view && !(view->flags & kViewDestroyed);
}

Point FromScreen(const POINT& p) {
  const MainWindow* main = TheMainWindow();
  return {PinToShort(p.y - main->originY), PinToShort(p.x - main->originX)};
}

Point PointOfMessage(const ChildWindow* window, LPARAM lParam) {
  return ToToolkitPoint(window, {int16_t(HIWORD(uintptr_t(lParam))), int16_t(LOWORD(uintptr_t(lParam)))});
}

uint16_t FlagsOfMessage(uint16_t button, WPARAM wParam) {
  uint16_t modifiers = 0;
  if (wParam & MK_CONTROL) modifiers |= kFlagCtrl;
  if (wParam & MK_SHIFT) modifiers |= kFlagShift;
  if (::GetKeyState(VK_MENU) < 0) modifiers |= kFlagAlt;
  return button | WithMenuKey(modifiers);
}

void CallMoved(ChildWindow* window, View* view, Point point) {
  const Point p = ToWindowPoint(window, point);
  if (view) {
    TheViewCalls().makeCurrent(view);
    view->viewClass->mouseMoved(view, p.h, p.v);
  } else {
    SetPortWindow(window);
    window->methods.mouseMoved(window, p.h, p.v);
  }
}

// Whom the mouse is over, for a mouse over the given window.
ChildWindow* TrackedWindow(ChildWindow* window) {
  if (ChildWindow* modal = GetModalWindow()) return modal;
  return window && window->flags & kWindowPalette ? window : ActiveWindow();
}

void LeaveView(const View* view) {
  View* entered = state.enteredView;
  if (!entered || entered == view) return;
  state.enteredView = nullptr;
  TheViewCalls().makeCurrent(entered);
  entered->viewClass->mouseLeft(entered);
}

void LeaveWindow(const ChildWindow* window) {
  ChildWindow* entered = state.enteredWindow;
  if (!entered || entered == window) return;
  state.enteredWindow = nullptr;
  SetPortWindow(entered);
  entered->methods.mouseLeft(entered);
}

void EnterWindow(ChildWindow* window) {
  if (state.enteredWindow == window) return;
  state.enteredWindow = window;
  SetPortWindow(window);
  window->methods.mouseEntered(window);
}

void EnterView(View* view) {
  if (state.enteredView == view) return;
  state.enteredView = view;
  TheViewCalls().makeCurrent(view);
  view->viewClass->mouseEntered(view);
}

void EndMouseTracking() {
  state.pressWindow = nullptr;
  state.pressView = nullptr;
  state.pressed = false;
  if (!state.captureHeld) ::ReleaseCapture();
}

void PressMouse(uint16_t flags, ChildWindow* target, Point point) {
  TheLaterModules().endEditSession(nullptr);
  if (!IsOpen(target)) return;
  const Point p = ToWindowPoint(target, point);
  View* view = GetModalView() ? GetModalView() : HitTestWindow(target, p.h, p.v);
  state.pressed = true;
  state.pressWindow = target;
  if (state.captureHeld) {
    view = nullptr;
  } else {
    ::SetCapture(target->window);
  }
  state.pressView = view;
  if (view) {
    TheViewCalls().makeCurrent(view);
    view->viewClass->mouseDown(view, flags, p.h, p.v);
  } else {
    SetPortWindow(target);
    target->methods.mouseDown(target, flags, p.h, p.v);
  }
}

void ReleaseMouse(uint16_t flags, Point point) {
  ChildWindow* window = state.pressWindow;
  View* view = state.pressView;
  EndMouseTracking();
  const Point p = ToWindowPoint(window, point);
  if (view) {
    TheViewCalls().makeCurrent(view);
    view->viewClass->mouseUp(view, flags, p.h, p.v);
  } else if (window) {
    SetPortWindow(window);
    window->methods.mouseUp(window, flags, p.h, p.v);
  }
}

} // namespace

void MouseStartUp() {
  state = {};
  state.last = kNoPoint;
}

void TrackMouse(ChildWindow* window, Point point) {
  const bool moved = point.h != state.last.h || point.v != state.last.v;
  state.last = point;
  if (state.pressed) {
    if (moved && state.pressWindow) CallMoved(state.pressWindow, state.pressView, point);
    return;
  }
  window = TrackedWindow(window);
  const Point p = ToWindowPoint(window, point);
  View* view = window ? HitTestWindow(window, p.h, p.v) : nullptr;
  LeaveView(view);
  LeaveWindow(window);
  if (!IsOpen(window)) return;
  EnterWindow(window);
  if (view && IsAlive(view)) EnterView(view);
  if (!IsOpen(window) || (view && !IsAlive(view))) return;
  CallMoved(window, view, point);
}

void PollMouse() {
  const uint32_t now = ::GetTickCount();
  if (now - state.pollTick < kPollInterval) return;
  state.pollTick = now;
  POINT cursor = {};
  if (::GetCursorPos(&cursor)) TrackMouse(FindChildWindow(::WindowFromPoint(cursor)), FromScreen(cursor));
}

void GetMousePosition(int16_t* x, int16_t* y) {
  POINT cursor = {};
  ::GetCursorPos(&cursor);
  const Point point = FromScreen(cursor);
  *x = point.h;
  *y = point.v;
}

void SetMousePosition(int16_t x, int16_t y) {
  const MainWindow* main = TheMainWindow();
  ::SetCursorPos(x + main->originX, y + main->originY);
}

void HoldCapture(ChildWindow* window) {
  state.captureHeld = true;
  ::SetCapture(window->window);
}

void ReleaseHeldCapture() {
  state.captureHeld = false;
  ::ReleaseCapture();
}

void ReroutePress(ChildWindow* window, uint16_t flags, int16_t x, int16_t y) {
  if (!state.pressed) return;
  if (state.pressWindow) ReleaseMouse(flags, {y, x});
  PressMouse(flags, window, {y, x});
  ResetMousePoint();
}

void ResetMousePoint() {
  state.last = kNoPoint;
}

void ForgetView(View* view) {
  if (state.pressView == view) EndMouseTracking();
  if (GetModalView() == view) SetModalView(nullptr);
  if (state.enteredView == view) state.enteredView = nullptr;
}

void ForgetMouseWindow(ChildWindow* window) {
  if (state.pressWindow == window) EndMouseTracking();
  if (state.enteredWindow == window) state.enteredWindow = nullptr;
}

void MouseMoveMessage(ChildWindow* window, LPARAM lParam) {
  TrackMouse(window, PointOfMessage(window, lParam));
}

void PressMessage(ChildWindow* window, uint16_t button, WPARAM wParam, LPARAM lParam) {
  const Point point = PointOfMessage(window, lParam);
  const uint16_t flags = FlagsOfMessage(button, wParam);
  ChildWindow* target = GetModalWindow();
  if (!target) {
    // The click that activates a window goes no further.
    if (window != ActiveWindow() && !(window->flags & kWindowPalette)) return BringChildWindowForward(window);
    target = window;
  }
  PressMouse(flags, target, point);
}

void ReleaseMessage(ChildWindow* window, uint16_t button, WPARAM wParam, LPARAM lParam) {
  if (state.pressed) ReleaseMouse(FlagsOfMessage(button, wParam), PointOfMessage(window, lParam));
}

} // namespace framereel
