// The desktop in memory: its one record, and whether it can be reached.
#include <algorithm>

#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

PixelLayout LayoutOfDepth(int32_t depth) {
  if (depth == 16) return kLayoutRgb565;
  PixelLayout layout = depth > 8 ? kLayoutXrgb8888 : kLayoutMono;
  layout.depth = depth;
  return layout;
}

} // namespace

MemoryDisplay& TheMemoryDisplay() {
  static MemoryDisplay display;
  static bool begun = false;
  if (!begun) {
    begun = true; // ahead of the reset, which comes back here
    MemoryDisplayReset(640, 480, 24);
  }
  return display;
}

void MemoryDisplayReset(int32_t width, int32_t height, int32_t depth) {
  MemoryDisplay& display = TheMemoryDisplay();
  display = {};
  display.width = width; // not 0: TheMemoryDisplay would make it anew
  display.present = true;
  MemoryDisplaySetMode(width, height, depth);
  display.desktop.events.clear();
}

void MemoryDisplaySetMode(int32_t width, int32_t height, int32_t depth) {
  MemoryDisplay& display = TheMemoryDisplay();
  display.layout = LayoutOfDepth(depth);
  display.width = width;
  display.height = height;
  display.screen.assign(size_t(width) * size_t(height), 0);
  display.palette = MemoryStandardPalette(depth);
  display.desktop.picture.clear();
  MemoryQueueEvent(DisplayEventKind::kScreenChanged, nullptr, false);
  MemoryMovePointerTo(display.pointerX, display.pointerY); // it stays on the screen
  if (!display.desktop.windows.empty()) MemoryExpose(Region({0, 0, width, height}));
}

void MemoryAt(uint32_t tick, std::function<void()> run) {
  std::vector<MemoryEvent>& script = TheMemoryDisplay().script;
  // Differences, not order: the clock may wrap between the two.
  const auto later = [tick](const MemoryEvent& event) { return int32_t(event.tick - tick) > 0; };
  script.insert(std::find_if(script.begin(), script.end(), later), {tick, std::move(run)});
}

bool DisplayOpen() {
  return TheMemoryDisplay().present;
}

void DisplayClose() {}

bool DisplayIsLost() {
  return TheMemoryDisplay().lost;
}

} // namespace framereel
