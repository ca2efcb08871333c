// framereel-record: records a rectangle of the screen into an animated GIF, without a window, for scripts and tests.
//
// options.h says what can be asked for, command.h does it.
#include <unistd.h>

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

int Record(const RecordOptions& options) {
  static RecordCommand command; // lives as long as the process, as the engine's tables do
  static StopSignals signals;
  Refusal refusal;
  // Ahead of the signals: Ctrl+C still ends a wait for a pipe's reader.
  if (!OutputFind(command.output, options.file, refusal)) {
    Complain(stderr, refusal.text);
    return kExitFailed;
  }
  StopSignalsBlock(signals);
  command.options = options;
  command.clock = {&signals, Now, Wait};
  command.signals = &signals;
  command.messages = stderr;
  command.terminal = ::isatty(STDERR_FILENO);
  RecordCommandInit(command);
  return RecordCommandRun(command);
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
