// By the version that the platform tells.
#include "core/system_kind.h"

#include "win32/win32_windows.h"

namespace framereel {

// Systems of the newer kind, and the older ones from version 4 on.
bool HasNewShell() {
  constexpr DWORD kOlderKind = 0x80000000;
  const DWORD version = ::GetVersion();
  return !(version & kOlderKind) || BYTE(version) > 3;
}

} // namespace framereel
