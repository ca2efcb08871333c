// The class "button": its look, and when a press counts as a click.
#include "win32/controls/button.h"

#include <algorithm>

#include "win32/controls/control_base.h"
#include "win32/drawing/mnemonics.h"
#include "win32/drawing/relief.h"
#include "win32/drawing/system_colours.h"
#include "win32/pixels/rectangles.h"
#include "win32/pixels/scale.h"
#include "win32/win32_controls.h"
#include "win32/win32_drawing.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_text.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

enum class Press : uint8_t { kNone, kByMouse, kByKey };

struct ButtonState {
  HFONT font;
  Press press;
  bool inside; // of a press by the mouse: the pointer is over the button
};

constexpr DWORD kStyleBits = 15; // of the style, those that BS_... are in
constexpr Scaled kFocusInset{4};
constexpr LPARAM kIsRepeat = 1 << 30; // of a key message

bool LooksPressed(const ButtonState& state) {
  return state.press == Press::kByKey || (state.press == Press::kByMouse && state.inside);
}

// ---- Its look ----------------------------------------------------------------------------------------------------

void DrawTitle(HDC context, HWND button, const PixelRect& inside, int32_t shift) {
  const MnemonicText title = MnemonicTextOf(button->title);
  // What has no room is cut at the end.
  const int32_t x = inside.left + std::max(0, (WidthOf(inside) - TextWidth(context, title.shown)) / 2);
  const int32_t y = inside.top + (HeightOf(inside) - LineHeight(context)) / 2;
  HRGN clip = ::CreateRectRgn(inside.left, inside.top, inside.right, inside.bottom);
  ::SelectClipRgn(context, clip);
  ::DeleteObject(clip);
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE), ink = ::GetSysColor(kColourButtonText);
  DrawMnemonicText(context, x + shift, y + shift, title, Has(*button, WS_DISABLED), face, ink);
  ::SelectClipRgn(context, nullptr);
}

LRESULT OnPaint(HWND button, WPARAM, LPARAM) {
  const ButtonState& state = *StateOf<ButtonState>(button);
  const ControlPaint context(button, state.font);
  const bool pressed = LooksPressed(state);
  const bool isDefault = (button->style & kStyleBits) == BS_DEFPUSHBUTTON;
  PixelRect r = ClientBounds(*button);
  if (isDefault) {
    DrawEdge(context, r, COLOR_WINDOWFRAME, COLOR_WINDOWFRAME);
    r = Shrunk(r, kThinLine);
  }
  DrawRaised(context, r, pressed);
  DrawTitle(context, button, Shrunk(r, 2 * kThinLine), pressed ? PictureScale() : 0);
  if (::GetFocus() == button) DrawDottedRect(context, Shrunk(r, kFocusInset), ::GetSysColor(COLOR_BTNFACE));
  return 0;
}

// At once: whoever presses sees it, whatever else there is to do.
void ShowState(HWND button) {
  InvalidateAll(button);
  ::UpdateWindow(button);
}

// ---- Presses -----------------------------------------------------------------------------------------------------

void BeginPress(HWND button, Press press) {
  ButtonState* state = StateOf<ButtonState>(button);
  state->press = press;
  state->inside = true;
  ShowState(button);
}

// Answers whether the button looked pressed, so that it may be a click.
bool EndPress(HWND button) {
  ButtonState* state = StateOf<ButtonState>(button);
  const bool pressed = LooksPressed(*state), byMouse = state->press == Press::kByMouse;
  if (state->press == Press::kNone) return false;
  state->press = Press::kNone;
  if (byMouse && TheWindows().capture == button) ::ReleaseCapture();
  if (IsLive(button)) ShowState(button);
  return pressed && IsLive(button);
}

// The last thing that is done with the button: it may be gone afterwards.
void Click(HWND button) {
  if (IsEnabled(button)) NotifyParent(button, BN_CLICKED);
}

LRESULT OnLeftDown(HWND button, WPARAM, LPARAM) {
  ::SetFocus(button);
  if (!IsLive(button)) return 0;
  EndPress(button);
  ::SetCapture(button);
  if (IsLive(button)) BeginPress(button, Press::kByMouse);
  return 0;
}

LRESULT OnMouseMove(HWND button, WPARAM, LPARAM lParam) {
  ButtonState* state = StateOf<ButtonState>(button);
  const auto at = uintptr_t(lParam);
  const bool inside = Holds(ClientBounds(*button), SHORT(LOWORD(at)), SHORT(HIWORD(at)));
  if (state->press != Press::kByMouse || state->inside == inside) return 0;
  state->inside = inside;
  ShowState(button);
  return 0;
}

