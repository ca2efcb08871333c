// The platform calls for windows, messages and the shell. What the user does stands in win32_input.h.
//
// A window is a record in a tree. A window without a parent is top-level: it has the pixels, and the display shows it.
// A child draws into its top-level window's pixels, clipped by its parents, and by its siblings and children as the
// styles say. This layer draws caption, border and boxes itself.
//
// What calls send, in order, each at once inside the call (a send runs the window procedure before it returns):
//
//   CreateWindowExA   WM_GETMINMAXINFO (only without WS_POPUP and WS_CHILD), WM_NCCREATE, WM_NCCALCSIZE, WM_CREATE;
//                     with WS_VISIBLE then what showing sends
//   moving, sizing    MoveWindow, SetWindowPos, SetWindowPlacement, the user's dragging: WM_GETMINMAXINFO (on a new
//                     size, as above), WM_NCCALCSIZE (on a new size), then WM_WINDOWPOSCHANGED, whose default sends
//                     WM_MOVE and WM_SIZE for what changed. Nothing is sent when nothing changes.
//   showing, hiding   WM_SHOWWINDOW, WM_WINDOWPOSCHANGED; a top-level window that is shown active then activates
//   stacking          WM_WINDOWPOSCHANGED, when the order changes
//   minimising        once the state has changed: WM_NCCALCSIZE, WM_WINDOWPOSCHANGED; the same on the way back
//   activating        to the window before: WM_NCACTIVATE 0, WM_ACTIVATE 0; when the program gains the keyboard:
//                     WM_ACTIVATEAPP 1 to all top-level windows; to the window: WM_NCACTIVATE 1, WM_ACTIVATE 1 (2 by
//                     a click), whose default sets the focus
//   the focus         WM_KILLFOCUS to the window before, WM_SETFOCUS
//   the capture       WM_CAPTURECHANGED to the window before, whoever takes the mouse from it
//   losing            to another program: WM_NCACTIVATE 0, WM_ACTIVATE 0, WM_ACTIVATEAPP 0 to all, WM_KILLFOCUS
//   a menu            WM_ENTERIDLE again and again while it is open and nothing happens, and whatever timers and paints
//                     of the program's send; WM_CANCELMODE when something else ends it
//   a dialog          told in win32_dialogs.h
//   EnableWindow      when it changes: what losing capture and focus sends, WM_ENABLE
//   DestroyWindow     owned windows first; then, when it was active, what activating the next one sends; hiding; what
//                     losing capture and focus sends, where it or a child has them; then WM_DESTROY to it and its
//                     children, parents first, and WM_NCDESTROY, children first
//   the title         SetWindowTextA: WM_SETTEXT; GetWindowTextA: WM_GETTEXT; GetWindowTextLengthA: WM_GETTEXTLENGTH
//
// A message that has no place in a table above means nothing to this program and is not sent.
//
// The queue holds posted messages and input in their order. Paints come last, one window at a time, only while an
// update region is left; WM_QUIT comes just before them. Mouse moves that nobody has taken yet are one message.
// What the desktop does (another place, another keyboard owner, minimised, another resolution) takes effect and is
// sent when messages are next asked for. While another program has the keyboard, activating only asks the desktop for
// it: what activating sends is sent once it has come, and a press that activates waits for that. Nor is a top-level
// window minimised or restored before the desktop has done it; where nobody does, its caption stays on the screen, like
// a child's in its parent. A window that another program destroys goes as by DestroyWindow.
//
// Whoever draws in a window sees it on the screen when messages are next asked for, and before Sleep.
#pragma once

#include "win32/win32_types.h"

// ---- Messages ----------------------------------------------------------------------------------------------------

