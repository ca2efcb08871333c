// Plain string operations, and the program's numbered texts.
#include "core/strings.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "core/app_strings.h"
#include "resources/string_table.h"
#include "win32/win32.h"

namespace framereel {
namespace {

// The contents of a new string, which is released.
std::string Owned(char* s) {
  std::string copy = s;
  StrFree(s);
  return copy;
}

TEST(Strings, ComparingWithoutCaseLooksAtAsciiLettersOnly) {
  EXPECT_TRUE(StrEqualNoCase("Gif9", "gIF9"));
  EXPECT_FALSE(StrEqualNoCase("gif", "gi"));
  EXPECT_FALSE(StrEqualNoCase("gi", "gif"));
  EXPECT_FALSE(StrEqualNoCase("@[", "`{"));
  EXPECT_FALSE(StrEqualNoCase("\xE4", "\xC4"));
  EXPECT_FALSE(StrEqual("Gif", "gif"));
}

TEST(Strings, CopiesHoldWhatWasAskedForAndNoMore) {
  char out[8] = "#######";
  EXPECT_EQ(StrCopyEnd("ab", out), out + 2);
  EXPECT_EQ(StrCopyN("cdefgh", out + 2, 2), out + 4);
  EXPECT_STREQ(out, "abcd");
  EXPECT_EQ(out[5], '#');
  EXPECT_EQ(Owned(StrDup("abc")), "abc");
  EXPECT_EQ(Owned(StrDupN("abc", 2)), "ab");
  EXPECT_EQ(Owned(StrConcat("ab", "c")), "abc");
  const char* end = nullptr;
  EXPECT_EQ(Owned(StrConcatList("a", "", "bc", "d", end)), "abcd");
  EXPECT_EQ(Owned(StrConcatList(end)), "");
}

TEST(Strings, SearchesAnswerPlacesOrNull) {
  const char* s = "a.b.c";
  EXPECT_EQ(StrFind(s, '\0'), s + 5);
  EXPECT_EQ(StrFind(s, 'x'), nullptr);
  EXPECT_EQ(StrFindLast(s, '.'), s + 3);
  EXPECT_EQ(StrFindNth(s, 1, '.'), s + 1);
  EXPECT_EQ(StrFindNth(s, 2, '.'), s + 3);
  EXPECT_EQ(StrFindNth(s, 3, '.'), nullptr);
  EXPECT_EQ(StrFindNth(s, 0, '.'), nullptr);
  EXPECT_EQ(StrFindNth(s, 2, '\0'), nullptr);
  EXPECT_EQ(StrFindEnd(s, 'c'), s + 4);
  EXPECT_EQ(StrFindEnd(s, 'x'), s + 5);
  EXPECT_EQ(StrFindNoCase(s, 'B'), s + 2);
  EXPECT_EQ(StrFindNoCase("ABC", 'b')[0], 'B');
  EXPECT_EQ(StrFindNoCase(s, 'x'), nullptr);
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
  for (uint16_t n = 0; n < 5; ++n) EXPECT_GT(StrLength(AppAlertString(n)), 0u) << n;
  EXPECT_STREQ(AppAlertString(5), "IJString Error");
}

TEST(StringResources, AreCutToTheBufferAndMissingOnesAreEmpty) {
  char buffer[10] = "#";
  EXPECT_EQ(::LoadStringA(nullptr, 100, buffer, 10), 9);
  EXPECT_STREQ(buffer, "Framereel");
  EXPECT_EQ(::LoadStringA(nullptr, 100, buffer, 5), 4);
  EXPECT_STREQ(buffer, "Fram");
  EXPECT_EQ(::LoadStringA(nullptr, 100 + 0x10000, buffer, 5), 0);
  EXPECT_STREQ(buffer, "");
  EXPECT_EQ(::LoadStringA(nullptr, 100, buffer, 1), 0);
  EXPECT_EQ(::LoadStringA(nullptr, 100, buffer, 0), 0);
}

TEST(StringResources, AllFitTheBufferThatReadsThem) {
  for (uint32_t id = 0; id <= UINT16_MAX; ++id) {
    const char* text = FindStringResource(static_cast<uint16_t>(id));
    EXPECT_LT(text ? std::strlen(text) : 0, 255u) << id;
  }
}

} // namespace
} // namespace framereel
