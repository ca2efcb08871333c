// One axis at a time: how far a span grows to hold whole blocks, and which way.
#include "area/area_geometry.h"

#include "recorder/engine/recorder_state.h"
#include "recorder/engine/recording_scale.h"

namespace framereel {

namespace {

// Answers false when the bounds were reached first; the span then fills them.
bool GrowSpan(int16_t* low, int16_t* high, int16_t lowest, int16_t highest, int missing) {
  while (*low > lowest || *high < highest) {
    if (*low > lowest) {
      --*low;
      if (--missing == 0) return true;
    }
    if (*high < highest) {
      ++*high;
      if (--missing == 0) return true;
    }
  }
  return false;
}

} // namespace

void AlignSpan(int16_t* low, int16_t* high, int16_t lowest, int16_t highest, int16_t denominator) {
  const int before = *high - *low;
  if (before % denominator == 0) return;
  if (GrowSpan(low, high, lowest, highest, denominator - before % denominator)) return;

  const int over = (*high - *low) % denominator;
  *low = int16_t(*low + (over + 1) / 2);
  *high = int16_t(*high - over / 2);
}

Rect AlignArea(const Rect& area, uint16_t recordingSize, int16_t screenWidth, int16_t screenHeight) {
  Rect aligned = area;
  if (recordingSize == kSize100) return aligned;
  const auto denominator = int16_t(ScaleOf(recordingSize).denominator);
  AlignSpan(&aligned.left, &aligned.right, 1, int16_t(screenWidth - 1), denominator);
  AlignSpan(&aligned.top, &aligned.bottom, 1, int16_t(screenHeight - 1), denominator);
  return aligned;
}

} // namespace framereel
