// A seam for tests of what the program does on an older system: the version that ::GetVersion tells.
#pragma once

#include "win32/win32_types.h"

namespace framereel {

inline constexpr DWORD kThisSystem = 5;

void SetSystemVersion(DWORD version);

} // namespace framereel
