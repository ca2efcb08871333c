// What a dialog keeps.
#include "win32/dialogs/dialog_state.h"

#include <string_view>

#include "win32/controls/control_base.h"
#include "win32/pixels/scale.h"
#include "win32/win32_drawing.h"
#include "win32/windows/window_tree.h"

namespace framereel {

DialogState* DialogStateOf(HWND dialog) {
  const bool is = IsLive(dialog) && dialog->windowClass->name == kDialogClass;
  return is ? StateOf<DialogState>(dialog) : nullptr;
}

void FontDeleter::operator()(HFONT font) const {
  ::DeleteObject(font);
}

OwnedFont DialogFont(const char* family, int32_t points) {
  constexpr int32_t pointsToInch = 72;
  LOGFONTA what = {};
  what.lfHeight = -(points * DotsPerInch() + pointsToInch / 2) / pointsToInch;
  what.lfWeight = FW_NORMAL;
  std::string_view(family).copy(what.lfFaceName, LF_FACESIZE - 1);
  return OwnedFont(::CreateFontIndirectA(&what));
}

} // namespace framereel
