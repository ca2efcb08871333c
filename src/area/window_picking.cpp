// The search for the window under the pointer, deepest child first, and the tick that moves the outline to it.
#include "area/window_picking.h"

#include <algorithm>

#include "area/ants.h"
#include "area/capture_area.h"
#include "core/rects.h"
#include "core/timers.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr uint32_t kTickInterval = 17; // ms: the stripes rush

RECT Common(const RECT& a, const RECT& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

bool IsNone(const Rect& r) {
  return r.left >= r.right;
}

void Toggle(const AreaState& area) {
  if (!IsNone(area.hoverRect)) AntsDraw(area, OutlineOf(area.hoverRect), area.hoverPhase);
}

void Step(AreaState& area) {
  if (IsNone(area.hoverRect)) return;
  AntsStep(area, OutlineOf(area.hoverRect), area.hoverPhase);
  area.hoverPhase = (area.hoverPhase + 1) % kAntsPhases;
}

void WindowPickTick(void* argument) {
  AreaState& area = *static_cast<AreaState*>(argument);
  area.hoverTimer = TimerSchedule(WindowPickTick, &area, kTickInterval);
  if (area.ants.pause > 0) return;
  POINT pointer;
  Rect under = {};
  if (::GetCursorPos(&pointer)) FindWindowAt(pointer.x, pointer.y, &under);
  if (RectEqual(under, area.hoverRect)) return Step(area);
  Toggle(area);
  area.hoverRect = under;
  Toggle(area);
}

} // namespace

bool FindWindowAt(int32_t x, int32_t y, Rect* picked, HWND* deepest) {
  HWND window = ::GetDesktopWindow();
  RECT shown = {INT16_MIN, INT16_MIN, INT16_MAX, INT16_MAX};
  bool found = false;
  for (;;) {
    POINT local = {x, y};
    RECT place;
    ::ScreenToClient(window, &local);
    const HWND child = ::ChildWindowFromPointEx(window, local, CWP_SKIPINVISIBLE);
    if (!child || child == window || !::GetWindowRect(child, &place)) break;
    shown = Common(shown, place);
    window = child;
    found = true;
  }
  if (found && deepest) *deepest = window;
  if (found) *picked = {int16_t(shown.top), int16_t(shown.left), int16_t(shown.bottom), int16_t(shown.right)};
  return found;
}

void WindowPickBegin(AreaState& area) {
  area.hoverTimer = TimerSchedule(WindowPickTick, &area, 0);
}

void WindowPickHide(AreaState& area) {
  Toggle(area);
  area.hoverRect = {};
}

void WindowPickEnd(AreaState& area) {
  if (area.hoverTimer) TimerCancel(area.hoverTimer);
  area.hoverTimer = nullptr;
  WindowPickHide(area);
}

} // namespace framereel
