// What is drawn: lines, rectangles, polygons and text, on the current Port with the DrawState in use.
//
// Coordinates are the Port's own: window coordinates in windows, screen coordinates in the ScreenPort, the bitmap's in
// an Offscreen. Rectangles end one past their last pixel. Without a Port nothing is drawn and nothing measured.
#pragma once

#include <cstdint>

#include "core/geometry.h"

namespace framereel {

// One pixel wide, both ends included; from either end the pixels are the same.
void DrawLine(int x1, int y1, int x2, int y2);
// Thin lines (kThinLine), from the coordinate across downwards and to the right.
void DrawHLine(int16_t x1, int16_t y, int16_t x2);
void DrawVLine(int16_t x, int16_t y1, int16_t y2);
// The thin line along the inside of the rectangle.
void FrameRect(const Rect& r);
// In the pen mode of the state, with its pattern.
void FillRectXY(int left, int top, int right, int bottom);
void FillRect(const Rect& r);
// Through all points, the last one included.
void DrawPolyline(uint16_t count, const Point* points);
// Filled, with its outline.
void DrawPolygon(uint16_t count, const Point* points);

// Text is UTF-8; y is the baseline. An outlined font draws the foreground colour round letters of the background's.
void DrawText(int x, int y, const char* text);
// In the colour of disabled things.
void DrawGreyText(int x, int y, const char* text);

struct TextMeasure {
  int32_t leftOverhang;    // pixels that reach out to the left of x
  int32_t width;           // from there on
  int32_t ascent, descent; // above and below the baseline
  int32_t fullWidth;       // the width once more
};

TextMeasure MeasureText(const char* text);

struct LineMetrics {
  int32_t ascent, descent, leadingAbove, leadingBelow; // pixels
};

// Of the state's font, open or not; all 0 without one.
LineMetrics FontMetrics();

// Moves the pixels of the rectangle, in a window that is the current Port; what goes out of it is cut, and what is laid
// bare is to be painted.
void ScrollPortRect(const Rect& r, int dx, int dy);

} // namespace framereel
