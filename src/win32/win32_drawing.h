// The platform calls that draw: contexts, bitmaps, pens, brushes, fonts, regions, and what is drawn with them.
//
// A context has a target (the screen, a window, a bitmap), a state (the objects that are selected into it, its colours
// and modes) and a clip. All drawing stays within the target's visible part and the clip. Coordinates are the
// context's own: 0, 0 is the top left of the screen, of the window's client area, or of the bitmap.
//
// On a palette screen a colour is drawn as the nearest of the screen's colours. The palette belongs to the desktop
// (GetDeviceCaps), so there is none of the program's own, and no call that would make or select one.
//
// Failure: a null handle makes a call do nothing and answer 0. Memory that ends, ends the program (win32_system.h).
// Coordinates may be anything that fits 16 bits with room to spare; what lies outside the target is cut.
#pragma once

#include "win32/win32_types.h"

// ---- Contexts and bitmaps ----------------------------------------------------------------------------------------

inline constexpr DWORD SRCCOPY = 0x00CC0020;
inline constexpr DWORD SRCAND = 0x008800C6;
inline constexpr DWORD SRCPAINT = 0x00EE0086;
inline constexpr DWORD MERGEPAINT = 0x00BB0226;

inline constexpr DWORD BI_RGB = 0;
inline constexpr UINT DIB_RGB_COLORS = 0;
inline constexpr UINT DIB_PAL_COLORS = 1;

struct BITMAPINFOHEADER {
  DWORD biSize;
  LONG biWidth, biHeight;
  WORD biPlanes, biBitCount;
  DWORD biCompression, biSizeImage;
  LONG biXPelsPerMeter, biYPelsPerMeter;
  DWORD biClrUsed, biClrImportant;
};

// No colour table follows: indexed bitmaps have the screen's colours, and index i stands for the screen's colour i.
struct BITMAPINFO {
  BITMAPINFOHEADER bmiHeader;
};

// The screen's context, with driver "DISPLAY" and null for the rest: it reads and draws over all windows, in screen
// coordinates. Connects to the display at the first call; null when there is none.
HDC CreateDCA(const char* driver, const char* device, const char* output, const void* initData);
// A context whose target is a bitmap, of 1 by 1 pixel until one is selected.
HDC CreateCompatibleDC(HDC like);
// Only for contexts of the two calls above; those of windows go back with ReleaseDC and EndPaint. Objects that are
// selected into it are free afterwards.
BOOL DeleteDC(HDC context);

// Puts a bitmap, pen, brush or font into a context and answers the object of that kind that it replaced. A bitmap goes
// into memory contexts alone, and may be in one at a time: null otherwise, and nothing changes. A new context holds a
// black pen, a white brush and a font of the system's own.
HGDIOBJ SelectObject(HDC context, HGDIOBJ object);
// Deletes an object that is in no context. FALSE when it is in one, and then it stays. A stock object always stays.
BOOL DeleteObject(HGDIOBJ object);

// A bitmap of one bit per pixel, 0 black and 1 white, all 0; `planes` and `bitsPerPixel` are 1, `bits` is null.
HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits);
// A bitmap in the screen's own format, all 0. Null when the size is not positive or too large for any, or the display
// is lost.
HBITMAP CreateCompatibleBitmap(HDC context, int width, int height);
// The same with the size of the header. `init` is 0; `bits` and `info` are null.
HBITMAP CreateDIBitmap(HDC context, const BITMAPINFOHEADER* header, DWORD init, const void* bits,
                       const BITMAPINFO* info, UINT usage);
// A bitmap resource, as it stands in the program; `name` is of MAKEINTRESOURCEA. Null when there is no such bitmap.
HBITMAP LoadBitmapA(HINSTANCE instance, const char* name);

// Copies a rectangle between contexts with one of the raster operations above, or 0 for black, clipped to both. From
// the screen's context into a bitmap of the screen's format it is one read of the screen. Pixels that lie off the
// screen stay. Between a bitmap of one bit and a target in colour, a 0 bit takes the target context's text colour and a
// 1 bit its background colour; the other way round pixels of the source context's background colour become 1.
BOOL BitBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, DWORD operation);
// The same with another size at the source; each pixel takes the nearest source pixel.
BOOL StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, int fromWidth,
                int fromHeight, DWORD operation);
// The colour of a pixel; 0xFFFFFFFF outside the target and the clip.
COLORREF GetPixel(HDC context, int x, int y);

