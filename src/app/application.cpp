// See application.h.
#include "app/application.h"

#include <cstdio>

#include "app/panel.h"
#include "app/slide_frame.h"
#include "area/ants.h"
#include "core/app_strings.h"
#include "core/memory.h"
#include "core/notices.h"
#include "platform/app_callbacks.h"
#include "platform/input_keys.h"
#include "platform/pump.h"
#include "recorder/control/recording_control.h"
#include "recorder/engine/owner_name.h"
#include "recorder/engine/recorder_core.h"
#include "recorder/engine/status.h"
#include "toolkit/rects.h"

namespace framereel {
namespace {

void TellThatMemoryEnded(void*, uint32_t) {
  Beep();
  ::fprintf(stderr, "framereel: %s\n", AppAlertString(0));
}

// The close box of the main window.
void Quit(void*) {
  EndEventLoop();
}

void HearOfChange(intptr_t code, void* recorder) {
  if (code == kChangeDisplay) RecorderCheckScreen(*static_cast<RecorderState*>(recorder));
}

// Around an area smaller than the pictures the line would run across them, and both would be kept as what was below.
void MakeWayForPicture(void* owner, const Rect& where, bool stands) {
  Application& app = *static_cast<Application*>(owner);
  if (stands && !RectInside(where, app.recorder.captureArea)) {
    AntsHide(app.area);
    app.lineGaveWay = true;
  } else if (!stands && app.lineGaveWay) {
    AntsShow(app.area);
  }
}

RecorderPanel PanelOfRecorder(Application& app) {
  RecorderPanel panel;
  panel.owner = &app;
  panel.pictureStands = MakeWayForPicture;
  return panel;
}

AreaPanel PanelOfArea(Application& app) {
  AreaPanel panel;
  panel.owner = &app;
  panel.window = PanelWindow();
  panel.stopSlide = [](void*) { SlideFrameCancel(); };
  panel.saveSettings = [](void* owner) { SettingsSave(static_cast<Application*>(owner)->settings); };
  return panel;
}

} // namespace

void ApplicationStart(Application& app) {
  app.options = {};
  app.lineGaveWay = false;
  SetMemFailureHook(TellThatMemoryEnded, nullptr);
  GifWriterInit(app.gif, &app.stream);
  RecorderSetUp(app.recorder, &app.stream, &app.gif, &app.options);
  app.recorder.ownerName = OwnerName();
  RecorderInit(app.recorder);
  StreamInit(app.stream);
  AreaInit(app.area, &app.recorder);
  SettingsInit(app.settings, &app.options, &app.area);
  SetAppCallback(kQuitHandler, Quit, nullptr);
  BuildPanel();
  RecorderTakePanel(app.recorder, PanelOfRecorder(app));
  AreaTakePanel(app.area, PanelOfArea(app));
  NotifyAdd(HearOfChange, &app.recorder);
  RecorderCheckScreen(app.recorder);
  AreaDisplayInit(app.area);
}

void ApplicationEnd(Application& app) {
  SlideFrameCancel();
  RecorderShutDown(app.recorder);
  AreaShutDown(app.area);
  NotifyRemove(HearOfChange, &app.recorder);
  SettingsShutDown(app.settings);
  RecorderTearDown(app.recorder);
  StreamFree(app.stream);
  GifWriterFree(app.gif);
  SetMemFailureHook(nullptr, nullptr);
}

} // namespace framereel
