// The class "edit": keys, mouse and messages. What can be done with the text stands in edit_text.cpp, what is seen of
// it in edit_view.cpp.
#include "win32/controls/edit.h"

#include <algorithm>
#include <utility>

#include "win32/controls/control_base.h"
#include "win32/controls/edit_view.h"
#include "win32/input/clipboard.h"
#include "win32/input/keyboard.h"
#include "win32/pixels/rectangles.h"
#include "win32/pixels/utf8.h"
#include "win32/win32_controls.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_text.h"
#include "win32/windows/window_timers.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr size_t kMostBytes = 32767; // that the user may enter, unless EM_LIMITTEXT says otherwise
constexpr size_t kHighestLimit = 0x7FFFFFFE;
constexpr uint32_t kDragScrollMs = 50; // between steps while the mouse is held outside
constexpr int kWheelNotch = 120, kWheelLines = 3;

EditState& State(HWND edit) {
  return *StateOf<EditState>(edit);
}

// ---- Changes and moves -------------------------------------------------------------------------------------------

// The text has changed. The last thing that is done with the control: it may be gone afterwards.
void Changed(HWND edit) {
  State(edit).goalX = kNoGoal;
  Relayout(edit);
  RevealCaret(edit);
  NotifyParent(edit, EN_CHANGE);
}

void Enter(HWND edit, std::string_view with, EditChange kind) {
  EditText* text = &State(edit).text;
  const bool marked = text->anchor != text->caret;
  const size_t put = ReplaceSelection(text, with, kind);
  if (put < with.size()) ::MessageBeep(0);
  if (put > 0 || (with.empty() && marked)) Changed(edit);
}

void EraseUpTo(HWND edit, EditMove move, EditChange kind) {
  EditText* text = &State(edit).text;
  if (Erase(text, PlaceAfter(*text, text->caret, move), kind)) Changed(edit);
}

void GoTo(HWND edit, size_t place, bool selects) {
  State(edit).goalX = kNoGoal;
  MoveCaret(&State(edit).text, place, selects);
  RevealCaret(edit);
}

void SelectRange(HWND edit, size_t from, size_t to) {
  State(edit).goalX = kNoGoal;
  Select(&State(edit).text, from, to);
  RevealCaret(edit);
}

bool Copy(HWND edit) {
  const std::string_view marked = SelectedText(State(edit).text);
  if (marked.empty()) return false;
  SetClipboardText(ForClipboard(marked));
  return true;
}

LRESULT OnCut(HWND edit, WPARAM, LPARAM) {
  if (Copy(edit)) Enter(edit, "", EditChange::kOther);
  return 0;
}

LRESULT OnCopy(HWND edit, WPARAM, LPARAM) {
  Copy(edit);
  return 0;
}

void Paste(HWND edit, std::string_view shared) {
  const std::string text = FromClipboard(State(edit).text, shared);
  if (!text.empty()) Enter(edit, text, EditChange::kOther);
}

LRESULT OnPaste(HWND edit, WPARAM, LPARAM) {
  Paste(edit, ClipboardText());
  return 0;
}

LRESULT OnClear(HWND edit, WPARAM, LPARAM) {
  Enter(edit, "", EditChange::kOther);
  return 0;
}

LRESULT OnUndo(HWND edit, WPARAM, LPARAM) {
  if (!Undo(&State(edit).text)) return FALSE;
  Changed(edit);
  return TRUE;
}

// What the user has selected, the middle button pastes anywhere. One that has gone is kept until there is another.
void ShareSelection(HWND edit) {
  const std::string_view marked = SelectedText(State(edit).text);
  if (!marked.empty()) DisplayShareText(SharedText::kSelected, ForClipboard(marked));
}

// ---- Keys --------------------------------------------------------------------------------------------------------

// What was typed of a character whose rest has not come.
void EnterBegun(HWND edit) {
  const std::string begun = std::exchange(State(edit).begun, {});
  if (!begun.empty()) Enter(edit, begun, EditChange::kTyped);
}

void Move(HWND edit, EditMove move) {
  const EditText& text = State(edit).text;
  const EditRange marked = SelectionOf(text);
  const bool selects = KeyIsDown(VK_SHIFT);
  // A selection that is left goes to its end on that side.
  const bool leaves = !selects && marked.from < marked.to;
  if (leaves && move == EditMove::kLeft) return GoTo(edit, marked.from, false);
  if (leaves && move == EditMove::kRight) return GoTo(edit, marked.to, false);
  GoTo(edit, PlaceAfter(text, text.caret, move), selects);
}

