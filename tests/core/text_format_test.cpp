// The format language: what each directive writes, and that both ways of writing it agree.
#include "core/text_format.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "core/strings.h"

namespace framereel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNan = std::nan("");

// The text, by way of a new string: its block is measured to the byte, which the sanitizers watch.
template <typename... Argument> std::string Formatted(const char* format, Argument... arguments) {
  char buffer[2048];
  EXPECT_EQ(FormatInto(buffer, format, arguments...), buffer);
  char* text = FormatNew(format, arguments...);
  EXPECT_STREQ(text, buffer) << format;
  StrFree(text);
  return buffer;
}

TEST(TextFormat, WritesIntegersInTheirWidths) {
  EXPECT_EQ(Formatted("%d%|%d%|%d%", 0, INT32_MIN, INT32_MAX), "0|-2147483648|2147483647");
  EXPECT_EQ(Formatted("%u%|%u%", 0, -1), "0|4294967295");
  EXPECT_EQ(Formatted("%x%|%x04%|%x%|%x,,3%", 0, 255, -1, 0x12ABC), "0|00FF|FFFFFFFF|ABC");
  EXPECT_EQ(Formatted("%d5%|%d5%|%d05%|%d*6%", 42, -42, -42, 12), "   42|-   42|-00042|****12");
  EXPECT_EQ(Formatted("%ds02%|%dl%|%db%", 7, 70'000, -1), "07|70000|-1");
  EXPECT_EQ(Formatted("%d0,2%|%d0,2%|%d8,2%", 12345, -12345, 12345), "45|-45|   45");
  EXPECT_EQ(Formatted("%d,5%|%d,,1%|%d3,%|%d0%|%d 1,0%", 12, 12, 12, 12, 0), ",,,12|2| 12|12|");
  EXPECT_EQ(Formatted("%d258%|%dv%|%d4294967299%", 1, 0x10003, 1, 1), " 1|  1|  1"); // their low eight bits
  EXPECT_EQ(Formatted("%d255%", 1).size(), 255u);
}

TEST(TextFormat, TakesWidthsFromTheArgumentsInTheirOrder) {
  EXPECT_EQ(Formatted("%dv%%dv%", 2, 1, 3, 2), " 1  2");
  EXPECT_EQ(Formatted("%d0v,v%", 6, 3, 12345), "0345");
  EXPECT_EQ(Formatted("%f0v.v,v%", 3, 2, 2, 1.5), "001.50");
  EXPECT_EQ(Formatted("%fs%|%fs%|%fs%", 1, 2.0, 0, 2.0, 256, 2.0), "+2|2|2");
}

TEST(TextFormat, WritesAsManyDecimalsAsAValueNeeds) {
  EXPECT_EQ(Formatted("%f%|%f%|%f%", 2.5, 1000.0, -0.25), "2.5|1000|-0.25");
  EXPECT_EQ(Formatted("%f%|%f%|%f%|%f%", 0.0, -0.0, 0.05, 0.1), "0|0|0.05|0.1");
  EXPECT_EQ(Formatted("%f%", 0.3), "0.3000000000"); // the double lies just below: its tenth decimal is a 9
  EXPECT_EQ(Formatted("%f%|%f%", 1 / 3.0, 2 / 3.0), "0.3333333333|0.6666666667");
  EXPECT_EQ(Formatted("%f%|%f%", 1.0 / 1024, 1e-11), "0.0009765625|0");
  EXPECT_EQ(Formatted("%f%|%f%", 1e22, 123456789.125), "10000000000000000000000|123456789.125");
}

TEST(TextFormat, WritesFractionsInTheirWidths) {
  EXPECT_EQ(Formatted("%f+%|%f+%|%f+%", 2.5, -2.5, -0.0), "+2.5|-2.5|+0");
  EXPECT_EQ(Formatted("%f1.2,2%|%f1.2,2%|%f1.2,2%", 3.14159, 2.5, 0.004), "3.14|2.50|0.00");
  EXPECT_EQ(Formatted("%f1.2,2%|%f1.2,2%", 9.995, 9.996), "9.99|10.00"); // 9.995 lies just below
  EXPECT_EQ(Formatted("%f1.0,0%|%f1.0,0%", 0.5, 1.5), "0|2");            // halves go to the even digit
  EXPECT_EQ(Formatted("%f1.1%|%f1.1%|%f1.12%", 2.0, 2.125, 0.5), "2.0|2.125|0.500000000000");
  EXPECT_EQ(Formatted("%f.2%", 2.5), ".2.5"); // the "." pads
  EXPECT_EQ(Formatted("%f5.1,1%|%f05%|%f3%", -2.25, 2.5, 0.5), "-    2.2|00002.5|  0.5");
  EXPECT_EQ(Formatted("%f0,2.1,1%|%f 0,0.1,1%", 12345.67, 12345.67), "45.7|5.7");
  EXPECT_EQ(Formatted("%f5%|%f+%|%f5%", kNan, kInfinity, -kInfinity), "NAN|+inf|-inf");
}

TEST(TextFormat, RoundsTheLargestAndTheSmallestNumbersRight) {
  for (double value : {1.7976931348623157e308, 5e-324, 4.35, 1e15 / 7, 2.2250738585072014e-308}) {
    char whole[700];
    std::snprintf(whole, sizeof whole, "%.255f", value);
    std::string expected = whole;
    if (expected.size() > 511) expected.erase(0, expected.size() - 511); // 255 digits, the point and 255 decimals
    EXPECT_EQ(Formatted("%f1.255,255%", value), expected);
  }
}

TEST(TextFormat, WritesStringsBytesAndPercentSigns) {
  EXPECT_EQ(Formatted("%s%:%s05,2%|%s%", "a", "abc", ""), "a:abc|");
  EXPECT_EQ(Formatted("%c%%c%", 'a', 0x162), "ab");
  EXPECT_EQ(Formatted("100%%%, %%%%d%", 5), "100%, %5");
  EXPECT_EQ(Formatted("%s%", std::string(1500, 'x').c_str()), std::string(1500, 'x'));
}

TEST(TextFormat, TakesAnyTextAsAFormat) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},           {"plain", "plain"}, {"end%", "end"},         {"%", ""}, {"%d", "5"}, {"%d03", "005"},
      {"a%q7,v%b", "ab"}, {"%%", "%"},        {"%%swallowed%d%", "%d"}};
  for (const auto& [format, text] : cases) EXPECT_EQ(Formatted(format, 5), text);
}

TEST(TextFormat, MayWriteOverItsFormat) {
  char buffer[20] = "%d5%%s%.";
  EXPECT_STREQ(FormatInto(buffer, buffer, 12, "ab"), "   12ab.");
}

TEST(TextFormat, WritesTheEndsOfBothIntegersBare) {
  char buffer[12];
  EXPECT_STREQ(FormatInt(buffer, INT32_MIN), "-2147483648");
  EXPECT_STREQ(FormatUnsigned(buffer, UINT32_MAX), "4294967295");
}

} // namespace
} // namespace framereel
