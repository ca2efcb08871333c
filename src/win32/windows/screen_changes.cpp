// What the screen was like when windows last looked, and what they are told when it is another.
#include "win32/windows/screen_changes.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "win32/pixels/rectangles.h"
#include "win32/win32_windows.h"
#include "win32/windows/activation.h"
#include "win32/windows/placement.h"
#include "win32/windows/screen_room.h"
#include "win32/windows/sending.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/visible.h"
#include "win32/windows/window_contexts.h"
#include "win32/windows/window_surfaces.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

bool SameScreen(const ScreenFacts& a, const ScreenFacts& b) {
  return a.width == b.width && a.height == b.height && a.layout.depth == b.layout.depth;
}

// Pixels of another layout are of no use: all windows get new ones and paint.
void RemakeSurfaces() {
  for (HWND window : TheWindows().topLevels) {
    FitSurface(window);
    Expose(window, VisibleWindow(*window));
  }
  RefreshContexts();
}

// How many pixels of a place monitors show.
int64_t ShownOf(const PixelRect& place, const std::vector<PixelRect>& monitors) {
  Region shown;
  for (const PixelRect& monitor : monitors) shown.Add(Intersect(monitor, place));
  int64_t pixels = 0;
  shown.ForEach([&pixels](const PixelRect& r) { pixels += AreaOf(r); });
  return pixels;
}

// The place, brought to a monitor that is there if less of it is seen than there was. What the user or the program had
// put off the screen before stays there.
PixelRect BroughtBack(const PixelRect& place, const std::vector<PixelRect>& before) {
  if (ShownOf(place, TheWindows().monitors) >= ShownOf(place, before)) return place;
  const PixelRect room = RoomAround(place);
  const int32_t left = Within(place.left, WidthOf(place), room.left, room.right);
  const int32_t top = Within(place.top, HeightOf(place), room.top, room.bottom);
  return Moved(place, left - place.left, top - place.top);
}

void BringBack(HWND window, const std::vector<PixelRect>& before) {
  const TopLevel& top = *window->top;
  if (top.role == WindowRole::kPopup || top.role == WindowRole::kCover) return;
  if (top.asCaption) {
    const PixelRect caption = BroughtBack(window->place, before);
    DisplayPlaceWindow(top.shown.display, caption);
    Place(window, caption, true);
    if (!IsLive(window)) return;
  }
  Place(window, BroughtBack(window->minimised ? window->normalPlace : window->place, before), false);
}

} // namespace

void OnScreenChanged() {
  WindowSystem& system = TheWindows();
  const ScreenFacts facts = DisplayScreen();
  const PixelRect usable = DisplayUsableArea();
  const bool otherPixels = !SameScreen(facts, system.screen);
  const bool otherArea = !Same(usable, system.usableArea);
  const std::vector<PixelRect> before = std::exchange(system.monitors, DisplayMonitors());
  const bool otherMonitors =
      !std::equal(before.begin(), before.end(), system.monitors.begin(), system.monitors.end(), Same);
  system.screen = facts;
  system.usableArea = usable;
  if (otherPixels || otherMonitors) CancelMenu();
  if (otherPixels) RemakeSurfaces();
  if (otherPixels || otherMonitors) {
    SendToTopLevels(WM_DISPLAYCHANGE, WPARAM(facts.layout.depth), MAKELPARAM(facts.width, facts.height));
  }
  if (otherArea) SendToTopLevels(WM_WININICHANGE, 0, 0);
  for (HWND window : std::vector(system.topLevels)) {
    if (otherMonitors && IsLive(window)) BringBack(window, before);
  }
}

void NoteScreen() {
  WindowSystem& system = TheWindows();
  if (!system.topLevels.empty()) return;
  system.screen = DisplayScreen();
  system.usableArea = DisplayUsableArea();
  system.monitors = DisplayMonitors();
}

} // namespace framereel
