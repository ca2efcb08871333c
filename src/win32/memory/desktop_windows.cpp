// The windows of all programs on the desktop in memory, as they are seen at a place of the screen.
#include <algorithm>

#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

bool IsSeen(const DisplayWindow& window) {
  return window.shown && !window.minimised && window.role != WindowRole::kCover;
}

// A window of that name, and where it stands on the screen.
struct Named {
  DisplayWindow* window;              // of a top-level window
  std::vector<MemoryChild>* children; // null: it is not there, or cannot be seen
  PixelRect place;
};

Named FindIn(std::vector<MemoryChild>& windows, const PixelRect& around, DesktopWindow name) {
  for (MemoryChild& child : windows) {
    if (!child.visible) continue;
    const PixelRect place = Moved(child.place, around.left, around.top);
    if (child.name == name) return {nullptr, &child.children, place};
    const Named below = FindIn(child.children, place, name);
    if (below.children) return below;
  }
  return {};
}

Named Find(DesktopWindow name) {
  if (name == 0 || TheMemoryDisplay().lost) return {};
  for (const auto& window : TheMemoryDesktop().windows) {
    if (!IsSeen(*window)) continue;
    if (window->name == name) return {window.get(), &window->children, window->place};
    const Named below = FindIn(window->children, window->place, name);
    if (below.children) return below;
  }
  return {};
}

DesktopWindow NameOf(DesktopWindow* name) {
  if (*name == 0) *name = ++TheMemoryDesktop().namesGiven;
  return *name;
}

} // namespace

DesktopWindow DisplayWindowAt(DesktopWindow in, int32_t x, int32_t y) {
  if (in == 0) {
    for (const auto& window : TheMemoryDesktop().windows) {
      if (!TheMemoryDisplay().lost && IsSeen(*window) && Holds(window->place, x, y)) return NameOf(&window->name);
    }
    return 0;
  }
  const Named around = Find(in);
  if (!around.children) return 0;
  for (MemoryChild& child : *around.children) {
    const bool here = Holds(Moved(child.place, around.place.left, around.place.top), x, y);
    if (child.visible && here) return NameOf(&child.name);
  }
  return 0;
}

std::vector<DesktopWindow> DisplayWindows() {
  std::vector<DesktopWindow> found;
  for (const auto& window : TheMemoryDesktop().windows) {
    if (!TheMemoryDisplay().lost && IsSeen(*window)) found.push_back(NameOf(&window->name));
  }
  return found;
}

bool DisplayWindowPlace(DesktopWindow window, PixelRect* place) {
  const Named found = Find(window);
  if (found.children) *place = found.place;
  return found.children != nullptr;
}

bool DisplayHasWindow(DesktopWindow window) {
  const auto& all = TheMemoryDesktop().windows;
  const auto isIt = [window](const auto& each) { return each->name == window; };
  return Find(window).children || (window != 0 && std::any_of(all.begin(), all.end(), isIt));
}

std::string DisplayWindowTitle(DesktopWindow window) {
  for (const auto& each : TheMemoryDesktop().windows) {
    if (each->name == window && window != 0) return each->title;
  }
  return "";
}

DisplayWindow* DisplayOwnWindow(DesktopWindow window) {
  DisplayWindow* found = Find(window).window;
  return found && found->ours ? found : nullptr;
}

} // namespace framereel
