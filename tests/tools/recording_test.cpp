// When frames are taken and what ends a recording, on the clock of the display in memory.
#include "record/recording.h"

#include <gtest/gtest.h>

#include "gif/own_writer.h"
#include "platform/start_up.h"
#include "recorder/recorder_core.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

// Waits on the display's clock, too long once if asked, until the user's stop.
struct TestClock {
  uint32_t stopAt = UINT32_MAX;   // ticks since the test began
  uint32_t sleepsAt = UINT32_MAX; // the first wait that reaches this time ...
  uint32_t wakesAt = 0;           // ... ends at that one only
  uint32_t begin = 0;
};

uint32_t Now(void*) {
  return ::GetTickCount();
}

bool Wait(void* owner, uint32_t milliseconds) {
  TestClock& clock = *static_cast<TestClock*>(owner);
  const uint32_t now = ::GetTickCount() - clock.begin;
  uint32_t until = now + milliseconds;
  if (until >= clock.sleepsAt) {
    until = clock.wakesAt;
    clock.sleepsAt = UINT32_MAX;
  }
  const bool stopped = until >= clock.stopAt;
  if (stopped) until = std::max(now, clock.stopAt);
  ::Sleep(until - now);
  return stopped;
}

class RecordingTest : public testing::Test {
protected:
  OwnWriter writer;
  RecorderState recorder;
  RecordingOptions options;
  TestClock clock;
  Recording recording = {};

  // A new screen of 32 by 24 pixels, and an engine ready to record all of it every 100 ms.
  void SetUp() override { Begin(0); }
  void TearDown() override { End(); }

  void Begin(uint32_t tick) {
    StreamClear(writer.ownStream);
    MemoryDisplayReset(32, 24, 24);
    TheMemoryDisplay().tick = tick;
    clock.begin = tick;
    ASSERT_TRUE(EngineStartUp());
    RecorderSetUp(recorder, &writer.ownStream, &writer, &options);
    recorder.captureArea = {0, 0, 24, 32};
    recorder.outputWidth = 32;
    recorder.outputHeight = 24;
    recording.recorder = &recorder;
    recording.clock = {&clock, Now, Wait};
    recording.delay = 100;
  }
  void End() {
    RecorderTearDown(recorder);
    EngineShutDown();
  }

  // The screen changes a little at that time.
  void ChangeAt(uint32_t tick) {
    MemoryAt(tick, [tick] { MemoryPixel(static_cast<int32_t>(tick / 10 % 30), 5) = 0xFFFFFF; });
  }
  uint32_t Passed() const { return ::GetTickCount() - clock.begin; }
};

TEST_F(RecordingTest, TakesATickAtOnceAndThenOneEachDelay) {
  uint32_t readsBefore = 0;
  uint32_t readsAfter = 0;
  MemoryAt(299, [&] { readsBefore = TheMemoryDisplay().screenReads; });
  MemoryAt(301, [&] { readsAfter = TheMemoryDisplay().screenReads; });
  recording.milliseconds = 1000;
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kComplete);
  EXPECT_EQ(readsBefore, 3u);
  EXPECT_EQ(readsAfter, 4u);
  EXPECT_EQ(recording.ticks, 10u) << "from 0 to 900; the one at the end is not taken any more";
  EXPECT_EQ(recording.lostTicks, 0u);
  EXPECT_EQ(recording.elapsed, 1000u);
  EXPECT_EQ(Passed(), 1000u);
}

TEST_F(RecordingTest, CountsTicksAndNotWrittenFrames) {
  ChangeAt(150);
  ChangeAt(350);
  recording.tickLimit = 5;
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kComplete);
  EXPECT_EQ(recording.ticks, 5u);
  EXPECT_EQ(recording.frames, 3u);
  EXPECT_EQ(recording.frames, recorder.frameCount);
  EXPECT_EQ(recording.frameBytes, recorder.stream->streamSize);
  EXPECT_EQ(Passed(), 400u) << "it ends with its last tick";
}

