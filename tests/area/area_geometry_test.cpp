// Fitting the capture area to whole blocks.
#include "area/area_geometry.h"

#include <gtest/gtest.h>

#include "recorder/engine/recorder_state.h"

namespace framereel {
namespace {

TEST(AlignSpan, GrowsWhereThereIsRoomAndShrinksWhereThereIsNone) {
  const struct {
    int16_t low, high, lowest, highest, denominator;
    int16_t alignedLow, alignedHigh;
  } cases[] = {
      {100, 201, 1, 1023, 3, 99, 201},    // one pixel is missing: the low side gives it
      {100, 200, 1, 1023, 3, 99, 201},    // two are missing: one on each side
      {100, 202, 1, 1023, 3, 100, 202},   // whole already
      {1, 101, 1, 1023, 3, 1, 103},       // the low side is at its bound
      {1, 101, 1, 102, 3, 2, 101},        // grown to the bounds, and still not whole: cut from there
      {922, 1023, 1, 1023, 3, 921, 1023}, // the high side is
      {921, 1023, 1, 1023, 4, 919, 1023}, // and then the low side gives all
      {1, 1023, 1, 1023, 3, 2, 1022},     // both are: 1022 is cut by 2
      {1, 1024, 1, 1024, 2, 2, 1024},     // cut by 1, on the low side
      {0, 1024, 1, 1023, 3, 1, 1024},     // beyond the bounds on both sides it only shrinks
      {10, 11, 10, 11, 3, 11, 11},        // nothing is left
      {-32768, 32767, -32768, 32767, 2, -32767, 32767},
      {32766, 32767, -32768, 32767, 3, 32764, 32767},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.low << " to " << c.high << " by " << c.denominator);
    int16_t low = c.low, high = c.high;
    AlignSpan(&low, &high, c.lowest, c.highest, c.denominator);
    EXPECT_EQ(low, c.alignedLow);
    EXPECT_EQ(high, c.alignedHigh);
  }
}

} // namespace
} // namespace framereel
