// Who gets a key: the menus, the modal window, or the active window and the View that the mouse is over.
#include "platform/input/keys.h"

#include "platform/drawing/ports.h"
#include "platform/input/key_events.h"
#include "platform/input/mouse.h"
#include "platform/records/later_modules.h"
#include "platform/records/view_record.h"
#include "platform/records/window_records.h"
#include "platform/windows/active_window.h"
#include "platform/windows/child_window.h"
#include "platform/windows/modal.h"
#include "platform/windows/window_geometry.h"
#include "platform/windows/window_list.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

struct KeyState {
  bool swallowKeyUp, swallowSysKeyUp; // the next key-up belongs to a menu shortcut
};

KeyState state;

// Where a key goes.
struct KeyTarget {
  ChildWindow* window;
  View* view;
  int16_t x, y; // window coordinates; toolkit coordinates without a window
};

bool IsLetterOrDigit(uint8_t c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

void PutMouseInto(KeyTarget* target) {
  Point mouse = {};
  GetMousePosition(&mouse.h, &mouse.v);
  const Point p = ToWindowPoint(target->window, mouse);
  target->x = p.h;
  target->y = p.v;
}

// The active window, and the View that the mouse is over in it.
KeyTarget ActiveTarget() {
  KeyTarget target = {ActiveWindow(), nullptr, 0, 0};
  PutMouseInto(&target);
  if (target.window) target.view = HitTestWindow(target.window, target.x, target.y);
  return target;
}

// Whether the event before has closed the window or destroyed the View.
bool IsGone(const KeyTarget& target) {
  return (target.window && target.window->flags & kWindowClosed) ||
         (target.view && target.view->flags & kViewDestroyed);
}

// With a modal window the key is its own. True when it took the place of the target.
bool TurnToModal(KeyTarget* target, bool lookForView) {
  ChildWindow* modal = GetModalWindow();
  if (!modal) return false;
  *target = {modal, lookForView && ModalIsBlocking() ? GetModalView() : nullptr, 0, 0};
  PutMouseInto(target);
  return true;
}

void DispatchKeyDown(KeyTarget target, const KeyEvent& event, bool lookForView) {
  const bool modal = TurnToModal(&target, lookForView);
  if (!modal && event.modifiers & kFlagMenuKey && IsLetterOrDigit(event.unshifted)) {
    TheLaterModules().menuShortcut(event);
    state.swallowKeyUp = true;
    return;
  }
  TheLaterModules().endEditSession(nullptr);
  if (target.view) {
    TheViewCalls().makeCurrent(target.view);
    target.view->viewClass->keyDown(target.view, event, target.x, target.y);
  } else if (target.window) {
    SetPortWindow(target.window);
    target.window->methods.keyDown(target.window, event, target.x, target.y);
  }
}

void DispatchKeyUp(KeyTarget target, const KeyEvent& event, bool lookForView) {
  if (state.swallowKeyUp) {
    state.swallowKeyUp = false;
    return;
  }
  TurnToModal(&target, lookForView);
  if (target.view) {
    TheViewCalls().makeCurrent(target.view);
    target.view->viewClass->keyUp(target.view, event, target.x, target.y);
  } else if (target.window) {
    SetPortWindow(target.window);
    target.window->methods.keyUp(target.window, event, target.x, target.y);
  }
}

KeyTarget GivenTarget(bool hitTest, int16_t x, int16_t y) {
  ChildWindow* active = ActiveWindow();
  return {active, hitTest && active ? HitTestWindow(active, x, y) : nullptr, x, y};
}

// Ctrl+F4 and Ctrl+F6. True when the key was one of them and there is a window that it works on.
bool WindowKey(WPARAM virtualKey) {
  if (virtualKey != VK_F4 && virtualKey != VK_F6) return false;
  ChildWindow* top = TopDocumentWindow();
  if (!top || !(ModifierState() & kFlagCtrl) || ModalIsBlocking()) return false;
  if (virtualKey == VK_F4) {
    RequestClose(top);
  } else {
    SendChildWindowBack(top);
  }
  return true;
}

} // namespace

void KeysStartUp() {
  state = {};
}

void SendKeyDown(bool hitTest, KeyEvent event, int16_t x, int16_t y) {
  if (event.modifiers & kFlagMenuKey) {
    event.modifiers = uint16_t((event.modifiers & ~(kFlagAlt | kFlagCtrl)) | MenuKeyMask());
  }
  DispatchKeyDown(GivenTarget(hitTest, x, y), event, hitTest);
}

void SendKeyUp(bool hitTest, const KeyEvent& event, int16_t x, int16_t y) {
  DispatchKeyUp(GivenTarget(hitTest, x, y), event, hitTest);
}

void KeyDownMessage(WPARAM virtualKey, LPARAM lParam) {
  if (WindowKey(virtualKey)) return;
  const KeyTarget target = ActiveTarget();
  KeyEvent events[2];
  const int count = TranslateKey(virtualKey, lParam, events);
  for (int i = 0; i < count; ++i) {
    if (i > 0 && IsGone(target)) return;
    DispatchKeyDown(target, events[i], true);
  }
}

void KeyUpMessage(WPARAM virtualKey) {
  DispatchKeyUp(ActiveTarget(), {0, uint8_t(virtualKey), ModifierState()}, true);
}

bool SysKeyDownMessage(WPARAM virtualKey, LPARAM lParam) {
  DismissPopup();
  if (virtualKey == VK_MENU || ModifierState() == kFlagAlt) return false;
  KeyEvent events[2];
  if (TranslateKey(virtualKey, lParam, events) != 1 || !(events[0].modifiers & kFlagMenuKey)) return false;
  if (ModalIsBlocking()) {
    DispatchKeyDown({}, events[0], true);
  } else {
    TheLaterModules().menuShortcut(events[0]);
    state.swallowSysKeyUp = true;
  }
  return true;
}

bool SysKeyUpMessage() {
  DismissPopup();
  const bool swallow = state.swallowSysKeyUp;
  state.swallowSysKeyUp = false;
  return swallow;
}

} // namespace framereel
