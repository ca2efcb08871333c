// Routing the mouse. Any handler may close its window or destroy its View, so whoever goes on after a call looks at the
// flags of the records again; those stay readable until the pass of the event loop ends.
#include "platform/input/mouse.h"

#include "platform/drawing/ports.h"
#include "platform/input/key_events.h"
#include "platform/records/input_events.h"
#include "platform/records/later_modules.h"
#include "platform/records/view_record.h"
#include "platform/records/window_records.h"
#include "platform/windows/active_window.h"
#include "platform/windows/child_window.h"
#include "platform/windows/modal.h"
#include "platform/windows/mouse_targets.h"
#include "platform/windows/window_geometry.h"
#include "platform/windows/window_list.h"
#include "win32/win32_input.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr uint32_t kPollInterval = 100; // ms

uint32_t pollTick; // of the last idle poll

bool IsOpen(const ChildWindow* window) {
  return window && !(window->flags & kWindowClosed);
}

bool IsAlive(const View* view) {
  return view && !(view->flags & kViewDestroyed);
}

// Modulo 16 bits, as ToWindowPoint takes it.
Point FromScreen(const POINT& p) {
  const MainWindow* main = TheMainWindow();
  return {int16_t(p.y - main->originY), int16_t(p.x - main->originX)};
}

// In the coordinates of the window that the message is for.
Point PointOfMessage(LPARAM lParam) {
  return {int16_t(HIWORD(uintptr_t(lParam))), int16_t(LOWORD(uintptr_t(lParam)))};
}

// A point of one window in the coordinates of another.
Point InWindow(const ChildWindow* target, const ChildWindow* window, Point point) {
  return target == window ? point : ToWindowPoint(target, ToToolkitPoint(window, point));
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
  View* entered = TheMouseTargets().enteredView;
  if (!entered || entered == view) return;
  TheMouseTargets().enteredView = nullptr;
  TheViewCalls().makeCurrent(entered);
  entered->viewClass->mouseLeft(entered);
}

void LeaveWindow(const ChildWindow* window) {
  ChildWindow* entered = TheMouseTargets().enteredWindow;
  if (!entered || entered == window) return;
  TheMouseTargets().enteredWindow = nullptr;
  SetPortWindow(entered);
  entered->methods.mouseLeft(entered);
}

void EnterWindow(ChildWindow* window) {
  if (TheMouseTargets().enteredWindow == window) return;
  TheMouseTargets().enteredWindow = window;
  SetPortWindow(window);
  window->methods.mouseEntered(window);
}

void EnterView(View* view) {
  if (TheMouseTargets().enteredView == view) return;
  TheMouseTargets().enteredView = view;
  TheViewCalls().makeCurrent(view);
  view->viewClass->mouseEntered(view);
}

// Both with the point in the coordinates of the window that they are for.
void PressMouse(uint16_t flags, ChildWindow* target, Point p) {
  if (!TheLaterModules().isEditedThere(target, p.h, p.v)) TheLaterModules().endEditSession(nullptr);
  if (!IsOpen(target)) return;
  MouseTargets& targets = TheMouseTargets();
  View* view = GetModalView() ? GetModalView() : HitTestWindow(target, p.h, p.v);
  targets.pressWindow = target;
  if (targets.captureHeld) {
    view = nullptr;
  } else {
    ::SetCapture(target->window);
  }
  targets.pressView = view;
  if (view) {
    TheViewCalls().makeCurrent(view);
    view->viewClass->mouseDown(view, flags, p.h, p.v);
  } else {
    SetPortWindow(target);
    target->methods.mouseDown(target, flags, p.h, p.v);
  }
}

void ReleaseMouse(uint16_t flags, Point p) {
  ChildWindow* window = TheMouseTargets().pressWindow;
  View* view = TheMouseTargets().pressView;
  EndMouseTracking();
  if (view) {
    TheViewCalls().makeCurrent(view);
    view->viewClass->mouseUp(view, flags, p.h, p.v);
  } else {
    SetPortWindow(window);
    window->methods.mouseUp(window, flags, p.h, p.v);
  }
}

} // namespace

void MouseStartUp() {
  pollTick = 0;
}

void TrackMouse(ChildWindow* window, Point point) {
  MouseTargets& targets = TheMouseTargets();
  const bool moved = point.h != targets.last.h || point.v != targets.last.v;
  targets.last = point;
  if (targets.pressWindow) {
    if (moved) CallMoved(targets.pressWindow, targets.pressView, point);
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
  if (now - pollTick < kPollInterval) return;
  pollTick = now;
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
  TheMouseTargets().captureHeld = true;
  ::SetCapture(window->window);
}

void ReleaseHeldCapture() {
  TheMouseTargets().captureHeld = false;
  ::ReleaseCapture();
}

void ReroutePress(ChildWindow* window, uint16_t flags, int16_t x, int16_t y) {
  const ChildWindow* before = TheMouseTargets().pressWindow;
  if (!before) return;
  ReleaseMouse(flags, ToWindowPoint(before, {y, x}));
  PressMouse(flags, window, ToWindowPoint(window, {y, x}));
  ResetMousePoint();
}

void ForgetView(View* view) {
  if (TheMouseTargets().pressView == view) EndMouseTracking();
  if (GetModalView() == view) SetModalView(nullptr);
  if (TheMouseTargets().enteredView == view) TheMouseTargets().enteredView = nullptr;
}

void MouseMoveMessage(ChildWindow* window, LPARAM lParam) {
  TrackMouse(window, ToToolkitPoint(window, PointOfMessage(lParam)));
}

void PressMessage(ChildWindow* window, uint16_t button, WPARAM wParam, LPARAM lParam) {
  const uint16_t flags = FlagsOfMessage(button, wParam);
  ChildWindow* target = GetModalWindow();
  if (!target) {
    // The click that activates a window goes no further.
    if (window != ActiveWindow() && !(window->flags & kWindowPalette)) return BringChildWindowForward(window);
    target = window;
  }
  PressMouse(flags, target, InWindow(target, window, PointOfMessage(lParam)));
}

void ReleaseMessage(ChildWindow* window, uint16_t button, WPARAM wParam, LPARAM lParam) {
  const ChildWindow* pressed = TheMouseTargets().pressWindow;
  if (pressed) ReleaseMouse(FlagsOfMessage(button, wParam), InWindow(pressed, window, PointOfMessage(lParam)));
}

} // namespace framereel
