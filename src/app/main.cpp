// The entry of the process.
#include "app/app.h"
#include "app/command_line.h"
#include "core/standard_streams.h"

namespace {

char module; // its address tells the program's resources from the system's

} // namespace

int main(int count, char** arguments) {
  framereel::FillStandardDescriptors();
  int status;
  if (framereel::AnswerCommandLine(arguments + (count > 0), &status)) return status;
  return framereel::AppMain(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL);
}
