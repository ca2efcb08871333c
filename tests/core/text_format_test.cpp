// The format language: random directives against the rules told plainly, by regular expressions and the C library's
// digits; and whole formats.
#include "core/text_format.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <string>

#include "core/strings.h"
#include "support/dice.h"
#include "support/pattern.h"

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

// With so many words ahead of the value.
template <typename Value, typename... Taken>
std::string FormattedBehind(const uint32_t* words, int count, const std::string& format, Value value, Taken... taken) {
  if constexpr (sizeof...(taken) < 5) {
    if (count > 0) return FormattedBehind(words + 1, count - 1, format, value, taken..., *words);
  }
  return Formatted(format, taken..., value);
}

template <typename... Argument> std::string Printed(const char* format, Argument... arguments) {
  char text[800];
  snprintf(text, sizeof text, format, arguments...);
  return text;
}

// ---- The plain twin -----------------------------------------------------------------------------------------------

const std::string kGroup = "([^1-9v]?)([0-9]+|v)?(,([0-9]+|v))?"; // padding, minimum, maximum

// From its digits or from the words, which move on.
int WidthOf(const std::string& text, int otherwise, const uint32_t*& words) {
  return text.empty() ? otherwise : int((text == "v" ? *words++ : std::stoull(text)) % 256);
}

std::string Padding(int count, const std::string& with) {
  return std::string(size_t(std::max(count, 0)), with.empty() ? ' ' : with[0]);
}

std::string PlainInteger(char letter, const std::string& modifiers, const uint32_t*& words, uint32_t value) {
  static const Pattern pattern("[lsb]?" + kGroup);
  const auto m = pattern(modifiers);
  const int minimum = WidthOf(m[2], 0, words), maximum = WidthOf(m[4], 255, words);
  const bool negative = letter == 'd' && int32_t(value) < 0;
  const std::string digits = Printed(letter == 'x' ? "%X" : "%u", negative ? 0 - value : value);
  const int count = int(digits.size());
  return std::string(negative, '-') + Padding(minimum - count, m[1]) +
         digits.substr(size_t(std::max(count - maximum, 0)));
}

// Up to the last decimal that is not 0 among the number's first 25 digits.
int DecimalsOf(double value, int least, int most) {
  std::string digits = Printed("%.24e", std::fabs(value));
  const int exponent = std::stoi(digits.substr(27));
  digits.erase(1, 1);
  for (int place = most; place > least; --place) {
    const int index = exponent + place;
    if (index >= 0 && index < 25 && digits[size_t(index)] != '0') return place;
  }
  return least;
}

std::string PlainFraction(const std::string& modifiers, const uint32_t*& words, double value) {
  static const Pattern pattern("(\\+|s)?" + kGroup + "\\.?" + kGroup);
  const auto m = pattern(modifiers);
  const bool wantsSign = m[1] == "+" || (m[1] == "s" && (*words++ & 0xFF) != 0);
  const int minimum = WidthOf(m[3], 0, words), maximum = WidthOf(m[5], 255, words);
  const int least = WidthOf(m[7], 0, words), most = WidthOf(m[9], 10, words);
  if (std::isnan(value)) return "NAN";
  const std::string sign = value < 0 ? "-" : wantsSign ? "+" : "";
  if (std::isinf(value)) return sign + "inf";
  const std::string text = Printed("%.*f", DecimalsOf(value, least, most), std::fabs(value));
  const int count = int(std::min(text.find('.'), text.size()));
  const int columns = std::max(1, count <= minimum ? minimum : std::min(count, maximum));
  return sign + Padding(columns - count, m[2]) + text.substr(size_t(std::max(count - columns, 0)));
}

// ---- Directives ---------------------------------------------------------------------------------------------------

double AnyDouble(Dice& dice) {
  const double known[] = {0, -0.0, 0.3, 0.05, 9.995, 9.996, 0.5, 1.5, 1e22, 5e-324, 1.7976931348623157e308, HUGE_VAL};
  const int kind = dice.Below(4);
  if (kind == 0) return std::bit_cast<double>(uint64_t{dice.random()} << 32 | dice.random()); // any at all
  if (kind == 1) return known[dice.Below(std::size(known))];
  return kind == 2 ? int32_t(dice.random()) / double(1 << dice.Below(31)) : dice.Below(200'000) / 1000.0 - 100;
}

TEST(TextFormat, WritesAnyNumberByAnyModifiers) {
  Dice dice(1);
  for (int round = 0; round < 30'000 && !HasFailure(); ++round) {
    const char letter = "duxf"[dice.Below(4)];
    std::string modifiers;
    for (int length = dice.Below(9); length > 0; --length) modifiers += "0v12358,,.+slb* x9"[dice.Below(18)];
    const std::string format = std::string("%") + letter + modifiers + "%";
    uint32_t words[5];
    for (uint32_t& word : words) word = dice.OneIn(9) ? uint32_t(dice.random()) : uint32_t(dice.Below(12));
    const uint32_t* behind = words;
    if (letter == 'f') {
      const double value = AnyDouble(dice);
      const std::string plain = PlainFraction(modifiers, behind, value);
      EXPECT_EQ(FormattedBehind(words, int(behind - words), format, value), plain) << format << " of " << value;
    } else {
      const uint32_t value = dice.OneIn(9) ? uint32_t(INT32_MIN) : uint32_t(int32_t(dice.random()) >> dice.Below(32));
      const std::string plain = PlainInteger(letter, modifiers, behind, value);
      EXPECT_EQ(FormattedBehind(words, int(behind - words), format, value), plain) << format << " of " << value;
    }
  }
}

// ---- Whole formats ------------------------------------------------------------------------------------------------

TEST(TextFormat, WritesWhatItsFormatSays) {
  EXPECT_EQ(Formatted("%d05%|%x04%|%u%|%d0,2%|%f1.2,2%", -42, 255, -1, 12345, 3.14159),
            "-00042|00FF|4294967295|45|3.14");
  EXPECT_EQ(Formatted("%f%|%f%|%f+%|%f.2%", 1000.0, -0.25, 2.5, 2.5), "1000|-0.25|+2.5|.2.5");
  EXPECT_EQ(Formatted("%dv%%dv%", 2, 1, 3, 2), " 1  2");
  EXPECT_EQ(Formatted("%s%:%s05,2%|%s%", "a", "abc", ""), "a:abc|");
  EXPECT_EQ(Formatted("%c%%c%100%%%, %%%%d%", 'a', 0x1E2, 5), "a\xE2"
                                                              "100%, %5");
  EXPECT_EQ(Formatted("%s%", std::string(1500, 'x').c_str()), std::string(1500, 'x'));
  const std::pair<const char*, const char*> oddities[] = {
      {"", ""},           {"plain", "plain"}, {"end%", "end"},         {"%", ""}, {"%d", "5"}, {"%d03", "005"},
      {"a%q7,v%b", "ab"}, {"%%", "%"},        {"%%swallowed%d%", "%d"}};
  for (const auto& [format, text] : oddities) EXPECT_EQ(Formatted(format, 5), text);
  char buffer[20] = "%d5%%s%."; // written over its format
  EXPECT_STREQ(FormatInto(buffer, buffer, 12, "ab"), "   12ab.");
  EXPECT_STREQ(FormatInt(buffer, INT32_MIN), "-2147483648");
}

} // namespace
} // namespace framereel
