// See input_keys.h.
#include "platform/input_keys.h"

#include "platform/activation.h"
#include "platform/child_window.h"
#include "platform/input_mouse.h"
#include "platform/later_modules.h"
#include "platform/main_window.h"
#include "platform/modal.h"
#include "platform/view_record.h"

namespace framereel {
namespace {

constexpr int kMenuKeyString = 103; // its first character is "1" when the menu key is Alt and Ctrl together
constexpr BYTE kKeyIsDown = 0x80;
constexpr LPARAM kKeyWasDown = LPARAM{1} << 30; // of a key message

struct KeyState {
  uint16_t menuKeyMask;
  bool swallowKeyUp, swallowSysKeyUp; // the next key-up belongs to a menu shortcut
};

KeyState state;

// Where a key goes.
struct KeyTarget {
  ChildWindow* window;
  View* view;
  int16_t x, y; // window coordinates; toolkit coordinates without a window
};

// What a key gives, whatever the layout says; 0: what the layout says.
uint8_t FixedCharacter(WPARAM virtualKey) {
  switch (virtualKey) {
  case VK_BACK:
    return kKeyBackspace;
  case VK_TAB:
    return kKeyTab;
  case VK_RETURN:
    return kKeyReturn;
  case VK_ESCAPE:
    return kKeyEscape;
  case VK_LEFT:
    return kKeyLeft;
  case VK_UP:
    return kKeyUp;
  case VK_RIGHT:
    return kKeyRight;
  case VK_DOWN:
    return kKeyDown;
  case VK_DELETE:
    return kKeyDelete;
  default:
    return 0;
  }
}

bool IsLetterOrDigit(uint8_t c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

uint16_t ModifierState() {
  uint16_t modifiers = 0;
  if (::GetKeyState(VK_MENU) < 0) modifiers |= kFlagAlt;
  if (::GetKeyState(VK_SHIFT) < 0) modifiers |= kFlagShift;
  if (::GetKeyState(VK_CONTROL) < 0) modifiers |= kFlagCtrl;
  return WithMenuKey(modifiers);
}

// The characters of the key with Ctrl and Alt ignored, and Shift too if asked; answers their number.
int CharactersOf(WPARAM virtualKey, LPARAM lParam, bool ignoreShift, WORD* characters) {
  BYTE keys[256];
  ::GetKeyboardState(keys);
  keys[VK_CONTROL] &= BYTE(~kKeyIsDown);
  keys[VK_MENU] &= BYTE(~kKeyIsDown);
  if (ignoreShift) keys[VK_SHIFT] &= BYTE(~kKeyIsDown);
  *characters = 0;
  return ::ToAscii(UINT(virtualKey), UINT(lParam) >> 16 & 0xFF, keys, characters, 0);
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
  char first[2];
  const bool altCtrl = ::LoadStringA(nullptr, kMenuKeyString, first, sizeof first) == 0 || first[0] == '1';
  state.menuKeyMask = altCtrl ? kFlagAlt | kFlagCtrl : kFlagCtrl;
}

uint16_t WithMenuKey(uint16_t modifiers) {
  return (modifiers & (kFlagAlt | kFlagCtrl)) == state.menuKeyMask ? modifiers | kFlagMenuKey : modifiers;
}

bool MenuKeyIsAltCtrl() {
  return state.menuKeyMask == (kFlagAlt | kFlagCtrl);
}

void Beep() {
  ::MessageBeep(UINT(-1));
}

int TranslateKey(WPARAM virtualKey, LPARAM lParam, KeyEvent events[2]) {
  WORD shifted = 0, plain = 0;
  const int n = CharactersOf(virtualKey, lParam, false, &shifted);
  const int plainCount = CharactersOf(virtualKey, lParam, true, &plain);
  // Asked again, the platform may have done with the accent: it is its own, and the letter the second event's.
  if (n == 2 && plainCount == 1) plain = WORD(uint8_t(shifted) | plain << 8);
  const uint16_t modifiers = ModifierState();
  const bool repeated = lParam & kKeyWasDown;
  int count = 1;
  events[0] = {0, 0, modifiers, repeated};
  if (n == 1 || n == 2) events[0] = {uint8_t(shifted), uint8_t(plain), modifiers, repeated};
  if (n == 2) events[count++] = {uint8_t(shifted >> 8), uint8_t(plain >> 8), modifiers, repeated};
  KeyEvent* last = &events[count - 1];
  if (const uint8_t fixed = FixedCharacter(virtualKey)) last->character = last->unshifted = fixed;
  if (n != 1 && n != 2 && last->character == 0) return 0;
  return count;
}

void SendKeyDown(bool hitTest, KeyEvent event, int16_t x, int16_t y) {
  if (event.modifiers & kFlagMenuKey) {
    event.modifiers = uint16_t((event.modifiers & ~(kFlagAlt | kFlagCtrl)) | state.menuKeyMask);
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
