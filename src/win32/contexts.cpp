// Device contexts and bitmaps: making, selecting, deleting; and the facts that a context tells.
#include <cstdlib>
#include <new>

#include "win32/gdi.h"
#include "win32/pixels.h"

namespace framereel {

PixelRect BoundsOf(const Win32DeviceContext& context) {
  if (!context.screen) return BoundsOf(context.bitmap->surface);
  const ScreenFacts facts = DisplayScreen();
  return {0, 0, facts.width, facts.height};
}

PixelLayout LayoutOf(const Win32DeviceContext& context) {
  return context.screen ? DisplayScreen().layout : context.bitmap->surface.layout;
}

bool NewPlainSurface(const PixelLayout& layout, int32_t width, int32_t height, Surface* out) {
  const int64_t stride = (static_cast<int64_t>(width) * layout.bytesPerPixel + 3) & ~int64_t{3};
  if (width <= 0 || height <= 0 || stride > INT32_MAX) return false;
  auto* pixels = static_cast<uint8_t*>(::calloc(size_t(height), size_t(stride)));
  if (!pixels) return false;
  *out = {layout, width, height, int32_t(stride), pixels, nullptr};
  return true;
}

void FreePlainSurface(Surface* surface) {
  ::free(surface->pixels);
  *surface = {};
}

} // namespace framereel

using namespace framereel;

HDC CreateDCA(const char*, const char*, const char*, const void*) {
  if (!DisplayOpen()) return nullptr;
  return new (std::nothrow) Win32DeviceContext{true, nullptr, nullptr};
}

HDC CreateCompatibleDC(HDC) {
  HBITMAP first = CreateBitmap(1, 1, 1, 1, nullptr);
  if (!first) return nullptr;
  auto* context = new (std::nothrow) Win32DeviceContext{false, first, first};
  if (context) {
    first->holder = context;
  } else {
    DeleteObject(first);
  }
  return context;
}

BOOL DeleteDC(HDC context) {
  if (!context) return FALSE;
  if (!context->screen) {
    context->bitmap->holder = nullptr;
    context->first->holder = nullptr;
    DeleteObject(context->first);
  }
  delete context;
  return TRUE;
}

HGDIOBJ SelectObject(HDC context, HGDIOBJ object) {
  auto* bitmap = static_cast<HBITMAP>(object);
  if (!context || context->screen || !bitmap) return nullptr;
  if (bitmap->holder && bitmap->holder != context) return nullptr;
  HBITMAP before = context->bitmap;
  before->holder = nullptr;
  bitmap->holder = context;
  context->bitmap = bitmap;
  return before;
}

BOOL DeleteObject(HGDIOBJ object) {
  auto* bitmap = static_cast<HBITMAP>(object);
  if (!bitmap || bitmap->holder) return FALSE;
  if (bitmap->ofScreen) {
    DisplayFreeSurface(&bitmap->surface);
  } else {
    FreePlainSurface(&bitmap->surface);
  }
  delete bitmap;
  return TRUE;
}

HBITMAP CreateBitmap(int width, int height, UINT, UINT, const void*) {
  Surface surface;
  if (!NewPlainSurface(kLayoutMono, width, height, &surface)) return nullptr;
  auto* bitmap = new (std::nothrow) Win32Bitmap{surface, false, nullptr};
  if (!bitmap) FreePlainSurface(&surface);
  return bitmap;
}

HBITMAP CreateCompatibleBitmap(HDC context, int width, int height) {
  Surface surface;
  if (!context || width <= 0 || height <= 0 || !DisplayNewSurface(width, height, &surface)) return nullptr;
  auto* bitmap = new (std::nothrow) Win32Bitmap{surface, true, nullptr};
  if (!bitmap) DisplayFreeSurface(&surface);
  return bitmap;
}

HBITMAP CreateDIBitmap(HDC context, const BITMAPINFOHEADER* header, DWORD, const void*, const BITMAPINFO*, UINT) {
  return header ? CreateCompatibleBitmap(context, header->biWidth, header->biHeight) : nullptr;
}

int GetDeviceCaps(HDC context, int index) {
  if (!context) return 0;
  const ScreenFacts facts = DisplayScreen();
  const int depth = facts.layout.depth;
  const bool hasPalette = depth == 8;
  switch (index) {
  case HORZRES:
    return facts.width;
  case VERTRES:
    return facts.height;
  case BITSPIXEL:
    return depth;
  case PLANES:
    return 1;
  case NUMCOLORS:
    return depth < 16 ? 1 << depth : -1;
  case RASTERCAPS:
    return hasPalette ? RC_PALETTE : 0;
  case SIZEPALETTE:
  case NUMRESERVED:
    return hasPalette ? 256 : 0;
  default:
    return 0;
  }
}

UINT GetSystemPaletteEntries(HDC context, UINT first, UINT count, PALETTEENTRY* entries) {
  const PixelLayout layout = DisplayScreen().layout;
  if (!context || !IsPalette(layout) || layout.depth < 1 || layout.depth > 8) return 0;
  const UINT has = 1U << layout.depth;
  const ColourMap map = MapOf(layout, true);
  for (UINT i = first; i < has && i - first < count; ++i) {
    entries[i - first] = {map.palette[i].red, map.palette[i].green, map.palette[i].blue, 0};
  }
  return has;
}

COLORREF GetNearestColor(HDC context, COLORREF colour) {
  if (!context) return 0;
  const ColourMap map = MapOf(LayoutOf(*context), context->screen || context->bitmap->ofScreen);
  const PaletteColour asked = {GetRValue(colour), GetGValue(colour), GetBValue(colour)};
  const PaletteColour shown = ColourOfPixel(map, PixelOfColour(map, asked));
  return RGB(shown.red, shown.green, shown.blue);
}
