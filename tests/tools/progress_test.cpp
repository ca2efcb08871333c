// The line that tells how a recording goes. When it is drawn stands in command_test.cpp.
#include "record/progress.h"

#include <gtest/gtest.h>

namespace framereel {
namespace {

TEST(Progress, TellsFramesSizeTimeAndWhatIsDoneOnOneLine) {
  const struct {
    uint32_t frames, bytes;
    Recording recording;
    int columns;
    const char* text;
  } cases[] = {
      {1, 1, {.ticks = 5}, 80, "1 frame, 1 byte, 0:00"},
      {1234, 1300000, {.elapsed = 3599999}, 80, "1234 frames, 1.2M, 59:59"},
      {2, 0, {.elapsed = 3600000, .lostTicks = 1}, 80, "2 frames, 0 bytes, 1:00:00, 1 tick lost"},
      {0, 0, {.milliseconds = 12000, .elapsed = 3499}, 80, "0 frames, 0 bytes, 0:03  [######..................]"},
      {0, 0, {.tickLimit = 1000000000, .ticks = 999999999}, 52, "0 frames, 0 bytes, 0:00  [#######################.]"},
      {3, 0, {.tickLimit = 9, .frameLimit = 4}, 80, "3 frames, 0 bytes, 0:00  [##################......]"},
      {0, 0, {.tickLimit = 4}, 51, "0 frames, 0 bytes, 0:00"},
      {0, 0, {.tickLimit = 4}, 0, ""},
  };
  char text[kProgressTextSize];
  RecorderState recorder;
  for (const auto& c : cases) {
    Recording recording = c.recording;
    recording.recorder = &recorder;
    recorder.frameCount = c.frames;
    recorder.frameBytes = c.bytes;
    FormatProgress(recording, c.columns, text);
    EXPECT_STREQ(text, c.text);
  }
  recorder.frameCount = recorder.frameBytes = UINT32_MAX;
  const Recording recording = {.recorder = &recorder, .elapsed = UINT64_MAX, .lostTicks = UINT32_MAX};
  FormatProgress(recording, 1000, text);
  EXPECT_LT(std::string(text).size(), size_t{kProgressTextSize - 1}) << "nothing was cut";
}

} // namespace
} // namespace framereel
