// The animation around its frames, and what happens when it cannot go on. The frames themselves stand in
// animation_fuzz_test.cpp.
#include "recorder/engine/recorder_core.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "core/memory.h"
#include "recorder/plain_difference.h"
#include "recorder/recording.h"
#include "support/desktop.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

constexpr Rect kArea = {2, 3, 14, 21}; // 18 by 12 pixels

TEST(Animation, BeginsWithTheHeadRecordsThatItsOptionsAskFor) {
  const Desktop desktop(40, 30, 24);
  for (const bool loop : {true, false}) {
    Recording recording(kArea);
    recording.options.loop = loop;
    recording.Capture();
    const GifPicture gif = recording.Read();
    EXPECT_EQ(gif.loopCount, loop ? 0 : -1);
    EXPECT_EQ(gif.comment, "Created by a tester, using Framereel v1.23.");
  }
}

TEST(Animation, BeginsAnewAtAnotherSizeAndDepthBehindAReset) {
  Desktop desktop(40, 30, 8);
  Recording recording(kArea);
  recording.options.recordingSize = kSize44;
  recording.SetArea(kArea);
  ASSERT_TRUE(recording.Capture());
  ::Sleep(500);
  for (const int32_t depth : {24, 1, 2, 8, 4, 32}) {
    StreamClear(recording.stream);
    RecorderReset(recording.recorder);
    RecorderReset(recording.recorder); // there is none any more
    EXPECT_EQ(recording.recorder.animationFormat, kFormatNone);
    desktop.SetMode(60, 20, depth);
    RecorderCheckScreen(recording.recorder);
    recording.options.recordingSize = depth == 24 ? kSize25 : kSize100;
    recording.SetArea({1, 7, 7, int16_t(9 + depth)});
    ASSERT_TRUE(recording.Capture());
    ::Sleep(40);
    MemoryFill({8, 4, 9, 5}, depth > 8 ? 0xFF0000 : 1);
    ASSERT_TRUE(recording.Capture());
    const GifPicture gif = recording.Read();
    EXPECT_EQ(gif.width, depth == 24 ? 13 : depth + 2);
    EXPECT_EQ(gif.height, depth == 24 ? 3 : 6);
    ASSERT_EQ(gif.frames.size(), 2U);
    EXPECT_EQ(gif.frames[0].delay, 0);
    EXPECT_EQ(gif.frames[1].delay, 4);
  }
}

TEST(Grab, TakesFramesAsWideAndAsHighAsTheFieldsHold) {
  constexpr int16_t kMost = 0x7FFF;
  std::vector<uint8_t> expected(kMost);
  for (const bool wide : {true, false}) {
    const int16_t width = wide ? kMost : 1, height = wide ? 1 : kMost;
    const Desktop desktop(width, height, 24);
    for (uint32_t i = 0; i < kMost; ++i) {
      TheMemoryDisplay().screen[i] = i * 559;
      expected[i] = PlainCubeIndex(MemoryColourOf(i * 559));
    }
    Recording recording({0, 0, height, width});
    recording.options.overlayBorder = false;
    ASSERT_TRUE(recording.Capture());
    TheMemoryDisplay().screen[kMost - 1] = 0xFFFFFF;
    ASSERT_TRUE(recording.Capture());
    const GifPicture gif = recording.Read();
    EXPECT_EQ(gif.frames.at(0).indices, expected);
    EXPECT_EQ(gif.frames.at(1).left + gif.frames.at(1).top, kMost - 1);
    EXPECT_EQ(gif.frames.at(1).indices, std::vector<uint8_t>{215});
  }
}

TEST(Grab, TakesNothingOfAnAreaThatHasNoPixelsOrTooMany) {
  const Desktop desktop(40, 30, 8);
  Recording recording(kArea);
  for (const Rect& area : {Rect{2, 3, 14, 3}, Rect{2, 3, 2, 21}, Rect{14, 3, 2, 21}, Rect{-32768, 3, 32767, 21}}) {
    for (const uint16_t size : {kSize25, kSize100}) {
      recording.options.recordingSize = size;
      recording.SetArea(area);
      EXPECT_FALSE(recording.Capture());
    }
  }
  recording.options.recordingSize = kSize25;
  recording.SetArea({2, 3, 14, 4}); // half a block
  EXPECT_FALSE(recording.Capture());
  EXPECT_EQ(recording.stream.streamSize, 0U);
  recording.SetArea(kArea);
  EXPECT_TRUE(recording.Capture());
}

TEST(LostDisplay, LeavesTheAnimationAsItIs) {
  const Desktop desktop(40, 30, 24);
  Recording recording(kArea);
  recording.Capture();
  const std::vector<uint8_t> before = recording.Saved();
  MemoryPixel(5, 5) = 0xFFFFFF;
  TheMemoryDisplay().lost = true;
  EXPECT_FALSE(recording.Capture());
  EXPECT_EQ(recording.Saved(), before);
}

// Exit codes of a process whose memory ends.
enum : int { kHookToldOnce = 3, kSecondCaptureDidSomething = 4 };

// While memory ends, the hook may run a loop of its own, in which another capture comes in.
void CaptureOnceMore(void* recording, uint32_t count) {
  Recording& inner = *static_cast<Recording*>(recording);
  const uint32_t bytes = inner.stream.streamSize;
  RecorderCaptureFrame(inner.recorder, true);
  const bool nothing = inner.stream.streamSize == bytes && inner.recorder.frameCount == 0;
  ::_exit(count == 1 && nothing ? kHookToldOnce : kSecondCaptureDidSomething);
}

// What happens when other memory ends stands in the tests of the command.
TEST(MemoryDeathTest, EndsInTheHookWhenTheDisplayHasNoSurfaceForTheArea) {
  const Desktop desktop(40, 30, 24);
  Recording recording(kArea);
  TheMemoryDisplay().outOfSurfaces = true;
  ASSERT_EXIT(
      {
        SetMemFailureHook(CaptureOnceMore, &recording);
        RecorderCaptureFrame(recording.recorder, false);
      },
      testing::ExitedWithCode(kHookToldOnce), "");
}

} // namespace
} // namespace framereel
