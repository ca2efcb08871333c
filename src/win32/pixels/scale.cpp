// From the display's resolution to the scale.
#include "win32/pixels/scale.h"

#include <algorithm>

#include "win32/pixels/display.h"

namespace framereel {
namespace {

constexpr int32_t kPlain = 96, kLeast = 144, kMost = 384;

} // namespace

int32_t DotsPerInch() {
  const int32_t told = DisplayDotsPerInch();
  return told < kLeast ? kPlain : std::min(told, kMost);
}

Scaled::operator int32_t() const {
  return (pixels_ * DotsPerInch() + kPlain / 2) / kPlain;
}

} // namespace framereel
