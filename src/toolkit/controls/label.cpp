// Label: its content and its look.
#include "toolkit/controls/label.h"

#include "core/memory.h"
#include "core/rects.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "toolkit/controls/text_item.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr Scaled kFrame{2}; // on each side

struct Label {
  TextItem content;
  bool framed;
  int16_t naturalWidth, naturalHeight; // of the content
};

ViewClass* labelClass;

Label* LabelOf(const View* view) {
  return static_cast<Label*>(view->classData);
}

void Measure(View* view) {
  Label* label = LabelOf(view);
  MeasureTextItem(view, &label->content, &label->naturalWidth, &label->naturalHeight);
}

void SetSize(View* view, int16_t width, int16_t height) {
  const Label* label = LabelOf(view);
  const int frame = label->framed ? 2 * kFrame : 0;
  ViewInvalidate(view);
  view->width = width ? width : int16_t(label->naturalWidth + frame);
  view->height = height ? height : int16_t(label->naturalHeight + frame);
  ViewInvalidate(view);
}

void Init(View* view) {
  auto* label = static_cast<Label*>(MemAlloc(sizeof(Label)));
  *label = {NewTextItem(nullptr), true, 0, 0};
  view->classData = label;
  Measure(view);
  SetSize(view, 0, 0);
}

void Destroy(View* view) {
  FreeTextItem(&LabelOf(view)->content);
  MemFree(view->classData);
  view->classData = nullptr;
}

void SetDrawing(View* view, DrawState* state) {
  view->drawing = state;
  Measure(view);
  ViewInvalidate(view);
}

void Draw(View* view) {
  const Label* label = LabelOf(view);
  Rect cell = ViewBounds(view);
  if (label->framed) {
    UseDrawState(DrawStateDefault());
    FrameRect(cell);
    cell = RectGrow(cell, -kFrame, -kFrame);
  }
  const SavedClip clip = NarrowClip(cell.left, cell.top, cell.right, cell.bottom);
  DrawTextItem(view, label->content, cell, cell, false);
  RestoreClip(clip);
}

} // namespace

const ViewClass* LabelClass() {
  return labelClass;
}

void LabelSetUpClass() {
  if (labelClass) return;
  labelClass = ClassNew();
  labelClass->init = Init;
  labelClass->destroy = Destroy;
  labelClass->setDrawing = SetDrawing;
  labelClass->draw = Draw;
  labelClass->setSize = SetSize;
  labelClass->enabled = labelClass->disabled = ViewInvalidate;
}

void LabelSetValue(View* view, const char* text) {
  Label* label = LabelOf(view);
  FreeTextItem(&label->content);
  label->content = NewTextItem(text);
  Measure(view);
  ViewInvalidate(view);
}

void LabelSetFramed(View* view, bool framed) {
  LabelOf(view)->framed = framed;
  SetSize(view, view->width, view->height);
}

} // namespace framereel
