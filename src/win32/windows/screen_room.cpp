// Where on the screen there is room for something new.
#include "win32/windows/screen_room.h"

#include <algorithm>

#include "win32/pixels/display_windows.h"

namespace framereel {

PixelRect RoomAround(const PixelRect& place) {
  const PixelRect usable = DisplayUsableArea();
  const auto middle = [](int32_t from, int32_t to, int32_t least, int32_t most) {
    return std::max(least, std::min((from + to) / 2, most - 1));
  };
  const PixelRect monitor = DisplayMonitorAt(middle(place.left, place.right, usable.left, usable.right),
                                             middle(place.top, place.bottom, usable.top, usable.bottom));
  const PixelRect room = Intersect(usable, monitor);
  return IsEmpty(room) ? usable : room;
}

int32_t Within(int32_t wished, int32_t length, int32_t from, int32_t to) {
  return std::max(from, std::min(wished, to - length));
}

} // namespace framereel
