// The shape of the mouse pointer over the program's windows: a property of their classes.
#pragma once

#include <cstdint>

#include "win32/win32_types.h"

namespace framereel {

struct ChildWindow;

// The shapes by number: 1 arrow, 2 cross, 3 wait, 4 text, 5 to 7 the program's own. Any other number, and one that the
// platform does not have, changes nothing.
void SetCursorShape(uint16_t shape);
uint16_t GetCursorShape();

// Gives the window's class the present shape, if it has another.
void UpdateCursorOf(ChildWindow* window);

void CursorShapeStartUp();

} // namespace framereel
