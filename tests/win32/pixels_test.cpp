// Pixel arithmetic against plain rules, over whole domains: rows through the wide forms, channels through every mask;
// and where characters of UTF-8 begin and end.
#include "win32/pixels/pixels.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/dice.h"
#include "win32/pixels/utf8.h"

namespace framereel {
namespace {

constexpr uint8_t kUntouched = 0xE7;

TEST(Channels, AreTheNearestValueAndComeBackThroughEveryMask) {
  for (int bits = 1; bits <= 12; ++bits) {
    for (int shift = 0; shift + bits <= 32; ++shift) {
      const uint32_t full = (1U << bits) - 1, mask = full << shift;
      for (uint32_t value = 0; value <= full; ++value) {
        const uint8_t channel = ChannelOf(value << shift | ~mask, mask);
        // No other byte is closer to value / full.
        const int64_t error = std::abs(int64_t{channel} * full - int64_t{value} * 255);
        ASSERT_LE(2 * error, full) << value << " under " << mask;
        if (bits <= 8) {
          ASSERT_EQ(ChannelBits(channel, mask), value << shift) << value << " under " << mask;
        }
      }
      ASSERT_TRUE(ChannelBits(255, mask) == mask && ChannelBits(0, mask) == 0);
    }
  }
}

// A row of the pixels at an odd place, turned to bytes and compared with the plain form; what lies behind stays.
void ExpectBgr(const std::vector<uint32_t>& pixels, const PixelLayout& layout, size_t misalignment) {
  std::vector<uint8_t> row(misalignment + pixels.size() * layout.bytesPerPixel);
  const Surface surface = {layout, int32_t(pixels.size()), 1, 0, row.data() + misalignment, nullptr};
  for (size_t i = 0; i < pixels.size(); ++i) SetPixelAt(surface, int32_t(i), 0, pixels[i]);
  std::vector<uint8_t> bgr(misalignment + 3 * pixels.size() + 1, kUntouched);
  RowToBgr(surface.pixels, layout, pixels.size(), bgr.data() + misalignment);
  for (size_t i = 0; i < pixels.size(); ++i) {
    const uint8_t* out = &bgr[misalignment + 3 * i];
    ASSERT_EQ(out[0], ChannelOf(pixels[i], layout.blueMask)) << "pixel " << i << " of " << pixels.size();
    ASSERT_EQ(out[1], ChannelOf(pixels[i], layout.greenMask)) << "pixel " << i << " of " << pixels.size();
    ASSERT_EQ(out[2], ChannelOf(pixels[i], layout.redMask)) << "pixel " << i << " of " << pixels.size();
  }
  ASSERT_EQ(bgr.back(), kUntouched) << pixels.size() << " pixels";
}

constexpr PixelLayout kRgb555 = {16, 2, 0x7C00, 0x03E0, 0x001F};
constexpr PixelLayout kRgb30 = {32, 4, 0x3FF00000, 0x000FFC00, 0x000003FF};
constexpr PixelLayout kBgrx8888 = {24, 4, 0xFF000000, 0x00FF0000, 0x0000FF00};

TEST(RowToBgr, IsThePlainFormOfEveryValueAtAnyLengthAndPlaceInEveryLayout) {
  Dice dice(1);
  for (const PixelLayout& layout : {kLayoutXrgb8888, kLayoutRgb565, kRgb555, kRgb30, kBgrx8888}) {
    for (size_t length = 0; length <= 70; ++length) {
      // The last row of 16 bits has all values that there are.
      std::vector<uint32_t> pixels(length == 70 && layout.depth == 16 ? 65536 : length);
      for (uint32_t i = 0; i < pixels.size(); ++i) pixels[i] = length == 70 ? i : uint32_t(dice.random());
      ExpectBgr(pixels, layout, length % 5);
    }
  }
}

using Places = std::vector<size_t>;

TEST(Utf8, KnowsWholeCharactersBothWaysAndTakesStrayBytesForOneEach) {
  struct Case {
    std::string text;
    Places boundaries;
  };
  const Case cases[] = {
      {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", {0, 1, 3, 6, 10}},
      {"\xC3z\xE2\x82", {0, 1, 2, 3, 4}},                         // cut short
      {"\xA9\xC0\x80\xFF", {0, 1, 2, 3, 4}},                      // no beginning, a longer form, no byte of UTF-8
      {"\xE0\x9F\xBF\xED\xA0\x80", {0, 1, 2, 3, 4, 5, 6}},        // a longer form, half of a pair of UTF-16
      {"\xF0\x8F\xBF\xBF\xF4\x90\x80", {0, 1, 2, 3, 4, 5, 6, 7}}, // a longer form, beyond the last character
      {"\xF4\x8F\xBF\xBF\xED\x9F\xBF\x80\x80", {0, 4, 7, 8, 9}},
  };
  for (const Case& one : cases) {
    Places forward = {0}, back = {one.text.size()};
    while (forward.back() < one.text.size()) forward.push_back(NextCharacter(one.text, forward.back()));
    while (back.back() > 0) back.push_back(PreviousCharacter(one.text, back.back()));
    EXPECT_EQ(forward, one.boundaries);
    EXPECT_EQ(Places(back.rbegin(), back.rend()), one.boundaries);
    for (size_t at = 0; at <= one.text.size(); ++at) {
      EXPECT_EQ(BoundaryAt(one.text, at), *(std::upper_bound(forward.begin(), forward.end(), at) - 1));
    }
  }
  EXPECT_EQ(WellFormed(cases[1].text), "\uFFFDz\uFFFD\uFFFD");
  EXPECT_EQ(Latin1Of("a\u00E9\u20AC\x80"), "a\xE9??");
  EXPECT_EQ(Utf8OfLatin1("a\xE9"), "a\u00E9");
  for (const char32_t code : {0x00, 0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF}) {
    const std::string bytes = Utf8Of(code);
    EXPECT_EQ(CodePointAt(bytes, 0).code, code);
    EXPECT_EQ(CodePointAt(bytes, 0).length, bytes.size());
  }
}

} // namespace
} // namespace framereel
