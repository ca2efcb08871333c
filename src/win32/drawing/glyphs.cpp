// The pictures of letters, each made once for a font and a rendition.
#include "win32/drawing/glyphs.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

#include <algorithm>
#include <cstring>

namespace framereel {
namespace {

// Below this size, in pixels an em, the hints in the files of even good fonts throw points far out of some letters.
constexpr FT_UShort kOwnHintsFrom = 8;

// Whole pixels that hold so many 64ths.
int32_t PixelsUp(FT_Pos v) {
  return int32_t((v + 63) >> 6);
}

// The letter's outline in the face's slot, hinted for the rendition. False when the file has none to give.
bool LoadLetter(const FontRecord& font, Rendition rendition, uint8_t letter) {
  const FT_UInt index = FT_Get_Char_Index(font.face, letter);
  FT_Int32 hinting = rendition == Rendition::kSmooth ? FT_LOAD_TARGET_LIGHT : FT_LOAD_TARGET_MONO;
  if (font.face->size->metrics.y_ppem < kOwnHintsFrom) hinting |= FT_LOAD_FORCE_AUTOHINT;
  if (FT_Load_Glyph(font.face, index, hinting | FT_LOAD_NO_BITMAP) != 0) return false;
  if (font.embolden) FT_GlyphSlot_Embolden(font.face->glyph);
  if (font.slant) FT_GlyphSlot_Oblique(font.face->glyph);
  return true;
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

void MakeLetter(const FontRecord& font, Rendition rendition, uint8_t letter, Glyph* glyph) {
  if (!LoadLetter(font, rendition, letter)) return;
  FT_GlyphSlot slot = font.face->glyph;
  glyph->advance = std::max(0, int32_t((slot->advance.x + 32) >> 6));
  const FT_Render_Mode mode = rendition == Rendition::kSmooth ? FT_RENDER_MODE_NORMAL : FT_RENDER_MODE_MONO;
  if (slot->format != FT_GLYPH_FORMAT_OUTLINE || FT_Render_Glyph(slot, mode) != 0) return;
  glyph->left = slot->bitmap_left;
  glyph->width = int32_t(slot->bitmap.width);
  // At the smallest sizes the hinting may push a stray row out of the cell, which is cut.
  const int32_t top = -slot->bitmap_top, bottom = top + int32_t(slot->bitmap.rows);
  glyph->top = std::max(top, -font.ascent);
  glyph->height = std::max(0, std::min(bottom, font.descent) - glyph->top);
  CopyCoverage(slot->bitmap, glyph->top - top, glyph);
}

// An empty frame that stands on the baseline, for when there is no font.
void MakeBox(const FontRecord& font, uint8_t letter, Glyph* glyph) {
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

const Glyph& GlyphOf(FontRecord* font, Rendition rendition, uint8_t letter) {
  Glyph* glyph = &font->glyphs[size_t(rendition)][letter];
  if (glyph->made) return *glyph;
  glyph->made = true;
  if (font->face) {
    MakeLetter(*font, rendition, letter, glyph);
  } else {
    MakeBox(*font, letter, glyph);
  }
  return *glyph;
}

InkReach InkReachOf(const FontRecord& font) {
  // The tallest and the deepest of Latin-1: capitals with accents, letters with tails, brackets.
  static constexpr unsigned char kFarReaching[] = "\xC5\xC3\xCA\xD1\xD6\xDD\xC7\xFE\xFFgjpqyQ|()[]{}$@,;_/\\";
  InkReach reach = {0, 0};
  for (const Rendition rendition : {Rendition::kSmooth, Rendition::kPlain}) {
    for (const unsigned char* letter = kFarReaching; *letter; ++letter) {
      if (!LoadLetter(font, rendition, *letter)) continue;
      const FT_Glyph_Metrics& metrics = font.face->glyph->metrics;
      reach.above = std::max(reach.above, PixelsUp(metrics.horiBearingY));
      reach.below = std::max(reach.below, PixelsUp(metrics.height - metrics.horiBearingY));
    }
  }
  return reach;
}

int32_t AverageWidth(FontRecord* font, Rendition rendition) {
  int32_t sum = 0;
  for (int i = 0; i < 26; ++i) {
    sum += GlyphOf(font, rendition, uint8_t('A' + i)).advance + GlyphOf(font, rendition, uint8_t('a' + i)).advance;
  }
  return std::max(1, (sum + 26) / 52);
}

} // namespace framereel
