// The MainWindow: the program's one frame window. The other windows stand in child_window.h.
#pragma once

#include "platform/records/window_records.h"
#include "win32/win32_types.h"

namespace framereel {

// Makes and shows it, once; answers the record. String 100 is its title and string 101 its frame type: 0 stands on the
// screen and can be sized; 1 is of fixed size, 2 can be sized, and both stand off the screen's right edge at first.
// False when the platform has no window to give.
bool CreateMainWindow(HINSTANCE instance, int showCommand);
// Destroys it; the record is as before CreateMainWindow.
void DestroyMainWindow();
// Brings it back if it is minimised, and with it the windows that it owns.
void RestoreMainWindow();
void SetMainWindowTitle(MainWindow* main, const char* title);

} // namespace framereel
