// The classes of controls that every program finds.
#include <cstring>

#include "win32/controls/button.h"
#include "win32/controls/edit.h"
#include "win32/windows/classes.h"

namespace framereel {

const WNDCLASSA* SystemClassNamed(const char* name) {
  static const auto face = reinterpret_cast<HBRUSH>(intptr_t{COLOR_BTNFACE + 1});
  static const auto paper = reinterpret_cast<HBRUSH>(intptr_t{COLOR_WINDOW + 1});
  static const HCURSOR arrow = ::LoadCursorA(nullptr, IDC_ARROW), beam = ::LoadCursorA(nullptr, IDC_IBEAM);
  static const WNDCLASSA classes[] = {
      {CS_HREDRAW | CS_VREDRAW, ButtonProcedure, 0, 0, nullptr, nullptr, arrow, face, nullptr, "button"},
      {CS_DBLCLKS, EditProcedure, 0, 0, nullptr, nullptr, beam, paper, nullptr, "edit"},
  };
  for (const WNDCLASSA& known : classes) {
    if (std::strcmp(known.lpszClassName, name) == 0) return &known;
  }
  return nullptr;
}

} // namespace framereel
