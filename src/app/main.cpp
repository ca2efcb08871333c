// The entry of the process.
#include <csignal>

#include "app/app.h"
#include "app/command_line.h"
#include "app/end_signals.h"
#include "core/standard_streams.h"
#include "win32/win32_windows.h"

namespace {

char module; // its address tells the program's resources from the system's

} // namespace

int main(int count, char** arguments) {
  framereel::FillStandardDescriptors();
  int status;
  if (framereel::AnswerCommandLine(arguments + (count > 0), &status)) return status;
  status = framereel::AppMain(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL);
  // Whoever waits for the process, a shell in a script perhaps, is to see that a signal has ended it.
  if (const int signal = framereel::EndSignalThatCame()) ::raise(signal);
  return status;
}
