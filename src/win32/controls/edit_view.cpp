// What an edit control shows of its text.
#include "win32/controls/edit_view.h"

#include <algorithm>

#include "win32/controls/control_base.h"
#include "win32/drawing/relief.h"
#include "win32/drawing/system_colours.h"
#include "win32/pixels/rectangles.h"
#include "win32/pixels/scale.h"
#include "win32/pixels/utf8.h"
#include "win32/win32_drawing.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/window_timers.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr uint32_t kBlinkMs = 500;
constexpr Scaled kCaretWidth{1}, kMargin{2};

EditState& State(HWND edit) {
  return *StateOf<EditState>(edit);
}

// The part of the client area in which text is seen.
PixelRect SeenPart(HWND edit) {
  return Intersect(State(edit).format, ClientBounds(*edit));
}

// Where the first line would stand if nothing were scrolled. A single line stands in the middle.
int32_t TopOf(HWND edit, HDC context) {
  const EditState& state = State(edit);
  const int32_t spare = HeightOf(state.format) - LineHeight(context);
  return state.format.top + (state.text.multiLine ? 0 : std::max(0, spare / 2));
}

int32_t LineTop(HWND edit, HDC context, size_t line) {
  return TopOf(edit, context) + int32_t(line) * LineHeight(context) - State(edit).scrollY;
}

int32_t TextLeft(const EditState& state) {
  return state.format.left - state.scrollX;
}

// Lines that are broken within what is seen have no more to their sides than the blanks at their ends.
bool ScrollsSideways(HWND edit) {
  return !State(edit).text.multiLine || WidthOf(State(edit).format) > WidthOf(SeenPart(edit));
}

PixelRect CaretPlace(HWND edit, HDC context) {
  const EditState& state = State(edit);
  const size_t line = LineOf(state.lines, state.text.caret);
  int32_t x = TextLeft(state) + XOf(context, state.text, state.lines[line], state.text.caret);
  if (!ScrollsSideways(edit)) x = std::min(x, SeenPart(edit).right - kCaretWidth);
  const int32_t top = LineTop(edit, context, line);
  return {x, top, x + kCaretWidth, top + LineHeight(context)};
}

// The line at that height, or the one nearest to it.
size_t LineAt(HWND edit, int32_t y) {
  const ControlContext context(edit, State(edit).font);
  const int32_t line = (y - LineTop(edit, context, 0)) / std::max(1, LineHeight(context));
  return size_t(std::clamp(line, 0, int32_t(State(edit).lines.size()) - 1));
}

// ---- Scrolling ---------------------------------------------------------------------------------------------------

int32_t MostScrollX(HWND edit, HDC context) {
  const EditState& state = State(edit);
  if (!ScrollsSideways(edit)) return 0;
  int32_t widest = 0;
  for (const EditLine& line : state.lines) widest = std::max(widest, XOf(context, state.text, line, line.to));
  return std::max(0, widest + kCaretWidth - WidthOf(SeenPart(edit)));
}

int32_t MostScrollY(HWND edit, HDC context) {
  const int32_t height = int32_t(State(edit).lines.size()) * LineHeight(context);
  return State(edit).text.multiLine ? std::max(0, height - HeightOf(SeenPart(edit))) : 0;
}

// By how much what lies from `from` to `to` has to move to be seen between `low` and `high`.
int32_t Missing(int32_t from, int32_t to, int32_t low, int32_t high) {
  if (from < low || to - from > high - low) return from - low;
  return std::max(0, to - high);
}

void ScrollToCaret(HWND edit, HDC context) {
  EditState& state = State(edit);
  const PixelRect caret = CaretPlace(edit, context), seen = SeenPart(edit);
  if (ScrollsSideways(edit)) state.scrollX += Missing(caret.left, caret.right, seen.left, seen.right);
  if (state.text.multiLine) state.scrollY += Missing(caret.top, caret.bottom, seen.top, seen.bottom);
}

void LimitScroll(HWND edit, HDC context) {
  EditState& state = State(edit);
  state.scrollX = std::clamp(state.scrollX, 0, MostScrollX(edit, context));
  state.scrollY = std::clamp(state.scrollY, 0, MostScrollY(edit, context));
}

// ---- The caret ---------------------------------------------------------------------------------------------------

void Blink(HWND edit) {
  State(edit).caretLit = !State(edit).caretLit;
  const RECT place = RectOf(CaretPlace(edit, ControlContext(edit, State(edit).font)));
  ::InvalidateRect(edit, &place, FALSE);
}

} // namespace

PixelRect DefaultFormat(HWND edit) {
  const PixelRect all = ClientBounds(*edit);
  return {all.left + kMargin, all.top, std::max(all.left + kMargin, all.right - kMargin), all.bottom};
}

void Relayout(HWND edit) {
  EditState& state = State(edit);
  const ControlContext context(edit, state.font);
  state.lines = BreakLines(context, state.text, WidthOf(state.format));
  if (::GetFocus() == edit) ScrollToCaret(edit, context);
  LimitScroll(edit, context);
  InvalidateAll(edit);
}

void RevealCaret(HWND edit) {
  ScrollToCaret(edit, ControlContext(edit, State(edit).font));
  if (::GetFocus() == edit) StartCaret(edit);
  InvalidateAll(edit);
}

void StartCaret(HWND edit) {
  State(edit).caretLit = true;
  StartTimer(edit, Blink, kBlinkMs);
}

void StopCaret(HWND edit) {
  State(edit).caretLit = false;
  StopTimer(edit, Blink);
}

EditPosition PositionOf(HWND edit, size_t place) {
  const EditState& state = State(edit);
  const size_t line = LineOf(state.lines, place);
  return {line, XOf(ControlContext(edit, state.font), state.text, state.lines[line], place)};
}

