// The modal window and View, and the chain of the modal windows that come back.
#include "platform/windows/modal.h"

#include "platform/drawing/ports.h"
#include "platform/records/later_modules.h"
#include "platform/records/view_record.h"
#include "platform/records/window_records.h"
#include "platform/windows/mouse_targets.h"
#include "platform/windows/window_list.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

struct ModalState {
  ChildWindow* window;
  View* view;
};

ModalState state;

bool Blocks(const ChildWindow* window) {
  return window && !(window->flags & kWindowPopup);
}

void BlockMainWindow(bool block) {
  ::EnableWindow(TheMainWindow()->window, !block);
  TheLaterModules().blockMenus(block);
}

void SetModalState(ChildWindow* window, View* view) {
  if (view) window = view->window;
  const bool blockedBefore = Blocks(state.window), blocksNow = Blocks(window);
  if (blockedBefore && blocksNow && window != state.window) {
    ::EnableWindow(state.window->window, FALSE);
    ::EnableWindow(window->window, TRUE);
  }
  if (blockedBefore != blocksNow) BlockMainWindow(blocksNow);
  state = {window, view};
  ResetMousePoint();
}

void SetModal(ChildWindow* window) {
  if (window != state.window) SetModalState(window, nullptr);
}

// No other modal window goes back to this one any more: it leaves its place in their chain.
void LeaveModalChain(const ChildWindow* leaving) {
  for (ChildWindow* window = NextChildWindow(nullptr); window; window = NextChildWindow(window)) {
    if (window->previousModal == leaving) window->previousModal = leaving->previousModal;
  }
}

} // namespace

void ModalStartUp() {
  state = {};
}

void BecomeModal(ChildWindow* window) {
  if (state.window == window) return;
  LeaveModalChain(window);
  window->previousModal = state.window;
  SetModal(window);
}

void GiveModalBack(ChildWindow* window) {
  LeaveModalChain(window);
  if (state.window == window) SetModal(window->previousModal);
  window->previousModal = nullptr;
}

void SetModalView(View* view) {
  SetModalState(state.window, view);
}

ChildWindow* GetModalWindow() {
  return state.window;
}

View* GetModalView() {
  return state.view;
}

bool ModalIsBlocking() {
  return Blocks(state.window);
}

void DismissPopup() {
  ChildWindow* popup = state.window;
  if (!popup || Blocks(popup)) return;
  SetPortWindow(popup);
  popup->methods.menuCommand(popup, nullptr);
}

} // namespace framereel
