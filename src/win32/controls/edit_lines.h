// The lines in which an edit control shows its text, as a font measures it. Internal to the layer.
//
// The font is the one in the context. Places count bytes of the text, x pixels from the left end of a line.
#pragma once

#include <vector>

#include "win32/controls/edit_text.h"
#include "win32/win32_types.h"

namespace framereel {

struct EditLine {
  size_t from, to; // without its CR LF
};

// There is at least one. Text of several lines is broken at its line breaks and, where a line is wider than `width`
// pixels, behind the last blanks that still begin within it; a word that is wider by itself is cut. A line holds at
// least one character. A width of 0 breaks nothing.
std::vector<EditLine> BreakLines(HDC context, const EditText& edit, int32_t width);

// The line that shows the place; the later one of the two that an end of a broken line is the beginning of.
size_t LineOf(const std::vector<EditLine>& lines, size_t place);
// The last place in the line that it shows itself.
size_t LineEnd(const EditText& edit, const std::vector<EditLine>& lines, size_t line);
int32_t XOf(HDC context, const EditText& edit, const EditLine& line, size_t place);
// The boundary of characters in the line that lies nearest to x, or the last one that is not behind it.
size_t NearestPlace(HDC context, const EditText& edit, const EditLine& line, int32_t x);
size_t PlaceBefore(HDC context, const EditText& edit, const EditLine& line, int32_t x);

} // namespace framereel
