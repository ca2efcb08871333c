// Fonts: the record behind the handle, its letters as pictures, and where the files come from. Internal to the layer.
//
// fonts.cpp chooses the file and the size, glyphs.cpp makes the pictures and keeps them, text.cpp draws and measures.
#pragma once

#include <string>
#include <vector>

#include "win32/drawing/gdi.h"

using FT_Face = struct FT_FaceRec_*;

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
  FT_Face face;            // owned; null when no font is installed: letters are boxes then
  bool embolden, slant;    // what the file does not have, made from what it has
  int32_t ascent, descent; // pixels; the ink of every letter lies within
  int32_t internalLeading; // of the ascent, what is for accents
  int32_t externalLeading; // between lines
  Glyph glyphs[2][256];    // by Rendition and Latin-1 byte, made when first asked for
};

// The letter's picture, good as long as the font.
const Glyph& GlyphOf(FontRecord* font, Rendition rendition, uint8_t letter);
// How far the ink of a letter reaches above and below the baseline, at most, in either rendition: pixels.
struct InkReach {
  int32_t above, below;
};
InkReach InkReachOf(const FontRecord& font);
// The mean of the 52 letters of the alphabet, small and capital, at least 1.
int32_t AverageWidth(FontRecord* font, Rendition rendition);

// The file that comes nearest to a family, bold or italic. The path is empty when none is installed.
struct FontFile {
  std::string path;
  int32_t index; // of the face in the file
  bool bold, italic;
};
FontFile FindFontFile(const char* family, bool bold, bool italic);
// The face in a file, or null; CloseFace ends it, and does nothing with null.
FT_Face OpenFace(const FontFile& file);
void CloseFace(FT_Face face);

// Looks anew for what is installed; the next font that is made knows of it.
void ForgetInstalledFonts();

void FreeFont(HFONT font);

} // namespace framereel