void MoveLines(HWND edit, int32_t by) {
  const EditPosition now = PositionOf(edit, State(edit).text.caret);
  const int32_t goal = State(edit).goalX == kNoGoal ? now.x : State(edit).goalX;
  const auto last = int32_t(State(edit).lines.size()) - 1;
  const auto line = size_t(std::clamp(int32_t(now.line) + by, 0, last));
  if (line == now.line) return;
  GoTo(edit, PlaceInLine(edit, line, goal), KeyIsDown(VK_SHIFT));
  State(edit).goalX = goal;
}

void MoveInLine(HWND edit, bool toEnd) {
  const EditState& state = State(edit);
  const size_t line = LineOf(state.lines, state.text.caret);
  const size_t end = LineEnd(state.text, state.lines, line);
  GoTo(edit, toEnd ? end : state.lines[line].from, KeyIsDown(VK_SHIFT));
}

void OnDeleteKey(HWND edit, bool control) {
  if (KeyIsDown(VK_SHIFT)) {
    OnCut(edit, 0, 0);
  } else {
    EraseUpTo(edit, control ? EditMove::kWordRight : EditMove::kRight, EditChange::kErasedOn);
  }
}

void OnInsertKey(HWND edit, bool control) {
  if (control) OnCopy(edit, 0, 0);
  if (!control && KeyIsDown(VK_SHIFT)) OnPaste(edit, 0, 0);
}

struct KeyHandler {
  int key;
  void (*run)(HWND edit, bool control);
};
constexpr KeyHandler kKeys[] = {
    {VK_LEFT, [](HWND edit, bool control) { Move(edit, control ? EditMove::kWordLeft : EditMove::kLeft); }},
    {VK_RIGHT, [](HWND edit, bool control) { Move(edit, control ? EditMove::kWordRight : EditMove::kRight); }},
    {VK_UP, [](HWND edit, bool) { MoveLines(edit, -1); }},
    {VK_DOWN, [](HWND edit, bool) { MoveLines(edit, 1); }},
    {VK_PRIOR, [](HWND edit, bool) { MoveLines(edit, -int32_t(LinesInSight(edit))); }},
    {VK_NEXT, [](HWND edit, bool) { MoveLines(edit, int32_t(LinesInSight(edit))); }},
    {VK_HOME, [](HWND edit, bool control) { control ? Move(edit, EditMove::kTextStart) : MoveInLine(edit, false); }},
    {VK_END, [](HWND edit, bool control) { control ? Move(edit, EditMove::kTextEnd) : MoveInLine(edit, true); }},
    {VK_CLEAR, [](HWND edit, bool) { OnClear(edit, 0, 0); }},
    {VK_DELETE, OnDeleteKey},
    {VK_INSERT, OnInsertKey},
};

LRESULT OnKeyDown(HWND edit, WPARAM wParam, LPARAM) {
  EnterBegun(edit);
  const EditRange before = SelectionOf(State(edit).text);
  for (const KeyHandler& handler : kKeys) {
    if (IsLive(edit) && WPARAM(handler.key) == wParam) handler.run(edit, KeyIsDown(VK_CONTROL));
  }
  if (!IsLive(edit)) return 0;
  const EditRange now = SelectionOf(State(edit).text);
  if (now.from != before.from || now.to != before.to) ShareSelection(edit);
  return 0;
}

void SelectAll(HWND edit) {
  SelectRange(edit, 0, std::string::npos);
  ShareSelection(edit);
}

void OnBackspace(HWND edit) {
  const EditMove move = KeyIsDown(VK_CONTROL) ? EditMove::kWordLeft : EditMove::kLeft;
  EraseUpTo(edit, move, EditChange::kErasedBack);
}

void OnReturn(HWND edit) {
  if (State(edit).text.multiLine) Enter(edit, "\r\n", EditChange::kTyped);
}

// Control characters; the letters of Ctrl+letter count from 1.
struct CharacterHandler {
  uint8_t character;
  void (*run)(HWND edit);
};
constexpr CharacterHandler kCharacters[] = {
    {'A' & 31, SelectAll},
    {'C' & 31, [](HWND edit) { OnCopy(edit, 0, 0); }},
    {'V' & 31, [](HWND edit) { OnPaste(edit, 0, 0); }},
    {'X' & 31, [](HWND edit) { OnCut(edit, 0, 0); }},
    {'Z' & 31, [](HWND edit) { OnUndo(edit, 0, 0); }},
    {VK_BACK, OnBackspace},
    {VK_RETURN, OnReturn},
};

// A byte of UTF-8.
LRESULT OnChar(HWND edit, WPARAM wParam, LPARAM) {
  const auto character = uint8_t(wParam);
  constexpr uint8_t rubout = 127;
  if (character >= ' ' && character != rubout) {
    std::string* begun = &State(edit).begun;
    *begun += char(character);
    if (!IsBegunCharacter(*begun)) EnterBegun(edit);
    return 0;
  }
  for (const CharacterHandler& handler : kCharacters) {
    if (handler.character != character) continue;
    handler.run(edit);
    return 0;
  }
  return 0;
}

