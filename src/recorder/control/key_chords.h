// The key chords that start, stop and grab while any program has the focus. They are looked for now and then: keys that
// go down and up again between two polls are not seen.
#pragma once

#include <cstdint>

namespace framereel {

enum KeyBit : uint16_t { kKeyBitSpace = 1, kKeyBitShift = 2, kKeyBitCtrl = 4, kKeyBitAlt = 8 };

// Which of the four keys are down at this moment, whoever has the focus: bits of KeyBit.
uint16_t ReadKeyState();

enum class KeyChord : uint8_t {
  kNone,
  kStartStop, // Ctrl, Alt and Shift
  kGrab,      // Ctrl, Alt and the space bar
};

// The chord that has come about since the last poll, whose bits `lastKeyState` keeps: just its keys are down of the
// four. Held, it counts once, until another of the four keys moves.
KeyChord PollHotKeys(uint16_t* lastKeyState);

} // namespace framereel
