// The primitives, each one call of the platform or a few.
#include "platform/drawing/primitives.h"

#include "core/memory.h"
#include "core/strings.h"
#include "platform/drawing/current_port.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/font_cache.h"
#include "platform/drawing/standard_drawing.h"
#include "win32/pixels/scale.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

POINT PointOf(const Point& p) {
  return {p.h, p.v};
}

// The points in the platform's form, with room for one more behind them. The caller frees. Null where there is nothing
// to draw, or nothing to draw it with.
POINT* WidenPoints(uint16_t count, const Point* points) {
  if (count == 0) return nullptr;
  auto* wide = static_cast<POINT*>(MemAlloc((size_t{count} + 1) * sizeof(POINT)));
  for (uint16_t i = 0; wide && i < count; ++i) wide[i] = PointOf(points[i]);
  return wide;
}

void WriteText(int x, int y, const char* text) {
  ::TextOutA(CurrentContext(), x, y, text, int(StrLength(text)));
}

bool IsOutlined(const DrawState* state) {
  return state->font && (state->font->style & kFontOutlined);
}

void DrawOutlinedText(int x, int y, const char* text) {
  for (int dy = -1; dy <= 1; ++dy) {
    for (int dx = -1; dx <= 1; ++dx) {
      if (dx || dy) WriteText(x + dx, y + dy, text);
    }
  }
  const COLORREF before = ::SetTextColor(CurrentContext(), CurrentDrawState()->backRef);
  WriteText(x, y, text);
  ::SetTextColor(CurrentContext(), before);
}

} // namespace

// The platform leaves out the last point of a line, so each gets one more.
void DrawLine(int x1, int y1, int x2, int y2) {
  if (x1 < x2) {
    const POINT points[] = {{x1, y1}, {x2, y2}, {x2 + 1, y2}};
    ::Polyline(CurrentContext(), points, 3);
  } else if (x1 > x2) {
    const POINT points[] = {{x2, y2}, {x1, y1}, {x1 + 1, y1}};
    ::Polyline(CurrentContext(), points, 3);
  } else {
    const POINT points[] = {{x1, y1 < y2 ? y1 : y2}, {x1, (y1 < y2 ? y2 : y1) + 1}};
    ::Polyline(CurrentContext(), points, 2);
  }
}

void DrawHLine(int16_t x1, int16_t y, int16_t x2) {
  for (int i = 0, line = kThinLine; i < line; ++i) DrawLine(x1, y + i, x2, y + i);
}

void DrawVLine(int16_t x, int16_t y1, int16_t y2) {
  for (int i = 0, line = kThinLine; i < line; ++i) DrawLine(x + i, y1, x + i, y2);
}

void FrameRect(const Rect& r) {
  for (int i = 0, line = kThinLine; i < line; ++i) {
    const int left = r.left + i, top = r.top + i, right = r.right - 1 - i, bottom = r.bottom - 1 - i;
    const POINT points[] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}, {left, top}};
    ::Polyline(CurrentContext(), points, 5);
  }
}

void FillRectXY(int left, int top, int right, int bottom) {
  const DrawState* state = CurrentDrawState();
  if (!state) return;
  if (state->penMode == kPenCopy) {
    const RECT r = {left, top, right, bottom};
    ::FillRect(CurrentContext(), &r, state->brush);
    return;
  }
  // Rectangle minds the mode. Without a pen it is one column and one row smaller.
  ::SelectObject(CurrentContext(), ::GetStockObject(NULL_PEN));
  ::Rectangle(CurrentContext(), left, top, right + 1, bottom + 1);
  ::SelectObject(CurrentContext(), state->pen);
}

void FillRect(const Rect& r) {
  FillRectXY(r.left, r.top, r.right, r.bottom);
}

void DrawPolyline(uint16_t count, const Point* points) {
  POINT* wide = WidenPoints(count, points);
  if (!wide) return;
  wide[count] = {wide[count - 1].x + 1, wide[count - 1].y};
  ::Polyline(CurrentContext(), wide, count + 1);
  MemFree(wide);
}

void DrawPolygon(uint16_t count, const Point* points) {
  POINT* wide = WidenPoints(count, points);
  if (!wide) return;
  wide[count] = wide[0];
  ::Polygon(CurrentContext(), wide, count + 1);
  MemFree(wide);
}

void DrawText(int x, int y, const char* text) {
  const DrawState* state = CurrentDrawState();
  if (!state) return;
  if (IsOutlined(state)) {
    DrawOutlinedText(x, y, text);
  } else {
    WriteText(x, y, text);
  }
}

void DrawGreyText(int x, int y, const char* text) {
  const COLORREF before = ::SetTextColor(CurrentContext(), ColourGreyText());
  WriteText(x, y, text);
  ::SetTextColor(CurrentContext(), before);
}

TextMeasure MeasureText(const char* text) {
  const DrawState* state = CurrentDrawState();
  SIZE size = {};
  if (!state || !state->font || !::GetTextExtentPointA(CurrentContext(), text, int(StrLength(text)), &size)) return {};
  TextMeasure measure = {0, size.cx, state->font->ascent, state->font->descent, size.cx};
  if (IsOutlined(state)) {
    measure.leftOverhang = 1;
    ++measure.ascent;
    ++measure.descent;
    // The outline on both sides, and the two pixels between each letter and the next.
    measure.width += 2 * int32_t(StrLength(text)) - 1;
    measure.fullWidth = measure.width;
  }
  return measure;
}

LineMetrics FontMetrics() {
  const DrawState* state = CurrentDrawState();
  if (!state || !state->font) return {};
  const Font& font = *state->font;
  return {font.ascent, font.descent, font.leadingAbove, font.leadingBelow};
}

void ScrollPortRect(const Rect& r, int dx, int dy) {
  const RECT where = {r.left, r.top, r.right, r.bottom};
  if (const HWND window = TheCurrentPort().window) ::ScrollWindow(window, dx, dy, &where, &where);
}

} // namespace framereel
