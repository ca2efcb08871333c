// The loops over pixels that were written for speed, against the same a pixel at a time.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "recorder/cube_index.h"
#include "recorder/plain_difference.h"
#include "recorder/work_rows.h"

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

// A row of few colours in runs, as screens have them; 255 and no pixel are not the same.
Bytes AnyRow(std::mt19937& random, size_t length) {
  Bytes row;
  while (row.size() < length) {
    row.insert(row.end(), random() % 2 ? 1 : random() % 90, std::array<uint8_t, 3>{0, 1, 255}[random() % 3]);
  }
  row.resize(length);
  return row;
}

TEST(WorkRows, AreWhatTheRunRuleMakesFromAnyPixelAhead) {
  constexpr uint8_t kTransparent = 216;
  std::mt19937 random(3);
  for (int i = 0; i < 8000; ++i) {
    const Bytes indices = AnyRow(random, size_t(i % 200));
    Bytes previous = indices;
    const size_t from = random() % (indices.size() + 1), to = from + random() % (indices.size() + 1 - from);
    const Bytes other = AnyRow(random, indices.size());
    std::copy(other.begin() + int64_t(from), other.begin() + int64_t(to), previous.begin() + int64_t(from));

    const auto count = int32_t(indices.size());
    const int32_t befores[] = {kNoPixel, 0, 1, 255, kTransparent}, start = befores[random() % 5];
    int32_t first = count, last = -1, changedToOne = count, before = start;
    Bytes expected;
    for (int32_t x = 0; x < count; ++x) {
      const uint8_t index = indices[size_t(x)];
      const bool changed = index != previous[size_t(x)];
      if (changed) {
        first = std::min(first, x);
        last = x;
        if (index == 1) changedToOne = std::min(changedToOne, x);
      }
      expected.push_back(changed || index == before ? index : kTransparent);
      before = expected.back();
    }
    expected.push_back(kUntouched);
    SCOPED_TRACE(testing::Message() << count << " pixels behind " << start);
    ASSERT_EQ(FirstDifference(indices.data(), previous.data(), count), first);
    ASSERT_EQ(LastDifference(indices.data(), previous.data(), count), last);
    ASSERT_EQ(FirstChangedTo(1, indices.data(), previous.data(), count), changedToOne);
    Bytes work(expected.size(), kUntouched);
    ASSERT_EQ(MergeRow(indices.data(), previous.data(), count, start, kTransparent, work.data()), before);
    ASSERT_EQ(work, expected);
    if (last >= 0 || count == 0) continue;
    std::fill(work.begin(), work.end(), kUntouched);
    ASSERT_EQ(FillUnchanged(indices.data(), count, start, kTransparent, work.data()), before);
    ASSERT_EQ(work, expected);
  }
}

} // namespace
} // namespace framereel
