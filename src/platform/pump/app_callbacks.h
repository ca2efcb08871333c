// What the application wants to be asked or told by the platform floor itself.
#pragma once

#include <cstdint>

namespace framereel {

// The user asks to close the main window; without this callback the platform closes it, and the program ends.
inline constexpr uint16_t kQuitHandler = 3;

// Fills an entry of the table, 0 to 3; a null function empties it. Any other index does nothing.
void SetAppCallback(uint16_t index, void (*function)(void* argument), void* argument);

// False when there is none.
bool CallQuitHandler();

} // namespace framereel
