// Text that is shortened to what has room.
#include "win32/drawing/fitted_text.h"

#include <numeric>
#include <vector>

#include "win32/drawing/relief.h"
#include "win32/pixels/utf8.h"

namespace framereel {
namespace {

constexpr const char* kDots = "...";

// Where its characters begin, and its end.
std::vector<size_t> BoundariesOf(std::string_view text) {
  std::vector<size_t> all = {0};
  while (all.back() < text.size()) all.push_back(NextCharacter(text, all.back()));
  return all;
}

} // namespace

std::string FittedText(HDC context, std::string_view text, int32_t width, TextCut cut) {
  if (TextWidth(context, text) <= width) return std::string(text);
  const std::vector<size_t> boundaries = BoundariesOf(text);
  const size_t last = boundaries.size() - 1;
  const auto keeping = [&](size_t characters) {
    const size_t behind = cut == TextCut::kMiddle ? characters / 2 : 0;
    return std::string(text.substr(0, boundaries[characters - behind])) + kDots +
           std::string(text.substr(boundaries[last - behind]));
  };
  size_t unknown = 0, tooMany = last; // all below `unknown` fit; with none, not even the dots have room
  while (unknown < tooMany) {
    const size_t characters = std::midpoint(unknown, tooMany);
    if (TextWidth(context, keeping(characters)) <= width) {
      unknown = characters + 1;
    } else {
      tooMany = characters;
    }
  }
  return tooMany == 0 ? "" : keeping(tooMany - 1);
}

} // namespace framereel
