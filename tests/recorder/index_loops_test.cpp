// True colour to indices, written for speed, against the same a pixel at a time. The other loops over rows are judged
// by animation_fuzz_test.cpp.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "recorder/engine/cube_index.h"
#include "recorder/plain_difference.h"

namespace framereel {
namespace {

constexpr uint8_t kUntouched = 0xE7;

using Bytes = std::vector<uint8_t>;

TEST(BgrToCube, GivesTheNearestLevelsOverTheWholeDomainOfEachChannel) {
  Bytes bgr, expected;
  for (int value = 0; value < 256 * 256; ++value) {
    const auto v = uint8_t(value >> 8), o = uint8_t(value), third = uint8_t(v * 7 + o * 13);
    for (const PaletteColour c : {PaletteColour{v, o, third}, {third, v, o}, {o, third, v}}) {
      bgr.insert(bgr.end(), {c.blue, c.green, c.red});
      expected.push_back(PlainCubeIndex(c));
    }
  }
  Bytes indices(expected.size());
  BgrToCube(bgr.data(), expected.size(), indices.data());
  EXPECT_EQ(indices, expected);
  BgrToCubePlain(bgr.data(), expected.size(), indices.data());
  EXPECT_EQ(indices, expected);
}

TEST(BgrToCube, IsThePlainFormAtEveryLengthAndPlaceAndWritesNothingElse) {
  std::mt19937 random(1);
  for (size_t length = 0; length <= 200; ++length) {
    for (size_t place = 0; place < 16; ++place) {
      Bytes bgr(place + 3 * length); // ends with the last pixel, so that a read behind it is seen
      for (uint8_t& byte : bgr) byte = uint8_t(random());
      Bytes expected(place + length + 1, kUntouched), indices = expected;
      BgrToCubePlain(bgr.data() + place, length, expected.data() + place);
      BgrToCube(bgr.data() + place, length, indices.data() + place);
      ASSERT_EQ(indices, expected) << length << " pixels at " << place;
    }
  }
}

} // namespace
} // namespace framereel
