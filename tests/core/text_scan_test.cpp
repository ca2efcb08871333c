// The scanner: what its directives read and leave, and how a run goes on and ends.
#include "core/text_scan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/strings.h"
#include "core/temporary_blocks.h"
#include "core/text_format.h"
#include "core/toolkit_init.h"

namespace framereel {
namespace {

TEST(TextScan, ReadsIntegersByTheirModifiers) {
  const struct {
    const char *input, *format, *stored; // into four words that held -1, in hexadecimal
    bool succeeds = true;
  } cases[] = {
      {"  -12;+12;4294967295;-fFg", "%d%;%d%;%u%;%x%g", "FFFFFFF4 C FFFFFFFF FFFFFF01"},
      {"300;70000;70000;-1", "%db%;%ds%;%dl%;%xb%", "FFFFFF2C FFFF1170 11170 FFFFFFFF"},
      {"12345678901234", "%d%%dll3%%dbl%", "499602D2 7B FFFFFF04 FFFFFFFF"}, // ten digits, unless told otherwise
      {"5;0007;-- 7;  7;7", "%dlw%;%dls0%;%dls-%;%dlqx%;%dls%", "7 7 7 7"},
      {" 7", "%dlx%", "0 FFFFFFFF FFFFFFFF FFFFFFFF", false},
      {"1;-1", "%u%;%u%", "1 0 FFFFFFFF FFFFFFFF", false},
      {"-;", "%d%;", "0 FFFFFFFF FFFFFFFF FFFFFFFF", false},
  };
  for (const auto& one : cases) {
    uint32_t words[] = {UINT32_MAX, UINT32_MAX, UINT32_MAX, UINT32_MAX};
    char text[40];
    EXPECT_EQ(ScanText(one.input, one.format, words, words + 1, words + 2, words + 3), one.succeeds) << one.input;
    EXPECT_STREQ(FormatInto(text, "%x% %x% %x% %x%", words[0], words[1], words[2], words[3]), one.stored) << one.input;
  }
}

TEST(TextScan, ReadsFractionsOfAnyLength) {
  double a = -1, b = 0, c = 0, d = 0;
  EXPECT_TRUE(ScanText(" -12.25;+.5;3.;5;07x", "%f%;%f%;%f%;%fw%;%fx%x", &a, &b, &c, &d));
  EXPECT_TRUE(a == -12.25 && b == 0.5 && c == 3 && d == 7);
  EXPECT_FALSE(ScanText("x", "%f%", &a));
  const std::string third = "0." + std::string(1000, '3'), huge(1000, '9');
  EXPECT_TRUE(ScanText(third.c_str(), "%f%", &a) && ScanText(huge.c_str(), "%f%", &b));
  EXPECT_NEAR(a, 1 / 3.0, 1e-15);
  EXPECT_TRUE(std::isinf(b));
}

TEST(TextScan, GoesOnAsLongAsItsFormatFits) {
  const struct {
    const char *input, *format;
    bool succeeds;
    const char* stored; // at three addresses, a byte apart
  } cases[] = {
      {"rest", "", true, "...."},
      {"", "a", false, "...."},
      {"25%", "%db%%", true, "\x19..."},
      {"25", "%db%%", false, "\x19..."},
      {"%", "%%%", false, "...."},
      {" ", "%c%", true, " ..."},
      {"", "%c%", false, "...."},
      {"1,2 3x", "%db%,%dbw% %db%%c%", true, "\x01\x03x."},
      {"1,2;3", "%db%,%db%,%db%", false, "\x01\x02.."},
      {"  ke val", "%s% %s%", true, "kval"},
      {"--a b=c", "%ss-d=%=%s%", true, "ac"},
      {"=", "%sd=%", false, "...."}, // an empty field
      {"a b", "%sw% %sqw%", true, "b"},
      {"ab", "%sd%", true, "ab"},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(std::string(one.input) + " by " + one.format);
    char memory[8] = "....";
    EXPECT_EQ(ScanText(one.input, one.format, memory, memory + 1, memory + 2), one.succeeds);
    EXPECT_STREQ(memory, one.stored);
  }
}

TEST(TextScan, MakesStringsAndIntegersWhenAskedTo) {
  ToolkitInit();
  TempScopeBegin();
  char *owned = nullptr, *temporary = nullptr, *none = nullptr;
  EXPECT_FALSE(ScanText("own temp", "%sa% %st% %sa%", &owned, &temporary, &none));
  EXPECT_STREQ(owned, "own");
  EXPECT_STREQ(temporary, "temp");
  EXPECT_EQ(none, nullptr);
  StrFree(owned);
  TempScopeEnd();
  EXPECT_TRUE(ScanInt(" -12 rest") == -12 && ScanInt("") == 0);
}

} // namespace
} // namespace framereel
