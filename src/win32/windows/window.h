// The records behind windows, and what the window files share. Internal to the layer.
//
// Read in this order: window_tree.cpp (records, who is whose parent), classes.cpp, create.cpp, placement.cpp (places,
// showing, minimising), visible.cpp (what can be seen of a window), surfaces.cpp (pixels, presenting), painting.cpp
// (update regions, contexts), frame.cpp and frame_mouse.cpp (caption and border), activation.cpp, queue.cpp (messages),
// input.cpp (from keys and buttons to messages), desktop_events.cpp (what the display tells), default_procedure.cpp,
// keyboard.cpp, cursors.cpp, menus.cpp and menu_popup.cpp, shell.cpp.
//
// Rectangles and regions are screen pixels unless a name says otherwise. Any send may destroy any window: whoever goes
// on with one after a send asks IsLive first. Records of destroyed windows stay in memory until the next message is
// asked for outside of all window procedures.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "win32/drawing/gdi.h"
#include "win32/menus/menu.h"
#include "win32/pixels/display_windows.h"
#include "win32/pixels/region.h"
#include "win32/win32.h"

namespace framereel {

struct WindowClass {
  std::string name;
  UINT style;
  WNDPROC procedure;
  HICON icon;
  HCURSOR cursor;
  HBRUSH background;
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

  std::unique_ptr<Win32Menu> systemMenu;
  std::unique_ptr<framereel::TopLevel> top; // of a top-level window
};

namespace framereel {

// A context given out by GetDC or BeginPaint, or kept for the next one who asks.
struct WindowContext {
  HDC context;
  HWND window;     // null while nobody has it, unless it is the window's own
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

// An accent that waits for the letter to stand on.
struct WaitingAccent {
  uint8_t character; // 0: none
  uint32_t press;    // WindowSystem::presses when it was made or used up
};

struct WindowSystem {
  std::vector<std::unique_ptr<WindowClass>> classes;
  std::vector<std::unique_ptr<Win32Window>> windows;
  std::vector<std::unique_ptr<Win32Window>> destroyed;
  std::vector<HWND> topLevels; // from the top down
  std::vector<ShownSurface*> shown;
  std::vector<std::unique_ptr<WindowContext>> contexts;
  int32_t procedures; // how many run at this moment, one inside the other

  bool hasKeyboard;          // the program is the active one; what the windows have been told
  DisplayWindow* keyboardAt; // which window of ours has the keyboard by what the display says; null for none
  DisplayWindow* askedFor;   // for which the display has been asked, and since when; null once it has answered
  uint32_t askedAt;
  HWND active, focus, capture;
  HWND pressedWindow; // whose box in the frame is held down, and which
  int pressedBox;

  std::vector<QueueEntry> queue;
  bool quits;
  int exitCode;
  uint32_t damagedSince; // tick of the first damage that has not been presented
  bool damaged;

  BYTE keys[256];   // as GetKeyboardState tells them
  uint32_t presses; // counts key downs, so that one can be told from the next
  bool altAlone;    // Alt is down and nothing else has been pressed since
  WaitingAccent accent;
  HCURSOR cursor; // as last set
  HWND pointed;   // the window that the pointer was last seen over, and where in it
  int pointedHit;

