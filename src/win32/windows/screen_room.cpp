// Where on the screen there is room for something new.
#include "win32/windows/screen_room.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "win32/pixels/display_windows.h"

namespace framereel {

namespace {

// How far a coordinate is from the pixels between two others, squared.
int64_t SquareAway(int32_t v, int32_t from, int32_t to) {
  const int64_t away = std::max({from - v, 0, v - (to - 1)});
  return away * away;
}

} // namespace

PixelRect MonitorOf(const PixelRect& place) {
  const int32_t x = (place.left + place.right) / 2, y = (place.top + place.bottom) / 2;
  const auto nearer = [=](const PixelRect& a, const PixelRect& b) {
    const auto away = [=](const PixelRect& r) {
      return SquareAway(x, r.left, r.right) + SquareAway(y, r.top, r.bottom);
    };
    return std::pair(away(a), AreaOf(a)) < std::pair(away(b), AreaOf(b));
  };
  const std::vector<PixelRect> monitors = DisplayMonitors();
  return *std::min_element(monitors.begin(), monitors.end(), nearer);
}

PixelRect RoomAround(const PixelRect& place) {
  const PixelRect monitor = MonitorOf(place), room = Intersect(DisplayUsableArea(), monitor);
  return IsEmpty(room) ? monitor : room;
}

int32_t Within(int32_t wished, int32_t length, int32_t from, int32_t to) {
  return std::max(from, std::min(wished, to - length));
}

} // namespace framereel
