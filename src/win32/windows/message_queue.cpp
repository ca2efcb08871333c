// What waits to be taken: posted messages, and input that becomes a message then.
#include "win32/windows/message_queue.h"

#include <algorithm>

#include "win32/win32_windows.h"

namespace framereel {
namespace {

bool IsWaitingMove(const QueueEntry& entry, const DisplayEvent& event) {
  return !entry.posted && entry.event.kind == DisplayEventKind::kMouseMove && entry.event.window == event.window;
}

} // namespace

void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool first) {
  std::vector<QueueEntry>& queue = TheWindows().queue;
  POINT point = {0, 0};
  const QueueEntry entry = {true, {window, message, wParam, lParam, DisplayTick(), point}, {}};
  queue.insert(first ? queue.begin() : queue.end(), entry);
}

void EnqueueInput(const DisplayEvent& event) {
  std::vector<QueueEntry>& queue = TheWindows().queue;
  const bool replaces =
      event.kind == DisplayEventKind::kMouseMove && !queue.empty() && IsWaitingMove(queue.back(), event);
  if (replaces) queue.pop_back();
  queue.push_back({false, {}, event});
}

void ForgetQueued(HWND window) {
  std::vector<QueueEntry>& queue = TheWindows().queue;
  const DisplayWindow* display = window->top ? window->top->shown.display : nullptr;
  const auto isForIt = [=](const QueueEntry& entry) {
    return entry.posted ? entry.message.hwnd == window : display && entry.event.window == display;
  };
  queue.erase(std::remove_if(queue.begin(), queue.end(), isForIt), queue.end());
}

} // namespace framereel

using namespace framereel;

void PostQuitMessage(int exitCode) {
  TheWindows().quits = true;
  TheWindows().exitCode = exitCode;
}
