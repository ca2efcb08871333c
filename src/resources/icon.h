// The program's icon, which the build makes from the files in icon/ (icon/embed.cmake). It is drawn in
// packaging/icons/.
#pragma once

#include <cstdint>
#include <span>

namespace framereel {

struct IconPicture {
  int32_t side;           // pixels; it is a square
  const uint32_t* pixels; // rows from the top down: alpha, red, green, blue from the highest byte, not premultiplied
};

// The sizes of it, for the whole run.
std::span<const IconPicture> IconPictures();

// The numbers under which it is loaded: the frame window's class and the two of the windows within.
inline constexpr uint16_t kIconResources[] = {1, 210, 211};

} // namespace framereel
