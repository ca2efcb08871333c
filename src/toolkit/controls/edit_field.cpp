// EditField: its size by its text, its edge, and the control inside.
#include "toolkit/controls/edit_field.h"

#include "core/memory.h"
#include "core/numbers.h"
#include "core/rects.h"
#include "core/strings.h"
#include "platform/controls/edit_field.h"
#include "platform/controls/native_control.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/windows/child_window.h"
#include "toolkit/controls/sunken_edge.h"
#include "toolkit/text/text_layout.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/pixels/scale.h"
#include "win32/win32_controls.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr Scaled kRoomAcross{7}, kRoomDown{6}; // round the text
constexpr LONG kEndless = 32767;               // a side of the place for text that lets it run on

ViewClass* editFieldClass;

EditField* FieldOf(const View* view) {
  return static_cast<EditField*>(view->classData);
}

HWND NativeHandle(const View* view) {
  return FieldOf(view)->control;
}

// On each side; a white line lies between edge and control.
int Edge() {
  return 2 * kThinLine;
}
int Rim() {
  return 3 * kThinLine;
}

void NaturalSize(const View* view, int16_t* width, int16_t* height) {
  const EditField* field = FieldOf(view);
  const TextSize text =
      field->multiLine ? FittedTextSize(field->text, TextAlign::kLeft, 0, 0) : MeasureLines(field->text);
  *width = PinToShort(text.width + kRoomAcross);
  *height = PinToShort(text.height + kRoomDown);
}

// One line runs on to the right, several run on downwards.
void SetFormat(const View* view) {
  const bool lines = FieldOf(view)->multiLine;
  RECT format = {0, 0, lines ? LONG{view->width} : kEndless, lines ? kEndless : LONG{view->height}};
  ::SendMessageA(NativeHandle(view), EM_SETRECTNP, 0, reinterpret_cast<LPARAM>(&format));
}

void SetSize(View* view, int16_t width, int16_t height) {
  if (width == 0 || height == 0) {
    int16_t naturalWidth, naturalHeight;
    ViewMakeCurrent(view);
    NaturalSize(view, &naturalWidth, &naturalHeight);
    if (width == 0) width = naturalWidth;
    if (height == 0) height = naturalHeight;
  }
  SetNativeSize(view, NativeHandle(view), int16_t(width - 2 * Rim()), int16_t(height - 2 * Rim()), width, height);
  SetFormat(view);
}

void SetPosition(View* view, int16_t x, int16_t y) {
  SetNativePosition(view, NativeHandle(view), int16_t(x + Rim()), int16_t(y + Rim()), x, y);
  SetFormat(view);
}

void Init(View* view) {
  auto* field = static_cast<EditField*>(MemAlloc(sizeof(EditField)));
  *field = {};
  field->text = StrDup("");
  field->bevel = true;
  field->naturalSize = NaturalSize;
  view->classData = field;
  const uint16_t id = ControlTableTake(&view->window->controls, view);
  field->control = CreateNativeControl(view, "edit", WS_CHILD | ES_MULTILINE, id);
  SubclassEditField(view);
  SetNativeFont(view, field->control, view->drawing, true);
  SetSize(view, 0, 0);
  SetPosition(view, view->x, view->y);
}

void Destroy(View* view) {
  DropEditSession(view);
  DestroyNativeControl(view);
  StrFree(FieldOf(view)->text);
  MemFree(view->classData);
  view->classData = nullptr;
}

void Draw(View* view) {
  const Rect r = ViewBounds(view);
  if (FieldOf(view)->bevel) DrawSunkenEdge(r);
  UseDrawState(DrawStateFill());
  SetForeColour(PrimaryColour(7));
  FrameRect(RectGrow(r, -Edge(), -Edge()));
}

void MouseDown(View* view, uint16_t, int16_t x, int16_t y) {
  if (HasEditSession(view) && !ViewHitTest(view, x, y)) EndEditSession(nullptr);
}

} // namespace

const ViewClass* EditFieldClass() {
  return editFieldClass;
}

void EditFieldSetUpClass() {
  if (editFieldClass) return;
  editFieldClass = ClassNew();
  editFieldClass->init = Init;
  editFieldClass->destroy = Destroy;
  editFieldClass->setDrawing = [](View* view, DrawState* state) {
    SetNativeFont(view, NativeHandle(view), state, false);
  };
  editFieldClass->draw = Draw;
  editFieldClass->mouseDown = MouseDown;
  editFieldClass->setSize = SetSize;
  editFieldClass->setPosition = SetPosition;
  editFieldClass->hidden = [](View* view, bool) { ShowNativeControl(NativeHandle(view), false); };
  editFieldClass->shown = [](View* view, bool) { ShowNativeControl(NativeHandle(view), true); };
  editFieldClass->enabled = [](View* view) { ::EnableWindow(NativeHandle(view), TRUE); };
  editFieldClass->disabled = [](View* view) { ::EnableWindow(NativeHandle(view), FALSE); };
  editFieldClass->nativeNotice = [](View*, uint16_t) {};
  editFieldClass->nativeHandle = NativeHandle;
}

void EditFieldSetText(View* view, const char* text) {
  StrFree(FieldOf(view)->text);
  FieldOf(view)->text = StrDup(text);
  SetNativeText(NativeHandle(view), text);
  ViewInvalidateRect(view, RectGrow(ViewBounds(view), 1, 1));
}

const char* EditFieldText(View* view) {
  FetchEditText(view);
  return FieldOf(view)->text;
}

void EditFieldSetFunctions(View* view, void (*started)(View* view), void (*finished)(View* view, const KeyEvent* event),
                           void (*requestSize)(View* view, int16_t width, int16_t height)) {
  FieldOf(view)->started = started;
  FieldOf(view)->finished = finished;
  FieldOf(view)->requestSize = requestSize;
}

} // namespace framereel
