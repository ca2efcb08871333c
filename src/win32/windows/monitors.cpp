// The calls that tell of monitors.
#include <algorithm>
#include <vector>

#include "win32/pixels/display_windows.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_windows.h"
#include "win32/windows/screen_room.h"
#include "win32/windows/window_tree.h"

using namespace framereel;

// A handle is the monitor's number, from 1 on.
HMONITOR MonitorFromWindow(HWND window, DWORD) {
  const std::vector<PixelRect> monitors = DisplayMonitors();
  const PixelRect its = IsLive(window) ? MonitorOf(PlaceOnScreen(*window)) : monitors[0];
  const auto found = std::find_if(monitors.begin(), monitors.end(), [&](const PixelRect& r) { return Same(r, its); });
  return reinterpret_cast<HMONITOR>(found - monitors.begin() + 1);
}

BOOL GetMonitorInfoA(HMONITOR monitor, MONITORINFO* info) {
  const std::vector<PixelRect> monitors = DisplayMonitors();
  const auto number = reinterpret_cast<uintptr_t>(monitor);
  if (number == 0 || number > monitors.size() || !info) return FALSE;
  info->rcMonitor = RectOf(monitors[number - 1]);
  return TRUE;
}
