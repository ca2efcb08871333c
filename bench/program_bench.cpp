// The whole program at work on the screen that DISPLAY names, as its user has it: counts down, records at 40 frames a
// second and stops. Prints the ticks that were lost, for how many seconds it recorded and the file plays, the seconds
// of processor time, and the bytes:
//
//   program_bench WIDTH HEIGHT SECONDS
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>

#include "app/application.h"
#include "area/area.h"
#include "area/readouts.h"
#include "core/timers.h"
#include "platform/display/display_caps.h"
#include "platform/pump/platform_start.h"
#include "platform/pump/pump.h"
#include "recorder/control/recording_control.h"
#include "toolkit/views_start.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"

using namespace framereel;

namespace {

constexpr uint16_t kDelay = 25; // ms

char module;

double ProcessorSeconds() {
  rusage used = {};
  ::getrusage(RUSAGE_SELF, &used);
  return double(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
         double(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e6;
}

struct Counts {
  uint32_t ticks = 0;      // taken
  uint32_t delays = 0;     // ms, as the file has them
  uint32_t firstFrame = 0; // tick of the clock
};

// A pass of the event loop; a tick of the recording has left another timer behind it.
void RunPass(Application& app, Counts& counts) {
  const int32_t before = app.recorder.control.activeTimer->when;
  const uint32_t frames = app.recorder.frameCount, lastTick = app.recorder.lastFrameTick;
  PumpOneEvent(nullptr, true);
  if (app.recorder.control.countdown > 0) return;
  counts.ticks += app.recorder.control.activeTimer->when != before;
  if (app.recorder.frameCount == frames) return;
  if (frames == 0) {
    counts.firstFrame = app.recorder.lastFrameTick;
  } else {
    counts.delays += (app.recorder.lastFrameTick - lastTick) / 10 * 10;
  }
}

void Record(Application& app, uint32_t length) {
  app.options.frameDelay = kDelay;
  Counts counts;
  RecorderStart(app.recorder);
  while (app.recorder.frameCount == 0 && !ScreenIsLost()) RunPass(app, counts);
  const double processor = ProcessorSeconds();
  while (::GetTickCount() - counts.firstFrame < length && !ScreenIsLost()) RunPass(app, counts);
  const double used = ProcessorSeconds() - processor;
  const uint32_t shown = app.recorder.lastFrameTick - counts.firstFrame;
  const uint32_t asked = length / kDelay;
  ::printf("%u %.3f %.2f %.3f %u\n", asked - std::min(asked, counts.ticks), shown / 1e3, counts.delays / 1e3, used,
           app.stream.streamSize);
}

} // namespace

int main(int argc, char** argv) {
  ViewsStartUp();
  if (argc != 4 || !PlatformInit(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL)) {
    ::fprintf(stderr, "usage, with a display: program_bench WIDTH HEIGHT SECONDS\n");
    return 2;
  }
  Application app;
  ApplicationStart(app);
  app.recorder.captureArea = {0, 0, int16_t(::atoi(argv[2])), int16_t(::atoi(argv[1]))};
  ShowAreaReadouts(app.area);
  Record(app, uint32_t(::atoi(argv[3])) * 1000);
  ApplicationEnd(app);
  PlatformShutdown();
  return 0;
}
