// Inside of the X11 display: the one connection, its caches, and the steps that its files share; x11_windows.h has what
// belongs to windows and input, x11_selections.h the texts that programs share. Nobody outside of this folder includes
// it but the display's own tests. Start reading at connection.cpp.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>
#include <X11/extensions/Xdamage.h>

#include "win32/pixels/display.h"
#include "win32/x11/x11_marks.h"
#include "win32/x11/x11_selections.h"
#include "win32/x11/x11_windows.h"

struct _SmcConn; // libSM's

namespace framereel {

inline constexpr int32_t kOwnByteOrder = std::endian::native == std::endian::little ? LSBFirst : MSBFirst;

inline constexpr int32_t kPaletteDepthMax = 8;

// How the server packs images of the screen's depth (format ZPixmap of the core protocol).
struct X11Format {
  int32_t depth;        // as the server counts: 15 where the layout says 16, 30 where it says 32
  int32_t bitsPerPixel; // 1, 4, 8, 16, 24 or 32; the protocol has no other
  int32_t rowPad;       // rows are padded to a multiple of so many bits: 8, 16 or 32
  int32_t byteOrder;    // LSBFirst or MSBFirst
  int32_t bitOrder;     // of packed single bits, the same values
  int32_t bitUnit;      // bits that byteOrder swaps together at one bit a pixel: 8, 16 or 32
  bool turned;          // depth 1 whose pixel 1 is the darker one
};

// Memory that the server has attached too. Its bytes stay readable until it is freed, whatever becomes of the server.
struct X11Segment {
  XShmSegmentInfo shared;
  size_t bytes;
};

// An 8 by 8 pattern that the server holds as a bitmap.
struct X11Stipple {
  uint8_t pattern[8];
  Pixmap bitmap;
};

// Enough for the steps in which a moving outline shifts its pattern, so that in the long run none is sent again.
inline constexpr int32_t kStipplesKept = 16;

// What has been heard of mice and keyboards since their state was asked for last.
struct X11Devices {
  bool tell;          // the server tells of them; else whoever wants their state asks for it each time
  int extension;      // the number that their events carry
  bool hearsMotion;   // and just now of moves too
  uint32_t movedTick; // when the pointer was last seen to have moved
  bool pointerStale;  // the pointer may stand elsewhere
  bool pressedStale;  // keys or buttons may have gone up or down
};

// What the desktop's session manager has been told and asked for (session.cpp).
struct X11Session {
  _SmcConn* manager; // null: there is none
  // Of a save at the session's end: it waits for its turn to ask the user, or the user is being asked.
  enum { kNothing, kWaits, kAsks } saving;
};

// What the server tells of the screen's changes (changes.cpp).
struct X11Changes {
  bool told;                  // the server tells all of them
  int event;                  // the number of its notice
  Damage damage;              // what has been drawn on the root since it was taken last; None while nobody asks
  XserverRegion taken;        // the server's, to take it with
  bool unsure;                // more has changed than that, or some of it was not read
  int32_t pointerX, pointerY; // when it was asked last
  PixelRect where;            // that was asked of last
  uint32_t askedTick;         // when
};

struct X11Connection {
  Display* display;
  Window root;
  unsigned long failedRequest; // number of the last request that the server has refused

  X11Format format;
  ScreenFacts facts; // as of the last event taken
  int32_t dotsPerInch;

  bool knowsPalette;
  PaletteColour palette[1 << kPaletteDepthMax]; // of a palette screen, in the order of the surfaces' pixels

  GC drawing, inverting; // of the root, over all windows
  GC stippling;          // of bitmaps; null until the first pattern
  X11Stipple stipples[kStipplesKept];
  int32_t stippleCount, stippleNext; // slots in use, and the one that the next new pattern takes

  bool sharing;                          // the server takes shared memory
  std::vector<X11Segment*> segments;     // all that stand, for detaching
  std::unique_ptr<X11Segment> transfers; // pixels on their way to a surface that the server cannot write into

  bool hasPointerPictures; // XFixes is there
  int32_t pointerEvent;    // the number of its notice
  bool pictureStale;       // the picture below is not the one on the screen
  PointerPicture pointer;  // pixels null when there is none
  std::vector<uint32_t> pointerPixels;
  bool pointerHere;           // on this screen of the server, when it was asked for last
  int32_t pointerX, pointerY; // where, if so

