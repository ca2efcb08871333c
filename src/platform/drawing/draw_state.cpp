// DrawStates, and what of the one in use is selected into the current context.
#include "platform/drawing/draw_state.h"

#include "core/list.h"
#include "core/memory.h"
#include "platform/drawing/current_port.h"
#include "platform/drawing/font_cache.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

constexpr uint16_t kDefaultFontSize = 15;

struct DrawingState {
  List* states; // all that exist
  DrawState* current;
  HGDIOBJ homePen, homeBrush; // what the context held before the first selection since the last release
  bool ropChanged;
  int savedRop;
};

DrawingState drawing;

// Selects an object, by way of the one that the context held at first.
void SelectFromHome(HDC context, HGDIOBJ* home, HGDIOBJ object) {
  if (*home) ::SelectObject(context, *home);
  const HGDIOBJ before = ::SelectObject(context, object);
  if (!*home) *home = before;
}

void SelectPenAndBrush(const DrawState* state) {
  const HDC context = CurrentContext();
  SelectFromHome(context, &drawing.homePen, state->pen);
  SelectFromHome(context, &drawing.homeBrush, state->brush);
}

void ApplyPenMode(uint8_t mode) {
  const HDC context = CurrentContext();
  if (!drawing.ropChanged && mode == kPenCopy) return;
  if (!drawing.ropChanged) {
    drawing.savedRop = ::GetROP2(context);
    drawing.ropChanged = true;
  }
  ::SetROP2(context, mode == kPenInvert ? R2_NOTXORPEN : R2_COPYPEN);
}

// The bitmap resource of a pattern; 0 is none.
WORD PatternResource(uint32_t pattern) {
  if (pattern == 0) return 0;
  if (pattern <= 45) return WORD(256 + pattern);
  if (pattern <= 50) return 302;
  return WORD(pattern + 78);
}

// A brush for the pattern in the state's colour; null when there is no bitmap for it.
HBRUSH NewBrush(const DrawState* state) {
  if (state->pattern == kPatternSolid || state->pattern > 90) return ::CreateSolidBrush(state->foreRef);
  HBITMAP bitmap = ::LoadBitmapA(nullptr, MAKEINTRESOURCEA(PatternResource(state->pattern)));
  if (!bitmap) return nullptr;
  HBRUSH brush = ::CreatePatternBrush(bitmap);
  ::DeleteObject(bitmap);
  return brush;
}

void MakeBrush(DrawState* state) {
  HBRUSH brush = NewBrush(state);
  if (!brush) return;
  const HBRUSH before = state->brush;
  state->brush = brush;
  if (state == drawing.current) SelectPenAndBrush(state);
  ::DeleteObject(before);
}

void MakePen(DrawState* state) {
  HPEN pen = ::CreatePen(PS_SOLID, state->penWidth, state->foreRef);
  if (!pen) return;
  const HPEN before = state->pen;
  state->pen = pen;
  if (state == drawing.current) SelectPenAndBrush(state);
  ::DeleteObject(before);
}

// Takes the place of the state's font; null changes nothing. The new font brings a reference of its own.
void TakeFont(DrawState* state, Font* font) {
  if (!font) return;
  DeselectFont(CurrentContext());
  ReleaseFont(state->font);
  state->font = font;
  SelectFont(CurrentContext(), font);
}

} // namespace

void DrawingStartUp() {
  drawing = {};
  drawing.states = ListNew();
  FontsStartUp();
}

void DrawingShutDown() {
  ListDrain(drawing.states, [](ListValue value) {
    auto* state = FromListValue<DrawState>(value);
    ::DeleteObject(state->pen);
    ::DeleteObject(state->brush);
    MemFree(state);
  });
  ListDelete(drawing.states);
  drawing = {};
  FontsShutDown();
}

COLORREF ColourRef(const Colour& colour) {
  const auto narrow = [](uint16_t v) { return BYTE((v - (v >> 8)) >> 8); };
  return RGB(narrow(colour.red), narrow(colour.green), narrow(colour.blue));
}

DrawState* NewDrawState() {
  auto* state = static_cast<DrawState*>(MemAlloc(sizeof(DrawState)));
  if (!state) return nullptr;
  *state = {};
  state->font = GetFont(GetFontFamily(nullptr), kDefaultFontSize, kFontBold, 1.0);
  state->background = {0xFFFF, 0xFFFF, 0xFFFF};
  state->penMode = kPenCopy;
  state->penWidth = 1;
  state->pattern = kPatternSolid;
  state->foreRef = ColourRef(state->foreground);
  state->backRef = ColourRef(state->background);
  MakePen(state);
  MakeBrush(state);
  ListAppend(drawing.states, ToListValue(state));
  return state;
}

void UseDrawState(DrawState* state) {
  if (!state) return;
  const HDC context = CurrentContext();
  SelectFont(context, state->font);
  ::SetTextAlign(context, TA_BASELINE);
  ::SetBkMode(context, TRANSPARENT);
  drawing.current = state;
  ApplyPenMode(state->penMode);
  ::SetTextColor(context, state->foreRef);
  ::SetBkColor(context, state->backRef);
  SelectPenAndBrush(state);
}

DrawState* CurrentDrawState() {
  return drawing.current;
}

void SetForeColour(const Colour& colour) {
  DrawState* state = drawing.current;
  if (!state) return;
  state->foreground = colour;
  state->foreRef = ColourRef(colour);
  MakePen(state);
  ::SetTextColor(CurrentContext(), state->foreRef);
  MakeBrush(state);
}

void SetBackColour(const Colour& colour) {
  DrawState* state = drawing.current;
  if (!state) return;
  state->background = colour;
  state->backRef = ColourRef(colour);
  ::SetBkColor(CurrentContext(), state->backRef);
  MakeBrush(state);
}

void SetPattern(uint32_t pattern) {
  if (!drawing.current) return;
  drawing.current->pattern = pattern;
  MakeBrush(drawing.current);
}

void SetPenMode(uint8_t mode) {
  if (!drawing.current) return;
  drawing.current->penMode = mode;
  ApplyPenMode(mode);
}

void SetFontFamily(FontFamily* family) {
  DrawState* state = drawing.current;
  if (!state || !family || !state->font) return;
  TakeFont(state, GetFont(family, state->font->size, state->font->style, state->font->scale));
}

void SetFontSize(uint16_t size) {
  DrawState* state = drawing.current;
  if (!state || !state->font) return;
  TakeFont(state, GetFont(state->font->family, size, state->font->style, state->font->scale));
}

void LeaveDrawState(HDC context) {
  ::SelectObject(context, drawing.homeBrush ? drawing.homeBrush : ::GetStockObject(BLACK_BRUSH));
  ::SelectObject(context, drawing.homePen ? drawing.homePen : ::GetStockObject(BLACK_PEN));
  drawing.homeBrush = drawing.homePen = nullptr;
  drawing.current = nullptr;
  if (drawing.ropChanged) ::SetROP2(context, drawing.savedRop);
  drawing.ropChanged = false;
}

} // namespace framereel
