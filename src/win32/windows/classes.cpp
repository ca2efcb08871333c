// Window classes: what windows of one name have in common.
#include "win32/windows/classes.h"

#include "win32/win32_windows.h"

namespace framereel {
namespace {

WindowClass* Registered(const char* name) {
  for (const auto& known : TheWindows().classes) {
    if (known->name == name) return known.get();
  }
  return nullptr;
}

} // namespace

WindowClass* ClassNamed(const char* name) {
  if (!name) return nullptr;
  if (WindowClass* known = Registered(name)) return known;
  const WNDCLASSA* system = SystemClassNamed(name);
  return system && ::RegisterClassA(system) ? Registered(name) : nullptr;
}

} // namespace framereel

using namespace framereel;

ATOM RegisterClassA(const WNDCLASSA* what) {
  if (!what || !what->lpszClassName || !what->lpfnWndProc || Registered(what->lpszClassName)) return 0;
  auto& classes = TheWindows().classes;
  classes.push_back(std::make_unique<WindowClass>(WindowClass{what->lpszClassName, what->style, what->lpfnWndProc,
                                                              what->hIcon, what->hCursor, what->hbrBackground}));
  return ATOM(classes.size());
}
