// The keys as bits, and which change of them is a chord.
#include "recorder/control/key_chords.h"

#include "win32/win32_input.h"

namespace framereel {
namespace {

uint16_t BitIfDown(int virtualKey, KeyBit bit) {
  return ::GetAsyncKeyState(virtualKey) < 0 ? bit : 0;
}

} // namespace

uint16_t ReadKeyState() {
  return uint16_t(BitIfDown(VK_SPACE, kKeyBitSpace) | BitIfDown(VK_SHIFT, kKeyBitShift) |
                  BitIfDown(VK_CONTROL, kKeyBitCtrl) | BitIfDown(VK_MENU, kKeyBitAlt));
}

KeyChord PollHotKeys(uint16_t* lastKeyState) {
  const uint16_t keys = ReadKeyState();
  if (keys == *lastKeyState) return KeyChord::kNone;
  *lastKeyState = keys;
  if (keys == (kKeyBitCtrl | kKeyBitAlt | kKeyBitShift)) return KeyChord::kStartStop;
  if (keys == (kKeyBitCtrl | kKeyBitAlt | kKeyBitSpace)) return KeyChord::kGrab;
  return KeyChord::kNone;
}

} // namespace framereel
