// The state of keys as messages tell it, and the characters that keys give. Internal to the layer.
#pragma once

#include <string>

#include "win32/win32_types.h"

namespace framereel {

void NoteKey(uint8_t key, bool down);
void SyncKeys(); // keys and buttons may have changed while another program had the keyboard
bool KeyIsDown(int key);
WPARAM MouseKeys();
// What a key types with the state of Shift, Ctrl, Alt and the lock as given, in UTF-8; empty for nothing.
std::string TextOfKey(UINT virtualKey, UINT scan, const BYTE* state);

} // namespace framereel
