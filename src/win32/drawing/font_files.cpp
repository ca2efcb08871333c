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

struct KnownFile {
  std::string family;
  bool bold, italic; // as asked for
  FontFile file;
};

struct InstalledFonts {
  FT_Library library;
  FcConfig* config;
  std::vector<KnownFile> known; // what has been asked for

  // Fontconfig loses sight of some of its own blocks unless it is told to free them.
  ~InstalledFonts() {
    if (config) FcConfigDestroy(config);
  }
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
FcPattern* NewQuestion(const char* family, bool bold, bool italic) {
  FcPattern* pattern = FcPatternCreate();
  FcCharSet* letters = FcCharSetCreate();
  bool made = pattern && letters;
  for (FcChar32 letter = 0x20; letter < 0x7F; ++letter) made = made && FcCharSetAddChar(letters, letter);
  made = made && FcPatternAddString(pattern, FC_FAMILY, Utf8(family)) &&
         FcPatternAddString(pattern, FC_FAMILY, Utf8("sans-serif")) &&
         FcPatternAddInteger(pattern, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR) &&
         FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN) &&
         FcPatternAddBool(pattern, FC_OUTLINE, FcTrue) && FcPatternAddCharSet(pattern, FC_CHARSET, letters) &&
         FcConfigSubstitute(TheConfig(), pattern, FcMatchPattern);
  if (!made) EndWithoutMemory();
  FcCharSetDestroy(letters);
  FcDefaultSubstitute(pattern);
  return pattern;
}

FontFile AskFontconfig(const char* family, bool bold, bool italic) {
  FontFile file = {};
  if (!TheConfig()) return file;
  FcPattern* question = NewQuestion(family, bold, italic);
  FcResult result = FcResultNoMatch;
  FcPattern* answer = FcFontMatch(TheConfig(), question, &result);
  FcPatternDestroy(question);
  if (!answer && result == FcResultOutOfMemory) EndWithoutMemory();
  FcChar8* path = nullptr;
  if (answer && FcPatternGetString(answer, FC_FILE, 0, &path) == FcResultMatch) {
    int index = 0, weight = FC_WEIGHT_REGULAR, slant = FC_SLANT_ROMAN;
    FcPatternGetInteger(answer, FC_INDEX, 0, &index);
    FcPatternGetInteger(answer, FC_WEIGHT, 0, &weight);
    FcPatternGetInteger(answer, FC_SLANT, 0, &slant);
    file = {reinterpret_cast<const char*>(path), index, weight >= FC_WEIGHT_DEMIBOLD, slant != FC_SLANT_ROMAN};
  }
  if (answer) FcPatternDestroy(answer);
  return file;
}

} // namespace

FontFile FindFontFile(const char* family, bool bold, bool italic) {
  for (const KnownFile& known : installed.known) {
    if (known.bold == bold && known.italic == italic && known.family == family) return known.file;
  }
  FontFile file = AskFontconfig(family, bold, italic);
  installed.known.push_back({family, bold, italic, file});
  return file;
}

FT_Face OpenFace(const FontFile& file) {
  FT_Face face = nullptr;
  if (file.path.empty() || !TheLibrary()) return nullptr;
  if (FT_New_Face(TheLibrary(), file.path.c_str(), file.index, &face) != 0) return nullptr;
  if (FT_IS_SCALABLE(face) && FT_Select_Charmap(face, FT_ENCODING_UNICODE) == 0) return face;
  FT_Done_Face(face);
  return nullptr;
}

void CloseFace(FT_Face face) {
  if (face) FT_Done_Face(face);
}

void ForgetInstalledFonts() {
  if (installed.config) FcConfigDestroy(installed.config);
  installed.config = nullptr;
  installed.known.clear();
}

} // namespace framereel
