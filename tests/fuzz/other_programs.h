// Other programs on the desktop in memory, each with windows that paint what they show whenever they are asked to. So a
// screen on which something of ours stands where it does not belong changes when everybody paints anew.
//
// They paint in a few shades, whatever the depth. At 8 bits and more these are dim: black, white, the inverse of a
// shade and what nobody has written are none of them.
#pragma once

#include <cstdint>
#include <list>
#include <vector>

#include "support/dice.h"
#include "win32/memory/memory_display.h"

namespace framereel {

inline constexpr uint32_t kShades = 8; // some are alike on screens of few colours

// Its pixel on the screen as it is now.
uint32_t PixelOfShade(uint32_t shade);
// Whether a colour that was read from the screen, as 0x00RRGGBB, can come from them, or from them and black; at 8 bits
// and more.
bool IsDim(uint32_t colour, bool orDarker);

struct OtherWindow {
  struct Mark {
    PixelRect where; // in the window
    uint32_t shade;
  };
  DisplayWindow* window;
  std::vector<Mark> marks; // in the order of painting; the first one fills the window
};

// One at a time; the desktop is its own. The display's reset closes the windows.
class OtherPrograms {
public:
  OtherPrograms() = default;
  OtherPrograms(const OtherPrograms&) = delete;

  void PaintDesktop(Dice& dice); // also behind a change of the display's mode
  void SetTaskBar(const PixelRect& place);
  void Open(Dice& dice);
  // One of them, or null.
  OtherWindow* Any(Dice& dice);
  void Close(OtherWindow* other);
  void Paint(OtherWindow& other, const PixelRect& where, uint32_t shade);

private:
  std::list<OtherWindow> windows; // they stay where they are: each paints itself
};

} // namespace framereel
