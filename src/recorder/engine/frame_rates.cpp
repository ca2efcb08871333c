// The table of rates, from slow to fast, and the search down it.
#include "recorder/engine/frame_rates.h"

namespace framereel {

uint16_t FrameRateIndex(int32_t delay) {
  uint16_t index = 0;
  while (index + 1 < kFrameRateCount && FrameRateTable[index].delay > delay) ++index;
  return index;
}

uint16_t SnapFrameDelay(int32_t delay) {
  return FrameRateTable[FrameRateIndex(delay)].delay;
}

} // namespace framereel
