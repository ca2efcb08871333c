// A seam for tests of exhausted memory: the process heap stops giving at a chosen allocation.
#pragma once

#include <cstdint>

namespace framereel {

// Lets the next n calls of ::HeapAlloc and ::HeapReAlloc through; those after them answer null. Negative: none
// fails.
void FailAllocationsAfter(int64_t n);

} // namespace framereel
