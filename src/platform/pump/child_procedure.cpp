// The messages of ChildWindows, a function for each, and at the end their table.
#include "platform/pump/child_procedure.h"

#include <iterator>

#include "platform/drawing/ports.h"
#include "platform/input/mouse.h"
#include "platform/menus/menu_commands.h"
#include "platform/pump/message_table.h"
#include "platform/records/control_table.h"
#include "platform/records/input_events.h"
#include "platform/records/later_modules.h"
#include "platform/records/view_record.h"
#include "platform/records/window_records.h"
#include "platform/windows/active_window.h"
#include "platform/windows/child_window.h"
#include "platform/windows/modal.h"
#include "platform/windows/paint_messages.h"
#include "platform/windows/place_messages.h"
#include "win32/win32_controls.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

LRESULT OnNothing(const WindowMessage&) {
  return 0;
}

LRESULT OnActivate(const WindowMessage& m) {
  if (LOWORD(m.wParam)) {
    ChildActivated(m.window);
  } else {
    ChildDeactivated(m.window);
  }
  return 0;
}

LRESULT OnPaint(const WindowMessage& m) {
  PaintChildWindow(m.window);
  return 0;
}

LRESULT OnGetMinMaxInfo(const WindowMessage& m) {
  const LRESULT answer = DefaultAnswer(m);
  const ChildWindow* window = m.window;
  const WindowGeometry& g = window->geometry;
  const int width = g.insetLeft + g.insetRight, height = g.insetTop + g.insetBottom;
  auto* info = reinterpret_cast<MINMAXINFO*>(m.lParam);
  info->ptMinTrackSize = {window->minWidth + width, window->minHeight + height};
  info->ptMaxTrackSize = {window->maxWidth + width, window->maxHeight + height};
  return answer;
}

LRESULT OnWindowPosChanged(const WindowMessage& m) {
  ChildPlaceChanged(m.window, *reinterpret_cast<const WINDOWPOS*>(m.lParam));
  return 0;
}

LRESULT OnNcCalcSize(const WindowMessage& m) {
  return ChildFrameChanged(m.window, m.handle, m.wParam, m.lParam);
}

LRESULT OnNcActivate(const WindowMessage& m) {
  WindowMessage lit = m;
  if (m.window->flags & kWindowPalette) lit.wParam = TRUE;
  return DefaultAnswer(lit);
}

LRESULT OnGetDlgCode(const WindowMessage&) {
  return DLGC_WANTALLKEYS;
}

// From a menu, or a native control's notice.
LRESULT OnCommand(const WindowMessage& m) {
  const WORD id = LOWORD(m.wParam);
  if (m.lParam == 0) {
    MenuCommand(id);
    return 0;
  }
  View* view = id == kDyingControl ? nullptr : ControlTableFind(&m.window->controls, id);
  if (view) view->viewClass->nativeNotice(view, HIWORD(m.wParam));
  return 0;
}

LRESULT OnSysCommand(const WindowMessage& m) {
  DismissPopup();
  TheLaterModules().endEditSession(nullptr);
  LRESULT answer = 0;
  switch (m.wParam & kSystemCommandBits) {
  case kCloseItem:
  case SC_CLOSE:
    if (m.window->flags & kWindowMayClose) RequestClose(m.window);
    break;
  case kNextItem:
  case SC_NEXTWINDOW:
    SendChildWindowBack(m.window);
    break;
  default:
    answer = DefaultAnswer(m);
  }
  RestoreFocus();
  return answer;
}

// The window's own scroll bars; native ones come with the controls.
LRESULT OnScroll(const WindowMessage& m) {
  struct Meaning {
    int kind; // of the four methods of a bar: line, page, end, thumb
    int16_t value;
  };
  constexpr int16_t kPosition = 0; // the value is where the thumb is
  constexpr Meaning kMeanings[] = {{0, -1}, {0, 1}, {1, -1}, {1, 1}, {3, kPosition}, {3, kPosition}, {2, -1}, {2, 1}};
  ChildWindow* window = m.window;
  const WindowMethods& methods = window->methods;
  const WindowScrollMethod horizontal[] = {methods.hScrollLine, methods.hScrollPage, methods.hScrollEnd,
                                           methods.hScrollThumb};
  const WindowScrollMethod vertical[] = {methods.vScrollLine, methods.vScrollPage, methods.vScrollEnd,
                                         methods.vScrollThumb};
  TheLaterModules().endEditSession(nullptr);
  if (window != ActiveWindow()) BringChildWindowForward(window);
  const WORD code = LOWORD(m.wParam);
  if (m.lParam != 0 || code >= std::size(kMeanings) || window->flags & kWindowClosed) return 0;
  const Meaning& meaning = kMeanings[code];
  const int16_t value = meaning.value == kPosition ? int16_t(HIWORD(m.wParam)) : meaning.value;
  SetPortWindow(window);
  (m.number == WM_HSCROLL ? horizontal : vertical)[meaning.kind](window, uint16_t(meaning.kind), value);
  return 0;
}

