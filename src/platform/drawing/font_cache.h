// Fonts of the toolkit, by family, size, style and scale. Few are open at a time; a closed one keeps its metrics and
// opens again when it is used.
#pragma once

#include <cstdint>

#include "core/arrays.h"
#include "core/list.h"
#include "win32/win32_types.h"

namespace framereel {

enum FontStyle : uint16_t { kFontItalic = 0x1, kFontOutlined = 0x2, kFontBold = 0x4 };

struct FontFamily {
  char* name;      // owned
  GrowArray fonts; // of Font pointers, owned
};

struct Font {
  FontFamily* family;
  uint16_t size;                       // of the cell, in pixels at 96 to the inch
  uint16_t style;                      // of FontStyle
  double scale;                        // horizontal; 1.0 normally
  uint32_t references;                 // DrawStates that hold it
  uint16_t ascent, descent;            // pixels
  uint16_t leadingAbove, leadingBelow; // between lines, in halves
  HFONT handle;                        // null while closed
  int32_t width;                       // lfWidth: 0 at scale 1.0
  uint16_t selectCount;                // how often it is selected now
};

void FontsStartUp();
// Frees all families and fonts.
void FontsShutDown();

// The family of that name, made when it is new; null means "MS Sans Serif". Null when the platform has no font for it.
FontFamily* GetFontFamily(const char* name);
// The font, with a reference for the caller; null when the platform gives none.
Font* GetFont(FontFamily* family, uint16_t size, uint16_t style, double scale);
void ReleaseFont(Font* font); // drops a reference; null does nothing

// Selects the font into the context, opening it where needed. Null in either does nothing.
void SelectFont(HDC context, Font* font);
// For native controls, which draw with a font by themselves: it stays open until it has been let go as often. Answers
// its handle, null when it cannot be opened. Null does nothing.
HFONT HoldFont(Font* font);
void LetGoOfFont(Font* font);
// Puts back the font that the context held before the first selection.
void DeselectFont(HDC context);

} // namespace framereel
