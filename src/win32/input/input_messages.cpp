// From keys and buttons to messages: for whom they are, and what they say.
#include "win32/input/input_messages.h"

#include <cstdlib>

#include "win32/input/cursors.h"
#include "win32/input/keyboard.h"
#include "win32/pixels/scale.h"
#include "win32/win32_input.h"
#include "win32/windows/activation.h"
#include "win32/windows/frame.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

using Kind = DisplayEventKind;

constexpr uint32_t kDoubleClickMs = 500;
constexpr Scaled kDoubleClickPixels{4}; // how far apart two presses may be, each way
constexpr int kWheelNotch = 120;        // as WM_MOUSEWHEEL counts

bool IsMouse(Kind kind) {
  return kind == Kind::kMouseMove || kind == Kind::kMouseDown || kind == Kind::kMouseUp || kind == Kind::kMouseWheel;
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

// Whether a press is the second one of a double click.
bool IsSecondPress(const DisplayEvent& event, const Win32Window& window) {
  const ButtonPress& first = window.lastPress;
  if (event.kind != Kind::kMouseDown || !(window.windowClass->style & CS_DBLCLKS)) return false;
  const bool together = first.number && first.number == TheWindows().buttonPresses && first.button == event.button;
  return together && event.tick - first.tick <= kDoubleClickMs && std::abs(event.x - first.x) <= kDoubleClickPixels &&
         std::abs(event.y - first.y) <= kDoubleClickPixels;
}

bool WheelMessageOf(const DisplayEvent& event, HWND window, MSG* message) {
  message->hwnd = window;
  message->message = WM_MOUSEWHEEL;
  message->wParam = MAKEWPARAM(int(MouseKeys()), event.notches * kWheelNotch);
  message->lParam = MAKELPARAM(event.x, event.y);
  return true;
}

bool HasButton(const DisplayEvent& event) {
  return event.kind == Kind::kMouseDown || event.kind == Kind::kMouseUp;
}

bool MouseMessageOf(const DisplayEvent& event, MSG* message) {
  if (HasButton(event) && (event.button < 1 || event.button > 3)) return false;
  const MouseTarget target = TargetOf(event);
  if (!target.window || target.hit == HTNOWHERE) return false;
  if (event.kind == Kind::kMouseWheel) return WheelMessageOf(event, target.window, message);
  message->hwnd = target.window;
  if (target.hit != HTCLIENT) {
    message->message = MouseMessage(event, WM_NCMOUSEMOVE, WM_NCLBUTTONDOWN);
    message->wParam = WPARAM(target.hit);
    message->lParam = MAKELPARAM(event.x, event.y);
    return true;
  }
  const PixelRect client = ClientOnScreen(*target.window);
  message->message = MouseMessage(event, WM_MOUSEMOVE, WM_LBUTTONDOWN);
  if (IsSecondPress(event, *target.window)) message->message += WM_LBUTTONDBLCLK - WM_LBUTTONDOWN;
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
    system.typed = {event.scan, event.text};
    const bool again = KeyIsDown(VK_MENU), chord = KeyIsDown(VK_CONTROL) || KeyIsDown(VK_SHIFT);
    system.altAlone = event.key == VK_MENU && (again ? system.altAlone : !chord);
  }
  NoteKey(event.key, down);
}

void NotePress(const DisplayEvent& event, const MSG& message) {
  // The second press of a double click is not the first one of another.
  const bool first =
      message.message == WM_LBUTTONDOWN || message.message == WM_RBUTTONDOWN || message.message == WM_MBUTTONDOWN;
  message.hwnd->lastPress = {first ? TheWindows().buttonPresses : 0, event.button, event.tick, event.x, event.y};
}

void TakeMouse(const DisplayEvent& event, const MSG& message) {
  if (HasButton(event)) NoteKey(uint8_t(ButtonKey(event.button)), event.kind == Kind::kMouseDown);
  TheWindows().altAlone = TheWindows().altAlone && event.kind == Kind::kMouseMove;
  if (event.kind == Kind::kMouseDown) ++TheWindows().buttonPresses;
  if (!IsLive(message.hwnd) || event.kind == Kind::kMouseWheel) return;
  if (event.kind == Kind::kMouseDown) NotePress(event, message);
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
