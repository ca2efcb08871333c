// The desktop in memory: a whole display without a server, for tests. It keeps real state: a screen of any size and
// depth with its palette, a pointer, and a clock that stands still until somebody sleeps. memory_windows.h has its
// windows, its keyboard and its user.
//
// A test sets it up with MemoryDisplayReset and then reads and writes the fields, or writes a script: functions that
// run when the clock passes their time.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "win32/memory/memory_windows.h"
#include "win32/pixels/display.h"

namespace framereel {

struct MemoryEvent {
  uint32_t tick;
  std::function<void()> run;
};

// The screen as it was when its changes were asked for.
struct MemoryLook {
  PixelRect where; // that they were asked of
  PixelLayout layout;
  int32_t width, height;
  std::vector<PaletteColour> palette;
  std::vector<uint32_t> screen;
};

struct MemoryDisplay {
  PixelLayout layout;
  int32_t width, height;
  std::vector<uint32_t> screen;       // pixel values in the screen's layout, row after row
  std::vector<PaletteColour> palette; // 2^depth entries at palette depths
  int32_t dotsPerInch;                // of DisplayDotsPerInch
  bool present;                       // false: there is no display to open
  bool lost;                          // true: the connection has broken
  bool hasPointer;                    // false: the pointer has no picture
  int32_t pointerX, pointerY;         // its hot spot
  int32_t pointerWidth, pointerHeight, hotX, hotY;
  std::vector<uint32_t> pointerPixels; // premultiplied ARGB
  MemoryLook looked;
  uint32_t tick;                   // the clock, in ms
  std::vector<MemoryEvent> script; // in order of time; MemoryAt keeps it so
  uint32_t screenReads;            // how often the screen was read
  uint32_t lostAtRead;             // the connection breaks at that read, from 1 on; 0: at none
  uint32_t windowsAsked;           // how often our program asked for a window
  uint32_t lostAtWindow;           // and the one at which the connection breaks
  MemoryDesktop desktop;
};

MemoryDisplay& TheMemoryDisplay();

// A black screen of the size and one of the depths 1, 2, 4, 8, 16, 24, 32 (any other makes a screen that cannot be
// recorded), with the palette of MemoryStandardPalette; the pointer without a picture at 0, 0; clock 0, no script, no
// windows. Our program must have given up its own.
void MemoryDisplayReset(int32_t width, int32_t height, int32_t depth);
// Another depth or size on the running desktop: the picture goes, all else stays, and all programs paint anew.
void MemoryDisplaySetMode(int32_t width, int32_t height, int32_t depth);

// At depth 1 black and white, at 2 four greys, at 4 the sixteen standard colours, at 8 those of an even spread: entry i
// has red from bits 7-5, green from bits 4-2, blue from bits 1-0.
std::vector<PaletteColour> MemoryStandardPalette(int32_t depth);

// The pixel value at a place. On true colour MemoryPixelOf makes one of 8-bit channels.
uint32_t& MemoryPixel(int32_t x, int32_t y);
uint32_t MemoryPixelOf(uint8_t red, uint8_t green, uint8_t blue);
PaletteColour MemoryColourOf(uint32_t pixel);
void MemoryFill(const PixelRect& where, uint32_t pixel);

// Runs a function when the clock reaches the tick, before whoever sleeps wakes; at the next sleep, if it is past.
// Events of one tick run in the order in which they were written. All that wait lie within 2^31 ms.
void MemoryAt(uint32_t tick, std::function<void()> run);

// Writes what stands on the screen, without the pointer, as a PPM picture: for a failed test to show. False when the
// file cannot be written.
bool MemoryWritePicture(const std::string& path);

} // namespace framereel
