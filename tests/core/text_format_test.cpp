// The format language: what its directives write, each with the modifiers that matter to it.
#include "core/text_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/strings.h"

namespace framereel {
namespace {

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
  const std::string longest = Formatted("%f1.255%", -1.7976931348623157e308);
  EXPECT_TRUE(longest.size() == 1 + 255 + 1 + 255 && longest.find("-598917476803157260") == 0) << longest;
  const std::pair<std::string, std::string> cases[] = {
      {Formatted("%d%|%u%|%x%|%d%", INT32_MIN, -1, -1, 0), "-2147483648|4294967295|FFFFFFFF|0"},
      {Formatted("%d05%|%x04%|%d3%|%d3%", -42, 255, 7, 1234), "-00042|00FF|  7|1234"},
      {Formatted("%d0,2%|%d,3%|%d5,2%|%d 1,0%|%d3,%", 12345, 12, 6789, 3, 4), "45|,12| 89||  4"},
      {Formatted("%dl3%|%us*3%|%xb_3%|%d 3%|%d.v,v%", 1, 2, 10, 3, 4, 2, 567), "  1|**2|__A|  3|.67"},
      {Formatted("%d259%|%d0,258%|%dv%", 1, 1234, 515, 2), "  1|34|  2"}, // widths are bytes
      {Formatted("%d32x1%|%dq%|%d3y,9%", 1, 2, 3), std::string(31, ' ') + "1|2|  3"},
      {Formatted("%f%|%f%|%f%|%f%|%f%", 1000.0, -0.25, 2.5, 0.0, -0.0), "1000|-0.25|2.5|0|0"},
      {Formatted("%f+%|%f+%|%fs%|%fs%|%fs%", 2.5, -2.5, 1, 2.5, 256, 2.5, 0, -2.5), "+2.5|-2.5|+2.5|2.5|-2.5"},
      {Formatted("%f3.0,2%|%f*4%|%f0,2%|%f0,0%|%f.2%", 3.14159, -1.5, 1234.5, 12.0, 2.5), "  3.14|-***1.5|34.5|2|.2.5"},
      {Formatted("%f1.2,2%|%f1.1%|%f1.v%|%f1.3,1%|%f1.,3%", 2.5, 2.0, 2, 0.5, 1.25, 0.5), "2.50|2.0|0.50|1.250|0.500"},
      {Formatted("%f0.0,2%|%f0.0,2%|%f0.0,0%|%f0.0,0%", 9.996, 0.004, 0.5, 1.5), "10.00|0|0|2"},
      {Formatted("%f%|%f%|%f0.0,40%", 0.3, 1e-11, 0.1), "0.3000000000|0|0.1000000000000000055511151"},
      {Formatted("%f%|%f%|%f%|%f1.0,30%", 1e22, 0.0625, 5e-324, 123456789012345680.0),
       "10000000000000000000000|0.0625|0|123456789012345680"},
      {Formatted("%f%|%f5%|%f+%", std::nan(""), -HUGE_VAL, HUGE_VAL), "NAN|-inf|+inf"},
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

} // namespace
} // namespace framereel
