// Where windows are: placing and sizing them, and the way from one system of coordinates to another. The records and
// the three systems stand in records/window_records.h.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "platform/records/window_records.h"
#include "win32/win32_types.h"

namespace framereel {

// A window that has no place yet: 32767 throughout and no frame.
WindowGeometry NoGeometry();

struct Insets {
  int32_t left, top, width, height; // the last two of both sides together
};

Insets InsetsOf(const WindowGeometry& geometry);
void ClientFromOuter(WindowGeometry* geometry);
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
// In the middle of the main window's client area; of the primary monitor, while the main window stands off the screen.
// Where there are several monitors, it stays on the main window's.
void CentreChildWindow(ChildWindow* window);
// The same, but a third of the free height down.
void PlaceChildWindowUpper(ChildWindow* window);
// Whether one of these is at work now.
bool ProgramPlacesWindow();
// Half of the main window's size at 0, 0, for a window that has just been made.
void StartChildGeometry(ChildWindow* window);

// Between toolkit coordinates and those of the window, modulo 16 bits: a main window far off the screen may put toolkit
// coordinates of a point on it out of reach, and the way there and back is exact all the same. With a null window the
// point stays as it is.
Point ToWindowPoint(const ChildWindow* window, Point toolkitPoint);
Point ToToolkitPoint(const ChildWindow* window, Point windowPoint);

// ---- The main window; null means it ------------------------------------------------------------------------------

void SetMainClientSize(MainWindow* main, int16_t width, int16_t height); // the outer corner stays
void MoveMainWindow(MainWindow* main, int16_t x, int16_t y);             // client top left on the screen
void SetMainBounds(MainWindow* main, int16_t x, int16_t y, int16_t width, int16_t height); // both
// What the user can make it at the least, outer size.
void SetMainMinimumSize(MainWindow* main, int16_t width, int16_t height);
bool MainIsIconic(const MainWindow* main);

} // namespace framereel
