// What the message loop does for windows again and again.
#include "win32/windows/window_timers.h"

#include <algorithm>

#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

WindowTimer* TimerOf(HWND window, void (*run)(HWND)) {
  std::vector<WindowTimer>& timers = window->timers;
  const auto found = std::find_if(timers.begin(), timers.end(), [=](const WindowTimer& t) { return t.run == run; });
  return found == timers.end() ? nullptr : &*found;
}

bool IsDue(const WindowTimer& timer) {
  return int32_t(DisplayTick() - timer.due) >= 0;
}

} // namespace

void StartTimer(HWND window, void (*run)(HWND), uint32_t periodMs) {
  StopTimer(window, run);
  window->timers.push_back({run, periodMs, DisplayTick() + periodMs});
}

void StopTimer(HWND window, void (*run)(HWND)) {
  std::erase_if(window->timers, [=](const WindowTimer& timer) { return timer.run == run; });
}

void RunTimers() {
  struct Due {
    HWND window;
    void (*run)(HWND);
  };
  std::vector<Due> all;
  for (const auto& window : TheWindows().windows) {
    for (const WindowTimer& timer : window->timers) {
      if (IsDue(timer)) all.push_back({window.get(), timer.run});
    }
  }
  for (const Due& due : all) {
    // One that ran before it may have stopped it, or destroyed the window.
    WindowTimer* timer = IsLive(due.window) ? TimerOf(due.window, due.run) : nullptr;
    if (!timer) continue;
    timer->due = DisplayTick() + timer->period;
    due.run(due.window);
  }
}

} // namespace framereel
