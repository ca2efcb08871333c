// From keys and buttons to messages: for whom they are, and what they say.
#include "win32/windows/window.h"

namespace framereel {
namespace {

using Kind = DisplayEventKind;

bool IsMouse(Kind kind) {
  return kind == Kind::kMouseMove || kind == Kind::kMouseDown || kind == Kind::kMouseUp;
}

bool IsKey(Kind kind) {
  return kind == Kind::kKeyDown || kind == Kind::kKeyUp;
}

// The messages of a button as the display numbers them (1 left, 2 middle, 3 right) lie at these steps.
UINT MouseMessage(const DisplayEvent& event, UINT move, UINT leftDown) {
  if (event.kind == Kind::kMouseMove) return move;
  const UINT step = event.button == 1 ? 0 : event.button == 3 ? 3 : 6;
  return leftDown + step + (event.kind == Kind::kMouseUp ? 1 : 0);
}

int ButtonKey(uint8_t button) {
  return button == 1 ? VK_LBUTTON : button == 3 ? VK_RBUTTON : VK_MBUTTON;
}

WPARAM ButtonFlag(uint8_t button) {
  return button == 1 ? MK_LBUTTON : button == 3 ? MK_RBUTTON : MK_MBUTTON;
}

// The state of buttons that the message tells includes the button that it is about.
WPARAM KeysWith(const DisplayEvent& event) {
  WPARAM keys = MouseKeys();
  if (event.kind == Kind::kMouseDown) keys |= ButtonFlag(event.button);
  if (event.kind == Kind::kMouseUp) keys &= ~ButtonFlag(event.button);
  return keys;
}

struct MouseTarget {
  HWND window;
  int hit; // one of HT...
};

// Who gets a mouse event: the window that has captured the mouse, else the one under it.
MouseTarget TargetOf(const DisplayEvent& event) {
  const HWND capture = TheWindows().capture;
  if (capture) return {capture, HTCLIENT};
  const HWND topLevel = TopLevelOf(event.window);
  if (!topLevel || Has(*topLevel, WS_DISABLED)) return {nullptr, HTNOWHERE};
  const HWND window = DeepestAt(topLevel, event.x, event.y);
  return {window, HitTest(*window, event.x, event.y)};
}

bool MouseMessageOf(const DisplayEvent& event, MSG* message) {
  if (event.kind != Kind::kMouseMove && (event.button < 1 || event.button > 3)) return false;
  const MouseTarget target = TargetOf(event);
  if (!target.window || target.hit == HTNOWHERE) return false;
  message->hwnd = target.window;
  if (target.hit != HTCLIENT) {
    message->message = MouseMessage(event, WM_NCMOUSEMOVE, WM_NCLBUTTONDOWN);
    message->wParam = WPARAM(target.hit);
    message->lParam = MAKELPARAM(event.x, event.y);
    return true;
  }
  const PixelRect client = ClientOnScreen(*target.window);
  message->message = MouseMessage(event, WM_MOUSEMOVE, WM_LBUTTONDOWN);
  message->wParam = KeysWith(event);
  message->lParam = MAKELPARAM(event.x - client.left, event.y - client.top);
  return true;
}

bool IsSystemKey(const DisplayEvent& event, bool hasFocus) {
  if (!hasFocus || event.key == VK_F10) return true;
  const bool control = KeyIsDown(VK_CONTROL);
  if (event.key == VK_MENU) return event.kind == Kind::kKeyDown ? !control : TheWindows().altAlone;
  return KeyIsDown(VK_MENU) && !control;
}

bool KeyMessageOf(const DisplayEvent& event, MSG* message) {
  const WindowSystem& system = TheWindows();
  const HWND window = system.focus ? system.focus : system.active;
  if (!window || !IsEnabled(window) || event.key == 0) return false;
  const bool down = event.kind == Kind::kKeyDown;
  const bool sys = IsSystemKey(event, system.focus);
  const DWORD alt = KeyIsDown(VK_MENU) || event.key == VK_MENU ? 1U << 29 : 0;
  const DWORD was = KeyIsDown(event.key) ? 1U << 30 : 0;
  message->hwnd = window;
  message->message = down ? (sys ? WM_SYSKEYDOWN : WM_KEYDOWN) : (sys ? WM_SYSKEYUP : WM_KEYUP);
  message->wParam = event.key;
  message->lParam = LPARAM(1U | DWORD{event.scan} << 16 | (sys ? alt : 0) | was | (down ? 0 : 1U << 31));
  return true;
}

void TakeKey(const DisplayEvent& event) {
  WindowSystem& system = TheWindows();
  const bool down = event.kind == Kind::kKeyDown;
  if (down) {
    ++system.presses;
    system.altAlone = event.key == VK_MENU;
  }
  NoteKey(event.key, down);
}

void TakeMouse(const DisplayEvent& event, const MSG& message) {
  if (event.kind != Kind::kMouseMove) NoteKey(uint8_t(ButtonKey(event.button)), event.kind == Kind::kMouseDown);
  TheWindows().altAlone = TheWindows().altAlone && event.kind == Kind::kMouseMove;
  if (!IsLive(message.hwnd)) return;
  const bool framed = message.message >= WM_NCMOUSEMOVE && message.message <= WM_NCMBUTTONDBLCLK;
  if (!TheWindows().capture) ShowPointerFor(message.hwnd, framed ? int(message.wParam) : HTCLIENT);
  if (event.kind == Kind::kMouseDown) Activate(TopLevelOf(message.hwnd), true);
}

} // namespace

bool MessageOfInput(const DisplayEvent& event, MSG* message) {
  *message = {nullptr, 0, 0, 0, event.tick, {event.x, event.y}};
  if (IsMouse(event.kind)) return MouseMessageOf(event, message);
  return IsKey(event.kind) && KeyMessageOf(event, message);
}

void TakeInput(const DisplayEvent& event, const MSG& message) {
  if (IsKey(event.kind)) TakeKey(event);
  if (IsMouse(event.kind)) TakeMouse(event, message);
  if (event.kind == Kind::kKeysUnseen) SyncKeys();
}

} // namespace framereel
