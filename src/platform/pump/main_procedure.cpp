// The messages of the main window, a function for each, and at the end their table.
#include "platform/pump/main_procedure.h"

#include "core/notices.h"
#include "core/numbers.h"
#include "platform/input/mouse.h"
#include "platform/menus/menu_commands.h"
#include "platform/pump/app_callbacks.h"
#include "platform/pump/message_table.h"
#include "platform/pump/pump.h"
#include "platform/records/later_modules.h"
#include "platform/records/window_records.h"
#include "platform/windows/paint_messages.h"
#include "platform/windows/place_messages.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr WORD kFirstSystemCommand = 0xF000; // below it, ids are menu items of the program's own

LRESULT OnDestroy(const WindowMessage&) {
  ::PostQuitMessage(0);
  EndEventLoop();
  return 0;
}

LRESULT OnPaint(const WindowMessage& m) {
  PaintMainWindow(m.handle);
  return 0;
}

// The user can make the window as small as the application lets it be, and as large as the usable screen.
LRESULT OnGetMinMaxInfo(const WindowMessage& m) {
  const LRESULT answer = DefaultAnswer(m);
  const MainWindow* main = TheMainWindow();
  auto* info = reinterpret_cast<MINMAXINFO*>(m.lParam);
  info->ptMinTrackSize = {main->minWidth, main->minHeight};
  info->ptMaxTrackSize = {main->usableWidth, main->usableHeight};
  return answer;
}

// Without the default, so that no WM_SIZE and WM_MOVE follow: this message tells all that they would.
LRESULT OnWindowPosChanged(const WindowMessage& m) {
  MainPlaceChanged(TheMainWindow(), *reinterpret_cast<const WINDOWPOS*>(m.lParam));
  return 0;
}

LRESULT OnNcCalcSize(const WindowMessage& m) {
  return MainFrameChanged(TheMainWindow(), m.handle, m.wParam, m.lParam);
}

// The caption stays lit as long as the program is the active one.
LRESULT OnNcActivate(const WindowMessage& m) {
  WindowMessage lit = m;
  if (ActiveGet()) lit.wParam = TRUE;
  return DefaultAnswer(lit);
}

LRESULT OnCommand(const WindowMessage& m) {
  MenuCommand(LOWORD(m.wParam));
  return 0;
}

LRESULT OnSysCommand(const WindowMessage& m) {
  const WORD command = LOWORD(m.wParam);
  if (command < kFirstSystemCommand) {
    MenuCommand(command);
    return 0;
  }
  const WPARAM kind = command & kSystemCommandBits;
  if (kind != SC_MOUSEMENU) TheLaterModules().endEditSession(nullptr);
  if (kind == SC_CLOSE && CallQuitHandler()) return 0;
  return DefaultAnswer(m);
}

// A dialog that waits for its answer disables the window.
LRESULT OnQueryEndSession(const WindowMessage& m) {
  const bool waits = ::GetWindowLongPtrA(m.handle, GWL_STYLE) & WS_DISABLED;
  return CallSessionHandler(waits ? SessionStep::kMayEndUnasked : SessionStep::kMayEnd);
}

LRESULT OnEndSession(const WindowMessage& m) {
  if (m.wParam) {
    EndAllLoops();
  } else {
    CallSessionHandler(SessionStep::kGoesOn);
  }
  return 0;
}

LRESULT OnMouseMove(const WindowMessage& m) {
  const MainWindow* main = TheMainWindow();
  const int x = int16_t(LOWORD(uintptr_t(m.lParam))), y = int16_t(HIWORD(uintptr_t(m.lParam)));
  TrackMouse(nullptr, {PinToShort(y + main->geometry.insetTop), PinToShort(x + main->geometry.insetLeft)});
  return 0;
}

// The messages of palettes have no rows: nobody can change the desktop's palette (GetDeviceCaps).
constexpr MessageRow kTable[] = {
    {WM_DESTROY, WM_DESTROY, OnDestroy},
    {WM_PAINT, WM_PAINT, OnPaint},
    {WM_QUERYENDSESSION, WM_QUERYENDSESSION, OnQueryEndSession},
    {WM_ENDSESSION, WM_ENDSESSION, OnEndSession},
    {WM_WININICHANGE, WM_WININICHANGE, OnDisplayChange},
    {WM_ACTIVATEAPP, WM_ACTIVATEAPP, OnActivateApp},
    {WM_GETMINMAXINFO, WM_GETMINMAXINFO, OnGetMinMaxInfo},
    {WM_WINDOWPOSCHANGED, WM_WINDOWPOSCHANGED, OnWindowPosChanged},
    {WM_DISPLAYCHANGE, WM_DISPLAYCHANGE, OnDisplayChange},
    {WM_NCCALCSIZE, WM_NCCALCSIZE, OnNcCalcSize},
    {WM_NCACTIVATE, WM_NCACTIVATE, OnNcActivate},
    {WM_NCLBUTTONDOWN, WM_NCMBUTTONDBLCLK, OnFrameMouse},
    {WM_KEYDOWN, WM_KEYDOWN, OnKeyDown},
    {WM_KEYUP, WM_KEYUP, OnKeyUp},
    {WM_SYSKEYDOWN, WM_SYSKEYDOWN, OnSysKeyDown},
    {WM_SYSKEYUP, WM_SYSKEYUP, OnSysKeyUp},
    {WM_COMMAND, WM_COMMAND, OnCommand},
    {WM_SYSCOMMAND, WM_SYSCOMMAND, OnSysCommand},
    {WM_ENTERIDLE, WM_ENTERIDLE, OnEnterIdle},
    {WM_MOUSEMOVE, WM_MOUSEMOVE, OnMouseMove},
    {WM_LBUTTONDOWN, WM_MBUTTONDBLCLK, OnFrameMouse},
};

} // namespace

LRESULT MainWindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  return HandleMessage(kTable, {nullptr, handle, message, wParam, lParam});
}

} // namespace framereel
