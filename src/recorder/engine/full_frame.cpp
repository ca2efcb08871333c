// The first frame.
#include "recorder/engine/full_frame.h"

#include <cstring>

#include "recorder/engine/index_rows.h"

namespace framereel {

void SetDirtyRect(RecorderState& recorder, int32_t left, int32_t top, int32_t right, int32_t bottom) {
  recorder.dirty = {int16_t(top), int16_t(left), int16_t(bottom), int16_t(right)};
}

bool NothingIsDirty(const RecorderState& recorder) {
  return recorder.dirty.right <= recorder.dirty.left;
}

bool FirstFrameConvert(RecorderState& recorder) {
  const int32_t width = recorder.frameWidth, height = recorder.frameHeight;
  for (int32_t y = 0; y < height; ++y) {
    IndexRow(recorder, y, recorder.previousFrame + int64_t(y) * width);
  }
  const size_t bytes = size_t(width) * size_t(height);
  ::memcpy(recorder.workFrame, recorder.previousFrame, bytes);
  SetDirtyRect(recorder, 0, 0, width, height);
  return ::memchr(recorder.previousFrame, recorder.colours.captureTransparent, bytes) != nullptr;
}

} // namespace framereel
