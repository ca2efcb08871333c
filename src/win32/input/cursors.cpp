// Cursors and icons that can be loaded, and which one the pointer shows over our windows.
#include "win32/input/cursors.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "resources/cursors.h"
#include "resources/icon.h"
#include "win32/pixels/cursor.h"
#include "win32/pixels/scale.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/window_surfaces.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

struct StockCursor {
  const char* name;
  Win32Cursor cursor;
};
StockCursor stockCursors[] = {
    {IDC_ARROW, {nullptr, PointerShape::kArrow}},
    {IDC_IBEAM, {nullptr, PointerShape::kIBeam}},
    {IDC_WAIT, {nullptr, PointerShape::kWait}},
    {IDC_CROSS, {nullptr, PointerShape::kCross}},
};

// One of the program's resources, made at its first use.
struct OwnCursor {
  std::vector<uint32_t> pixels;
  PointerPicture picture;
  Win32Cursor cursor = {&picture, PointerShape::kOwn};

  OwnCursor(const CursorResource& resource, int32_t scale) {
    const int32_t side = kCursorSide * scale;
    for (int32_t i = 0; i < side * side; ++i) {
      const char sign = resource.rows[i / side / scale][i % side / scale];
      pixels.push_back(sign == '#' ? 0xFF000000 : sign == 'o' ? 0xFFFFFFFF : 0);
    }
    picture = {side, side, resource.hotX * scale, resource.hotY * scale, pixels.data()};
  }
  OwnCursor(const OwnCursor&) = delete; // it points into itself
};

HCURSOR LoadOwnCursor(uintptr_t id) {
  static std::map<std::pair<uintptr_t, int32_t>, OwnCursor> cursors; // by number and scale
  const int32_t scale = PictureScale();
  const CursorResource* resource = id <= UINT16_MAX ? FindCursorResource(uint16_t(id)) : nullptr;
  return resource ? &cursors.try_emplace({id, scale}, *resource, scale).first->second.cursor : nullptr;
}

// The program's icon, made at its first use.
struct OwnIcon {
  std::vector<uint32_t> pixels; // of all sizes
  std::vector<PointerPicture> sizes;
  Win32Cursor icon = {nullptr, PointerShape::kOwn};

  OwnIcon() {
    size_t count = 0;
    for (const IconPicture& one : IconPictures()) count += size_t(one.side) * one.side;
    pixels.reserve(count); // the pictures point into it
    for (const IconPicture& one : IconPictures()) {
      sizes.push_back({one.side, one.side, 0, 0, pixels.data() + pixels.size()});
      const size_t area = size_t(one.side) * one.side;
      std::transform(one.pixels, one.pixels + area, std::back_inserter(pixels), Premultiplied);
    }
    icon.sizes = sizes;
    icon.picture = sizes.data();
  }
  OwnIcon(const OwnIcon&) = delete; // it points into itself

  static uint32_t Premultiplied(uint32_t pixel) {
    const uint32_t alpha = pixel >> 24;
    const auto channel = [=](int shift) { return ((pixel >> shift & 255) * alpha + 127) / 255 << shift; };
    return alpha << 24 | channel(16) | channel(8) | channel(0);
  }
};

HICON LoadOwnIcon(uintptr_t id) {
  static OwnIcon own;
  const bool known = std::find(std::begin(kIconResources), std::end(kIconResources), id) != std::end(kIconResources);
  return known ? &own.icon : nullptr;
}

constexpr int32_t kIconSize = 32;

// The stock icon: a window with a caption.
uint32_t IconPixel(int32_t x, int32_t y) {
  const int32_t left = 3, top = 5, right = 28, bottom = 26;
  if (x < left || x > right || y < top || y > bottom) return 0;
  if (x == left || x == right || y == top || y == bottom) return 0xFF000000;
  return y < top + 5 ? 0xFF000080 : 0xFFFFFFFF;
}

HICON StockIcon() {
  static uint32_t pixels[kIconSize * kIconSize];
  static const PointerPicture picture = {kIconSize, kIconSize, 0, 0, pixels};
  static Win32Cursor icon = {&picture, PointerShape::kOwn, {&picture, 1}};
  for (int32_t i = 0; i < kIconSize * kIconSize; ++i) pixels[i] = IconPixel(i % kIconSize, i / kIconSize);
  return &icon;
}

} // namespace

void ShowPointerFor(HWND window, int hit) {
  WindowSystem& system = TheWindows();
  system.pointed = window;
  system.pointedHit = hit;
  const HCURSOR cursor = hit == HTCLIENT ? window->windowClass->cursor : ::LoadCursorA(nullptr, IDC_ARROW);
  if (!cursor) return;
  system.cursor = cursor;
  ShowPointerOn(&TopLevelOf(window)->top->shown, cursor);
}

namespace {

// A class has another cursor.
void RefreshPointer() {
  const WindowSystem& system = TheWindows();
  if (!system.capture && IsLive(system.pointed)) ShowPointerFor(system.pointed, system.pointedHit);
}

} // namespace
} // namespace framereel

using namespace framereel;

HCURSOR LoadCursorA(HINSTANCE instance, const char* name) {
  if (instance) return LoadOwnCursor(reinterpret_cast<uintptr_t>(name));
  for (StockCursor& stock : stockCursors) {
    if (stock.name == name) return &stock.cursor;
  }
  return nullptr;
}

HICON LoadIconA(HINSTANCE instance, const char* name) {
  if (instance) return LoadOwnIcon(reinterpret_cast<uintptr_t>(name));
  return name == IDI_APPLICATION ? StockIcon() : nullptr;
}

LONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value) {
  if (!IsLive(window) || index != GCL_HCURSOR) return 0;
  WindowClass& windowClass = *window->windowClass;
  const auto before = reinterpret_cast<LONG_PTR>(windowClass.cursor);
  windowClass.cursor = reinterpret_cast<HCURSOR>(value);
  if (windowClass.cursor != reinterpret_cast<HCURSOR>(before)) RefreshPointer();
  return before;
}

HCURSOR SetCursor(HCURSOR cursor) {
  WindowSystem& system = TheWindows();
  const HCURSOR before = system.cursor;
  system.cursor = cursor;
  const HWND window = system.capture ? system.capture : system.pointed;
  if (IsLive(window)) ShowPointerOn(&TopLevelOf(window)->top->shown, cursor);
  return before;
}

BOOL SetCursorPos(int x, int y) {
  DisplayMovePointer(x, y);
  return TRUE;
}
