// Counts what is allocated with `new`, in a program that asks for the count.
#pragma once

#include <cstddef>

namespace framereel {

size_t NewCalls();

} // namespace framereel
