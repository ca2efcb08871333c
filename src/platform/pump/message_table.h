// What the two window procedures share: how a message finds its row in a table, and the rows that both tables have. The
// tables stand in main_procedure.cpp and child_procedure.cpp.
#pragma once

#include <span>

#include "win32/win32_types.h"

namespace framereel {

struct ChildWindow;

// From now on both procedures only forward to the platform's default; and no longer.
void StopHandlingMessages();
void StartHandlingMessages();

struct WindowMessage {
  ChildWindow* window; // null in the main procedure
  HWND handle;         // what the record may not have yet
  UINT number;
  WPARAM wParam;
  LPARAM lParam;
};

using MessageHandler = LRESULT (*)(const WindowMessage& message);

// A row of a procedure's table, for the messages from first to last.
struct MessageRow {
  UINT first, last;
  MessageHandler handler;
};

// Calls the handler of the message, or the platform's default when there is none.
LRESULT HandleMessage(std::span<const MessageRow> table, const WindowMessage& message);
LRESULT DefaultAnswer(const WindowMessage& message);

// ---- Rows that both tables have ----------------------------------------------------------------------------------

inline constexpr WPARAM kSystemCommandBits = 0xFFF0; // of WM_SYSCOMMAND; the rest is the sender's own

LRESULT OnDisplayChange(const WindowMessage& message);
LRESULT OnActivateApp(const WindowMessage& message);
LRESULT OnFrameMouse(const WindowMessage& message);
LRESULT OnKeyDown(const WindowMessage& message);
LRESULT OnKeyUp(const WindowMessage& message);
LRESULT OnSysKeyDown(const WindowMessage& message);
LRESULT OnSysKeyUp(const WindowMessage& message);
LRESULT OnEnterIdle(const WindowMessage& message);

} // namespace framereel
