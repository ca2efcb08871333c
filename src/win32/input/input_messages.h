// From keys and buttons to messages. Internal to the layer.
#pragma once

#include "win32/pixels/display_windows.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_windows.h"

namespace framereel {

// The message that input makes; false for input that means nothing to anybody.
bool MessageOfInput(const DisplayEvent& event, MSG* message);
// What taking it does beyond the message: key state, activation, the pointer's shape.
void TakeInput(const DisplayEvent& event, const MSG& message);

} // namespace framereel
