// The array of listeners.
#include "platform/menus/menu_listeners.h"

namespace framereel {
namespace {

Notifier listeners;

} // namespace

void AddMenuListener(NoticeFunction function, void* argument) {
  NotifierAdd(&listeners, function, argument);
}

void RemoveMenuListener(NoticeFunction function, void* argument) {
  NotifierRemove(&listeners, function, argument);
}

void TellMenuListeners(const MenuChange& change) {
  NotifierSend(&listeners, reinterpret_cast<intptr_t>(&change));
}

void MenuListenersStartUp() {
  listeners = {};
}

void MenuListenersShutDown() {
  NotifierClear(&listeners);
}

} // namespace framereel
