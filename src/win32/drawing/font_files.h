// Which fonts are installed: Fontconfig finds the file for a family, FreeType opens it. Internal to the layer.
#pragma once

#include <cstdint>
#include <string>

using FT_Face = struct FT_FaceRec_*;

namespace framereel {

struct FontStyle {
  std::string family; // as asked for; another stands in for one that is not there
  bool bold, italic;
};

struct FontFile {
  std::string path; // empty: none
  int32_t index;    // of the face in the file
  bool bold, italic;
};
// The file that comes nearest to a style.
FontFile FindFontFile(const FontStyle& style);
// The nearest one that has the letter. Fontconfig is asked once for a style, whatever the letters.
FontFile FindFontFileWith(const FontStyle& style, char32_t letter);

// A face, and what its file does not have of the style, to be made from what it has.
struct FontFace {
  FT_Face face; // null: none
  bool embolden, slant;
};
// The face in a file; CloseFace ends it, and does nothing with none.
FontFace OpenFace(const FontStyle& style, const FontFile& file);
void CloseFace(const FontFace& font);

// Looks anew for what is installed; the next font that is made knows of it.
void ForgetInstalledFonts();

} // namespace framereel
