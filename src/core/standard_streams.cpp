// Descriptors that were closed get /dev/null, and a full disk is noticed ahead of the exit.
#include "core/standard_streams.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace framereel {

void FillStandardDescriptors() {
  int descriptor;
  do {
    descriptor = ::open("/dev/null", O_RDONLY);
  } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor >= 0) ::close(descriptor);
}

bool StandardOutputIsWritten() {
  return ::fflush(stdout) == 0 && !::ferror(stdout);
}

} // namespace framereel
