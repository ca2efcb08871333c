// Calling window procedures.
#include "win32/windows/sending.h"

#include "win32/pixels/display_windows.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_windows.h"
#include "win32/windows/window_tree.h"

namespace framereel {

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return ::CallWindowProcA(window->procedure, window, message, wParam, lParam);
}

void SendToTopLevels(UINT message, WPARAM wParam, LPARAM lParam) {
  const std::vector<HWND> windows = TheWindows().topLevels;
  for (HWND window : windows) {
    if (IsLive(window)) Send(window, message, wParam, lParam);
  }
}

} // namespace framereel

using namespace framereel;

LRESULT DispatchMessageA(const MSG* message) {
  if (!message) return 0;
  const LRESULT answer = ::SendMessageA(message->hwnd, message->message, message->wParam, message->lParam);
  if (message->message == WM_QUERYENDSESSION) DisplayAnswerSession(answer);
  return answer;
}

LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!procedure) return 0;
  WindowSystem& system = TheWindows();
  ++system.procedures;
  const LRESULT answer = procedure(window, message, wParam, lParam);
  --system.procedures;
  return answer;
}

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return IsLive(window) ? Send(window, message, wParam, lParam) : 0;
}
