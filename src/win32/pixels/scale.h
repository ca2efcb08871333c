// How large everything of ours is drawn on this display. Constants of pixels, here and on the floors above, are written
// for a screen of 96 pixels to the inch and stand as Scaled where the user sees them, so that a person at a screen of
// twice the resolution finds them as large. What is recorded knows nothing of it.
#pragma once

#include <cstdint>

namespace framereel {

// Pixels to the inch for text and what goes with it: what the user's settings say at the start, from 144 to 384; 96 for
// anything below.
int32_t DotsPerInch();

// The rounded length on this display of so many pixels at 96 to the inch, worked out where it is used.
class Scaled {
public:
  explicit constexpr Scaled(int32_t pixels) : pixels_(pixels) {}
  operator int32_t() const;

private:
  int32_t pixels_; // not negative
};

inline constexpr Scaled kThinLine{1}; // the thickness of lines

// The whole factor by which pictures are enlarged.
inline int32_t PictureScale() {
  return kThinLine;
}

} // namespace framereel