// ---- The mouse ---------------------------------------------------------------------------------------------------

POINT PointOf(LPARAM lParam) {
  return {SHORT(LOWORD(uintptr_t(lParam))), SHORT(HIWORD(uintptr_t(lParam)))};
}

void DragTo(HWND edit, POINT to) {
  const EditState& state = State(edit);
  if (!state.byWords) return GoTo(edit, PlaceAt(edit, to.x, to.y), true);
  const EditRange first = state.dragged, word = WordAt(state.text, CharacterAt(edit, to.x, to.y));
  const bool back = word.from < first.from;
  SelectRange(edit, back ? first.to : first.from, back ? word.from : std::max(first.to, word.to));
}

// The pointer rests outside and the text goes on passing by.
void DragOn(HWND edit) {
  POINT at = {0, 0};
  ::GetCursorPos(&at);
  const PixelRect client = ClientOnScreen(*edit);
  if (!Holds(client, at.x, at.y)) DragTo(edit, {at.x - client.left, at.y - client.top});
}

// False when the control has lost what it needs for it.
bool BeginDrag(HWND edit) {
  ::SetFocus(edit);
  if (IsLive(edit)) ::SetCapture(edit);
  if (!IsLive(edit) || TheWindows().capture != edit) return false;
  State(edit).dragging = true;
  StartTimer(edit, DragOn, kDragScrollMs);
  return true;
}

LRESULT OnLeftDown(HWND edit, WPARAM wParam, LPARAM lParam) {
  if (!BeginDrag(edit)) return 0;
  State(edit).byWords = false;
  const POINT at = PointOf(lParam);
  GoTo(edit, PlaceAt(edit, at.x, at.y), wParam & MK_SHIFT);
  return 0;
}

LRESULT OnDoubleClick(HWND edit, WPARAM, LPARAM lParam) {
  if (!BeginDrag(edit)) return 0;
  const POINT at = PointOf(lParam);
  const EditRange word = WordAt(State(edit).text, CharacterAt(edit, at.x, at.y));
  State(edit).byWords = true;
  State(edit).dragged = word;
  SelectRange(edit, word.from, word.to);
  return 0;
}

// Pastes at the place clicked what has been selected anywhere.
LRESULT OnMiddleDown(HWND edit, WPARAM, LPARAM lParam) {
  ::SetFocus(edit);
  if (!IsLive(edit)) return 0;
  const POINT at = PointOf(lParam);
  GoTo(edit, PlaceAt(edit, at.x, at.y), false);
  Paste(edit, DisplaySharedText(SharedText::kSelected));
  return 0;
}

LRESULT OnMouseMove(HWND edit, WPARAM, LPARAM lParam) {
  if (State(edit).dragging) DragTo(edit, PointOf(lParam));
  return 0;
}

LRESULT OnLeftUp(HWND edit, WPARAM, LPARAM) {
  if (State(edit).dragging) ::ReleaseCapture();
  return 0;
}

LRESULT OnCaptureChanged(HWND edit, WPARAM, LPARAM) {
  StopTimer(edit, DragOn);
  if (std::exchange(State(edit).dragging, false)) ShareSelection(edit);
  return 0;
}

LRESULT OnMouseWheel(HWND edit, WPARAM wParam, LPARAM lParam) {
  const int notches = SHORT(HIWORD(wParam)) / kWheelNotch;
  if (ScrollLines(edit, -notches * kWheelLines)) return 0;
  return ::DefWindowProcA(edit, WM_MOUSEWHEEL, wParam, lParam);
}

// ---- What it is told and asked -----------------------------------------------------------------------------------

LRESULT OnNcCreate(HWND edit, WPARAM, LPARAM) {
  auto state = std::make_shared<EditState>();
  state->text.limit = kMostBytes;
  state->text.multiLine = Has(*edit, ES_MULTILINE);
  state->goalX = kNoGoal;
  ResetText(&state->text, std::exchange(edit->title, {}));
  state->lines = {{0, 0}};
  edit->control = std::move(state);
  return TRUE;
}

// Of WM_CREATE too, which comes with the first size.
LRESULT OnSize(HWND edit, WPARAM, LPARAM) {
  State(edit).format = DefaultFormat(edit);
  Relayout(edit);
  return 0;
}

LRESULT OnPaint(HWND edit, WPARAM, LPARAM) {
  PaintEdit(edit);
  return 0;
}

LRESULT OnErase(HWND, WPARAM, LPARAM) {
  return TRUE; // what is painted covers all of it
}

LRESULT OnSetText(HWND edit, WPARAM, LPARAM lParam) {
  const auto* text = reinterpret_cast<const char*>(lParam);
  State(edit).begun.clear();
  ResetText(&State(edit).text, text ? text : "");
  Changed(edit);
  return TRUE;
}

