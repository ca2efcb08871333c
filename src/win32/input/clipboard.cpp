// The clipboard's text, which the display has.
#include "win32/input/clipboard.h"

#include "win32/pixels/display_windows.h"
#include "win32/win32_controls.h"

namespace framereel {

void SetClipboardText(std::string_view text) {
  DisplayShareText(SharedText::kClipboard, text);
}

std::string ClipboardText() {
  return DisplaySharedText(SharedText::kClipboard);
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
  return format == CF_TEXT && DisplayHasSharedText(SharedText::kClipboard);
}
