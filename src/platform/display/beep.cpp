// The call behind Beep.
#include "platform/display/beep.h"

#include "win32/win32_windows.h"

namespace framereel {

void Beep() {
  ::MessageBeep(UINT(-1));
}

} // namespace framereel
