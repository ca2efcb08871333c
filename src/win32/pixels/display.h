// What a display does for the platform calls. Two implement it, with the same files on each side: x11/ a real X
// screen, memory/ a whole desktop without a server. Which one a program gets is chosen when it is linked.
//
// This is its screen half: facts, pixels, pointer, clock. Except where said, failure means that the display is lost
// (DisplayIsLost); the calls then do nothing and answer false or null. Memory that ends, here and in the windows' half,
// ends the program (exhaustion.h). One thread.
#pragma once

#include <cstdint>

#include "win32/pixels/surface.h"

namespace framereel {

class Region;

// ---- Connection --------------------------------------------------------------------------------------------------

// Connects, once; further calls answer the same. X11 takes the server named by DISPLAY.
bool DisplayOpen();
void DisplayClose();
// True once a connection that stood has broken, and from then on.
bool DisplayIsLost();

// ---- The screen --------------------------------------------------------------------------------------------------

struct ScreenFacts {
  int32_t width, height; // pixels
  PixelLayout layout;    // of everything that is read from the screen or drawn on it
  uint32_t inverted;     // the bits of a pixel whose change inverts it: black and white take each other's place
};

// As of now: a change of resolution or depth is seen at the next call. All zero before DisplayOpen.
ScreenFacts DisplayScreen();

// Pixels to the inch that text is to be drawn for, as the user's settings said when the display was opened: on X11
// Xft.dpi. 0 where they don't.
int32_t DisplayDotsPerInch();

// The colours of a palette screen: 2^depth entries from `colours` on. At depth 1 entry 0 is the darker one; a display
// whose hardware has it the other way round turns the bits. Does nothing on a true-colour screen. Colours that another
// program changes are seen once an event has been asked for or the screen read.
void DisplayPalette(PaletteColour* colours);

// Makes a surface of the screen's layout, all zero, whose memory the display reads into without a further copy, where
// it can. Width and height are positive. False also for a row of 2 GiB. DisplayFreeSurface releases it.
bool DisplayNewSurface(int32_t width, int32_t height, Surface* out);
void DisplayFreeSurface(Surface* surface);

// Reads the rectangle of the screen, all windows included and without the pointer, into the surface with its top left
// pixel at toX, toY. The rectangle lies on the screen and fits the surface. The layout must still be the screen's, else
// false and nothing is read.
bool DisplayReadScreen(const PixelRect& where, const Surface& into, int32_t toX, int32_t toY);

// Adds the rows of the rectangle, each as wide as it, that may show something else than when this was asked last: all
// of them at first, for another rectangle than the last one, and wherever a display cannot tell. What is drawn from
// this call on counts for the next one, so that who reads the rows behind it misses nothing. The pointer does not
// count, and what reads go without.
void DisplayAddChanges(const PixelRect& where, Region* rows);

// Whether a compositor shows the screen. What is drawn on it with the two calls below then stands over the pictures of
// all windows, and not among their pixels: it stays whatever they paint. A read goes without it, except for one of just
// the place where pixels were put, which finds them; putting there what was read before takes them off.
bool DisplayIsComposed();

// Puts the part of a surface of the screen's layout on the screen, over all windows, with its top left pixel at x, y.
// What lies off the screen is cut.
bool DisplayDrawScreen(const Surface& from, const PixelRect& part, int32_t x, int32_t y);

// Inverts the pixels of the rectangle (ScreenFacts) where the 8 by 8 pattern has a 1: bit 7 - x mod 8 of pattern[y mod
// 8], in screen coordinates. Twice is as before.
bool DisplayInvertScreen(const PixelRect& where, const uint8_t pattern[8]);

// ---- The pointer -------------------------------------------------------------------------------------------------

// A picture of up to 32 bits: alpha in the top byte, then red, green, blue, premultiplied by it. Rows without padding.
struct PointerPicture {
  int32_t width, height; // pixels
  int32_t hotX, hotY;    // the pixel that points
  const uint32_t* pixels;
  uint32_t serial = 0; // of the pointer's: another picture has another one
};

// The picture on the screen now, the display's own until the next call. Null when the pointer has none.
const PointerPicture* DisplayPointer();
bool DisplayPointerPlace(int32_t* x, int32_t* y);
void DisplayMovePointer(int32_t x, int32_t y);

// ---- The clock ---------------------------------------------------------------------------------------------------

uint32_t DisplayTick();                   // milliseconds; wraps to 0 after 2^32
void DisplaySleep(uint32_t milliseconds); // at least so long, whatever happens meanwhile

} // namespace framereel
