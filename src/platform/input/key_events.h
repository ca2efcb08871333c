// What a key means: its characters, and which of Shift, Ctrl and Alt are held. The way of the events stands in keys.h.
#pragma once

#include <cstdint>

#include "platform/records/input_events.h"
#include "win32/win32_types.h"

namespace framereel {

// The events of a key press: 0, 1, or 2 when an accent could not be joined with the letter behind it. Ctrl and Alt do
// not change the characters, so Ctrl+letter gives the letter; a key without a character gives no event.
int TranslateKey(WPARAM virtualKey, LPARAM lParam, KeyEvent events[2]);

// What is held, as of the message last taken.
uint16_t ModifierState();
// Adds kFlagMenuKey if Ctrl and Alt are held in the way that menu shortcuts ask for.
uint16_t WithMenuKey(uint16_t modifiers);
// That way: kFlagCtrl alone, or with kFlagAlt.
uint16_t MenuKeyMask();

void KeyEventsStartUp();

} // namespace framereel
