// The MainWindow: the program's one frame window. The other windows stand in child_window.h.
#pragma once

#include <cstdint>

#include "platform/drawing/ports.h"
#include "platform/windows/window_geometry.h"
#include "win32/win32.h"

namespace framereel {

inline constexpr uint16_t kPortMainWindow = 3; // its PortKind; read from through the screen context

// The desktop's palette cannot be changed (GetDeviceCaps: NUMRESERVED is SIZEPALETTE), so the record holds none.
struct MainWindow {
  Port port; // the head: it can be the current Port
  WindowGeometry geometry;
  HWND window; // null until the platform's window has been made
  HINSTANCE instance;
  bool iconic;                                              // minimised
  int16_t usableLeft, usableTop, usableWidth, usableHeight; // the screen without the task bar
  int16_t screenLeft, screenTop, screenWidth, screenHeight; // 0, 0 and the whole screen
  int16_t originX, originY;                                 // outer top left on the screen
  int16_t minWidth, minHeight;                              // of the outer size; 250 until the application says
  bool appActive;                                           // the program is the active one on the system
};

// There is one; before CreateMainWindow it has no platform window.
MainWindow* TheMainWindow();
// The window itself or, for null, the one there is.
MainWindow* MainOr(MainWindow* main);
const MainWindow* MainOr(const MainWindow* main);

// Makes and shows it, once; answers the record. String 100 is its title and string 101 its frame type: 0 stands on the
// screen and can be sized; 1 is of fixed size, 2 can be sized, and both stand off the screen's right edge at first.
// False when the platform has no window to give.
bool CreateMainWindow(HINSTANCE instance, int showCommand);
// Destroys it; the record is as before CreateMainWindow.
void DestroyMainWindow();
void SetMainWindowTitle(MainWindow* main, const char* title);

} // namespace framereel
