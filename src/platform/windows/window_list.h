// All ChildWindows that are open, in the order in which they were made.
#pragma once

#include "platform/records/window_records.h"
#include "win32/win32_types.h"

namespace framereel {

// The ChildWindow of a platform window; null when it is none.
ChildWindow* FindChildWindow(HWND handle);
// The highest window inside the main window; null when there is none.
ChildWindow* TopDocumentWindow();
// In order of creation; null at the end. Start with null.
ChildWindow* NextChildWindow(const ChildWindow* window);
// Whether there is such a window and it has not been closed; the record need not be good any more.
bool IsOpenChildWindow(const ChildWindow* window);

// ---- From child_window.h -----------------------------------------------------------------------------------------

void ListChildWindow(ChildWindow* window); // at the end
void UnlistChildWindow(ChildWindow* window);

void WindowListStartUp();
void WindowListShutDown(); // the list is empty by then

} // namespace framereel
