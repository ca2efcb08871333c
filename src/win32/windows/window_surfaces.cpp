// The pixels of top-level windows and menus, and what of them is yet to be shown.
#include "win32/windows/window_surfaces.h"

#include <algorithm>
#include <cstring>

#include "win32/pixels/cursor.h"
#include "win32/pixels/rectangles.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

PixelRect Union(const PixelRect& a, const PixelRect& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right), std::max(a.bottom, b.bottom)};
}

// How many pixels too many joining the two would present.
int64_t Waste(const PixelRect& a, const PixelRect& b) {
  const PixelRect both = Intersect(a, b);
  return AreaOf(Union(a, b)) - AreaOf(a) - AreaOf(b) + (IsEmpty(both) ? 0 : AreaOf(both));
}

// The noted rectangle that the part joins at the least waste.
PixelRect* Cheapest(ShownSurface* shown, const PixelRect& part) {
  return std::min_element(shown->damage, shown->damage + shown->damages,
                          [&](const PixelRect& a, const PixelRect& b) { return Waste(a, part) < Waste(b, part); });
}

void CopyRows(const Surface& from, const Surface& to, int32_t width, int32_t height) {
  const size_t bytes = size_t(width) * size_t(from.layout.bytesPerPixel);
  for (int32_t y = 0; y < height; ++y) std::memcpy(RowOf(to, y), RowOf(from, y), bytes);
}

} // namespace

bool ResizeSurface(ShownSurface* shown, int32_t width, int32_t height) {
  const Surface before = shown->surface;
  const bool sameLayout = before.pixels && before.layout.depth == DisplayScreen().layout.depth;
  if (sameLayout && before.width == width && before.height == height) return true;
  Surface fresh = {};
  const bool made = DisplayNewSurface(width, height, &fresh);
  if (made && sameLayout) CopyRows(before, fresh, std::min(width, before.width), std::min(height, before.height));
  if (before.pixels) DisplayFreeSurface(&shown->surface);
  shown->surface = fresh;
  shown->damages = 0;
  NoteDamage(shown, BoundsOf(fresh));
  return made;
}

bool FitSurface(HWND topLevel) {
  if (topLevel->top->role == WindowRole::kCover) return true;
  const PixelRect place = DisplayPlace(*topLevel);
  return ResizeSurface(&topLevel->top->shown, WidthOf(place), HeightOf(place));
}

void FreeShown(ShownSurface* shown) {
  WindowSystem& system = TheWindows();
  if (system.keyboardAt == shown->display) system.keyboardAt = nullptr;
  if (system.askedFor == shown->display) system.askedFor = nullptr;
  std::vector<ShownSurface*>& all = system.shown;
  all.erase(std::remove(all.begin(), all.end(), shown), all.end());
  if (shown->display) DisplayFreeWindow(shown->display);
  if (shown->surface.pixels) DisplayFreeSurface(&shown->surface);
  shown->display = nullptr;
}

void NoteDamage(ShownSurface* shown, const PixelRect& part) {
  const PixelRect on = Intersect(part, BoundsOf(shown->surface));
  if (IsEmpty(on)) return;
  WindowSystem& system = TheWindows();
  if (!system.damaged) system.damagedSince = DisplayTick();
  system.damaged = true;
  constexpr int32_t most = sizeof shown->damage / sizeof *shown->damage;
  PixelRect* joins = shown->damages > 0 ? Cheapest(shown, on) : nullptr;
  if (joins && (shown->damages == most || Waste(*joins, on) <= 0)) {
    *joins = Union(*joins, on);
  } else {
    shown->damage[shown->damages++] = on;
  }
}

void ShowPointerOn(ShownSurface* shown, HCURSOR cursor) {
  if (!cursor || shown->pointer == cursor) return;
  shown->pointer = cursor;
  DisplayPointerShape(shown->display, cursor->shape, cursor->picture);
}

void CopyPixels(HWND window, const Region& to, int32_t dx, int32_t dy) {
  const HWND topLevel = TopLevelOf(window);
  ShownSurface& shown = topLevel->top->shown;
  const Surface& surface = shown.surface;
  if (!surface.pixels || to.IsEmpty() || (dx == 0 && dy == 0)) return;
  Region bounded = to;
  bounded.Offset(-topLevel->place.left, -topLevel->place.top);
  bounded.Intersect(Intersect(BoundsOf(surface), Moved(BoundsOf(surface), dx, dy)));
  const auto pixel = size_t(surface.layout.bytesPerPixel);
  std::vector<uint8_t> held;
  // All is read before anything is written: source and target may overlap in any direction.
  bounded.ForEach([&](const PixelRect& r) {
    for (int32_t y = r.top; y < r.bottom; ++y) {
      const uint8_t* row = RowOf(surface, y - dy) + size_t(r.left - dx) * pixel;
      held.insert(held.end(), row, row + size_t(WidthOf(r)) * pixel);
    }
  });
  const uint8_t* next = held.data();
  bounded.ForEach([&](const PixelRect& r) {
    const size_t bytes = size_t(WidthOf(r)) * pixel;
    for (int32_t y = r.top; y < r.bottom; ++y, next += bytes) {
      std::memcpy(RowOf(surface, y) + size_t(r.left) * pixel, next, bytes);
    }
    NoteDamage(&shown, r);
  });
}

} // namespace framereel