TEST_F(RecordingTest, LeavesOutTicksThatAreOverdueTogether) {
  struct {
    uint32_t wakes, ticks, lost;
  } const cases[] = {
      {380, 10, 0},  // late, and the next one is still to come
      {399, 10, 0},  //
      {400, 9, 1},   // two are due: the older one is lost
      {720, 6, 4},   // 300 to 600 are lost, 700 is taken at 720, and then 800 as if nothing had been
      {999, 4, 6},   //
      {1000, 3, 7},  // past the end nothing is taken any more
      {50000, 3, 7}, //
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.wakes);
    End();
    recording = {};
    Begin(0);
    clock.sleepsAt = 300;
    clock.wakesAt = c.wakes;
    recording.milliseconds = 1000;
    EXPECT_EQ(RunRecording(recording), RecordingEnd::kComplete);
    EXPECT_EQ(recording.ticks, c.ticks);
    EXPECT_EQ(recording.lostTicks, c.lost);
    EXPECT_EQ(Passed(), std::max(1000u, c.wakes));
  }
}

TEST_F(RecordingTest, GoesOnWhenTheClockWraps) {
  End();
  Begin(UINT32_MAX - 149);
  recording.milliseconds = 500;
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kComplete);
  EXPECT_EQ(recording.ticks, 5u);
  EXPECT_EQ(recording.lostTicks, 0u);
  EXPECT_EQ(recording.elapsed, 500u);
}

TEST_F(RecordingTest, EndsInAWaitWhenTheUserWantsIt) {
  clock.stopAt = 250;
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kStopped);
  EXPECT_EQ(recording.ticks, 3u);
  EXPECT_EQ(recording.elapsed, 250u);
}

TEST_F(RecordingTest, TakesOneFrameEvenWhenTheUserWantsItToEndAtOnce) {
  clock.stopAt = 0;
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kStopped);
  EXPECT_EQ(recording.frames, 1u);
}

TEST_F(RecordingTest, KeepsTheCompleteFramesWhenTheDisplayIsLost) {
  ChangeAt(150);
  MemoryAt(250, [] { TheMemoryDisplay().lost = true; });
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kScreenLost);
  EXPECT_EQ(recording.frames, 2u);
  EXPECT_GT(recording.frameBytes, 0u);
  EXPECT_EQ(recorder.stream->streamSize, recording.frameBytes);
  EXPECT_EQ(Passed(), 300u);
}

TEST_F(RecordingTest, EndsWhenTheScreenGetsAnotherDepth) {
  MemoryAt(250, [] { MemoryDisplaySetMode(32, 24, 8); });
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kScreenChanged);
  EXPECT_EQ(recording.ticks, 3u);
  EXPECT_EQ(recording.frames, 1u);
}

TEST_F(RecordingTest, GoesOnOnAScreenThatGetsSmaller) {
  MemoryAt(250, [] { MemoryDisplaySetMode(16, 12, 24); });
  ChangeAt(350);
  recording.tickLimit = 5;
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kComplete);
  EXPECT_EQ(recording.ticks, 5u);
}

TEST_F(RecordingTest, EndsAheadOfAStreamThatMightNotHoldAnotherFrame) {
  const uint32_t lastWithRoom = UINT32_MAX - 2 * 32 * 24 - 4096;
  MemoryAt(50, [&] { recorder.stream->streamSize = lastWithRoom; });
  MemoryAt(250, [&] { recorder.stream->streamSize = lastWithRoom + 1; });
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kFull);
  EXPECT_EQ(recording.ticks, 4u);
}

TEST_F(RecordingTest, ShowsHowItGoesDuringLongWaitsToo) {
  struct Seen {
    uint32_t calls = 0;
    uint64_t last = 0;
    uint64_t longest = 0;
  } seen;
  recording.onProgress = [](void* watcher, const Recording& now) {
    Seen& all = *static_cast<Seen*>(watcher);
    ++all.calls;
    all.longest = std::max(all.longest, now.elapsed - all.last);
    all.last = now.elapsed;
  };
  recording.watcher = &seen;
  recording.delay = 5000;
  recording.tickLimit = 2;
  EXPECT_EQ(RunRecording(recording), RecordingEnd::kComplete);
  EXPECT_EQ(recording.ticks, 2u);
  EXPECT_EQ(Passed(), 5000u);
  EXPECT_EQ(seen.calls, 20u) << "at 0 and four times a second from there";
  EXPECT_LE(seen.longest, 250u);
}

} // namespace
} // namespace framereel
