// What the mouse and the keyboard send to windows and Views. The routing stands in the room input.
#pragma once

#include <cstdint>

namespace framereel {

// Modifier bits, in a KeyEvent and in the flags of a mouse call.
enum InputFlag : uint16_t {
  kFlagShift = 2,
  kFlagMenuKey = 4, // Ctrl and Alt are held just as menu shortcuts want it
  kFlagCtrl = 8,
  kFlagAlt = 16,
  kFlagLeftButton = 16, // in mouse calls; the same bit as Alt
  kFlagRightButton = 64,
};

// A key-down carries the character that the key gives with Ctrl and Alt ignored, and the one that it gives with Shift
// ignored as well; 0 for none. A key-up carries 0 and, in the second place, the virtual key.
struct KeyEvent {
  uint8_t character, unshifted;
  uint16_t modifiers;
  bool repeated = false; // a key-down of a key that has been held since an earlier one
};

// Arrows come as characters of their own; Backspace, Tab, Return, Escape and Delete as 8, 9, 13, 27 and 127.
enum KeyCharacter : uint8_t {
  kKeyBackspace = 8,
  kKeyTab = 9,
  kKeyReturn = 13,
  kKeyEscape = 27,
  kKeyLeft = 28,
  kKeyUp = 29,
  kKeyRight = 30,
  kKeyDown = 31,
  kKeyDelete = 127,
};

} // namespace framereel
