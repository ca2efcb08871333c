// The two lists of listeners, and the flag that the second one is about.
#include "core/notices.h"

#include <cstring>

namespace framereel {

namespace {

struct ActiveListener {
  ActiveFunction function;
  void* argument;
};

Notifier changeListeners;
RecordArray activeListeners;
bool programIsActive = true;

} // namespace

void NoticesStartUp() {
  changeListeners = {};
  RecordArrayInit(&activeListeners, sizeof(ActiveListener), 1);
}

void NotifyAdd(NoticeFunction function, void* argument) {
  NotifierAdd(&changeListeners, function, argument);
}

void NotifyRemove(NoticeFunction function, void* argument) {
  NotifierRemove(&changeListeners, function, argument);
}

void NotifySend(const void*, ChangeCode code) {
  NotifierSend(&changeListeners, code);
}

void ActiveAdd(ActiveFunction function, void* argument) {
  ActiveListener listener = {function, argument};
  RecordArrayAppend(&activeListeners, &listener);
}

void ActiveRemove(ActiveFunction function, void* argument) {
  ActiveListener listener = {function, argument};
  int32_t index = RecordArrayFind(&activeListeners, &listener);
  if (index >= 0) RecordArrayRemoveAt(&activeListeners, uint16_t(index));
}

void ActiveSet(bool active) {
  programIsActive = active;
  for (uint16_t i = 0; i < activeListeners.count; ++i) {
    ActiveListener listener;
    std::memcpy(&listener, RecordArrayAt(&activeListeners, i), sizeof listener);
    listener.function(listener.argument, active);
  }
}

bool ActiveGet() {
  return programIsActive;
}

} // namespace framereel
