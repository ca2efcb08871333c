// See area.h: start-up and end, the way from corners to the area, and the look at Shift.
#include "area/area.h"

#include <algorithm>

#include "area/ants.h"
#include "area/area_geometry.h"
#include "area/selection.h"
#include "core/memory.h"
#include "core/notices.h"
#include "core/numbers.h"
#include "core/system_kind.h"
#include "core/timers.h"
#include "platform/display/display_caps.h"
#include "recorder/control/key_chords.h"
#include "recorder/engine/recorder_state.h"
#include "recorder/engine/status.h"

namespace framereel {
namespace {

constexpr uint32_t kModeInterval = 500; // ms

void AlignCaptureArea(AreaState& area) {
  const DisplayCaps& screen = TheDisplayCaps();
  RecorderState& recorder = *area.recorder;
  recorder.captureArea =
      AlignArea(recorder.captureArea, recorder.options->recordingSize, screen.screenWidth, screen.screenHeight);
  RecorderCheckScreen(recorder); // whether all of it is on the screen
}

// Shift alone makes the next selection one of a window. The mode does not change during a selection.
void AreaModeCheck(void* argument) {
  AreaState& area = *static_cast<AreaState*>(argument);
  area.modeTimer = TimerSchedule(AreaModeCheck, &area, kModeInterval);
  if (area.selectionArmed || area.selectionDragging) return;
  const bool mode = ReadKeyState() == kKeyBitShift && ActiveGet();
  if (mode == area.windowMode) return;
  area.windowMode = mode;
  if (area.panel.setWindowMode) area.panel.setWindowMode(area.panel.owner, mode);
}

} // namespace

void AreaInit(AreaState& area, RecorderState* recorder) {
  area = {};
  area.recorder = recorder;
  AreaSetDefault(area);
}

void AreaTakePanel(AreaState& area, const AreaPanel& panel) {
  area.panel = panel;
  if (panel.window) SelectionTakeWindow(area, panel.window);
}

void AreaDisplayInit(AreaState& area) {
  AntsInit(area.ants);
  ShowAreaReadouts(area);
  AreaModeCheck(&area);
}

void AreaShutDown(AreaState& area) {
  TempScopeBegin(); // for the backdrop's record
  SelectionEnd(area);
  TempScopeEnd();
  if (area.ants.count > 0) {
    area.ants.count = 1;
    AntsHide(area);
  }
  if (area.ants.leavesMarks) RefreshScreen(area);
  if (area.modeTimer) TimerCancel(area.modeTimer);
  area.modeTimer = nullptr;
}

Rect AreaOutline(const AreaState& area) {
  const Rect& r = area.recorder->captureArea;
  return {PinToShort(r.top - 1), PinToShort(r.left - 1), PinToShort(r.bottom + 1), PinToShort(r.right + 1)};
}

void AreaFromCorners(AreaState& area) {
  const auto [left, right] = std::minmax(area.anchorX, area.cornerX);
  const auto [top, bottom] = std::minmax(area.anchorY, area.cornerY);
  area.recorder->captureArea = {top, left, PinToShort(bottom + 1), PinToShort(right + 1)};
  AlignCaptureArea(area);
}

void AreaSetDefault(AreaState& area) {
  area.anchorX = area.anchorY = 0;
  area.cornerX = HasNewShell() ? 439 : 459;
  area.cornerY = HasNewShell() ? 329 : 344;
  AreaFromCorners(area);
}

void AreaRecompute(AreaState& area) {
  const bool up = AntsAreUp(area);
  if (up) AntsToggle(area);
  AlignCaptureArea(area);
  if (up) AntsToggle(area);
}

} // namespace framereel
