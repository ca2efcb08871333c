// Where characters of UTF-8 begin and end.
#include "win32/system/utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace framereel {
namespace {

TEST(Utf8, KnowsWholeCharactersAndTakesStrayBytesForOneEach) {
  struct Case {
    std::string text;
    std::vector<size_t> lengths;
  };
  const Case cases[] = {
      {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", {1, 2, 3, 4}},
      {"\xC3", {1}},                                    // cut off
      {"\xE2\x82z", {1, 1, 1}},                         // cut short
      {"\xA9\xC0\x80\xFF", {1, 1, 1, 1}},               // no beginning, a longer form, no byte of UTF-8
      {"\xE0\x9F\xBF\xED\xA0\x80", {1, 1, 1, 1, 1, 1}}, // a longer form, half of a pair of UTF-16
      {"\xF0\x8F\xBF\xBF\xF4\x90\x80\x80", std::vector<size_t>(8, 1)},
      {"\xF4\x8F\xBF\xBF\xED\x9F\xBF", {4, 3}},
  };
  for (const Case& one : cases) {
    std::vector<size_t> lengths;
    for (size_t at = 0; at < one.text.size(); at = NextCharacter(one.text, at)) {
      lengths.push_back(CharacterLength(one.text, at));
    }
    EXPECT_EQ(lengths, one.lengths);
  }
  EXPECT_TRUE(IsBegunCharacter("\xF0\x9F\x98"));
  for (const char* whole : {"", "a", "\xA9", "\xC3\xA9", "\xF4\x90"}) EXPECT_FALSE(IsBegunCharacter(whole));
}

TEST(Utf8, MeetsTheSameBoundariesBothWays) {
  std::mt19937 random(1);
  const std::string bytes = "a \x80\xA9\xBF\xC3\xE2\x82\xAC\xF0\x9F\x98\xED";
  for (int round = 0; round < 5000; ++round) {
    std::string text;
    for (size_t i = random() % 12; i > 0; --i) text += bytes[random() % bytes.size()];
    std::vector<size_t> forward = {0}, back = {text.size()};
    while (forward.back() < text.size()) forward.push_back(NextCharacter(text, forward.back()));
    while (back.back() > 0) back.push_back(PreviousCharacter(text, back.back()));
    ASSERT_EQ(forward, std::vector<size_t>(back.rbegin(), back.rend())) << testing::PrintToString(text);
    for (size_t at = 0; at <= text.size(); ++at) {
      ASSERT_EQ(BoundaryAt(text, at), *(std::upper_bound(forward.begin(), forward.end(), at) - 1));
    }
  }
}

} // namespace
} // namespace framereel
