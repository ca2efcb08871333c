// Texts: string operations, what the directives of the format language write and read back, and the numbered texts.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "core/app_strings.h"
#include "core/strings.h"
#include "core/temporary_blocks.h"
#include "core/text_format.h"
#include "core/text_scan.h"
#include "core/toolkit_init.h"
#include "resources/string_table.h"

namespace framereel {
namespace {

// ---- Strings ------------------------------------------------------------------------------------------------------

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

// ---- The format language ------------------------------------------------------------------------------------------

// The text, by way of a new string: its block is measured to the byte, which the sanitizers watch.
template <typename... Argument> std::string Formatted(const std::string& format, Argument... arguments) {
  char buffer[2048];
  EXPECT_EQ(FormatInto(buffer, format.c_str(), arguments...), buffer);
  char* text = FormatNew(format.c_str(), arguments...);
  EXPECT_STREQ(text, buffer) << format;
  StrFree(text);
  return buffer;
}

TEST(TextFormat, WritesWhatItsFormatSays) {
  const std::pair<std::string, std::string> cases[] = {
      {Formatted("%d%|%u%|%x%|%d%", INT32_MIN, -1, -1, 0), "-2147483648|4294967295|FFFFFFFF|0"},
      {Formatted("%d05%|%x04%|%us*3%|%d0,2%|%d3,v%", -42, 255, 7, 12345, 1, 6789), "-00042|00FF|**7|45|9"},
      {Formatted("%f%|%f%|%f+%|%f1.2,2%|%f0.0,0%|%f%", -0.25, 0.3, 2.5, 9.996, 1.5, 1e22),
       "-0.25|0.3000000000|+2.5|10.00|2|10000000000000000000000"},
      {Formatted("%s%:%s05,2%|%s%", "a", "abc", ""), "a:abc|"},
      {Formatted("%c%%c%100%%%, %%%%d%", 'a', 0x1E2, 5), "a\xE2" + std::string("100%, %5")},
      {Formatted("%s%", std::string(1500, 'x').c_str()), std::string(1500, 'x')},
      {Formatted("a%q7,v%b%%swallowed%%c%%d03", 65, 6) + Formatted("%"), "ab%A006"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(text, expected);
  char buffer[20] = "%d5%%s%."; // written over its format
  EXPECT_STREQ(FormatInto(buffer, buffer, 12, "ab"), "   12ab.");
  EXPECT_STREQ(FormatInt(buffer, INT32_MIN), "-2147483648");
}

TEST(TextScan, ReadsNumbersAsLongAsItsFormatFits) {
  const struct {
    const char *input, *format, *stored; // into three words that held -1, in hexadecimal
    bool succeeds = true;
  } cases[] = {
      {"1000 1099 more", "%dl% %dl%", "3E8 44B FFFFFFFF"},
      {"  -12,+70000 4294967295x", "%d%,%ds% %u%x", "FFFFFFF4 FFFF1170 FFFFFFFF"},
      {"300;-fFg", "%db%;%x%g", "FFFFFF2C FFFFFF01 FFFFFFFF"},
      {"12345678901;007122", "%d%1;%dll3s0%2", "499602D2 2C8 FFFFFFFF"}, // ten digits, unless told otherwise
      {"5;7%", "%dw%;%d%%", "7 FFFFFFFF FFFFFFFF"},
      {"25", "%d%%", "19 FFFFFFFF FFFFFFFF", false},
      {"1;2", "%d%;%d%;%d%", "1 2 FFFFFFFF", false},
      {"1;-1", "%u%;%u%", "1 0 FFFFFFFF", false},
      {" 7", "%dx%", "0 FFFFFFFF FFFFFFFF", false},
      {"-;", "%d%;", "0 FFFFFFFF FFFFFFFF", false},
  };
  for (const auto& one : cases) {
    uint32_t words[] = {UINT32_MAX, UINT32_MAX, UINT32_MAX};
    EXPECT_EQ(ScanText(one.input, one.format, words, words + 1, words + 2), one.succeeds) << one.input;
    EXPECT_EQ(Formatted("%x% %x% %x%", words[0], words[1], words[2]), one.stored) << one.input;
  }
  EXPECT_TRUE(ScanInt(" -12 rest") == -12 && ScanInt("") == 0);
}

TEST(TextScan, ReadsFractionsBytesAndStringsItMakesWhenAskedTo) {
  ToolkitInit();
  TempScopeBegin();
  double fraction = 0;
  char byte = '-', field[] = "####", *owned = nullptr, *temporary = nullptr;
  EXPECT_FALSE(ScanText("-12.25 x--ab=own not temp", "%f% %c%%ss-d=%=%sa% %sw% %st% %s%", &fraction, &byte, field,
                        &owned, &temporary, field));
  EXPECT_TRUE(fraction == -12.25 && byte == 'x');
  EXPECT_STREQ(field, "ab");
  EXPECT_STREQ(owned, "own");
  EXPECT_STREQ(temporary, "temp");
  StrFree(owned);
  TempScopeEnd();
}

// ---- Numbered texts -----------------------------------------------------------------------------------------------

TEST(AppStrings, NumbersLeadToTheTextsOfTheirGroup) {
  EXPECT_STREQ(AppString(170), "Yes"); // the second group first: the one ahead of it is loaded on the way
  const char* text = AppString(23);
  EXPECT_STREQ(text, "%d% Frames (%s%)");
  for (uint16_t n : {172, 199, 200, 3200, 3204, 65'535, 172}) EXPECT_STREQ(AppString(n), "IJString Error") << n;
  EXPECT_EQ(AppString(23), text);
  EXPECT_STREQ(AppAlertString(1), "Quit");
  EXPECT_STREQ(AppAlertString(6), "IJString Error");
  for (uint32_t id = 0; id <= UINT16_MAX; ++id) { // each fits the buffer that it is loaded into
    const char* resource = FindStringResource(uint16_t(id));
    EXPECT_LT(resource ? std::strlen(resource) : 0, 255u) << id;
  }
}

} // namespace
} // namespace framereel
