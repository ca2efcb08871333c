// The line that tells how a recording goes. When it is drawn stands in command_test.cpp.
#include "record/progress.h"

#include <gtest/gtest.h>

namespace framereel {
namespace {

TEST(Progress, TellsFramesSizeTimeAndWhatIsDoneOnOneLine) {
  const struct {
    Recording recording;
    int columns;
    const char* text;
  } cases[] = {
      {{.ticks = 5, .frames = 1, .frameBytes = 1}, 80, "1 frame, 1 byte, 0:00"},
      {{.elapsed = 3599999, .frames = 1234, .frameBytes = 1300000}, 80, "1234 frames, 1.2M, 59:59"},
      {{.elapsed = 3600000, .lostTicks = 1, .frames = 2}, 80, "2 frames, 0 bytes, 1:00:00, 1 tick lost"},
      {{.milliseconds = 12000, .elapsed = 3499}, 80, "0 frames, 0 bytes, 0:03  [######..................]"},
      {{.milliseconds = 12000, .elapsed = 20000}, 80, "0 frames, 0 bytes, 0:20  [########################]"},
      {{.tickLimit = 1000000000, .ticks = 999999999}, 52, "0 frames, 0 bytes, 0:00  [#######################.]"},
      {{.tickLimit = 4}, 51, "0 frames, 0 bytes, 0:00"},
      {{.tickLimit = 4}, 23, "0 frames, 0 bytes, 0:0"},
      {{.tickLimit = 4}, 0, ""},
  };
  char text[kProgressTextSize];
  for (const auto& c : cases) {
    FormatProgress(c.recording, c.columns, text);
    EXPECT_STREQ(text, c.text);
  }
  Recording recording = {.elapsed = UINT64_MAX};
  recording.ticks = recording.lostTicks = recording.frames = recording.frameBytes = UINT32_MAX;
  FormatProgress(recording, 1000, text);
  EXPECT_LT(std::string(text).size(), size_t{kProgressTextSize - 1}) << "nothing was cut";
}

} // namespace
} // namespace framereel
