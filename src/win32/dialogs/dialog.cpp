// Dialogs as windows: the procedure of their class, their life from the plan to EndDialog.
#include "win32/dialogs/dialog.h"

#include <algorithm>

#include "win32/controls/control_base.h"
#include "win32/dialogs/dialog_keys.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_controls.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/activation.h"
#include "win32/windows/frame.h"
#include "win32/windows/placement.h"
#include "win32/windows/screen_room.h"
#include "win32/windows/sending.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr uint32_t kNapMs = 10;         // between looks at the queue while nothing happens
constexpr int32_t kMessagesToIdle = 64; // under a stream of messages the owner is told at each of so many
constexpr intptr_t kEndedByItself = -1;

// ---- The procedure -----------------------------------------------------------------------------------------------

LRESULT OnActivate(HWND dialog, WPARAM wParam, LPARAM) {
  DialogState* state = DialogStateOf(dialog);
  if (!LOWORD(wParam) || dialog->minimised) return 0;
  const bool known = IsLive(state->focus) && IsWithin(state->focus, dialog) && IsEnabled(state->focus);
  HWND first = known ? state->focus : FirstTabStop(dialog);
  ::SetFocus(first ? first : dialog);
  if (IsLive(dialog)) FollowFocus(dialog);
  return 0;
}

// The close box is the Cancel button, where there is one that can be pressed.
LRESULT OnClose(HWND dialog, WPARAM, LPARAM) {
  HWND cancel = ::GetDlgItem(dialog, IDCANCEL);
  if (cancel && !IsEnabled(cancel)) return ::MessageBeep(0);
  return Send(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), reinterpret_cast<LPARAM>(cancel));
}

constexpr MessageHandler kHandlers[] = {
    {WM_ACTIVATE, OnActivate},
    {WM_CLOSE, OnClose},
};

} // namespace

LRESULT DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const DialogState* state = DialogStateOf(window);
  if (state && state->procedure) {
    const intptr_t answer = state->procedure(window, message, wParam, lParam);
    if (answer) return message == WM_INITDIALOG ? answer : 0;
  }
  return state ? HandleControlMessage(kHandlers, window, message, wParam, lParam)
               : ::DefWindowProcA(window, message, wParam, lParam);
}

// ---- Making ------------------------------------------------------------------------------------------------------

