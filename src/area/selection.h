// Choosing the area: a window that shows nothing but takes every mouse and key event of the whole screen, a crosshair,
// and a rubber band that follows the mouse or the arrow keys while the read-outs count along.
//
//   at rest    Space begins a keyboard drag while there is no animation; Esc stops the main window's slide
//   armed      a press, or Space, begins the drag at the pointer; Esc ends the selection
//   picking    in window mode: a press takes the rectangle of the window under the pointer; Esc ends the selection
//   dragging   the band follows the pointer; a release, Space or Esc ends the selection with the area as drawn
//
// The arrow keys move the pointer by a pixel, in every state.
#pragma once

#include "area/area_record.h"

namespace framereel {

// Puts the backdrop up: the next press on the screen begins the area. In window mode it takes a window.
// During a selection, and while the options are frozen, it does nothing.
void SelectionBegin(AreaState& area);
// Takes it down; the area is what the last step left. Without a selection it does nothing. Settings are the caller's to
// save.
void SelectionEnd(AreaState& area);

// Gives the window the mouse and key methods of a selection; its userData is theirs from here on.
void SelectionTakeWindow(AreaState& area, ChildWindow* window);

} // namespace framereel
