// Arithmetic on Rects, and on numbers.
#include "core/rects.h"

#include <gtest/gtest.h>

#include "core/numbers.h"
#include "support/dice.h"

namespace framereel {
namespace {

// Beside what each of the pixels says, on a small field.
TEST(Rects, AreAsTheirPixels) {
  Dice dice(1);
  const auto any = [&dice] {
    const auto left = int16_t(dice.Below(7)), top = int16_t(dice.Below(7));
    return Rect{top, left, int16_t(top + 1 + dice.Below(4)), int16_t(left + 1 + dice.Below(4))};
  };
  for (int round = 0; round < 3000; ++round) {
    const Rect a = any(), b = any();
    const auto dh = int16_t(dice.Below(5) - 2), dv = int16_t(dice.Below(5) - 2);
    const Rect both = RectIntersect(a, b), moved = RectOffset(a, dh, dv), grown = RectGrow(a, dh, dv);
    EXPECT_TRUE(RectEqual(RectGrow(grown, int16_t(-dh), int16_t(-dv)), a));
    bool share = false, inside = true;
    for (int16_t i = 0; i < 12 * 12; ++i) {
      const auto x = int16_t(i % 12), y = int16_t(i / 12);
      const bool inA = RectHas(a, x, y), inB = RectHas(b, x, y);
      ASSERT_EQ(inA, x >= a.left && x < a.right && y >= a.top && y < a.bottom);
      ASSERT_EQ(RectHas(both, x, y), inA && inB);
      ASSERT_EQ(RectHas(moved, int16_t(x + dh), int16_t(y + dv)), inA);
      share = share || (inA && inB);
      inside = inside && (inB || !inA);
    }
    EXPECT_TRUE(RectsOverlap(a, b) || !share) << "so do those that touch";
    EXPECT_EQ(RectInside(a, b), inside);
    EXPECT_EQ(RectEqual(a, b), inside && RectInside(b, a));
  }
  EXPECT_TRUE(RectsOverlap({0, 0, 5, 5}, {5, 5, 6, 6}) && !RectsOverlap({0, 0, 5, 5}, {0, 6, 5, 7}));
}

TEST(Numbers, LimitsIncludeTheirBoundsAndLowWinsWhereTheyCross) {
  EXPECT_TRUE(PinValue(1, 0, 5) == 1 && PinValue(1, 9, 5) == 5 && PinValue(5, 3, 1) == 5);
  EXPECT_TRUE(InRange(1, 1, 2) && InRange(1, 2, 2) && !InRange(1, 3, 2) && !InRange(0.5, 0.4999, 1.0));
}

} // namespace
} // namespace framereel