size_t PlaceInLine(HWND edit, size_t line, int32_t x) {
  const EditState& state = State(edit);
  const size_t place = NearestPlace(ControlContext(edit, state.font), state.text, state.lines[line], x);
  return std::min(place, LineEnd(state.text, state.lines, line));
}

size_t PlaceAt(HWND edit, int32_t x, int32_t y) {
  return PlaceInLine(edit, LineAt(edit, y), x - TextLeft(State(edit)));
}

size_t CharacterAt(HWND edit, int32_t x, int32_t y) {
  const EditState& state = State(edit);
  const EditLine& line = state.lines[LineAt(edit, y)];
  return PlaceBefore(ControlContext(edit, state.font), state.text, line, x - TextLeft(state));
}

size_t LinesInSight(HWND edit) {
  const int32_t height = LineHeight(ControlContext(edit, State(edit).font));
  return size_t(std::max(1, HeightOf(SeenPart(edit)) / std::max(1, height)));
}

bool ScrollLines(HWND edit, int32_t lines) {
  EditState& state = State(edit);
  const ControlContext context(edit, state.font);
  const int32_t before = state.scrollY;
  state.scrollY = std::clamp(before + lines * LineHeight(context), 0, MostScrollY(edit, context));
  if (state.scrollY != before) InvalidateAll(edit);
  return state.scrollY != before;
}

// ---- Painting ----------------------------------------------------------------------------------------------------

namespace {

struct EditInk {
  COLORREF paper, text, marked, markedText;
  bool greyed;
};

EditInk InkOf(HWND edit, HDC context) {
  const bool greyed = Has(*edit, WS_DISABLED);
  const COLORREF paper = ::GetSysColor(greyed ? COLOR_BTNFACE : COLOR_WINDOW);
  const COLORREF marked = Legible(context, ::GetSysColor(kColourHighlight), paper);
  return {paper, Legible(context, RGB(0, 0, 0), paper), marked,
          Legible(context, ::GetSysColor(kColourHighlightText), marked), greyed};
}

struct LinePainter {
  HDC context;
  const EditState* state;
  EditInk ink;
  PixelRect part; // that is to be painted
  int32_t height;
};

// Of a line, the text between two places.
void DrawRun(const LinePainter& painter, const EditLine& line, size_t from, size_t to, int32_t top, bool marked) {
  const EditText& text = painter.state->text;
  const int32_t left = TextLeft(*painter.state);
  const int32_t x = left + XOf(painter.context, text, line, from);
  const std::string_view run = std::string_view(text.text).substr(from, to - from);
  if (painter.ink.greyed) return DrawLabel(painter.context, x, top, run, true, painter.ink.paper);
  const int32_t end = left + XOf(painter.context, text, line, to);
  if (marked) FillPixels(painter.context, {x, top, end, top + painter.height}, painter.ink.marked);
  ::SetTextColor(painter.context, marked ? painter.ink.markedText : painter.ink.text);
  ::TextOutA(painter.context, x, top, run.data(), int(run.size()));
}

// A line break that is selected is seen too.
void DrawMarkedBreak(const LinePainter& painter, const EditLine& line, int32_t top) {
  const EditText& text = painter.state->text;
  if (text.text.compare(line.to, 2, "\r\n") != 0) return;
  const int32_t end = TextLeft(*painter.state) + XOf(painter.context, text, line, line.to);
  FillPixels(painter.context, {end, top, end + painter.height / 3, top + painter.height}, painter.ink.marked);
}

// Only what can be seen: a line may be wider than a context reaches.
void DrawLine(const LinePainter& painter, const EditLine& line, int32_t top, EditRange marked) {
  const EditText& text = painter.state->text;
  const int32_t left = TextLeft(*painter.state);
  const size_t from = PlaceBefore(painter.context, text, line, painter.part.left - left);
  const size_t last = PlaceBefore(painter.context, text, line, painter.part.right - left);
  const size_t to = std::min(line.to, last + CharacterLength(text.text, last));
  const size_t markedFrom = std::clamp(marked.from, from, to), markedTo = std::clamp(marked.to, from, to);
  DrawRun(painter, line, from, markedFrom, top, false);
  DrawRun(painter, line, markedFrom, markedTo, top, true);
  DrawRun(painter, line, markedTo, to, top, false);
  if (!painter.ink.greyed && marked.from <= line.to && marked.to > line.to) DrawMarkedBreak(painter, line, top);
}

} // namespace

void PaintEdit(HWND edit) {
  const EditState& state = State(edit);
  const ControlPaint context(edit, state.font);
  const EditInk ink = InkOf(edit, context);
  FillPixels(context, ClientBounds(*edit), ink.paper);
  const PixelRect seen = SeenPart(edit);
  HRGN clip = ::CreateRectRgn(seen.left, seen.top, seen.right, seen.bottom);
  ::SelectClipRgn(context, clip);
  ::DeleteObject(clip);
  const bool focused = ::GetFocus() == edit;
  const EditRange none = {0, 0}, marked = focused ? SelectionOf(state.text) : none;
  const LinePainter painter = {context, &state, ink, Intersect(context.Part(), seen), LineHeight(context)};
  for (size_t line = 0; line < state.lines.size(); ++line) {
    const int32_t top = LineTop(edit, context, line);
    if (top >= painter.part.bottom || top + painter.height <= painter.part.top) continue;
    DrawLine(painter, state.lines[line], top, marked);
  }
  if (focused && state.caretLit) FillPixels(context, CaretPlace(edit, context), ink.text);
}

} // namespace framereel
