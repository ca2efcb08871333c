// The loops over pixels that were written for speed, against the same a pixel at a time.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "recorder/colour_tables.h"
#include "recorder/cube_index.h"
#include "recorder/plain_difference.h"
#include "recorder/work_rows.h"

namespace framereel {
namespace {

constexpr uint8_t kUntouched = 0xE7;

using Bytes = std::vector<uint8_t>;

TEST(CubeTables, RoundToTheNearestLevel) {
  for (int value = 0; value < 256; ++value) {
    const int distance = std::abs(CubeLevel8[size_t(value)] * 51 - value);
    EXPECT_LE(distance, 25) << value; // half of 51, and no byte lies in the middle
  }
  for (int sum = 0; sum <= 45; ++sum) EXPECT_LE(std::abs(CubeLevelSum9[size_t(sum)] * 9 - sum), 4) << sum;
  EXPECT_EQ(CubeLanes[215], 0x050505U);
  EXPECT_EQ(CubeLanes[180], 0x050000U);
  EXPECT_EQ(CubeLanes[1], 1U);
}

TEST(BgrToCube, GivesTheNearestLevelsOverTheWholeDomainOfEachChannel) {
  Bytes bgr, expected;
  for (int value = 0; value < 256; ++value) {
    for (int other = 0; other < 256; ++other) {
      const auto v = uint8_t(value), o = uint8_t(other), third = uint8_t(value * 7 + other * 13);
      for (const PaletteColour c : {PaletteColour{v, o, third}, {third, v, o}, {o, third, v}}) {
        bgr.insert(bgr.end(), {c.blue, c.green, c.red});
        expected.push_back(PlainCubeIndex(c));
      }
    }
  }
  Bytes indices(expected.size()), plain(expected.size());
  BgrToCube(bgr.data(), expected.size(), indices.data());
  BgrToCubePlain(bgr.data(), expected.size(), plain.data());
  EXPECT_EQ(indices, expected);
  EXPECT_EQ(plain, expected);
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

uint8_t AnyIndex(std::mt19937& random) {
  constexpr uint8_t kIndices[] = {0, 1, 255}; // 255 and no pixel are not the same
  return kIndices[random() % 3];
}

// A row of few colours in runs, as screens have them.
Bytes AnyRow(std::mt19937& random, size_t length) {
  Bytes row;
  while (row.size() < length) row.insert(row.end(), random() % 2 ? 1 : random() % 90, AnyIndex(random));
  row.resize(length);
  return row;
}

// The same row with some pixels changed.
Bytes ChangedRow(std::mt19937& random, Bytes row) {
  if (row.empty()) return row;
  for (uint32_t i = random() % 5; i > 0; --i) {
    const size_t place = random() % row.size(), end = std::min(row.size(), place + random() % 70);
    std::fill(row.begin() + int64_t(place), row.begin() + int64_t(end), AnyIndex(random));
  }
  return row;
}

TEST(RowDifferences, AreTheFirstAndTheLastPlace) {
  std::mt19937 random(2);
  for (int i = 0; i < 4000; ++i) {
    const Bytes a = AnyRow(random, size_t(i % 200)), b = ChangedRow(random, a);
    const auto count = int32_t(a.size());
    int32_t first = count, last = -1, changedToOne = count;
    for (int32_t x = 0; x < count; ++x) {
      if (a[size_t(x)] == b[size_t(x)]) continue;
      first = std::min(first, x);
      last = x;
      if (a[size_t(x)] == 1) changedToOne = std::min(changedToOne, x);
    }
    ASSERT_EQ(FirstDifference(a.data(), b.data(), count), first);
    ASSERT_EQ(LastDifference(a.data(), b.data(), count), last);
    ASSERT_EQ(FirstChangedTo(1, a.data(), b.data(), count), changedToOne);
  }
}

TEST(MergeRow, FollowsTheRunRuleFromAnyPixelAhead) {
  constexpr uint8_t kTransparent = 216;
  std::mt19937 random(3);
  for (int i = 0; i < 8000; ++i) {
    const Bytes indices = AnyRow(random, size_t(i % 200));
    const Bytes previous = i % 7 ? ChangedRow(random, indices) : indices;
    const int32_t befores[] = {kNoPixel, 0, 1, 255, kTransparent};
    const int32_t start = befores[random() % 5];
    int32_t before = start;
    Bytes expected;
    for (size_t x = 0; x < indices.size(); ++x) {
      const bool kept = indices[x] != previous[x] || indices[x] == before;
      expected.push_back(kept ? indices[x] : kTransparent);
      before = expected.back();
    }
    expected.push_back(kUntouched);
    Bytes work(expected.size(), kUntouched);
    const auto count = int32_t(indices.size());
    ASSERT_EQ(MergeRow(indices.data(), previous.data(), count, start, kTransparent, work.data()), before);
    ASSERT_EQ(work, expected) << count << " pixels behind " << start;
    if (indices != previous || count == 0) continue;
    std::fill(work.begin(), work.end(), kUntouched);
    ASSERT_EQ(FillUnchanged(indices.data(), count, start, kTransparent, work.data()), before);
    ASSERT_EQ(work, expected) << count << " unchanged pixels behind " << start;
  }
}

} // namespace
} // namespace framereel
