// Which window is active, which has the focus, which holds the mouse. Internal to the layer.
#pragma once

#include "win32/windows/window.h"

namespace framereel {

void Activate(HWND topLevel, bool byClick);
void ActivateByPress(HWND topLevel); // or what stands in for it while it is disabled
void ActivateNextOf(HWND topLevel);  // it goes away: another one takes its place
void TellModal(HWND topLevel);       // to the display: whether it is a dialog whose owner is disabled
void SettleKeyboard();               // acts on what the display has said of the keyboard
void MoveCapture(HWND window);       // the mouse is its own now, or nobody's; the display knows
bool AwaitsKeyboard();               // the display has been asked for it, and may still give it
void CancelMenu();                   // the menu that is open, if one is, closes
void ReleaseFrom(HWND window);       // it goes or is disabled: it and its children lose focus, capture and menu

// A window has left the screen. A window manager that was asked while it stood may have given the keyboard to it in the
// place of its owner, and then to nobody.
void AskForKeyboardAgain();

} // namespace framereel