LRESULT OnLeftUp(HWND button, WPARAM wParam, LPARAM lParam) {
  if (StateOf<ButtonState>(button)->press != Press::kByMouse) return 0;
  OnMouseMove(button, wParam, lParam);
  if (EndPress(button)) Click(button);
  return 0;
}

// What ends a press without a click.
LRESULT OnPressLost(HWND button, WPARAM, LPARAM) {
  EndPress(button);
  return 0;
}

LRESULT OnKeyDown(HWND button, WPARAM wParam, LPARAM lParam) {
  const bool pressed = StateOf<ButtonState>(button)->press != Press::kNone;
  if (wParam == VK_SPACE) {
    if (!pressed && !(lParam & kIsRepeat)) BeginPress(button, Press::kByKey);
  } else if (pressed) {
    EndPress(button);
  } else if (wParam == VK_RETURN && !(lParam & kIsRepeat)) {
    Click(button);
  }
  return 0;
}

LRESULT OnKeyUp(HWND button, WPARAM wParam, LPARAM) {
  const bool ends = wParam == VK_SPACE && StateOf<ButtonState>(button)->press == Press::kByKey;
  if (ends && EndPress(button)) Click(button);
  return 0;
}

LRESULT OnClickMessage(HWND button, WPARAM, LPARAM) {
  Click(button);
  return 0;
}

// ---- Its state ---------------------------------------------------------------------------------------------------

LRESULT OnNcCreate(HWND button, WPARAM, LPARAM) {
  button->control = std::make_shared<ButtonState>();
  return TRUE;
}

LRESULT OnSetStyle(HWND button, WPARAM wParam, LPARAM lParam) {
  button->style = (button->style & ~kStyleBits) | (DWORD(wParam) & kStyleBits);
  if (lParam) InvalidateAll(button);
  return 0;
}

LRESULT OnSetText(HWND button, WPARAM, LPARAM lParam) {
  SetTitle(button, reinterpret_cast<const char*>(lParam));
  InvalidateAll(button);
  return TRUE;
}

LRESULT OnSetFont(HWND button, WPARAM wParam, LPARAM lParam) {
  StateOf<ButtonState>(button)->font = reinterpret_cast<HFONT>(wParam);
  if (lParam) InvalidateAll(button);
  return 0;
}

LRESULT OnGetFont(HWND button, WPARAM, LPARAM) {
  return reinterpret_cast<LRESULT>(StateOf<ButtonState>(button)->font);
}

LRESULT OnGetDialogCode(HWND button, WPARAM, LPARAM) {
  return (button->style & kStyleBits) == BS_DEFPUSHBUTTON ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON;
}

LRESULT OnErase(HWND, WPARAM, LPARAM) {
  return TRUE; // what is painted covers all of it
}

LRESULT OnLookChanged(HWND button, WPARAM, LPARAM) {
  InvalidateAll(button);
  return 0;
}

LRESULT OnKillFocus(HWND button, WPARAM, LPARAM) {
  if (StateOf<ButtonState>(button)->press == Press::kByKey) EndPress(button);
  if (IsLive(button)) InvalidateAll(button);
  return 0;
}

constexpr MessageHandler kHandlers[] = {
    {WM_NCCREATE, OnNcCreate},        {WM_PAINT, OnPaint},          {WM_ERASEBKGND, OnErase},
    {WM_SETTEXT, OnSetText},          {WM_SETFONT, OnSetFont},      {WM_GETFONT, OnGetFont},
    {WM_ENABLE, OnLookChanged},       {WM_SETFOCUS, OnLookChanged}, {WM_KILLFOCUS, OnKillFocus},
    {WM_LBUTTONDOWN, OnLeftDown},     {WM_MOUSEMOVE, OnMouseMove},  {WM_LBUTTONUP, OnLeftUp},
    {WM_CAPTURECHANGED, OnPressLost}, {WM_KEYDOWN, OnKeyDown},      {WM_KEYUP, OnKeyUp},
    {BM_SETSTYLE, OnSetStyle},        {BM_CLICK, OnClickMessage},   {WM_GETDLGCODE, OnGetDialogCode},
};

} // namespace

LRESULT ButtonProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return HandleControlMessage(kHandlers, window, message, wParam, lParam);
}

} // namespace framereel
