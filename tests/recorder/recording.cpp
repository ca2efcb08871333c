// See recording.h.
#include "recorder/recording.h"

#include <gtest/gtest.h>

#include "gif/stream_bytes.h"
#include "recorder/engine/recording_scale.h"

namespace framereel {
namespace {

Recording& Owner(void* owner) {
  return *static_cast<Recording*>(owner);
}

void ShowMessage(void* owner, const char* text) {
  Owner(owner).message = text;
  ++Owner(owner).messageCalls;
}

// The compressor's tables are large, so all recordings share them.
GifWriter WriterInto(AnimationStream* stream) {
  static const GifWriter shared = [] {
    GifWriter gif;
    GifWriterInit(gif, nullptr);
    return gif;
  }();
  GifWriter gif = shared;
  gif.stream = stream;
  return gif;
}

} // namespace

Recording::Recording(const Rect& area, const RecordingOptions& withOptions)
    : options(withOptions), gif(WriterInto(&stream)) {
  StreamInit(stream);
  const RecorderPanel panel = {this,
                               [](void* owner, const char* text) { Owner(owner).status = text; },
                               ShowMessage,
                               [](void* owner) { ShowMessage(owner, ""); },
                               [](void* owner, const RecordButtons& enabled) { Owner(owner).buttons = enabled; },
                               [](void* owner, bool enabled) { Owner(owner).optionsEnabled = enabled; }};
  RecorderSetUp(recorder, &stream, &gif, &options, panel);
  recorder.ownerName = "a tester";
  SetArea(area);
}

Recording::~Recording() {
  RecorderTearDown(recorder);
  StreamFree(stream);
}

void Recording::SetArea(const Rect& area) {
  const RecordingScale& scale = ScaleOf(options.recordingSize);
  recorder.captureArea = area;
  recorder.outputWidth = int16_t((area.right - area.left) * scale.numerator / scale.denominator);
  recorder.outputHeight = int16_t((area.bottom - area.top) * scale.numerator / scale.denominator);
}

bool Recording::Capture(bool grab) {
  const uint32_t before = recorder.frameCount;
  RecorderCaptureFrame(recorder, grab);
  RecorderRefreshStatus(recorder);
  return recorder.frameCount != before;
}

std::vector<uint8_t> Recording::Saved() const {
  return FileBytes(stream);
}

GifPicture Recording::Read() const {
  GifPicture picture = ReadGif(Saved());
  EXPECT_EQ(picture.error, "");
  return picture;
}

} // namespace framereel
