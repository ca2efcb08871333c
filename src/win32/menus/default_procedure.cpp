// What every window does with a message that its procedure leaves alone: a table from message to handler.
#include "win32/input/frame_mouse.h"
#include "win32/input/keyboard.h"
#include "win32/menus/menu_tracking.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/frame.h"
#include "win32/windows/painting.h"
#include "win32/windows/sending.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_text.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

LRESULT OnNcCreate(HWND, WPARAM, LPARAM) {
  return 1;
}

LRESULT OnNcCalcSize(HWND window, WPARAM, LPARAM lParam) {
  auto* rect = reinterpret_cast<RECT*>(lParam);
  if (!window->minimised) *rect = RectOf(ClientInside(*window, PixelsOf(*rect)));
  return 0;
}

LRESULT OnNcActivate(HWND window, WPARAM wParam, LPARAM) {
  const bool lit = wParam != 0;
  if (lit != window->captionLit) {
    window->captionLit = lit;
    InvalidateFrame(window);
  }
  return 1;
}

LRESULT OnNcButtonDown(HWND window, WPARAM wParam, LPARAM lParam) {
  PressFrame(window, int(wParam), SHORT(LOWORD(uintptr_t(lParam))), SHORT(HIWORD(uintptr_t(lParam))));
  return 0;
}

LRESULT OnActivate(HWND window, WPARAM wParam, LPARAM) {
  if (LOWORD(wParam) && !window->minimised) ::SetFocus(window);
  return 0;
}

LRESULT OnEraseBackground(HWND window, WPARAM wParam, LPARAM) {
  return EraseBackground(window, reinterpret_cast<HDC>(wParam));
}

LRESULT OnSetText(HWND window, WPARAM, LPARAM lParam) {
  SetTitle(window, reinterpret_cast<const char*>(lParam));
  return TRUE;
}

LRESULT OnGetText(HWND window, WPARAM wParam, LPARAM lParam) {
  return CopyText(window->title, wParam, lParam);
}

LRESULT OnGetTextLength(HWND window, WPARAM, LPARAM) {
  return LRESULT(window->title.size());
}

LRESULT OnPaint(HWND window, WPARAM, LPARAM) {
  PAINTSTRUCT paint;
  ::BeginPaint(window, &paint);
  ::EndPaint(window, &paint);
  return 0;
}

LRESULT OnClose(HWND window, WPARAM, LPARAM) {
  ::DestroyWindow(window);
  return 0;
}

LRESULT OnPosChanged(HWND window, WPARAM, LPARAM lParam) {
  const UINT flags = reinterpret_cast<const WINDOWPOS*>(lParam)->flags;
  if (!(flags & SWP_NOMOVE)) Send(window, WM_MOVE, 0, MAKELPARAM(window->client.left, window->client.top));
  if (!IsLive(window) || flags & SWP_NOSIZE) return 0;
  return Send(window, WM_SIZE, window->minimised, MAKELPARAM(WidthOf(window->client), HeightOf(window->client)));
}

bool IsRepeated(LPARAM lParam) {
  return lParam & LPARAM{1} << 30;
}

LRESULT OnSystemKeyDown(HWND window, WPARAM wParam, LPARAM lParam) {
  if (wParam == VK_F4 && KeyIsDown(VK_MENU)) return Send(TopLevelOf(window), WM_SYSCOMMAND, SC_CLOSE, 0);
  const bool alone = !KeyIsDown(VK_MENU) && !KeyIsDown(VK_CONTROL) && !KeyIsDown(VK_SHIFT);
  if (wParam == VK_F10 && alone && !IsRepeated(lParam)) Send(TopLevelOf(window), WM_SYSCOMMAND, SC_KEYMENU, 0);
  return 0;
}

LRESULT OnSystemKeyUp(HWND window, WPARAM wParam, LPARAM) {
  if (wParam != VK_MENU || !TheWindows().altAlone) return 0;
  TheWindows().altAlone = false;
  return Send(TopLevelOf(window), WM_SYSCOMMAND, SC_KEYMENU, 0);
}

