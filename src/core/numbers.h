// Small helpers on numbers: limits and ranges.
#pragma once

#include <cstdint>

namespace framereel {

// The value, but not below `low` nor above `high`. Where the bounds cross, `low` wins.
constexpr int32_t PinValue(int32_t low, int32_t value, int32_t high) {
  if (value <= low) return low;
  return value >= high ? high : value;
}

// What lies beyond 16 bits stops at the end.
constexpr int16_t PinToShort(int32_t value) {
  return int16_t(PinValue(INT16_MIN, value, INT16_MAX));
}

// Bounds included.
constexpr bool InRange(int32_t low, int32_t value, int32_t high) {
  return low <= value && value <= high;
}
constexpr bool InRange(double low, double value, double high) {
  return low <= value && value <= high;
}

constexpr int32_t Minimum(int32_t a, int32_t b) {
  return a < b ? a : b;
}
constexpr int32_t Maximum(int32_t a, int32_t b) {
  return a > b ? a : b;
}
constexpr double Minimum(double a, double b) {
  return a < b ? a : b;
}
constexpr double Maximum(double a, double b) {
  return a > b ? a : b;
}

} // namespace framereel
