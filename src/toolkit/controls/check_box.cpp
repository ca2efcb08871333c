// CheckBox: its geometry, its look, and the press.
#include "toolkit/controls/check_box.h"

#include <algorithm>

#include "core/memory.h"
#include "core/rects.h"
#include "core/strings.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "toolkit/controls/sunken_edge.h"
#include "toolkit/text/text_layout.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr Scaled kBoxSize{16}, kBoxLeft{2}, kLabelGap{4}, kMargin{4};

struct CheckBox {
  char* label; // owned
  CheckBoxCallback callback;
  bool value;
  bool pressed;   // looks pressed: the mouse is down, and over it
  bool tracking;  // the mouse went down on it
  int16_t labelY; // below the View's top
};

ViewClass* checkBoxClass;

CheckBox* BoxOf(const View* view) {
  return static_cast<CheckBox*>(view->classData);
}

bool HasLabel(const CheckBox* box) {
  return *box->label;
}

// ---- Geometry ----------------------------------------------------------------------------------------------------

Rect BoxBounds(const View* view) {
  return RectOf(int16_t(view->x + kBoxLeft), int16_t(view->y + view->height / 2 - kBoxSize / 2), kBoxSize, kBoxSize);
}

TextSize LabelSize(View* view) {
  ViewMakeCurrent(view);
  return MeasureTextBlock(BoxOf(view)->label, TextAlign::kLeft, TextWrap::kNone, kWideOpen);
}

void SetSize(View* view, int16_t width, int16_t height) {
  CheckBox* box = BoxOf(view);
  const TextSize text = LabelSize(view);
  const bool labelled = HasLabel(box);
  if (width == 0) width = int16_t(kBoxSize + kMargin + (labelled ? text.width + kLabelGap : 0));
  if (height == 0) height = int16_t((labelled ? std::max<int>(kBoxSize, text.height) : int{kBoxSize}) + kMargin);
  box->labelY = int16_t((height - text.height) / 2);
  if (width == view->width && height == view->height) return;
  ViewInvalidate(view);
  view->width = width;
  view->height = height;
  ViewInvalidate(view);
}

// ---- Look --------------------------------------------------------------------------------------------------------

// Three thin lines thick.
void DrawTick(const Rect& r) {
  const int third = (r.right - r.left) / 3;
  for (int i = 0, lines = 3 * kThinLine; i < lines; ++i) {
    DrawLine(r.left, r.bottom - third - i, r.left + third, r.bottom - i);
    DrawLine(r.left + third, r.bottom - i, r.right, r.top + third - i);
  }
}

void DrawBox(View* view) {
  const CheckBox* box = BoxOf(view);
  Rect r = BoxBounds(view);
  DrawSunkenEdge(r);
  r = RectGrow(r, -2 * kThinLine, -2 * kThinLine);
  SetForeColour(box->pressed ? ColourFace() : PrimaryColour(7));
  FillRect(r);
  r = RectGrow(r, -kThinLine, -kThinLine);
  SetForeColour(PrimaryColour(0));
  if (box->value) DrawTick({r.top, r.left, int16_t(r.bottom - 1), int16_t(r.right - 1)});
}

void Draw(View* view) {
  const CheckBox* box = BoxOf(view);
  const Rect bounds = ViewBounds(view);
  if (HasLabel(box)) {
    const Rect where = {int16_t(bounds.top + box->labelY), int16_t(BoxBounds(view).right + kLabelGap), bounds.bottom,
                        bounds.right};
    DrawTextBlock(where, box->label, TextAlign::kLeft, TextWrap::kNone, !ViewIsEnabled(view));
  }
  DrawBox(view);
}

// At once, without waiting for a paint.
void ShowPressed(View* view, bool pressed) {
  BoxOf(view)->pressed = pressed;
  ViewMakeCurrent(view);
  DrawBox(view);
}

// ---- The other operations ----------------------------------------------------------------------------------------

void Init(View* view) {
  auto* box = static_cast<CheckBox*>(MemAlloc(sizeof(CheckBox)));
  *box = {};
  box->label = StrDup("");
  view->classData = box;
  SetSize(view, 0, 0);
}

void Destroy(View* view) {
  StrFree(BoxOf(view)->label);
  MemFree(view->classData);
  view->classData = nullptr;
}

void MouseDown(View* view, uint16_t, int16_t, int16_t) {
  if (!ViewIsEnabled(view)) return;
  BoxOf(view)->tracking = true;
  ShowPressed(view, true);
}

void MouseMoved(View* view, int16_t x, int16_t y) {
  const CheckBox* box = BoxOf(view);
  if (!box->tracking || !ViewIsEnabled(view)) return;
  const bool over = ViewHitTest(view, x, y);
  if (over != box->pressed) ShowPressed(view, over);
}

void MouseUp(View* view, uint16_t, int16_t, int16_t) {
  CheckBox* box = BoxOf(view);
  const bool flips = box->pressed && ViewIsEnabled(view);
  box->tracking = box->pressed = false;
  if (flips) box->value = !box->value;
  ViewMakeCurrent(view);
  DrawBox(view);
  if (flips && box->callback) box->callback(view, box->value);
}

} // namespace

const ViewClass* CheckBoxClass() {
  return checkBoxClass;
}

void CheckBoxSetUpClass() {
  if (checkBoxClass) return;
  checkBoxClass = ClassNew();
  checkBoxClass->init = Init;
  checkBoxClass->destroy = Destroy;
  checkBoxClass->draw = Draw;
  checkBoxClass->mouseDown = MouseDown;
  checkBoxClass->mouseMoved = MouseMoved;
  checkBoxClass->mouseUp = MouseUp;
  checkBoxClass->setSize = SetSize;
  checkBoxClass->enabled = checkBoxClass->disabled = ViewInvalidate;
}

void CheckBoxSetLabel(View* view, const char* label) {
  StrFree(BoxOf(view)->label);
  BoxOf(view)->label = StrDup(label);
  ViewInvalidate(view);
}

void CheckBoxSetValue(View* view, bool value, bool notify) {
  CheckBox* box = BoxOf(view);
  if (box->value == value) return;
  box->value = value;
  ViewInvalidate(view);
  if (notify && box->callback) box->callback(view, value);
}

bool CheckBoxValue(const View* view) {
  return BoxOf(view)->value;
}

void CheckBoxSetCallback(View* view, CheckBoxCallback callback) {
  BoxOf(view)->callback = callback;
}

} // namespace framereel
