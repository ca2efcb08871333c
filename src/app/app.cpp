// See app.h.
#include "app/app.h"

#include <cstdio>

#include "app/panel.h"
#include "app/slide_frame.h"
#include "platform/app_callbacks.h"
#include "platform/display_caps.h"
#include "platform/platform_init.h"
#include "platform/pump.h"
#include "toolkit/view_class.h"

namespace framereel {
namespace {

// The close box of the main window.
void Quit(void*) {
  EndEventLoop();
}

// The platform floor takes the windows down; only what is not its own is ended here.
void AppRun() {
  SetAppCallback(kQuitHandler, Quit, nullptr);
  BuildPanel();
  RunEventLoop();
  SlideFrameCancel();
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
  return lost ? Fail("the connection to the display is lost") : 0;
}

} // namespace framereel
