// Delays, and frames into the stream.
#include "recorder/engine/pacing.h"

#include "win32/win32.h"

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

FramePixels PixelsOfFrame(const RecorderState& recorder, bool transparent) {
  const int32_t left = recorder.dirtyLeft - recorder.frameLeft;
  const int32_t top = recorder.dirtyTop - recorder.frameTop;
  FramePixels frame = {int16_t(left), int16_t(top), recorder.dirtyWidth, recorder.dirtyHeight, {}, false, 0,
                       false,         false};
  frame.pixels = {recorder.workFrame + int64_t(top) * recorder.frameWidth + left, recorder.dirtyWidth,
                  int16_t(recorder.frameWidth - recorder.dirtyWidth)};
  frame.marked = transparent;
  frame.mark = recorder.colours.outputTransparent;
  frame.mayMark = recorder.options->interframeTransparency;
  frame.inPlace = recorder.options->explorerCompatible;
  return frame;
}

void EmitFrame(RecorderState& recorder, bool transparent, int32_t delay) {
  const FramePixels frame = PixelsOfFrame(recorder, transparent);
  GifWriter& gif = *recorder.gif;
  const auto hundredths = uint16_t(delay / 10);
  if (recorder.smallest) {
    const SmallestFrame& smallest = SmallestTakeFrame(*recorder.smallest, frame);
    GifWriteControl(gif, smallest.transparent, hundredths, smallest.transparentIndex);
    SmallestWriteImage(*recorder.smallest, gif);
  } else {
    GifWriteControl(gif, transparent, hundredths, frame.mark);
    GifWriteImage(gif, frame.left, frame.top, frame.width, frame.height, frame.pixels);
  }
}

} // namespace framereel
