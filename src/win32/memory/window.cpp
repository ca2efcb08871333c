// Windows on the desktop in memory: ours, as the display is asked to hold them, and those of other programs.
#include <algorithm>

#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"

namespace framereel {

MemoryDesktop& TheMemoryDesktop() {
  return TheMemoryDisplay().desktop;
}

namespace {

PixelRect ScreenBounds() {
  return {0, 0, TheMemoryDisplay().width, TheMemoryDisplay().height};
}

// What stands above what, whatever order windows were raised in.
int32_t RankOf(const DisplayWindow& window) {
  if (window.taskBar || window.role == WindowRole::kPalette) return 1;
  if (window.role == WindowRole::kPopup) return 2;
  return window.role == WindowRole::kCover ? 3 : 0;
}

bool IsOnScreen(const DisplayWindow& window) {
  return window.shown && !window.minimised;
}

bool HidesOthers(const DisplayWindow& window) {
  return IsOnScreen(window) && window.role != WindowRole::kCover;
}

bool IsOwnedBy(const DisplayWindow* window, const DisplayWindow* owner) {
  while (window && window != owner) window = window->owner;
  return window != nullptr;
}

// The part of the window that the screen shows.
Region VisibleOf(const DisplayWindow& window) {
  Region region;
  if (!HidesOthers(window)) return region;
  region.Add(Intersect(window.place, ScreenBounds()));
  for (const auto& above : TheMemoryDesktop().windows) {
    if (above.get() == &window) break;
    if (HidesOthers(*above)) region.Subtract(above->place);
  }
  return region;
}

void FillRegion(const Region& region, uint32_t pixel) {
  region.ForEach([pixel](const PixelRect& r) { MemoryFill(r, pixel); });
}

void ShowDesktopPicture(const Region& region) {
  const MemoryDisplay& display = TheMemoryDisplay();
  if (display.desktop.picture.empty()) return FillRegion(region, 0);
  region.ForEach([&display](const PixelRect& r) {
    for (int32_t y = r.top; y < r.bottom; ++y) {
      for (int32_t x = r.left; x < r.right; ++x) {
        MemoryPixel(x, y) = display.desktop.picture[size_t(y) * size_t(display.width) + size_t(x)];
      }
    }
  });
}

void PaintOther(DisplayWindow* window, const Region& region) {
  ++window->paints;
  if (window->paint) {
    window->paint();
  } else {
    FillRegion(region, window->pixel);
  }
}

// What stood on the screen before there was any window is the desktop's own picture.
void KeepDesktopPicture() {
  if (TheMemoryDesktop().windows.empty()) TheMemoryDesktop().picture = TheMemoryDisplay().screen;
}

DisplayWindow* Add(DisplayWindow window) {
  KeepDesktopPicture();
  auto& windows = TheMemoryDesktop().windows;
  windows.insert(windows.begin(), std::make_unique<DisplayWindow>(std::move(window)));
  DisplayWindow* added = windows.front().get();
  MemoryRaise(added, true);
  return added;
}

DisplayWindow* NextForKeyboard(const DisplayWindow* leaving) {
  if (leaving->owner && IsOnScreen(*leaving->owner)) return leaving->owner;
  for (const auto& window : TheMemoryDesktop().windows) {
    if (IsOnScreen(*window) && MemoryIsManaged(*window) && window.get() != leaving) return window.get();
  }
  return nullptr;
}

void LoseKeyboard(DisplayWindow* window) {
  if (TheMemoryDesktop().keyboard == window) MemorySetKeyboard(NextForKeyboard(window));
}

void LetGoOf(const DisplayWindow* window) {
  MemoryDesktop& desktop = TheMemoryDesktop();
  for (DisplayWindow** slot : {&desktop.captured, &desktop.pressed, &desktop.dragged}) {
    if (*slot == window) *slot = nullptr;
  }
}

void Free(DisplayWindow* window) {
  MemoryDesktop& desktop = TheMemoryDesktop();
  LoseKeyboard(window);
  LetGoOf(window);
  for (const auto& other : desktop.windows) {
    if (other->owner == window) other->owner = nullptr;
  }
  const Region area = VisibleOf(*window);
  const auto isForIt = [=](const DisplayEvent& event) { return event.window == window; };
  desktop.events.erase(std::remove_if(desktop.events.begin(), desktop.events.end(), isForIt), desktop.events.end());
  const auto isIt = [=](const auto& each) { return each.get() == window; };
  desktop.windows.erase(std::remove_if(desktop.windows.begin(), desktop.windows.end(), isIt), desktop.windows.end());
  MemoryExpose(area);
}

} // namespace

// ---- Between the files -------------------------------------------------------------------------------------------

bool MemoryIsManaged(const DisplayWindow& window) {
  return !window.taskBar && window.role != WindowRole::kPopup && window.role != WindowRole::kCover;
}

void MemoryExpose(const Region& area) {
  Region rest = area;
  rest.Intersect(ScreenBounds());
  for (const auto& window : TheMemoryDesktop().windows) {
    if (!HidesOthers(*window)) continue;
    Region part = rest;
    part.Intersect(window->place);
    rest.Subtract(window->place);
    if (part.IsEmpty()) continue;
    if (window->ours) {
      part.ForEach([&](const PixelRect& r) { MemoryQueueExposed(window.get(), r); });
    } else {
      PaintOther(window.get(), part);
    }
  }
  ShowDesktopPicture(rest);
}

// Whatever a window owns goes with it, and so stays above it.
void MemoryRaise(DisplayWindow* window, bool top) {
  auto& windows = TheMemoryDesktop().windows;
  const auto goes = [=](const auto& each) { return IsOwnedBy(each.get(), window); };
  if (top) {
    std::stable_partition(windows.begin(), windows.end(), goes);
  } else {
    std::stable_partition(windows.begin(), windows.end(), [&](const auto& each) { return !goes(each); });
  }
  const auto above = [](const auto& a, const auto& b) { return RankOf(*a) > RankOf(*b); };
  std::stable_sort(windows.begin(), windows.end(), above);
}

void MemoryPlace(DisplayWindow* window, const PixelRect& place) {
  Region area = VisibleOf(*window);
  window->place = place;
  area.Add(VisibleOf(*window));
  MemoryExpose(area);
}

void MemoryMinimise(DisplayWindow* window, bool minimised) {
  if (window->minimised == minimised) return;
  const Region before = VisibleOf(*window);
  window->minimised = minimised;
  if (window->ours) MemoryQueueEvent(DisplayEventKind::kMinimised, window, minimised);
  if (minimised) LoseKeyboard(window);
  MemoryExpose(minimised ? before : VisibleOf(*window));
}

void MemorySetKeyboard(DisplayWindow* window) {
  DisplayWindow*& keyboard = TheMemoryDesktop().keyboard;
  if (keyboard == window) return;
  if (keyboard && keyboard->ours) MemoryQueueEvent(DisplayEventKind::kActive, keyboard, false);
  keyboard = window;
  if (window && window->ours) MemoryQueueEvent(DisplayEventKind::kActive, window, true);
}

// ---- Other programs ----------------------------------------------------------------------------------------------

DisplayWindow* MemoryOpenWindow(const std::string& title, const PixelRect& place, uint32_t pixel) {
  DisplayWindow record = {};
  record.role = WindowRole::kMain;
  record.place = place;
  record.title = title;
  record.pixel = pixel;
  record.shown = true;
  DisplayWindow* window = Add(std::move(record));
  MemoryExpose(Region(place));
  return window;
}

void MemoryCloseWindow(DisplayWindow* window) {
  Free(window);
}

void MemoryPaintWindow(const DisplayWindow& window, const PixelRect& where, uint32_t pixel) {
  Region region = VisibleOf(window);
  region.Intersect({where.left + window.place.left, where.top + window.place.top, where.right + window.place.left,
                    where.bottom + window.place.top});
  FillRegion(region, pixel);
}

void MemoryPaintDesktop(const PixelRect& where, uint32_t pixel) {
  MemoryDisplay& display = TheMemoryDisplay();
  if (display.desktop.picture.empty()) display.desktop.picture.assign(display.screen.size(), 0);
  const PixelRect on = Intersect(where, ScreenBounds());
  for (int32_t y = on.top; y < on.bottom; ++y) {
    for (int32_t x = on.left; x < on.right; ++x) {
      display.desktop.picture[size_t(y) * size_t(display.width) + size_t(x)] = pixel;
    }
  }
  Region region(on);
  for (const auto& window : display.desktop.windows) {
    if (HidesOthers(*window)) region.Subtract(window->place);
  }
  FillRegion(region, pixel);
}

void MemorySetTaskBar(const PixelRect& place) {
  auto& windows = TheMemoryDesktop().windows;
  const auto bar = std::find_if(windows.begin(), windows.end(), [](const auto& each) { return each->taskBar; });
  if (bar != windows.end()) Free(bar->get());
  if (!IsEmpty(place)) {
    DisplayWindow record = {};
    record.taskBar = record.shown = true;
    record.place = place;
    record.pixel = PixelBits(TheMemoryDisplay().layout);
    Add(std::move(record));
    MemoryExpose(Region(place));
  }
  MemoryQueueEvent(DisplayEventKind::kScreenChanged, nullptr, false);
}

void MemorySetMonitors(const std::vector<PixelRect>& monitors) {
  TheMemoryDesktop().monitors = monitors;
  MemoryQueueEvent(DisplayEventKind::kScreenChanged, nullptr, false);
}

DisplayWindow* MemoryWindowTitled(const std::string& title) {
  for (const auto& window : TheMemoryDesktop().windows) {
    if (window->shown && window->title == title) return window.get();
  }
  return nullptr;
}

DisplayWindow* MemoryWindowAt(int32_t x, int32_t y) {
  for (const auto& window : TheMemoryDesktop().windows) {
    const PixelRect& r = window->place;
    if (IsOnScreen(*window) && x >= r.left && x < r.right && y >= r.top && y < r.bottom) return window.get();
  }
  return nullptr;
}

// ---- Ours --------------------------------------------------------------------------------------------------------

DisplayWindow* DisplayNewWindow(const DisplayWindowSpec& spec) {
  MemoryDisplay& display = TheMemoryDisplay();
  if (++display.windowsAsked == display.lostAtWindow) display.lost = true;
  if (display.lost || !display.present) return nullptr;
  DisplayWindow record = {};
  record.ours = true;
  record.role = spec.role;
  record.place = spec.place;
  record.owner = spec.owner;
  record.title = spec.title;
  return Add(std::move(record));
}

void DisplayFreeWindow(DisplayWindow* window) {
  Free(window);
}

void DisplayShowWindow(DisplayWindow* window, bool shown) {
  if (window->shown == shown) return;
  const Region before = VisibleOf(*window);
  window->shown = shown;
  if (!shown) LoseKeyboard(window);
  if (shown) MemoryRaise(window, true);
  MemoryExpose(shown ? VisibleOf(*window) : before);
}

void DisplayPlaceWindow(DisplayWindow* window, const PixelRect& place) {
  std::deque<DisplayEvent>& events = TheMemoryDesktop().events;
  const auto isOlder = [=](const DisplayEvent& event) {
    return event.kind == DisplayEventKind::kPlaced && event.window == window;
  };
  events.erase(std::remove_if(events.begin(), events.end(), isOlder), events.end());
  MemoryPlace(window, place);
}

void DisplayStackWindow(DisplayWindow* window, bool top) {
  const Region before = VisibleOf(*window);
  MemoryRaise(window, top);
  Region changed = VisibleOf(*window);
  changed.Add(before);
  Region same = VisibleOf(*window);
  same.Intersect(before);
  changed.Subtract(same);
  MemoryExpose(changed);
}

void DisplayTitleWindow(DisplayWindow* window, const char* title) {
  window->title = title;
}

void DisplayModalWindow(DisplayWindow* window, bool modal) {
  window->modal = modal;
}

void DisplayIconWindow(DisplayWindow* window, std::span<const PointerPicture> icon) {
  window->iconSizes = icon.size();
}

bool DisplayMinimiseWindow(DisplayWindow* window, bool minimised) {
  if (TheMemoryDesktop().leavesMinimising) return false;
  MemoryMinimise(window, minimised);
  return true;
}

void DisplayActivateWindow(DisplayWindow* window) {
  if (IsOnScreen(*window)) MemorySetKeyboard(window);
}

bool DisplayDragWindow(DisplayWindow* window, int32_t, int32_t) {
  MemoryDesktop& desktop = TheMemoryDesktop();
  if (desktop.leavesDragging) return false;
  desktop.dragged = window;
  desktop.pressed = desktop.captured = nullptr;
  return true;
}

void DisplayPresent(DisplayWindow* window, const Surface& surface, const PixelRect& part) {
  MemoryDisplay& display = TheMemoryDisplay();
  if (display.lost || surface.layout.depth != display.layout.depth) return;
  ++display.desktop.presents;
  const int32_t dx = window->place.left, dy = window->place.top;
  Region region = VisibleOf(*window);
  region.Intersect({part.left + dx, part.top + dy, part.right + dx, part.bottom + dy});
  region.Intersect({dx, dy, dx + surface.width, dy + surface.height});
  region.ForEach([&](const PixelRect& r) {
    display.desktop.presentedPixels += uint64_t(r.right - r.left) * uint64_t(r.bottom - r.top);
    for (int32_t y = r.top; y < r.bottom; ++y) {
      for (int32_t x = r.left; x < r.right; ++x) MemoryPixel(x, y) = PixelAt(surface, x - dx, y - dy);
    }
  });
}

void DisplayRefresh(const PixelRect& where) {
  ++TheMemoryDesktop().refreshes;
  MemoryExpose(Region(where));
}

PixelRect DisplayUsableArea() {
  PixelRect free = ScreenBounds();
  for (const auto& window : TheMemoryDesktop().windows) {
    if (!window->taskBar) continue;
    const PixelRect& bar = window->place;
    const bool lies = bar.right - bar.left >= bar.bottom - bar.top;
    if (lies && bar.top <= 0) free.top = bar.bottom;
    if (lies && bar.top > 0) free.bottom = bar.top;
    if (!lies && bar.left <= 0) free.left = bar.right;
    if (!lies && bar.left > 0) free.right = bar.left;
  }
  return free;
}

std::vector<PixelRect> DisplayMonitors() {
  std::vector<PixelRect> shown;
  for (const PixelRect& monitor : TheMemoryDesktop().monitors) {
    const PixelRect part = Intersect(monitor, ScreenBounds());
    if (!IsEmpty(part)) shown.push_back(part);
  }
  if (shown.empty()) shown.push_back(ScreenBounds());
  return shown;
}

} // namespace framereel
