// The scanner: random numbers by random directives against the rules told plainly, and how a run goes on and ends.
#include "core/text_scan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "core/strings.h"
#include "core/temporary_blocks.h"
#include "core/toolkit_init.h"
#include "support/dice.h"
#include "support/pattern.h"

namespace framereel {
namespace {

// ---- Numbers ------------------------------------------------------------------------------------------------------

// A directive's work, told plainly: what is left of the input, and what stands at the address.
struct PlainScan {
  std::string input, stored = std::string(9, '#');

  std::string Take(const std::string& field) {
    input.erase(0, field.size());
    return field;
  }
  void Skip(char c) { Take(input.substr(0, input.find_first_not_of(c))); }

  bool Number(char letter, std::string modifiers) {
    static const Pattern sizes("[bls]"), known("(l[0-9]*|s.?|w|x)"), fraction("[+-]?[0-9]*(\\.[0-9]*)?");
    static const Pattern decimal("([+-]?)([0-9]*)"), hexadecimal("([+-]?)([0-9a-fA-F]*)"), withoutSign("()([0-9]*)");
    const std::string whole = input, size = sizes(modifiers)[0];
    modifiers.erase(0, size.size());
    unsigned long length = 0;
    bool stores = true, skipsSpaces = true;
    for (std::string one; (one = known(modifiers)[0]) != ""; modifiers.erase(0, one.size())) {
      if (one[0] == 'l') length = std::strtoul(one.c_str() + 1, nullptr, 10);
      if (one[0] == 's' && one.size() > 1) Skip(one[1]);
      stores = stores && one != "w";
      skipsSpaces = skipsSpaces && one != "x";
    }
    if (skipsSpaces) Skip(' ');
    if (letter == 'f') {
      const double value = std::strtod(Take(fraction(input)[0]).c_str(), nullptr);
      if (stores) std::memcpy(stored.data(), &value, sizeof value);
      return input != whole;
    }
    const auto field = (letter == 'd' ? decimal : letter == 'x' ? hexadecimal : withoutSign)(input);
    const std::string digits = field[2].substr(0, length ? length : 10);
    Take(field[1] + digits);
    auto value = uint32_t(std::strtoull(digits.c_str(), nullptr, letter == 'x' ? 16 : 10));
    if (field[1] == "-") value = 0 - value;
    if (stores) std::memcpy(stored.data(), &value, size == "b" ? 1 : size == "s" ? 2 : 4);
    return !digits.empty();
  }
};

// Doubles may differ in their last digits, and in the sign of 0.
std::string Rounded(char letter, const std::string& stored) {
  double value;
  std::memcpy(&value, stored.data(), sizeof value);
  return letter == 'f' && stored[0] != '#' ? std::to_string(value + 0.0) : stored;
}

TEST(TextScan, ReadsAnyNumberByAnyModifiers) {
  Dice dice(1);
  for (int round = 0; round < 30'000 && !HasFailure(); ++round) {
    const char letter = "duxf"[dice.Below(4)];
    std::string modifiers, input, memory(9, '#');
    for (int i = dice.Below(6); i > 0; --i) modifiers += "lsbwxq,0125 "[dice.Below(12)];
    for (int i = dice.Below(15); i > 0; --i) input += "  +-.,0123456789aF\t"[dice.Below(19)];
    PlainScan plain = {input};
    const bool succeeds = plain.Number(letter, modifiers);
    const std::string format = std::string("%") + letter + modifiers + "%" + plain.input + "|"; // all that is left
    SCOPED_TRACE('"' + input + "\" by " + format);
    EXPECT_EQ(ScanText((input + "|").c_str(), format.c_str(), memory.data()), succeeds);
    EXPECT_EQ(Rounded(letter, memory), Rounded(letter, plain.stored));
  }
}

TEST(TextScan, ReadsFractionsOfAnyLength) {
  double stored = 0;
  EXPECT_TRUE(ScanText(("0." + std::string(1000, '3')).c_str(), "%f%", &stored));
  EXPECT_NEAR(stored, 1 / 3.0, 1e-15);
  EXPECT_TRUE(ScanText(std::string(1000, '9').c_str(), "%f%", &stored));
  EXPECT_TRUE(std::isinf(stored));
}

// ---- Text, and the run --------------------------------------------------------------------------------------------

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
