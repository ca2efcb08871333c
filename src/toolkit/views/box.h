// Box: the plain container. Its children stay where they are put, and it sizes itself around them; without children and
// frame it is a gap. The containers that lay their children out are another class.
//
// Places that are asked for (ViewCreateAt, ViewMove) count from the Box's inside corner, and 32767 leaves a coordinate
// as it is. A child's anchor is the point of it that stays where it is when its size changes.
#pragma once

#include "platform/records/view_record.h"

namespace framereel {

enum BoxAnchor : uint32_t {
  kAnchorRight = 2,
  kAnchorCentreAcross = 3, // else the left edge
  kAnchorBottom = 4,
  kAnchorCentreDown = 12, // else the top edge
};

inline constexpr int16_t kKeepPlace = 32767;

// The class; made when the classes are set up, and empty before.
const ViewClass* BoxClass();
void BoxSetUpClass();

// A line of one pixel around the bounds, with two kept free on the inside. On at creation.
void BoxSetFrame(View* box, bool framed);

} // namespace framereel
