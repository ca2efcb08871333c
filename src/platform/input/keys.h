// The way of the keys: from the window procedures to menu shortcuts, Views and windows.
//
// What a key means stands in key_events.h. Keys come to the main window or the modal one (RestoreFocus), and from there
// to the active window and the View that the mouse is over.
#pragma once

#include <cstdint>

#include "platform/records/input_events.h"
#include "win32/win32_types.h"

namespace framereel {

// Hand an event to the active window's keys, or to the modal window. With `hitTest` the View at x, y is looked for,
// else it goes to the window itself. x and y are its window coordinates. In a key-down with kFlagMenuKey the bits of
// Ctrl and Alt become those of the menu key.
void SendKeyDown(bool hitTest, KeyEvent event, int16_t x, int16_t y);
void SendKeyUp(bool hitTest, const KeyEvent& event, int16_t x, int16_t y);

// ---- From the window procedures ----------------------------------------------------------------------------------

void KeyDownMessage(WPARAM virtualKey, LPARAM lParam);
void KeyUpMessage(WPARAM virtualKey);
// The system forms. False: the platform is to do what it does with the key.
bool SysKeyDownMessage(WPARAM virtualKey, LPARAM lParam);
bool SysKeyUpMessage();

void KeysStartUp();

} // namespace framereel
