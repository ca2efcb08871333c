// See ants.h. A phase p, 0 to 7, says which pixels of the line are inverted: those where (x + y - p) modulo 8 is 4 to
// 7, in screen coordinates. The drawing layer has a pattern for each of the eight diagonals.
#include "area/ants.h"

#include "core/timers.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/pump/pump.h"

namespace framereel {
namespace {

constexpr uint32_t kTickInterval = 150; // ms
constexpr uint16_t kPauseTicks = 8;
constexpr uint16_t kPhases = 8;

void SelectDiagonal(unsigned diagonal) {
  SetPattern(kPatternStripes + diagonal % kPhases);
}

// Each pixel of the line along the inside of the rectangle once: a corner that is inverted twice would be as before.
void AntsInvertFrame(const Rect& r) {
  FillRectXY(r.left, r.top, r.left + 1, r.bottom);
  FillRectXY(r.right - 1, r.top, r.right, r.bottom);
  FillRectXY(r.left + 1, r.top, r.right - 1, r.top + 1);
  FillRectXY(r.left + 1, r.bottom - 1, r.right - 1, r.bottom);
}

void UseAntsDrawing(const AreaState& area) {
  SetPortScreen();
  UseDrawState(area.ants.drawing);
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
    ants.phase = (ants.phase + 1) % kPhases;
  }
  ants.timer = TimerSchedule(AntsTick, &area, kTickInterval);
}

} // namespace

void AntsDraw(const AreaState& area, const Rect& frame, uint16_t phase) {
  UseAntsDrawing(area);
  for (unsigned stripe = 4; stripe < kPhases; ++stripe) {
    SelectDiagonal(phase + stripe);
    AntsInvertFrame(frame);
  }
}

// Each stripe gains a diagonal in front and loses its last one.
void AntsStep(const AreaState& area, const Rect& frame, uint16_t phase) {
  UseAntsDrawing(area);
  SelectDiagonal(phase);
  AntsInvertFrame(frame);
  SelectDiagonal(phase + 4U);
  AntsInvertFrame(frame);
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

void AntsToggle(AreaState& area) {
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