  X11Devices devices;
  X11Desktop desktop;
  X11Keys keyboard;
  X11Selections selections;
  X11Session session;
  X11Marks marks;
  X11Changes changes;
};

// The connection, or null when there is none or it is lost. Every entry of the display asks it first.
X11Connection* X11Live();

// Works off the events that have come, without asking the server: with QueuedAfterReading all of them, and the
// connection may be lost behind it; with QueuedAfterFlush the same, once all that was asked is on its way; with
// QueuedAlready those that came with an earlier answer, which costs nothing.
void X11TakeEvents(X11Connection* x, int queued);

// Xlib has come back empty from a call whose first request has that number. Unless the server has refused it, or the
// connection is lost, memory has ended, and with it the program.
void X11NoAnswer(const X11Connection* x, unsigned long request);

// ---- screen.cpp ----

// Reads what never changes during a connection, and the size.
void X11ReadScreenFacts(X11Connection* x);
void X11ReadResolution(X11Connection* x);
void X11MakeContexts(X11Connection* x);
// The colours may have changed since they were asked for.
void X11ForgetPalette(X11Connection* x);
bool X11HasScreenLayout(const X11Connection* x, const Surface& surface);
// Rows in memory, for Xlib. Nothing is allocated.
XImage X11ImageOf(const X11Format& format, uint8_t* pixels, int32_t width, int32_t height, int64_t rowBytes);
// Reads what the root shows, with all that is on the screen; what it is given fits, and is of the screen's layout.
bool X11ReadScreen(X11Connection* x, const PixelRect& where, const Surface& into, int32_t toX, int32_t toY);
// Inverts as DisplayInvertScreen, on the root.
void X11InvertRoot(X11Connection* x, const PixelRect& where, const uint8_t pattern[8]);
// Sends a part that lies on the surface, of the screen's layout, to the root or a window of ours, its top left pixel at
// toX, toY.
void X11PutPixels(X11Connection* x, Drawable to, const Surface& from, const PixelRect& part, int32_t toX, int32_t toY);

// ---- changes.cpp ----

// Finds out whether the server's word can be taken for it.
void X11WatchChanges(X11Connection* x);
bool X11TakeChangeEvent(const X11Connection* x, const XEvent& event);
// The server has nothing to note down once nobody asks any more.
void X11ForgetOldChanges(X11Connection* x);

// ---- clock.cpp ----

// DisplaySleep, while nothing is brought up to date.
void X11Rest(uint32_t milliseconds);

// ---- pointer.cpp ----

void X11WatchPointer(X11Connection* x);
// Asks where the pointer is and answers its buttons, as XQueryPointer tells them.
unsigned int X11AskPointer(X11Connection* x);
// True when it was a notice of the pointer's picture.
bool X11TakePointerEvent(X11Connection* x, const XEvent& event);

// ---- devices.cpp ----

// Makes the server tell, where it can.
void X11WatchDevices(X11Connection* x);
// To be told with each answer to where the pointer is. True when the server tells of moves from now on, and the pointer
// may have moved just before.
bool X11ListensFrom(X11Connection* x, bool pointerMoved);
// True when it was word of a device.
bool X11TakeDeviceEvent(X11Connection* x, const XEvent& event);

// ---- session.cpp ----

// Makes the program known to the session manager that the environment names (SESSION_MANAGER), if one does; waits for
// its answer.
void X11JoinSession(X11Connection* x);
void X11LeaveSession(X11Connection* x);
// Works off what it has said since.
void X11TakeSessionMessages(X11Connection* x);

// ---- segments.cpp ----

// Finds out whether shared memory is worth trying.
void X11ReadSharing(X11Connection* x);
// Null when the server refuses or the system has no more; a server that refuses is not asked again.
std::unique_ptr<X11Segment> X11NewSegment(X11Connection* x, size_t bytes);
// `x` is null when the connection is gone.
void X11FreeSegment(X11Connection* x, std::unique_ptr<X11Segment> segment);

// ---- pixels.cpp ----

// Bytes from a row of the server's image to the next.
int64_t X11RowBytes(const X11Format& format, int32_t width);
// True when the server's rows are those of the layout, byte for byte.
bool X11IsDirect(const X11Format& format, const PixelLayout& layout);
// Turns a row of the server's image into `width` pixels of the layout.
void X11UnpackRow(const X11Format& format, const uint8_t* row, int32_t width, const PixelLayout& layout, uint8_t* out);

} // namespace framereel
