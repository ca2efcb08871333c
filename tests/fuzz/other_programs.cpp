// See other_programs.h.
#include "fuzz/other_programs.h"

#include <algorithm>
#include <iterator>

namespace framereel {
namespace {

constexpr size_t kMostMarks = 8; // that a window remembers; then it begins anew

void PaintMark(const OtherWindow& other, const OtherWindow::Mark& mark) {
  MemoryPaintWindow(*other.window, mark.where, PixelOfShade(mark.shade));
}

void PaintAll(const OtherWindow& other) {
  for (const OtherWindow::Mark& mark : other.marks) PaintMark(other, mark);
}

} // namespace

uint32_t PixelOfShade(uint32_t shade) {
  const uint32_t a = shade & 1, b = shade >> 1 & 1, c = shade >> 2 & 1;
  const int32_t depth = TheMemoryDisplay().layout.depth;
  if (depth < 8) return shade & ((1U << depth) - 1);
  if (depth == 8) return (a + 1) << 5 | (b + 1) << 2 | 1; // of the standard palette
  return MemoryPixelOf(uint8_t(0x33 << a), uint8_t(0x33 << b), uint8_t(0x33 << c));
}

bool IsDim(uint32_t colour, bool orDarker) {
  for (const int shift : {0, 8, 16}) {
    const uint32_t channel = colour >> shift & 255;
    if (channel > 0x70 || (channel < 0x20 && !orDarker)) return false;
  }
  return true;
}

void OtherPrograms::PaintDesktop(Dice& dice) {
  const int32_t width = TheMemoryDisplay().width, height = TheMemoryDisplay().height;
  const int32_t stripe = 3 + dice.Below(40);
  for (int32_t y = 0; y < height; y += stripe)
    MemoryPaintDesktop({0, y, width, y + stripe}, PixelOfShade(uint32_t(dice.Below(kShades))));
}

void OtherPrograms::SetTaskBar(const PixelRect& place) {
  MemorySetTaskBar(place);
  for (const auto& window : TheMemoryDesktop().windows) {
    if (!window->taskBar) continue;
    window->paint = [bar = window.get(), place] {
      MemoryPaintWindow(*bar, {0, 0, place.right - place.left, place.bottom - place.top}, PixelOfShade(3));
    };
    window->paint();
  }
}

void OtherPrograms::Open(Dice& dice) {
  const int32_t left = dice.Below(TheMemoryDisplay().width) - 20, top = dice.Below(TheMemoryDisplay().height) - 20;
  const int32_t width = 20 + dice.Below(300), height = 20 + dice.Below(200);
  const PixelRect place = {left, top, left + width, top + height};
  DisplayWindow* window = MemoryOpenWindow("Other", place, 0);
  OtherWindow& other =
      windows.emplace_back(OtherWindow{window, {{{0, 0, width, height}, uint32_t(dice.Below(kShades))}}});
  window->paint = [&other] { PaintAll(other); };
  PaintAll(other);
}

OtherWindow* OtherPrograms::Any(Dice& dice) {
  return windows.empty() ? nullptr : &*std::next(windows.begin(), dice.Below(int(windows.size())));
}

void OtherPrograms::Close(OtherWindow* other) {
  MemoryCloseWindow(other->window);
  windows.remove_if([=](const OtherWindow& each) { return &each == other; });
}

void OtherPrograms::Paint(OtherWindow& other, const PixelRect& where, uint32_t shade) {
  if (other.marks.size() == kMostMarks) {
    other.marks.resize(1);
    PaintAll(other);
  }
  other.marks.push_back({where, shade});
  PaintMark(other, other.marks.back());
}

} // namespace framereel
