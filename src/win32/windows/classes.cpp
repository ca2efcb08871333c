// Window classes: what windows of one name have in common.
#include "win32/windows/window.h"

namespace framereel {

WindowClass* ClassNamed(const char* name) {
  for (const auto& known : TheWindows().classes) {
    if (name && known->name == name) return known.get();
  }
  return nullptr;
}

} // namespace framereel

using namespace framereel;

ATOM RegisterClassA(const WNDCLASSA* what) {
  if (!what || !what->lpszClassName || !what->lpfnWndProc || ClassNamed(what->lpszClassName)) return 0;
  auto& classes = TheWindows().classes;
  classes.push_back(std::make_unique<WindowClass>(WindowClass{what->lpszClassName, what->style, what->lpfnWndProc,
                                                              what->hIcon, what->hCursor, what->hbrBackground}));
  return ATOM(classes.size());
}

LONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value) {
  if (!IsLive(window) || index != GCL_HCURSOR) return 0;
  WindowClass& windowClass = *window->windowClass;
  const auto before = reinterpret_cast<LONG_PTR>(windowClass.cursor);
  windowClass.cursor = reinterpret_cast<HCURSOR>(value);
  if (windowClass.cursor != reinterpret_cast<HCURSOR>(before)) RefreshPointer();
  return before;
}
