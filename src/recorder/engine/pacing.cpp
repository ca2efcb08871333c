// Delays, and frames into the stream.
#include "recorder/engine/pacing.h"

#include "win32/win32_system.h"

namespace framereel {
namespace {

constexpr int64_t kLongestDelay16 = 0xFFFF; // hundredths

// ---- Measured ----------------------------------------------------------------------------------------------------

// In ms. A pause of more than 2^31 ms comes out negative and is cut to 16 bits like any other.
int32_t MeasuredDelay(const RecorderState& recorder, uint32_t now, bool grab) {
  if (!recorder.options->recordTimingInfo) return 0;
  if (grab) return recorder.options->frameDelay;
  return recorder.haveLastFrameTick ? int32_t(now - recorder.lastFrameTick) : 0;
}

void WriteMeasured(RecorderState& recorder, bool transparent, bool grab) {
  const uint32_t now = ::GetTickCount();
  const int32_t delay = MeasuredDelay(recorder, now, grab);
  recorder.lastFrameTick = now;
  EmitFrame(recorder, transparent, delay);
}

// ---- True time ---------------------------------------------------------------------------------------------------

// For how long the file has shown the frame last written by `now`, to the nearest hundredth. What it is off, up to 5 ms
// either way, is in the place where the frame begins.
int64_t HundredthsShown(const RecorderState& recorder, uint32_t now) {
  return int64_t{now - recorder.lastFrameTick + 5} / 10;
}

// The frame written at `control` begins where the last one, which has that delay, ends.
void BeginFrame(RecorderState& recorder, uint32_t control, int64_t delay) {
  recorder.lastControl = control;
  recorder.lastFrameTick += uint32_t(10 * delay);
}

// A frame that changes nothing. Index 0 is in every colour table, however small.
void AppendStill(RecorderState& recorder) {
  GifWriter& gif = *recorder.gif;
  constexpr uint8_t pixel = 0;
  GifWriteControl(gif, true, 0, pixel);
  GifWriteImage(gif, 0, 0, 1, 1, {&pixel, 1, 0});
  ++recorder.frameCount;
  recorder.frameBytes = gif.stream->streamSize;
}

void WriteInTrueTime(RecorderState& recorder, bool transparent) {
  const uint32_t control = recorder.stream->streamSize;
  EmitFrame(recorder, transparent, 0);
  if (!recorder.haveLastFrameTick) recorder.lastFrameTick = recorder.frameTick;
  BeginFrame(recorder, control, HundredthsShown(recorder, recorder.frameTick));
}

} // namespace

void WriteFrame(RecorderState& recorder, bool transparent, bool grab) {
  if (recorder.options->trueTime) {
    WriteInTrueTime(recorder, transparent);
  } else {
    WriteMeasured(recorder, transparent, grab);
  }
  recorder.haveLastFrameTick = true;
}

FramePixels PixelsOfFrame(const RecorderState& recorder, bool transparent) {
  const Rect& dirty = recorder.dirty;
  const auto width = int16_t(dirty.right - dirty.left), height = int16_t(dirty.bottom - dirty.top);
  const uint8_t* corner = recorder.workFrame + int64_t(dirty.top) * recorder.frameWidth + dirty.left;
  return {.left = dirty.left,
          .top = dirty.top,
          .width = width,
          .height = height,
          .pixels = {corner, width, int16_t(recorder.frameWidth - width)},
          .marked = transparent,
          .mark = recorder.colours.outputTransparent,
          .mayMark = recorder.options->interframeTransparency,
          .inPlace = recorder.options->explorerCompatible};
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

void TellFrameTime(RecorderState& recorder, uint32_t now) {
  recorder.frameTick = now;
  const RecordingOptions& options = *recorder.options;
  if (!options.trueTime || !options.recordTimingInfo || !recorder.haveLastFrameTick) return;
  while (HundredthsShown(recorder, now) > kLongestDelay16) {
    GifRewriteDelay(*recorder.gif, recorder.lastControl, kLongestDelay16);
    const uint32_t control = recorder.stream->streamSize;
    AppendStill(recorder);
    BeginFrame(recorder, control, kLongestDelay16);
  }
  GifRewriteDelay(*recorder.gif, recorder.lastControl, uint16_t(HundredthsShown(recorder, now)));
}

} // namespace framereel
