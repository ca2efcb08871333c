// Loops over rows of indices for the comparison of frames: where they differ, and what workFrame gets.
#pragma once

#include <cstdint>

namespace framereel {

inline constexpr int32_t kNoPixel = -1; // no index equals it

// The first and the last place at which two rows differ; `count` and -1 if there is none.
int32_t FirstDifference(const uint8_t* a, const uint8_t* b, int32_t count);
int32_t LastDifference(const uint8_t* a, const uint8_t* b, int32_t count);

// The first place whose index is `value` and was another; `count` if there is none.
int32_t FirstChangedTo(uint8_t value, const uint8_t* indices, const uint8_t* previous, int32_t count);

// Fills the work row of unchanged pixels: they keep their index as long as each continues the run of `before`, then
// all are `transparent`. Answers the last pixel written; `count` is above 0.
int32_t FillUnchanged(const uint8_t* indices, int32_t count, int32_t before, uint8_t transparent, uint8_t* work);

// The same for a row in which pixels that differ from `previous` keep their index and start a run. With a count of 0
// it answers `before`.
int32_t MergeRow(const uint8_t* indices, const uint8_t* previous, int32_t count, int32_t before, uint8_t transparent,
                 uint8_t* work);

} // namespace framereel
