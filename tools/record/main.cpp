// framereel-record: records a rectangle of the screen into an animated GIF, without a window, for scripts and tests.
//
// option_table.h says what can be asked for, command.h does it.
#include <cstring>
#include <unistd.h>

#include "record/arguments.h"
#include "record/command.h"
#include "win32/win32_system.h"

namespace {

using namespace framereel;

uint32_t Now(void* /*owner*/) {
  return ::GetTickCount();
}

bool Wait(void* owner, uint32_t milliseconds) {
  return StopSignalsWait(*static_cast<StopSignals*>(owner), milliseconds);
}

int Printed() {
  if (StandardOutputIsWritten()) return kExitDone;
  Complain(stderr, "standard output cannot be written to");
  return kExitFailed;
}

RecordCommand command; // lives as long as the process, as the engine's tables do

int PrintWindows() {
  command.messages = stderr;
  command.figures = stdout;
  const int status = ListWindowsRun(command);
  return status == kExitDone ? Printed() : status;
}

int Record(const RecordOptions& options) {
  static StopSignals signals;
  Refusal refusal;
  if (!OutputFind(command.output, options.file, refusal)) {
    Complain(stderr, refusal.text);
    return kExitFailed;
  }
  command.options = options;
  command.clock = {&signals, Now, Wait};
  command.signals = &signals;
  command.messages = stderr;
  command.terminal = ::isatty(STDERR_FILENO);
  const bool toOutput = strcmp(options.file, "-") == 0;
  command.figures = toOutput ? stderr : stdout;
  RecordCommandInit(command);
  const int status = RecordCommandRun(command);
  return status == kExitDone && options.stats && !toOutput ? Printed() : status;
}

} // namespace

int main(int count, char** arguments) {
  FillStandardDescriptors();
  RecordOptions options;
  Refusal refusal;
  switch (ReadOptions(arguments + (count > 0), &options, refusal)) {
  case Request::kHelp:
    WriteHelp(stdout);
    return Printed();
  case Request::kListWindows:
    return PrintWindows();
  case Request::kVersion:
    WriteVersion(stdout);
    return Printed();
  case Request::kRefused:
    Complain(stderr, refusal.text);
    return kExitUsage;
  case Request::kRecord:
    break;
  }
  return Record(options);
}
