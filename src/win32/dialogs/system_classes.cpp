// The classes of windows that every program finds: controls, and dialogs.
#include <cstring>

#include "win32/controls/button.h"
#include "win32/controls/edit.h"
#include "win32/controls/list_box.h"
#include "win32/controls/static.h"
#include "win32/dialogs/dialog.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/classes.h"

namespace framereel {

const WNDCLASSA* SystemClassNamed(const char* name) {
  static const auto face = reinterpret_cast<HBRUSH>(intptr_t{COLOR_BTNFACE + 1});
  static const auto paper = reinterpret_cast<HBRUSH>(intptr_t{COLOR_WINDOW + 1});
  static const HCURSOR arrow = ::LoadCursorA(nullptr, IDC_ARROW), beam = ::LoadCursorA(nullptr, IDC_IBEAM);
  static const WNDCLASSA classes[] = {
      {CS_HREDRAW | CS_VREDRAW, ButtonProcedure, 0, 0, nullptr, nullptr, arrow, face, nullptr, "button"},
      {CS_DBLCLKS, EditProcedure, 0, 0, nullptr, nullptr, beam, paper, nullptr, "edit"},
      {CS_DBLCLKS, ListBoxProcedure, 0, 0, nullptr, nullptr, arrow, paper, nullptr, "listbox"},
      {CS_HREDRAW | CS_VREDRAW, StaticProcedure, 0, 0, nullptr, nullptr, arrow, face, nullptr, "static"},
      {0, DialogProcedure, 0, 0, nullptr, nullptr, arrow, face, nullptr, kDialogClass},
  };
  for (const WNDCLASSA& known : classes) {
    if (std::strcmp(known.lpszClassName, name) == 0) return &known;
  }
  return nullptr;
}

} // namespace framereel
