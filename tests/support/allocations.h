// The process's memory in a test that asks for this: counted, and ending where the test wants it to. Everything counts,
// `new`, malloc and what libraries take.
#pragma once

#include <cstddef>
#include <cstdint>

namespace framereel {

size_t Allocations(); // so far

// From now on the first `passing` allocations pass, the next `failing` fail, and all behind them pass.
void FailAllocations(int64_t passing, int64_t failing = INT64_MAX);

// Until the function is null, each allocation fails in a child process of its own, and so does the next there, with
// which whoever has not given up asks again, or in every other child each one behind it. `judge` hears the child's
// status as ::waitpid tells it. A child that goes on to where the function is set to null ends there with kWentOn.
inline constexpr int kWentOn = 3;
void FailEachAllocation(void (*judge)(int status));

} // namespace framereel