inline constexpr UINT WM_CREATE = 1; // lParam is 0 here and in WM_NCCREATE; -1 ends the creation
inline constexpr UINT WM_DESTROY = 2;
inline constexpr UINT WM_MOVE = 3;      // lParam: client top left, in the parent's client area or on the screen
inline constexpr UINT WM_SIZE = 5;      // wParam 1 minimised, else 0; lParam: client size
inline constexpr UINT WM_ACTIVATE = 6;  // low word of wParam: 0 no, 1 yes, 2 yes by a click
inline constexpr UINT WM_SETFOCUS = 7;  // wParam: the window before
inline constexpr UINT WM_KILLFOCUS = 8; // wParam: the window after
inline constexpr UINT WM_ENABLE = 10;   // wParam: whether it is enabled now
// The text of a window: its title, or what a control says it is. wParam of WM_GETTEXT is the size of the buffer lParam;
// the answer is the number of bytes put there, without the zero behind them. The default keeps a title.
inline constexpr UINT WM_SETTEXT = 12;
inline constexpr UINT WM_GETTEXT = 13;
inline constexpr UINT WM_GETTEXTLENGTH = 14;
inline constexpr UINT WM_PAINT = 15;
inline constexpr UINT WM_CLOSE = 16; // the default destroys the window
// To the main window at a logout: 0 keeps the session, and the default answers 1. Then what becomes of the session.
inline constexpr UINT WM_QUERYENDSESSION = 17;
inline constexpr UINT WM_ENDSESSION = 22;   // wParam: it ends, asked or not; or it goes on
inline constexpr UINT WM_QUIT = 18;         // wParam: the exit code
inline constexpr UINT WM_ERASEBKGND = 20;   // wParam: the context; the default fills with the class's background
inline constexpr UINT WM_SHOWWINDOW = 24;   // wParam: shown or hidden
inline constexpr UINT WM_WININICHANGE = 26; // to all top-level windows: the usable area changed
inline constexpr UINT WM_ACTIVATEAPP = 28;  // wParam: the program has the keyboard, or has lost it
// To the owner of an open menu, on a change that ends it: another window, another capture, the screen; the default
// closes it.
inline constexpr UINT WM_CANCELMODE = 31;
inline constexpr UINT WM_GETMINMAXINFO = 36;    // lParam: MINMAXINFO
inline constexpr UINT WM_WINDOWPOSCHANGED = 71; // lParam: WINDOWPOS
inline constexpr UINT WM_DISPLAYCHANGE = 126;   // to all top-level windows: wParam depth, lParam width and height
inline constexpr UINT WM_NCCREATE = 129;        // 0 ends the creation; the default answers 1
inline constexpr UINT WM_NCDESTROY = 130;       // the last message of a window
// lParam: RECT, the window in its parent's client area or on the screen; the default takes the frame off it. With the
// window minimised it stays as it is.
inline constexpr UINT WM_NCCALCSIZE = 131;
inline constexpr UINT WM_NCACTIVATE = 134; // wParam: lit or not; the default draws the caption so and answers 1
inline constexpr UINT WM_COMMAND = 273;    // wParam: id, and a control's notice; lParam: the control, 0 from a menu
inline constexpr UINT WM_SYSCOMMAND = 274; // wParam: SC_... or an id of the program's own; lParam: screen point, or key
inline constexpr UINT WM_HSCROLL = 276;
inline constexpr UINT WM_VSCROLL = 277;
// Again and again to the owner of an open menu or dialog while nothing happens; the default hands it to the owner's
// own.
inline constexpr UINT WM_ENTERIDLE = 289; // wParam: MSGF_...
// System commands: the four low bits of wParam are the sender's own.
inline constexpr WPARAM SC_MOVE = 0xF010;
inline constexpr WPARAM SC_MINIMIZE = 0xF020;
inline constexpr WPARAM SC_NEXTWINDOW = 0xF040;
inline constexpr WPARAM SC_CLOSE = 0xF060;
inline constexpr WPARAM SC_MOUSEMENU = 0xF090; // its low bits: HTSYSMENU or HTMENU
inline constexpr WPARAM SC_KEYMENU = 0xF100;   // lParam: the letter of a menu, VK_SPACE the system menu, 0 the bar
inline constexpr WPARAM SC_RESTORE = 0xF120;
inline constexpr WPARAM SC_TASKLIST = 0xF130;

struct MINMAXINFO {
  POINT ptReserved;
  POINT ptMaxSize, ptMaxPosition;
  POINT ptMinTrackSize, ptMaxTrackSize; // of the whole window; a size beyond them is brought back
};

