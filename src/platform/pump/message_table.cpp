// Finding the row of a message, and the shared rows.
#include "platform/pump/message_table.h"

#include "core/temporary_blocks.h"
#include "core/timers.h"
#include "platform/drawing/ports.h"
#include "platform/input/keys.h"
#include "platform/pump/pump.h"
#include "platform/records/window_records.h"
#include "platform/windows/active_window.h"
#include "platform/windows/display_change.h"
#include "platform/windows/modal.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

bool handling;

} // namespace

void StartHandlingMessages() {
  handling = true;
}

void StopHandlingMessages() {
  handling = false;
}

LRESULT DefaultAnswer(const WindowMessage& m) {
  return ::DefWindowProcA(m.handle, m.number, m.wParam, m.lParam);
}

LRESULT HandleMessage(std::span<const MessageRow> table, const WindowMessage& m) {
  if (handling) {
    for (const MessageRow& row : table) {
      if (m.number >= row.first && m.number <= row.last) return row.handler(m);
    }
  }
  return DefaultAnswer(m);
}

LRESULT OnDisplayChange(const WindowMessage& m) {
  DisplayChanged();
  return DefaultAnswer(m);
}

LRESULT OnActivateApp(const WindowMessage& m) {
  TheMainWindow()->appActive = m.wParam;
  CheckActiveState();
  return 0;
}

// The mouse on the frame, and presses on the main window.
LRESULT OnFrameMouse(const WindowMessage& m) {
  DismissPopup();
  return DefaultAnswer(m);
}

LRESULT OnKeyDown(const WindowMessage& m) {
  KeyDownMessage(m.wParam, m.lParam);
  return 0;
}

LRESULT OnKeyUp(const WindowMessage& m) {
  KeyUpMessage(m.wParam);
  return 0;
}

LRESULT OnSysKeyDown(const WindowMessage& m) {
  return SysKeyDownMessage(m.wParam, m.lParam) ? 0 : DefaultAnswer(m);
}

LRESULT OnSysKeyUp(const WindowMessage& m) {
  return SysKeyUpMessage() ? 0 : DefaultAnswer(m);
}

// Timers run on while a menu or a dialog is open, whose loop is the platform's. It ends where ours do.
LRESULT OnEnterIdle(const WindowMessage& m) {
  TempScopeBegin();
  SetPortMain(nullptr);
  TimerFireDue();
  TempScopeEnd();
  if (LoopsMayRun()) return 0;
  ::PostQuitMessage(0);
  ::SendMessageA(m.handle, WM_CANCELMODE, 0, 0);
  return 0;
}

} // namespace framereel
