// Windows of other programs, for the calls that take them too.
#pragma once

#include <string>

namespace framereel {

// What its program calls it, in bytes that may be anything; "" for what is no window of another program.
std::string ForeignTitle(HWND window);

} // namespace framereel
