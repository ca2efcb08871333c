// What both containers, Box and Stack, look like behind their children.
#pragma once

#include "platform/records/colour.h"
#include "platform/records/view_record.h"
#include "win32/pixels/scale.h"

namespace framereel {

inline constexpr Scaled kFrameRoom{2}; // that a frame keeps free on each side, its line among them

struct ContainerLook {
  bool framed; // a thin line round the bounds
  bool filled;
  Colour background; // white at first; used when filled
};

// Framed, not filled.
ContainerLook NewContainerLook();
// Draws frame and ground over the bounds; the children come on top.
void DrawContainerLook(const View* view, const ContainerLook& look);

} // namespace framereel
