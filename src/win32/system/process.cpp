// The process and its end.
#include "win32/win32_system.h"

#include <unistd.h>

// At once, without the clean-up that libraries have registered: this also ends a process whose memory is exhausted,
// and such code may want some.
void ExitProcess(UINT exitCode) {
  ::_exit(int(exitCode));
}
