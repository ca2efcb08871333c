// Delays, and frames into the stream.
#include "recorder/engine/pacing.h"

#include "win32/win32_system.h"

namespace framereel {
namespace {

// In ms. A pause of more than 2^31 ms comes out negative and is cut to 16 bits like any other.
int32_t FrameDelay(const RecorderState& recorder, uint32_t now, bool grab) {
  if (!recorder.options->recordTimingInfo) return 0;
  if (grab) return recorder.options->frameDelay;
  return recorder.haveLastFrameTick ? int32_t(now - recorder.lastFrameTick) : 0;
}

} // namespace

void WriteFrame(RecorderState& recorder, bool transparent, bool grab) {
  const uint32_t now = ::GetTickCount();
  const int32_t delay = FrameDelay(recorder, now, grab);
  recorder.lastFrameTick = now;
  recorder.haveLastFrameTick = true;
  EmitFrame(recorder, transparent, delay);
}

void EmitFrame(RecorderState& recorder, bool transparent, int32_t delay) {
  const int32_t left = recorder.dirtyLeft - recorder.frameLeft;
  const int32_t top = recorder.dirtyTop - recorder.frameTop;
  const PixelCursor cursor = {recorder.workFrame + int64_t(top) * recorder.frameWidth + left, recorder.dirtyWidth,
                              int16_t(recorder.frameWidth - recorder.dirtyWidth)};
  GifWriteControl(*recorder.gif, transparent, uint16_t(delay / 10), recorder.colours.outputTransparent);
  GifWriteImage(*recorder.gif, int16_t(left), int16_t(top), recorder.dirtyWidth, recorder.dirtyHeight, cursor);
}

} // namespace framereel
