// When frames are taken and what ends a recording, on the clock of the display in memory.
#include "record/recording.h"

#include <gtest/gtest.h>

#include "gif/own_writer.h"
#include "recorder/recorder_core.h"
#include "support/desktop.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

// Waits on the display's clock, too long once if asked, until the user's stop. Times are ms since the test began.
struct TestClock {
  uint32_t stopAt = UINT32_MAX;
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

// A screen of 32 by 24 pixels, and an engine ready to record all of it every 100 ms.
struct RecordingRoom {
  Desktop desktop{32, 24, 24};
  OwnWriter writer;
  RecorderState recorder;
  RecordingOptions options;
  TestClock clock;
  Recording recording = {};

  explicit RecordingRoom(uint32_t begin = 0) {
    TheMemoryDisplay().tick = clock.begin = begin;
    RecorderSetUp(recorder, &writer.ownStream, &writer, &options);
    recorder.captureArea = {0, 0, 24, 32};
    recorder.outputWidth = 32;
    recorder.outputHeight = 24;
    recording.recorder = &recorder;
    recording.clock = {&clock, Now, Wait};
    recording.delay = 100;
  }
  ~RecordingRoom() { RecorderTearDown(recorder); }
  uint32_t Passed() const { return ::GetTickCount() - clock.begin; }
};

TEST(Recording, TakesATickAtOnceAndThenOneEachDelayUntilItsEnd) {
  const struct {
    uint32_t begin, milliseconds, tickLimit, stopAt;
    RecordingEnd end;
    uint32_t ticks, passed;
  } cases[] = {
      {0, 1000, 0, UINT32_MAX, RecordingEnd::kComplete, 10, 1000}, // the tick at the end is not taken any more
      {UINT32_MAX - 149, 500, 0, UINT32_MAX, RecordingEnd::kComplete, 5, 500}, // the clock wraps
      {0, 0, 5, UINT32_MAX, RecordingEnd::kComplete, 5, 400},                  // it ends with its last tick
      {0, 0, 0, 250, RecordingEnd::kStopped, 3, 250},
      {0, 0, 0, 0, RecordingEnd::kStopped, 1, 0}, // one frame in any case
  };
  for (const auto& c : cases) {
    RecordingRoom room(c.begin);
    room.clock.stopAt = c.stopAt;
    room.recording.milliseconds = c.milliseconds;
    room.recording.tickLimit = c.tickLimit;
    EXPECT_EQ(RunRecording(room.recording), c.end);
    EXPECT_EQ(room.recording.ticks, c.ticks);
    EXPECT_EQ(room.recording.lostTicks, 0u);
    EXPECT_EQ(room.recording.elapsed, c.passed);
    EXPECT_EQ(room.Passed(), c.passed);
    EXPECT_EQ(room.recording.frames, 1u) << "nothing changed";
  }
}

TEST(Recording, LeavesOutTicksThatAreOverdueTogether) {
  const struct {
    uint32_t wakes, ticks, lost;
  } cases[] = {
      {399, 10, 0},  // late, and the next one is still to come
      {400, 9, 1},   // two are due: the older one is lost
      {720, 6, 4},   // 300 to 600 are lost, 700 is taken at 720, and then 800 as if nothing had been
      {999, 4, 6},   //
      {1000, 3, 7},  // past the end nothing is taken any more
      {50000, 3, 7}, //
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.wakes);
    RecordingRoom room;
    uint32_t readsAt850 = 0;
    MemoryAt(850, [&] { readsAt850 = TheMemoryDisplay().screenReads; });
    room.clock.sleepsAt = 300;
    room.clock.wakesAt = c.wakes;
    room.recording.milliseconds = 1000;
    EXPECT_EQ(RunRecording(room.recording), RecordingEnd::kComplete);
    EXPECT_EQ(room.recording.ticks, c.ticks);
    EXPECT_EQ(room.recording.lostTicks, c.lost);
    EXPECT_EQ(readsAt850, c.wakes < 850 ? c.ticks - 1 : 3u);
    EXPECT_EQ(room.Passed(), std::max(1000u, c.wakes));
  }
}

TEST(Recording, GoesOnOnAScreenThatGetsSmaller) {
  RecordingRoom room;
  MemoryAt(250, [] { MemoryDisplaySetMode(16, 12, 24); });
  MemoryAt(350, [] { MemoryPixel(5, 5) = 0xFFFFFF; });
  room.recording.tickLimit = 5;
  EXPECT_EQ(RunRecording(room.recording), RecordingEnd::kComplete);
  EXPECT_EQ(room.recording.ticks, 5u);
  EXPECT_EQ(room.recording.frames, room.recorder.frameCount);
  EXPECT_EQ(room.recording.frameBytes, room.recorder.stream->streamSize);
}

TEST(Recording, EndsAheadOfAStreamThatMightNotHoldAnotherFrame) {
  RecordingRoom room;
  const uint32_t lastWithRoom = UINT32_MAX - 2 * 32 * 24 - 4096;
  MemoryAt(50, [&] { room.recorder.stream->streamSize = lastWithRoom; });
  MemoryAt(250, [&] { room.recorder.stream->streamSize = lastWithRoom + 1; });
  EXPECT_EQ(RunRecording(room.recording), RecordingEnd::kFull);
  EXPECT_EQ(room.recording.ticks, 4u);
}

TEST(Recording, ShowsHowItGoesDuringLongWaitsToo) {
  RecordingRoom room;
  std::vector<uint64_t> seen, expected;
  room.recording.onProgress = [](void* watcher, const Recording& now) {
    static_cast<std::vector<uint64_t>*>(watcher)->push_back(now.elapsed);
  };
  room.recording.watcher = &seen;
  room.recording.delay = 5000;
  room.recording.tickLimit = 2;
  EXPECT_EQ(RunRecording(room.recording), RecordingEnd::kComplete);
  EXPECT_EQ(room.recording.ticks, 2u);
  for (uint64_t time = 0; time < 5000; time += 250) expected.push_back(time);
  EXPECT_EQ(seen, expected);
}

} // namespace
} // namespace framereel
