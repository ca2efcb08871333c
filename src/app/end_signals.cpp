// Handlers that do no more than end the loops and note the number.
#include "app/end_signals.h"

#include <csignal>

#include "platform/pump/pump.h"

namespace framereel {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

struct sigaction before[sizeof kSignals / sizeof *kSignals];
volatile std::sig_atomic_t came;

void End(int number) {
  came = number;
  EndAllLoops();
}

} // namespace

void EndSignalsWatch() {
  came = 0;
  struct sigaction action = {};
  action.sa_handler = End;
  action.sa_flags = SA_RESTART | int(SA_RESETHAND);
  struct sigaction* former = before;
  for (const int number : kSignals) {
    ::sigaction(number, nullptr, former);
    if (former->sa_handler != SIG_IGN) ::sigaction(number, &action, nullptr);
    ++former;
  }
}

void EndSignalsRelease() {
  const struct sigaction* former = before;
  for (const int number : kSignals) ::sigaction(number, former++, nullptr);
}

int EndSignalThatCame() {
  return came;
}

} // namespace framereel
