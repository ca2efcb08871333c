// The engine's road from the screen to the file, one rule at a time. Random doings stand in animation_fuzz_test.cpp.
#include "recorder/recorder_core.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "recorder/plain_difference.h"
#include "recorder/recording.h"
#include "recorder/status.h"
#include "support/desktop.h"
#include "support/gif_reader.h"
#include "toolkit/core/memory.h"
#include "win32/heap_faults.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels.h"

namespace framereel {
namespace {

constexpr Rect kArea = {2, 3, 14, 21}; // 18 by 12 pixels

// Without a border, so that pixels are what they are on the screen.
RecordingOptions Plainly(uint16_t recordingSize = kSize100) {
  RecordingOptions options;
  options.overlayBorder = false;
  options.recordingSize = recordingSize;
  return options;
}

GifPicture Read(const Recording& recording) {
  GifPicture gif = ReadGif(recording.Saved());
  EXPECT_EQ(gif.error, "");
  return gif;
}

// Makes sure that the next frame differs from the last, on true colour.
void ChangeAPixel() {
  MemoryPixel(5, 5) ^= 0xFFFFFF;
}

TEST(Animation, BeginsWithTheHeadRecordsThatItsOptionsAskFor) {
  const Desktop desktop(40, 30, 24);
  for (const bool loop : {true, false}) {
    Recording recording(kArea, Plainly());
    recording.options.loop = loop;
    recording.Capture();
    const GifPicture gif = Read(recording);
    EXPECT_EQ(gif.width, 18);
    EXPECT_EQ(gif.height, 12);
    EXPECT_EQ(gif.loopCount, loop ? 0 : -1);
    EXPECT_EQ(gif.comment, "Created by a tester, using Framereel v1.23.");
    EXPECT_EQ(gif.frames.size(), 1U);
    EXPECT_EQ(gif.frames[0].delay, 0);
    EXPECT_EQ(gif.frames[0].transparent, 216); // nothing in it is, but the option is on
  }
}

TEST(Animation, BeginsAnewAtAnotherSizeAndDepthBehindAReset) {
  Desktop desktop(40, 30, 8);
  Recording recording(kArea, Plainly(kSize44));
  ASSERT_TRUE(recording.Capture());
  ::Sleep(500);
  for (const int32_t depth : {24, 1, 2, 8, 4, 32}) {
    StreamClear(recording.stream);
    RecorderReset(recording.recorder);
    RecorderReset(recording.recorder); // there is none any more
    EXPECT_EQ(recording.recorder.animationFormat, kFormatNone);
    desktop.SetMode(60, 20, depth);
    RecorderCheckScreen(recording.recorder);
    recording.options.recordingSize = uint16_t(depth == 24 ? kSize25 : kSize100);
    recording.SetArea({1, 7, 7, int16_t(9 + depth)});
    MemoryFill({7, 1, 9, 2}, depth > 8 ? 0xFFFF : 1);
    ASSERT_TRUE(recording.Capture());
    ::Sleep(40);
    MemoryFill({9, 5, 10, 6}, depth > 8 ? 0xFF0000 : 1);
    ASSERT_TRUE(recording.Capture());
    const GifPicture gif = Read(recording);
    EXPECT_EQ(gif.width, depth == 24 ? 13 : depth + 2);
    EXPECT_EQ(gif.height, depth == 24 ? 3 : 6);
    ASSERT_EQ(gif.frames.size(), 2U);
    EXPECT_EQ(gif.frames[0].delay, 0);
    EXPECT_EQ(gif.frames[1].delay, 4);
  }
}

// ---- Pacing ------------------------------------------------------------------------------------------------------

struct Tick {
  uint32_t at; // ms from the start
  bool grab, changed, timing;
  int delay; // of the frame, if one is written
};

std::vector<int> Delays(uint32_t start, const std::vector<Tick>& ticks) {
  const Desktop desktop(40, 30, 24);
  TheMemoryDisplay().tick = start;
  Recording recording(kArea, Plainly());
  recording.options.frameDelay = 250;
  for (const Tick& tick : ticks) {
    TheMemoryDisplay().tick = start + tick.at;
    if (tick.changed) ChangeAPixel();
    recording.options.recordTimingInfo = tick.timing;
    const uint32_t bytes = recording.stream.streamSize;
    EXPECT_EQ(recording.Capture(tick.grab), tick.changed);
    EXPECT_EQ(recording.stream.streamSize != bytes, tick.changed);
  }
  std::vector<int> delays;
  for (const GifFrame& frame : Read(recording).frames) delays.push_back(frame.delay);
  return delays;
}

TEST(Delays, AreTheTimeFromFrameToFrameInHundredths) {
  constexpr uint32_t k24Days = 0x80000000; // ms
  const std::vector<Tick> scripts[] = {
      {{1000, false, true, true, 0}, {1333, false, true, true, 33}, {1666, false, true, true, 33}},
      {{0, false, true, true, 0}, {9, false, true, true, 0}, {28, false, true, true, 1}},
      // Ticks that find nothing changed leave their time to the next frame.
      {{0, false, true, true, 0},
       {300, false, false, true, 0},
       {600, false, false, true, 0},
       {900, false, true, true, 90}},
      // A grabbed frame has the nominal delay and moves the clock all the same.
      {{0, true, true, true, 25}, {70, true, true, true, 25}, {100, false, true, true, 3}},
      // A grab that finds nothing changed does not.
      {{0, false, true, true, 0}, {70, true, false, true, 0}, {100, false, true, true, 10}},
      // Without timing all are 0; the clock goes on behind it.
      {{0, true, true, false, 0}, {500, false, true, false, 0}, {800, false, true, true, 30}},
      // The field has 16 bits.
      {{0, false, true, true, 0}, {655359, false, true, true, 65535}, {655359 + 655360, false, true, true, 0}},
      {{0, false, true, true, 0}, {655370, false, true, true, 1}},
      // Longer than 2^31 ms counts as negative: -214748363 hundredths, cut to 16 bits.
      {{0, false, true, true, 0}, {k24Days + 10, false, true, true, uint16_t(-214748363)}},
  };
  for (const uint32_t start : {0U, 0xFFFFFFF0U}) { // the clock may wrap meanwhile
    for (const std::vector<Tick>& script : scripts) {
      std::vector<int> expected;
      for (const Tick& tick : script) {
        if (tick.changed) expected.push_back(tick.delay);
      }
      EXPECT_EQ(Delays(start, script), expected) << script[1].at << " behind " << start;
    }
  }
}

TEST(Delays, AreForgottenByAReset) {
  const Desktop desktop(40, 30, 24);
  Recording recording(kArea, Plainly());
  recording.Capture();
  StreamClear(recording.stream);
  RecorderReset(recording.recorder);
  ::Sleep(1000);
  recording.Capture();
  EXPECT_EQ(Read(recording).frames.at(0).delay, 0);
}

// ---- Rectangles --------------------------------------------------------------------------------------------------

struct ChangeCase {
  bool explorer;
  uint16_t size;
  PixelRect changed; // in the frame
  int left, top, width, height;
};

TEST(ChangedRectangle, IsTheSmallestOneInWholeBlocks) {
  const ChangeCase cases[] = {
      {false, kSize100, {7, 4, 8, 5}, 7, 4, 1, 1},     {true, kSize100, {7, 4, 8, 5}, 0, 0, 8, 5},
      {false, kSize100, {0, 0, 18, 12}, 0, 0, 18, 12}, {false, kSize100, {17, 11, 18, 12}, 17, 11, 1, 1},
      {false, kSize25, {3, 3, 4, 4}, 1, 1, 1, 1},      {false, kSize25, {3, 3, 5, 5}, 1, 1, 2, 2},
      {true, kSize25, {3, 3, 4, 4}, 0, 0, 2, 2},       {false, kSize44, {4, 4, 5, 5}, 2, 2, 2, 2},
      {false, kSize44, {5, 4, 7, 5}, 2, 2, 4, 2},      {true, kSize44, {17, 11, 18, 12}, 0, 0, 12, 8},
  };
  for (const int32_t depth : {2, 8, 24}) {
    for (const ChangeCase& c : cases) {
      const Desktop desktop(40, 30, depth);
      Recording recording(kArea, Plainly(c.size));
      recording.options.explorerCompatible = c.explorer;
      ASSERT_TRUE(recording.Capture());
      ASSERT_FALSE(recording.Capture());
      MemoryFill({kArea.left + c.changed.left, kArea.top + c.changed.top, kArea.left + c.changed.right,
                  kArea.top + c.changed.bottom},
                 depth == 24 ? 0xFFFFFF : 3);
      ASSERT_TRUE(recording.Capture());
      ASSERT_FALSE(recording.Capture());
      const GifFrame frame = Read(recording).frames.at(1);
      SCOPED_TRACE(testing::Message() << depth << " bits, size " << c.size << ", from " << c.changed.left);
      EXPECT_EQ(frame.left, c.left);
      EXPECT_EQ(frame.top, c.top);
      EXPECT_EQ(frame.width, c.width);
      EXPECT_EQ(frame.height, c.height);
    }
  }
}

TEST(RecordingSize, PastTheTableCountsAsFull) {
  for (const int32_t depth : {8, 24}) {
    std::vector<uint8_t> files[2];
    for (const uint16_t size : {kSize100, uint16_t{65535}}) {
      const Desktop desktop(40, 30, depth);
      Recording recording(kArea, Plainly(size));
      recording.Capture();
      MemoryFill({5, 5, 9, 9}, 77); // on 256 colours it takes another transparent index
      recording.Capture();
      files[size != kSize100] = recording.Saved();
    }
    EXPECT_EQ(files[1], files[0]) << depth;
  }
}

TEST(Grab, FindsEveryPixelOfTwoBitRowsFromAnyColumn) {
  for (int16_t left = 0; left < 8; ++left) {
    const Desktop desktop(40, 30, 2);
    for (int32_t x = 0; x < 40; ++x) MemoryFill({x, 0, x + 1, 30}, uint32_t(x * x + x / 4) & 3);
    Recording recording({3, left, 5, int16_t(left + 9)}, Plainly());
    recording.Capture();
    EXPECT_EQ(recording.recorder.grab.lead, left % 4);
    const GifFrame frame = Read(recording).frames.at(0);
    for (int32_t i = 0; i < 18; ++i) EXPECT_EQ(frame.indices.at(size_t(i)), MemoryPixel(left + i % 9, 3)) << left;
  }
}

TEST(Grab, TakesFramesAsWideAndAsHighAsTheFieldsHold) {
  std::vector<uint8_t> expected(30000);
  for (const bool wide : {true, false}) {
    Desktop desktop(wide ? 30000 : 1, wide ? 1 : 30000, 24);
    for (uint32_t i = 0; i < 30000; ++i) {
      TheMemoryDisplay().screen[i] = i * 559;
      expected[i] = PlainCubeIndex(MemoryColourOf(i * 559));
    }
    Recording recording({0, 0, int16_t(wide ? 1 : 30000), int16_t(wide ? 30000 : 1)}, Plainly());
    ASSERT_TRUE(recording.Capture());
    TheMemoryDisplay().screen[29999] = 0xFFFFFF;
    ASSERT_TRUE(recording.Capture());
    const GifPicture gif = Read(recording);
    EXPECT_EQ(gif.frames.at(0).indices, expected);
    EXPECT_EQ(gif.frames.at(1).left + gif.frames.at(1).top, 29999);
    EXPECT_EQ(gif.frames.at(1).indices, std::vector<uint8_t>{215});
  }
}

// ---- Colours -----------------------------------------------------------------------------------------------------

TEST(TransparentIndex, IsGivenUpOrMovedOn256Colours) {
  const Desktop desktop(40, 30, 8);
  Recording recording(kArea, Plainly());
  MemoryPixel(20, 13) = 77;
  recording.Capture(); // its last pixel has the index: no transparency
  MemoryPixel(4, 2) = 9;
  recording.Capture(); // 77 stays as it is: no collision
  MemoryPixel(5, 2) = 77;
  recording.Capture(); // a changed 77: the lowest unused colour takes over, 0 and 9 being in use
  for (int i = 0; i < 18 * 12; ++i) MemoryPixel(3 + i % 18, 2 + i / 18) = uint32_t(i);
  recording.Capture(); // 216 colours, 1 among them: 216 is the lowest unused
  recording.options.interframeTransparency = false;
  MemoryFill({3, 2, 21, 14}, 216);
  recording.Capture(); // off: no collision with a changed 216
  recording.options.interframeTransparency = true;
  MemoryPixel(6, 6) = 1;
  recording.Capture();
  const GifPicture gif = Read(recording);
  std::vector<int> indices;
  for (const GifFrame& frame : gif.frames) indices.push_back(frame.transparent);
  EXPECT_EQ(indices, (std::vector<int>{-1, 77, 1, 216, -1, 216}));
}

TEST(TransparentIndex, IsGivenUpForAFrameThatUsesAll256Colours) {
  const Desktop desktop(40, 30, 8);
  Recording recording({0, 0, 16, 16}, Plainly());
  recording.Capture();
  for (int i = 0; i < 256; ++i) MemoryPixel(i % 16, i / 16) = uint32_t(i);
  recording.Capture();
  const GifFrame frame = Read(recording).frames.at(1);
  EXPECT_EQ(frame.transparent, -1);
  ASSERT_EQ(frame.indices.size(), 256U);
  for (size_t i = 0; i < 256; ++i) EXPECT_EQ(frame.indices[i], i); // the unchanged pixel 0 as well
}

void FillScreen(uint32_t pixel) {
  MemoryFill({0, 0, 40, 30}, pixel);
}

TEST(BorderLine, IsBlackOnTheFirstFrameAndShowsThroughLaterOnes) {
  for (const int32_t depth : {1, 2, 4, 8, 24}) {
    const uint32_t white = depth == 24 ? 0xFFFFFF : (1U << depth) - 1, other = depth == 24 ? 0xFF0000 : white ^ 1;
    for (const uint16_t size : {kSize25, kSize44, kSize100}) {
      SCOPED_TRACE(testing::Message() << depth << " bits, size " << size);
      const Desktop desktop(40, 30, depth);
      if (depth == 2) std::swap(TheMemoryDisplay().palette[0], TheMemoryDisplay().palette[1]); // 1 is black
      FillScreen(white);
      Recording recording(kArea, Plainly(size));
      recording.options.overlayBorder = true;
      recording.Capture();
      FillScreen(other); // all changes, under the border as well
      recording.Capture();
      recording.options.interframeTransparency = false;
      FillScreen(white);
      recording.Capture();
      const GifPicture gif = Read(recording);
      ASSERT_EQ(gif.frames.size(), 3U);
      for (size_t i = 0; i < 3; ++i) {
        const std::vector<uint32_t> shown = Composite(gif, i);
        for (int k = 0; k < gif.width * gif.height; ++k) {
          const int x = k % gif.width, y = k / gif.width;
          const bool border = x == 0 || y == 0 || x == gif.width - 1 || y == gif.height - 1;
          const bool black = border || (depth == 1 && i == 1); // there the other colour is black
          ASSERT_EQ(shown[size_t(k)] == 0, black) << "frame " << i << ", " << x << ", " << y;
        }
      }
    }
  }
}

TEST(MousePointer, StandsInTheFramesIfItWasWantedAtTheFirst) {
  for (const bool wanted : {true, false}) {
    const Desktop desktop(40, 30, 24);
    ShowWhitePointer(2, 2, 1, 1);
    DisplayMovePointer(kArea.left, kArea.top); // only the pixel of its hot spot lies in the area
    Recording recording(kArea, Plainly());
    recording.options.overlayCursor = wanted;
    recording.Capture();
    recording.options.overlayCursor = !wanted; // does not matter any more
    DisplayMovePointer(kArea.right, kArea.bottom);
    EXPECT_EQ(recording.Capture(), wanted);
    DisplayMovePointer(kArea.right + 1, kArea.bottom);
    EXPECT_EQ(recording.Capture(), wanted); // it has left
    EXPECT_FALSE(recording.Capture());
    const GifPicture gif = Read(recording);
    EXPECT_EQ(Composite(gif, 0).front(), wanted ? 0xFFFFFFU : 0U);
    EXPECT_EQ(Composite(gif, 0).at(1), 0U);
    if (!wanted) continue;
    EXPECT_EQ(Composite(gif, 1).front(), 0U);
    EXPECT_EQ(Composite(gif, 1).back(), 0xFFFFFFU);
    EXPECT_EQ(Composite(gif, 2).back(), 0U);
  }
}

// ---- Failures ----------------------------------------------------------------------------------------------------

TEST(LostDisplay, LeavesTheAnimationAsItIs) {
  const Desktop desktop(40, 30, 24);
  Recording recording(kArea, Plainly());
  recording.Capture();
  const std::vector<uint8_t> before = recording.Saved();
  ChangeAPixel();
  TheMemoryDisplay().lost = true;
  EXPECT_FALSE(recording.Capture());
  EXPECT_EQ(recording.Saved(), before);
}

// Exit codes of a process whose memory ends at some allocation.
enum : int { kHookToldOnce = 3, kSecondCaptureDidSomething = 4, kDone = 7 };

// While memory ends, the hook may run a loop of its own, in which another capture comes in.
void CaptureOnceMore(void* recording, uint32_t count) {
  Recording& inner = *static_cast<Recording*>(recording);
  FailAllocationsAfter(-1);
  const uint32_t bytes = inner.stream.streamSize;
  RecorderCaptureFrame(inner.recorder, true);
  const bool nothing = inner.stream.streamSize == bytes && inner.recorder.frameCount == 0;
  ::_exit(count == 1 && nothing ? kHookToldOnce : kSecondCaptureDidSomething);
}

TEST(MemoryDeathTest, EndsInTheHookAtWhicheverAllocationOfTheFirstFrameItEnds) {
  for (const int32_t depth : {8, 24}) {
    const Desktop desktop(40, 30, depth);
    Recording recording(kArea, Plainly(kSize44));
    int allocations = 0;
    for (bool done = false; !done; ++allocations) {
      const auto ended = [&done](int status) {
        const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        done = code == kDone;
        return done || code == kHookToldOnce;
      };
      ASSERT_EXIT(
          {
            SetMemFailureHook(CaptureOnceMore, &recording);
            FailAllocationsAfter(allocations);
            RecorderCaptureFrame(recording.recorder, false);
            ::_exit(kDone);
          },
          ended, "");
    }
    EXPECT_GT(allocations, 8); // tables, buffers, frames, the comment
  }
}

TEST(MemoryDeathTest, EndsInTheHookWhenTheDisplayHasNoSurfaceForTheArea) {
  const Desktop desktop(40, 30, 24);
  Recording recording(kArea, Plainly());
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
