// The run from PlatformInit to PlatformShutdown.
#include "app/app.h"

#include <cstdio>

#include "app/application.h"
#include "app/document.h"
#include "app/end_signals.h"
#include "app/recovery.h"
#include "core/app_strings.h"
#include "core/standard_streams.h"
#include "core/timers.h"
#include "platform/display/display_caps.h"
#include "platform/display/session.h"
#include "platform/pump/platform_start.h"
#include "platform/pump/pump.h"
#include "toolkit/controls/alert.h"
#include "toolkit/views_start.h"

namespace framereel {
namespace {

constexpr uint16_t kWayland = 97; // of AppString

// What the user is told and asked ahead of all else. A timer's function, for the event loop.
void SpeakFirst(void* application) {
  if (SessionIsWayland()) Tell(kAlertCaution, AppString(kWayland));
  OfferKept(application);
}

void AppRun() {
  static Application app;
  EndSignalsWatch();
  ApplicationStart(app);
  TimerSchedule(SpeakFirst, &app, 0);
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
  if (started) return kExitDone;
  return Fail(SessionIsWayland() ? "this is a Wayland session without a display that could be recorded; "
                                   "log in to an X11 (Xorg) session"
                                 : "there is no display that could be recorded");
}

} // namespace framereel
