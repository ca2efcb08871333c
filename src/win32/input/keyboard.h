// The state of keys as messages tell it, and the characters that keys give. Internal to the layer.
#pragma once

#include "win32/win32.h"

namespace framereel {

void NoteKey(uint8_t key, bool down);
void SyncKeys(); // keys and buttons may have changed while another program had the keyboard
bool KeyIsDown(int key);
WPARAM MouseKeys();
// The characters of a key press without letting it use up a waiting accent; as ToAscii.
int CharactersOf(UINT scan, WORD* characters);

} // namespace framereel
