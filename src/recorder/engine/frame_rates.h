// The frame rates that the user can choose from. The panel's popup shows them and the settings file keeps the delay;
// the command line takes any delay between the two ends.
#pragma once

#include <cstdint>

namespace framereel {

struct FrameRate {
  uint16_t text;  // of AppString
  uint16_t delay; // ms between frames
};

// In the popup's order, from the slowest to the fastest.
inline constexpr FrameRate FrameRateTable[] = {
    {81, 5000}, {80, 4000}, {79, 3000}, {78, 2000}, // seconds per frame
    {77, 1000}, {34, 500},  {35, 333},  {36, 250},  {37, 200}, {38, 100}, {39, 50}, {33, 25},
};
inline constexpr uint16_t kFrameRateCount = sizeof FrameRateTable / sizeof FrameRateTable[0];
inline constexpr uint16_t kLongestDelay = FrameRateTable[0].delay;
inline constexpr uint16_t kShortestDelay = FrameRateTable[kFrameRateCount - 1].delay;

// The first row whose delay is not above the one given, in ms; the fastest for a delay below them all.
uint16_t FrameRateIndex(int32_t delay);
// The delay of that row.
uint16_t SnapFrameDelay(int32_t delay);

} // namespace framereel
