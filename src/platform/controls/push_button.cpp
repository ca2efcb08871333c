// The messages of a button, and the timer that gives the keyboard back once a click has been dealt with.
#include "platform/controls/push_button.h"

#include "core/arrays.h"
#include "core/timers.h"
#include "platform/controls/native_control.h"
#include "platform/records/later_modules.h"
#include "platform/windows/active_window.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

// Keys of the View's attributes, by the rule that a module takes addresses of its own functions.
void ForgetTimer(intptr_t subject, void* argument);
void GiveKeyboardBack(void* argument);
ListValue PressKey() { // a press has begun on this button
  return ToListValue(ForgetTimer);
}
ListValue TimerKey() { // the timer that gives the keyboard back
  return ToListValue(GiveKeyboardBack);
}

Timer* TakeTimer(View* view) {
  auto* timer = FromListValue<Timer>(AttributeDrop(&view->attributes, TimerKey()));
  if (timer) NotifierRemove(&view->listeners, ForgetTimer, view);
  return timer;
}

// The View goes first, and must not take the keyboard along.
void ForgetTimer(intptr_t, void* argument) {
  if (Timer* timer = TakeTimer(static_cast<View*>(argument))) TimerCancel(timer);
  RestoreFocus();
}

void GiveKeyboardBack(void* argument) {
  auto* view = static_cast<View*>(argument);
  TakeTimer(view);
  AttributeDrop(&view->attributes, PressKey());
  RestoreFocus();
}

// Once the platform has done with the click and its notice has gone out.
void GiveKeyboardBackSoon(View* view) {
  if (AttributeHas(&view->attributes, TimerKey())) return;
  Timer* timer = TimerSchedule(GiveKeyboardBack, view, 0);
  AttributeSet(&view->attributes, TimerKey(), ToListValue(timer));
  NotifierAdd(&view->listeners, ForgetTimer, view);
}

LRESULT ButtonMessage(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
  View* view = ViewOfNativeControl(control);
  if (!view) return 0;
  const WNDPROC earlier = view->viewClass->nativeProcedure(view);
  const bool pressed = AttributeHas(&view->attributes, PressKey());
  switch (message) {
  case WM_LBUTTONDOWN:
    AttributeSet(&view->attributes, PressKey(), 1);
    [[fallthrough]];
  case WM_RBUTTONDOWN:
  case WM_MBUTTONDOWN:
    TheLaterModules().endEditSession(nullptr);
    break;
  case WM_LBUTTONUP:
    // One that slides in from outside is none of the button's.
    if (!pressed) return 0;
    GiveKeyboardBackSoon(view);
    break;
  case WM_CAPTURECHANGED: // a press may end without a release
    if (pressed) GiveKeyboardBackSoon(view);
    break;
  default:
    break;
  }
  return ::CallWindowProcA(earlier, control, message, wParam, lParam);
}

} // namespace

void SubclassButton(View* view, WNDPROC* earlier) {
  HWND control = view->viewClass->nativeHandle(view);
  *earlier = reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(control, GWL_WNDPROC));
  ::SetWindowLongPtrA(control, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(ButtonMessage));
}

} // namespace framereel
