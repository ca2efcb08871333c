// What the keyboard does in a dialog: IsDialogMessageA, the way of the focus, the default button.
#include "win32/dialogs/dialog_keys.h"

#include <algorithm>

#include "win32/dialogs/dialog_state.h"
#include "win32/drawing/mnemonics.h"
#include "win32/input/keyboard.h"
#include "win32/win32_controls.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/sending.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr LPARAM kIsRepeat = 1 << 30; // of a key message
constexpr LRESULT kButtonCodes = DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON;

LRESULT CodeOf(HWND control, const MSG* message) {
  const WPARAM key = message ? message->wParam : 0;
  return Send(control, WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(message));
}

// In the order in which they were made, which is that of Tab.
std::vector<HWND> ControlsOf(HWND dialog) {
  return {dialog->children.rbegin(), dialog->children.rend()};
}

bool CanHaveFocus(HWND control) {
  return Has(*control, WS_VISIBLE) && !Has(*control, WS_DISABLED) && !(CodeOf(control, nullptr) & DLGC_STATIC);
}

bool IsTabStop(HWND control) {
  return Has(*control, WS_TABSTOP) && CanHaveFocus(control);
}

// The control of the dialog that the window is, or is in; null for the dialog itself.
HWND ControlAround(HWND dialog, HWND window) {
  while (window && window->parent != dialog) window = window->parent;
  return window;
}

// The next of the controls behind `from` (null: from the first one on), or ahead of it, for which `is` holds; round the
// ends, and `from` itself as the last. Null for none.
template <typename Is> HWND NextControl(std::vector<HWND> controls, HWND from, bool back, const Is& is) {
  if (back) std::reverse(controls.begin(), controls.end());
  const auto at = std::find(controls.begin(), controls.end(), from);
  if (at != controls.end()) std::rotate(controls.begin(), at + 1, controls.end());
  const auto found = std::find_if(controls.begin(), controls.end(), is);
  return found == controls.end() ? nullptr : *found;
}

// The group that a control is in: from the last control with WS_GROUP up to the next one.
std::vector<HWND> GroupOf(HWND dialog, HWND control) {
  std::vector<HWND> group;
  for (HWND each : ControlsOf(dialog)) {
    if (Has(*each, WS_GROUP)) {
      if (std::find(group.begin(), group.end(), control) != group.end()) return group;
      group.clear();
    }
    group.push_back(each);
  }
  return group;
}

// ---- Commands ----------------------------------------------------------------------------------------------------

void Command(HWND dialog, int id) {
  HWND control = ::GetDlgItem(dialog, id);
  if (control && !IsEnabled(control)) {
    ::MessageBeep(0);
    return;
  }
  Send(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(control));
}

// Which button Return presses now.
int DefaultNow(HWND dialog) {
  HWND focus = ControlAround(dialog, ::GetFocus());
  if (focus && CodeOf(focus, nullptr) & kButtonCodes) return int(focus->id);
  const DialogState* state = DialogStateOf(dialog);
  return state ? state->defaultId : IDOK;
}

// Goes to the control that the letter picks, and presses it if it is a button. False when there is none.
bool Pick(HWND dialog, uint8_t letter) {
  const auto picks = [letter](HWND control) {
    const bool plain = Has(*control, SS_NOPREFIX) && CodeOf(control, nullptr) & DLGC_STATIC;
    const bool there = Has(*control, WS_VISIBLE) && !Has(*control, WS_DISABLED);
    return there && !plain && PicksText(MnemonicTextOf(control->title), letter);
  };
  const HWND focus = ControlAround(dialog, ::GetFocus());
  HWND picked = NextControl(ControlsOf(dialog), focus, false, picks);
  if (!picked) return false;
  const LRESULT code = CodeOf(picked, nullptr);
  if (code & DLGC_STATIC) picked = NextControl(ControlsOf(dialog), picked, false, IsTabStop);
  if (picked) FocusControl(picked);
  if (code & kButtonCodes && IsLive(picked)) Send(picked, BM_CLICK, 0, 0);
  return true;
}

