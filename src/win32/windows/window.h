// The records behind windows. Internal to the layer.
//
// Rectangles and regions are screen pixels unless a name says otherwise. Any send may destroy any window: whoever goes
// on with one after a send asks IsLive first. Records of destroyed windows stay in memory until the next message is
// asked for outside of all window procedures.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "win32/pixels/display_windows.h"
#include "win32/pixels/region.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_windows.h"
#include "win32/windows/menu_record.h"

namespace framereel {

struct WindowClass {
  std::string name;
  UINT style;
  WNDPROC procedure;
  HICON icon;
  HCURSOR cursor;
  HBRUSH background;
};

// Something that the message loop does for a window again and again; window_timers.h.
struct WindowTimer {
  void (*run)(HWND window);
  uint32_t period; // ms
  uint32_t due;    // by DisplayTick
};

// A press of a mouse button, to tell a double click by.
struct ButtonPress {
  uint32_t number; // of WindowSystem::buttonPresses; 0: there is none that could be the first of two
  uint8_t button;
  uint32_t tick;
  int32_t x, y; // on the screen
};

// A window of the system with its pixels: a top-level window, or an open menu.
struct ShownSurface {
  DisplayWindow* display;
  Surface surface;     // as large as the window; none for a cover
  bool onScreen;       // the display shows it
  PixelRect damage[6]; // what is yet to be presented, in the surface's coordinates
  int32_t damages;
  HCURSOR pointer; // what the pointer looks like over it, as last told to the display
};

struct TopLevel {
  WindowRole role;
  ShownSurface shown;
  bool asCaption; // minimised where the desktop does not do that: its caption is left, at the bottom of the screen
};

} // namespace framereel

struct Win32Window {
  framereel::WindowClass* windowClass;
  WNDPROC procedure;
  DWORD style, extendedStyle; // WS_VISIBLE and WS_DISABLED as of now
  std::string title;
  LONG_PTR id, userData;

  HWND parent;                // of a child
  HWND owner;                 // of a top-level window; may be null
  std::vector<HWND> children; // from the top down

  // In the parent's client area, or on the screen.
  framereel::PixelRect place, client;
  framereel::PixelRect normalPlace; // where it goes when it is restored
  bool minimised;

  bool captionLit, frameDirty; // dirty: the frame is to be painted before the client area
  framereel::Region update;    // in client coordinates
  bool eraseUpdate;            // the background of the update region is to be erased
  bool beingDestroyed;

  framereel::ButtonPress lastPress;           // the last one here
  std::vector<framereel::WindowTimer> timers; // that run now
  std::shared_ptr<void> control;              // what a control's procedure keeps

  HMENU menuBar;                            // of SetMenu; null for none
  std::unique_ptr<Win32Menu> systemMenu;    // made when it is first asked for
  std::unique_ptr<framereel::TopLevel> top; // of a top-level window
};

namespace framereel {

// A context given out by GetDC or BeginPaint, or kept for the next one who asks.
struct WindowContext {
  HDC context;
  HWND window;     // null: of none, or of one that has gone
  bool given;      // somebody has it and may use it, whatever becomes of the window
  bool own;        // CS_OWNDC: stays with its window
  bool ofFrame;    // 0, 0 is the window's corner, and its frame can be drawn
  bool painting;   // between BeginPaint and EndPaint: `paint` limits it
  Region paint;    // in client coordinates
  PixelRect drawn; // what has been drawn since it was last looked at, in the target's coordinates
};

// Something in the queue: a posted message, or input that becomes one when it is taken.
struct QueueEntry {
  bool posted;
  MSG message;        // of a posted one
  DisplayEvent event; // of input
};

// The key press that was taken last, and what it types.
struct TypedKey {
  uint8_t scan;
  std::string text;
};

// What WindowSystem::markedTitle is when it is none of the bar's.
inline constexpr int32_t kNoTitle = -2, kSystemMenuTitle = -1;

// All that the layer keeps of windows and input. A group of fields is written by the module that it is named after.
struct WindowSystem {
  // classes.h, create.h, window_tree.h
  std::vector<std::unique_ptr<WindowClass>> classes;
  std::vector<std::unique_ptr<Win32Window>> windows;
  std::vector<std::unique_ptr<Win32Window>> destroyed;
  std::vector<HWND> topLevels; // from the top down

  // window_surfaces.h, window_contexts.h
  std::vector<ShownSurface*> shown;
  std::vector<std::unique_ptr<WindowContext>> contexts;
  uint32_t damagedSince; // tick of the first damage that has not been presented
  bool damaged;

  // sending.h, message_queue.h
  int32_t procedures; // how many run at this moment, one inside the other
  std::vector<QueueEntry> queue;
  bool quits;
  int exitCode;

  // activation.h
  bool hasKeyboard;          // the program is the active one; what the windows have been told
  DisplayWindow* keyboardAt; // which window of ours has the keyboard by what the display says; null for none
  DisplayWindow* askedFor;   // for which the display has been asked, and since when; null once it has answered
  uint32_t askedAt;
  HWND active, focus, capture;
  HWND lastActive; // also when no window of ours is active any more; may be gone

  // screen_changes.h
  ScreenFacts screen; // as last seen
  PixelRect usableArea;
  std::vector<PixelRect> monitors;

  // menus/menus.h, menus/menu_tracking.h
  std::vector<std::unique_ptr<Win32Menu>> menus; // but for system menus
  uint32_t menuChanges;                          // counts them, in all menus
  HWND menuOwner;                                // whose menu is open; null when none is
  int32_t markedTitle;                           // the title of its bar that is marked, or one of the two below

  // input/frame_mouse.h
  HWND pressedWindow; // whose box in the frame is held down, and which
  int pressedBox;

  // input/keyboard.h, input/input_messages.h
  BYTE keys[256]; // as GetKeyboardState tells them
  TypedKey typed;
  uint32_t buttonPresses;
  bool altAlone; // Alt is down, by itself, and nothing else has been pressed since

  // input/cursors.h
  HCURSOR cursor; // as last set
  HWND pointed;   // the window that the pointer was last seen over, and where in it
  int pointedHit;
};
WindowSystem& TheWindows();

} // namespace framereel