// A key that repeats was pressed in a chord, of which Alt is what is left.
LRESULT OnSystemChar(HWND window, WPARAM wParam, LPARAM lParam) {
  const bool alt = lParam & LPARAM{1} << 29;
  if (alt && !IsRepeated(lParam)) Send(TopLevelOf(window), WM_SYSCOMMAND, SC_KEYMENU, LPARAM(wParam));
  return 0;
}

// A dialog over a dialog: what is to go on meanwhile, the window at the chain's end knows.
LRESULT OnEnterIdle(HWND window, WPARAM wParam, LPARAM lParam) {
  return IsLive(window->owner) ? Send(window->owner, WM_ENTERIDLE, wParam, lParam) : 0;
}

LRESULT OnCancelMode(HWND window, WPARAM, LPARAM) {
  if (TheWindows().menuOwner == window) EndMenu();
  return 0;
}

LRESULT OnSystemCommand(HWND window, WPARAM wParam, LPARAM lParam) {
  const int x = SHORT(LOWORD(uintptr_t(lParam))), y = SHORT(HIWORD(uintptr_t(lParam)));
  switch (wParam & 0xFFF0) {
  case SC_MOVE:
    DragWindow(window, !(wParam & 15), x, y);
    return 0;
  case SC_MINIMIZE:
    ::ShowWindow(window, SW_MINIMIZE);
    return 0;
  case SC_RESTORE:
    ::ShowWindow(window, SW_RESTORE);
    return 0;
  case SC_CLOSE:
    return Send(window, WM_CLOSE, 0, 0);
  case SC_MOUSEMENU:
    RunMenuByMouse(window, int(wParam & 15), x, y);
    return 0;
  case SC_KEYMENU:
    RunMenuByKey(window, uint8_t(lParam));
    return 0;
  default:
    return 0;
  }
}

// A wheel that a window has no use for turns what lies around it.
LRESULT OnMouseWheel(HWND window, WPARAM wParam, LPARAM lParam) {
  return window->parent ? Send(window->parent, WM_MOUSEWHEEL, wParam, lParam) : 0;
}

struct Handler {
  UINT message;
  LRESULT (*run)(HWND window, WPARAM wParam, LPARAM lParam);
};
constexpr Handler kHandlers[] = {
    {WM_ACTIVATE, OnActivate},
    {WM_SETTEXT, OnSetText},
    {WM_GETTEXT, OnGetText},
    {WM_GETTEXTLENGTH, OnGetTextLength},
    {WM_PAINT, OnPaint},
    {WM_CLOSE, OnClose},
    {WM_QUERYENDSESSION, [](HWND, WPARAM, LPARAM) -> LRESULT { return TRUE; }},
    {WM_ERASEBKGND, OnEraseBackground},
    {WM_WINDOWPOSCHANGED, OnPosChanged},
    {WM_NCCREATE, OnNcCreate},
    {WM_NCCALCSIZE, OnNcCalcSize},
    {WM_NCACTIVATE, OnNcActivate},
    {WM_NCLBUTTONDOWN, OnNcButtonDown},
    {WM_CANCELMODE, OnCancelMode},
    {WM_ENTERIDLE, OnEnterIdle},
    {WM_SYSKEYDOWN, OnSystemKeyDown},
    {WM_SYSKEYUP, OnSystemKeyUp},
    {WM_SYSCHAR, OnSystemChar},
    {WM_SYSCOMMAND, OnSystemCommand},
    {WM_MOUSEWHEEL, OnMouseWheel},
};

} // namespace
} // namespace framereel

using namespace framereel;

LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (!IsLive(window)) return 0;
  for (const Handler& handler : kHandlers) {
    if (handler.message == message) return handler.run(window, wParam, lParam);
  }
  return 0;
}
