// The program's own cursors, drawn as text: arrows for what can be moved (1), sized across (2) and upright (3).
#pragma once

#include <cstdint>

namespace framereel {

inline constexpr int32_t kCursorSide = 32; // pixels

// Rows from the top down, each of as many characters: "#" black, "o" white, anything else lets the screen through.
struct CursorResource {
  uint16_t id;
  int32_t hotX, hotY; // the pixel that points
  const char* const* rows;
};

// The cursor with this number, for the whole run; null when there is none.
const CursorResource* FindCursorResource(uint16_t id);

} // namespace framereel
