// Which fonts are installed: Fontconfig finds the file for a family, FreeType opens it.
#include "win32/drawing/font_files.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_MODULE_H

#include <cstdlib>
#include <vector>

#include "win32/pixels/exhaustion.h"

namespace framereel {
namespace {

// What has been asked for, and the answers.
struct KnownStyle {
  FontStyle style;
  FontFile nearest;
  FcFontSet* all; // from the nearest on, each with letters that those before do not have; null until somebody asks
};

struct InstalledFonts {
  FT_Library library;
  FcConfig* config;
  std::vector<KnownStyle> known;

  void Forget() {
    for (const KnownStyle& each : known) {
      if (each.all) FcFontSetDestroy(each.all);
    }
    known.clear();
    if (config) FcConfigDestroy(config);
    config = nullptr;
  }
  // Fontconfig loses sight of some of its own blocks unless it is told to free them.
  ~InstalledFonts() { Forget(); }
};

InstalledFonts installed;

FcConfig* TheConfig() {
  if (!installed.config) installed.config = FcInitLoadConfigAndFonts();
  return installed.config;
}

// What FreeType has no memory for would be a letter without ink to its callers, so that ends the program.
void* NewBlock(FT_Memory, long size) {
  void* block = ::malloc(size_t(size));
  if (!block) EndWithoutMemory();
  return block;
}

void* ResizeBlock(FT_Memory, long, long size, void* block) {
  void* resized = ::realloc(block, size_t(size));
  if (!resized) EndWithoutMemory();
  return resized;
}

FT_Library TheLibrary() {
  static FT_MemoryRec_ memory = {nullptr, NewBlock, [](FT_Memory, void* block) { ::free(block); }, ResizeBlock};
  if (!installed.library && FT_New_Library(&memory, &installed.library) == 0) {
    FT_Add_Default_Modules(installed.library);
    FT_Set_Default_Properties(installed.library);
  }
  return installed.library;
}

const FcChar8* Utf8(const char* text) {
  return reinterpret_cast<const FcChar8*>(text);
}

// The family, or any without serifs, with an outline and the letters of Latin-1's first half.
FcPattern* NewQuestion(const FontStyle& style) {
  FcPattern* pattern = FcPatternCreate();
  FcCharSet* letters = FcCharSetCreate();
  bool made = pattern && letters;
  for (FcChar32 letter = 0x20; letter < 0x7F; ++letter) made = made && FcCharSetAddChar(letters, letter);
  made = made && FcPatternAddString(pattern, FC_FAMILY, Utf8(style.family.c_str())) &&
         FcPatternAddString(pattern, FC_FAMILY, Utf8("sans-serif")) &&
         FcPatternAddInteger(pattern, FC_WEIGHT, style.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR) &&
         FcPatternAddInteger(pattern, FC_SLANT, style.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN) &&
         FcPatternAddBool(pattern, FC_OUTLINE, FcTrue) && FcPatternAddCharSet(pattern, FC_CHARSET, letters) &&
         FcConfigSubstitute(TheConfig(), pattern, FcMatchPattern);
  if (!made) EndWithoutMemory();
  FcCharSetDestroy(letters);
  FcDefaultSubstitute(pattern);
  return pattern;
}

FontFile FileOf(FcPattern* font) {
  FcChar8* path = nullptr;
  if (FcPatternGetString(font, FC_FILE, 0, &path) != FcResultMatch) return {};
  int index = 0, weight = FC_WEIGHT_REGULAR, slant = FC_SLANT_ROMAN;
  FcPatternGetInteger(font, FC_INDEX, 0, &index);
  FcPatternGetInteger(font, FC_WEIGHT, 0, &weight);
  FcPatternGetInteger(font, FC_SLANT, 0, &slant);
  return {reinterpret_cast<const char*>(path), index, weight >= FC_WEIGHT_DEMIBOLD, slant != FC_SLANT_ROMAN};
}

FontFile AskForNearest(const FontStyle& style) {
  if (!TheConfig()) return {};
  FcPattern* question = NewQuestion(style);
  FcResult result = FcResultNoMatch;
  FcPattern* answer = FcFontMatch(TheConfig(), question, &result);
  FcPatternDestroy(question);
  if (!answer && result == FcResultOutOfMemory) EndWithoutMemory();
  if (!answer) return {};
  FontFile file = FileOf(answer);
  FcPatternDestroy(answer);
  return file;
}

FcFontSet* AskForAll(const FontStyle& style) {
  if (!TheConfig()) return nullptr;
  FcPattern* question = NewQuestion(style);
  FcResult result = FcResultNoMatch;
  FcFontSet* all = FcFontSort(TheConfig(), question, FcTrue, nullptr, &result);
  FcPatternDestroy(question);
  if (!all && result == FcResultOutOfMemory) EndWithoutMemory();
  return all;
}

KnownStyle* Known(const FontStyle& style) {
  for (KnownStyle& known : installed.known) {
    const FontStyle& other = known.style;
    if (other.bold == style.bold && other.italic == style.italic && other.family == style.family) return &known;
  }
  installed.known.push_back({style, AskForNearest(style), nullptr});
  return &installed.known.back();
}

// With an outline: pictures of letters come in their own sizes.
bool Has(FcPattern* font, char32_t letter) {
  FcBool outline = FcFalse;
  FcCharSet* letters = nullptr;
  FcPatternGetBool(font, FC_OUTLINE, 0, &outline);
  return outline && FcPatternGetCharSet(font, FC_CHARSET, 0, &letters) == FcResultMatch &&
         FcCharSetHasChar(letters, letter);
}

} // namespace

FontFile FindFontFile(const FontStyle& style) {
  return Known(style)->nearest;
}

FontFile FindFontFileWith(const FontStyle& style, char32_t letter) {
  KnownStyle* known = Known(style);
  if (!known->all) known->all = AskForAll(style);
  for (int i = 0; known->all && i < known->all->nfont; ++i) {
    if (Has(known->all->fonts[i], letter)) return FileOf(known->all->fonts[i]);
  }
  return {};
}

FontFace OpenFace(const FontStyle& style, const FontFile& file) {
  FT_Face face = nullptr;
  if (file.path.empty() || !TheLibrary()) return {};
  if (FT_New_Face(TheLibrary(), file.path.c_str(), file.index, &face) != 0) return {};
  if (FT_IS_SCALABLE(face) && FT_Select_Charmap(face, FT_ENCODING_UNICODE) == 0) {
    return {face, style.bold && !file.bold, style.italic && !file.italic};
  }
  FT_Done_Face(face);
  return {};
}

void CloseFace(const FontFace& font) {
  if (font.face) FT_Done_Face(font.face);
}

void ForgetInstalledFonts() {
  installed.Forget();
}

} // namespace framereel
