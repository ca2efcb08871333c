// Plain string operations against the language's own strings, and the program's numbered texts.
#include "core/strings.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "core/app_strings.h"
#include "resources/string_table.h"

namespace framereel {
namespace {

std::string Owned(char* s) {
  std::string copy = s;
  StrFree(s);
  return copy;
}

TEST(Strings, AreAsTheLanguagesOwn) {
  const char *s = "aZ.a\xE4@", *none = nullptr;
  EXPECT_TRUE(StrFind(s, 'a') == s && StrFind(s, '\0') == s + 6 && StrFind(s, 'A') == none);
  EXPECT_TRUE(StrFindLast(s, 'a') == s + 3 && StrFindLast(s, '\0') == s + 6 && StrFindLast(s, 'b') == none);
  EXPECT_TRUE(StrFindEnd(s, '.') == s + 2 && StrFindEnd(s, ',') == s + 6);
  EXPECT_TRUE(StrFindNoCase(s, 'z') == s + 1 && StrFindNoCase(s, 'A') == s && StrFindNoCase(s, '`') == none);
  EXPECT_TRUE(StrFindNoCase(s, '\0') == s + 6 && StrFindNoCase(s, '\xC4') == none); // letters of ASCII alone
  const char* texts[] = {"", "a", "A", "ab", "a@", "a`", "AB"};
  for (int i = 0; i < 49; ++i) {
    const char *one = texts[i / 7], *other = texts[i % 7];
    EXPECT_EQ(StrEqual(one, other), one == other);
    EXPECT_EQ(StrEqualNoCase(one, other), ::strcasecmp(one, other) == 0) << one << " " << other;
  }
  EXPECT_EQ(Owned(StrDup(s)) + Owned(StrDupN(s, 2)) + Owned(StrConcat(s, "b")), "aZ.a\xE4@aZaZ.a\xE4@b");
  EXPECT_EQ(Owned(StrConcatList("a", "", "bc", none, "more")), "abc");
  char out[] = "########";
  EXPECT_EQ(StrCopyN("bcd", StrCopyEnd("aZ", out), 2), out + 4);
  EXPECT_EQ(std::string(out, 8), std::string("aZbc\0###", 8));
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