struct WINDOWPOS {
  HWND hwnd, hwndInsertAfter;
  int x, y, cx, cy; // the whole window, in its parent's client area or on the screen, as it stands now
  UINT flags;       // SWP_NOMOVE, SWP_NOSIZE, SWP_NOZORDER where that did not change
};

struct MSG {
  HWND hwnd; // null for WM_QUIT
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  DWORD time; // of GetTickCount
  POINT pt;   // the pointer on the screen
};

inline constexpr UINT PM_NOREMOVE = 0;
inline constexpr UINT PM_REMOVE = 1;

// Takes the first message without waiting, or only looks at it (PM_NOREMOVE); FALSE when there is none. A window limits
// it to that window and its children, first and last (not both 0) to that range of messages. A paint stays until it is
// painted. WM_QUIT passes every filter.
BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove);
// Puts WM_CHAR or WM_SYSCHAR at the head of the queue for a key that gives a character.
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageA(const MSG* message);
LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Runs a procedure that SetWindowLongPtrA has answered.
LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// What every window does with a message that its procedure leaves alone.
LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void PostQuitMessage(int exitCode);

// ---- Classes, icons ----------------------------------------------------------------------------------------------

inline constexpr UINT CS_VREDRAW = 1; // paint the whole client area on a new height
inline constexpr UINT CS_HREDRAW = 2; // and on a new width
inline constexpr UINT CS_DBLCLKS = 8; // tell double clicks
inline constexpr UINT CS_OWNDC = 32;  // GetDC and BeginPaint answer one context, which keeps its state

struct WNDCLASSA {
  UINT style;
  WNDPROC lpfnWndProc;
  int cbClsExtra, cbWndExtra; // not used: GWL_USERDATA holds a pointer in every window
  HINSTANCE hInstance;
  HICON hIcon;
  HCURSOR hCursor; // null: nobody changes the pointer
  // A brush, COLOR_... + 1, or null: never erased. A topmost window without one and without a caption shows the live
  // desktop through itself, takes all mouse and key events in its place, and drawing on it draws on the screen.
  HBRUSH hbrBackground;
  const char* lpszMenuName; // null
  const char* lpszClassName;
};

// Copies the record under its name, exact to the letter; 0 for a name that is taken.
ATOM RegisterClassA(const WNDCLASSA* what);

inline constexpr int GCL_HCURSOR = -12;
// GCL_HCURSOR: gives the window's class another cursor, for all its windows, seen at once. Handles are pointers, so
// this is the pointer-sized form of the call. Answers the one before.
LONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value);

inline const char* const IDI_APPLICATION = MAKEINTRESOURCEA(32512);

// With a null instance the stock icon; with the program's instance (any other value) a resource of its own. Null when
// there is none. They are the layer's.
HICON LoadIconA(HINSTANCE instance, const char* name);

// ---- Windows -----------------------------------------------------------------------------------------------------

inline constexpr DWORD WS_MINIMIZEBOX = 0x00020000;
inline constexpr DWORD WS_SYSMENU = 0x00080000; // system menu button at the left, and the close box
inline constexpr DWORD WS_VSCROLL = 0x00200000; // of a list box: it has a scroll bar
inline constexpr DWORD WS_GROUP = 0x00020000;   // of a control in a dialog: a group begins with it
inline constexpr DWORD WS_TABSTOP = 0x00010000; // and the Tab key goes to it
inline constexpr DWORD WS_BORDER = 0x00800000;
inline constexpr DWORD WS_CAPTION = 0x00C00000;
inline constexpr DWORD WS_CLIPCHILDREN = 0x02000000; // drawing in it spares its children
inline constexpr DWORD WS_CLIPSIBLINGS = 0x04000000; // drawing in it spares siblings above it
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr DWORD WS_VISIBLE = 0x10000000;
inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_POPUP = 0x80000000;
inline constexpr DWORD WS_EX_TOPMOST = 8;

inline constexpr int CW_USEDEFAULT = int(0x80000000);

