// The sizes at which an animation can be recorded.
#pragma once

#include <cstdint>

#include "core/geometry.h"

namespace framereel {

// Indices into the table.
inline constexpr uint16_t kSize25 = 0, kSize44 = 1, kSize100 = 2;

// A recording size: every `denominator` pixels of a side become `numerator`. The percentage is the share of the area.
struct RecordingScale {
  uint16_t percent;
  int16_t numerator, denominator;
};

inline constexpr RecordingScale kRecordingScales[] = {{25, 1, 2}, {44, 2, 3}, {100, 1, 1}};

// A size past the table counts as the last, 100 %.
inline constexpr const RecordingScale& ScaleOf(uint16_t recordingSize) {
  return kRecordingScales[recordingSize < kSize100 ? recordingSize : kSize100];
}
inline constexpr bool IsReduced(uint16_t recordingSize) {
  return recordingSize < kSize100;
}

// Width (h) and height (v) in pixels of the animation that an area gives.
inline constexpr Point OutputSize(const Rect& area, uint16_t recordingSize) {
  const RecordingScale& scale = ScaleOf(recordingSize);
  const int width = area.right - area.left, height = area.bottom - area.top;
  return {int16_t(height * scale.numerator / scale.denominator), int16_t(width * scale.numerator / scale.denominator)};
}

} // namespace framereel
