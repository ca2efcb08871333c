// The format language: what each directive writes, and that both ways of writing it agree.
#include "toolkit/core/text_format.h"

#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "toolkit/core/strings.h"

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
  EXPECT_EQ(Formatted("%d%", 42), "42");
  EXPECT_EQ(Formatted("%d5%", 42), "   42");
  EXPECT_EQ(Formatted("%d5%", -42), "-   42");
  EXPECT_EQ(Formatted("%d05%", -42), "-00042");
  EXPECT_EQ(Formatted("%ds02%", 7), "07");
  EXPECT_EQ(Formatted("%dl%|%db%", 70'000, -1), "70000|-1");
  EXPECT_EQ(Formatted("%d0,2%", 12345), "45");
  EXPECT_EQ(Formatted("%d0,2%", -12345), "-45");
  EXPECT_EQ(Formatted("%d8,2%", 12345), "   45");
  EXPECT_EQ(Formatted("%d*6%", 12), "****12");
  EXPECT_EQ(Formatted("%d,5%", 12), ",,,12");
  EXPECT_EQ(Formatted("%d,,1%", 12), "2");
  EXPECT_EQ(Formatted("%d3,%", 12), " 12");
  EXPECT_EQ(Formatted("%d0%", 12), "12");
  EXPECT_EQ(Formatted("%d 1,0%", 0), "");
  EXPECT_EQ(Formatted("%d%", 0), "0");
  EXPECT_EQ(Formatted("%d%", INT32_MIN), "-2147483648");
  EXPECT_EQ(Formatted("%d%", INT32_MAX), "2147483647");
  EXPECT_EQ(Formatted("%u%", -1), "4294967295");
  EXPECT_EQ(Formatted("%u%", 0), "0");
  EXPECT_EQ(Formatted("%x%", 255), "FF");
  EXPECT_EQ(Formatted("%x04%", 255), "00FF");
  EXPECT_EQ(Formatted("%x%", 0), "0");
  EXPECT_EQ(Formatted("%x%", -1), "FFFFFFFF");
  EXPECT_EQ(Formatted("%x,,3%", 0x12ABC), "ABC");
}

TEST(TextFormat, TakesWidthsFromTheArgumentsInTheirOrder) {
  EXPECT_EQ(Formatted("%dv%", 4, 7), "   7");
  EXPECT_EQ(Formatted("%d0v,v%", 6, 3, 12345), "0345");
  EXPECT_EQ(Formatted("%f0v.v,v%", 3, 2, 2, 1.5), "001.50");
  EXPECT_EQ(Formatted("%fs%|%fs%", 1, 2.0, 0, 2.0), "+2|2");
  EXPECT_EQ(Formatted("%fs%", 256, 2.0), "2");
  EXPECT_EQ(Formatted("%dv%%dv%", 2, 1, 3, 2), " 1  2");
}

TEST(TextFormat, WidthsKeepTheirLowEightBits) {
  EXPECT_EQ(Formatted("%d258%", 1), " 1");
  EXPECT_EQ(Formatted("%dv%", 0x10003, 1), "  1");
  EXPECT_EQ(Formatted("%d4294967299%", 1), "  1");
  EXPECT_EQ(Formatted("%d255%", 1).size(), 255u);
}

TEST(TextFormat, WritesAsManyDecimalsAsAValueNeeds) {
  EXPECT_EQ(Formatted("%f%", 2.5), "2.5");
  EXPECT_EQ(Formatted("%f%", 1000.0), "1000");
  EXPECT_EQ(Formatted("%f%", -0.25), "-0.25");
  EXPECT_EQ(Formatted("%f%", 0.0), "0");
  EXPECT_EQ(Formatted("%f%", -0.0), "0");
  EXPECT_EQ(Formatted("%f%", 0.05), "0.05");
  EXPECT_EQ(Formatted("%f%", 0.1), "0.1");
  EXPECT_EQ(Formatted("%f%", 0.3), "0.3000000000"); // the double lies just below: its tenth decimal is a 9
  EXPECT_EQ(Formatted("%f%", 1 / 3.0), "0.3333333333");
  EXPECT_EQ(Formatted("%f%", 2 / 3.0), "0.6666666667");
  EXPECT_EQ(Formatted("%f%", 1.0 / 1024), "0.0009765625");
  EXPECT_EQ(Formatted("%f%", 1e-11), "0");
  EXPECT_EQ(Formatted("%f%", 1e22), "10000000000000000000000");
  EXPECT_EQ(Formatted("%f%", 123456789.125), "123456789.125");
}

TEST(TextFormat, WritesFractionsInTheirWidths) {
  EXPECT_EQ(Formatted("%f+%", 2.5), "+2.5");
  EXPECT_EQ(Formatted("%f+%", -2.5), "-2.5");
  EXPECT_EQ(Formatted("%f+%", -0.0), "+0");
  EXPECT_EQ(Formatted("%f1.2,2%", 3.14159), "3.14");
  EXPECT_EQ(Formatted("%f1.2,2%", 2.5), "2.50");
  EXPECT_EQ(Formatted("%f1.2,2%", 0.0), "0.00");
  EXPECT_EQ(Formatted("%f1.2,2%", 0.004), "0.00");
  EXPECT_EQ(Formatted("%f1.2,2%", 9.995), "9.99"); // the value lies just below
  EXPECT_EQ(Formatted("%f1.2,2%", 9.996), "10.00");
  EXPECT_EQ(Formatted("%f1.0,0%", 0.5), "0"); // halves go to the even digit
  EXPECT_EQ(Formatted("%f1.0,0%", 1.5), "2");
  EXPECT_EQ(Formatted("%f1.1%", 2.0), "2.0");
  EXPECT_EQ(Formatted("%f1.1%", 2.125), "2.125");
  EXPECT_EQ(Formatted("%f1.12%", 0.5), "0.500000000000");
  EXPECT_EQ(Formatted("%f.2%", 2.5), ".2.5"); // the "." pads
  EXPECT_EQ(Formatted("%f5.1,1%", -2.25), "-    2.2");
  EXPECT_EQ(Formatted("%f05%", 2.5), "00002.5");
  EXPECT_EQ(Formatted("%f0,2.1,1%", 12345.67), "45.7");
  EXPECT_EQ(Formatted("%f 0,0.1,1%", 12345.67), "5.7");
  EXPECT_EQ(Formatted("%f3%", 0.5), "  0.5");
  EXPECT_EQ(Formatted("%f5%|%f+%|%f5%", kNan, kInfinity, -kInfinity), "NAN|+inf|-inf");
  EXPECT_EQ(Formatted("%f%|%f%|%f%", kInfinity, -kInfinity, kNan), "inf|-inf|NAN");
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
  EXPECT_EQ(Formatted("%s%:%s%", "a", "b"), "a:b");
  EXPECT_EQ(Formatted("%ds%:%ds02% %s%", 9, 5, "PM"), "9:05 PM");
  EXPECT_EQ(Formatted("%s05,2%|%s%", "abc", ""), "abc|");
  EXPECT_EQ(Formatted("%c%%c%", 'a', 0x162), "ab");
  EXPECT_EQ(Formatted("100%%%"), "100%");
  EXPECT_EQ(Formatted("%%%%d%", 5), "%5");
  EXPECT_EQ(Formatted("%s%", std::string(1500, 'x').c_str()), std::string(1500, 'x'));
}

TEST(TextFormat, TakesAnyTextAsAFormat) {
  EXPECT_EQ(Formatted(""), "");
  EXPECT_EQ(Formatted("plain"), "plain");
  EXPECT_EQ(Formatted("end%"), "end");
  EXPECT_EQ(Formatted("%"), "");
  EXPECT_EQ(Formatted("%d", 5), "5");
  EXPECT_EQ(Formatted("%d03", 5), "005");
  EXPECT_EQ(Formatted("a%q7,v%b"), "ab");
  EXPECT_EQ(Formatted("%%"), "%");
  EXPECT_EQ(Formatted("%%swallowed%d%", 5), "%d");
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
