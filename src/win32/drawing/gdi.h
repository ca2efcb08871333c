// The records behind the drawing handles. Internal to the layer.
//
// contexts.cpp makes and selects, objects.cpp makes bitmaps, pens and brushes, regions.cpp regions and the clip,
// drawing_target.cpp puts pixels at hand, shapes.cpp draws lines and fills with fills.cpp, text.cpp letters with
// fonts.cpp and glyphs.cpp; blit.cpp copies between targets, dib.cpp reads rows out, pointer_picture.cpp draws the
// mouse pointer.
#pragma once

#include "win32/pixels/display.h"
#include "win32/pixels/region.h"
#include "win32/win32_types.h"

namespace framereel {
struct FontRecord;
}

// The head of every drawing object, first in its record, so that a handle of any kind tells what it is.
enum class GdiKind : uint8_t { kBitmap, kPen, kBrush, kFont, kRegion };

struct Win32GdiObject {
  GdiKind kind;
  bool stock;       // the layer's own: never deleted
  int32_t contexts; // how many contexts hold it now
};

struct Win32Bitmap {
  Win32GdiObject object;
  framereel::Surface surface;
  bool ofScreen;              // in the screen's format: the display made the surface, and frees it
  Win32DeviceContext* holder; // the context that it is selected into, or null
  uint8_t sixteen[16];        // at 4 bits: the fixed colour that each pixel had when the bitmap was made
};

struct Win32Pen {
  Win32GdiObject object;
  bool draws; // false: the null pen
  COLORREF colour;
};

struct Win32Brush {
  Win32GdiObject object;
  bool patterned;
  COLORREF colour;    // of a solid one
  uint8_t pattern[8]; // of the other: rows from the top, the leftmost pixel in the top bit
};

struct Win32Font {
  Win32GdiObject object;
  framereel::FontRecord* record; // owned; fonts.h
};

struct Win32Region {
  Win32GdiObject object;
  framereel::Region area;
};

struct Win32DeviceContext {
  // The target. Exactly one of three: the screen, a bitmap, or a part of a window's surface.
  bool screen;                       // the screen itself; for a window whose class has no background too
  Win32Bitmap* bitmap;               // of a memory context; never null there
  Win32Bitmap* first;                // the one that a memory context was made with
  const framereel::Surface* surface; // of a window's context: its top-level window's; null once that is gone
  Win32Window* window;               // whose context it is; null on the screen's own and in memory
  int32_t originX, originY;          // where the context's 0, 0 lies on the target
  bool bounded;                      // drawing stays within `visible`; else the whole target is free
  framereel::Region visible;         // in the target's coordinates
  framereel::PixelRect* damage;      // grows by what is drawn, in the target's coordinates; null: nobody asks

  // The state.
  Win32Pen* pen;
  Win32Brush* brush;
  Win32Font* font;
  COLORREF textColour, backColour;
  int rop, characterExtra;
  UINT textAlign;
  bool clipped;
  framereel::Region clip; // in the context's coordinates
};
