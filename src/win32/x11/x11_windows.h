// The window half of the X11 display: its record of a window of ours, what it keeps of the desktop and of the keyboard,
// and the steps that window.cpp, placement.cpp, focus.cpp, window_manager.cpp, events.cpp and keys.cpp share.
//
// What a window manager does it does later and its own way, so a window's record holds both: what was asked for, and
// what has come of it as far as events have told.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <X11/Xlib.h>

#include "win32/pixels/display_windows.h"

namespace framereel {

struct X11Connection;
struct X11Sequences;

// Places in the protocol have 16 bits with a sign; no size above the last place is of any use.
inline constexpr int32_t kX11PlaceMin = -32768, kX11PlaceMax = 32767;

struct X11Place {
  int32_t x, y, width, height;
};

struct DisplayWindow {
  Window id;
  WindowRole role;
  DisplayWindow* owner; // null once it has gone
  PixelRect place;      // as asked for last, or as the desktop put it since
  bool placeUnsure;     // it may stand elsewhere by now
  bool shown;
  bool minimised;       // as told last
  bool startsMinimised; // and so it is to be shown
  bool modal;           // a dialog whose owner waits for it
  bool stateUnsure;     // events told that minimised or not may have changed
  bool viewable;        // stands on the screen, if only behind others
  bool becameViewable;  // an event told so, and nobody has looked at it
  bool wantsKeyboard;   // asked for it before it stood on the screen
  Cursor pointer;       // None: that of the desktop
  bool ownsPointer;     // it is of this window alone
};

// How far a window reaches beyond what its user sees of it.
struct X11Margins {
  int32_t left, right, top, bottom;
};

enum X11Atom : uint8_t {
  kWmProtocols,
  kWmDeleteWindow,
  kWmState,
  kUtf8String,
  kClipboard,
  kTargets,
  kTimestamp,
  kMultiple,
  kAtomPair,
  kIncr,
  kFramereelText,
  kComptonShadow,
  kGtkFrameExtents,
  kMotifHints,
  kNetSupported,
  kNetActiveWindow,
  kNetClientList,
  kNetClientListStacking,
  kNetCurrentDesktop,
  kNetWorkArea,
  kNetWmIcon,
  kNetWmIconName,
  kNetWmMoveResize,
  kNetWmName,
  kNetWmPid,
  kNetWmPing,
  kNetWmState,
  kNetWmStateAbove,
  kNetWmStateHidden,
  kNetWmStateModal,
  kNetWmStateSkipPager,
  kNetWmStateSkipTaskbar,
  kNetWmStrutPartial,
  kNetWmUserTime,
  kNetWmWindowType,
  kNetWmWindowTypeDialog,
  kNetWmWindowTypeDnd,
  kNetWmWindowTypeNormal,
  kNetWmWindowTypePopupMenu,
  kNetWmWindowTypeUtility,
  kAtomCount,
};

// The window manager has been asked to move a window, and nothing has told yet that it does.
struct X11Drag {
  DisplayWindow* window; // null: none, or the window manager has the pointer
  int32_t right, down;   // from the pointer to the window's corner
  bool unsure;           // a button has gone up somewhere
};

// A window that nobody sees and that moves with each place that is asked for. A window manager works off requests in
// their order and grants those of windows that it does not manage, so that where this one stands tells how far it has
// come: nothing that was told of our windows before is an answer to the last request (placement.cpp).
struct X11Fence {
  Window id;
  int32_t asked, passed; // its x; they are alike when everything has been worked off
  uint32_t askedAt;      // tick of the last move
};

// Who gets the keys. The server's focus is for managed windows alone: one that a window manager does not know would
// take it along when it goes (focus.cpp).
struct X11Focus {
  DisplayWindow* focused; // has the server's focus
  DisplayWindow* standIn; // is not managed and has asked for the keyboard: it has it while its owner has the focus
  bool grabbed;           // or, for a cover, whoever has it
  bool grabWaits;         // for the end of another program's grab
  DisplayWindow* told;    // has the keyboard by what the caller has been told
};

// A window of any program, as far as somebody has asked for it. Each half holds until an event tells that it may be
// different by now (desktop_windows.cpp).
struct X11Seen {
  Window parent; // None until the window has been found in one
  bool heard;    // the server tells what becomes of its children
  // Itself.
  bool looked;
  bool shown;      // mapped, and of pixels
  PixelRect place; // with its border, in its parent
  int32_t border;
  // What is in it.
  bool listed;
  std::vector<Window> children; // from the top down
  bool clientFound;
  Window client; // of a top-level window: what a window manager has put its frame around, or the window itself
  bool marginsRead;
  X11Margins margins; // of a client
};

struct X11Desktop {
  Atom atoms[kAtomCount];
  std::vector<DisplayWindow*> windows; // ours; of those that are not managed, the topmost is last
  std::deque<DisplayEvent> events;     // taken from the connection, not yet by the caller
  X11Fence fence;
  X11Focus focus;
  X11Drag drag;
  DisplayWindow* captured; // gets all mouse events
  bool captureWaits;       // for its window to stand on the screen
  Cursor shapes[4];        // the system's own, None until used
  Time userTime;           // of the last press, as the server counts
  bool knowsClock;
  uint32_t clockAhead;                // our tick minus the server's time, as close as events have told
  std::vector<unsigned long> talents; // atoms of what the window manager can do
  bool talentsUnsure;
  PixelRect usable;
  bool usableUnsure;
  std::vector<PixelRect> monitors;
  bool monitorsUnsure;
  bool hearsStruts;                         // and of other programs' windows all properties
  std::unordered_map<Window, X11Seen> seen; // the root among them
  uint32_t soughtAt;                        // tick at which a window was last looked for
};

struct X11Keys {
  bool watched;               // changes of layout and state arrive as events
  bool unsure;                // the tables below are behind the layout
  int32_t event;              // the number of the keyboard extension's events, or -1
  uint8_t keys[256];          // the virtual key of each key, 0 for none
  uint8_t keysNumLocked[256]; // the same for keys that Num Lock makes digits; 0 for all others
  unsigned int numLock;       // the modifier that is Num Lock, or 0
  unsigned int locked;        // modifiers locked now
  int32_t group;              // of the layouts, the one in force
  bool hasPressed;            // the two below were read
  uint32_t pressedTick;       // at this tick
  char pressed[32];           // keys that are down, a bit for each
  unsigned int buttons;       // as XQueryPointer tells
  X11Sequences* sequences;    // null until a key has typed something
};

// ---- window.cpp ----

// What of a place the protocol can say.
X11Place X11PlaceOf(const PixelRect& place);
DisplayWindow* X11WindowOf(const X11Connection* x, Window id);
// Main windows, dialogs and palettes.
bool X11IsManaged(const DisplayWindow& window);
// Our popups and covers onto the top again, in their order, after the window manager has stacked its own.
void X11RaiseUnmanaged(X11Connection* x);

// ---- placement.cpp ----

void X11MakeFence(X11Connection* x);
// What the server tells of the place of a window: of one of ours, or of the fence.
void X11TakePlace(X11Connection* x, const XConfigureEvent& event);
// Asks where windows stand and whether they are minimised, as far as events have told that it is not as before; false
// when there was nothing to ask.
bool X11SettlePlaces(X11Connection* x);

// ---- focus.cpp ----

// What the server tells of its focus.
void X11TakeFocus(X11Connection* x, DisplayWindow* window, const XFocusChangeEvent& event);
// Takes for a cover what another program has let go of; false when there was nothing to take.
bool X11SettleFocus(X11Connection* x);
// The window stands on the screen, and can be given the keyboard that it has asked for.
void X11GiveKeyboard(X11Connection* x, DisplayWindow* window);
// It is no longer shown.
void X11ReleaseKeyboard(X11Connection* x, const DisplayWindow* window);

// ---- properties.cpp ----

// Items of 32 bits, which Xlib takes and gives in an unsigned long each. Reading answers none when the window or its
// property is not there, or is of another type.
void X11WriteItems(X11Connection* x, Window window, Atom property, Atom type, const std::vector<unsigned long>& items);
std::vector<unsigned long> X11ReadItems(X11Connection* x, Window window, Atom property, Atom type);
void X11WriteBytes(X11Connection* x, Window window, Atom property, Atom type, std::string_view bytes);
// Appends the bytes and answers their type; None when the property is not there or has more than `most`. One that has
// no bytes but items appends nothing.
Atom X11ReadBytes(X11Connection* x, Window window, Atom property, size_t most, std::string* bytes);

// ---- window_manager.cpp ----

void X11InternAtoms(X11Connection* x);
Atom X11AtomOf(const X11Connection* x, X11Atom atom);
// Asks the server: a window manager may come and go.
bool X11HasManager(X11Connection* x);
// True when there is one that says it can do this (_NET_SUPPORTED).
bool X11ManagerCan(X11Connection* x, X11Atom what);
// Sends one of the messages that window managers listen for on the root.
void X11AskManager(X11Connection* x, const DisplayWindow& window, X11Atom what, const long (&data)[5]);
// Asks it to move the window with the pointer, and takes that back.
void X11AskToDrag(X11Connection* x, const DisplayWindow& window, int32_t pointerX, int32_t pointerY);
void X11AskNotToDrag(X11Connection* x, const DisplayWindow& window);

// What window managers and task bars read: once, and again when it changes.
void X11Describe(X11Connection* x, const DisplayWindow& window);
void X11WriteTitle(X11Connection* x, const DisplayWindow& window, const char* title);
void X11WriteIcon(X11Connection* x, const DisplayWindow& window, std::span<const PointerPicture> icon);
void X11WritePlace(X11Connection* x, const DisplayWindow& window);
// How the window wants to be shown: minimised or not, without the keyboard.
void X11WriteStart(X11Connection* x, const DisplayWindow& window);
// A window that is shown is modal from now on, or no longer.
void X11AskModal(X11Connection* x, const DisplayWindow& window);
void X11AllowKeyboard(X11Connection* x, const DisplayWindow& window);

// Whether the window manager has minimised the window; false when it does not tell.
bool X11ReadMinimised(X11Connection* x, const DisplayWindow& window, bool* minimised);
PixelRect X11ReadUsableArea(X11Connection* x);

// ---- events.cpp ----

void X11QueueEvent(X11Connection* x, DisplayEventKind kind, DisplayWindow* window, bool flag);
void X11NoteScreenChanged(X11Connection* x);
// Turns what concerns windows and keys into events of ours.
void X11TakeWindowEvent(X11Connection* x, XEvent* event);
// Drops the window from the queue and from all that it held.
void X11ForgetWindow(X11Connection* x, const DisplayWindow* window);

// ---- typing.cpp ----

// What a key press types, as DisplayEvent::text; to be asked once for each press, in their order.
std::string X11TypedText(X11Connection* x, const XKeyEvent& key);
// The character of a symbol, 0 for none.
char32_t X11CharacterOf(KeySym symbol);
// Whether it waits for the next key.
bool X11IsDeadKey(KeySym symbol);
// A sequence that has begun ends without having typed anything.
void X11EndSequence(X11Connection* x);
void X11ForgetSequences(X11Connection* x);

// ---- desktop_windows.cpp ----

// What is to be heard of the root, and of another program's window.
long X11RootEvents(const X11Connection* x);
long X11ForeignEvents(const X11Connection* x, Window window);
// True when it told of another window than the one it was sent to.
bool X11TakeDesktopEvent(X11Connection* x, const XEvent& event);
// The property of a window has changed.
void X11TakeMargins(X11Connection* x, Window window);

// ---- keys.cpp ----

// Follows the keyboard from now on, and brings the tables up to date.
void X11ReadKeys(X11Connection* x);
// True when the event was of the keyboard's layout or state.
bool X11TakeKeyboardEvent(X11Connection* x, XEvent* event);
uint8_t X11VirtualKey(X11Connection* x, uint8_t code, unsigned int state);

} // namespace framereel