LRESULT OnGetText(HWND edit, WPARAM wParam, LPARAM lParam) {
  return CopyText(State(edit).text.text, wParam, lParam);
}

LRESULT OnGetTextLength(HWND edit, WPARAM, LPARAM) {
  return LRESULT(State(edit).text.text.size());
}

LRESULT OnSetFont(HWND edit, WPARAM wParam, LPARAM) {
  State(edit).font = reinterpret_cast<HFONT>(wParam);
  Relayout(edit);
  return 0;
}

LRESULT OnGetFont(HWND edit, WPARAM, LPARAM) {
  return reinterpret_cast<LRESULT>(State(edit).font);
}

LRESULT OnGetDialogCode(HWND edit, WPARAM, LPARAM) {
  const LRESULT own = DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS;
  return State(edit).text.multiLine ? own | DLGC_WANTALLKEYS : own;
}

LRESULT OnEnable(HWND edit, WPARAM, LPARAM) {
  InvalidateAll(edit);
  return 0;
}

LRESULT OnSetFocus(HWND edit, WPARAM, LPARAM) {
  RevealCaret(edit);
  return 0;
}

LRESULT OnKillFocus(HWND edit, WPARAM, LPARAM) {
  StopCaret(edit);
  InvalidateAll(edit);
  EnterBegun(edit);
  return 0;
}

LRESULT OnGetSelection(HWND edit, WPARAM wParam, LPARAM lParam) {
  const EditRange marked = SelectionOf(State(edit).text);
  if (wParam) *reinterpret_cast<DWORD*>(wParam) = DWORD(marked.from);
  if (lParam) *reinterpret_cast<DWORD*>(lParam) = DWORD(marked.to);
  return 0;
}

LRESULT OnSetSelection(HWND edit, WPARAM wParam, LPARAM lParam) {
  SelectRange(edit, size_t(wParam), size_t(lParam));
  return 0;
}

LRESULT OnSetFormat(HWND edit, WPARAM, LPARAM lParam) {
  const auto* rect = reinterpret_cast<const RECT*>(lParam);
  State(edit).format = rect ? PixelsOf(*rect) : DefaultFormat(edit);
  Relayout(edit);
  return 0;
}

LRESULT OnReplaceSelection(HWND edit, WPARAM, LPARAM lParam) {
  const auto* text = reinterpret_cast<const char*>(lParam);
  if (text) Enter(edit, text, EditChange::kTyped);
  return 0;
}

LRESULT OnLimitText(HWND edit, WPARAM wParam, LPARAM) {
  State(edit).text.limit = wParam ? std::min(size_t(wParam), kHighestLimit) : kHighestLimit;
  return 0;
}

constexpr MessageHandler kHandlers[] = {
    {WM_NCCREATE, OnNcCreate},
    {WM_CREATE, OnSize},
    {WM_SIZE, OnSize},
    {WM_PAINT, OnPaint},
    {WM_ERASEBKGND, OnErase},
    {WM_SETTEXT, OnSetText},
    {WM_GETTEXT, OnGetText},
    {WM_GETTEXTLENGTH, OnGetTextLength},
    {WM_SETFONT, OnSetFont},
    {WM_GETFONT, OnGetFont},
    {WM_GETDLGCODE, OnGetDialogCode},
    {WM_ENABLE, OnEnable},
    {WM_SETFOCUS, OnSetFocus},
    {WM_KILLFOCUS, OnKillFocus},
    {WM_KEYDOWN, OnKeyDown},
    {WM_CHAR, OnChar},
    {WM_LBUTTONDOWN, OnLeftDown},
    {WM_LBUTTONDBLCLK, OnDoubleClick},
    {WM_MBUTTONDOWN, OnMiddleDown},
    {WM_MBUTTONDBLCLK, OnMiddleDown},
    {WM_MOUSEMOVE, OnMouseMove},
    {WM_LBUTTONUP, OnLeftUp},
    {WM_CAPTURECHANGED, OnCaptureChanged},
    {WM_MOUSEWHEEL, OnMouseWheel},
    {WM_CUT, OnCut},
    {WM_COPY, OnCopy},
    {WM_PASTE, OnPaste},
    {WM_CLEAR, OnClear},
    {EM_GETSEL, OnGetSelection},
    {EM_SETSEL, OnSetSelection},
    {EM_SETRECTNP, OnSetFormat},
    {EM_REPLACESEL, OnReplaceSelection},
    {EM_LIMITTEXT, OnLimitText},
    {EM_UNDO, OnUndo},
};

} // namespace

LRESULT EditProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return HandleControlMessage(kHandlers, window, message, wParam, lParam);
}

} // namespace framereel
