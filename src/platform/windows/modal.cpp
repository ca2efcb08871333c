// See modal.h.
#include "platform/windows/modal.h"

#include "platform/input/mouse.h"
#include "platform/records/later_modules.h"
#include "platform/records/view_record.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"

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

} // namespace

void ModalStartUp() {
  state = {};
}

void SetModal(ChildWindow* window) {
  if (window != state.window) SetModalState(window, nullptr);
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

ChildWindow* CurrentPopup() {
  return state.window && !Blocks(state.window) ? state.window : nullptr;
}

void DismissPopup() {
  ChildWindow* popup = CurrentPopup();
  if (!popup) return;
  SetPortWindow(popup);
  popup->methods.menuCommand(popup, nullptr);
}

} // namespace framereel
