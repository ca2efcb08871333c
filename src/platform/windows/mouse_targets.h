// Whom the mouse has: where the press in progress went, and what the mouse is over.
//
// Windows and Views that go are forgotten here. Who calls them stands in input/mouse.h. The platform knows which of its
// windows has the capture; what is kept here is why: a press, or for longer.
#pragma once

#include "core/geometry.h"

namespace framereel {

struct ChildWindow;
struct View;

struct MouseTargets {
  Point last;                 // where the mouse was seen, in toolkit coordinates
  ChildWindow* enteredWindow; // it and the View have had their mouseEntered
  View* enteredView;
  ChildWindow* pressWindow; // null: no press is in progress
  View* pressView;          // null: the press is the window's
  bool captureHeld;         // by HoldCapture, so neither press nor release touches the capture
};

// Read and written by input/mouse.cpp.
MouseTargets& TheMouseTargets();

// The next TrackMouse counts as moved.
void ResetMousePoint();
// The press in progress is over for its target, and its capture ends.
void EndMouseTracking();
// The window is going: it loses press and mouse without being told.
void ForgetMouseWindow(const ChildWindow* window);

void MouseTargetsStartUp();

} // namespace framereel
