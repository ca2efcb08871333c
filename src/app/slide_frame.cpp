// Its steps, and what is left of them.
#include "app/slide_frame.h"

#include <cstdlib>

#include "core/numbers.h"
#include "core/timers.h"
#include "platform/records/window_records.h"
#include "platform/windows/window_geometry.h"

namespace framereel {
namespace {

constexpr int32_t kStep = 6;         // pixels at most, on each axis
constexpr int32_t kSpareSteps = 200; // beyond those that the way takes, for a desktop that places windows as it likes
constexpr uint32_t kInterval = 10;   // ms between steps
constexpr uint32_t kMinimisedInterval = 200; // ms between looks at a window that cannot be seen to move

struct SlideState {
  Point (*target)(void* argument);
  Point remainder; // between the place last asked for and the one that the platform gave
  int32_t stepsLeft;
  Timer* timer;
  TimerFunction ended;
  void* argument;
};

SlideState state;

void SlideFrameStep(void* argument) {
  auto* main = static_cast<MainWindow*>(argument);
  state.timer = nullptr;
  if (MainIsIconic(main)) {
    state.timer = TimerSchedule(SlideFrameStep, main, kMinimisedInterval);
    return;
  }
  const Point target = state.target(state.argument);
  const int32_t dx = PinValue(-kStep, target.h - main->originX, kStep);
  const int32_t dy = PinValue(-kStep, target.v - main->originY, kStep);
  if ((dx == 0 && dy == 0) || state.stepsLeft-- == 0) return state.ended(state.argument);
  const WindowGeometry& g = main->geometry;
  const int32_t x = main->originX + dx + g.insetLeft - state.remainder.h;
  const int32_t y = main->originY + dy + g.insetTop - state.remainder.v;
  MoveMainWindow(main, PinToShort(x), PinToShort(y));
  state.remainder = {PinToShort(g.insetTop + main->originY - y), PinToShort(g.insetLeft + main->originX - x)};
  state.timer = TimerSchedule(SlideFrameStep, main, kInterval);
}

} // namespace

void SlideFrameStart(Point (*target)(void* argument), TimerFunction ended, void* argument) {
  if (state.timer) TimerCancel(state.timer);
  MainWindow* main = TheMainWindow();
  const Point first = target(argument);
  const int32_t way = Maximum(std::abs(first.h - main->originX), std::abs(first.v - main->originY));
  state = {target, {}, way / kStep + kSpareSteps, TimerSchedule(SlideFrameStep, main, 0), ended, argument};
}

void SlideFrameCancel() {
  if (!state.timer) return;
  TimerCancel(state.timer);
  state.timer = nullptr;
  state.ended(state.argument);
}

bool SlideFrameIsRunning() {
  return state.timer;
}

} // namespace framereel
