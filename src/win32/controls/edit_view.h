// What an edit control shows of its text: lines, how far they are scrolled, the selection, the caret. Internal to the
// layer.
#pragma once

#include "win32/controls/edit_lines.h"
#include "win32/controls/edit_text.h"
#include "win32/pixels/surface.h"
#include "win32/win32_types.h"

namespace framereel {

struct EditState {
  EditText text;
  HFONT font;
  PixelRect format;            // where the text stands in the client area
  std::vector<EditLine> lines; // of the text as it is; Relayout
  int32_t scrollX, scrollY;    // pixels of the text that lie left of and above what is seen
  bool caretLit;

  // edit.cpp
  int32_t goalX;     // where moves up and down lead to, if it is above 0 that they began there; else -1
  bool dragging;     // the mouse is captured and selects
  EditRange dragged; // the word, or the place, that it began with
  bool byWords;
  std::string begun; // the first bytes of a character that is being typed
};

inline constexpr int32_t kNoGoal = -1;

// The formatting rectangle that a control begins with.
PixelRect DefaultFormat(HWND edit);
// Works the lines out anew after a change of text, font or place, scrolls no further than there is text, and has all of
// it painted. While the control has the focus the caret stays in sight.
void Relayout(HWND edit);
// The caret has moved: brings it into sight, lets it blink from the start, and has all painted.
void RevealCaret(HWND edit);
void StartCaret(HWND edit); // with the focus it comes
void StopCaret(HWND edit);

struct EditPosition {
  size_t line;
  int32_t x; // in the line
};
EditPosition PositionOf(HWND edit, size_t place);
// The place in that line that is nearest to x.
size_t PlaceInLine(HWND edit, size_t line, int32_t x);
// The place nearest to a point of the client area, which may lie outside of it, or where the character that it hits
// begins.
size_t PlaceAt(HWND edit, int32_t x, int32_t y);
size_t CharacterAt(HWND edit, int32_t x, int32_t y);
// How many whole lines are seen; at least one.
size_t LinesInSight(HWND edit);
// Moves the text up by lines, as far as there is any. False when nothing moved.
bool ScrollLines(HWND edit, int32_t lines);

void PaintEdit(HWND edit);

} // namespace framereel
