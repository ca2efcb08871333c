// The platform calls for dialogs and message boxes; the classes of controls in them stand in win32_controls.h.
//
// A dialog is a window with controls in it, described by a resource (resources/dialogs.h) in units of its font: 4
// across are the mean width of the font's letters, 8 down its height. Its window belongs to the class of dialogs, whose
// procedure asks the program's first: what that answers TRUE to is done with.
//
// A modal dialog runs in a loop of this layer's until EndDialog. Its owner is disabled for as long; paints, timers and
// whatever else the queue has go on. When nothing is left in the queue, the owner is sent WM_ENTERIDLE again and again,
// whose default hands it on to the owner's own. A dialog ends by itself, with -1, when its window is destroyed, when
// the display is lost, and when WM_QUIT comes, which stays in the queue for the loop further out.
//
// The keyboard in a dialog: Tab and Shift+Tab go from each control with WS_TABSTOP to the next, and so do the arrows
// within a group (from a control with WS_GROUP to the next one that has it) where the control has no use for them. A
// letter with Alt, or by itself where nobody types it, picks the control whose text marks it with "&"; a "static" hands
// on to the control behind it. Return presses the button with the focus or else the default one, Escape says IDCANCEL.
#pragma once

#include "win32/win32_types.h"

struct MSG; // win32_windows.h

// ---- Dialogs -----------------------------------------------------------------------------------------------------

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDABORT = 3;
inline constexpr int IDRETRY = 4;
inline constexpr int IDIGNORE = 5;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

// To a dialog before it is shown: wParam is the control that is to have the focus, lParam what the caller of
// DialogBoxParamA gave. The answer does not matter.
inline constexpr UINT WM_INITDIALOG = 272;

inline constexpr WPARAM MSGF_DIALOGBOX = 0; // wParam of WM_ENTERIDLE; lParam is the dialog
inline constexpr WPARAM MSGF_MENU = 2;

using DLGPROC = intptr_t (*)(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Shows the dialog that the resource `name` (of MAKEINTRESOURCEA) describes, and answers what EndDialog is given; -1
// when there is no such resource or no window to be had, or when the dialog ended by itself. It stands where the
// resource says in the owner's client area, or, with its style DS_CENTER, in the middle of the owner's monitor with a
// third of the room that is left above it; in any case on that monitor.
intptr_t DialogBoxParamA(HINSTANCE instance, const char* name, HWND owner, DLGPROC procedure, LPARAM parameter);
// The loop ends with this answer once the procedure has returned.
BOOL EndDialog(HWND dialog, intptr_t result);
// Takes the message if it is for the dialog or a control in it: acts on the keys told above, and dispatches all others.
BOOL IsDialogMessageA(HWND dialog, MSG* message);

// A control of the dialog by its id; null when there is none, and then the calls below do nothing and answer 0.
HWND GetDlgItem(HWND dialog, int id);
BOOL SetDlgItemTextA(HWND dialog, int id, const char* text);
// Copies the text, cut to `bufferSize` - 1 bytes, and a zero byte behind it; answers the bytes without it.
UINT GetDlgItemTextA(HWND dialog, int id, char* buffer, int bufferSize);
LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);

// ---- Message boxes -----------------------------------------------------------------------------------------------

// Which buttons: one of the first six. Which picture: one of the next four, or none.
inline constexpr UINT MB_OK = 0;
inline constexpr UINT MB_OKCANCEL = 1;
inline constexpr UINT MB_ABORTRETRYIGNORE = 2;
inline constexpr UINT MB_YESNOCANCEL = 3;
inline constexpr UINT MB_YESNO = 4;
inline constexpr UINT MB_RETRYCANCEL = 5;
inline constexpr UINT MB_ICONHAND = 0x10;
inline constexpr UINT MB_ICONQUESTION = 0x20;
inline constexpr UINT MB_ICONEXCLAMATION = 0x30;
inline constexpr UINT MB_ICONASTERISK = 0x40;
inline constexpr UINT MB_DEFBUTTON2 = 0x100; // the second button is the default one
inline constexpr UINT MB_DEFBUTTON3 = 0x200;
inline constexpr UINT MB_TASKMODAL = 0x2000; // all windows of the program are disabled, whatever the owner

// Shows the text, its lines ended by LF and broken where they are too long, above the owner or, for null, above the
// window that is active; answers the id of the button pressed. Escape and the close box are Cancel, else No, or OK
// where that is the one button; else they do nothing. 0 when there is no window to be had; when it ends by itself as a
// dialog does, the answer is that of Escape, or 0.
int MessageBoxA(HWND owner, const char* text, const char* title, UINT flags);
