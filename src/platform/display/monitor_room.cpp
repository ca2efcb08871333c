// The monitor's rectangle, and the usable area as the main window's record has it.
#include "platform/display/monitor_room.h"

#include "core/numbers.h"
#include "core/rects.h"
#include "platform/display/display_caps.h"
#include "platform/records/window_records.h"
#include "win32/win32_windows.h"

namespace framereel {

MonitorRoom RoomOfMonitor(HWND window) {
  MONITORINFO info = {};
  info.cbSize = sizeof info;
  ::GetMonitorInfoA(::MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &info);
  const RECT& r = info.rcMonitor;
  const Rect monitor = {PinToShort(r.top), PinToShort(r.left), PinToShort(r.bottom), PinToShort(r.right)};
  const MainWindow* main = TheMainWindow();
  const Rect usable = RectOf(main->usableLeft, main->usableTop, main->usableWidth, main->usableHeight);
  const Rect free = RectIntersect(monitor, usable);
  const bool some = free.left < free.right && free.top < free.bottom;
  const Rect screen = {0, 0, TheDisplayCaps().screenHeight, TheDisplayCaps().screenWidth};
  return {monitor, some ? free : monitor, RectEqual(monitor, screen)};
}

} // namespace framereel
