// The text of an edit control, and what can be done with it.
#include "win32/controls/edit_text.h"

#include <algorithm>
#include <utility>

#include "win32/pixels/utf8.h"

namespace framereel {
namespace {

constexpr std::string_view kLineBreak = "\r\n";

bool BreaksAt(const EditText& edit, size_t at) {
  return edit.multiLine && std::string_view(edit.text).substr(std::min(at, edit.text.size()), 2) == kLineBreak;
}

size_t NextPlace(const EditText& edit, size_t at) {
  return BreaksAt(edit, at) ? at + kLineBreak.size() : NextCharacter(edit.text, at);
}

size_t PreviousPlace(const EditText& edit, size_t at) {
  return at >= kLineBreak.size() && BreaksAt(edit, at - kLineBreak.size()) ? at - kLineBreak.size()
                                                                           : PreviousCharacter(edit.text, at);
}

size_t Snapped(const EditText& edit, size_t at) {
  const size_t boundary = BoundaryAt(edit.text, at);
  return boundary > 0 && BreaksAt(edit, boundary - 1) ? boundary - 1 : boundary;
}

enum class Kind : uint8_t { kBlank, kBreak, kWord, kSign };

// Of the character that begins there. What lies beyond ASCII counts as letters.
Kind KindAt(const EditText& edit, size_t at) {
  const auto byte = uint8_t(edit.text[at]);
  if (BreaksAt(edit, at)) return Kind::kBreak;
  if (byte <= ' ') return Kind::kBlank;
  const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
  const bool word = letter || (byte >= '0' && byte <= '9') || byte == '_' || byte >= 0x80;
  return word ? Kind::kWord : Kind::kSign;
}

size_t RunEnd(const EditText& edit, size_t at, Kind kind) {
  while (at < edit.text.size() && KindAt(edit, at) == kind) at = NextPlace(edit, at);
  return at;
}

size_t RunStart(const EditText& edit, size_t at, Kind kind) {
  while (at > 0 && KindAt(edit, PreviousPlace(edit, at)) == kind) at = PreviousPlace(edit, at);
  return at;
}

size_t WordLeft(const EditText& edit, size_t at) {
  at = RunStart(edit, at, Kind::kBlank);
  return at == 0 ? 0 : RunStart(edit, at, KindAt(edit, PreviousPlace(edit, at)));
}

size_t WordRight(const EditText& edit, size_t at) {
  if (at < edit.text.size()) at = RunEnd(edit, at, KindAt(edit, at));
  return RunEnd(edit, at, Kind::kBlank);
}

void NoteChange(EditText* edit, EditRange gone, size_t inserted, EditChange kind) {
  EditUndo& undo = edit->undo;
  const std::string removed = edit->text.substr(gone.from, gone.to - gone.from);
  const bool joins = undo.possible && kind != EditChange::kOther && undo.kind == kind;
  if (joins && kind == EditChange::kTyped && removed.empty() && gone.from == undo.at + undo.inserted) {
    undo.inserted += inserted;
  } else if (joins && kind == EditChange::kErasedBack && gone.to == undo.at) {
    undo.removed.insert(0, removed);
    undo.at = gone.from;
  } else if (joins && kind == EditChange::kErasedOn && gone.from == undo.at) {
    undo.removed += removed;
  } else {
    undo = {true, kind, gone.from, inserted, removed};
  }
}

void Replace(EditText* edit, EditRange gone, std::string_view with) {
  edit->text.replace(gone.from, gone.to - gone.from, with);
  edit->anchor = edit->caret = Snapped(*edit, gone.from + with.size());
}

// The longest part of the text that has room.
size_t FittingPart(const EditText& edit, std::string_view with) {
  const EditRange gone = SelectionOf(edit);
  const size_t left = edit.text.size() - (gone.to - gone.from);
  const size_t room = edit.limit > left ? edit.limit - left : 0;
  if (with.size() <= room) return with.size();
  const size_t part = BoundaryAt(with, room);
  return part > 0 && with.substr(part - 1, 2) == kLineBreak ? part - 1 : part;
}

} // namespace

EditRange SelectionOf(const EditText& edit) {
  return {std::min(edit.anchor, edit.caret), std::max(edit.anchor, edit.caret)};
}

std::string_view SelectedText(const EditText& edit) {
  const EditRange range = SelectionOf(edit);
  return std::string_view(edit.text).substr(range.from, range.to - range.from);
}

void ResetText(EditText* edit, std::string_view text) {
  edit->text = text;
  edit->anchor = edit->caret = 0;
  edit->undo = {};
}

void MoveCaret(EditText* edit, size_t to, bool selects) {
  edit->caret = Snapped(*edit, to);
  if (!selects) edit->anchor = edit->caret;
  edit->undo.kind = EditChange::kOther;
}

void Select(EditText* edit, size_t from, size_t to) {
  MoveCaret(edit, from, false);
  MoveCaret(edit, to, true);
}

size_t ReplaceSelection(EditText* edit, std::string_view with, EditChange kind) {
  const EditRange gone = SelectionOf(*edit);
  const size_t part = FittingPart(*edit, with);
  if (part == 0 && (!with.empty() || gone.from == gone.to)) return 0;
  NoteChange(edit, gone, part, kind);
  Replace(edit, gone, with.substr(0, part));
  return part;
}

bool Erase(EditText* edit, size_t to, EditChange kind) {
  if (edit->anchor != edit->caret) {
    kind = EditChange::kOther;
  } else {
    edit->anchor = to;
  }
  if (edit->anchor == edit->caret) return false;
  ReplaceSelection(edit, "", kind);
  return true;
}

bool Undo(EditText* edit) {
  EditUndo& undo = edit->undo;
  if (!undo.possible) return false;
  const EditRange gone = {undo.at, undo.at + undo.inserted};
  const std::string back = std::exchange(undo.removed, edit->text.substr(undo.at, undo.inserted));
  undo.inserted = back.size();
  undo.kind = EditChange::kOther;
  Replace(edit, gone, back);
  return true;
}

size_t PlaceAfter(const EditText& edit, size_t from, EditMove move) {
  switch (move) {
  case EditMove::kLeft:
    return PreviousPlace(edit, from);
  case EditMove::kRight:
    return NextPlace(edit, from);
  case EditMove::kWordLeft:
    return WordLeft(edit, from);
  case EditMove::kWordRight:
    return WordRight(edit, from);
  case EditMove::kTextStart:
    return 0;
  case EditMove::kTextEnd:
    return edit.text.size();
  }
  return from;
}

EditRange WordAt(const EditText& edit, size_t at) {
  // Behind the end of a line its last word is meant.
  if (at >= edit.text.size() || BreaksAt(edit, at)) {
    const size_t before = PreviousPlace(edit, at);
    if (before == at || BreaksAt(edit, before)) return {at, at};
    at = before;
  }
  const Kind kind = KindAt(edit, at);
  return {RunStart(edit, at, kind), RunEnd(edit, at, kind)};
}

std::string FromClipboard(const EditText& edit, std::string_view text) {
  std::string lines;
  for (size_t i = 0; i < text.size(); ++i) {
    // A zero byte would be the end of the text for everybody else.
    if (text[i] == 0 || (text[i] == '\n' && i > 0 && text[i - 1] == '\r')) continue;
    const bool ends = text[i] == '\n' || text[i] == '\r';
    if (ends) {
      lines += edit.multiLine ? kLineBreak : " ";
    } else {
      lines += text[i];
    }
  }
  return lines;
}

std::string ForClipboard(std::string_view text) {
  std::string lines;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text.substr(i, 2) != kLineBreak) lines += text[i];
  }
  return lines;
}

} // namespace framereel
