// The way of the mouse: from the window procedures and the idle poll to Views and windows.
//
// Where the press in progress went, and who the mouse is over, stands in windows/mouse_targets.h. Points are toolkit
// coordinates unless said otherwise; what is called gets window coordinates, with its window as the current Port.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "win32/win32_types.h"

namespace framereel {

struct ChildWindow;
struct View;

// The mouse is at the point over the window, null for the main window or nothing of ours. Calls mouseLeft and
// mouseEntered for what it has left and entered, then mouseMoved. Without a press that is one call each time, moved or
// not; during a press only what moves is told, to where the press went.
void TrackMouse(ChildWindow* window, Point point);
// The idle poll: TrackMouse for the place of the mouse now, at most once in 100 ms.
void PollMouse();

void GetMousePosition(int16_t* x, int16_t* y);
void SetMousePosition(int16_t x, int16_t y);

// All mouse events go to the window, inside it or not, and presses to no View, until it is released.
void HoldCapture(ChildWindow* window);
void ReleaseHeldCapture();
// The press in progress, if there is one, ends for its target and begins for the window; x, y are toolkit coordinates.
void ReroutePress(ChildWindow* window, uint16_t flags, int16_t x, int16_t y);

// The View is going: it loses press, modality and the mouse without being told.
void ForgetView(View* view);

// ---- From the window procedures ----------------------------------------------------------------------------------

// WM_MOUSEMOVE and the button messages of a ChildWindow. `button` is kFlagLeftButton or kFlagRightButton, `lParam` the
// message's point.
void MouseMoveMessage(ChildWindow* window, LPARAM lParam);
void PressMessage(ChildWindow* window, uint16_t button, WPARAM wParam, LPARAM lParam);
void ReleaseMessage(ChildWindow* window, uint16_t button, WPARAM wParam, LPARAM lParam);

void MouseStartUp();

} // namespace framereel
