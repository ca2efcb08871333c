// The pictures of letters, each made once for a font and a rendition. Internal to the layer.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "win32/drawing/font_files.h"

namespace framereel {

// A letter's picture: coverage, 0 to 255, in rows without padding; in a plain one 0 or 255.
struct Glyph {
  bool made;             // false: nobody has asked for it yet
  int32_t advance;       // pixels from this letter to the next
  int32_t left, top;     // the picture's top left pixel, seen from the pen's place on the baseline; down is positive
  int32_t width, height; // pixels; 0 for a letter without ink
  std::vector<uint8_t> coverage;
};

// How letters are made for a target: smooth where it can show shades, else plain.
enum class Rendition : uint8_t { kSmooth, kPlain };

struct FontRecord {
  FontStyle style;
  FontFace first;                // owned; its face is null when no font is installed: letters are boxes then
  std::vector<FontFace> standIn; // owned; of other files, opened for letters that the ones before do not have
  int32_t wide, high;            // the size of all of them, 64ths of a pixel an em
  int32_t ascent, descent;       // pixels; the ink of every letter lies within
  int32_t internalLeading;       // of the ascent, what is for accents
  int32_t externalLeading;       // between lines
  // By Rendition, made when first asked for: those of Latin-1, and all others.
  Glyph latin[2][256];
  std::unordered_map<char32_t, Glyph> others[2];
};

// The letter's picture, good as long as the font keeps its size.
const Glyph& GlyphOf(FontRecord* font, Rendition rendition, char32_t letter);
// Gives the faces another size, in 64ths of a pixel an em, and forgets the pictures. False when the first has none.
bool SizeFaces(FontRecord* font, int32_t wide, int32_t high);
// How far the ink of a letter reaches above and below the baseline, at most, in either rendition: pixels.
struct InkReach {
  int32_t above, below;
};
InkReach InkReachOf(const FontRecord& font);
// The mean of the 52 letters of the alphabet, small and capital, at least 1.
int32_t AverageWidth(FontRecord* font, Rendition rendition);

} // namespace framereel
