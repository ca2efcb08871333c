// What the mouse does on a frame: the caption drags the window, the boxes work like buttons.
//
// While a button is held here, this layer follows the mouse in a loop of its own; windows go on painting.
#include "win32/input/frame_mouse.h"

#include "win32/input/keyboard.h"
#include "win32/input/message_loop.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/frame.h"
#include "win32/windows/placement.h"
#include "win32/windows/sending.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

using Kind = DisplayEventKind;

constexpr uint32_t kNapMs = 10; // between looks at the queue while nothing happens

// Waits for the next input. False when there is nothing more to follow: the button has gone up without word of it or,
// when none is held, the keyboard has gone; the display took the mouse away; or the window has gone.
bool Follow(HWND window, bool whileDown, DisplayEvent* event) {
  bool goesOn = true;
  // Once more after it has ended: the release may have arrived while we asked.
  while (!NextInput(event)) {
    if (!goesOn || !IsLive(window) || DisplayIsLost()) return false;
    goesOn = whileDown ? DisplayKeyIsDown(VK_LBUTTON) : TheWindows().hasKeyboard;
    if (goesOn) DisplaySleep(kNapMs);
  }
  return event->kind != Kind::kCaptureLost && IsLive(window);
}

void ShowPressed(HWND window, int box) {
  WindowSystem& system = TheWindows();
  if (system.pressedBox == box) return;
  system.pressedWindow = box == HTNOWHERE ? nullptr : window;
  system.pressedBox = box;
  if (IsLive(window)) InvalidateFrame(window);
}

void Grab(HWND window) {
  DisplayCapturePointer(TopLevelOf(window)->top->shown.display);
}

// Whether the button went up on the box on which it had gone down.
bool HoldBox(HWND window, int box) {
  Grab(window);
  ShowPressed(window, box);
  bool inside = true, released = false;
  DisplayEvent event;
  while (!released && Follow(window, true, &event)) {
    if (event.kind == Kind::kKeyDown && event.key == VK_ESCAPE) break;
    const bool mouse = event.kind == Kind::kMouseMove || event.kind == Kind::kMouseUp;
    if (!mouse) continue;
    inside = Holds(FramePart(*window, box), event.x, event.y);
    released = event.kind == Kind::kMouseUp && event.button == 1;
    ShowPressed(window, inside ? box : HTNOWHERE);
  }
  DisplayCapturePointer(nullptr);
  ShowPressed(window, HTNOWHERE);
  return inside && released && IsLive(window);
}

void MoveTo(HWND window, int32_t left, int32_t top) {
  const PixelRect& place = window->place;
  Place(window, Moved(place, left - place.left, top - place.top), false);
}

// The desktop, where there is one that moves windows, takes over with the first move: a mere click on the caption is
// none of its business. A button that is up already would leave it waiting for the release.
bool HandsOver(HWND window, const DisplayEvent& event) {
  if (!window->top || !DisplayKeyIsDown(VK_LBUTTON)) return false;
  if (!DisplayDragWindow(window->top->shown.display, event.x, event.y)) return false;
  NoteKey(VK_LBUTTON, false);
  return true;
}

void DragByMouse(HWND window, int32_t x, int32_t y) {
  const PixelRect start = window->place;
  Grab(window);
  bool asked = false;
  DisplayEvent event;
  while (Follow(window, true, &event)) {
    if (event.kind == Kind::kMouseMove || event.kind == Kind::kMouseUp) {
      MoveTo(window, start.left + event.x - x, start.top + event.y - y);
    } else if (event.kind == Kind::kKeyDown && event.key == VK_ESCAPE) {
      MoveTo(window, start.left, start.top);
      break;
    }
    if (event.kind == Kind::kMouseUp && event.button == 1) break;
    if (event.kind != Kind::kMouseMove || asked || !IsLive(window)) continue;
    asked = true;
    if (HandsOver(window, event)) return;
  }
  DisplayCapturePointer(nullptr);
}

// Arrow keys move it by 8 pixels, with Ctrl by one; Return and a press leave it there, Escape takes it back.
void DragByKeys(HWND window) {
  const PixelRect start = window->place;
  Grab(window);
  DisplayEvent event;
  while (Follow(window, false, &event)) {
    if (event.kind == Kind::kMouseDown) break;
    if (event.kind != Kind::kKeyDown) continue;
    if (event.key == VK_RETURN || event.key == VK_ESCAPE) {
      if (event.key == VK_ESCAPE) MoveTo(window, start.left, start.top);
      break;
    }
    const int32_t step = KeyIsDown(VK_CONTROL) ? 1 : 8;
    const int32_t dx = event.key == VK_LEFT ? -step : event.key == VK_RIGHT ? step : 0;
    const int32_t dy = event.key == VK_UP ? -step : event.key == VK_DOWN ? step : 0;
    if (dx || dy) MoveTo(window, window->place.left + dx, window->place.top + dy);
  }
  DisplayCapturePointer(nullptr);
}

} // namespace

void PressFrame(HWND window, int hit, int32_t x, int32_t y) {
  const LPARAM point = MAKELPARAM(x, y);
  switch (hit) {
  case HTCAPTION:
    Send(window, WM_SYSCOMMAND, SC_MOVE | WPARAM(HTCAPTION), point);
    return;
  case HTSYSMENU:
  case HTMENU:
    Send(window, WM_SYSCOMMAND, SC_MOUSEMENU | WPARAM(hit), point);
    return;
  case HTMINBUTTON:
    if (HoldBox(window, HTMINBUTTON)) Send(window, WM_SYSCOMMAND, window->minimised ? SC_RESTORE : SC_MINIMIZE, point);
    return;
  case HTCLOSE:
    if (HoldBox(window, HTCLOSE)) Send(window, WM_SYSCOMMAND, SC_CLOSE, point);
    return;
  default:
    return;
  }
}

void DragWindow(HWND window, bool byKeyboard, int32_t x, int32_t y) {
  if (window->minimised) return;
  if (byKeyboard) return DragByKeys(window);
  DragByMouse(window, x, y);
}

} // namespace framereel
