// Dialogs as windows: what one is made from, and its loop. Internal to the layer; the calls stand in win32_dialogs.h,
// what the keyboard does in dialog_keys.cpp.
#pragma once

#include <string>
#include <vector>

#include "win32/dialogs/dialog_state.h"
#include "win32/win32_dialogs.h"

namespace framereel {

LRESULT DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// What a dialog is made from, in pixels.
struct DialogPlan {
  std::string title;
  DWORD style;
  bool centred;          // on the monitor, with a third of the room above it; else at
  int32_t x, y;          // in the owner's client area, or on the screen
  int32_t width, height; // of the client area
  OwnedFont font;
  struct Control {
    int id;
    std::string className, text;
    PixelRect place; // in the client area
    DWORD style;     // with WS_VISIBLE and WS_CHILD
  };
  std::vector<Control> controls; // in the order of Tab
};

// Shows it over its owner and answers as DialogBoxParamA. `disabled` are windows that the user cannot work with as long
// as it stands, the owner among them; those that are disabled already stay so.
intptr_t RunDialog(DialogPlan plan, HWND owner, const std::vector<HWND>& disabled, DLGPROC procedure, LPARAM parameter);

} // namespace framereel
