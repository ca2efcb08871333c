// Chance from a seed, the same on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace framereel {

struct Dice {
  std::mt19937 random;

  explicit Dice(uint32_t seed) : random(seed) {}
  int Below(int limit) { return int(random() % uint32_t(limit)); }
  bool OneIn(int n) { return Below(n) == 0; }
  template <typename T, size_t n> const T& OneOf(const T (&choices)[n]) { return choices[Below(int(n))]; }
};

} // namespace framereel
