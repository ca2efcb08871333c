// Lines, rectangles and polygons: each becomes rectangles of pixels, which paint.cpp fills.
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "win32/drawing/drawing_target.h"
#include "win32/drawing/fills.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

using Rects = std::vector<PixelRect>;

// Further out than any surface reaches, and far from the ends of the type.
int32_t Clamped(int32_t v) {
  return std::clamp(v, -(1 << 20), 1 << 20);
}

POINT Clamped(POINT p) {
  return {Clamped(p.x), Clamped(p.y)};
}

// One run of a line along its longer axis: `from` to `to` in either order, without `to`, at `across` on the other.
void AddRun(Rects* rects, bool upright, int32_t from, int32_t to, int32_t across) {
  const int32_t first = from < to ? from : to + 1, end = from < to ? to : from + 1;
  if (upright) {
    rects->push_back({across, first, across + 1, end});
  } else {
    rects->push_back({first, across, end, across + 1});
  }
}

// The pixels from a on, without b: at each step along the longer axis the nearest on the other, and half way the
// further one.
void AddLine(Rects* rects, POINT a, POINT b) {
  const int64_t dx = b.x - a.x, dy = b.y - a.y;
  const bool upright = std::abs(dy) > std::abs(dx);
  const int64_t steps = upright ? std::abs(dy) : std::abs(dx);
  const int64_t rise = upright ? dx : dy;
  const int32_t along = upright ? a.y : a.x, start = upright ? a.x : a.y;
  const int32_t direction = (upright ? dy : dx) < 0 ? -1 : 1;
  const auto acrossAt = [&](int64_t step) {
    const int64_t twice = 2 * step * std::abs(rise) + steps;
    return start + int32_t(twice / (2 * steps)) * (rise < 0 ? -1 : 1);
  };
  int64_t from = 0;
  int32_t across = start;
  for (int64_t step = rise ? 1 : steps; step <= steps && steps > 0; ++step) {
    const int32_t next = step < steps ? acrossAt(step) : across;
    if (step < steps && next == across) continue;
    AddRun(rects, upright, along + int32_t(from) * direction, along + int32_t(step) * direction, across);
    from = step;
    across = next;
  }
}

// Up to the next whole number; `divisor` is positive.
int32_t CeilingOf(int64_t dividend, int64_t divisor) {
  return int32_t(dividend >= 0 ? (dividend + divisor - 1) / divisor : -(-dividend / divisor));
}

// The pixels of one row that lie inside the polygon. An edge belongs to the inside on its left and upper sides alone.
void AddRow(Rects* rects, const std::vector<POINT>& points, int32_t y, std::vector<int32_t>* crossings) {
  crossings->clear();
  for (size_t i = 0; i < points.size(); ++i) {
    POINT a = points[i], b = points[(i + 1) % points.size()];
    if (a.y > b.y) std::swap(a, b);
    if (y < a.y || y >= b.y) continue;
    crossings->push_back(a.x + CeilingOf(int64_t{b.x - a.x} * (y - a.y), b.y - a.y));
  }
  std::sort(crossings->begin(), crossings->end());
  for (size_t i = 0; i + 1 < crossings->size(); i += 2) {
    const int32_t left = (*crossings)[i], right = (*crossings)[i + 1];
    if (left < right) rects->push_back({left, y, right, y + 1});
  }
}

Rects InsideOf(const std::vector<POINT>& points, const PixelRect& bounds) {
  Rects rects;
  std::vector<int32_t> crossings;
  const auto [top, bottom] =
      std::minmax_element(points.begin(), points.end(), [](const POINT& a, const POINT& b) { return a.y < b.y; });
  for (int32_t y = std::max(top->y, bounds.top); y < std::min(bottom->y, bounds.bottom); ++y) {
    AddRow(&rects, points, y, &crossings);
  }
  return rects;
}

// `from` without the pixels of `taken`, and each once, so that nothing is drawn twice where a mode would undo it.
Rects Without(const Rects& from, const Rects& taken) {
  Region left;
  for (const PixelRect& r : from) left.Add(r);
  for (const PixelRect& r : taken) left.Subtract(r);
  Rects rects;
  left.ForEach([&rects](const PixelRect& r) { rects.push_back(r); });
  return rects;
}

void DrawWithPen(HDC context, const Rects& rects) {
  if (!context->pen->draws || rects.empty()) return;
  PaintRects(context, rects.data(), rects.size(), SolidPaint(*context, context->pen->colour, context->rop));
}

void FillWithBrush(HDC context, const PixelRect* rects, size_t count) {
  if (count) PaintRects(context, rects, count, BrushPaint(*context, *context->brush, context->rop));
}

} // namespace
} // namespace framereel

using namespace framereel;

COLORREF SetPixel(HDC context, int x, int y, COLORREF colour) {
  if (!context) return CLR_INVALID;
  const PixelRect pixel = {Clamped(x), Clamped(y), Clamped(x) + 1, Clamped(y) + 1};
  PaintRects(context, &pixel, 1, SolidPaint(*context, colour, R2_COPYPEN));
  return GetPixel(context, x, y);
}

BOOL Polyline(HDC context, const POINT* points, int count) {
  if (!context || !points || count < 2) return FALSE;
  Rects rects;
  for (int i = 0; i + 1 < count; ++i) AddLine(&rects, Clamped(points[i]), Clamped(points[i + 1]));
  DrawWithPen(context, rects);
  return TRUE;
}

BOOL Polygon(HDC context, const POINT* points, int count) {
  if (!context || !points || count < 2) return FALSE;
  std::vector<POINT> corners(points, points + count);
  for (POINT& corner : corners) corner = Clamped(corner);
  Rects outline;
  for (size_t i = 0; i < corners.size(); ++i) AddLine(&outline, corners[i], corners[(i + 1) % corners.size()]);
  outline = Without(outline, {});
  Rects inside = InsideOf(corners, BoundsOf(*context));
  if (context->pen->draws) inside = Without(inside, outline);
  FillWithBrush(context, inside.data(), inside.size());
  DrawWithPen(context, outline);
  return TRUE;
}

int FillRect(HDC context, const RECT* rect, HBRUSH brush) {
  if (!context || !rect || !brush) return 0;
  const PixelRect r = {Clamped(rect->left), Clamped(rect->top), Clamped(rect->right), Clamped(rect->bottom)};
  PaintRects(context, &r, 1, BrushPaint(*context, *brush, R2_COPYPEN));
  return 1;
}

BOOL Rectangle(HDC context, int left, int top, int right, int bottom) {
  if (!context) return FALSE;
  const auto [x, endX] = std::minmax({Clamped(left), Clamped(right)});
  const auto [y, endY] = std::minmax({Clamped(top), Clamped(bottom)});
  const PixelRect whole = {x, y, endX, endY};
  if (IsEmpty(whole)) return TRUE;
  const PixelRect inside = {x + 1, y + 1, endX - 1, endY - 1};
  if (context->pen->draws) {
    FillWithBrush(context, &inside, 1);
    DrawWithPen(context, Without({whole}, IsEmpty(inside) ? Rects{} : Rects{inside}));
  } else {
    const PixelRect smaller = {x, y, endX - 1, endY - 1};
    FillWithBrush(context, &smaller, 1);
  }
  return TRUE;
}
