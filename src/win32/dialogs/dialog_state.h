// What a dialog keeps. Internal to the layer.
#pragma once

#include <cstdint>
#include <memory>

#include "win32/win32_dialogs.h"
#include "win32/windows/window.h"

namespace framereel {

inline constexpr const char* kDialogClass = "dialog";

struct FontDeleter {
  void operator()(HFONT font) const;
};
using OwnedFont = std::unique_ptr<Win32Font, FontDeleter>;

struct DialogState {
  DLGPROC procedure;
  OwnedFont font; // of the controls
  int defaultId;  // of the button that Return presses where none has the focus; 0 for none
  HWND focus;     // the control that has the keyboard, or gets it when the dialog is active again
  bool ended;
  intptr_t result;
};

// Null when the window is none of the class of dialogs.
DialogState* DialogStateOf(HWND dialog);

// The font of that many points.
OwnedFont DialogFont(const char* family, int32_t points);

} // namespace framereel
