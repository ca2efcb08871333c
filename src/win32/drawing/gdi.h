// The records behind the drawing handles, and what the drawing files share. Internal to the layer.
//
// contexts.cpp makes and selects, objects.cpp makes pens and brushes, regions.cpp regions and the clip,
// drawing_target.cpp puts pixels at hand, shapes.cpp draws lines and fills with paint.cpp, text.cpp letters with
// fonts.cpp and glyphs.cpp; blit.cpp copies between targets, dib.cpp reads rows out, pointer.cpp draws the mouse
// pointer. pixels.h has the arithmetic on single pixels and rows.
#pragma once

#include "win32/pixels/display.h"
#include "win32/pixels/region.h"
#include "win32/win32.h"

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

namespace framereel {

GdiKind KindOf(HGDIOBJ object); // of any object, not null

// A context with the state of a new one and no target yet; null without memory. The window code fills in the target
// of those that it gives out and may keep them up to date while windows move. ResetContext puts the state back as it
// was and takes the clip away, so that a context can be handed out again without an allocation.
HDC NewContext();
void ResetContext(HDC context);
void FreeContext(HDC context);

// The pixels that the context's target has, in the context's coordinates; empty when a window's surface is gone.
PixelRect BoundsOf(const Win32DeviceContext& context);
PixelLayout LayoutOf(const Win32DeviceContext& context);
// Whether the target's pixels have the screen's colours, which all but plain 1-bit bitmaps do.
bool HasScreenColours(const Win32DeviceContext& context);

// A surface of the layout in plain memory, all zero; the caller frees it with FreePlainSurface. False without memory.
bool NewPlainSurface(const PixelLayout& layout, int32_t width, int32_t height, Surface* out);
void FreePlainSurface(Surface* surface);

// What a new context holds. The font is there for the letters of frames too; null without memory.
HBRUSH WhiteBrush();
HFONT SystemFont();

} // namespace framereel
