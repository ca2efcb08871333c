// Which window is active, which has the focus, which holds the mouse. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

void Activate(HWND topLevel, bool byClick);
void ActivateNextOf(HWND topLevel); // it goes away: another one takes its place
void SettleKeyboard();              // acts on what the display has said of the keyboard
void ReleaseFrom(HWND window);      // it is gone or disabled: it loses focus and capture

} // namespace framereel
