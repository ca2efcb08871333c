// The line that tells how a recording goes. When it is drawn stands in command_test.cpp.
#include "record/progress.h"

#include <gtest/gtest.h>

namespace framereel {
namespace {

TEST(Progress, TellsFramesSizeTimeAndWhatIsDoneOnOneLine) {
  const struct {
    uint32_t frames, frameBytes;
    uint64_t elapsed;
    uint32_t lostTicks, milliseconds, ticks, tickLimit;
    int columns;
    const char* text;
  } cases[] = {
      {1, 1, 0, 0, 0, 5, 0, 80, "1 frame, 1 byte, 0:00"},
      {1234, 1300000, 3599999, 0, 0, 0, 0, 80, "1234 frames, 1.2M, 59:59"},
      {1234, 1300000, 3600000, 1, 0, 0, 0, 80, "1234 frames, 1.2M, 1:00:00, 1 tick lost"},
      {2, 0, 3499, 0, 12000, 0, 0, 80, "2 frames, 0 bytes, 0:03  [######..................]"},
      {2, 0, 20000, 0, 12000, 0, 0, 80, "2 frames, 0 bytes, 0:20  [########################]"},
      {2, 0, 0, 0, 0, 999999999, 1000000000, 80, "2 frames, 0 bytes, 0:00  [#######################.]"},
      {0, 0, 0, 0, 0, 0, 4, 52, "0 frames, 0 bytes, 0:00  [........................]"},
      {0, 0, 0, 0, 0, 0, 4, 51, "0 frames, 0 bytes, 0:00"},
      {0, 0, 0, 0, 0, 0, 4, 23, "0 frames, 0 bytes, 0:0"},
      {0, 0, 0, 0, 0, 0, 4, 0, ""},
  };
  Recording recording = {};
  char text[kProgressTextSize];
  for (const auto& c : cases) {
    recording.frames = c.frames;
    recording.frameBytes = c.frameBytes;
    recording.elapsed = c.elapsed;
    recording.lostTicks = c.lostTicks;
    recording.milliseconds = c.milliseconds;
    recording.ticks = c.ticks;
    recording.tickLimit = c.tickLimit;
    FormatProgress(recording, c.columns, text);
    EXPECT_STREQ(text, c.text);
  }
  recording.ticks = recording.lostTicks = recording.frames = recording.frameBytes = UINT32_MAX;
  recording.elapsed = UINT64_MAX;
  FormatProgress(recording, 1000, text);
  EXPECT_LT(std::string(text).size(), size_t{kProgressTextSize - 1}) << "nothing was cut";
}

} // namespace
} // namespace framereel
