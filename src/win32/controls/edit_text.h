// The text of an edit control, and what can be done with it: selecting, replacing, taking back, moving by characters
// and words. It knows nothing of windows, fonts or lines on the screen. Internal to the layer.
//
// Places are bytes from 0 to the length of the text. Anchor and caret stand on character boundaries at all times. A
// character is one of UTF-8 or, in text of several lines, the CR LF of a line break.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace framereel {

// How a change came about: a run of the same kind is taken back in one.
enum class EditChange : uint8_t { kOther, kTyped, kErasedBack, kErasedOn };

// The last change: `inserted` bytes at `at` have taken the place of `removed`.
struct EditUndo {
  bool possible;
  EditChange kind; // kOther: nothing joins it any more
  size_t at, inserted;
  std::string removed;
};

struct EditText {
  std::string text;
  size_t anchor, caret; // the selection lies between them
  size_t limit;         // bytes that the user may enter in all
  bool multiLine;
  EditUndo undo;
};

struct EditRange {
  size_t from, to;
};

enum class EditMove : uint8_t { kLeft, kRight, kWordLeft, kWordRight, kTextStart, kTextEnd };

EditRange SelectionOf(const EditText& edit);
std::string_view SelectedText(const EditText& edit);

// Another text, with the caret at its start; nothing can be taken back.
void ResetText(EditText* edit, std::string_view text);
// The caret goes there, and the anchor with it unless it selects.
void MoveCaret(EditText* edit, size_t to, bool selects);
void Select(EditText* edit, size_t from, size_t to);

// Replaces the selection by as many whole characters as the limit leaves room for, and puts the caret behind them.
// Answers how many bytes of `with` that were.
size_t ReplaceSelection(EditText* edit, std::string_view with, EditChange kind);
// Deletes the selection or, without one, what lies between the caret and the place. False when there is nothing.
bool Erase(EditText* edit, size_t to, EditChange kind);
// Takes the last change back, or that again. False when there is none.
bool Undo(EditText* edit);

// Where a move from a place leads.
size_t PlaceAfter(const EditText& edit, size_t from, EditMove move);
// The run of letters, blanks or signs around a character.
EditRange WordAt(const EditText& edit, size_t at);

// Between the text's line breaks and those of the clipboard, which are LF. In a text of one line each is a blank.
std::string FromClipboard(const EditText& edit, std::string_view text);
std::string ForClipboard(std::string_view text);

} // namespace framereel