  ScreenFacts screen; // as last seen
  PixelRect usableArea;
};
WindowSystem& TheWindows();

// Forgets all windows, classes, menus and messages without telling anyone: for tests, between one program and the next.
void ForgetAllWindows();

// ---- Rectangles --------------------------------------------------------------------------------------------------

inline int32_t WidthOf(const PixelRect& r) {
  return r.right - r.left;
}
inline int32_t HeightOf(const PixelRect& r) {
  return r.bottom - r.top;
}
inline PixelRect Moved(const PixelRect& r, int32_t dx, int32_t dy) {
  return {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
}
inline bool Holds(const PixelRect& r, int32_t x, int32_t y) {
  return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}
inline RECT RectOf(const PixelRect& r) {
  return {r.left, r.top, r.right, r.bottom};
}
inline PixelRect PixelsOf(const RECT& r) {
  return {r.left, r.top, r.right, r.bottom};
}

// ---- The tree (window_tree.cpp) ----------------------------------------------------------------------------------

bool IsLive(HWND window);
bool Has(const Win32Window& window, DWORD style); // all bits of it
HWND TopLevelOf(HWND window);
bool IsWithin(HWND window, HWND ancestor);  // or the same
std::vector<HWND>& SiblingsOf(HWND window); // itself among them
bool IsShown(const Win32Window& window);    // visible, like all its parents, and none of them minimised out of sight
bool IsEnabled(HWND window);                // like all its parents
HWND TopLevelOf(const DisplayWindow* display);
// The deepest visible, enabled window under the point, `window` itself at least; the caller knows that it is there.
HWND DeepestAt(HWND window, int32_t x, int32_t y);
// Moves a window to the top or bottom of its siblings; topmost windows stay above others and owned ones above their
// owners. False when nothing changed.
bool Restack(HWND window, bool top);

PixelRect PlaceOnScreen(const Win32Window& window);
PixelRect ClientOnScreen(const Win32Window& window);

WindowClass* ClassNamed(const char* name);

// ---- Sending (queue.cpp) -----------------------------------------------------------------------------------------

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void SendToTopLevels(UINT message, WPARAM wParam, LPARAM lParam);
void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool first);
void ForgetInput(HWND window); // it is gone: nothing in the queue is for it any more
void EnqueueInput(const DisplayEvent& event);
// For loops inside of the layer, while a button is held or a menu is open: the next input, with paints done meanwhile;
// false when there is none now, and then all that was drawn has been presented.
bool NextInput(DisplayEvent* event);
// Takes what the display tells (desktop_events.cpp).
void PumpDisplay();
void NoteScreen(); // what the screen is like before the first window stands on it
// The message that input makes; false for input that means nothing to anybody (input.cpp).
bool MessageOfInput(const DisplayEvent& event, MSG* message);
// What taking it does beyond the message: key state, activation, the pointer's shape.
void TakeInput(const DisplayEvent& event, const MSG& message);

// ---- Places (placement.cpp) --------------------------------------------------------------------------------------

// Sends WM_NCCALCSIZE and answers the client area for a place.
PixelRect ClientFor(HWND window, const PixelRect& place);
PixelRect DisplayPlace(const Win32Window& window); // as the display is told
// The place with its size limited as WM_GETMINMAXINFO answers.
PixelRect LimitedPlace(HWND window, const PixelRect& place);
// Moves and sizes it with all that is sent and painted. `byDesktop`: the display has done so already.
void Place(HWND window, const PixelRect& place, bool byDesktop);
void SetVisible(HWND window, bool visible);
// Of a top-level window only asks the desktop for it, where there is one that does it, unless it has done so already.
void Minimise(HWND window, bool byDesktop);
void Restore(HWND window, bool byDesktop);

// ---- What can be seen (visible.cpp) ------------------------------------------------------------------------------

// The pixels of the whole window, its children's among them, that parents and windows above leave.
Region VisibleWindow(const Win32Window& window);
// The pixels of its client area that it may draw on; without its children when its style says so.
Region VisibleClient(const Win32Window& window);
Region VisibleFrame(const Win32Window& window);
// Asks the window and its children to paint anew what lies in the region.
void Expose(HWND window, const Region& region);

// ---- Pixels (surfaces.cpp) ---------------------------------------------------------------------------------------

// Gives it pixels of that size, the old ones kept from the top left on. False without memory, and then it has none.
bool ResizeSurface(ShownSurface* shown, int32_t width, int32_t height);
bool FitSurface(HWND topLevel);      // as large as the window; a cover has none, which is as it should be
void FreeShown(ShownSurface* shown); // its display window too
void NoteDamage(ShownSurface* shown, const PixelRect& part); // in the surface's coordinates
// Moves pixels within a window's surface: those of `to` come from dx, dy further left and up.
void CopyPixels(HWND window, const Region& to, int32_t dx, int32_t dy);
void PresentAll();    // present.h tells when
void PresentIfLate(); // when what was drawn has waited for long

// ---- Painting (painting.cpp, frame.cpp) --------------------------------------------------------------------------

// The context of a window's client area or frame; EndContext gives it back.
WindowContext* BeginContext(HWND window, bool ofFrame);
void EndContext(WindowContext* context);
void RefreshContexts(); // after anything that changes what can be seen
void GatherDamage();    // from contexts that are in use
void ForgetContexts(HWND window);
void FreeContexts(); // nobody uses one any more
// In client coordinates, already cut to what can be seen; the window alone, not its children.
void InvalidateOwn(HWND window, const Region& region, bool erase);
// The next window, parents first, that has an update region; paints frames on the way. Null for none.
HWND WindowToPaint(HWND filter);
void FillPixels(HDC context, const PixelRect& r, COLORREF colour); // in the context's coordinates
bool EraseBackground(HWND window, HDC context);                    // DefWindowProc's part of it

// The colour or, where the screen has too few to tell it from the ground, black or white.
COLORREF Legible(HDC context, COLORREF colour, COLORREF ground);
void PaintFrame(HWND window);
void InvalidateFrame(HWND window);
// The frame's thickness by style: the client area of a window of that place.
PixelRect ClientInside(const Win32Window& window, const PixelRect& place);
int HitTest(const Win32Window& window, int32_t x, int32_t y);
// The part of a frame that HT... names, on the screen; empty when the window has none.
PixelRect FramePart(const Win32Window& window, int hit);
void PressFrame(HWND window, int hit, int32_t x, int32_t y); // the mouse goes down on it
void DragWindow(HWND window, bool byKeyboard, int32_t x, int32_t y);

// ---- Activation (activation.cpp) ---------------------------------------------------------------------------------

void Activate(HWND topLevel, bool byClick);
void ActivateNextOf(HWND topLevel); // it goes away: another one takes its place
void SettleKeyboard();              // acts on what the display has said of the keyboard
bool AwaitsKeyboard();              // the display has been asked for it, and may still give it
void ReleaseFrom(HWND window);      // it is gone or disabled: it loses focus and capture

// ---- Keys, pointer (keyboard.cpp, cursors.cpp) -------------------------------------------------------------------

void NoteKey(uint8_t key, bool down);
void SyncKeys(); // Shift, Ctrl, Alt and buttons may have changed while another program had the keyboard
bool KeyIsDown(int key);
WPARAM MouseKeys();
// The characters of a key press without letting it use up a waiting accent; as ToAscii.
int CharactersOf(UINT scan, WORD* characters);

void ShowPointerFor(HWND window, int hit); // the pointer is over this window, at HT... of it
void ShowFirstPointer(HWND topLevel);      // before the pointer has been seen over it
void RefreshPointer();                     // a class has another cursor
const PointerPicture& PictureOf(HICON icon);

} // namespace framereel