namespace {

// Where the whole window stands, brought into the room on the monitor of its owner.
PixelRect PlaceOf(const DialogPlan& plan, HWND dialog) {
  const PixelRect none = {0, 0, 0, 0}, inside = ClientInside(*dialog, none);
  const int32_t width = plan.width + inside.left - inside.right, height = plan.height + inside.top - inside.bottom;
  const HWND owner = dialog->owner;
  const PixelRect room = RoomAround(owner ? PlaceOnScreen(*owner) : none);
  const PixelRect from = owner ? ClientOnScreen(*owner) : room;
  int32_t left = from.left + plan.x - inside.left, top = from.top + plan.y - inside.top;
  if (plan.centred) {
    left = (room.left + room.right - width) / 2;
    top = room.top + (HeightOf(room) - height) / 3;
  }
  left = Within(left, width, room.left, room.right);
  top = Within(top, height, room.top, room.bottom);
  return {left, top, left + width, top + height};
}

bool MakeControls(HWND dialog, const DialogPlan& plan) {
  for (const DialogPlan::Control& control : plan.controls) {
    const PixelRect& r = control.place;
    HWND made =
        ::CreateWindowExA(0, control.className.c_str(), control.text.c_str(), control.style, r.left, r.top, WidthOf(r),
                          HeightOf(r), dialog, reinterpret_cast<HMENU>(intptr_t{control.id}), nullptr, nullptr);
    if (!made) return false;
    ::SendMessageA(made, WM_SETFONT, reinterpret_cast<WPARAM>(plan.font.get()), FALSE);
  }
  return true;
}

int DefaultIdOf(const DialogPlan& plan) {
  for (const DialogPlan::Control& control : plan.controls) {
    if (control.className == "button" && control.style & BS_DEFPUSHBUTTON) return control.id;
  }
  return 0;
}

// Hidden, and without its procedure, which hears of it with WM_INITDIALOG. Null when there is no window to be had.
HWND Make(DialogPlan* plan, HWND owner) {
  const DWORD topmost = owner ? owner->extendedStyle & WS_EX_TOPMOST : 0; // to stand above it
  HWND dialog = ::CreateWindowExA(topmost, kDialogClass, plan->title.c_str(), plan->style | WS_CLIPCHILDREN, 0, 0, 0, 0,
                                  owner, nullptr, nullptr, nullptr);
  if (!dialog) return nullptr;
  dialog->control = std::make_shared<DialogState>();
  DialogStateOf(dialog)->result = kEndedByItself;
  DialogStateOf(dialog)->defaultId = DefaultIdOf(*plan);
  const PixelRect place = PlaceOf(*plan, dialog);
  ::MoveWindow(dialog, place.left, place.top, WidthOf(place), HeightOf(place), FALSE);
  const bool made = MakeControls(dialog, *plan);
  DialogStateOf(dialog)->font = std::move(plan->font);
  if (made) return dialog;
  ::DestroyWindow(dialog);
  return nullptr;
}

// ---- The loop ----------------------------------------------------------------------------------------------------

std::vector<HWND> Disable(const std::vector<HWND>& windows) {
  std::vector<HWND> disabled;
  for (HWND window : windows) {
    if (IsLive(window) && !::EnableWindow(window, FALSE)) disabled.push_back(window);
  }
  return disabled;
}

void Enable(const std::vector<HWND>& windows) {
  for (HWND window : windows) ::EnableWindow(window, TRUE);
}

void Open(HWND dialog, DLGPROC procedure, LPARAM parameter) {
  DialogState* state = DialogStateOf(dialog);
  state->procedure = procedure;
  state->focus = FirstTabStop(dialog);
  Send(dialog, WM_INITDIALOG, reinterpret_cast<WPARAM>(state->focus), parameter);
  if (!IsLive(dialog) || state->ended) return;
  if (IsLive(state->focus)) ::SendMessageA(state->focus, EM_SETSEL, 0, -1);
  FollowFocus(dialog);
  ::ShowWindow(dialog, SW_SHOWNORMAL);
}

// Something that a timer has brought up and that has gone again may have enabled them and have one of them active.
void KeepDisabled(HWND dialog, const std::vector<HWND>& disabled) {
  if (Disable(disabled).empty() || !IsLive(dialog)) return;
  Activate(dialog, false);
}

void TellIdle(HWND dialog, HWND owner) {
  if (IsLive(owner)) Send(owner, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(dialog));
}

// `state` outlives the window.
void Loop(HWND dialog, HWND owner, const std::vector<HWND>& disabled, const DialogState& state) {
  int32_t messages = 0;
  while (IsLive(dialog) && !state.ended && !DisplayIsLost()) {
    KeepDisabled(dialog, disabled);
    MSG message;
    if (!::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
      TellIdle(dialog, owner);
      DisplaySleep(kNapMs);
      continue;
    }
    if (message.message == WM_QUIT) return ::PostQuitMessage(int(message.wParam));
    if (!::IsDialogMessageA(dialog, &message)) {
      ::TranslateMessage(&message);
      ::DispatchMessageA(&message);
    }
    if (++messages % kMessagesToIdle == 0 && IsLive(dialog)) TellIdle(dialog, owner);
  }
}

} // namespace

intptr_t RunDialog(DialogPlan plan, HWND owner, const std::vector<HWND>& disabled, DLGPROC procedure,
                   LPARAM parameter) {
  CancelMenu();
  if (IsLive(owner) && DialogStateOf(owner)) FollowFocus(owner); // to which the keyboard comes back
  HWND dialog = Make(&plan, IsLive(owner) ? owner : nullptr);
  if (!dialog) return kEndedByItself;
  const std::shared_ptr<void> kept = dialog->control;
  const auto& state = *static_cast<const DialogState*>(kept.get());
  const std::vector<HWND> waiting = Disable(disabled);
  Open(dialog, procedure, parameter);
  Loop(dialog, owner, disabled, state);
  // In this order: its place is taken by a window that may be active.
  Enable(waiting);
  if (IsLive(dialog)) ::DestroyWindow(dialog);
  if (!TheWindows().active && IsLive(owner) && TheWindows().hasKeyboard) Activate(owner, false);
  return state.result;
}

} // namespace framereel

using namespace framereel;

BOOL EndDialog(HWND dialog, intptr_t result) {
  DialogState* state = DialogStateOf(dialog);
  if (!state || state->ended) return FALSE;
  state->ended = true;
  state->result = result;
  return TRUE;
}

HWND GetDlgItem(HWND dialog, int id) {
  if (!IsLive(dialog)) return nullptr;
  const auto found =
      std::find_if(dialog->children.begin(), dialog->children.end(), [=](HWND child) { return child->id == id; });
  return found == dialog->children.end() ? nullptr : *found;
}

BOOL SetDlgItemTextA(HWND dialog, int id, const char* text) {
  return ::SetWindowTextA(::GetDlgItem(dialog, id), text);
}

UINT GetDlgItemTextA(HWND dialog, int id, char* buffer, int bufferSize) {
  return UINT(::GetWindowTextA(::GetDlgItem(dialog, id), buffer, bufferSize));
}

LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam) {
  return ::SendMessageA(::GetDlgItem(dialog, id), message, wParam, lParam);
}
