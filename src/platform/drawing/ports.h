// Ports: what can be drawn into or copied from, and how one becomes current.
//
// The rest of the program never sees a device context but through the current Port. After a change of the Port nothing
// of the last one is left selected but its font. What is drawn with stands in draw_state.h, the clip in clip.h, the
// records of Offscreens and windows in the room records.
//
// The palette of the screen belongs to the desktop (GetDeviceCaps), so no Port has one to select.
#pragma once

#include "platform/drawing/current_port.h"
#include "platform/records/port.h"
#include "win32/win32_types.h"

namespace framereel {

struct ChildWindow;
struct MainWindow;
struct Offscreen;

const Port* ScreenPort(); // the whole screen; coordinates are screen coordinates

// Each of these makes the Port current, with no DrawState in use and no clip; where a window is being painted the
// clip of the paint stays.
void SetPortWindow(ChildWindow* window); // in window coordinates; a minimised window draws nothing
void SetPortMain(MainWindow* main);      // null: the one there is; nothing is current where there is none
void SetPortScreen();
void SetPortOffscreen(Offscreen* offscreen);
void ReleasePort(); // nothing is current

// ---- How windows come by their contexts --------------------------------------------------------------------------

// Handed down by the module that paints them, so that a process without windows has nothing of them in it.
struct WindowContexts {
  // The context of a platform window; null when it has none to give. While the window is being painted that is the
  // context of the paint: `painting` is set, its clip is to stay, and it does not go back.
  HDC (*take)(HWND window, bool* painting);
  void (*giveBack)(HWND window, HDC context);
};
// Until this has been called windows have no context. Null takes it back.
void SetWindowContexts(const WindowContexts* contexts);

// A window's context for reading pixels out of it, and giving that back.
HDC TakeWindowContext(HWND window, bool* painting);
void GiveWindowContextBack(HWND window, HDC context, bool painting);

} // namespace framereel
