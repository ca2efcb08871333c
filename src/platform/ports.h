// Ports: what can be drawn into or copied from, and which one is current.
//
// The rest of the program never sees a device context but through the current Port. After a change of the Port nothing
// of the last one is left selected but its font. What is drawn with stands in drawing.h, the clip in clip.h.
// Offscreens, one kind of Port, stand in bitmaps.h, windows in child_window.h and main_window.h.
//
// The palette of the screen belongs to the desktop (GetDeviceCaps), so no Port has one to select.
#pragma once

#include <cstdint>

#include "win32/win32.h"

namespace framereel {

struct ChildWindow;
struct MainWindow;
struct Offscreen;

enum PortKind : uint16_t { kPortOffscreen = 2, kPortScreen = 6 }; // and those of windows, in their headers

// The head of everything that can be the current Port.
struct Port {
  uint16_t kind;
  uint8_t colour; // 0 for a plain 1-bit mask, else 1
};

// Makes the screen context, the memory contexts and the ScreenPort; false when there is no display. PortsShutDown
// gives all of it back.
bool PortsStartUp();
void PortsShutDown();

// How windows come by their contexts, handed down by the module that paints them.
struct WindowContexts {
  MainWindow* main;
  // The context of a platform window; null when it has none to give. While the window is being painted that is the
  // context of the paint: `painting` is set, its clip is to stay, and it does not go back.
  HDC (*take)(HWND window, bool* painting);
  void (*giveBack)(HWND window, HDC context);
};
// Until this has been called windows have no context. Null takes it back.
void SetWindowContexts(const WindowContexts* contexts);

const Port* ScreenPort(); // the whole screen; coordinates are screen coordinates

// Each of these makes the Port current, with no DrawState in use and no clip; where a window is being painted the
// clip of the paint stays.
void SetPortWindow(ChildWindow* window); // in window coordinates; a minimised window draws nothing
void SetPortMain(MainWindow* main);      // null: the one there is; nothing is current where there is none
void SetPortScreen();
void SetPortOffscreen(Offscreen* offscreen);
void ReleasePort(); // nothing is current
const Port* CurrentPort();
// The context of the current Port, for those who call the platform's drawing themselves; null when there is none.
HDC CurrentContext();
// The platform window of the current Port; null when it is no window.
HWND CurrentContextWindow();
// All drawing is to be clipped away.
bool IsPortBlind();

// The contexts that bitmaps.cpp and fonts.cpp work with, made at start-up.
HDC ScreenContext();
HDC SourceContext(); // holds an Offscreen while pixels are copied out of it
// A window's context for reading pixels out of it, and giving that back.
HDC TakeWindowContext(HWND window, bool* painting);
void GiveWindowContextBack(HWND window, HDC context, bool painting);

} // namespace framereel
