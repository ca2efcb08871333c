// The state of keys as messages tell it, and the characters that keys give.
//
// What a press types, the display has told with it. Beyond that it is asked what a key gives by itself: of a key whose
// message somebody has made up, and with another state of Shift than at the press.
#include "win32/input/keyboard.h"

#include <cstring>

#include "win32/pixels/utf8.h"
#include "win32/win32_input.h"
#include "win32/windows/window.h"

namespace framereel {
namespace {

bool IsDown(const BYTE* state, int key) {
  return state[key] & 0x80;
}

// What the key types with the state of Shift and the lock as given.
std::string TypedBy(UINT scan, const BYTE* state) {
  const WindowSystem& system = TheWindows();
  const bool shift = IsDown(state, VK_SHIFT);
  if (scan == system.typed.scan && shift == IsDown(system.keys, VK_SHIFT)) return system.typed.text;
  const char32_t character = DisplayKeyCharacter(uint8_t(scan), shift, state[VK_CAPITAL] & 1);
  return character ? Utf8Of(character) : "";
}

// Commands are Latin letters. On a layout of others a key stands for the one that names it.
std::string LatinOf(UINT virtualKey, const std::string& text) {
  const bool foreign = !text.empty() && uint8_t(text[0]) >= 0x80;
  return foreign && virtualKey >= 'A' && virtualKey <= 'Z' ? std::string(1, char(virtualKey | 0x20)) : text;
}

// With Ctrl letters and a few signs give control characters, and nothing else gives any.
std::string WithControl(const std::string& text) {
  const auto character = uint8_t(text.empty() ? 0 : text[0]);
  const bool letter = (character >= 'a' && character <= 'z') || (character >= '@' && character <= '_');
  if (letter) return {char(character & 31)};
  return character < 32 ? text : "";
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

std::string TextOfKey(UINT virtualKey, UINT scan, const BYTE* state) {
  const std::string text = TypedBy(scan, state);
  const bool control = IsDown(state, VK_CONTROL), alt = IsDown(state, VK_MENU);
  if (control && alt) return "";
  if (control) return WithControl(LatinOf(virtualKey, text));
  return alt ? LatinOf(virtualKey, text) : text;
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

int ToAscii(UINT virtualKey, UINT scan, const BYTE* state, WORD* characters, UINT) {
  if (!state || !characters) return 0;
  *characters = 0;
  std::string text = TextOfKey(virtualKey, scan & 255, state);
  // The caller has left Ctrl and Alt out, and means a command all the same.
  if (KeyIsDown(VK_CONTROL) || KeyIsDown(VK_MENU)) text = LatinOf(virtualKey, text);
  const auto beyond = [](char byte) { return uint8_t(byte) >= 0x80; };
  if (text.empty() || text.size() > 2 || beyond(text.front()) || beyond(text.back())) return 0;
  *characters = text.size() == 1 ? WORD(text[0]) : WORD(text[0] | text[1] << 8);
  return int(text.size());
}
