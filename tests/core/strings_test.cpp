// Plain string operations against the language's own strings, and the program's numbered texts.
#include "core/strings.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "core/app_strings.h"
#include "resources/string_table.h"
#include "support/dice.h"

namespace framereel {
namespace {

std::string Owned(char* s) {
  std::string copy = s;
  StrFree(s);
  return copy;
}

std::string Upper(std::string s) {
  for (char& c : s) c = 'a' <= c && c <= 'z' ? char(c - 32) : c;
  return s;
}

TEST(Strings, AreAsTheLanguagesOwn) {
  Dice dice(1);
  const std::string letters("aAzZ.@`[{\xE4\xC4\0", 12);
  for (int round = 0; round < 5000 && !HasFailure(); ++round) {
    std::string a, b;
    for (std::string* s : {&a, &b}) {
      for (int i = dice.Below(5); i > 0; --i) *s += letters[size_t(dice.Below(round % 2 ? 2 : 11))];
    }
    const char c = letters[size_t(dice.Below(12))], *s = a.c_str(), *end = s + a.size();
    const size_t n = size_t(dice.Below(int(a.size()) + 1));
    // With its terminator, which the searches find too.
    const std::string whole(s, a.size() + 1);
    const auto at = [s](size_t place) { return place == std::string::npos ? nullptr : s + place; };
    EXPECT_EQ(StrFind(s, c), at(whole.find(c)));
    EXPECT_EQ(StrFindLast(s, c), at(whole.rfind(c)));
    EXPECT_EQ(StrFindEnd(s, c), whole.find(c) < a.size() ? s + whole.find(c) : end);
    EXPECT_EQ(StrFindNoCase(s, c), at(Upper(whole).find(Upper({c})[0])));
    EXPECT_EQ(StrEqual(s, b.c_str()), a == b);
    EXPECT_EQ(StrEqualNoCase(s, b.c_str()), Upper(a) == Upper(b)) << a << " " << b;
    EXPECT_EQ(Owned(StrDup(s)) + Owned(StrDupN(s, n)), a + a.substr(0, n));
    EXPECT_EQ(Owned(StrConcat(s, b.c_str())), a + b);
    EXPECT_EQ(Owned(StrConcatList(s, b.c_str(), s, at(std::string::npos), "more")), a + b + a);
    char out[12] = "###########";
    EXPECT_EQ(StrCopyN(b.c_str(), StrCopyEnd(s, out), b.size()), out + a.size() + b.size());
    EXPECT_EQ(std::string(out, 11), (a + b + '\0').append("###########").substr(0, 11));
  }
}

// ---- Numbered texts -----------------------------------------------------------------------------------------------

TEST(AppStrings, NumbersLeadToTheTextsOfTheirGroup) {
  EXPECT_STREQ(AppString(170), "Yes"); // the second group first: the one ahead of it is loaded on the way
  const char* text = AppString(23);
  EXPECT_STREQ(text, "%d% Frames (%s%)");
  EXPECT_STREQ(AppString(171), "No");
  EXPECT_STREQ(AppString(25), "");
  for (uint16_t n : {172, 199, 200, 3200, 3204, 65'535, 172}) EXPECT_STREQ(AppString(n), "IJString Error") << n;
  EXPECT_EQ(AppString(23), text);
  for (uint16_t n = 0; n < 6; ++n) EXPECT_GT(StrLength(AppAlertString(n)), 0u) << n;
  EXPECT_STREQ(AppAlertString(6), "IJString Error");
  for (uint32_t id = 0; id <= UINT16_MAX; ++id) { // each fits the buffer that it is loaded into
    const char* resource = FindStringResource(uint16_t(id));
    EXPECT_LT(resource ? std::strlen(resource) : 0, 255u) << id;
  }
}

} // namespace
} // namespace framereel
