// Windows of other programs, for the calls that take them too.
#pragma once

#include <string>

#include "win32/win32_types.h"

namespace framereel {

// What its program calls it, in bytes that may be anything; "" for what is no window of another program.
std::string ForeignTitle(HWND window);

} // namespace framereel