// Makes a window; null for an unknown class, a child without a parent, or when WM_NCCREATE or WM_CREATE refuses. With
// WS_CHILD `parent` is its parent, else its owner: an owned window stands above its owner, goes with it when it is
// minimised or destroyed, and may be null. CW_USEDEFAULT as position is 0, 0 and as size 0 by 0, for a top-level window
// with neither WS_POPUP nor WS_CHILD a place on the screen and half its size. It is put on top of its siblings.
// `menu` is the child's id; `parameter` is null.
HWND CreateWindowExA(DWORD extendedStyle, const char* className, const char* title, DWORD style, int x, int y,
                     int width, int height, HWND parent, HMENU menu, HINSTANCE instance, void* parameter);
BOOL DestroyWindow(HWND window);

inline constexpr int GWL_USERDATA = -21;
inline constexpr int GWL_STYLE = -16;
inline constexpr int GWL_ID = -12;
inline constexpr int GWL_WNDPROC = -4;
// The pointer-sized forms of the calls, for the four indices above. Setting answers the value before.
LONG_PTR GetWindowLongPtrA(HWND window, int index);
LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);

BOOL SetWindowTextA(HWND window, const char* text);
// Copies the text, cut to `bufferSize` - 1 bytes, and a zero byte behind it. Answers the number of bytes without it.
int GetWindowTextA(HWND window, char* buffer, int bufferSize);
int GetWindowTextLengthA(HWND window); // in bytes, without the zero

// ---- Place, order, visibility ------------------------------------------------------------------------------------

inline constexpr UINT SWP_NOSIZE = 1;
inline constexpr UINT SWP_NOMOVE = 2;
inline constexpr UINT SWP_NOZORDER = 4;
inline constexpr UINT SWP_NOREDRAW = 8; // no change here: what is uncovered is painted all the same
inline constexpr UINT SWP_NOACTIVATE = 16;
inline const HWND HWND_TOP = nullptr;
inline const HWND HWND_BOTTOM = reinterpret_cast<HWND>(intptr_t{1});

// Places are those of the whole window: a child's in its parent's client area, others on the screen.
BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
// `after` is HWND_TOP or HWND_BOTTOM. Without SWP_NOACTIVATE it activates a top-level window that it moves to the top.
BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags);
// On top of its siblings; a top-level window is activated.
BOOL BringWindowToTop(HWND window);

inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOWNORMAL = 1;    // shown or restored, and active
inline constexpr int SW_SHOWMINIMIZED = 2; // minimised
inline constexpr int SW_SHOW = 5;          // shown as it is, and active
inline constexpr int SW_MINIMIZE = 6;      // minimised, and another window active
inline constexpr int SW_SHOWNA = 8;        // shown as it is, the active window stays
inline constexpr int SW_RESTORE = 9;       // as SW_SHOWNORMAL
// Answers whether it was visible before.
BOOL ShowWindow(HWND window, int how);

struct WINDOWPLACEMENT {
  UINT length; // the record's size
  UINT flags;
  UINT showCmd; // got: SW_SHOWMINIMIZED or SW_SHOWNORMAL; set: as for ShowWindow
  POINT ptMinPosition, ptMaxPosition;
  RECT rcNormalPosition; // where it stands when it is not minimised
};

BOOL GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement);
BOOL SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement);