// ---- Keys --------------------------------------------------------------------------------------------------------

void GoTo(HWND control) {
  if (control) FocusControl(control);
}

// What a key does in the dialog; false when it is the control's own.
bool OnKey(HWND dialog, const MSG& message) {
  const LRESULT code = CodeOf(message.hwnd, &message);
  const bool repeats = message.lParam & kIsRepeat;
  const HWND at = ControlAround(dialog, message.hwnd);
  if (code & DLGC_WANTALLKEYS) return false;
  switch (message.wParam) {
  case VK_TAB:
    GoTo(NextControl(ControlsOf(dialog), at, KeyIsDown(VK_SHIFT), IsTabStop));
    return true;
  case VK_LEFT:
  case VK_UP:
  case VK_RIGHT:
  case VK_DOWN: {
    if (code & DLGC_WANTARROWS) return false;
    const bool back = message.wParam == VK_LEFT || message.wParam == VK_UP;
    GoTo(NextControl(GroupOf(dialog, at), at, back, CanHaveFocus));
    return true;
  }
  // A key that is held on answers no question that it has brought up.
  case VK_RETURN:
    if (!repeats) Command(dialog, DefaultNow(dialog));
    return true;
  case VK_ESCAPE:
    if (!repeats) Command(dialog, IDCANCEL);
    return true;
  default:
    return false;
  }
}

bool IsLetter(WPARAM character) {
  return character > ' ' && character < 0x7F;
}

bool OnCharacter(HWND dialog, const MSG& message) {
  const LRESULT code = CodeOf(message.hwnd, &message);
  if (code & (DLGC_WANTCHARS | DLGC_WANTALLKEYS) || !IsLetter(message.wParam)) return false;
  return Pick(dialog, uint8_t(message.wParam));
}

bool ActsOn(HWND dialog, const MSG& message) {
  switch (message.message) {
  case WM_KEYDOWN:
    return OnKey(dialog, message);
  case WM_CHAR:
    return OnCharacter(dialog, message);
  case WM_SYSCHAR:
    return IsLetter(message.wParam) && !(message.lParam & kIsRepeat) && Pick(dialog, uint8_t(message.wParam));
  default:
    return false;
  }
}

} // namespace

HWND FirstTabStop(HWND dialog) {
  return NextControl(ControlsOf(dialog), nullptr, false, IsTabStop);
}

void FocusControl(HWND control) {
  const LRESULT code = CodeOf(control, nullptr);
  ::SetFocus(control);
  if (code & DLGC_HASSETSEL) ::SendMessageA(control, EM_SETSEL, 0, -1);
}

void FollowFocus(HWND dialog) {
  DialogState* state = DialogStateOf(dialog);
  if (!state) return;
  // The control that had it has been disabled.
  const bool lost = !::GetFocus() && TheWindows().active == dialog && IsEnabled(dialog);
  if (lost) GoTo(FirstTabStop(dialog));
  if (!IsLive(dialog)) return;
  const HWND focus = ControlAround(dialog, ::GetFocus());
  if (focus) state->focus = focus;
  const int wanted = DefaultNow(dialog);
  for (HWND control : ControlsOf(dialog)) {
    const LRESULT code = CodeOf(control, nullptr);
    const bool is = code & DLGC_DEFPUSHBUTTON, shall = control->id == wanted;
    if (code & kButtonCodes && is != shall) {
      ::SendMessageA(control, BM_SETSTYLE, shall ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
    }
  }
}

} // namespace framereel

using namespace framereel;

BOOL IsDialogMessageA(HWND dialog, MSG* message) {
  if (!IsLive(dialog) || !message || !IsLive(message->hwnd) || !IsWithin(message->hwnd, dialog)) return FALSE;
  if (!ActsOn(dialog, *message)) {
    ::TranslateMessage(message);
    ::DispatchMessageA(message);
  }
  if (IsLive(dialog)) FollowFocus(dialog);
  return TRUE;
}
