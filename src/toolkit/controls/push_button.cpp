// PushButton: the View side of the platform's button. Its messages are filtered in platform/controls/push_button.h.
#include "toolkit/controls/push_button.h"

#include "core/memory.h"
#include "core/strings.h"
#include "platform/controls/native_control.h"
#include "platform/controls/push_button.h"
#include "platform/windows/child_window.h"
#include "toolkit/text/text_layout.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/pixels/scale.h"
#include "win32/win32_controls.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr Scaled kRoomAcross{19}, kRoomDown{9}; // round the title

struct PushButton {
  PushButtonCallback callback;
  char* title; // owned
  HWND control;
  WNDPROC procedure; // the control's own
};

ViewClass* pushButtonClass;

PushButton* ButtonOf(const View* view) {
  return static_cast<PushButton*>(view->classData);
}

HWND NativeHandle(const View* view) {
  return ButtonOf(view)->control;
}

WNDPROC NativeProcedure(const View* view) {
  return ButtonOf(view)->procedure;
}

void SetSize(View* view, int16_t width, int16_t height) {
  if (width == 0 || height == 0) {
    ViewMakeCurrent(view);
    const TextSize title = MeasureLines(ButtonOf(view)->title);
    if (width == 0) width = int16_t(title.width + kRoomAcross);
    if (height == 0) height = int16_t(title.height + kRoomDown);
  }
  SetNativeSize(view, NativeHandle(view), width, height, width, height);
}

void SetPosition(View* view, int16_t x, int16_t y) {
  SetNativePosition(view, NativeHandle(view), x, y, x, y);
}

void Init(View* view) {
  auto* button = static_cast<PushButton*>(MemAlloc(sizeof(PushButton)));
  *button = {};
  button->title = StrDup("");
  view->classData = button;
  const uint16_t id = ControlTableTake(&view->window->controls, view);
  button->control = CreateNativeControl(view, "button", WS_CHILD | BS_PUSHBUTTON, id);
  SubclassButton(view, &button->procedure);
  SetNativeFont(view, button->control, view->drawing, true);
  SetSize(view, 0, 0);
}

void Destroy(View* view) {
  DestroyNativeControl(view);
  StrFree(ButtonOf(view)->title);
  MemFree(view->classData);
  view->classData = nullptr;
}

void SetDrawing(View* view, DrawState* state) {
  SetNativeFont(view, NativeHandle(view), state, false);
}

void Notice(View* view, uint16_t) {
  if (const PushButtonCallback callback = ButtonOf(view)->callback) callback(view);
}

} // namespace

const ViewClass* PushButtonClass() {
  return pushButtonClass;
}

void PushButtonSetUpClass() {
  if (pushButtonClass) return;
  pushButtonClass = ClassNew();
  pushButtonClass->init = Init;
  pushButtonClass->destroy = Destroy;
  pushButtonClass->setDrawing = SetDrawing;
  pushButtonClass->setSize = SetSize;
  pushButtonClass->setPosition = SetPosition;
  pushButtonClass->hidden = [](View* view, bool) { ShowNativeControl(NativeHandle(view), false); };
  pushButtonClass->shown = [](View* view, bool) { ShowNativeControl(NativeHandle(view), true); };
  pushButtonClass->enabled = [](View* view) { ::EnableWindow(NativeHandle(view), TRUE); };
  pushButtonClass->disabled = [](View* view) { ::EnableWindow(NativeHandle(view), FALSE); };
  pushButtonClass->nativeNotice = Notice;
  pushButtonClass->nativeHandle = NativeHandle;
  pushButtonClass->nativeProcedure = NativeProcedure;
}

void PushButtonSetTitle(View* view, const char* title) {
  StrFree(ButtonOf(view)->title);
  ButtonOf(view)->title = StrDup(title);
  SetNativeText(NativeHandle(view), title);
}

void PushButtonSetDefault(View* view, bool isDefault) {
  ::SendMessageA(NativeHandle(view), BM_SETSTYLE, isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
}

void PushButtonSetCallback(View* view, PushButtonCallback callback) {
  ButtonOf(view)->callback = callback;
}

void PushButtonPress(View* view) {
  const PushButtonCallback callback = ButtonOf(view)->callback;
  if (callback && ViewIsEnabled(view)) callback(view);
}

} // namespace framereel
