// The clipboard's text: the program's own, for as long as it runs.
#include "win32/input/clipboard.h"

#include "win32/windows/window.h"

namespace framereel {

void SetClipboardText(std::string_view text) {
  TheWindows().clipboard = text;
}

std::string ClipboardText() {
  return TheWindows().clipboard;
}

} // namespace framereel

using namespace framereel;

BOOL OpenClipboard(HWND) {
  return TRUE;
}

BOOL CloseClipboard() {
  return TRUE;
}

BOOL IsClipboardFormatAvailable(UINT format) {
  return format == CF_TEXT && !ClipboardText().empty();
}
