// ChildWindows: every window but the main one. Panels, alerts, popups and the selection's backdrop are ChildWindows.
//
// The record mirrors a window of the platform. Where it is stands in window_geometry.h, which window is active in
// active_window.h, which one is modal in modal.h, and how its messages come in in child_procedure.cpp.
#pragma once

#include <cstdint>

#include "core/arrays.h"
#include "core/list.h"
#include "platform/drawing/ports.h"
#include "platform/records/colour.h"
#include "platform/records/control_table.h"
#include "platform/records/input_events.h"
#include "platform/windows/window_geometry.h"
#include "win32/win32.h"

namespace framereel {

struct ChildWindow;
struct MenuItem;

inline constexpr uint16_t kPortChildWindow = 1; // its PortKind; read from through a context of its own

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
  bool iconic;                // minimised
  ChildWindow* previousModal; // the modal window that this one replaced
  ListHandle node;            // its place among all windows
  bool activated;             // activated has run and deactivated has not
};

// Makes a window, hidden and in the middle, with a copy of the title. A null parent means the main window. Never null.
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

// ---- All windows -------------------------------------------------------------------------------------------------

// The ChildWindow of a platform window; null when it is none.
ChildWindow* FindChildWindow(HWND handle);
// The highest window inside the main window; null when there is none.
ChildWindow* TopDocumentWindow();
// In order of creation; null at the end. Start with null.
ChildWindow* NextChildWindow(const ChildWindow* window);
// Whether there is such a window and it has not been closed; the record need not be good any more.
bool IsOpenChildWindow(const ChildWindow* window);

// The record whose platform window is being made, once: its first message attaches the two.
ChildWindow* TakePendingWindow();

void ChildWindowsStartUp();
// Destroys all windows with their Views, and frees the records.
void ChildWindowsShutDown();

} // namespace framereel
