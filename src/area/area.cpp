// The order of start-up and end, and the look at Shift.
#include "area/area.h"

#include "area/ants.h"
#include "area/capture_area.h"
#include "area/readouts.h"
#include "area/selection.h"
#include "core/notices.h"
#include "core/temporary_blocks.h"
#include "core/timers.h"
#include "recorder/control/key_chords.h"
#include "recorder/engine/recorder_state.h"

namespace framereel {
namespace {

constexpr uint32_t kModeInterval = 500; // ms

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

void AreaRecompute(AreaState& area) {
  const bool up = AntsAreUp(area);
  if (up) AntsToggle(area);
  AlignCaptureArea(area);
  if (up) AntsToggle(area);
}

} // namespace framereel
