// What the program draws on the screen itself, where a compositor shows it.
//
// A compositor paints whole pictures of the screen, and what is drawn on the root window is gone with the next one. So
// what is drawn becomes a mark: a window of its own that lets the mouse through, clear where it shows nothing. Which
// one is meant is told by its place alone:
//
// - Inverted pixels are shown as the inverse of what the screen had there when they were inverted. They are shown when
//   the program next lets time pass or reads the screen, all together, so that a line that goes and comes back on the
//   way costs nothing and does not blink.
// - Pixels drawn on a rectangle are a picture. Who reads exactly that rectangle looks at the picture and gets it; and
//   what was read there before, put back, takes it off.
// - Every other read is made without the marks in it: they are cleared, and those that were taken off just before are
//   waited for, since the compositor's picture shows them until it paints the next. That it has is seen by their
//   pixels, which are not the marks' any more. A compositor that lags may come to show them only then: what was cleared
//   before it had been seen is looked for in what has been read, too.
//
// Without a compositor all is drawn on the root window. What is inverted there is noted, so that it can be taken over
// when a compositor comes; it may go as well.
#pragma once

#include <cstdint>
#include <list>
#include <vector>

#include <X11/Xlib.h>

#include "win32/pixels/surface.h"

namespace framereel {

struct X11Connection;

// Rows of the screen's layout, without padding.
struct X11Patch {
  PixelRect where; // on the screen
  std::vector<uint8_t> bytes;
};

struct X11Mark {
  PixelRect where;              // on the screen
  Window window;                // None while nothing is shown, or on the root itself
  std::vector<uint32_t> shown;  // the window's pixels: alpha in its bits, 0 where it is clear
  std::vector<uint8_t> inverts; // 1 for each pixel that is to be inverted; empty for a picture
  X11Patch drawn, below;        // of a picture: itself, and what was read from there before it
};

// What a mark showed that the compositor may still show.
struct X11ClearedMark {
  PixelRect where;
  std::vector<uint32_t> shown;
  bool inverted;
  bool seen;     // it has been on the screen; otherwise it may be yet to come
  uint32_t tick; // when it was cleared
};

// A window that shows nothing, and waits for the next mark of its size.
struct X11SpareWindow {
  Window window;
  int32_t width, height;
};

struct X11Marks {
  Atom compositor;    // the selection that a compositor owns; None where marks cannot be windows
  int32_t event;      // the number of the notice that it has changed hands
  bool ownerUnsure;   // may have come or gone
  bool composited;    // one is there
  bool changed;       // inverted pixels are not yet as they are to be
  uint32_t changedAt; // tick: since then
  Visual* visual;     // of 32 bits, with alpha
  Colormap colours;   // None until the first window
  GC context;         // of the windows, or null
  X11Patch read;      // what was read last, if it is small
  std::list<X11Mark> standing;
  std::list<X11ClearedMark> cleared; // the last one last
  std::vector<X11SpareWindow> spares;
};

// ---- marks.cpp ----

// Brings what is shown up to what has been asked for, and follows the compositor.
void X11SettleMarks(X11Connection* x);
// The same, unless the program may be about to draw on: for where no time passes.
void X11SettleOldMarks(X11Connection* x);
// Reads as DisplayReadScreen, which has looked at what it was given.
bool X11ReadBesideMarks(X11Connection* x, const PixelRect& where, const Surface& into, int32_t toX, int32_t toY);
// Whether reads of the rectangle go without something that stands there, or may yet be seen there.
bool X11ShowsMarks(const X11Connection* x, const PixelRect& where);
// Draw and invert as the display's calls; the rectangle lies on the screen, and `left` and `top` are its corner on the
// surface. False when it is to be done on the root.
bool X11DrawMark(X11Connection* x, const Surface& from, int32_t left, int32_t top, const PixelRect& where);
bool X11InvertMark(X11Connection* x, const PixelRect& where, const uint8_t pattern[8]);
// The rectangle is painted anew: marks in it are gone. True when that is all there is to do.
bool X11DropMarks(X11Connection* x, const PixelRect& where);

// ---- mark_windows.cpp ----

// Finds out whether marks can be windows, and follows who shows the screen.
void X11WatchCompositor(X11Connection* x);
bool X11TakeCompositorEvent(X11Connection* x, const XEvent& event);
// What a window of marks has for a pixel of the screen's layout.
uint32_t X11MarkPixel(const X11Connection* x, uint32_t pixel);
// The same pixel, inverted.
uint32_t X11InverseMarkPixel(const X11Connection* x, uint32_t shown);
// Shows the mark as `shown` says, on top of everything.
void X11ShowMark(X11Connection* x, X11Mark* mark);
// Nothing is seen of it from the compositor's next picture on.
void X11ClearMark(X11Connection* x, const X11Mark& mark);
// The same, and its window is left to others, or gone.
void X11CloseMark(X11Connection* x, X11Mark* mark);
void X11FreeSpareWindows(X11Connection* x, size_t kept);
void X11RaiseMarks(X11Connection* x);
bool X11IsMark(const X11Connection* x, Window window);

} // namespace framereel
