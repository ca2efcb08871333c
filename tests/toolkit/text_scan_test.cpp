// The scanner: what each directive reads and stores, and how a run tells its end.
#include "toolkit/core/text_scan.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "toolkit/core/memory.h"
#include "toolkit/core/strings.h"
#include "toolkit/core/text_format.h"
#include "toolkit/core/toolkit_init.h"

namespace framereel {
namespace {

struct IntegerCase {
  const char* input;
  const char* format;
  bool succeeds;
  int32_t stored;
  uint32_t consumed;
};

TEST(TextScan, ReadsIntegers) {
  const IntegerCase cases[] = {
      {"7x", "%d%", true, 7, 1},
      {"x", "%d%", false, 0, 0},
      {"", "%d%", false, 0, 0},
      {"  -42", "%d%", true, -42, 5},
      {"+42", "%d%", true, 42, 3},
      {"-", "%d%", false, 0, 1},
      {"- 4", "%d%", false, 0, 1},
      {"\t4", "%d%", false, 0, 0},
      {"-2147483648", "%d%", true, INT32_MIN, 11},
      {"4294967295", "%d%", true, -1, 10},
      {"9999999999", "%d%", true, 1410065407, 10},
      {"12345678901", "%d%", true, 1234567890, 10},
      {"1234567", "%dll5%", true, 12345, 5},
      {"1234567", "%dl5%", true, 1234567, 7},
      {"123456789012", "%dll12%", true, -1097262572, 12},
      {"1234567890123", "%dll%", true, 1234567890, 10},
      {"1234567890123", "%dll0%", true, 1234567890, 10},
      {"-12345", "%dll2%", true, -12, 3},
      {",, 5", "%dls,%", true, 5, 4},
      {" ,5", "%dls,%", false, 0, 1},
      {" 5", "%dlx%", false, 0, 0},
      {"5", "%dlx%", true, 5, 1},
      {"5", "%dlqx%", true, 5, 1},
      {"4000000000", "%u%", true, -294967296, 10},
      {"-1", "%u%", false, 0, 0},
      {" 7", "%u%", true, 7, 2},
      {"ffFF", "%x%", true, 0xFFFF, 4},
      {"-a", "%x%", true, -10, 2},
      {"0x1f", "%x%", true, 0, 1},
      {"g", "%x%", false, 0, 0},
      {"1234", "%xll2%", true, 0x12, 2},
  };
  for (const IntegerCase& one : cases) {
    int32_t stored = 99;
    EXPECT_EQ(ScanText(one.input, one.format, &stored), one.succeeds) << one.input << " by " << one.format;
    EXPECT_EQ(stored, one.stored) << one.input << " by " << one.format;
    EXPECT_EQ(LastScan().consumed, one.consumed) << one.input << " by " << one.format;
    EXPECT_EQ(LastScan().matched, one.succeeds ? 1u : 0u);
  }
}

TEST(TextScan, StoresTheSizeOfItsLetterAndNoMore) {
  uint8_t memory[16];
  std::memset(memory, 0xEE, sizeof memory);
  EXPECT_TRUE(ScanText("258 65537 3", "%db% %ds% %d%", memory, memory + 4, memory + 8));
  const uint8_t expected[16] = {2, 0xEE, 0xEE, 0xEE, 1, 0, 0xEE, 0xEE, 3, 0, 0, 0, 0xEE, 0xEE, 0xEE, 0xEE};
  EXPECT_EQ(std::memcmp(memory, expected, sizeof memory), 0);
}

TEST(TextScan, ReadsWhatTheFormatLanguageWrote) {
  char text[64];
  FormatInto(text, "%ds%,%ds% %ds%x%ds%", -10, 20, 300, 32767);
  int16_t left = 0, top = 0, width = 0, height = 0;
  EXPECT_TRUE(ScanText(text, "%ds%,%ds% %ds%x%ds%", &left, &top, &width, &height));
  EXPECT_EQ(left, -10);
  EXPECT_EQ(top, 20);
  EXPECT_EQ(width, 300);
  EXPECT_EQ(height, 32767);
  uint32_t first = 0, last = 0;
  EXPECT_TRUE(ScanText("1000 1099", "%dl% %dl%", &first, &last));
  EXPECT_EQ(first, 1000u);
  EXPECT_EQ(last, 1099u);
}

TEST(TextScan, SkippedValuesTakeNoAddress) {
  int32_t second = 0;
  EXPECT_TRUE(ScanText("1 2", "%dlw% %d%", &second));
  EXPECT_EQ(second, 2);
  EXPECT_EQ(LastScan().matched, 2u);
  double fraction = 0;
  EXPECT_TRUE(ScanText("1.5 2.5", "%flw% %f%", &fraction));
  EXPECT_EQ(fraction, 2.5);
  char c = 0;
  EXPECT_TRUE(ScanText("word x", "%sw% %c%", &c));
  EXPECT_EQ(c, 'x');
}

TEST(TextScan, ReadsFractionsWithoutAnExponent) {
  const struct {
    const char* input;
    bool succeeds;
    double stored;
    uint32_t consumed;
  } cases[] = {
      {"2.5", true, 2.5, 3}, {"  -0.25x", true, -0.25, 7},
      {"+7", true, 7, 2},    {".5", true, 0.5, 2},
      {"3.", true, 3, 2},    {"1e5", true, 1, 1},
      {"   ", true, 0, 3},   {"-", true, 0, 1},
      {"x", false, 0, 0},    {"", false, 0, 0},
      {".", true, 0, 1},     {"1,5", true, 1, 1},
      {"0.1", true, 0.1, 3}, {"0.05", true, 0.05, 4},
      {"1..", true, 1, 2},   {"123456789", true, 123456789, 9},
  };
  for (const auto& one : cases) {
    double stored = 99;
    EXPECT_EQ(ScanText(one.input, "%f%", &stored), one.succeeds) << one.input;
    EXPECT_EQ(stored, one.stored) << one.input;
    EXPECT_EQ(LastScan().consumed, one.consumed) << one.input;
  }
}

TEST(TextScan, EndlessFractionsStayNumbers) {
  double stored = 0;
  EXPECT_TRUE(ScanText(("0." + std::string(1000, '3')).c_str(), "%f%", &stored));
  EXPECT_NEAR(stored, 1 / 3.0, 1e-15);
  EXPECT_TRUE(ScanText(std::string(1000, '9').c_str(), "%f%", &stored));
  EXPECT_TRUE(std::isinf(stored));
}

TEST(TextScan, ReadsFieldsOfText) {
  char first[20] = "", second[20] = "";
  EXPECT_TRUE(ScanText("  key value", "%s% %s%", first, second));
  EXPECT_STREQ(first, "key");
  EXPECT_STREQ(second, "value");
  EXPECT_TRUE(ScanText("a b=c", "%sd=%=%s%", first, second));
  EXPECT_STREQ(first, "a b");
  EXPECT_STREQ(second, "c");
  EXPECT_TRUE(ScanText("--x", "%ss-%", first));
  EXPECT_STREQ(first, "x");
  EXPECT_FALSE(ScanText(" x", "%sx%", first));
  EXPECT_FALSE(ScanText("=", "%sd=%", second));
  EXPECT_STREQ(second, "c");
}

TEST(TextScan, MakesStringsWhenAskedTo) {
  ToolkitInit();
  TempScopeBegin();
  char *owned = nullptr, *temporary = nullptr, *none = nullptr;
  EXPECT_FALSE(ScanText("own temp", "%sa% %st% %sa%", &owned, &temporary, &none));
  EXPECT_STREQ(owned, "own");
  EXPECT_STREQ(temporary, "temp");
  EXPECT_EQ(none, nullptr);
  StrFree(owned);
  TempScopeEnd();
}

TEST(TextScan, ReadsSingleBytesAsTheyAre) {
  char a = 0, b = 0;
  EXPECT_TRUE(ScanText("x ", "%c%%c%", &a, &b));
  EXPECT_EQ(a, 'x');
  EXPECT_EQ(b, ' ');
  EXPECT_FALSE(ScanText("", "%c%", &a));
}

// ---- The run ------------------------------------------------------------------------------------------------------

TEST(TextScan, TellsWhereItStopped) {
  int32_t a = 0, b = -1;
  EXPECT_FALSE(ScanText("5;6 and more", "%d%,%d%", &a, &b));
  EXPECT_EQ(a, 5);
  EXPECT_EQ(b, -1);
  EXPECT_EQ(LastScan().matched, 1u);
  EXPECT_EQ(LastScan().consumed, 1u);
  EXPECT_EQ(LastScan().inputLength, 12u);
  EXPECT_EQ(LastScan().formatPosition, 3u);
  EXPECT_EQ(LastScan().formatLength, 7u);
  EXPECT_EQ(LastScan().success, 0);
  EXPECT_FALSE(ScanText("5,x", "%d%,%d%", &a, &b));
  EXPECT_EQ(LastScan().formatPosition, 4u);
  EXPECT_EQ(b, 0);
}

TEST(TextScan, LiteralsMatchExactlyAndSoDoesAPercentSignAtTheEnd) {
  int32_t a = 0;
  EXPECT_TRUE(ScanText("", ""));
  EXPECT_TRUE(ScanText("rest", ""));
  EXPECT_FALSE(ScanText("", "a"));
  EXPECT_FALSE(ScanText("A", "a"));
  EXPECT_TRUE(ScanText("25%", "%d%%", &a));
  EXPECT_FALSE(ScanText("25", "%d%%", &a));
  EXPECT_FALSE(ScanText("%", "%%%"));
  EXPECT_FALSE(ScanText("q", "%q%"));
  EXPECT_TRUE(ScanText("25", "%d", &a));
}

TEST(TextScan, AdvancesTheInputOnSuccessOnly) {
  const char* input = "1 2 x";
  int32_t a = 0;
  EXPECT_TRUE(ScanTextAdvance(&input, "%d%", &a));
  EXPECT_STREQ(input, " 2 x");
  EXPECT_TRUE(ScanTextAdvance(&input, "%d%", &a));
  EXPECT_STREQ(input, " x");
  EXPECT_FALSE(ScanTextAdvance(&input, "%d%", &a));
  EXPECT_STREQ(input, " x");
}

TEST(TextScan, ReadsBareNumbers) {
  EXPECT_EQ(ScanInt(""), 0);
  EXPECT_EQ(ScanInt(" -12 rest"), -12);
  EXPECT_EQ(ScanUnsigned("4294967295"), UINT32_MAX);
  EXPECT_EQ(ScanUnsigned("-1"), 0u);
}

} // namespace
} // namespace framereel
