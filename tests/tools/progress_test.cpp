// The texts that tell how a recording goes.
#include "record/progress.h"

#include <gtest/gtest.h>

namespace framereel {
namespace {

std::string Shown(const Recording& recording, int columns = 80) {
  char text[kProgressTextSize];
  FormatProgress(recording, columns, text);
  return text;
}

TEST(Progress, TellsFramesSizeAndTime) {
  Recording recording = {};
  recording.frames = 1;
  recording.frameBytes = 1;
  EXPECT_EQ(Shown(recording), "1 frame, 1 byte, 0:00");
  recording.frames = 1234;
  recording.frameBytes = 1300000;
  recording.elapsed = 3599999;
  EXPECT_EQ(Shown(recording), "1234 frames, 1.2M, 59:59");
  recording.elapsed = 36000000;
  recording.lostTicks = 1;
  EXPECT_EQ(Shown(recording), "1234 frames, 1.2M, 10:00:00, 1 tick lost");
}

TEST(Progress, ShowsABarWhenTheEndIsKnown) {
  Recording recording = {};
  recording.frames = 2;
  recording.milliseconds = 12000;
  recording.elapsed = 3499;
  EXPECT_EQ(Shown(recording), "2 frames, 0 bytes, 0:03  [######..................]");
  recording.elapsed = 20000;
  EXPECT_EQ(Shown(recording), "2 frames, 0 bytes, 0:20  [########################]");
  recording.milliseconds = 0;
  recording.tickLimit = 1000000000;
  recording.ticks = 999999999;
  EXPECT_EQ(Shown(recording), "2 frames, 0 bytes, 0:20  [#######################.]");
}

TEST(Progress, StaysOnOneLineOfANarrowTerminal) {
  Recording recording = {};
  recording.tickLimit = 4;
  EXPECT_EQ(Shown(recording, 52).size(), 51u);
  EXPECT_EQ(Shown(recording, 51), "0 frames, 0 bytes, 0:00");
  EXPECT_EQ(Shown(recording, 24), "0 frames, 0 bytes, 0:00");
  EXPECT_EQ(Shown(recording, 10), "0 frames,");
  EXPECT_EQ(Shown(recording, 1), "");
  recording.ticks = recording.lostTicks = recording.frames = recording.frameBytes = UINT32_MAX;
  recording.elapsed = UINT64_MAX;
  recording.tickLimit = UINT32_MAX;
  EXPECT_LT(Shown(recording, 1000).size(), static_cast<size_t>(kProgressTextSize - 1)) << "nothing was cut";
}

TEST(Progress, IsDrawnAtMostTenTimesASecond) {
  char* text = nullptr;
  size_t length = 0;
  FILE* to = ::open_memstream(&text, &length);
  Progress progress = {to, false, 0};
  Recording recording = {};
  ProgressClear(progress);
  EXPECT_EQ(length, 0u) << "nothing stands there to be cleared";
  for (recording.elapsed = 0; recording.elapsed <= 1000; recording.elapsed += 25) ProgressShow(progress, recording);
  const std::string once = "\r0 frames, 0 bytes, 0:00\x1b[K";
  EXPECT_EQ(length, 11 * once.size());
  fclose(to);
  EXPECT_EQ(std::string(text).substr(0, once.size()), once);
  free(text);
}

} // namespace
} // namespace framereel
