// The MainWindow and the ChildWindow, as records: all that the rooms below windows know of them.
//
// Three systems of coordinates are in use. Screen coordinates are the platform's. Toolkit coordinates are screen
// coordinates minus the outer top left corner of the main window (originX, originY of MainWindow), so their origin
// moves with it. Window coordinates are toolkit coordinates minus the client top left of a ChildWindow.
#pragma once

#include <cstdint>

#include "core/arrays.h"
#include "core/list.h"
#include "platform/records/colour.h"
#include "platform/records/control_table.h"
#include "platform/records/input_events.h"
#include "platform/records/port.h"
#include "win32/win32_types.h"

namespace framereel {

struct ChildWindow;
struct MenuItem;

// Sizes and places beyond 16 bits stop at the end. Between the fields holds: outer place = client place - inset, outer
// size = client size + both insets. Toolkit coordinates; the outer corner of the main window is therefore 0, 0 once it
// exists.
struct WindowGeometry {
  int16_t clientLeft, clientTop, clientWidth, clientHeight;
  int16_t outerLeft, outerTop, outerWidth, outerHeight; // the whole window with its frame
  int16_t insetTop, insetLeft, insetBottom, insetRight; // thickness of the frame, as the platform reports it
};

// ---- The main window ---------------------------------------------------------------------------------------------

// The desktop's palette cannot be changed (GetDeviceCaps: NUMRESERVED is SIZEPALETTE), so the record holds none.
struct MainWindow {
  Port port; // the head: it can be the current Port
  WindowGeometry geometry;
  HWND window; // null until the platform's window has been made
  HINSTANCE instance;
  bool iconic;                                              // minimised; kept, for a change is told once
  int16_t usableLeft, usableTop, usableWidth, usableHeight; // the screen without the task bar
  int16_t originX, originY;                                 // outer top left on the screen
  int16_t minWidth, minHeight;                              // of the outer size; 250 until the application says
  bool appActive; // the program is the active one on the system; kept, for no call tells it
};

// There is one; before CreateMainWindow it has no platform window.
MainWindow* TheMainWindow();
// The window itself or, for null, the one there is.
MainWindow* MainOr(MainWindow* main);
const MainWindow* MainOr(const MainWindow* main);

// ---- ChildWindows ------------------------------------------------------------------------------------------------

// The flags, of which the first of the kinds below that is given decides what the window is. A popup is modal as well.
enum WindowFlag : uint32_t {
  kWindowPalette = 0x1000,   // floats on top with an active caption; a click on it does not activate it
  kWindowPopup = 0x10,       // stays on top, and goes away when MenuCommand is called with null
  kWindowLoosePopup = 0x40,  // a popup that does not stay on top
  kWindowModal = 0x20,       // takes the modal state when it is shown
                             // none of these: a document window inside the main window
  kWindowMayClose = 0x1,     // from its system menu
  kWindowResizable = 0x2,    // a document window that the user can size
  kWindowFilled = 0x8,       // filled with its background ahead of each paint
  kWindowClosed = 0x100,     // set by CloseChildWindow, never by a caller
  kWindowNoMinimise = 0x200, // a document window without a minimise box
  kWindowUnclamped = 0x800,  // may be placed anywhere
};
// A window with any of these stands on the screen by itself.
inline constexpr uint32_t kTopLevelWindow = kWindowPalette | kWindowPopup | kWindowLoosePopup | kWindowModal;

using WindowMethod = void (*)(ChildWindow* window);
using WindowMouseMethod = void (*)(ChildWindow* window, uint16_t flags, int16_t x, int16_t y);
using WindowKeyMethod = void (*)(ChildWindow* window, const KeyEvent& event, int16_t x, int16_t y);
using WindowScrollMethod = void (*)(ChildWindow* window, uint16_t kind, int16_t value);

// What a window does, each window with a table of its own. At creation nothing, but mayClose answers true. Places are
// window coordinates, and the window is the current Port during a call.
struct WindowMethods {
  WindowMethod paint;                                            // 0: ahead of its Views
  WindowMouseMethod mouseDown;                                   // 1: a press that fell on no View
  WindowMouseMethod mouseUp;                                     // 2: the end of such a press
  void (*menuCommand)(ChildWindow* window, MenuItem* item);      // 3: while modal; null tells a popup to go away
  void (*mouseMoved)(ChildWindow* window, int16_t x, int16_t y); // 4
  WindowKeyMethod keyDown;                                       // 5
  WindowKeyMethod keyUp;                                         // 6
  bool (*mayClose)(ChildWindow* window);                         // 7: the user asks to close it
  WindowMethod close;                                            // 8: and now it goes
  WindowMethod resized;                                          // 9: by the user
  WindowMethod moved;                                            // 10: by the user
  WindowMethod activated, deactivated;                           // 11, 12
  WindowMethod mouseEntered, mouseLeft;                          // 13, 14
  WindowScrollMethod hScrollLine, hScrollPage, hScrollEnd, hScrollThumb; // 15 to 18: its horizontal scroll bar
  WindowScrollMethod vScrollLine, vScrollPage, vScrollEnd, vScrollThumb; // 19 to 22
};

struct ChildWindow {
  Port port;   // the head: it can be the current Port
  char* title; // owned
  WindowMethods methods;
  void* userData; // the application's
  WindowGeometry geometry;
  int16_t openCount; // show operations so far
  MainWindow* parent;
  int16_t maxWidth, maxHeight; // limits of the client size; at first the usable screen
  int16_t minWidth, minHeight;
  GrowArray views;    // its direct Views, in order of creation
  uint32_t flags;     // of WindowFlag
  Notifier listeners; // told, with the window, when it closes
  Colour background;  // white at creation
  HWND window;        // null once it is closed
  ControlTable controls;
  uint16_t* cursorCell;       // the cursor number that its class has now (cursor_shape.h)
  bool iconic;                // minimised; kept, so that what draws in it needs no platform windows
  ChildWindow* previousModal; // the modal window that this one replaced
  ListHandle node;            // its place among all windows
  bool activated;             // activated has run and deactivated has not
};

inline bool IsTopLevel(const ChildWindow* window) {
  return window->flags & kTopLevelWindow;
}

} // namespace framereel
