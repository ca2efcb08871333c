// DrawStates: how the toolkit draws. A View or a piece of code keeps one: a font, two colours, a pen, a brush pattern
// and a pen mode. One is in use at a time, on the current Port (ports.h); a change of the Port ends its use.
//
// The standard states and colours stand in standard_drawing.h, what is drawn with them in primitives.h, fonts in
// font_cache.h.
#pragma once

#include <cstdint>

#include "platform/records/colour.h"
#include "win32/win32_types.h"

namespace framereel {

struct Font;
struct FontFamily;

enum PenMode : uint8_t {
  kPenCopy = 0,
  kPenInvert = 1, // black inverts what stands there and white leaves it; twice is as before
};

inline constexpr uint32_t kPatternSolid = 1;
// Diagonal stripes, a pixel wide and 8 apart: kPatternStripes + k is black where (x + y) modulo 8 is k.
inline constexpr uint32_t kPatternStripes = 75;

struct DrawState {
  Font* font; // one reference is its own
  Colour foreground, background;
  uint8_t penMode;
  int32_t penWidth; // pixels; 1
  HPEN pen;         // owned, as is the brush
  HBRUSH brush;
  uint32_t pattern;          // kPatternSolid, or a number that a bitmap resource stands for
  COLORREF foreRef, backRef; // the two colours as the platform takes them
};

void DrawingStartUp();
// Frees all DrawStates and fonts. It runs behind SharedContextsShutDown: each context keeps the last font that it had.
void DrawingShutDown();

// A state of black on white, solid, copying, in the default family at size 15, bold. It lives until DrawingShutDown.
DrawState* NewDrawState();
// Selects all that the state says into the current Port's context; null does nothing.
void UseDrawState(DrawState* state);
DrawState* CurrentDrawState(); // null when none is in use

// These change the state in use and take effect at once; without one they do nothing.
void SetForeColour(const Colour& colour);
void SetBackColour(const Colour& colour);
// 0 and numbers without a bitmap leave the brush as it was; 91 and above count as kPatternSolid.
void SetPattern(uint32_t pattern);
void SetPenMode(uint8_t mode);
void SetFontFamily(FontFamily* family); // null changes nothing
void SetFontSize(uint16_t size);        // of the cell, in pixels

COLORREF ColourRef(const Colour& colour);

// When its Port is released: takes pen, brush and mode out of the context. The font stays.
void LeaveDrawState(HDC context);

} // namespace framereel
