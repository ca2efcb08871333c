// Other programs on the desktop in memory, each with windows that paint what they show whenever they are asked to. So a
// screen on which something of ours stands where it does not belong changes when everybody paints anew.
//
// They paint in a few shades, whatever the depth. At 8 bits and more these are dim: black, white, the inverse of a
// shade and what nobody has written are none of them.
#pragma once

#include <cstdint>
#include <iterator>
#include <list>
#include <vector>

#include "support/dice.h"
#include "win32/memory/memory_display.h"

namespace framereel {

inline constexpr uint32_t kShades = 8; // some are alike on screens of few colours

// Its pixel on the screen as it is now.
inline uint32_t PixelOfShade(uint32_t shade) {
  const uint32_t a = shade & 1, b = shade >> 1 & 1, c = shade >> 2 & 1;
  const int32_t depth = TheMemoryDisplay().layout.depth;
  if (depth < 8) return shade & ((1U << depth) - 1);
  if (depth == 8) return (a + 1) << 5 | (b + 1) << 2 | 1; // of the standard palette
  return MemoryPixelOf(uint8_t(0x33 << a), uint8_t(0x33 << b), uint8_t(0x33 << c));
}

// Whether a colour that was read from the screen, as 0x00RRGGBB, can come from them, or from them and black; at 8 bits
// and more.
inline bool IsDim(uint32_t colour, bool orDarker) {
  for (const int shift : {0, 8, 16}) {
    const uint32_t channel = colour >> shift & 255;
    if (channel > 0x70 || (channel < 0x20 && !orDarker)) return false;
  }
  return true;
}

struct OtherWindow {
  struct Mark {
    PixelRect where; // in the window
    uint32_t shade;
  };
  DisplayWindow* window;
  std::vector<Mark> marks; // in the order of painting; the first one fills the window

  void PaintMark(const Mark& mark) const { MemoryPaintWindow(*window, mark.where, PixelOfShade(mark.shade)); }
  void PaintAll() const {
    for (const Mark& mark : marks) PaintMark(mark);
  }
};

// One at a time; the desktop is its own. The display's reset closes the windows.
class OtherPrograms {
public:
  OtherPrograms() = default;
  OtherPrograms(const OtherPrograms&) = delete;

  // Also behind a change of the display's mode.
  void PaintDesktop(Dice& dice) {
    const int32_t width = TheMemoryDisplay().width, height = TheMemoryDisplay().height;
    const int32_t stripe = 3 + dice.Below(40);
    for (int32_t y = 0; y < height; y += stripe)
      MemoryPaintDesktop({0, y, width, y + stripe}, PixelOfShade(uint32_t(dice.Below(kShades))));
  }

  void SetTaskBar(const PixelRect& place) {
    MemorySetTaskBar(place);
    for (const auto& window : TheMemoryDesktop().windows) {
      if (!window->taskBar) continue;
      window->paint = [bar = window.get(), place] {
        MemoryPaintWindow(*bar, {0, 0, place.right - place.left, place.bottom - place.top}, PixelOfShade(3));
      };
      window->paint();
    }
  }

  void Open(Dice& dice) {
    const int32_t left = dice.Below(TheMemoryDisplay().width) - 20, top = dice.Below(TheMemoryDisplay().height) - 20;
    const int32_t width = 20 + dice.Below(300), height = 20 + dice.Below(200);
    const PixelRect place = {left, top, left + width, top + height};
    DisplayWindow* window = MemoryOpenWindow("Other", place, 0);
    OtherWindow& other =
        windows.emplace_back(OtherWindow{window, {{{0, 0, width, height}, uint32_t(dice.Below(kShades))}}});
    window->paint = [&other] { other.PaintAll(); };
    other.PaintAll();
  }

  // One of them, or null.
  OtherWindow* Any(Dice& dice) {
    return windows.empty() ? nullptr : &*std::next(windows.begin(), dice.Below(int(windows.size())));
  }

  void Close(OtherWindow* other) {
    MemoryCloseWindow(other->window);
    windows.remove_if([=](const OtherWindow& each) { return &each == other; });
  }

  void Paint(OtherWindow& other, const PixelRect& where, uint32_t shade) {
    if (other.marks.size() == kMostMarks) {
      other.marks.resize(1);
      other.PaintAll();
    }
    other.marks.push_back({where, shade});
    other.PaintMark(other.marks.back());
  }

private:
  static constexpr size_t kMostMarks = 8; // that a window remembers; then it begins anew

  std::list<OtherWindow> windows; // they stay where they are: each paints itself
};

} // namespace framereel
