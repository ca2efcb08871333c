// The records behind the drawing handles, and what the drawing files share. Internal to the layer.
//
// contexts.cpp makes and selects, blit.cpp copies between targets, dib.cpp reads rows out, pointer.cpp draws the mouse
// pointer; pixels.h has the arithmetic on single pixels and rows.
#pragma once

#include "win32/display.h"
#include "win32/win32.h"

struct Win32Bitmap {
  framereel::Surface surface;
  bool ofScreen;              // in the screen's format: the display made the surface, and frees it
  Win32DeviceContext* holder; // the context that it is selected into, or null
};

struct Win32DeviceContext {
  bool screen;         // draws on the screen itself
  Win32Bitmap* bitmap; // of a memory context; never null there
  Win32Bitmap* first;  // the one that a memory context was made with
};

namespace framereel {

inline constexpr PixelRect BoundsOf(const Surface& surface) {
  return {0, 0, surface.width, surface.height};
}

// The pixels that the context draws on: width and height, in its own coordinates.
PixelRect BoundsOf(const Win32DeviceContext& context);
PixelLayout LayoutOf(const Win32DeviceContext& context);

// A surface of the layout in plain memory, all zero; the caller frees it with FreePlainSurface. False without memory.
bool NewPlainSurface(const PixelLayout& layout, int32_t width, int32_t height, Surface* out);
void FreePlainSurface(Surface* surface);

} // namespace framereel
