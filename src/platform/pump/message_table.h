// The two window procedures: every message of the program's windows comes in here. What each does with a message stands
// in main_procedure.cpp and child_procedure.cpp, table first.
#pragma once

#include <span>

#include "win32/win32.h"

namespace framereel {

struct ChildWindow;

LRESULT MainWindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT ChildWindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

// From now on both procedures only forward to the platform's default; and no longer.
void StopHandlingMessages();
void StartHandlingMessages();

// ---- Commands of the system menu ---------------------------------------------------------------------------------

inline constexpr WPARAM kSystemCommandBits = 0xFFF0; // the rest is the sender's own
inline constexpr WORD kFirstSystemCommand = 0xF000;  // below it, ids are menu items of the program's own
// What a ChildWindow's system menu sends besides the platform's commands.
inline constexpr WPARAM kCloseItem = 16;
inline constexpr WPARAM kNextItem = 32;

// ---- Shared by the two -------------------------------------------------------------------------------------------

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

// Rows that both tables have.
LRESULT OnDisplayChange(const WindowMessage& message);
LRESULT OnActivateApp(const WindowMessage& message);
LRESULT OnFrameMouse(const WindowMessage& message);
LRESULT OnKeyDown(const WindowMessage& message);
LRESULT OnKeyUp(const WindowMessage& message);
LRESULT OnSysKeyDown(const WindowMessage& message);
LRESULT OnSysKeyUp(const WindowMessage& message);
LRESULT OnEnterIdle(const WindowMessage& message);

} // namespace framereel
