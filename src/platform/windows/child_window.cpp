// Making, showing and closing windows.
#include "platform/windows/child_window.h"

#include "core/memory.h"
#include "core/strings.h"
#include "core/temporary_blocks.h"
#include "platform/drawing/ports.h"
#include "platform/records/control_table.h"
#include "platform/records/later_modules.h"
#include "platform/records/view_record.h"
#include "platform/windows/active_window.h"
#include "platform/windows/cursor_shape.h"
#include "platform/windows/modal.h"
#include "platform/windows/mouse_targets.h"
#include "platform/windows/window_classes.h"
#include "platform/windows/window_geometry.h"
#include "platform/windows/window_list.h"
#include "win32/win32_menus.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

ChildWindow* pending; // its platform window is being made

// What the platform's window is like.
struct WindowKind {
  DWORD extendedStyle, style;
  int16_t least; // width and height of the client area
};

WindowKind KindOf(uint32_t flags) {
  constexpr DWORD kFramed = WS_POPUP | WS_CAPTION, kPlain = WS_POPUP | WS_BORDER;
  constexpr DWORD kDocument = WS_CHILD | WS_CLIPSIBLINGS | WS_CAPTION | WS_SYSMENU;
  constexpr DWORD kSizableFrame = 0x50000; // thick frame and maximise box, as far as the layer below has them
  if (flags & kWindowPalette) return {WS_EX_TOPMOST, kFramed | (flags & kWindowMayClose ? WS_SYSMENU : 0), 20};
  if (flags & kWindowPopup) return {WS_EX_TOPMOST, kPlain, 1};
  if (flags & kWindowLoosePopup) return {0, kPlain, 1};
  if (flags & kWindowModal) return {0, kFramed, 40};
  const DWORD minimise = flags & kWindowNoMinimise ? 0 : WS_MINIMIZEBOX;
  return {0, kDocument | minimise | (flags & kWindowResizable ? kSizableFrame : WS_BORDER), 40};
}

// ---- What the methods do at first --------------------------------------------------------------------------------

void NoMethod(ChildWindow*) {}
void NoMouseMethod(ChildWindow*, uint16_t, int16_t, int16_t) {}
void NoKeyMethod(ChildWindow*, const KeyEvent&, int16_t, int16_t) {}
void NoScrollMethod(ChildWindow*, uint16_t, int16_t) {}

constexpr WindowMethods kFirstMethods = {
    NoMethod,
    NoMouseMethod,
    NoMouseMethod,
    [](ChildWindow*, MenuItem*) {},
    [](ChildWindow*, int16_t, int16_t) {},
    NoKeyMethod,
    NoKeyMethod,
    [](ChildWindow*) { return true; },
    NoMethod,
    NoMethod,
    NoMethod,
    NoMethod,
    NoMethod,
    NoMethod,
    NoMethod,
    NoScrollMethod,
    NoScrollMethod,
    NoScrollMethod,
    NoScrollMethod,
    NoScrollMethod,
    NoScrollMethod,
    NoScrollMethod,
    NoScrollMethod,
};

ChildWindow* NewRecord(MainWindow* parent, const char* title, uint32_t flags, int16_t least) {
  auto* window = static_cast<ChildWindow*>(MemAlloc(sizeof(ChildWindow)));
  if (!window) return nullptr;
  *window = {};
  window->port = {kPortChildWindow};
  window->title = StrDup(title);
  window->methods = kFirstMethods;
  window->geometry = NoGeometry();
  window->parent = parent;
  window->maxWidth = parent->usableWidth;
  window->maxHeight = parent->usableHeight;
  window->minWidth = window->minHeight = least;
  window->flags = flags;
  window->background = {0xFFFF, 0xFFFF, 0xFFFF};
  return window;
}

// The window's own commands take the place of those that mean another thing for a window of the desktop.
void NameSystemMenu(HWND window) {
  const HMENU menu = ::GetSystemMenu(window, FALSE);
  if (!menu) return;
  ::ModifyMenuA(menu, UINT(SC_CLOSE), 0, UINT(SC_CLOSE), "&Close\tCtrl+F4");
  ::ModifyMenuA(menu, UINT(SC_TASKLIST), 0, UINT(kNextItem), "Nex&t\tCtrl+F6");
  if (::IsWindowVisible(window)) ::DrawMenuBar(window);
}

void ShowStep(ChildWindow* window, bool show, bool front) {
  if (window->flags & kWindowModal) {
    BecomeModal(window);
    front = true;
  }
  if (show) ::ShowWindow(window->window, SW_SHOWNORMAL);
  if (front && window->window != ::GetTopWindow(window->parent->window)) ::BringWindowToTop(window->window);
  if (window->flags & (kWindowPalette | kWindowModal)) InvalidateChildWindow(window);
  RestoreFocus();
}

