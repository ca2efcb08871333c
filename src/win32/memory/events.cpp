// What happens on the desktop in memory: the user's mouse and the desktop's own doings, and the queue that tells ours.
#include <algorithm>

#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

using Kind = DisplayEventKind;

void Queue(DisplayEvent event) {
  const MemoryDisplay& display = TheMemoryDisplay();
  event.x = display.pointerX;
  event.y = display.pointerY;
  event.tick = display.tick;
  TheMemoryDesktop().events.push_back(event);
}

// Who hears of the mouse: whoever has captured it, or where a button is held, or what lies under it.
DisplayWindow* MouseTarget() {
  const MemoryDisplay& display = TheMemoryDisplay();
  const MemoryDesktop& desktop = display.desktop;
  if (desktop.captured) return desktop.captured;
  if (desktop.pressed) return desktop.pressed;
  return MemoryWindowAt(display.pointerX, display.pointerY);
}

void QueueMouse(Kind kind, uint8_t button, int8_t notches = 0) {
  DisplayWindow* target = MouseTarget();
  if (!target || !target->ours) return;
  DisplayEvent event = {};
  event.kind = kind;
  event.window = target;
  event.button = button;
  event.notches = notches;
  Queue(event);
}

uint8_t KeyOfButton(uint8_t button) {
  return button == 1 ? 1 : button == 3 ? 2 : 4;
}

bool AnyButtonIsDown() {
  const bool* keys = TheMemoryDesktop().keys;
  return keys[1] || keys[2] || keys[4];
}

void Drag(int32_t dx, int32_t dy) {
  DisplayWindow* window = TheMemoryDesktop().dragged;
  const PixelRect& r = window->place;
  MemoryMoveWindow(window, {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy});
}

} // namespace

void MemoryQueueEvent(Kind kind, DisplayWindow* window, bool flag) {
  DisplayEvent event = {};
  event.kind = kind;
  event.window = window;
  event.flag = flag;
  Queue(event);
}

void MemoryQueueExposed(DisplayWindow* window, const PixelRect& part) {
  DisplayEvent event = {};
  event.kind = Kind::kExposed;
  event.window = window;
  event.rect = {part.left - window->place.left, part.top - window->place.top, part.right - window->place.left,
                part.bottom - window->place.top};
  Queue(event);
}

void MemoryMovePointerTo(int32_t x, int32_t y) {
  MemoryDisplay& display = TheMemoryDisplay();
  x = std::clamp(x, 0, display.width - 1);
  y = std::clamp(y, 0, display.height - 1);
  const int32_t dx = x - display.pointerX, dy = y - display.pointerY;
  display.pointerX = x;
  display.pointerY = y;
  if (display.desktop.dragged) {
    Drag(dx, dy);
  } else {
    QueueMouse(Kind::kMouseMove, 0);
  }
}

void MemoryPressButton(uint8_t button) {
  MemoryDesktop& desktop = TheMemoryDesktop();
  DisplayWindow* under = MouseTarget();
  desktop.keys[KeyOfButton(button)] = true;
  if (under && !desktop.captured && MemoryIsManaged(*under)) {
    DisplayStackWindow(under, true);
    MemorySetKeyboard(under);
  }
  if (!desktop.pressed) desktop.pressed = under;
  QueueMouse(Kind::kMouseDown, button);
}

void MemoryReleaseButton(uint8_t button) {
  MemoryDesktop& desktop = TheMemoryDesktop();
  desktop.keys[KeyOfButton(button)] = false;
  if (!desktop.dragged) QueueMouse(Kind::kMouseUp, button);
  if (AnyButtonIsDown()) return;
  desktop.pressed = desktop.dragged = nullptr;
}

void MemoryClick(int32_t x, int32_t y, uint8_t button) {
  MemoryMovePointerTo(x, y);
  MemoryPressButton(button);
  MemoryReleaseButton(button);
}

void MemoryTurnWheel(int8_t notches) {
  QueueMouse(Kind::kMouseWheel, 0, notches);
}

void MemoryGiveKeyboard(DisplayWindow* window) {
  if (window) DisplayStackWindow(window, true);
  MemorySetKeyboard(window);
}

void MemoryMinimiseWindow(DisplayWindow* window, bool minimised) {
  MemoryMinimise(window, minimised);
  if (!minimised) MemoryGiveKeyboard(window);
}

void MemoryAskToClose(DisplayWindow* window) {
  MemoryQueueEvent(Kind::kCloseRequest, window, false);
}

void MemoryTellOfSession(Kind kind, bool ends) {
  const auto& windows = TheMemoryDesktop().windows;
  const auto main = std::find_if(windows.begin(), windows.end(), [](const std::unique_ptr<DisplayWindow>& window) {
    return window->ours && window->role == WindowRole::kMain;
  });
  if (main != windows.end()) MemoryQueueEvent(kind, main->get(), ends);
}

void DisplayAnswerSession(bool mayEnd) {
  (mayEnd ? TheMemoryDesktop().sessionYes : TheMemoryDesktop().sessionNo)++;
}

void MemoryDestroyWindow(DisplayWindow* window) {
  DisplayShowWindow(window, false);
  MemoryQueueEvent(Kind::kDestroyed, window, false);
}

void MemoryMoveWindow(DisplayWindow* window, const PixelRect& place) {
  MemoryPlace(window, place);
  if (!window->ours) return;
  DisplayEvent event = {};
  event.kind = Kind::kPlaced;
  event.window = window;
  event.rect = place;
  Queue(event);
}

void MemoryTakeCapture() {
  DisplayWindow* captured = TheMemoryDesktop().captured;
  TheMemoryDesktop().captured = nullptr;
  if (captured) MemoryQueueEvent(Kind::kCaptureLost, captured, false);
}

void DisplayCapturePointer(DisplayWindow* window) {
  TheMemoryDesktop().captured = window;
}

void DisplayPointerShape(DisplayWindow* window, PointerShape shape, const PointerPicture*) {
  window->shape = shape;
}

void DisplayBeep() {
  ++TheMemoryDesktop().beeps;
}

bool DisplayNextEvent(DisplayEvent* event) {
  std::deque<DisplayEvent>& events = TheMemoryDesktop().events;
  if (events.empty() || TheMemoryDisplay().lost) return false;
  *event = events.front();
  events.pop_front();
  return true;
}

} // namespace framereel
