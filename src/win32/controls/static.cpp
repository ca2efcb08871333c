// The class "static": its look, and the little that it is told.
#include "win32/controls/static.h"

#include <algorithm>

#include "win32/controls/control_base.h"
#include "win32/controls/edit_lines.h"
#include "win32/drawing/fitted_text.h"
#include "win32/drawing/mnemonics.h"
#include "win32/drawing/relief.h"
#include "win32/drawing/system_colours.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_controls.h"
#include "win32/win32_windows.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_text.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

struct StaticState {
  HFONT font;
};

constexpr DWORD kKindBits = 0x1F; // of the style, those that say what it shows

bool IsOneLine(const Win32Window& control) {
  return (control.style & kKindBits) == SS_LEFTNOWORDWRAP || Has(control, SS_PATHELLIPSIS);
}

EditText AsLines(std::string_view text) {
  EditText lines = {};
  lines.multiLine = true;
  ResetText(&lines, text);
  return lines;
}

void DrawOneLine(HDC context, HWND control, const PixelRect& all) {
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE), ink = ::GetSysColor(kColourButtonText);
  const bool greyed = Has(*control, WS_DISABLED);
  if (Has(*control, SS_PATHELLIPSIS)) {
    const std::string text = FittedText(context, control->title, WidthOf(all), TextCut::kMiddle);
    return DrawLabel(context, all.left, all.top, text, greyed, face, ink);
  }
  const bool plain = Has(*control, SS_NOPREFIX);
  const MnemonicText text = plain ? MnemonicText{control->title, std::string::npos} : MnemonicTextOf(control->title);
  DrawMnemonicText(context, all.left, all.top, text, greyed, face, ink);
}

void DrawLines(HDC context, HWND control, const PixelRect& all) {
  const EditText text = AsLines(control->title);
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE), ink = ::GetSysColor(kColourButtonText);
  int32_t top = all.top;
  for (const EditLine& line : BreakLines(context, text, WidthOf(all))) {
    const std::string_view shown = std::string_view(text.text).substr(line.from, line.to - line.from);
    DrawLabel(context, all.left, top, shown, Has(*control, WS_DISABLED), face, ink);
    top += LineHeight(context);
  }
}

LRESULT OnPaint(HWND control, WPARAM, LPARAM) {
  const ControlPaint context(control, StateOf<StaticState>(control)->font);
  const PixelRect all = ClientBounds(*control);
  FillPixels(context, all, ::GetSysColor(COLOR_BTNFACE));
  IsOneLine(*control) ? DrawOneLine(context, control, all) : DrawLines(context, control, all);
  return 0;
}

LRESULT OnNcCreate(HWND control, WPARAM, LPARAM) {
  control->control = std::make_shared<StaticState>();
  return TRUE;
}

LRESULT OnErase(HWND, WPARAM, LPARAM) {
  return TRUE; // what is painted covers all of it
}

LRESULT OnSetText(HWND control, WPARAM, LPARAM lParam) {
  SetTitle(control, reinterpret_cast<const char*>(lParam));
  InvalidateAll(control);
  return TRUE;
}

LRESULT OnSetFont(HWND control, WPARAM wParam, LPARAM) {
  StateOf<StaticState>(control)->font = reinterpret_cast<HFONT>(wParam);
  InvalidateAll(control);
  return 0;
}

LRESULT OnEnable(HWND control, WPARAM, LPARAM) {
  InvalidateAll(control);
  return 0;
}

LRESULT OnGetDialogCode(HWND, WPARAM, LPARAM) {
  return DLGC_STATIC;
}

constexpr MessageHandler kHandlers[] = {
    {WM_NCCREATE, OnNcCreate}, {WM_PAINT, OnPaint},   {WM_ERASEBKGND, OnErase},         {WM_SETTEXT, OnSetText},
    {WM_SETFONT, OnSetFont},   {WM_ENABLE, OnEnable}, {WM_GETDLGCODE, OnGetDialogCode},
};

} // namespace

LRESULT StaticProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return HandleControlMessage(kHandlers, window, message, wParam, lParam);
}

SIZE WrappedTextSize(HDC context, const char* text, int32_t width) {
  const EditText lines = AsLines(text);
  SIZE size = {0, 0};
  for (const EditLine& line : BreakLines(context, lines, width)) {
    size.cx = std::max(size.cx, XOf(context, lines, line, line.to));
    size.cy += LineHeight(context);
  }
  return size;
}

} // namespace framereel
