// The program's numbered texts, loaded from the string table (resources/string_table.h) on demand.
#pragma once

#include <cstdint>

namespace framereel {

// Text number n of the program. Never null; the string is not the caller's and stays valid for the whole run. A
// number inside a loaded range without a text gives "", any other "IJString Error".
const char* AppString(uint16_t n);

// The same for the texts that are shown when memory is exhausted: 0 a message with 1 and 2 its buttons, 3 a second
// message with 4 its button, 5 the message in the place of 0 when nothing could be kept. ToolkitInit loads them, for
// later there may be no memory to load them into.
const char* AppAlertString(uint16_t n);

} // namespace framereel
