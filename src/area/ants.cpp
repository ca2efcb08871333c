// A phase p, 0 to 7, says which pixels of the line are inverted: those where (x + y - p) modulo 8 is 4 to
// 7, in screen coordinates. The drawing layer has a pattern for each of the eight diagonals.
#include "area/ants.h"

#include "area/capture_area.h"
#include "core/timers.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/pump/pump.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr uint32_t kTickInterval = 150; // ms
constexpr uint16_t kPauseTicks = 8;

// Each pixel of the line along the inside of the rectangle once: a corner that is inverted twice would be as before.
void InvertDiagonal(const AreaState& area, const Rect& r, unsigned diagonal) {
  UseDrawState(area.ants.diagonals[diagonal % kAntsPhases]);
  FillRectXY(r.left, r.top, r.left + 1, r.bottom);
  FillRectXY(r.right - 1, r.top, r.right, r.bottom);
  FillRectXY(r.left + 1, r.top, r.right - 1, r.top + 1);
  FillRectXY(r.left + 1, r.bottom - 1, r.right - 1, r.bottom);
}

// Our own windows paint first: what they still have to paint would wipe the line again.
void DrawAnew(AreaState& area) {
  FlushPaints();
  area.ants.leavesMarks = true;
  AntsToggle(area);
}

void AntsTick(void* argument) {
  AreaState& area = *static_cast<AreaState*>(argument);
  Ants& ants = area.ants;
  ants.timer = nullptr;
  if (ants.pause > 0 && --ants.pause == 0) DrawAnew(area);
  if (ants.pause == 0) {
    AntsStep(area, AreaOutline(area), ants.phase);
    ants.phase = (ants.phase + 1) % kAntsPhases;
  }
  ants.timer = TimerSchedule(AntsTick, &area, kTickInterval);
}

} // namespace

void AntsInit(Ants& ants) {
  SetPortMain(nullptr);
  for (uint32_t k = 0; k < kAntsPhases; ++k) {
    ants.diagonals[k] = NewDrawState();
    UseDrawState(ants.diagonals[k]);
    SetPenMode(kPenInvert);
    SetPattern(kPatternStripes + k);
  }
}

void AntsDraw(const AreaState& area, const Rect& frame, uint16_t phase) {
  SetPortScreen();
  for (unsigned stripe = 4; stripe < kAntsPhases; ++stripe) InvertDiagonal(area, frame, phase + stripe);
}

// Each stripe gains a diagonal in front and loses its last one.
void AntsStep(const AreaState& area, const Rect& frame, uint16_t phase) {
  SetPortScreen();
  InvertDiagonal(area, frame, phase);
  InvertDiagonal(area, frame, phase + 4U);
}

void AntsShow(AreaState& area) {
  Ants& ants = area.ants;
  if (ants.count++ != 0) return;
  DrawAnew(area);
  ants.pause = 0;
  ants.timer = TimerSchedule(AntsTick, &area, kTickInterval);
}

void AntsHide(AreaState& area) {
  Ants& ants = area.ants;
  if (--ants.count != 0) return;
  if (ants.timer) TimerCancel(ants.timer);
  ants.timer = nullptr;
  if (ants.pause == 0) AntsToggle(area);
}

bool AntsAreUp(const AreaState& area) {
  return area.ants.count > 0 && area.ants.pause == 0;
}

void AntsToggle(const AreaState& area) {
  AntsDraw(area, AreaOutline(area), area.ants.phase);
}

// Not every display wipes the line when it is asked to have the screen painted, so it is taken off here.
void AntsPause(AreaState& area) {
  if (AntsAreUp(area)) AntsToggle(area);
  area.ants.pause = kPauseTicks;
}

void AntsResume(AreaState& area) {
  if (area.ants.pause == 0) return;
  area.ants.pause = 0;
  if (area.ants.count > 0) DrawAnew(area);
}

void RefreshScreen(AreaState& area) {
  AntsPause(area);
  area.ants.leavesMarks = false;
  ::InvalidateRect(nullptr, nullptr, TRUE);
}

} // namespace framereel
