// The run from PlatformInit to PlatformShutdown.
#include "app/app.h"

#include <cstdio>

#include "app/application.h"
#include "app/end_signals.h"
#include "app/recovery.h"
#include "core/standard_streams.h"
#include "core/timers.h"
#include "platform/display/display_caps.h"
#include "platform/pump/platform_start.h"
#include "platform/pump/pump.h"
#include "toolkit/views_start.h"

namespace framereel {
namespace {

void AppRun() {
  static Application app;
  EndSignalsWatch();
  ApplicationStart(app);
  TimerSchedule(OfferKept, &app, 0);
  RunEventLoop();
  if (app.stream.streamSize != app.document.abandonedSize) KeepUnsaved(app);
  ApplicationEnd(app);
}

int Fail(const char* message) {
  ::fprintf(stderr, "framereel: %s\n", message);
  return kExitFailed;
}

} // namespace

int AppMain(HINSTANCE instance, HINSTANCE previousInstance, const char* commandLine, int showCommand) {
  ViewsStartUp();
  const bool started = PlatformInit(instance, previousInstance, commandLine, showCommand);
  if (started) AppRun();
  const bool lost = ScreenIsLost();
  PlatformShutdown();
  EndSignalsRelease();
  if (lost) return Fail("the connection to the display is lost");
  return started ? int{kExitDone} : Fail("there is no display that could be recorded");
}

} // namespace framereel
