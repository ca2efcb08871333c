// The platform calls for the mouse, the keyboard, the pointer's shape, and for who gets them.
//
// Input waits in the queue (win32_windows.h) and becomes a message when it is taken. The mouse goes to the window that
// has captured it, else to the one under the pointer; keys go to the focus.
#pragma once

#include "win32/win32_types.h"

// ---- Messages of the mouse ---------------------------------------------------------------------------------------

// On a frame: wParam one of HT..., lParam screen point.
inline constexpr UINT WM_NCMOUSEMOVE = 160;
inline constexpr UINT WM_NCLBUTTONDOWN = 161;
inline constexpr UINT WM_NCLBUTTONUP = 162;
inline constexpr UINT WM_NCMBUTTONDBLCLK = 169; // the other buttons lie between, as below
// In a window: lParam client point; wParam MK_... of what is down.
inline constexpr UINT WM_MOUSEMOVE = 512;
inline constexpr UINT WM_LBUTTONDOWN = 513;
inline constexpr UINT WM_LBUTTONUP = 514;
inline constexpr UINT WM_LBUTTONDBLCLK = 515; // in the place of a second press, for classes with CS_DBLCLKS
inline constexpr UINT WM_RBUTTONDOWN = 516;
inline constexpr UINT WM_RBUTTONUP = 517;
inline constexpr UINT WM_RBUTTONDBLCLK = 518;
inline constexpr UINT WM_MBUTTONDOWN = 519;
inline constexpr UINT WM_MBUTTONUP = 520;
inline constexpr UINT WM_MBUTTONDBLCLK = 521;
// The wheel: the high word of wParam is 120 for each notch away from the user, below 0 towards him, the low word
// MK_...; lParam is the point on the screen. The default hands it to the parent.
inline constexpr UINT WM_MOUSEWHEEL = 522;
inline constexpr UINT WM_CAPTURECHANGED = 533; // the window has lost the mouse; lParam: the window that has it now

inline constexpr WPARAM MK_LBUTTON = 1;
inline constexpr WPARAM MK_RBUTTON = 2;
inline constexpr WPARAM MK_SHIFT = 4;
inline constexpr WPARAM MK_CONTROL = 8;
inline constexpr WPARAM MK_MBUTTON = 16;

inline constexpr int HTNOWHERE = 0;
inline constexpr int HTCLIENT = 1;
inline constexpr int HTCAPTION = 2;
inline constexpr int HTSYSMENU = 3;
inline constexpr int HTMENU = 5;
inline constexpr int HTMINBUTTON = 8;
inline constexpr int HTBORDER = 18;
inline constexpr int HTCLOSE = 20;

// ---- Messages of the keyboard ------------------------------------------------------------------------------------

// wParam virtual key; lParam bits 0-15 count (1), 16-23 scan code, 29 Alt is down, 30 was down, 31 going up. The
// system forms come with Alt and without Ctrl, for Alt itself, and when no window has the focus.
inline constexpr UINT WM_KEYDOWN = 256;
inline constexpr UINT WM_KEYUP = 257;
// From TranslateMessage; wParam: a byte of UTF-8. A character beyond ASCII comes as two to four of them, which stand
// together in the queue. With Ctrl a letter gives a control character, and with Ctrl and Alt no key gives any.
inline constexpr UINT WM_CHAR = 258;
inline constexpr UINT WM_SYSKEYDOWN = 260;
inline constexpr UINT WM_SYSKEYUP = 261;
inline constexpr UINT WM_SYSCHAR = 262;

// ---- Keys --------------------------------------------------------------------------------------------------------

