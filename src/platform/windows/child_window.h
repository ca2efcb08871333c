// ChildWindows: every window but the main one. Panels, alerts, popups and the selection's backdrop are ChildWindows.
//
// The record mirrors a window of the platform. Where it is stands in window_geometry.h, which window is active in
// active_window.h, which one is modal in modal.h, which there are in window_list.h, and how its messages come in in
// pump/child_procedure.cpp.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "platform/records/window_records.h"
#include "win32/win32_types.h"

namespace framereel {

// Makes a window, hidden and in the middle, with a copy of the title. A null parent means the main window. Null only
// where MemAlloc answers null.
ChildWindow* OpenChildWindow(MainWindow* parent, const char* title, uint32_t flags);
// Both count openCount up; the first such call shows the window, the second kind on top of the others of its level.
// A modal window becomes the modal one.
void ShowChildWindow(ChildWindow* window);
void ShowChildWindowFront(ChildWindow* window);
// On top of the others of its level; this may activate it.
void BringChildWindowForward(ChildWindow* window);
// Below the others of its level.
void SendChildWindowBack(ChildWindow* window);
// Destroys its Views and the window at once. The record can be read until the current pass of the event loop ends; a
// second call does nothing.
void CloseChildWindow(ChildWindow* window);
// Asks mayClose, and if it may: close, then CloseChildWindow.
void RequestClose(ChildWindow* window);

template <typename Function>
void SetWindowMethod(ChildWindow* window, Function WindowMethods::*slot, Function function) {
  window->methods.*slot = function;
}
void SetChildWindowTitle(ChildWindow* window, const char* title);
// Marks a rectangle, or all of the client area, to be painted.
void InvalidateChildRect(ChildWindow* window, const Rect& where);
void InvalidateChildWindow(ChildWindow* window);
Rect ChildBounds(const ChildWindow* window); // its client area in its own coordinates

// ---- From the window procedure and the start-up ------------------------------------------------------------------

// What its system menu sends besides the platform's commands.
inline constexpr WPARAM kCloseItem = 16;
inline constexpr WPARAM kNextItem = 32;

// The record whose platform window is being made, once: its first message attaches the two.
ChildWindow* TakePendingWindow();

void ChildWindowsStartUp();
// Destroys all windows with their Views, and frees the records.
void ChildWindowsShutDown();

} // namespace framereel
