// Making fonts: from what a caller asks for to a face at a size whose letters fit the cell.
#include "win32/drawing/fonts.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>

#include "win32/drawing/font_files.h"
#include "win32/drawing/gdi.h"
#include "win32/drawing/glyphs.h"
#include "win32/pixels/scale.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

constexpr Scaled kDefaultHeight{16};
constexpr int32_t kHeightMax = 1024; // larger letters are drawn at this size

// So many design units at a size, in whole pixels that hold them.
int32_t UnitsUp(const FontRecord& font, int32_t units, int32_t size) {
  const int32_t em = font.first.face->units_per_EM;
  return (units * size + em - 1) / em;
}

// Sets the face to a size of `size` pixels an em and fits ascent and descent round its letters.
bool TrySize(FontRecord* font, int32_t size) {
  if (!SizeFaces(font, size * 64, size * 64)) return false;
  const FT_Face face = font->first.face;
  const InkReach ink = InkReachOf(*font);
  font->ascent = std::max(UnitsUp(*font, face->ascender, size), ink.above);
  font->descent = std::max(UnitsUp(*font, -face->descender, size), ink.below);
  const int32_t gap = face->height - (face->ascender - face->descender);
  font->internalLeading = font->ascent + font->descent - size;
  font->externalLeading = std::max(0, gap) * size / face->units_per_EM;
  return true;
}

// The largest size whose cell is not higher than `height`, and the ascent takes what is left over.
bool FitCell(FontRecord* font, int32_t height) {
  const FT_Face face = font->first.face;
  const int32_t units = std::max(1, face->ascender - face->descender);
  int32_t size = std::max(1, height * face->units_per_EM / units);
  while (TrySize(font, size)) {
    const int32_t over = font->ascent + font->descent - height;
    if (over > 0 && size > 1) {
      --size;
      continue;
    }
    font->ascent -= std::min(over, 0);
    font->internalLeading -= std::min(over, 0);
    return true;
  }
  return false;
}

// Makes letters wider or narrower so that their mean is `width`.
void FitWidth(FontRecord* font, int32_t width) {
  const int32_t mean = AverageWidth(font, Rendition::kSmooth);
  const int64_t wide = std::clamp<int64_t>(int64_t{font->high} * width / mean, 64, int64_t{kHeightMax} * 64);
  SizeFaces(font, int32_t(wide), font->high);
}

bool SizeFor(FontRecord* font, const LOGFONTA& what) {
  const int32_t height = std::clamp(what.lfHeight, -kHeightMax, kHeightMax);
  const bool sized = height < 0 ? TrySize(font, -height) : FitCell(font, height ? height : int32_t{kDefaultHeight});
  if (sized && what.lfWidth > 0) FitWidth(font, what.lfWidth);
  return sized;
}

void SizeBoxes(FontRecord* font, const LOGFONTA& what) {
  const int32_t height = std::clamp(std::abs(std::max(what.lfHeight, -kHeightMax)), 0, kHeightMax);
  const int32_t cell = std::max(4, height ? height : int32_t{kDefaultHeight});
  font->descent = cell / 5;
  font->ascent = cell - font->descent;
}

void FillRecord(FontRecord* font, const LOGFONTA& what) {
  char family[LF_FACESIZE + 1] = {};
  std::memcpy(family, what.lfFaceName, LF_FACESIZE);
  font->style = {family, what.lfWeight >= 600, what.lfItalic != 0};
  font->first = OpenFace(font->style, FindFontFile(font->style));
  if (font->first.face && SizeFor(font, what)) return;
  CloseFace(font->first);
  font->first = {};
  SizeBoxes(font, what);
}

} // namespace

void FreeFont(HFONT font) {
  CloseFace(font->record->first);
  for (const FontFace& other : font->record->standIn) CloseFace(other);
  delete font->record;
  delete font;
}

HFONT SystemFont() {
  static auto* const fonts = new std::map<int32_t, HFONT>; // by the resolution of a display that has been open
  HFONT& font = (*fonts)[DotsPerInch()];
  if (!font) {
    const LOGFONTA what = {};
    font = ::CreateFontIndirectA(&what);
    font->object.stock = true;
  }
  return font;
}

} // namespace framereel

using namespace framereel;

HFONT CreateFontIndirectA(const LOGFONTA* what) {
  if (!what) return nullptr;
  auto* record = new FontRecord{};
  FillRecord(record, *what);
  return new Win32Font{{GdiKind::kFont, false, 0}, record};
}
