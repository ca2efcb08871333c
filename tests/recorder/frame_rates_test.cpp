// The frame rates: what the popup says is the delay, and any delay finds its rate.
#include "recorder/engine/frame_rates.h"

#include <gtest/gtest.h>

#include <string>

#include "core/app_strings.h"
#include "support/desktop.h"

namespace framereel {
namespace {

TEST(FrameRates, TheTextsTellTheDelays) {
  const Desktop desktop(64, 48, 24);
  uint16_t before = UINT16_MAX;
  for (const FrameRate& rate : FrameRateTable) {
    const std::string text = AppString(rate.text);
    const int number = std::stoi(text);
    EXPECT_EQ(text.substr(text.find(' ')), rate.delay > 1000 ? " spf" : " fps");
    EXPECT_EQ(rate.delay, rate.delay > 1000 ? number * 1000 : 1000 / number) << text;
    EXPECT_LT(rate.delay, before) << text;
    before = rate.delay;
  }
}

TEST(FrameRates, ADelayTakesTheFirstRateThatItReaches) {
  const struct {
    int32_t delay;
    uint16_t index, snapped;
  } cases[] = {{INT32_MAX, 0, 5000}, {5000, 0, 5000}, {4999, 1, 4000},    {340, 6, 333},
               {333, 6, 333},        {332, 7, 250},   {25, 11, 25},       {24, 11, 25},
               {0, 11, 25},          {-333, 11, 25},  {INT32_MIN, 11, 25}};
  for (const auto& one : cases) {
    EXPECT_EQ(FrameRateIndex(one.delay), one.index) << one.delay;
    EXPECT_EQ(SnapFrameDelay(one.delay), one.snapped) << one.delay;
  }
}

} // namespace
} // namespace framereel
