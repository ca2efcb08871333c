// Where characters of UTF-8 begin and end, and which they are.
#include "win32/pixels/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace framereel {
namespace {

using Places = std::vector<size_t>;

TEST(Utf8, KnowsWholeCharactersBothWaysAndTakesStrayBytesForOneEach) {
  struct Case {
    std::string text;
    Places boundaries;
  };
  const Case cases[] = {
      {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", {0, 1, 3, 6, 10}},
      {"\xC3z\xE2\x82", {0, 1, 2, 3, 4}},                         // cut short
      {"\xA9\xC0\x80\xFF", {0, 1, 2, 3, 4}},                      // no beginning, a longer form, no byte of UTF-8
      {"\xE0\x9F\xBF\xED\xA0\x80", {0, 1, 2, 3, 4, 5, 6}},        // a longer form, half of a pair of UTF-16
      {"\xF0\x8F\xBF\xBF\xF4\x90\x80", {0, 1, 2, 3, 4, 5, 6, 7}}, // a longer form, beyond the last character
      {"\xF4\x8F\xBF\xBF\xED\x9F\xBF\x80\x80", {0, 4, 7, 8, 9}},
  };
  for (const Case& one : cases) {
    Places forward = {0}, back = {one.text.size()};
    while (forward.back() < one.text.size()) forward.push_back(NextCharacter(one.text, forward.back()));
    while (back.back() > 0) back.push_back(PreviousCharacter(one.text, back.back()));
    EXPECT_EQ(forward, one.boundaries);
    EXPECT_EQ(Places(back.rbegin(), back.rend()), one.boundaries);
    for (size_t at = 0; at <= one.text.size(); ++at) {
      EXPECT_EQ(BoundaryAt(one.text, at), *(std::upper_bound(forward.begin(), forward.end(), at) - 1));
    }
  }
  EXPECT_EQ(WellFormed(cases[1].text), "\uFFFDz\uFFFD\uFFFD");
  EXPECT_EQ(Latin1Of("a\u00E9\u20AC\x80"), "a\xE9??");
  EXPECT_EQ(Utf8OfLatin1("a\xE9"), "a\u00E9");
  for (const char32_t code : {0x00, 0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF}) {
    const std::string bytes = Utf8Of(code);
    EXPECT_EQ(CodePointAt(bytes, 0).code, code);
    EXPECT_EQ(CodePointAt(bytes, 0).length, bytes.size());
  }
}

} // namespace
} // namespace framereel
