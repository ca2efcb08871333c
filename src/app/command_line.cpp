// The two answers, and the complaint about anything else.
#include "app/command_line.h"

#include <cstdio>
#include <cstring>

#include "core/standard_streams.h"

namespace framereel {
namespace {

constexpr char kHelp[] = "Usage: framereel\n"
                         "Records a rectangle of the screen into an animated GIF. What is recorded, and\n"
                         "how, is chosen in its window; framereel-record does the same from the command\n"
                         "line.\n\n"
                         "  -h, --help  show this text\n"
                         "  --version   show the version\n\n"
                         "Exit status: 0 ended by its user, 1 failed, 2 wrong arguments.\n";

int Print(const char* text) {
  ::fputs(text, stdout);
  if (StandardOutputIsWritten()) return kExitDone;
  ::fputs("framereel: standard output cannot be written to\n", stderr);
  return kExitFailed;
}

} // namespace

bool AnswerCommandLine(const char* const* arguments, int* status) {
  const char* argument = *arguments;
  if (!argument) return false;
  if (::strcmp(argument, "--help") == 0 || ::strcmp(argument, "-h") == 0) {
    *status = Print(kHelp);
  } else if (::strcmp(argument, "--version") == 0) {
    *status = Print("framereel " FRAMEREEL_VERSION "\n");
  } else {
    ::fputs("framereel: it takes no arguments but --help and --version\n", stderr);
    *status = kExitUsage;
  }
  return true;
}

} // namespace framereel
