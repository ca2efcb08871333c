// Where windows are: the geometry that each window record holds, and how it follows the platform's windows.
//
// Three systems of coordinates are in use. Screen coordinates are the platform's. Toolkit coordinates are screen
// coordinates minus the outer top left corner of the main window (originX, originY of MainWindow), so their origin
// moves with it. Window coordinates are toolkit coordinates minus the client top left of a ChildWindow.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "core/numbers.h"
#include "win32/win32.h"

namespace framereel {

struct ChildWindow;
struct MainWindow;

// Sizes and places beyond 16 bits stop at the end. Between the fields holds: outer place = client place - inset, outer
// size = client size + both insets. Toolkit coordinates; the outer corner of the main window is therefore 0, 0 once it
// exists.
struct WindowGeometry {
  int16_t clientLeft, clientTop, clientWidth, clientHeight;
  int16_t outerLeft, outerTop, outerWidth, outerHeight; // the whole window with its frame
  int16_t insetTop, insetLeft, insetBottom, insetRight; // thickness of the frame, as the platform reports it
};

// A window that has no place yet: 32767 throughout and no frame.
WindowGeometry NoGeometry();
void OuterFromClient(WindowGeometry* geometry);

// ---- Placing and sizing a ChildWindow: Resized and Moved are not called for it -----------------------------------

// The client top left in toolkit coordinates. Without kWindowUnclamped it stays within the main window's client area,
// 5 pixels from its edges.
void PlaceChildWindow(ChildWindow* window, int16_t x, int16_t y);
// The client size, within the window's limits.
void SizeChildWindow(ChildWindow* window, int16_t width, int16_t height);
// New upper limits of the client size, to which the window then yields.
void SetMaxChildSize(ChildWindow* window, int16_t width, int16_t height);
// Places it, but so that its frame lies inside the main window's client area as far as it fits; the right and bottom
// edge count for a window that is too large.
void KeepChildWindowInside(ChildWindow* window, int16_t x, int16_t y);
// In the middle of the main window's client area; of the usable screen, while the main window stands off it.
void CentreChildWindow(ChildWindow* window);
// The same, but a third of the free height down.
void PlaceChildWindowUpper(ChildWindow* window);
// Half of the main window's size at 0, 0, for a window that has just been made.
void StartChildGeometry(ChildWindow* window);

// Between toolkit coordinates and those of the window. With a null window the point stays as it is.
Point ToWindowPoint(const ChildWindow* window, Point toolkitPoint);
Point ToToolkitPoint(const ChildWindow* window, Point windowPoint);

// ---- The main window; null means it ------------------------------------------------------------------------------

void SetMainClientSize(MainWindow* main, int16_t width, int16_t height); // the outer corner stays
void MoveMainWindow(MainWindow* main, int16_t x, int16_t y);             // client top left on the screen
void SetMainBounds(MainWindow* main, int16_t x, int16_t y, int16_t width, int16_t height); // both
// What the user can make it at the least, outer size.
void SetMainMinimumSize(MainWindow* main, int16_t width, int16_t height);
bool MainIsIconic(const MainWindow* main);

// ---- From the window procedures ----------------------------------------------------------------------------------

// Reads whether the window is minimised; a change of the main window's is told to the listeners.
void ReadChildIconic(ChildWindow* window);
void ReadMainIconic(MainWindow* main);

// WM_NCCALCSIZE: lets the platform work out the client rectangle and learns the frame from it. `handle` is the
// platform's window, which a record may not have yet. Answers the platform's answer.
LRESULT ChildFrameChanged(ChildWindow* window, HWND handle, WPARAM wParam, LPARAM lParam);
LRESULT MainFrameChanged(MainWindow* main, HWND handle, WPARAM wParam, LPARAM lParam);
// WM_WINDOWPOSCHANGED: brings the record up to date. Resized and Moved run when it was not the program's own doing,
// with the record already right.
void ChildPlaceChanged(ChildWindow* window, const WINDOWPOS& place);
void MainPlaceChanged(MainWindow* main, const WINDOWPOS& place);

} // namespace framereel
