// Making and destroying a control, and giving it font, size, place and text.
#include "platform/controls/native_control.h"

#include "core/memory.h"
#include "core/strings.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/font_cache.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"
#include "platform/windows/window_list.h"
#include "win32/win32_controls.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr UINT kSizeOnly = SWP_NOMOVE | SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE;
constexpr UINT kPlaceOnly = SWP_NOSIZE | SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE;

void Invalidate(View* view) {
  if (view->window->openCount < 1 || !(view->flags & kViewVisible)) return;
  InvalidateChildRect(view->window,
                      {view->y, view->x, int16_t(view->y + view->height), int16_t(view->x + view->width)});
}

// A copy with CR LF for each LF.
char* WithNativeLineEnds(const char* text) {
  size_t length = 0;
  for (const char* at = text; *at; ++at) length += *at == '\n' ? 2 : 1;
  auto* copy = static_cast<char*>(MemAlloc(length + 1));
  if (!copy) return nullptr;
  char* out = copy;
  for (const char* at = text; *at; ++at) {
    if (*at == '\n') *out++ = '\r';
    *out++ = *at;
  }
  *out = 0;
  return copy;
}

void TakeNativeLineEnds(char* text) {
  char* out = text;
  for (const char* at = text; *at; ++at) {
    if (at[0] != '\r' || at[1] != '\n') *out++ = *at;
  }
  *out = 0;
}

} // namespace

HWND CreateNativeControl(View* view, const char* className, DWORD style, uint16_t id) {
  const auto number = reinterpret_cast<HMENU>(uintptr_t{id});
  HWND control = ::CreateWindowExA(0, className, "", style, view->x, view->y, view->width, view->height,
                                   view->window->window, number, TheMainWindow()->instance, nullptr);
  const Font* font = view->drawing->font;
  ::SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font ? font->handle : nullptr), 0);
  return control;
}

void DestroyNativeControl(View* view) {
  HWND control = view->viewClass->nativeHandle(view);
  LetGoOfFont(view->drawing->font);
  const LONG_PTR id = ::GetWindowLongPtrA(control, GWL_ID);
  ::SetWindowLongPtrA(control, GWL_ID, kDyingControl);
  ControlTableGiveBack(&view->window->controls, uint16_t(id));
  ::DestroyWindow(control);
}

void SetNativeFont(View* view, HWND control, DrawState* state, bool first) {
  if (!first) LetGoOfFont(view->drawing->font);
  view->drawing = state;
  ::SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(HoldFont(state->font)), TRUE);
}

void SetNativeSize(View* view, HWND control, int16_t controlWidth, int16_t controlHeight, int16_t width,
                   int16_t height) {
  Invalidate(view);
  view->width = width;
  view->height = height;
  ::SetWindowPos(control, nullptr, 0, 0, controlWidth, controlHeight, kSizeOnly);
  Invalidate(view);
}

void SetNativePosition(View* view, HWND control, int16_t controlX, int16_t controlY, int16_t x, int16_t y) {
  Invalidate(view);
  view->x = x;
  view->y = y;
  ::SetWindowPos(control, nullptr, controlX, controlY, 0, 0, kPlaceOnly);
  Invalidate(view);
}

void ShowNativeControl(HWND control, bool shown) {
  ::ShowWindow(control, shown ? SW_SHOW : SW_HIDE);
  if (shown) ::InvalidateRect(control, nullptr, FALSE);
}

void SetNativeText(HWND control, const char* text) {
  char* native = WithNativeLineEnds(text);
  if (native) ::SetWindowTextA(control, native);
  MemFree(native);
}

char* NativeText(HWND control) {
  const int length = ::GetWindowTextLengthA(control);
  auto* text = static_cast<char*>(MemAlloc(size_t(length) + 1));
  if (!text) return nullptr;
  text[0] = 0;
  ::GetWindowTextA(control, text, length + 1);
  TakeNativeLineEnds(text);
  return text;
}

View* ViewOfNativeControl(HWND control) {
  const auto id = uint16_t(::GetWindowLongPtrA(control, GWL_ID));
  const ChildWindow* window = id == kDyingControl ? nullptr : FindChildWindow(::GetParent(control));
  View* view = window ? ControlTableFind(&window->controls, id) : nullptr;
  return view && !(view->flags & kViewDestroyed) ? view : nullptr;
}

} // namespace framereel
