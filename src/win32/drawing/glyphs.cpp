// The pictures of letters, each made once for a font and a rendition.
#include "win32/drawing/glyphs.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

#include <algorithm>
#include <cstring>
#include <iterator>

namespace framereel {
namespace {

// Below this size, in pixels an em, the hints in the files of even good fonts throw points far out of some letters.
constexpr FT_UShort kOwnHintsFrom = 8;

// Whole pixels that hold so many 64ths.
int32_t PixelsUp(FT_Pos v) {
  return int32_t((v + 63) >> 6);
}

// The letter's outline in the face's slot, hinted for the rendition. False when the file has none to give.
bool LoadLetter(const FontFace& font, Rendition rendition, char32_t letter) {
  const FT_UInt index = FT_Get_Char_Index(font.face, letter);
  FT_Int32 hinting = rendition == Rendition::kSmooth ? FT_LOAD_TARGET_LIGHT : FT_LOAD_TARGET_MONO;
  if (font.face->size->metrics.y_ppem < kOwnHintsFrom) hinting |= FT_LOAD_FORCE_AUTOHINT;
  if (FT_Load_Glyph(font.face, index, hinting | FT_LOAD_NO_BITMAP) != 0) return false;
  if (font.embolden) FT_GlyphSlot_Embolden(font.face->glyph);
  if (font.slant) FT_GlyphSlot_Oblique(font.face->glyph);
  return true;
}

bool Has(const FontFace& font, char32_t letter) {
  return FT_Get_Char_Index(font.face, letter) != 0;
}

bool SizeFace(const FontFace& font, int32_t wide, int32_t high) {
  return FT_Set_Char_Size(font.face, wide, high, 72, 72) == 0;
}

// The first of the font's faces that has the letter, opened for it if need be; the font's own when none has.
FontFace FaceFor(FontRecord* font, char32_t letter) {
  if (Has(font->first, letter)) return font->first;
  for (const FontFace& known : font->standIn) {
    if (Has(known, letter)) return known;
  }
  const FontFace found = OpenFace(font->style, FindFontFileWith(font->style, letter));
  if (!found.face) return font->first;
  if (!Has(found, letter) || !SizeFace(found, font->wide, font->high)) {
    CloseFace(found);
    return font->first;
  }
  font->standIn.push_back(found);
  return found;
}

// The rows from `skipped` on, as many as the glyph is high.
void CopyCoverage(const FT_Bitmap& bitmap, int32_t skipped, Glyph* glyph) {
  glyph->coverage.resize(size_t(glyph->width) * size_t(glyph->height));
  for (int32_t y = 0; y < glyph->height; ++y) {
    const unsigned char* row = bitmap.buffer + std::ptrdiff_t{skipped + y} * bitmap.pitch;
    uint8_t* out = glyph->coverage.data() + size_t(y) * size_t(glyph->width);
    if (bitmap.pixel_mode == FT_PIXEL_MODE_GRAY) {
      std::memcpy(out, row, size_t(glyph->width));
    } else {
      for (int32_t x = 0; x < glyph->width; ++x) out[x] = row[x / 8] >> (7 - x % 8) & 1 ? 255 : 0;
    }
  }
}

void MakeLetter(FontRecord* font, Rendition rendition, char32_t letter, Glyph* glyph) {
  const FontFace has = FaceFor(font, letter);
  if (!LoadLetter(has, rendition, letter)) return;
  FT_GlyphSlot slot = has.face->glyph;
  glyph->advance = std::max(0, int32_t((slot->advance.x + 32) >> 6));
  const FT_Render_Mode mode = rendition == Rendition::kSmooth ? FT_RENDER_MODE_NORMAL : FT_RENDER_MODE_MONO;
  if (slot->format != FT_GLYPH_FORMAT_OUTLINE || FT_Render_Glyph(slot, mode) != 0) return;
  glyph->left = slot->bitmap_left;
  glyph->width = int32_t(slot->bitmap.width);
  // What reaches out of the cell is cut: a stray row that the hinting pushes out at the smallest sizes, or the ends of
  // a letter of another file.
  const int32_t top = -slot->bitmap_top, bottom = top + int32_t(slot->bitmap.rows);
  glyph->top = std::max(top, -font->ascent);
  glyph->height = std::max(0, std::min(bottom, font->descent) - glyph->top);
  CopyCoverage(slot->bitmap, glyph->top - top, glyph);
}

// An empty frame that stands on the baseline, for when there is no font.
void MakeBox(const FontRecord& font, char32_t letter, Glyph* glyph) {
  glyph->advance = std::max(3, (font.ascent + font.descent) / 2);
  if (letter == ' ' || letter == 0xA0) return;
  glyph->width = glyph->advance - 1;
  glyph->height = std::max(1, font.ascent * 3 / 4);
  glyph->top = -glyph->height;
  for (int32_t y = 0; y < glyph->height; ++y) {
    for (int32_t x = 0; x < glyph->width; ++x) {
      const bool edge = x == 0 || y == 0 || x == glyph->width - 1 || y == glyph->height - 1;
      glyph->coverage.push_back(edge ? 255 : 0);
    }
  }
}

} // namespace

const Glyph& GlyphOf(FontRecord* font, Rendition rendition, char32_t letter) {
  const auto which = size_t(rendition);
  Glyph* glyph = letter < std::size(font->latin[which]) ? &font->latin[which][letter] : &font->others[which][letter];
  if (glyph->made) return *glyph;
  glyph->made = true;
  if (font->first.face) {
    MakeLetter(font, rendition, letter, glyph);
  } else {
    MakeBox(*font, letter, glyph);
  }
  return *glyph;
}

bool SizeFaces(FontRecord* font, int32_t wide, int32_t high) {
  font->wide = wide;
  font->high = high;
  for (auto& glyphs : font->latin) std::fill(std::begin(glyphs), std::end(glyphs), Glyph{});
  for (auto& glyphs : font->others) glyphs.clear();
  for (const FontFace& other : font->standIn) SizeFace(other, wide, high);
  return SizeFace(font->first, wide, high);
}

InkReach InkReachOf(const FontRecord& font) {
  // The tallest and the deepest of Latin-1: capitals with accents, letters with tails, brackets.
  static constexpr unsigned char kFarReaching[] = "\xC5\xC3\xCA\xD1\xD6\xDD\xC7\xFE\xFFgjpqyQ|()[]{}$@,;_/\\";
  InkReach reach = {0, 0};
  for (const Rendition rendition : {Rendition::kSmooth, Rendition::kPlain}) {
    for (const unsigned char* letter = kFarReaching; *letter; ++letter) {
      if (!LoadLetter(font.first, rendition, *letter)) continue;
      const FT_Glyph_Metrics& metrics = font.first.face->glyph->metrics;
      reach.above = std::max(reach.above, PixelsUp(metrics.horiBearingY));
      reach.below = std::max(reach.below, PixelsUp(metrics.height - metrics.horiBearingY));
    }
  }
  return reach;
}

int32_t AverageWidth(FontRecord* font, Rendition rendition) {
  int32_t sum = 0;
  for (int i = 0; i < 26; ++i) {
    sum += GlyphOf(font, rendition, char32_t('A' + i)).advance + GlyphOf(font, rendition, char32_t('a' + i)).advance;
  }
  return std::max(1, (sum + 26) / 52);
}

} // namespace framereel
