// Arithmetic on Rects.
#include "toolkit/rects.h"

#include <gtest/gtest.h>

namespace framereel {
namespace {

constexpr Rect kBig = {0, 0, 20, 30};

TEST(Rects, TouchingCountsAsOverlapAndAnIntersectionMayBeInverted) {
  EXPECT_TRUE(RectsOverlap(kBig, {20, 30, 25, 35}));
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

// The strips cover each pixel of a that b leaves, once.
void ExpectExact(const Rect& a, const Rect& b, int strips) {
  Rect out[4];
  const int count = RectSubtract(a, b, out);
  EXPECT_EQ(count, strips);
  for (int16_t y = a.top; y < a.bottom; ++y) {
    for (int16_t x = a.left; x < a.right; ++x) {
      int covers = 0;
      for (int i = 0; i < count; ++i) covers += RectHas(out[i], x, y);
      ASSERT_EQ(covers, RectHas(b, x, y) ? 0 : 1) << x << ", " << y;
    }
  }
}

TEST(Rects, WhatIsLeftOfARectComesInStrips) {
  ExpectExact(kBig, {5, 5, 10, 10}, 4);
  ExpectExact(kBig, {-5, 5, 10, 10}, 3);
  ExpectExact(kBig, {-5, -5, 10, 50}, 1);
  ExpectExact(kBig, {-5, -5, 50, 50}, 0);
  ExpectExact(kBig, {0, 40, 20, 50}, 1);
  Rect out[4];
  RectSubtract(kBig, {5, 5, 10, 10}, out);
  EXPECT_TRUE(RectEqual(out[0], {0, 0, 5, 30}));
  EXPECT_TRUE(RectEqual(out[1], {10, 0, 20, 30}));
  EXPECT_TRUE(RectEqual(out[2], {5, 0, 10, 5}));
  EXPECT_TRUE(RectEqual(out[3], {5, 10, 10, 30}));
}

} // namespace
} // namespace framereel
