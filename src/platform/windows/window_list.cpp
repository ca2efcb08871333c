// The list of windows, and the searches in it.
#include "platform/windows/window_list.h"

#include "core/list.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

List* windows;

} // namespace

void WindowListStartUp() {
  windows = ListNew();
}

void WindowListShutDown() {
  ListFree(windows);
  windows = nullptr;
}

void ListChildWindow(ChildWindow* window) {
  window->node = ListAppendHandle(windows, ToListValue(window));
}

void UnlistChildWindow(ChildWindow* window) {
  ListRemoveHandle(windows, window->node);
}

ChildWindow* FindChildWindow(HWND handle) {
  if (!handle) return nullptr;
  for (ChildWindow* window = NextChildWindow(nullptr); window; window = NextChildWindow(window)) {
    if (window->window == handle) return window;
  }
  return nullptr;
}

ChildWindow* TopDocumentWindow() {
  for (HWND handle = ::GetTopWindow(TheMainWindow()->window); handle; handle = ::GetWindow(handle, GW_HWNDNEXT)) {
    if (ChildWindow* window = FindChildWindow(handle)) return window;
  }
  return nullptr;
}

ChildWindow* NextChildWindow(const ChildWindow* window) {
  if (!windows) return nullptr;
  const ListNode* node = window ? window->node->next : windows->first;
  return node ? FromListValue<ChildWindow>(node->value) : nullptr;
}

bool IsOpenChildWindow(const ChildWindow* window) {
  for (const ChildWindow* one = NextChildWindow(nullptr); one; one = NextChildWindow(one)) {
    if (one == window) return true;
  }
  return false;
}

} // namespace framereel
