// Two small broadcast channels: changes of the display and the main window, and whether the program is the active
// one.
//
// Neither has a queue: listeners run at once, on the stack of the platform message that caused the notice. Both
// need ToolkitInit.
#pragma once

#include <cstdint>

#include "core/arrays.h"

namespace framereel {

// ---- Changes ------------------------------------------------------------------------------------------------------

enum ChangeCode : uint16_t {
  kChangeMainSize = 1,      // the client size of the main window; source: the main window
  kChangeDisplay = 2,       // the display's depth, or its colour or mono state; source: null
  kChangeMainMinimised = 4, // the main window's minimised state; source: the main window
  kChangeMainMoved = 5,     // its outer top left corner, and so the origin of coordinates; source: the main window
};

// The listener gets the code as its subject.
void NotifyAdd(NoticeFunction function, void* argument);
// Removes the last listener with this very pair; absent: nothing. A listener may remove itself while it runs.
void NotifyRemove(NoticeFunction function, void* argument);
// Calls the listeners from the last added to the first. They are not told the source.
void NotifySend(const void* source, ChangeCode code);

// ---- Active state -------------------------------------------------------------------------------------------------

using ActiveFunction = void (*)(void* argument, bool active);

void ActiveAdd(ActiveFunction function, void* argument);
// Removes the last pair that is the same; absent: nothing.
void ActiveRemove(ActiveFunction function, void* argument);
// Stores the flag, then calls the listeners in the order in which they were added. The caller tests for a change
// first.
void ActiveSet(bool active);
// Whether the program's windows are the active ones on the screen; true at start.
bool ActiveGet();

// Makes the channels; ToolkitInit calls it, once.
void NoticesStartUp();

} // namespace framereel
