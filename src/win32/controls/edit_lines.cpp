// The lines in which an edit control shows its text.
#include "win32/controls/edit_lines.h"

#include <algorithm>

#include "win32/drawing/relief.h"
#include "win32/pixels/utf8.h"

namespace framereel {
namespace {

constexpr size_t kFirstStep = 32; // bytes

std::string_view Part(const EditText& edit, size_t from, size_t to) {
  return std::string_view(edit.text).substr(from, to - from);
}

bool IsBlank(char byte) {
  return byte == ' ' || byte == '\t';
}

// Where the line that begins at `from` is broken, if the text goes on without a line break up to `to`.
size_t BreakAfter(HDC context, const EditText& edit, size_t from, size_t to, int32_t width) {
  if (width <= 0 || from == to) return to;
  const size_t fits = std::max(PlaceBefore(context, edit, {from, to}, width), NextCharacter(edit.text, from));
  if (fits == to) return to;
  // Blanks at the break stay on the line, whether there is room for them or not.
  size_t end = fits;
  while (end < to && IsBlank(edit.text[end])) ++end;
  if (end > fits) return end;
  while (end > from && !IsBlank(edit.text[end - 1])) --end;
  return end > from ? end : fits;
}

} // namespace

std::vector<EditLine> BreakLines(HDC context, const EditText& edit, int32_t width) {
  if (!edit.multiLine) return {{0, edit.text.size()}};
  std::vector<EditLine> lines;
  for (size_t from = 0;;) {
    const size_t found = edit.text.find("\r\n", from);
    const size_t to = std::min(found, edit.text.size());
    do {
      const size_t end = BreakAfter(context, edit, from, to, width);
      lines.push_back({from, end});
      from = end;
    } while (from < to);
    if (found == std::string::npos) return lines;
    from = found + 2;
  }
}

size_t LineOf(const std::vector<EditLine>& lines, size_t place) {
  const auto behind = std::upper_bound(lines.begin(), lines.end(), place,
                                       [](size_t at, const EditLine& line) { return at < line.from; });
  return size_t(behind - lines.begin()) - 1;
}

size_t LineEnd(const EditText& edit, const std::vector<EditLine>& lines, size_t line) {
  const bool broken = line + 1 < lines.size() && lines[line + 1].from == lines[line].to;
  return broken ? PreviousCharacter(edit.text, lines[line].to) : lines[line].to;
}

int32_t XOf(HDC context, const EditText& edit, const EditLine& line, size_t place) {
  return TextWidth(context, Part(edit, line.from, std::clamp(place, line.from, line.to)));
}

size_t PlaceBefore(HDC context, const EditText& edit, const EditLine& line, int32_t x) {
  // The width grows with the text: `low` is a boundary that is not behind x, `high` one that is. Of a long line no more
  // is measured than is needed.
  size_t low = line.from, high = line.from;
  for (size_t step = kFirstStep; high < line.to; step *= 2) {
    high = std::min(line.to, NextCharacter(edit.text, BoundaryAt(edit.text, low + step)));
    if (XOf(context, edit, line, high) > x) break;
    low = high;
  }
  if (low == line.to) return low;
  for (;;) {
    size_t middle = BoundaryAt(edit.text, low + (high - low) / 2);
    if (middle <= low) middle = NextCharacter(edit.text, low);
    if (middle >= high) return low;
    (XOf(context, edit, line, middle) <= x ? low : high) = middle;
  }
}

size_t NearestPlace(HDC context, const EditText& edit, const EditLine& line, int32_t x) {
  const size_t before = PlaceBefore(context, edit, line, x);
  if (before >= line.to) return line.to;
  const size_t after = NextCharacter(edit.text, before);
  const int32_t left = XOf(context, edit, line, before), right = XOf(context, edit, line, after);
  return x - left < right - x ? before : after;
}

} // namespace framereel