// Reads rows of a bitmap that is in no context into bottom-up rows, each padded to a multiple of 4 bytes. `start` and
// `rows` count scan lines from the bottom of the image; row `start` goes to the beginning of `bits`. Answers the rows.
// By biBitCount: 24 gives blue, green, red bytes of a true-colour bitmap, channels of fewer bits widened so that full
// stays full; 8 and DIB_PAL_COLORS the colour indices of a palette bitmap (on a screen of 16 colours those of the fixed
// sixteen, by the palette that the screen had when the bitmap was made: if that changes, the indices stay); 2 and 1
// pack the indices of a bitmap of that depth, the leftmost pixel in the top bits. biHeight is positive. 0 on anything
// else.
int GetDIBits(HDC context, HBITMAP bitmap, UINT start, UINT rows, void* bits, BITMAPINFO* info, UINT usage);

// ---- Pens, brushes, modes ----------------------------------------------------------------------------------------

inline constexpr int PS_SOLID = 0;
inline constexpr int BLACK_BRUSH = 4;
inline constexpr int BLACK_PEN = 7;
inline constexpr int NULL_PEN = 8;
inline constexpr int R2_NOTXORPEN = 10; // not (pen xor pixel): black inverts, white leaves; twice is as before
inline constexpr int R2_COPYPEN = 13;
inline constexpr int TRANSPARENT = 1;
inline constexpr UINT TA_BASELINE = 24;
inline constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;

// A solid pen of one pixel: `style` is PS_SOLID, and a width of 0 or 1 is what there is.
HPEN CreatePen(int style, int width, COLORREF colour);
HBRUSH CreateSolidBrush(COLORREF colour);
// A brush that repeats the bitmap's top left 8 by 8 pixels, counted from the context's 0, 0. The bitmap is of one bit
// and is copied: a 0 bit draws in the context's text colour and a 1 bit in its background colour, as they are at the
// moment of drawing.
HBRUSH CreatePatternBrush(HBITMAP bitmap);
// BLACK_BRUSH, BLACK_PEN or NULL_PEN, which draws nothing.
HGDIOBJ GetStockObject(int which);

// How lines and Rectangle combine with what stands there; R2_COPYPEN to begin with. Answers the mode before; other
// modes than the two change nothing and answer 0.
int SetROP2(HDC context, int mode);
int GetROP2(HDC context);
// Both answer the colour before, or CLR_INVALID. A new context has black text on white.
COLORREF SetTextColor(HDC context, COLORREF colour);
COLORREF SetBkColor(HDC context, COLORREF colour);
// TRANSPARENT is the one mode there is, and every context's: text leaves what lies between its letters.
int SetBkMode(HDC context, int mode);

// ---- Lines and fills ---------------------------------------------------------------------------------------------

// One pixel, whatever the mode of SetROP2. Answers the colour drawn, or CLR_INVALID outside the target and the clip.
COLORREF SetPixel(HDC context, int x, int y, COLORREF colour);
// Lines with the pen through `count` points, without the last one. Each pixel of a segment is drawn once; its direction
// decides how a slanted one is stepped.
BOOL Polyline(HDC context, const POINT* points, int count);
// Fills the polygon with the brush by the even-odd rule and draws its outline, closed, with the pen.
BOOL Polygon(HDC context, const POINT* points, int count);
// Fills with a brush, whatever the mode of SetROP2.
int FillRect(HDC context, const RECT* rect, HBRUSH brush);
// Fills with the context's brush and draws the border with its pen, both by the mode of SetROP2. Right and bottom lie
// one past the border. With the null pen the fill is one column and one row smaller: it ends before right - 1 and
// bottom - 1.
BOOL Rectangle(HDC context, int left, int top, int right, int bottom);

// ---- Text --------------------------------------------------------------------------------------------------------

// Text is UTF-8; a byte that is none is drawn as U+FFFD. A letter that a font does not have comes from another one at
// the same size, and is a box where none has it; letters stand one behind the other, each as it is by itself. Text is
// smooth on true colour and plain on palette screens and bitmaps of one bit; metrics agree with what is drawn.

inline constexpr LONG FW_NORMAL = 400;
inline constexpr LONG FW_BOLD = 700;
inline constexpr int LF_FACESIZE = 32;

// What a font is to be like; other fields than these are 0.
struct LOGFONTA {
  LONG
      lfHeight; // pixels: above 0 ascent and descent together, below 0 the size of the letters alone; 0 is the system's
  LONG lfWidth; // average width in pixels, 0 for what goes with the height
  LONG lfEscapement, lfOrientation;
  LONG lfWeight; // FW_NORMAL, or bold from 600 up
  BYTE lfItalic, lfUnderline, lfStrikeOut, lfCharSet, lfOutPrecision, lfClipPrecision, lfQuality, lfPitchAndFamily;
  char lfFaceName[LF_FACESIZE]; // a family of the system's; a sans-serif one stands in for a name that is not there
};

