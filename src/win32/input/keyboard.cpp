// The state of keys as messages tell it, and the characters that keys give.
//
// An accent that waits belongs to the key press that made it: asking about that press again answers the accent again,
// and the next press with a character uses it up. So a caller may ask twice about one press, with Shift and without.
#include "win32/input/keyboard.h"

#include <cstring>

#include "win32/windows/window.h"

namespace framereel {
namespace {

// Latin-1: an accent, the letters that it goes on, and what comes of them.
struct Accent {
  uint8_t accent;
  const char* letters;
  const char* joined;
};
constexpr Accent kAccents[] = {
    {'`', "AEIOUaeiou", "\xC0\xC8\xCC\xD2\xD9\xE0\xE8\xEC\xF2\xF9"},
    {0xB4, "AEIOUYaeiouy", "\xC1\xC9\xCD\xD3\xDA\xDD\xE1\xE9\xED\xF3\xFA\xFD"},
    {'\'', "AEIOUYaeiouy", "\xC1\xC9\xCD\xD3\xDA\xDD\xE1\xE9\xED\xF3\xFA\xFD"},
    {'^', "AEIOUaeiou", "\xC2\xCA\xCE\xD4\xDB\xE2\xEA\xEE\xF4\xFB"},
    {'~', "ANOano", "\xC3\xD1\xD5\xE3\xF1\xF5"},
    {0xA8, "AEIOUaeiouy", "\xC4\xCB\xCF\xD6\xDC\xE4\xEB\xEF\xF6\xFC\xFF"},
    {'"', "AEIOUaeiouy", "\xC4\xCB\xCF\xD6\xDC\xE4\xEB\xEF\xF6\xFC\xFF"},
    {0xB0, "Aa", "\xC5\xE5"},
    {0xB8, "Cc", "\xC7\xE7"},
};

// The accented letter, the accent itself for a blank, or 0.
uint8_t Join(uint8_t accent, uint8_t letter) {
  if (letter == ' ') return accent;
  for (const Accent& known : kAccents) {
    const char* place = known.accent == accent ? std::strchr(known.letters, letter) : nullptr;
    if (place && letter) return uint8_t(known.joined[place - known.letters]);
  }
  return 0;
}

// With Ctrl letters and a few signs give control characters, and nothing else gives any.
uint8_t WithControl(uint8_t character) {
  const bool letter = (character >= 'a' && character <= 'z') || (character >= '@' && character <= '_');
  return letter ? character & 31 : character < 32 ? character : 0;
}

// `uses`: the press uses up the accent that waits.
int Characters(UINT scan, const BYTE* state, WORD* characters, bool uses) {
  WaitingAccent& waiting = TheWindows().accent;
  const uint32_t press = TheWindows().presses;
  bool dead = false;
  uint8_t character = DisplayKeyCharacter(uint8_t(scan), state[VK_SHIFT] & 0x80, state[VK_CAPITAL] & 1, &dead);
  if (state[VK_CONTROL] & 0x80 && !(state[VK_MENU] & 0x80)) character = dead ? 0 : WithControl(character);
  *characters = character;
  if (!character) return 0;
  const bool waits = waiting.character && waiting.press != press;
  if (!waits) {
    if (dead && uses && waiting.press != press) waiting = {character, press};
    return dead ? -1 : 1;
  }
  const uint8_t accent = waiting.character, joined = Join(accent, character);
  if (uses) waiting = {0, press};
  *characters = joined ? joined : WORD(accent | character << 8);
  return joined ? 1 : 2;
}

} // namespace

void NoteKey(uint8_t key, bool down) {
  BYTE& state = TheWindows().keys[key];
  state = down ? state | 0x80 : state & 0x7F;
  if (key != VK_CAPITAL) return;
  state = BYTE((state & 0x80) | (DisplayCapsLockIsOn() ? 1 : 0));
}

void SyncKeys() {
  for (const int key : {VK_LBUTTON, VK_RBUTTON, VK_MBUTTON, VK_SHIFT, VK_CONTROL, VK_MENU, VK_CAPITAL}) {
    NoteKey(uint8_t(key), DisplayKeyIsDown(uint8_t(key)));
  }
  // Any other that is held goes on repeating. One that nobody has told of may still be told of, as a press.
  for (int key = 1; key < 256; ++key) {
    if (KeyIsDown(key)) NoteKey(uint8_t(key), DisplayKeyIsDown(uint8_t(key)));
  }
  TheWindows().altAlone = false;
}

bool KeyIsDown(int key) {
  return TheWindows().keys[key & 255] & 0x80;
}

WPARAM MouseKeys() {
  WPARAM keys = 0;
  if (KeyIsDown(VK_LBUTTON)) keys |= MK_LBUTTON;
  if (KeyIsDown(VK_RBUTTON)) keys |= MK_RBUTTON;
  if (KeyIsDown(VK_MBUTTON)) keys |= MK_MBUTTON;
  if (KeyIsDown(VK_SHIFT)) keys |= MK_SHIFT;
  if (KeyIsDown(VK_CONTROL)) keys |= MK_CONTROL;
  return keys;
}

int CharactersOf(UINT scan, WORD* characters) {
  return Characters(scan, TheWindows().keys, characters, false);
}

} // namespace framereel

using namespace framereel;

SHORT GetKeyState(int virtualKey) {
  const BYTE state = TheWindows().keys[virtualKey & 255];
  return SHORT((state & 0x80 ? 0xFF80 : 0) | (state & 1));
}

BOOL GetKeyboardState(BYTE* state) {
  if (!state) return FALSE;
  std::memcpy(state, TheWindows().keys, sizeof TheWindows().keys);
  return TRUE;
}

SHORT GetAsyncKeyState(int virtualKey) {
  return DisplayKeyIsDown(uint8_t(virtualKey)) ? SHORT(0x8000) : SHORT{0};
}

int ToAscii(UINT, UINT scan, const BYTE* state, WORD* characters, UINT) {
  if (!state || !characters) return 0;
  return Characters(scan & 255, state, characters, true);
}