LRESULT OnMouseMove(const WindowMessage& m) {
  MouseMoveMessage(m.window, m.lParam);
  return 0;
}

template <uint16_t button> LRESULT OnPress(const WindowMessage& m) {
  PressMessage(m.window, button, m.wParam, m.lParam);
  return 0;
}

template <uint16_t button> LRESULT OnRelease(const WindowMessage& m) {
  ReleaseMessage(m.window, button, m.wParam, m.lParam);
  return 0;
}

// The middle button and WM_CHAR are no one's: characters come from TranslateKey.
constexpr MessageRow kTable[] = {
    {WM_CREATE, WM_DESTROY, OnNothing},
    {WM_ACTIVATE, WM_ACTIVATE, OnActivate},
    {WM_PAINT, WM_PAINT, OnPaint},
    {WM_ACTIVATEAPP, WM_ACTIVATEAPP, OnActivateApp},
    {WM_GETMINMAXINFO, WM_GETMINMAXINFO, OnGetMinMaxInfo},
    {WM_WINDOWPOSCHANGED, WM_WINDOWPOSCHANGED, OnWindowPosChanged},
    {WM_NCCALCSIZE, WM_NCCALCSIZE, OnNcCalcSize},
    {WM_NCACTIVATE, WM_NCACTIVATE, OnNcActivate},
    {WM_GETDLGCODE, WM_GETDLGCODE, OnGetDlgCode},
    {WM_NCLBUTTONDOWN, WM_NCMBUTTONDBLCLK, OnFrameMouse},
    {WM_KEYDOWN, WM_KEYDOWN, OnKeyDown},
    {WM_KEYUP, WM_KEYUP, OnKeyUp},
    {WM_SYSKEYDOWN, WM_SYSKEYDOWN, OnSysKeyDown},
    {WM_SYSKEYUP, WM_SYSKEYUP, OnSysKeyUp},
    {WM_COMMAND, WM_COMMAND, OnCommand},
    {WM_SYSCOMMAND, WM_SYSCOMMAND, OnSysCommand},
    {WM_HSCROLL, WM_VSCROLL, OnScroll},
    {WM_ENTERIDLE, WM_ENTERIDLE, OnEnterIdle},
    {WM_MOUSEMOVE, WM_MOUSEMOVE, OnMouseMove},
    {WM_LBUTTONDOWN, WM_LBUTTONDOWN, OnPress<kFlagLeftButton>},
    {WM_LBUTTONUP, WM_LBUTTONUP, OnRelease<kFlagLeftButton>},
    {WM_LBUTTONDBLCLK, WM_LBUTTONDBLCLK, OnPress<kFlagLeftButton>},
    {WM_RBUTTONDOWN, WM_RBUTTONDOWN, OnPress<kFlagRightButton>},
    {WM_RBUTTONUP, WM_RBUTTONUP, OnRelease<kFlagRightButton>},
    {WM_RBUTTONDBLCLK, WM_RBUTTONDBLCLK, OnPress<kFlagRightButton>},
};

// The record of a platform window. Its first message comes while the window is being made, and attaches the two.
ChildWindow* WindowOf(HWND handle) {
  if (const LONG_PTR data = ::GetWindowLongPtrA(handle, GWL_USERDATA)) return reinterpret_cast<ChildWindow*>(data);
  ChildWindow* window = TakePendingWindow();
  if (!window) return nullptr;
  ::SetWindowLongPtrA(handle, GWL_USERDATA, reinterpret_cast<LONG_PTR>(window));
  window->window = handle;
  return window;
}

} // namespace

LRESULT ChildWindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  ChildWindow* window = WindowOf(handle);
  if (!window) return ::DefWindowProcA(handle, message, wParam, lParam);
  return HandleMessage(kTable, {window, handle, message, wParam, lParam});
}

} // namespace framereel
