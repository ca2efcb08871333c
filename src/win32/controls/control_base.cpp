// What the controls share.
#include "win32/controls/control_base.h"

#include "win32/pixels/rectangles.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"
#include "win32/windows/window_tree.h"

namespace framereel {

LRESULT HandleControlMessage(std::span<const MessageHandler> handlers, HWND control, UINT message, WPARAM wParam,
                             LPARAM lParam) {
  const bool ready = IsLive(control) && (control->control || message == WM_NCCREATE);
  for (const MessageHandler& handler : handlers) {
    if (ready && handler.message == message) return handler.run(control, wParam, lParam);
  }
  return ::DefWindowProcA(control, message, wParam, lParam);
}

ControlContext::ControlContext(HWND window, HFONT font) : window_(window), context_(::GetDC(window)) {
  ::SelectObject(context_, font);
}

ControlContext::~ControlContext() {
  ::ReleaseDC(window_, context_);
}

ControlPaint::ControlPaint(HWND window, HFONT font) : window_(window), paint_{} {
  ::BeginPaint(window, &paint_);
  ::SelectObject(paint_.hdc, font);
}

ControlPaint::~ControlPaint() {
  ::EndPaint(window_, &paint_);
}

PixelRect ControlPaint::Part() const {
  return PixelsOf(paint_.rcPaint);
}

void NotifyParent(HWND control, WORD notice) {
  const WPARAM what = MAKEWPARAM(int(control->id), notice);
  ::SendMessageA(control->parent, WM_COMMAND, what, reinterpret_cast<LPARAM>(control));
}

void InvalidateAll(HWND control) {
  ::InvalidateRect(control, nullptr, FALSE);
}

} // namespace framereel
