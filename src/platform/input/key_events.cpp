// Making KeyEvents out of the platform's key messages.
#include "platform/input/key_events.h"

#include "win32/win32_input.h"
#include "win32/win32_system.h"

namespace framereel {
namespace {

constexpr int kMenuKeyString = 103; // its first character is "1" when the menu key is Alt and Ctrl together
constexpr BYTE kKeyIsDown = 0x80;
constexpr LPARAM kKeyWasDown = LPARAM{1} << 30; // of a key message

uint16_t menuKeyMask;

// What a key gives, whatever the layout says; 0: what the layout says.
uint8_t FixedCharacter(WPARAM virtualKey) {
  switch (virtualKey) {
  case VK_BACK:
    return kKeyBackspace;
  case VK_TAB:
    return kKeyTab;
  case VK_RETURN:
    return kKeyReturn;
  case VK_ESCAPE:
    return kKeyEscape;
  case VK_LEFT:
    return kKeyLeft;
  case VK_UP:
    return kKeyUp;
  case VK_RIGHT:
    return kKeyRight;
  case VK_DOWN:
    return kKeyDown;
  case VK_DELETE:
    return kKeyDelete;
  default:
    return 0;
  }
}

// The characters of the key with Ctrl and Alt ignored, and Shift too if asked; answers their number.
int CharactersOf(WPARAM virtualKey, LPARAM lParam, bool ignoreShift, WORD* characters) {
  BYTE keys[256];
  ::GetKeyboardState(keys);
  keys[VK_CONTROL] &= BYTE(~kKeyIsDown);
  keys[VK_MENU] &= BYTE(~kKeyIsDown);
  if (ignoreShift) keys[VK_SHIFT] &= BYTE(~kKeyIsDown);
  *characters = 0;
  return ::ToAscii(UINT(virtualKey), UINT(lParam) >> 16 & 0xFF, keys, characters, 0);
}

} // namespace

void KeyEventsStartUp() {
  char first[2];
  const bool altCtrl = ::LoadStringA(nullptr, kMenuKeyString, first, sizeof first) == 0 || first[0] == '1';
  menuKeyMask = altCtrl ? kFlagAlt | kFlagCtrl : kFlagCtrl;
}

uint16_t MenuKeyMask() {
  return menuKeyMask;
}

uint16_t WithMenuKey(uint16_t modifiers) {
  return (modifiers & (kFlagAlt | kFlagCtrl)) == menuKeyMask ? modifiers | kFlagMenuKey : modifiers;
}

uint16_t ModifierState() {
  uint16_t modifiers = 0;
  if (::GetKeyState(VK_MENU) < 0) modifiers |= kFlagAlt;
  if (::GetKeyState(VK_SHIFT) < 0) modifiers |= kFlagShift;
  if (::GetKeyState(VK_CONTROL) < 0) modifiers |= kFlagCtrl;
  return WithMenuKey(modifiers);
}

int TranslateKey(WPARAM virtualKey, LPARAM lParam, KeyEvent events[2]) {
  WORD shifted = 0, plain = 0;
  const int n = CharactersOf(virtualKey, lParam, false, &shifted);
  const int plainCount = CharactersOf(virtualKey, lParam, true, &plain);
  // Asked again, the platform may have done with the accent: it is its own, and the letter the second event's.
  if (n == 2 && plainCount == 1) plain = WORD(uint8_t(shifted) | plain << 8);
  const uint16_t modifiers = ModifierState();
  const bool repeated = lParam & kKeyWasDown;
  int count = 1;
  events[0] = {0, 0, modifiers, repeated};
  if (n == 1 || n == 2) events[0] = {uint8_t(shifted), uint8_t(plain), modifiers, repeated};
  if (n == 2) events[count++] = {uint8_t(shifted >> 8), uint8_t(plain >> 8), modifiers, repeated};
  KeyEvent* last = &events[count - 1];
  if (const uint8_t fixed = FixedCharacter(virtualKey)) last->character = last->unshifted = fixed;
  if (n != 1 && n != 2 && last->character == 0) return 0;
  return count;
}

} // namespace framereel