inline constexpr int VK_LBUTTON = 1;
inline constexpr int VK_RBUTTON = 2;
inline constexpr int VK_MBUTTON = 4;
inline constexpr int VK_BACK = 8;
inline constexpr int VK_TAB = 9;
inline constexpr int VK_CLEAR = 12;
inline constexpr int VK_RETURN = 13;
inline constexpr int VK_SHIFT = 16;
inline constexpr int VK_CONTROL = 17;
inline constexpr int VK_MENU = 18; // Alt
inline constexpr int VK_CAPITAL = 20;
inline constexpr int VK_ESCAPE = 27;
inline constexpr int VK_SPACE = 32;
inline constexpr int VK_PRIOR = 33; // page up
inline constexpr int VK_NEXT = 34;  // page down
inline constexpr int VK_END = 35;
inline constexpr int VK_HOME = 36;
inline constexpr int VK_LEFT = 37;
inline constexpr int VK_UP = 38;
inline constexpr int VK_RIGHT = 39;
inline constexpr int VK_DOWN = 40;
inline constexpr int VK_INSERT = 45;
inline constexpr int VK_DELETE = 46;
inline constexpr int VK_F4 = 115;
inline constexpr int VK_F6 = 117;
inline constexpr int VK_F10 = 121;

// As of the message last taken: below 0 while the key is down, bit 0 the lock of VK_CAPITAL.
SHORT GetKeyState(int virtualKey);
// The same for all 256 keys: bit 7 down, bit 0 locked.
BOOL GetKeyboardState(BYTE* state);
// At this moment, whoever has the focus: below 0 while the key is down.
SHORT GetAsyncKeyState(int virtualKey);
// The characters of a key with the state of Shift, Ctrl, Alt and the lock as given, as far as one byte can say them: 1:
// an ASCII character in the low byte of `characters`; 2: an accent that could not be joined, and the character in the
// high byte; 0: none, or one beyond ASCII, which WM_CHAR brings. About the key press that was taken last it answers
// with all that went before; a third level of the layout is not among what the state can leave out. While Ctrl or Alt
// is really down, a key of other letters than Latin ones is the Latin letter that names it. `scan` is the low byte of
// the high word of the message's lParam; `flags` is 0.
int ToAscii(UINT virtualKey, UINT scan, const BYTE* state, WORD* characters, UINT flags);

// ---- Enabling, focus, capture ------------------------------------------------------------------------------------

// A disabled window, and every child in it, gets no mouse or key events. Answers whether it was disabled before.
BOOL EnableWindow(HWND window, BOOL enable);
// Gives the keyboard to a window, null for none, and activates its top-level window when the program has the keyboard.
// Does nothing for a disabled or minimised one. Answers the window before.
HWND SetFocus(HWND window);
HWND GetFocus();
// All mouse events go to the window, as client points, until it is let go, destroyed, or the display takes it away.
HWND SetCapture(HWND window);
BOOL ReleaseCapture();

// ---- The pointer's shape -----------------------------------------------------------------------------------------

inline const char* const IDC_ARROW = MAKEINTRESOURCEA(32512);
inline const char* const IDC_IBEAM = MAKEINTRESOURCEA(32513);
inline const char* const IDC_WAIT = MAKEINTRESOURCEA(32514);
inline const char* const IDC_CROSS = MAKEINTRESOURCEA(32515);

// With a null instance one of the four shapes; with the program's instance (any other value) a resource of its own.
// Null when there is none. They are the layer's.
HCURSOR LoadCursorA(HINSTANCE instance, const char* name);
// Shows it until the pointer moves to where a class says otherwise; while the mouse is captured, until it is let go.
// Answers the one before.
HCURSOR SetCursor(HCURSOR cursor);
// Moves the pointer. A mouse move follows as if the user had moved it.
BOOL SetCursorPos(int x, int y);

// ---- The pointer as it is ----------------------------------------------------------------------------------------

struct CURSORINFO {
  HCURSOR hCursor; // its picture, the layer's; good until the next call
  RECT rcPicture;  // where that stands on the screen, or off it
  DWORD serial;    // another picture has another one
};

// The pointer as it is on the screen now. FALSE, and nothing is written, when it has no picture there.
BOOL GetCursorInfo(CURSORINFO* info);
// Its hot spot on the screen.
BOOL GetCursorPos(POINT* position);
// Draws it with its top left corner at x, y, blended by its alpha and clipped to the target.
BOOL DrawIcon(HDC context, int x, int y, HICON icon);
