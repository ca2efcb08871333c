// The text of windows: the calls, and the title that most windows have for it.
#include "win32/windows/window_text.h"

#include <cstring>

#include "win32/pixels/utf8.h"
#include "win32/win32_windows.h"
#include "win32/windows/desktop_windows.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_tree.h"

namespace framereel {

void SetTitle(HWND window, const char* title) {
  window->title = title ? title : "";
  if (window->top) DisplayTitleWindow(window->top->shown.display, window->title.c_str());
  InvalidateFrame(window);
}

LRESULT CopyText(std::string_view text, WPARAM bufferSize, LPARAM buffer) {
  auto* to = reinterpret_cast<char*>(buffer);
  if (!to || bufferSize == 0) return 0;
  const size_t length = BoundaryAt(text, size_t(bufferSize - 1));
  std::memcpy(to, text.data(), length);
  to[length] = 0;
  return LRESULT(length);
}

} // namespace framereel

using namespace framereel;

BOOL SetWindowTextA(HWND window, const char* text) {
  if (!IsLive(window)) return FALSE;
  ::SendMessageA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
  return TRUE;
}

int GetWindowTextA(HWND window, char* buffer, int bufferSize) {
  if (!buffer || bufferSize <= 0) return 0;
  buffer[0] = 0;
  if (!IsLive(window)) return int(CopyText(ForeignTitle(window), WPARAM(bufferSize), reinterpret_cast<LPARAM>(buffer)));
  return int(::SendMessageA(window, WM_GETTEXT, WPARAM(bufferSize), reinterpret_cast<LPARAM>(buffer)));
}

int GetWindowTextLengthA(HWND window) {
  return int(::SendMessageA(window, WM_GETTEXTLENGTH, 0, 0));
}