BOOL GetWindowRect(HWND window, RECT* rect); // on the screen
// The topmost child, or the topmost of our top-level windows for null; visible or not.
HWND GetTopWindow(HWND window);
HWND GetParent(HWND window); // of a child; null for a top-level window
inline constexpr UINT GW_HWNDNEXT = 2;
HWND GetWindow(HWND window, UINT which); // GW_HWNDNEXT: the sibling below
BOOL IsWindowVisible(HWND window);       // it and all its parents, and its owners, of which none is minimised
// Stands for the screen, in which the top-level windows of all programs are.
HWND GetDesktopWindow();
inline constexpr UINT CWP_SKIPINVISIBLE = 1;
// The topmost visible child at a point of the window's client area; the window itself where there is none, null off its
// client area or when it has gone. In the desktop's that is a window of any program, though not one that shows what
// lies under it. A window of another program is all client area, with whatever a window manager puts around it; besides
// this call, GetWindowRect and ScreenToClient take it, and answer FALSE while it is not seen or once it has gone, and
// so do IsWindow and GetWindowTextA. `flags` is CWP_SKIPINVISIBLE.
HWND ChildWindowFromPointEx(HWND window, POINT point, UINT flags);
// Calls `each` for the windows of all programs in the desktop that are seen, from the top down, until it answers FALSE.
using WNDENUMPROC = BOOL (*)(HWND window, LPARAM argument);
BOOL EnumWindows(WNDENUMPROC each, LPARAM argument);
BOOL IsWindow(HWND window); // whether it is there, seen or not
// The number by which all programs know a window of another program, and the handle for such a number, whether there is
// a window or not. 0 and null for what is none.
uint32_t HandleToULong(HWND window);
HWND ULongToHandle(uint32_t number);
BOOL ScreenToClient(HWND window, POINT* point);
// The window of ours at a point of the screen, children before parents, hidden and disabled ones left out; null for
// none.
HWND WindowFromPoint(POINT point);

// ---- Painting ----------------------------------------------------------------------------------------------------

struct PAINTSTRUCT {
  HDC hdc;
  BOOL fErase;
  RECT rcPaint; // around what is to be painted
};

// The context of a window's client area. Each GetDC is given back by one ReleaseDC.
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC context);
// Erases what asks for it, answers a context clipped to the update region, and takes that region as painted.
HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);
// Asks for painting of a rectangle of the client area, null for all of it. A null window stands for all windows of all
// programs, with the rectangle on the screen.
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
// Sends WM_PAINT at once to the window and its children where an update region is left.
BOOL UpdateWindow(HWND window);
// Copies the update region, in client coordinates, and answers what it is, as GetRgnBox does; `erase` is FALSE.
int GetUpdateRgn(HWND window, HRGN region, BOOL erase);
// Moves the pixels of `scroll` within `clip` (both in the client area, null for all of it), and asks for painting of
// what comes free. Children stay.
BOOL ScrollWindow(HWND window, int dx, int dy, const RECT* scroll, const RECT* clip);

inline constexpr int COLOR_ACTIVECAPTION = 2;
inline constexpr int COLOR_MENU = 4;
inline constexpr int COLOR_WINDOW = 5;
inline constexpr int COLOR_WINDOWFRAME = 6;
inline constexpr int COLOR_APPWORKSPACE = 12;
inline constexpr int COLOR_BTNFACE = 15;
inline constexpr int COLOR_BTNSHADOW = 16;
inline constexpr int COLOR_GRAYTEXT = 17;
inline constexpr int COLOR_3DLIGHT = 22;
DWORD GetSysColor(int which);

// ---- System ------------------------------------------------------------------------------------------------------

// Low byte major, next minor; the top bit is clear on systems of the newer kind, which this is.
DWORD GetVersion();
// A short sound; the kind does not matter.
BOOL MessageBeep(UINT kind);

inline constexpr DWORD ABM_GETTASKBARPOS = 5;

struct APPBARDATA {
  DWORD cbSize; // the record's size
  HWND hWnd;
  UINT uCallbackMessage, uEdge;
  RECT rc;
  LPARAM lParam;
};

// ABM_GETTASKBARPOS: the strip that a dock or task bar takes, across the whole screen; with several, the thickest.
// FALSE when there is none.
uintptr_t SHAppBarMessage(DWORD message, APPBARDATA* data);

inline constexpr DWORD MONITOR_DEFAULTTOPRIMARY = 1;

struct MONITORINFO {
  DWORD cbSize;   // the record's size
  RECT rcMonitor; // what it shows of the screen
};

// The monitor that shows the window's middle, the smallest of several, or is the nearest to it; the primary one where
// there is no window.
HMONITOR MonitorFromWindow(HWND window, DWORD otherwise);
// FALSE when the monitor has gone.
BOOL GetMonitorInfoA(HMONITOR monitor, MONITORINFO* info);
