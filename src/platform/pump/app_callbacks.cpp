// The table of callbacks.
#include "platform/pump/app_callbacks.h"

#include <iterator>

namespace framereel {
namespace {

struct AppCallback {
  void (*function)(void* argument);
  void* argument;
};

AppCallback callbacks[4];

struct {
  SessionHandler function;
  void* argument;
} session;

} // namespace

void SetAppCallback(uint16_t index, void (*function)(void* argument), void* argument) {
  if (index < std::size(callbacks)) callbacks[index] = {function, argument};
}

void SetSessionHandler(SessionHandler function, void* argument) {
  session = {function, argument};
}

bool CallSessionHandler(SessionStep step) {
  return !session.function || session.function(session.argument, step);
}

bool CallQuitHandler() {
  const AppCallback& quit = callbacks[kQuitHandler];
  if (quit.function) quit.function(quit.argument);
  return quit.function;
}

} // namespace framereel
