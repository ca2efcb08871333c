// Which fonts are installed: Fontconfig finds the file for a family, FreeType opens it. Internal to the layer.
#pragma once

#include <cstdint>
#include <string>

using FT_Face = struct FT_FaceRec_*;

namespace framereel {

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

} // namespace framereel