void ShowCounted(ChildWindow* window, bool front) {
  if (++window->openCount == 1) ShowStep(window, true, front);
}

void DestroyViews(ChildWindow* window) {
  while (window->views.count > 0) TheViewCalls().destroy(FromListValue<View>(window->views.entries[0]));
}

void LeavePort(ChildWindow* window) {
  if (CurrentPort() == &window->port) SetPortMain(window->parent);
}

// The record is left, for whoever is still on the stack.
void TakeApart(ChildWindow* window) {
  GiveModalBack(window);
  DestroyViews(window);
  ControlTableFree(&window->controls);
  ForgetMouseWindow(window);
  ForgetActiveWindow(window);
  LeavePort(window);
  ::DestroyWindow(window->window);
  LeavePort(window); // what it was told meanwhile may have drawn
  window->window = nullptr;
  UnlistChildWindow(window);
  NotifierClear(&window->listeners);
  StrFree(window->title);
  window->title = nullptr;
}

} // namespace

void ChildWindowsStartUp() {
  WindowListStartUp();
  pending = nullptr;
}

void ChildWindowsShutDown() {
  while (ChildWindow* window = NextChildWindow(nullptr)) {
    window->flags |= kWindowClosed;
    TakeApart(window);
    MemFree(window);
  }
  WindowListShutDown();
}

ChildWindow* TakePendingWindow() {
  ChildWindow* window = pending;
  pending = nullptr;
  return window;
}

ChildWindow* OpenChildWindow(MainWindow* parent, const char* title, uint32_t flags) {
  parent = MainOr(parent);
  if (flags & kWindowPopup) flags |= kWindowModal;
  const WindowKind kind = KindOf(flags);
  const ChildWindowClass windowClass = TakeSelectedWindowClass();
  ChildWindow* window = NewRecord(parent, title, flags, kind.least);
  if (!window) return nullptr;
  window->cursorCell = windowClass.cursorCell;
  pending = window;
  window->window =
      ::CreateWindowExA(kind.extendedStyle, windowClass.name, title, kind.style, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, parent->window, nullptr, parent->instance, nullptr);
  pending = nullptr; // also of a window that could not be made
  NameSystemMenu(window->window);
  // Twice, for the thickness of the frame is known only after the first.
  StartChildGeometry(window);
  StartChildGeometry(window);
  ListChildWindow(window);
  if (!window->node) {
    TakeApart(window);
    MemFree(window);
    return nullptr;
  }
  if (NextChildWindow(nullptr) == window) SetCursorShape(GetCursorShape());
  UpdateCursorOf(window);
  CentreChildWindow(window);
  return window;
}

void ShowChildWindow(ChildWindow* window) {
  ShowCounted(window, false);
}

void ShowChildWindowFront(ChildWindow* window) {
  ShowCounted(window, true);
}

void BringChildWindowForward(ChildWindow* window) {
  TheLaterModules().endEditSession(nullptr);
  ShowStep(window, false, true);
}

void SendChildWindowBack(ChildWindow* window) {
  ::SetWindowPos(window->window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
  RestoreFocus();
}

void CloseChildWindow(ChildWindow* window) {
  if (window->flags & kWindowClosed) return;
  window->flags |= kWindowClosed;
  NotifierSend(&window->listeners, ToListValue(window));
  TakeApart(window);
  TempAdoptOutermost(window);
  EvaluateActiveWindow();
  RestoreFocus();
}

void RequestClose(ChildWindow* window) {
  SetPortWindow(window);
  if (!window->methods.mayClose(window) || window->flags & kWindowClosed) return;
  SetPortWindow(window);
  window->methods.close(window);
  CloseChildWindow(window);
}

void SetChildWindowTitle(ChildWindow* window, const char* title) {
  char* copy = StrDup(title);
  StrFree(window->title);
  window->title = copy;
  ::SetWindowTextA(window->window, title);
}

void InvalidateChildRect(ChildWindow* window, const Rect& where) {
  if (!window->window) return; // closed: to the platform null would be all windows there are
  const RECT rect = {where.left, where.top, where.right, where.bottom};
  ::InvalidateRect(window->window, &rect, FALSE);
}

void InvalidateChildWindow(ChildWindow* window) {
  if (window->window) ::InvalidateRect(window->window, nullptr, FALSE);
}

Rect ChildBounds(const ChildWindow* window) {
  return {0, 0, window->geometry.clientHeight, window->geometry.clientWidth};
}

} // namespace framereel
