// The session of the one field that has the keyboard: its beginning, its commands and its end.
#include "platform/controls/edit_session.h"

#include "core/strings.h"
#include "platform/controls/native_control.h"
#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_blocking.h"
#include "platform/records/later_modules.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"
#include "platform/windows/modal.h"
#include "win32/win32_controls.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr int kSlack = 20; // pixels by which a text may fall short of its View

struct Refresh {
  RefreshFunction function;
  void* argument;
};

struct EditSession {
  bool active;
  View* view;
  bool hasSelection; // there is something to cut and to copy
  bool canPaste;     // the clipboard holds text
  EditTarget savedTarget;
  Refresh savedRefresh;
  decltype(WindowMethods::menuCommand) savedMenuCommand;
};

EditSession session;
Refresh refresh;

EditField* FieldOf(const View* view) {
  return static_cast<EditField*>(view->classData);
}

// ---- The Edit menu -----------------------------------------------------------------------------------------------

bool ClipboardHasText() {
  if (!::OpenClipboard(TheMainWindow()->window)) return false;
  const bool has = ::IsClipboardFormatAvailable(CF_TEXT);
  ::CloseClipboard();
  return has;
}

void ShowEditItems() {
  uint16_t mask = session.canPaste ? kEditPaste : 0;
  if (session.hasSelection) mask |= kEditCut | kEditCopy;
  SetEditEnabled(mask);
}

void RefreshSession(void*) {
  session.canPaste = ClipboardHasText();
  ShowEditItems();
}

void OnEditCommand(void* data, uint16_t code) {
  auto* view = static_cast<View*>(data);
  const UINT message = code == kEditCut ? WM_CUT : code == kEditCopy ? WM_COPY : code == kEditPaste ? WM_PASTE : 0;
  if (!message) return;
  TheViewCalls().makeCurrent(view);
  ::SendMessageA(FieldOf(view)->control, message, 0, 0);
  CheckEditSelection(view);
  SetRefreshFunction(refresh.function, refresh.argument);
  CheckEditSize(view);
}

// The window's MenuCommand while a session runs.
void OnMenuCommand(ChildWindow*, MenuItem* item) {
  if (!IsEditItem(item)) EndEditSession(nullptr);
}

bool IsEditedThere(const ChildWindow* window, int16_t x, int16_t y) {
  const View* view = session.view;
  return session.active && view->window == window && TheViewCalls().hitTest(view, x, y);
}

} // namespace

// ---- Its life ----------------------------------------------------------------------------------------------------

void BeginEditSession(View* view) {
  if (session.active) return;
  session = {};
  session.active = true;
  session.view = view;
  const EditTarget target = {OnEditCommand, view};
  SetEditTarget(&target, &session.savedTarget);
  session.savedRefresh = refresh;
  SetRefreshFunction(RefreshSession, nullptr);
  session.savedMenuCommand = view->window->methods.menuCommand;
  SetWindowMethod(view->window, &WindowMethods::menuCommand, OnMenuCommand);
  TheViewCalls().makeCurrent(view);
  if (FieldOf(view)->started) FieldOf(view)->started(view);
}

void EndEditSession(const KeyEvent* event) {
  if (!session.active) return;
  // First of all: the focus that goes comes back here.
  session.active = false;
  const EditSession ended = session;
  View* view = ended.view;
  ::SetFocus(nullptr);
  ::SetFocus(ModalIsBlocking() ? view->window->window : TheMainWindow()->window);
  SetEditEnabled(0);
  SetEditTarget(&ended.savedTarget, nullptr);
  SetRefreshFunction(ended.savedRefresh.function, ended.savedRefresh.argument);
  SetWindowMethod(view->window, &WindowMethods::menuCommand, ended.savedMenuCommand);
  if (!ModalIsBlocking()) BlockMenus(false);
  if (FieldOf(view)->finished) FieldOf(view)->finished(view, event);
}

void DropEditSession(View* view) {
  if (!HasEditSession(view)) return;
  FieldOf(view)->finished = nullptr;
  EndEditSession(nullptr);
}

bool HasEditSession(const View* view) {
  return session.active && session.view == view;
}

void FocusEditField(View* view) {
  if (HasEditSession(view)) return;
  EndEditSession(nullptr);
  EditField* field = FieldOf(view);
  if (field->painted) {
    ::SetFocus(field->control);
  } else {
    field->focusPending = true;
  }
  ::SendMessageA(field->control, EM_SETSEL, 0, -1);
  CheckEditSelection(view);
}

// ---- Its text ----------------------------------------------------------------------------------------------------

void FetchEditText(View* view) {
  EditField* field = FieldOf(view);
  StrFree(field->text);
  field->text = NativeText(field->control);
}

void CheckEditSize(View* view) {
  const EditField* field = FieldOf(view);
  const int16_t before = view->width, height = view->height;
  TheViewCalls().makeCurrent(view);
  FetchEditText(view);
  if (!field->naturalSize || !field->requestSize) return;
  int16_t width = 0, any = 0;
  field->naturalSize(view, &width, &any);
  if (width > before || width < before - kSlack) field->requestSize(view, width, height);
}

void CheckEditSelection(View* view) {
  if (!HasEditSession(view)) return;
  DWORD from = 0, to = 0;
  ::SendMessageA(FieldOf(view)->control, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  if (session.hasSelection == (from < to)) return;
  session.hasSelection = from < to;
  ShowEditItems();
}

void SetRefreshFunction(RefreshFunction function, void* argument) {
  refresh = {function, argument};
  if (function) function(argument);
}

void EditSessionStartUp() {
  session = {};
  refresh = {};
  TheLaterModules().endEditSession = EndEditSession;
  TheLaterModules().isEditedThere = IsEditedThere;
}

} // namespace framereel
