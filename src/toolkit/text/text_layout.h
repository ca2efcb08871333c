// Wrapped text: breaking a text into lines for a width, measuring and drawing them.
//
// All of it works with the current Port and the DrawState in use. A text may change family and size on its way: a byte
// 27 begins a command, which runs up to the next byte 27 or the end of the text and takes no width. `f` and a family's
// name changes the family, an empty name back to the first one; `s` and a number changes the size, with a sign in front
// counted from the first one; any other text keeps the first size. A line feed ends a line.
#pragma once

#include <cstdint>

#include "core/arrays.h"
#include "core/geometry.h"

namespace framereel {

enum class TextAlign : uint16_t { kLeft = 0, kCentre = 1, kRight = 2 };
enum class TextWrap : uint16_t { kByCharacter = 0, kByWord = 1, kNone = 2 };

// No line is as wide.
inline constexpr uint16_t kWideOpen = 32767;

struct TextLine {
  int16_t width;    // pixels, without the blanks at its end
  int16_t overhang; // of the first character, to the left
  const char *start, *end;
};

struct TextBlock {
  char* text; // owned
  uint16_t wrapWidth;
  uint16_t widest; // of the lines
  TextAlign alignment;
  TextWrap wrap;
  bool grey;                 // drawn in the colour of disabled things
  uint16_t lineUp, lineDown; // pixels above and below the baseline, the font's leadings among them
  RecordArray lines;         // of TextLine
};

struct TextSize {
  int16_t width, height; // pixels
};

// A copy of the text, laid out; FreeTextBlock releases it.
TextBlock* MakeTextBlock(const char* text, TextAlign alignment, TextWrap wrap, uint16_t wrapWidth);
void FreeTextBlock(TextBlock* block);
// At least one line high, and half as wide as a line is high.
TextSize TextBlockSize(const TextBlock* block);
// Into the rectangle, and clipped to it.
void DrawBlock(const TextBlock* block, const Rect& where);

// The three in one: a block as wide as the rectangle, drawn.
void DrawTextBlock(const Rect& where, const char* text, TextAlign alignment, TextWrap wrap, bool grey);
TextSize MeasureTextBlock(const char* text, TextAlign alignment, TextWrap wrap, uint16_t wrapWidth);

// The text as it stands, without wrapping and commands: as wide as its widest line.
TextSize MeasureLines(const char* text);

// The size of a text in a pleasant shape, where a width or a height of 0 is free.
TextSize FittedTextSize(const char* text, TextAlign alignment, int16_t width, int16_t height);

} // namespace framereel
