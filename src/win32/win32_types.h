// The platform calls that the program makes, with the names and the meaning that the floors above rely on; here are the
// plain types that all of them share.
//
//   win32_system.h    memory, process, time, resources    win32_menus.h       bars and popups
//   win32_files.h     files and directories               win32_controls.h    buttons, texts, lists
//   win32_drawing.h   contexts, bitmaps, lines, text      win32_dialogs.h     dialogs and message boxes
//   win32_windows.h   windows and messages                win32_input.h       mouse, keys, pointer
//
// This is a layer of our own, not an operating system's header: it holds exactly the types, constants and calls
// that somebody above uses. The calls stand in the global namespace, and callers write them with a leading `::`.
// Handles are opaque; null is no object. Unless a call says otherwise, a null handle makes it do
// nothing and answer 0. All of it is for the program's one thread.
//
// The work is done in software on surfaces (pixels/surface.h) that a display (pixels/display.h) shows and reads.
#pragma once

#include <cstddef>
#include <cstdint>

using BOOL = int32_t;
using BYTE = uint8_t;
using WORD = uint16_t;
using DWORD = uint32_t;
using UINT = uint32_t;
using LONG = int32_t;
using COLORREF = uint32_t; // 0x00BBGGRR

using HANDLE = void*;
using HGDIOBJ = void*; // a bitmap, pen, brush, font or region
using HINSTANCE = struct Win32Instance*;
using HWND = struct Win32Window*;
using HDC = struct Win32DeviceContext*;
using HBITMAP = struct Win32Bitmap*;
using HPEN = struct Win32Pen*;
using HBRUSH = struct Win32Brush*;
using HFONT = struct Win32Font*;
using HRGN = struct Win32Region*;
using HCURSOR = struct Win32Cursor*;
using HICON = HCURSOR;
using HMENU = struct Win32Menu*;
using HMONITOR = struct Win32Monitor*;

using WPARAM = uintptr_t;
using LPARAM = intptr_t;
using LRESULT = intptr_t;
using LONG_PTR = intptr_t;
using SHORT = int16_t;
using ATOM = WORD;
using WNDPROC = LRESULT (*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

struct POINT {
  LONG x, y;
};

struct SIZE {
  LONG cx, cy;
};

// Right and bottom lie one past the last pixel.
struct RECT {
  LONG left, top, right, bottom;
};

inline constexpr COLORREF RGB(BYTE red, BYTE green, BYTE blue) {
  return COLORREF{red} | COLORREF{green} << 8 | COLORREF{blue} << 16;
}
inline constexpr BYTE GetRValue(COLORREF colour) {
  return BYTE(colour);
}
inline constexpr BYTE GetGValue(COLORREF colour) {
  return BYTE(colour >> 8);
}
inline constexpr BYTE GetBValue(COLORREF colour) {
  return BYTE(colour >> 16);
}

// The name of a numbered resource.
inline const char* MAKEINTRESOURCEA(WORD id) {
  return reinterpret_cast<const char*>(uintptr_t{id});
}

inline constexpr WORD LOWORD(uintptr_t value) {
  return WORD(value);
}
inline constexpr WORD HIWORD(uintptr_t value) {
  return WORD(value >> 16);
}
inline constexpr LPARAM MAKELPARAM(int low, int high) {
  return LPARAM(DWORD{WORD(low)} | DWORD{WORD(high)} << 16);
}
inline constexpr WPARAM MAKEWPARAM(int low, int high) {
  return WPARAM(DWORD{WORD(low)} | DWORD{WORD(high)} << 16);
}
