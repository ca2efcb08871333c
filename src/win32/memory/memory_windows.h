// The window half of the desktop in memory: windows of ours and of other programs in one stack, a task bar, a user with
// a mouse and a keyboard.
//
// The screen is a real one: a window's pixels are there only where they have been presented, and where something is
// uncovered, its owner is asked to paint: ours by kExposed, other programs' by their repaint hook, at once. What is
// drawn on the screen itself stays until whatever lies there is painted anew.
//
// A test plays the user and the other programs with the functions below, between calls of the program or from
// MemoryAt events. Nothing happens to our program before it asks for events.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "win32/pixels/display_windows.h"
#include "win32/pixels/region.h"

namespace framereel {

struct MemoryChild {
  PixelRect place; // in its parent
  bool visible;
  std::vector<MemoryChild> children = {}; // from the top down
  DesktopWindow name = 0;                 // by which it has been answered; 0: not yet
};

// One window, ours or another program's.
struct DisplayWindow {
  bool ours, taskBar;
  WindowRole role;
  PixelRect place;
  DisplayWindow* owner;
  std::string title;
  bool shown, minimised, modal;
  size_t iconSizes; // 0: no icon was given
  PointerShape shape;
  // Of other programs.
  uint32_t pixel;                    // what it is filled with when there is no hook
  std::function<void()> paint;       // paints it with MemoryPaintWindow; opens and closes no window
  uint32_t paints;                   // how often it had to
  std::vector<MemoryChild> children; // from the top down
  DesktopWindow name;                // as that of a child
};

struct MemoryDesktop {
  std::vector<std::unique_ptr<DisplayWindow>> windows; // from the top down
  std::vector<uint32_t> picture;                       // of the desktop itself, under all windows; empty: black
  std::vector<PixelRect> monitors;                     // the primary one first; empty: one shows the whole screen
  std::deque<DisplayEvent> events;
  DisplayWindow* keyboard; // has it; may be another program's; null: nobody
  DisplayWindow* captured; // by DisplayCapturePointer
  DisplayWindow* pressed;  // where a button went down: gets mouse events until all are up
  DisplayWindow* dragged;  // moves with the pointer
  bool leavesDragging;     // set: DisplayDragWindow answers false
  bool leavesMinimising;   // set: DisplayMinimiseWindow answers false
  bool keysGrabbed;        // another program gets all keys, whoever has the keyboard
  bool keys[256];          // by virtual key; 1, 2 and 4 are the mouse buttons
  bool capsLock;
  bool deadKeys; // the layout is the one with dead keys
  char accent;   // of the one that was pressed last and waits for a letter; 0 for none
  // What programs share, by SharedText: ours has put it there, or another.
  std::string sharedTexts[2];
  uint32_t beeps, refreshes;
  uint32_t sessionYes, sessionNo; // answers of DisplayAnswerSession
  DesktopWindow namesGiven;       // the last one
  uint32_t presents;              // calls of DisplayPresent
  uint64_t presentedPixels;       // and how much they brought
};

MemoryDesktop& TheMemoryDesktop();

// ---- Other programs ----------------------------------------------------------------------------------------------

// A window of another program, shown on top of its kind and filled with the pixel value. Its paint hook and children
// can be set afterwards.
DisplayWindow* MemoryOpenWindow(const std::string& title, const PixelRect& place, uint32_t pixel);
void MemoryCloseWindow(DisplayWindow* window);
// Draws in a window of another program, where it can be seen; the rectangle is in the window.
void MemoryPaintWindow(const DisplayWindow& window, const PixelRect& where, uint32_t pixel);
// Draws on the desktop itself, and on the screen where it can be seen.
void MemoryPaintDesktop(const PixelRect& where, uint32_t pixel);
// The strip along an edge of the screen that a task bar takes; an empty one takes it away.
void MemorySetTaskBar(const PixelRect& place);
void MemorySetMonitors(const std::vector<PixelRect>& monitors); // as MemoryDesktop has them

// ---- The user ----------------------------------------------------------------------------------------------------

// Moves the pointer; what lies under it, or has captured it, hears of it.
void MemoryMovePointerTo(int32_t x, int32_t y);
// Buttons are 1 left, 2 middle, 3 right. A press on a managed window brings it to the top and gives it the keyboard
// first.
void MemoryPressButton(uint8_t button = 1);
void MemoryReleaseButton(uint8_t button = 1);
void MemoryClick(int32_t x, int32_t y, uint8_t button = 1); // moves there, presses, releases
void MemoryTurnWheel(int8_t notches);                       // away from the user; below 0 towards him
// Keys by virtual key; pressing one that is down is a repeat.
void MemoryPressKey(uint8_t key);
void MemoryReleaseKey(uint8_t key);
void MemoryTypeKey(uint8_t key); // presses and releases
// Types text, UTF-8, on keys that have characters but no names.
void MemoryTypeText(std::string_view text);
void MemoryGrabKeys(bool grabs); // another program takes all keys for a while, and lets go
// By the desktop's own means: its task bar, its borders, its menus. Windows are ours or others'.
void MemoryGiveKeyboard(DisplayWindow* window); // null: to nobody
void MemoryMinimiseWindow(DisplayWindow* window, bool minimised);
void MemoryAskToClose(DisplayWindow* window);
void MemoryTellOfSession(DisplayEventKind kind, bool ends); // kSessionAsks or kSessionEnds, to our main window
void MemoryDestroyWindow(DisplayWindow* window);            // one of ours, by another program
void MemoryMoveWindow(DisplayWindow* window, const PixelRect& place);
void MemoryTakeCapture();

// ---- What stands there -------------------------------------------------------------------------------------------

// The topmost shown window with the title; null for none.
DisplayWindow* MemoryWindowTitled(const std::string& title);
DisplayWindow* MemoryWindowAt(int32_t x, int32_t y); // covers among them

// ---- Between the files of the window half ------------------------------------------------------------------------

bool MemoryIsManaged(const DisplayWindow& window); // by the desktop, which gives it the keyboard on a press
void MemoryQueueEvent(DisplayEventKind kind, DisplayWindow* window, bool flag);
void MemoryQueueExposed(DisplayWindow* window, const PixelRect& part); // on the screen
void MemoryExpose(const Region& area);                                 // everybody paints what lies there
void MemorySetKeyboard(DisplayWindow* window);
void MemoryRaise(DisplayWindow* window, bool top);
void MemoryPlace(DisplayWindow* window, const PixelRect& place);
void MemoryMinimise(DisplayWindow* window, bool minimised);

} // namespace framereel
