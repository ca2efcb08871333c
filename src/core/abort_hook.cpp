// The handler of SIGABRT. `abort` raises that again when the handler returns, and then the process ends.
#include "core/abort_hook.h"

#include <csignal>
#include <unistd.h>

namespace framereel {
namespace {

constexpr unsigned kLongestHook = 60; // seconds: a broken heap may hold it for ever, and saving 4 GiB takes some

AbortHook hook;
void* hookArgument;

void EndWithHook(int) {
  ::signal(SIGALRM, SIG_DFL);
  ::alarm(kLongestHook);
  hook(hookArgument);
}

} // namespace

void SetAbortHook(AbortHook function, void* argument) {
  hook = function;
  hookArgument = argument;
  struct sigaction action = {};
  action.sa_handler = hook ? EndWithHook : SIG_DFL;
  action.sa_flags = int(SA_RESETHAND);
  ::sigaction(SIGABRT, &action, nullptr);
}

} // namespace framereel
