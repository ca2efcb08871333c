// What the application wants to be asked or told by the platform floor itself.
#pragma once

#include <cstdint>

namespace framereel {

// The user asks to close the main window; without this callback the platform closes it, and the program ends.
inline constexpr uint16_t kQuitHandler = 3;

// Fills an entry of the table, 0 to 3; a null function empties it. Any other index does nothing.
void SetAppCallback(uint16_t index, void (*function)(void* argument), void* argument);

// The user leaves the desktop, and its session is to end.
enum class SessionStep {
  kMayEnd,        // whether it may with what the program has; the user can be asked
  kMayEndUnasked, // the same while a dialog waits for him, so that he cannot
  kGoesOn,        // it does not end after all, whatever was answered
};
// Answers the first two; without one, or null, it may. The event loop ends by itself when the session does.
using SessionHandler = bool (*)(void* argument, SessionStep step);
void SetSessionHandler(SessionHandler function, void* argument);
bool CallSessionHandler(SessionStep step);

// False when there is none.
bool CallQuitHandler();

} // namespace framereel
