// The window half of what a display does for the platform calls: holding our top-level surfaces as windows of the
// system, finding those of other programs, and telling what the user and the system do. The screen half stands in
// display.h, and what is said there of failure and of the two sides holds here too: window.cpp, desktop_windows.cpp,
// events.cpp and keys.cpp on each side. What a window manager takes beyond that has files of its own in x11/.
//
// All places are screen pixels. Callers draw captions, borders and everything inside on a surface of the window's size
// and present it; the display adds nothing to it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "win32/pixels/display.h"

namespace framereel {

struct DisplayWindow; // the display's own record

// ---- Windows -----------------------------------------------------------------------------------------------------

enum class WindowRole : uint8_t {
  kMain,    // the program's frame: managed by the desktop, listed in its task bar
  kDialog,  // managed, kept above its owner, not listed
  kPalette, // the same, kept above other programs' windows too
  kPopup,   // not managed: stands where it is put, above all managed windows
  kCover,   // not managed, on top of everything, shows what lies under it and takes all mouse and key events in its
            // place; nothing is presented on it
};

struct DisplayWindowSpec {
  WindowRole role;
  PixelRect place;      // not empty
  DisplayWindow* owner; // of all but a main window; may be null
  const char* title;    // UTF-8
};

// Makes a window, hidden; null when the display has none to give. DisplayFreeWindow takes it away at once.
DisplayWindow* DisplayNewWindow(const DisplayWindowSpec& spec);
void DisplayFreeWindow(DisplayWindow* window);

// Shows it without giving it the keyboard, or takes it off the screen. A shown managed window stands where it was
// placed, not where a window manager would like it.
void DisplayShowWindow(DisplayWindow* window, bool shown);
// Moves and sizes it; the desktop's answer comes as kPlaced if it differs. No place that it had before is told any
// more.
void DisplayPlaceWindow(DisplayWindow* window, const PixelRect& place);
// On top of, or below, all other windows of its kind.
void DisplayStackWindow(DisplayWindow* window, bool top);
void DisplayTitleWindow(DisplayWindow* window, const char* title);
// Whether the user can work with the dialog's owner meanwhile (false), which the desktop is told.
void DisplayModalWindow(DisplayWindow* window, bool modal);
// The same picture in several sizes, for the desktop to choose from.
void DisplayIconWindow(DisplayWindow* window, std::span<const PointerPicture> icon);
// Asks the desktop to put it into the task bar, or to bring it back; kMinimised tells when that is done, and not every
// desktop does it. False when there is nobody to ask: nothing would bring it back.
bool DisplayMinimiseWindow(DisplayWindow* window, bool minimised);
// Asks for the keyboard; kActive tells when it has come. A cover holds it, whatever the desktop does, until another
// window of ours asks or it goes; the window that had it before then has it again.
void DisplayActivateWindow(DisplayWindow* window);
// Lets the desktop move the window with the pointer, which stands there with its left button down; the release comes as
// no event. False when the desktop does not do that: the caller then moves the window itself while the pointer drags.
bool DisplayDragWindow(DisplayWindow* window, int32_t pointerX, int32_t pointerY);

// Shows a part of the surface, which has the window's size and the screen's layout, at the same place of the window.
void DisplayPresent(DisplayWindow* window, const Surface& surface, const PixelRect& part);

// Asks every program to paint anew what its windows have in the rectangle of the screen, ours included (kExposed).
// Until a program has done so, its background may be seen there.
void DisplayRefresh(const PixelRect& where);

// The part of the screen that docks and task bars leave free; the whole screen when there are none.
PixelRect DisplayUsableArea();
// What of the screen each monitor shows, the primary one first. There is always one, which shows the whole screen where
// the display knows of none; several may show the same.
std::vector<PixelRect> DisplayMonitors();

// ---- Windows of all programs -------------------------------------------------------------------------------------

// Names a window of any program, ours included; 0 the desktop itself. It has 29 bits at most. A window that has gone,
// or that this part of the display has not answered, is not there.
using DesktopWindow = uint32_t;

// The topmost window that is seen at a place of the screen: of those on the desktop, or of those in another program's
// window; 0 for none. A window without pixels of its own (a cover) is not seen. What a window manager puts around a
// window belongs to it, and the margins in which a program draws no more than its window's shadow do not.
DesktopWindow DisplayWindowAt(DesktopWindow in, int32_t x, int32_t y);
// Those on the desktop that are seen, from the top down; of one that a window manager has put something around, its own
// name.
std::vector<DesktopWindow> DisplayWindows();
// Where it stands on the screen, what lies beyond the window around it included; false when it is not there or cannot
// be seen. The name may come from another program.
bool DisplayWindowPlace(DesktopWindow window, PixelRect* place);
// Whether it is there, seen or not.
bool DisplayHasWindow(DesktopWindow window);
// What its program calls it, in bytes that may be anything.
std::string DisplayWindowTitle(DesktopWindow window);
// Our window of that name; null when it is another program's.
DisplayWindow* DisplayOwnWindow(DesktopWindow window);

// ---- Input -------------------------------------------------------------------------------------------------------

// All mouse events go to the window, wherever the pointer is, until null is given or the display takes it away
// (kCaptureLost).
void DisplayCapturePointer(DisplayWindow* window);

enum class PointerShape : uint8_t { kArrow, kIBeam, kWait, kCross, kOwn };
// The pointer over a window of ours; `picture` is for kOwn and may go afterwards.
void DisplayPointerShape(DisplayWindow* window, PointerShape shape, const PointerPicture* picture);

// Whether the key is down at this moment, whoever has the focus. Virtual keys as win32_input.h names them; the mouse
// buttons are 1, 2 and 4.
bool DisplayKeyIsDown(uint8_t virtualKey);
bool DisplayCapsLockIsOn();

// The character that a key gives by the layout in force when it is pressed by itself or with Shift: a code point of
// Unicode, or 0 for none, as for an accent. `scan` is the event's.
char32_t DisplayKeyCharacter(uint8_t scan, bool shift, bool capsLock);

void DisplayBeep();

// ---- Texts that programs share -----------------------------------------------------------------------------------

enum class SharedText : uint8_t {
  kClipboard, // what the user has cut or copied
  kSelected,  // what he has selected last, in whatever program; the middle button pastes it
};

// Gives the text, of lines that end with LF, to whatever program asks from now on, until another program has one to
// give or the display is closed. Other programs get U+FFFD for what is no UTF-8.
void DisplayShareText(SharedText which, std::string_view text);
// The text that is shared now, in UTF-8; empty when there is none. The program that has it is waited for, but not for
// long once it falls silent (a second), and what happens meanwhile is not lost: it waits for DisplayNextEvent.
std::string DisplaySharedText(SharedText which);
// Whether there is text. Another program is asked once for each text that it has.
bool DisplayHasSharedText(SharedText which);

// ---- Events ------------------------------------------------------------------------------------------------------

enum class DisplayEventKind : uint8_t {
  kMouseMove,     // x, y
  kMouseDown,     // x, y, button
  kMouseUp,       // x, y, button
  kMouseWheel,    // x, y, notches
  kKeyDown,       // key, scan, text; repeats come as further downs
  kKeyUp,         // key, scan
  kExposed,       // rect, in the window: present it again
  kPlaced,        // rect: where the desktop or the user put the window
  kMinimised,     // flag: minimised, or restored
  kActive,        // flag: the window has the keyboard, or has lost it
  kKeysUnseen,    // keys may have gone up or down without a word while another program held the keyboard
  kCloseRequest,  // the user asked the desktop to close the window
  kSessionAsks,   // the desktop wants to end the session, for the main window: DisplayAnswerSession
  kSessionEnds,   // flag: it does now, asked or not; or goes on after all
  kDestroyed,     // another program has destroyed the window; it still has to be freed
  kCaptureLost,   // the display took the pointer away
  kScreenChanged, // resolution, depth, monitors or usable area are not what they were; window is null
};

struct DisplayEvent {
  DisplayEventKind kind;
  DisplayWindow* window;
  int32_t x, y;   // of the pointer, on the screen
  uint8_t button; // 1 left, 2 middle, 3 right
  int8_t notches; // that the wheel has been turned, away from the user
  uint8_t key;    // virtual key; 0 for a key without one
  uint8_t scan;   // the key's own number, for DisplayKeyCharacter
  // What the press types, in UTF-8: by the layout with all its levels, and joined with accents and other keys that came
  // before. Empty while such a sequence goes on, and for keys that type nothing. Ctrl and Alt don't count.
  std::string text;
  bool flag;
  PixelRect rect;
  uint32_t tick; // of DisplayTick, when it happened
};

// The answer to kSessionAsks: whether the session may end. It may have been taken back meanwhile; then nothing happens.
void DisplayAnswerSession(bool mayEnd);

// Takes the oldest event without waiting; false when there is none. Costs the server nothing when nothing has arrived.
bool DisplayNextEvent(DisplayEvent* event);

} // namespace framereel
