// The controls that the system brings: the window classes "button", "edit", "listbox" and "static", what they are told
// and what they tell; and the clipboard.
//
// A control is a child window. Its parent hears of what happens in it by WM_COMMAND: the low word of wParam is the
// control's id, the high word the notice, lParam its window. Whoever is told may destroy it at once. The title given to
// CreateWindowExA and WM_SETTEXT are its text. All draw in a font of the system's own until WM_SETFONT brings another.
//
// "button": pressed by the left button of the mouse, which it takes the focus with, by Space, which like the mouse
// counts when it goes up, and by Return. In its text "&" marks a letter ("&&" is the sign itself). A press that leaves
// the button, that Escape, another key or the loss of the focus ends, or from which the mouse is taken away, counts for
// nothing.
//
// "edit": text to be edited, in UTF-8 and by whole characters; a byte that is none is kept and counts as one. With
// ES_MULTILINE the text has lines, which end with CR LF (one character), are broken between words at the width of the
// formatting rectangle, and scroll up and down; without it all is one line that scrolls sideways. The keys are the
// usual ones: arrows, Home, End and the page keys, by words or to the ends of the text with Ctrl, selecting with Shift;
// Delete and Backspace; Ctrl+A, C, V, X, and Z, which takes back the last change and, once more, itself. A double click
// selects a word. What the user selects can be pasted by the middle button, here at the place clicked, and by that of
// other programs. The clipboard's lines end with LF, and pasted into one line they are set apart by blanks.
//
// "listbox": rows of text of which one may be selected, with a scroll bar at the right where there are more than are
// seen. The user selects by a press, which may be dragged, by the arrows, Home, End and the page keys, and by typing
// how an entry begins; "[" ahead of it need not be typed. The wheel scrolls. A text too wide for its row is shortened
// in its middle. Hundreds of thousands of entries are no burden.
//
// "static": text that stands there. "&" marks the letter of the control behind it (win32_dialogs.h).
#pragma once

#include "win32/win32_types.h"

// ---- All controls ------------------------------------------------------------------------------------------------

inline constexpr UINT WM_SETFONT = 48; // wParam: a font that lives as long as it is set; lParam: paint it now
inline constexpr UINT WM_GETFONT = 49; // answers it; 0 for the system's

// Asks a control which keys it has a use for in a dialog: DLGC_....
inline constexpr UINT WM_GETDLGCODE = 135;
inline constexpr LRESULT DLGC_WANTARROWS = 1;
inline constexpr LRESULT DLGC_WANTALLKEYS = 4;
inline constexpr LRESULT DLGC_HASSETSEL = 8;          // the keyboard comes to it with all its text selected
inline constexpr LRESULT DLGC_DEFPUSHBUTTON = 0x10;   // a button that is the default one now,
inline constexpr LRESULT DLGC_UNDEFPUSHBUTTON = 0x20; // or could be
inline constexpr LRESULT DLGC_WANTCHARS = 0x80;
inline constexpr LRESULT DLGC_STATIC = 0x100;

// ---- Buttons -----------------------------------------------------------------------------------------------------

inline constexpr DWORD BS_PUSHBUTTON = 0;
inline constexpr DWORD BS_DEFPUSHBUTTON = 1; // with a thicker edge: the one that a dialog's Return presses

inline constexpr UINT BM_SETSTYLE = 244; // wParam: BS_...; lParam: paint it now
inline constexpr UINT BM_CLICK = 245;    // as if the user had clicked; nothing while it is disabled

inline constexpr WORD BN_CLICKED = 0;

// ---- Edit controls -----------------------------------------------------------------------------------------------

inline constexpr DWORD ES_MULTILINE = 4;

// Places count bytes. A selection that is given goes from one place to the other, where the caret then stands; beyond
// the text is its end, and EM_SETSEL 0, -1 selects everything. A place inside a character is the one before it.
inline constexpr UINT EM_GETSEL = 176; // wParam and lParam: pointers to DWORDs that get the start and the end
inline constexpr UINT EM_SETSEL = 177; // wParam start, lParam end
// lParam RECT: where in the client area the text stands and is broken into lines; null is all of it but for a small
// margin, to which a new size of the control sets it back.
inline constexpr UINT EM_SETRECTNP = 180;
// lParam: text that takes the place of the selection, the caret behind it. It counts as the user's own change.
inline constexpr UINT EM_REPLACESEL = 194;
// wParam: how many bytes the user may enter in all; 0 is the most there is. Text that is set may be longer.
inline constexpr UINT EM_LIMITTEXT = 197;
inline constexpr UINT EM_UNDO = 199; // takes back the last change, as Ctrl+Z; FALSE when there is none

inline constexpr WORD EN_CHANGE = 768; // the text has changed, by the user or by WM_SETTEXT

inline constexpr UINT WM_CUT = 768;
inline constexpr UINT WM_COPY = 769;
inline constexpr UINT WM_PASTE = 770;
inline constexpr UINT WM_CLEAR = 771; // deletes the selection

// ---- List boxes --------------------------------------------------------------------------------------------------

inline constexpr DWORD LBS_NOTIFY = 1;         // tells the notices below
inline constexpr DWORD LBS_SORT = 2;           // in the order of their letters, whatever the case of ASCII ones
inline constexpr DWORD LBS_USETABSTOPS = 0x80; // a tab in a text leads to the next of places that are 8 letters apart

// Entries are numbered from 0, from the top.
inline constexpr LRESULT LB_ERR = -1;
inline constexpr UINT LB_ADDSTRING = 384; // lParam: its text. Answers 0, whatever its place is in a sorted list
inline constexpr UINT LB_RESETCONTENT = 388;
inline constexpr UINT LB_SETCURSEL = 390; // wParam: the entry to select, -1 for none; no notice comes of it
inline constexpr UINT LB_GETCURSEL = 392; // LB_ERR for none
inline constexpr UINT LB_GETTEXT = 393; // wParam: the entry; lParam: a buffer with room. Answers the length, or LB_ERR
inline constexpr UINT LB_GETTEXTLEN = 394; // in bytes, without the zero behind them

inline constexpr WORD LBN_SELCHANGE = 1; // the user has selected an entry
inline constexpr WORD LBN_DBLCLK = 2;    // or clicked twice on one
inline constexpr WORD LBN_KILLFOCUS = 5;

// ---- Static text -------------------------------------------------------------------------------------------------

// Text is broken between words at the control's width, unless the style says that it is one line.
inline constexpr DWORD SS_LEFTNOWORDWRAP = 0xC;
inline constexpr DWORD SS_NOPREFIX = 0x80;       // "&" is a letter like any other
inline constexpr DWORD SS_PATHELLIPSIS = 0x8000; // one line; shortened in its middle where it has no room

// ---- The clipboard -----------------------------------------------------------------------------------------------

inline constexpr UINT CF_TEXT = 1;

// Around what is asked of the clipboard. FALSE when nobody can ask now.
BOOL OpenClipboard(HWND owner);
BOOL CloseClipboard();
BOOL IsClipboardFormatAvailable(UINT format); // CF_TEXT: whether there is text, whatever program has it
