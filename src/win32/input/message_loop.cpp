// Taking messages: what comes next, and the loops in which others wait for it.
#include "win32/input/message_loop.h"

#include <algorithm>

#include "win32/input/desktop_events.h"
#include "win32/input/input_messages.h"
#include "win32/input/keyboard.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/activation.h"
#include "win32/windows/message_queue.h"
#include "win32/windows/painting.h"
#include "win32/windows/presenting.h"
#include "win32/windows/sending.h"
#include "win32/windows/window_timers.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

struct Filter {
  HWND window;
  UINT first, last;
};

bool InRange(const Filter& filter, UINT message) {
  return (filter.first == 0 && filter.last == 0) || (message >= filter.first && message <= filter.last);
}

bool Passes(const Filter& filter, const MSG& message) {
  return InRange(filter, message.message) && (!filter.window || IsWithin(message.hwnd, filter.window));
}

// The press that makes the program active arrives once it is: the display gives the keyboard when it gets round to it.
bool WaitsForKeyboard(const QueueEntry& entry) {
  return !entry.posted && entry.event.kind == DisplayEventKind::kMouseDown && AwaitsKeyboard();
}

// Looks through the queue in its order; what means nothing to anybody falls out on the way.
bool FromQueue(const Filter& filter, bool remove, MSG* message) {
  std::vector<QueueEntry>& queue = TheWindows().queue;
  for (size_t i = 0; i < queue.size();) {
    const QueueEntry entry = queue[i];
    const auto here = queue.begin() + ptrdiff_t(i);
    MSG made = entry.message;
    if (!entry.posted && !MessageOfInput(entry.event, &made)) {
      queue.erase(here);
      TakeInput(entry.event, {});
      continue;
    }
    ++i;
    if (!Passes(filter, made)) continue;
    if (WaitsForKeyboard(entry)) return false;
    *message = made;
    if (!remove) return true;
    queue.erase(here);
    if (!entry.posted) TakeInput(entry.event, made);
    return true;
  }
  return false;
}

bool FromQuit(bool remove, MSG* message) {
  WindowSystem& system = TheWindows();
  if (!system.quits) return false;
  *message = {nullptr, WM_QUIT, WPARAM(system.exitCode), 0, DisplayTick(), {0, 0}};
  if (remove) system.quits = false;
  return true;
}

bool FromPaints(const Filter& filter, MSG* message) {
  const HWND window = InRange(filter, WM_PAINT) ? WindowToPaint(filter.window) : nullptr;
  if (!window) return false;
  *message = {window, WM_PAINT, 0, 0, DisplayTick(), {0, 0}};
  return true;
}

bool Next(const Filter& filter, bool remove, MSG* message) {
  WindowSystem& system = TheWindows();
  if (system.procedures == 0) system.destroyed.clear();
  PumpDisplay();
  RunTimers();
  PresentIfLate();
  if (FromQueue(filter, remove, message) || FromQuit(remove, message) || FromPaints(filter, message)) return true;
  PresentAll();
  return false;
}

} // namespace

bool NextInput(DisplayEvent* event) {
  PumpDisplay();
  RunTimers();
  std::vector<QueueEntry>& queue = TheWindows().queue;
  const auto input = std::find_if(queue.begin(), queue.end(), [](const QueueEntry& entry) { return !entry.posted; });
  if (input != queue.end()) {
    *event = input->event;
    queue.erase(input);
    TakeInput(*event, {});
    PresentIfLate();
    return true;
  }
  while (const HWND window = WindowToPaint(nullptr)) {
    Send(window, WM_PAINT, 0, 0);
    // A procedure that leaves it unpainted would be asked for ever.
    if (IsLive(window)) window->update.Clear();
  }
  PresentAll();
  return false;
}

} // namespace framereel

using namespace framereel;

BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove) {
  if (!message || (window && !IsLive(window))) return FALSE;
  return Next({window, first, last}, remove & PM_REMOVE, message);
}

BOOL TranslateMessage(const MSG* message) {
  const bool system = message && message->message == WM_SYSKEYDOWN;
  if (!message || (message->message != WM_KEYDOWN && !system)) return FALSE;
  const UINT scan = HIWORD(uintptr_t(message->lParam)) & 255;
  const std::string text = TextOfKey(UINT(message->wParam), scan, TheWindows().keys);
  // Ahead of all that waits, the first byte first.
  for (auto byte = text.rbegin(); byte != text.rend(); ++byte) {
    Post(message->hwnd, system ? WM_SYSCHAR : WM_CHAR, uint8_t(*byte), message->lParam, true);
  }
  return !text.empty();
}
