// TextPane: its text, its size by the text, its look.
#include "toolkit/controls/text_pane.h"

#include "core/memory.h"
#include "core/numbers.h"
#include "core/rects.h"
#include "core/strings.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "toolkit/text/text_layout.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr Scaled kFrame{2}; // on each side

struct TextPane {
  char* text; // owned
  bool framed;
};

ViewClass* textPaneClass;

TextPane* PaneOf(const View* view) {
  return static_cast<TextPane*>(view->classData);
}

void Init(View* view) {
  auto* pane = static_cast<TextPane*>(MemAlloc(sizeof(TextPane)));
  *pane = {StrDup(""), true};
  view->classData = pane;
}

void Destroy(View* view) {
  StrFree(PaneOf(view)->text);
  MemFree(view->classData);
  view->classData = nullptr;
}

void Draw(View* view) {
  const TextPane* pane = PaneOf(view);
  Rect where = ViewBounds(view);
  if (pane->framed) {
    UseDrawState(DrawStateDefault());
    FrameRect(where);
    where = RectGrow(where, -kFrame, -kFrame);
  }
  ViewMakeCurrent(view);
  DrawTextBlock(where, pane->text, TextAlign::kLeft, TextWrap::kByWord, false);
}

void SetSize(View* view, int16_t width, int16_t height) {
  const TextPane* pane = PaneOf(view);
  if (width == 0 || height == 0) {
    ViewMakeCurrent(view);
    const TextSize fitted = FittedTextSize(pane->text, TextAlign::kLeft, width, height);
    const int32_t frame = pane->framed ? 2 * kFrame : 0;
    width = PinToShort(fitted.width + frame);
    height = PinToShort(fitted.height + frame);
  }
  ViewInvalidate(view);
  view->width = width;
  view->height = height;
  ViewInvalidate(view);
}

} // namespace

const ViewClass* TextPaneClass() {
  return textPaneClass;
}

void TextPaneSetUpClass() {
  if (textPaneClass) return;
  textPaneClass = ClassNew();
  textPaneClass->init = Init;
  textPaneClass->destroy = Destroy;
  textPaneClass->draw = Draw;
  textPaneClass->setSize = SetSize;
}

void TextPaneSetText(View* view, const char* text) {
  StrFree(PaneOf(view)->text);
  PaneOf(view)->text = StrDup(text);
  ViewInvalidate(view);
}

const char* TextPaneText(const View* view) {
  return PaneOf(view)->text;
}

void TextPaneSetFramed(View* view, bool framed) {
  PaneOf(view)->framed = framed;
  SetSize(view, view->width, view->height);
}

} // namespace framereel
