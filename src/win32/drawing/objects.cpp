// Bitmaps, pens and brushes: making and deleting them, and the stock ones. Fonts are made in fonts.cpp, regions in
// regions.cpp, but every object is deleted here.
#include "win32/drawing/objects.h"

#include <type_traits>

#include "resources/bitmaps.h"
#include "win32/drawing/fonts.h"
#include "win32/pixels/pixels.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

// A handle is the address of its record and of the record's head.
static_assert(std::is_standard_layout_v<Win32Bitmap> && std::is_standard_layout_v<Win32Pen>);
static_assert(std::is_standard_layout_v<Win32Brush> && std::is_standard_layout_v<Win32Region>);

Win32Pen blackPen = {{GdiKind::kPen, true, 0}, true, RGB(0, 0, 0)};
Win32Pen nullPen = {{GdiKind::kPen, true, 0}, false, 0};
Win32Brush blackBrush = {{GdiKind::kBrush, true, 0}, false, RGB(0, 0, 0), {}};
Win32Brush whiteBrush = {{GdiKind::kBrush, true, 0}, false, RGB(255, 255, 255), {}};

BOOL DeleteBitmap(HBITMAP bitmap) {
  if (bitmap->holder) return FALSE;
  if (bitmap->ofScreen) {
    DisplayFreeSurface(&bitmap->surface);
  } else {
    FreePlainSurface(&bitmap->surface);
  }
  delete bitmap;
  return TRUE;
}

// On a screen of 16 colours: which of the fixed sixteen each pixel stands for, whatever order the screen's palette has.
void FillSixteen(uint8_t sixteen[16]) {
  PaletteColour palette[256];
  DisplayPalette(palette);
  for (int i = 0; i < 16; ++i) sixteen[i] = uint8_t(NearestColour(palette[i], kStandardColours, kStandardColourCount));
}

HBITMAP NewBitmap(const Surface& surface, bool ofScreen) {
  auto* bitmap = new Win32Bitmap{{GdiKind::kBitmap, false, 0}, surface, ofScreen, nullptr, {}};
  if (surface.layout.depth == 4) FillSixteen(bitmap->sixteen);
  return bitmap;
}

} // namespace

GdiKind KindOf(HGDIOBJ object) {
  return static_cast<const Win32GdiObject*>(object)->kind;
}

HBRUSH WhiteBrush() {
  return &whiteBrush;
}

} // namespace framereel

using namespace framereel;

BOOL DeleteObject(HGDIOBJ object) {
  if (!object) return FALSE;
  const auto* head = static_cast<const Win32GdiObject*>(object);
  if (head->stock || head->contexts > 0) return FALSE;
  switch (head->kind) {
  case GdiKind::kBitmap:
    return DeleteBitmap(static_cast<HBITMAP>(object));
  case GdiKind::kPen:
    delete static_cast<HPEN>(object);
    return TRUE;
  case GdiKind::kBrush:
    delete static_cast<HBRUSH>(object);
    return TRUE;
  case GdiKind::kFont:
    FreeFont(static_cast<HFONT>(object));
    return TRUE;
  case GdiKind::kRegion:
    delete static_cast<HRGN>(object);
    return TRUE;
  }
  return FALSE;
}

HBITMAP CreateBitmap(int width, int height, UINT, UINT, const void*) {
  Surface surface;
  return NewPlainSurface(kLayoutMono, width, height, &surface) ? NewBitmap(surface, false) : nullptr;
}

HBITMAP CreateCompatibleBitmap(HDC context, int width, int height) {
  Surface surface;
  if (!context || width <= 0 || height <= 0 || !DisplayNewSurface(width, height, &surface)) return nullptr;
  return NewBitmap(surface, true);
}

HBITMAP CreateDIBitmap(HDC context, const BITMAPINFOHEADER* header, DWORD, const void*, const BITMAPINFO*, UINT) {
  return header ? CreateCompatibleBitmap(context, header->biWidth, header->biHeight) : nullptr;
}

HBITMAP LoadBitmapA(HINSTANCE, const char* name) {
  const auto id = reinterpret_cast<uintptr_t>(name);
  const BitmapResource* resource = id <= UINT16_MAX ? FindBitmapResource(uint16_t(id)) : nullptr;
  HBITMAP bitmap = resource ? CreateBitmap(resource->width, resource->height, 1, 1, nullptr) : nullptr;
  if (!bitmap) return nullptr;
  for (int32_t y = 0; y < resource->height; ++y) {
    for (int32_t x = 0; x < resource->width; ++x) {
      SetPixelAt(bitmap->surface, x, y, resource->rows[y][x] == '#' ? 0 : 1);
    }
  }
  return bitmap;
}

HPEN CreatePen(int, int, COLORREF colour) {
  return new Win32Pen{{GdiKind::kPen, false, 0}, true, colour};
}

HBRUSH CreateSolidBrush(COLORREF colour) {
  return new Win32Brush{{GdiKind::kBrush, false, 0}, false, colour, {}};
}

HBRUSH CreatePatternBrush(HBITMAP bitmap) {
  if (!bitmap || bitmap->ofScreen || bitmap->surface.width < 8 || bitmap->surface.height < 8) return nullptr;
  auto* brush = new Win32Brush{{GdiKind::kBrush, false, 0}, true, 0, {}};
  for (int32_t y = 0; y < 8; ++y) PackRow(RowOf(bitmap->surface, y), 8, 1, &brush->pattern[y]);
  return brush;
}

HGDIOBJ GetStockObject(int which) {
  switch (which) {
  case BLACK_BRUSH:
    return &blackBrush;
  case BLACK_PEN:
    return &blackPen;
  case NULL_PEN:
    return &nullPen;
  default:
    return nullptr;
  }
}
