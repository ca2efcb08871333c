// What the controls share: where they keep what is theirs, drawing in their font, telling their parent. Internal to the
// layer.
#pragma once

#include <span>

#include "win32/win32_windows.h"
#include "win32/windows/window.h"

namespace framereel {

// Goes with the window. A procedure may end its own window, so whoever goes on after a send asks IsLive first; the
// record can be read until no procedure runs any more.
template <typename State> State* StateOf(HWND control) {
  return static_cast<State*>(control->control.get());
}

struct MessageHandler {
  UINT message;
  LRESULT (*run)(HWND control, WPARAM wParam, LPARAM lParam);
};
// Runs the handler of the message; the default for a message without one, and for all that come ahead of WM_NCCREATE,
// whose handler makes the state.
LRESULT HandleControlMessage(std::span<const MessageHandler> handlers, HWND control, UINT message, WPARAM wParam,
                             LPARAM lParam);

// The window's context with a font in it, null for the system's, given back at the end of the scope.
class ControlContext {
public:
  ControlContext(HWND window, HFONT font);
  ~ControlContext();
  ControlContext(const ControlContext&) = delete;
  operator HDC() const { return context_; }

private:
  HWND window_;
  HDC context_;
};

// The same between BeginPaint and EndPaint.
class ControlPaint {
public:
  ControlPaint(HWND window, HFONT font);
  ~ControlPaint();
  ControlPaint(const ControlPaint&) = delete;
  operator HDC() const { return paint_.hdc; }
  PixelRect Part() const; // around what is to be painted

private:
  HWND window_;
  PAINTSTRUCT paint_;
};

void NotifyParent(HWND control, WORD notice); // WM_COMMAND
void InvalidateAll(HWND control);

} // namespace framereel
