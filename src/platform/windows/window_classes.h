// The platform's window classes: one for the main window, one for ChildWindows, and numbered ones beside that.
#pragma once

#include <cstdint>

#include "win32/win32_types.h"

namespace framereel {

inline constexpr const char* kMainWindowClass = "JMainWindow";

// A class for ChildWindows, and the cell that holds the cursor number that it has now (cursor_shape.h).
struct ChildWindowClass {
  const char* name;
  uint16_t* cursorCell;
};

// Registers all of them, with the procedure of the main window and that of all others. String 102 holds the first and
// the last id of the numbered classes; string 103 has a digit for each, odd for a class without a background: its
// windows show the live desktop.
void RegisterWindowClasses(HINSTANCE instance, WNDPROC mainProcedure, WNDPROC childProcedure);

// The next ChildWindow is of the numbered class with this id. An id that no class has changes nothing.
void SelectWindowClass(uint16_t id);
// The class that the next ChildWindow is to have. The one after it has the plain class again.
ChildWindowClass TakeSelectedWindowClass();

} // namespace framereel