struct TEXTMETRICA {
  LONG tmHeight; // tmAscent + tmDescent
  LONG tmAscent, tmDescent;
  LONG tmInternalLeading, tmExternalLeading;
  LONG tmAveCharWidth; // the mean of the alphabet, small and capital
};

// Always answers a font, even when none is installed: its letters are boxes then.
HFONT CreateFontIndirectA(const LOGFONTA* what);
// Of the font in the context.
BOOL GetTextMetricsA(HDC context, TEXTMETRICA* metrics);
// Width and height of the text's cell, without what SetTextCharacterExtra adds. Ink lies within but for letters that
// reach out sideways, as slanted ones do.
BOOL GetTextExtentPointA(HDC context, const char* text, int length, SIZE* size);
// TA_BASELINE places text by its baseline, 0 by the top of its cell (a new context's). Answers the mode before.
UINT SetTextAlign(HDC context, UINT mode);
// Pixels added behind each letter that is drawn. Answers the number before.
int SetTextCharacterExtra(HDC context, int extra);
// Draws the text from x on, in the text colour.
BOOL TextOutA(HDC context, int x, int y, const char* text, int length);

// ---- Regions and the clip ----------------------------------------------------------------------------------------

inline constexpr int NULLREGION = 1;    // empty
inline constexpr int SIMPLEREGION = 2;  // one rectangle
inline constexpr int COMPLEXREGION = 3; // more

// A rectangle, its sides in order whichever way they are given; empty when two meet.
HRGN CreateRectRgn(int left, int top, int right, int bottom);
BOOL AddRectRgn(HRGN region, const RECT* rect);
// Makes the region those rows of a rectangle of the screen that may show something else than when this was asked last,
// from side to side, and counted from the rectangle's corner. All of them at first, for another rectangle than the last
// one, and where it cannot be told. The pointer does not count. Who copies the rows behind this call misses nothing:
// what is drawn meanwhile counts for the next one.
BOOL GetScreenChanges(HRGN region, const RECT* where);
// The smallest rectangle around it, all 0 for an empty one. Answers what the region is.
int GetRgnBox(HRGN region, RECT* box);
BOOL RectInRegion(HRGN region, const RECT* rect); // whether they share a pixel

// Copies the region into the context as its clip, in its coordinates; null takes the clip away. Answers what it is.
int SelectClipRgn(HDC context, HRGN region);
// Takes what lies outside the rectangle, made as above, out of the clip. Answers what that is now.
int IntersectClipRect(HDC context, int left, int top, int right, int bottom);
// Copies the clip into the region: 1, or 0 when none is set, and then the region stays; -1 on a null handle.
int GetClipRgn(HDC context, HRGN region);
// The smallest rectangle around what can be drawn on: target, visible part and clip together.
int GetClipBox(HDC context, RECT* box);

// ---- Display facts -----------------------------------------------------------------------------------------------

inline constexpr int HORZRES = 8;
inline constexpr int VERTRES = 10;
inline constexpr int BITSPIXEL = 12;
inline constexpr int PLANES = 14;
inline constexpr int NUMCOLORS = 24;
inline constexpr int RASTERCAPS = 38;
inline constexpr int SIZEPALETTE = 104;
inline constexpr int NUMRESERVED = 106;
inline constexpr int RC_PALETTE = 0x100;

struct PALETTEENTRY {
  BYTE peRed, peGreen, peBlue, peFlags;
};

// Facts of the screen, for any context. PLANES is 1 and BITSPIXEL the depth: 1, 2, 4, 8, 16, 24 or 32 (15 counts as
// 16, 30 as 32; anything else as it stands). NUMCOLORS is 2^depth below 16 bits, else -1. RASTERCAPS has RC_PALETTE at
// depth 8. SIZEPALETTE is 256 there and NUMRESERVED too: the palette belongs to the desktop, nobody may change it.
int GetDeviceCaps(HDC context, int index);
// Copies colours of a palette screen, first to first + count - 1; answers how many it has, 0 on a true-colour screen.
UINT GetSystemPaletteEntries(HDC context, UINT first, UINT count, PALETTEENTRY* entries);
// The colour that the screen shows for the given one.
COLORREF GetNearestColor(HDC context, COLORREF colour);
