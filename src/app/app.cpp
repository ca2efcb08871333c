// The run from PlatformInit to PlatformShutdown.
#include "app/app.h"

#include <cstdio>

#include "app/application.h"
#include "app/end_signals.h"
#include "app/questions.h"
#include "app/recovery.h"
#include "app/slide_frame.h"
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

constexpr uint16_t kWayland = 97;    // of AppString
constexpr uint32_t kSlideLook = 100; // ms between looks whether the main window has come in

struct FirstWords {
  Application& app;
  Timer* timer; // null: they have been spoken, or are just being
};

// What the user is told and asked ahead of all else, over the main window, which has to be on the screen for it.
void SpeakFirst(void* argument) {
  auto& words = *static_cast<FirstWords*>(argument);
  words.timer = SlideFrameIsRunning() ? TimerSchedule(SpeakFirst, &words, kSlideLook) : nullptr;
  if (words.timer) return;
  if (SessionIsWayland()) Tell(kAlertCaution, AppString(kWayland));
  OfferKept(words.app);
}

void AppRun() {
  static Application app;
  EndSignalsWatch();
  ApplicationStart(app);
  FirstWords words = {app, nullptr};
  SpeakFirst(&words);
  RunEventLoop();
  if (words.timer) TimerCancel(words.timer);
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
