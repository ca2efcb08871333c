// Arithmetic on Rects.
#include "core/rects.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace framereel {
namespace {

constexpr Rect kBig = {0, 0, 20, 30};

TEST(Rects, TouchingCountsAsOverlapAndAnIntersectionMayBeInverted) {
  EXPECT_TRUE(RectsOverlap(kBig, {20, 30, 25, 35}));
  EXPECT_TRUE(RectsOverlap({20, 30, 25, 35}, kBig));
  EXPECT_FALSE(RectsOverlap(kBig, {0, 31, 5, 35}));
  EXPECT_FALSE(RectsOverlap({0, 31, 5, 35}, kBig));
  EXPECT_TRUE(RectEqual(RectIntersect(kBig, {5, 10, 50, 20}), {5, 10, 20, 20}));
  EXPECT_TRUE(RectEqual(RectIntersect(kBig, {5, 40, 10, 50}), {5, 40, 10, 30}));
  EXPECT_TRUE(RectInside(kBig, kBig));
  EXPECT_FALSE(RectInside(kBig, {0, 1, 20, 30}));
  EXPECT_TRUE(RectHas(kBig, 29, 0));
  EXPECT_FALSE(RectHas(kBig, 30, 0));
}

TEST(Rects, GrowsShrinksAndMovesEachSide) {
  EXPECT_TRUE(RectEqual(RectGrow(kBig, 1, 2), {-2, -1, 22, 31}));
  EXPECT_TRUE(RectEqual(RectGrow(kBig, -1, -2), {2, 1, 18, 29}));
  EXPECT_TRUE(RectEqual(RectOffset(kBig, 5, -7), {-7, 5, 13, 35}));
}

// The strips cover each pixel of the first rectangle that the other leaves, once, in their order.
TEST(Rects, WhatIsLeftOfARectComesInStrips) {
  const std::pair<Rect, std::vector<Rect>> cases[] = {
      {{5, 5, 10, 10}, {{0, 0, 5, 30}, {10, 0, 20, 30}, {5, 0, 10, 5}, {5, 10, 10, 30}}},
      {{-5, 5, 10, 10}, {{10, 0, 20, 30}, {0, 0, 10, 5}, {0, 10, 10, 30}}},
      {{-5, -5, 10, 50}, {{10, 0, 20, 30}}},
      {{-5, -5, 50, 50}, {}},
      {{0, 40, 20, 50}, {kBig}},
  };
  for (const auto& [taken, strips] : cases) {
    Rect out[4];
    ASSERT_EQ(size_t(RectSubtract(kBig, taken, out)), strips.size());
    for (size_t i = 0; i < strips.size(); ++i) EXPECT_TRUE(RectEqual(out[i], strips[i])) << taken.top << " " << i;
  }
}

} // namespace
} // namespace framereel
