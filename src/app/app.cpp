// See app.h.
#include "app/app.h"

#include <cstdio>

#include "app/application.h"
#include "app/end_signals.h"
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
  RunEventLoop();
  ApplicationEnd(app);
}

int Fail(const char* message) {
  ::fprintf(stderr, "framereel: %s\n", message);
  return 1;
}

} // namespace

int AppMain(HINSTANCE instance, HINSTANCE previousInstance, const char* commandLine, int showCommand) {
  ViewsStartUp();
  if (!PlatformInit(instance, previousInstance, commandLine, showCommand)) {
    return Fail("there is no display that could be recorded");
  }
  AppRun();
  const bool lost = ScreenIsLost();
  PlatformShutdown();
  EndSignalsRelease();
  return lost ? Fail("the connection to the display is lost") : 0;
}

} // namespace framereel
