// Which of the program's windows is the active one, and where the keyboard goes.
//
// The platform activates whole windows of the desktop. Document windows inside the main window are none of those, so
// the choice is made here, whenever something has changed that it depends on, and told to the windows as the platform
// would tell them.
//
// Four facts meet here, and none follows from the others: whether the program has the keyboard (MainWindow::appActive);
// whether its windows count as active, as the listeners know it (ActiveGet; a minimised program's do not); which one is
// the active one (ActiveWindow); and which have been told so (ChildWindow::activated), for the platform tells those of
// the desktop by itself.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

struct ChildWindow;

// The window with the active caption that gets the keys; null when there is none.
ChildWindow* ActiveWindow();

// Makes the active window the one that it should be now: a modal window, else the program's topmost window on the
// desktop, else the topmost one inside the main window; none while the program is not the active one.
void EvaluateActiveWindow();
// Gives the keyboard to the modal window or, without one, to the main window. Input routing counts on that.
void RestoreFocus();

// Around a dialog of the platform: the active window looks and is told to be inactive, and no other becomes active.
void SuspendActivation();
void ResumeActivation();

// The window is going: it is not the active one any more, and is not told.
void ForgetActiveWindow(const ChildWindow* window);

// ---- From the window procedures ----------------------------------------------------------------------------------

// Works out anew whether the program is the active one, which a minimised program is not; tells the listeners
// (core/notices.h) of a change.
void CheckActiveState();
// WM_ACTIVATE.
void ChildActivated(ChildWindow* window);
void ChildDeactivated(ChildWindow* window);

void ActiveWindowStartUp();

} // namespace framereel
