// The messages of an edit field. Keys come in as text by EM_REPLACESEL alone, so that a Tab or a Return is text only
// where it is meant to be.
#include "platform/controls/edit_field.h"

#include "platform/controls/native_control.h"
#include "platform/input/key_events.h"
#include "platform/records/later_modules.h"
#include "platform/windows/active_window.h"
#include "platform/windows/child_window.h"
#include "win32/win32_controls.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

// What a message may have changed.
enum class Touches : uint8_t { kNothing, kCaret, kText };

struct FieldMessage {
  View* view;
  EditField* field;
  WPARAM wParam;
  LPARAM lParam;
  Touches touches;
  bool goesOn; // to the control
};

void EnterText(const FieldMessage& m, const char* text) {
  ::SendMessageA(m.field->control, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(text));
}

bool IsText(uint8_t character) {
  return character >= ' ' && character < kKeyDelete;
}

// True when the event goes no further, and neither do the others of its key.
bool EndsWith(const FieldMessage& m, const KeyEvent& event) {
  const uint8_t c = event.character;
  const bool ends = c == kKeyTab || c == kKeyEscape || (c == kKeyReturn && !m.field->multiLine);
  if (ends) EndEditSession(&event);
  return ends;
}

void EditKey(const FieldMessage& m) {
  KeyEvent events[2];
  const int count = TranslateKey(m.wParam, m.lParam, events);
  if (count == 1 && events[0].modifiers & kFlagMenuKey) {
    TheLaterModules().menuShortcut(events[0]);
    return;
  }
  for (int i = 0; i < count; ++i) {
    if (EndsWith(m, events[i])) return;
    const char text[] = {char(events[i].character), 0};
    if (events[i].character == kKeyReturn) EnterText(m, "\r\n");
    if (IsText(events[i].character)) EnterText(m, text);
  }
}

void OnPaint(FieldMessage* m) {
  m->field->painted = true;
  if (m->field->focusPending) ::SetFocus(m->field->control);
}

void OnSetFocus(FieldMessage* m) {
  m->field->focusPending = false;
  BeginEditSession(m->view);
}

void OnKillFocus(FieldMessage*) {
  EndEditSession(nullptr);
}

void OnButtonDown(FieldMessage* m) {
  if (!HasEditSession(m->view)) {
    EndEditSession(nullptr); // another field's
    if (m->view->window != ActiveWindow()) BringChildWindowForward(m->view->window);
  }
  m->touches = Touches::kCaret;
}

void OnButtonUp(FieldMessage* m) {
  m->touches = Touches::kCaret;
}

void OnKeyDown(FieldMessage* m) {
  switch (m->wParam) {
  case VK_BACK:
  case VK_CLEAR:
  case VK_DELETE:
    m->touches = Touches::kText;
    return;
  case VK_LEFT:
  case VK_UP:
  case VK_RIGHT:
  case VK_DOWN:
    m->touches = Touches::kCaret;
    return;
  default:
    EditKey(*m);
    m->touches = Touches::kText;
    m->goesOn = false;
  }
}

// The control deletes by this one, and takes none as text.
void OnChar(FieldMessage* m) {
  m->goesOn = m->wParam == VK_BACK;
  if (m->goesOn) m->touches = Touches::kText;
}

void OnSysKeyDown(FieldMessage* m) {
  KeyEvent events[2];
  const bool one = TranslateKey(m->wParam, m->lParam, events) == 1;
  if (one && events[0].modifiers & kFlagMenuKey) TheLaterModules().menuShortcut(events[0]);
  m->touches = Touches::kText;
  m->goesOn = false;
}

struct FieldRow {
  UINT message;
  void (*run)(FieldMessage* message);
};
constexpr FieldRow kRows[] = {
    {WM_PAINT, OnPaint},
    {WM_SETFOCUS, OnSetFocus},
    {WM_KILLFOCUS, OnKillFocus},
    {WM_LBUTTONDOWN, OnButtonDown},
    {WM_RBUTTONDOWN, OnButtonDown},
    {WM_MBUTTONDOWN, OnButtonDown},
    {WM_LBUTTONUP, OnButtonUp},
    {WM_RBUTTONUP, OnButtonUp},
    {WM_MBUTTONUP, OnButtonUp},
    {WM_KEYDOWN, OnKeyDown},
    {WM_CHAR, OnChar},
    {WM_SYSKEYDOWN, OnSysKeyDown},
};

LRESULT FieldProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
  View* view = ViewOfNativeControl(control);
  if (!view) return 0;
  auto* field = static_cast<EditField*>(view->classData);
  const WNDPROC earlier = field->procedure;
  FieldMessage m = {view, field, wParam, lParam, Touches::kNothing, true};
  for (const FieldRow& row : kRows) {
    if (row.message == message) row.run(&m);
  }
  const LRESULT answer = m.goesOn ? ::CallWindowProcA(earlier, control, message, wParam, lParam) : 0;
  const auto lives = [=] { return ViewOfNativeControl(control) == view; };
  if (m.touches == Touches::kText && lives()) CheckEditSize(view);
  if (m.touches != Touches::kNothing && lives()) CheckEditSelection(view);
  return answer;
}

} // namespace

void SubclassEditField(View* view) {
  auto* field = static_cast<EditField*>(view->classData);
  const auto ours = reinterpret_cast<LONG_PTR>(FieldProcedure);
  field->procedure = reinterpret_cast<WNDPROC>(::SetWindowLongPtrA(field->control, GWL_WNDPROC, ours));
}

} // namespace framereel
