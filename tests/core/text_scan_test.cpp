// The scanner: what each directive reads and stores, and how a run tells its end.
#include "core/text_scan.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "core/memory.h"
#include "core/strings.h"
#include "core/toolkit_init.h"

namespace framereel {
namespace {

template <typename Value> struct Case {
  const char *input, *format;
  Value stored;
  uint32_t consumed;
  bool succeeds;
};

template <typename Value> void Check(const Case<Value>& one) {
  SCOPED_TRACE(std::string(one.input) + " by " + one.format);
  Value stored = 99;
  EXPECT_EQ(ScanText(one.input, one.format, &stored), one.succeeds);
  EXPECT_EQ(stored, one.stored);
  EXPECT_EQ(LastScan().consumed, one.consumed);
  EXPECT_EQ(LastScan().matched, one.succeeds ? 1u : 0u);
}

TEST(TextScan, ReadsIntegers) {
  const Case<int32_t> cases[] = {{"7x", "%d%", 7, 1, true},
                                 {"x", "%d%", 0, 0, false},
                                 {"", "%d%", 0, 0, false},
                                 {"  -42", "%d%", -42, 5, true},
                                 {"+42", "%d%", 42, 3, true},
                                 {"- 4", "%d%", 0, 1, false},
                                 {"\t4", "%d%", 0, 0, false},
                                 {"-2147483648", "%d%", INT32_MIN, 11, true},
                                 {"9999999999", "%d%", 1410065407, 10, true},
                                 {"12345678901", "%d%", 1234567890, 10, true},
                                 {"1234567", "%dll5%", 12345, 5, true},
                                 {"1234567", "%dl5%", 1234567, 7, true},
                                 {"123456789012", "%dll12%", -1097262572, 12, true},
                                 {"1234567890123", "%dll0%", 1234567890, 10, true},
                                 {",, 5", "%dls,%", 5, 4, true},
                                 {" ,5", "%dls,%", 0, 1, false},
                                 {" 5", "%dlx%", 0, 0, false},
                                 {" 5", "%dlqx%", 5, 2, true},
                                 {"4000000000", "%u%", -294967296, 10, true},
                                 {"-1", "%u%", 0, 0, false},
                                 {"-ffF", "%x%", -0xFFF, 4, true},
                                 {"0x1f", "%x%", 0, 1, true},
                                 {"g", "%x%", 0, 0, false}};
  for (const auto& one : cases) Check(one);
  EXPECT_EQ(ScanInt(""), 0);
  EXPECT_EQ(ScanInt(" -12 rest"), -12);
  EXPECT_EQ(ScanUnsigned("4294967295"), UINT32_MAX);
}

TEST(TextScan, ReadsFractionsWithoutAnExponent) {
  const Case<double> cases[] = {
      {"  -0.25x", "%f%", -0.25, 7, true}, {"+7", "%f%", 7, 2, true},  {".5", "%f%", 0.5, 2, true},
      {"3.", "%f%", 3, 2, true},           {"1e5", "%f%", 1, 1, true}, {"   ", "%f%", 0, 3, true},
      {"x", "%f%", 0, 0, false},           {".", "%f%", 0, 1, true},   {"0.05", "%f%", 0.05, 4, true},
  };
  for (const auto& one : cases) Check(one);
  double stored = 0;
  EXPECT_TRUE(ScanText(("0." + std::string(1000, '3')).c_str(), "%f%", &stored));
  EXPECT_NEAR(stored, 1 / 3.0, 1e-15);
  EXPECT_TRUE(ScanText(std::string(1000, '9').c_str(), "%f%", &stored));
  EXPECT_TRUE(std::isinf(stored));
}

TEST(TextScan, StoresTheSizeOfItsLetterAndNoMore) {
  uint8_t memory[16];
  std::memset(memory, 0xEE, sizeof memory);
  EXPECT_TRUE(ScanText("258 65537 3", "%db% %ds% %d%", memory, memory + 4, memory + 8));
  const uint8_t expected[16] = {2, 0xEE, 0xEE, 0xEE, 1, 0, 0xEE, 0xEE, 3, 0, 0, 0, 0xEE, 0xEE, 0xEE, 0xEE};
  EXPECT_EQ(std::memcmp(memory, expected, sizeof memory), 0);
}

TEST(TextScan, SkippedValuesTakeNoAddress) {
  int32_t second = 0;
  char c = 0;
  EXPECT_TRUE(ScanText("1 2.5 word 2x", "%dlw% %flw% %sw% %d%%c%", &second, &c));
  EXPECT_EQ(second, 2);
  EXPECT_EQ(c, 'x');
  EXPECT_EQ(LastScan().matched, 5u);
}

TEST(TextScan, ReadsFieldsOfTextAndSingleBytes) {
  char first[20] = "", second[20] = "";
  EXPECT_TRUE(ScanText("  key value", "%s% %s%", first, second));
  EXPECT_STREQ(first, "key");
  EXPECT_STREQ(second, "value");
  EXPECT_TRUE(ScanText("--a b=c", "%ss-d=%=%s%", first, second));
  EXPECT_STREQ(first, "a b");
  EXPECT_STREQ(second, "c");
  EXPECT_FALSE(ScanText(" x", "%sx%", first));
  EXPECT_FALSE(ScanText("=", "%sd=%", second));
  EXPECT_STREQ(second, "c"); // an empty field stores nothing
  EXPECT_TRUE(ScanText(" ", "%c%", first));
  EXPECT_EQ(first[0], ' ');
  EXPECT_FALSE(ScanText("", "%c%", first));
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

// ---- The run ------------------------------------------------------------------------------------------------------

TEST(TextScan, TellsWhereItStopped) {
  int32_t a = 0, b = -1;
  EXPECT_FALSE(ScanText("5;6 and more", "%d%,%d%", &a, &b));
  EXPECT_EQ(a, 5);
  EXPECT_EQ(b, -1);
  const ScanResult& last = LastScan();
  EXPECT_EQ(last.matched, 1u);
  EXPECT_EQ(last.consumed, 1u);
  EXPECT_EQ(last.inputLength, 12u);
  EXPECT_EQ(last.formatPosition, 3u);
  EXPECT_EQ(last.formatLength, 7u);
  EXPECT_EQ(last.success, 0);
  EXPECT_FALSE(ScanText("5,x", "%d%,%d%", &a, &b));
  EXPECT_EQ(last.formatPosition, 4u);
}

TEST(TextScan, LiteralsMatchExactlyAndSoDoesAPercentSignAtTheEnd) {
  const struct {
    const char *input, *format;
    bool succeeds;
  } cases[] = {{"rest", "", true},    {"", "a", false},    {"A", "a", false},   {"25%", "%d%%", true},
               {"25", "%d%%", false}, {"%", "%%%", false}, {"q", "%q%", false}, {"25", "%d", true}};
  for (const auto& one : cases) {
    int32_t value = 0;
    EXPECT_EQ(ScanText(one.input, one.format, &value), one.succeeds) << one.input << " by " << one.format;
  }
}

TEST(TextScan, AdvancesTheInputOnSuccessOnly) {
  const char* input = "1 x";
  int32_t a = 0;
  EXPECT_TRUE(ScanTextAdvance(&input, "%d%", &a));
  EXPECT_STREQ(input, " x");
  EXPECT_FALSE(ScanTextAdvance(&input, "%d%", &a));
  EXPECT_STREQ(input, " x");
}

} // namespace
} // namespace framereel
