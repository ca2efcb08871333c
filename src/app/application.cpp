// Start-up and end, and what the parts are to each other.
#include "app/application.h"

#include <cstdio>

#include "app/document.h"
#include "app/menus.h"
#include "app/panel.h"
#include "app/picture_windows.h"
#include "app/recovery.h"
#include "app/slide_frame.h"
#include "area/ants.h"
#include "area/area.h"
#include "area/selection.h"
#include "area/window_picking.h"
#include "core/abort_hook.h"
#include "core/app_strings.h"
#include "core/memory.h"
#include "core/notices.h"
#include "core/rects.h"
#include "platform/display/beep.h"
#include "platform/pump/app_callbacks.h"
#include "platform/pump/pump.h"
#include "recorder/control/countdown.h"
#include "recorder/control/recording_control.h"
#include "recorder/engine/owner_name.h"
#include "recorder/engine/recorder_core.h"
#include "recorder/engine/status.h"
#include "toolkit/controls/alert.h"

namespace framereel {
namespace {

// The lines first: they may run across a picture. All of it is taken off without memory.
void LeaveScreen(Application& app) {
  WindowPickHide(app.area);
  if (AntsAreUp(app.area)) AntsToggle(app.area);
  PutBackPictureArea(app.recorder);
}

// It is frames that take memory, and while one is taken all windows are sound. Anywhere else one may be half made or
// half gone, and nobody is asked anything: what stands on standard error has to do.
void TellThatMemoryEnded(void* application, uint32_t count) {
  if (count > 1) return;
  auto& app = *static_cast<Application*>(application);
  const bool windowsAreSound = app.recorder.captureBusy;
  LeaveScreen(app);
  const char* message = AppAlertString(KeepUnsaved(app) ? 0 : 5);
  ::fprintf(stderr, "framereel: %s\n", message);
  Beep();
  if (!windowsAreSound) return;
  EndAtNextFailure();
  if (AlertAsk(nullptr, nullptr, kAlertStop, message, AppAlertString(1), AppAlertString(2))) return;
  AlertAsk(nullptr, nullptr, kAlertStop, AppAlertString(3), AppAlertString(4), nullptr);
}

void KeepAtAbort(void* application) {
  KeepUnsaved(*static_cast<Application*>(application));
}

// The close box of the main window.
void Quit(void* application) {
  CommandQuit(*static_cast<Application*>(application));
}

void HearOfChange(intptr_t code, void* recorder) {
  if (code == kChangeDisplay) RecorderCheckScreen(*static_cast<RecorderState*>(recorder));
}

// Round an area smaller than the pictures the line runs across them. It comes back over a picture that has been drawn.
void MakeWayForPicture(void* owner, const Rect& where, PictureWork work) {
  Application& app = *static_cast<Application*>(owner);
  WindowPickHide(app.area); // comes back by itself
  if (RectInside(where, app.recorder.captureArea)) return;
  if (work == PictureWork::kRepaints) {
    AntsPause(app.area);
  } else if (AntsAreUp(app.area)) {
    AntsToggle(app.area);
  }
}

RecorderPanel PanelOfRecorder(Application& app) {
  RecorderPanel panel = PanelForRecorder(app);
  panel.pictureWork = MakeWayForPicture;
  return panel;
}

} // namespace

void ApplicationStart(Application& app) {
  app.options = {};
  app.panel = {};
  BuildMenus(app);
  SetMemFailureHook(TellThatMemoryEnded, &app);
  SetAbortHook(KeepAtAbort, &app);
  GifWriterInit(app.gif, &app.stream);
  RecorderSetUp(app.recorder, &app.stream, &app.gif, &app.options);
  app.recorder.ownerName = OwnerName();
  RecorderInit(app.recorder);
  StreamInit(app.stream);
  AreaInit(app.area, &app.recorder);
  SettingsInit(app.settings, &app.options, &app.area);
  DocumentStartUp(app.document);
  SetAppCallback(kQuitHandler, Quit, &app);
  SetSessionHandler(HearOfSession, &app);
  ShowSplash(app);
  BuildPanel(app);
  SetDocumentFile(app, nullptr);
  RecorderTakePanel(app.recorder, PanelOfRecorder(app));
  AreaTakePanel(app.area, PanelForArea(app));
  NotifyAdd(HearOfChange, &app.recorder);
  RecorderCheckScreen(app.recorder);
  AreaDisplayInit(app.area);
}

void ApplicationEnd(Application& app) {
  SlideFrameCancel();
  PictureWindowsShutDown(app);
  RecorderShutDown(app.recorder);
  AreaShutDown(app.area);
  NotifyRemove(HearOfChange, &app.recorder);
  SettingsShutDown(app.settings);
  DocumentShutDown(app.document);
  RecorderTearDown(app.recorder);
  StreamFree(app.stream);
  GifWriterFree(app.gif);
  SetAbortHook(nullptr, nullptr);
  SetMemFailureHook(nullptr, nullptr);
}

} // namespace framereel
