// When frames are taken, by the display's clock and a script of what the user does, exact to the tick.
#include "recorder/control/recording_control.h"

#include <functional>
#include <gtest/gtest.h>

#include "core/timers.h"
#include "platform/bitmaps.h"
#include "recorder/recording.h"
#include "resources/bitmaps.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/pixels.h"

namespace framereel {
namespace {

constexpr Rect kArea = {100, 320, 300, 600};
constexpr uint16_t kOne = 512, kTwo = 513, kThree = 514, kPause = 517;

// A timer fires at the first tick beyond its delay.
constexpr uint32_t kPoll = 201, kDigit = 1001;

RecordingOptions Plain() {
  RecordingOptions options;
  options.overlayBorder = options.overlayCursor = false;
  options.frameDelay = 99; // a frame every 100 ms
  return options;
}

// At each depth.
uint32_t White() {
  return PixelBits(TheMemoryDisplay().layout);
}

class Control : public testing::Test {
protected:
  Control() : recording(kArea, Plain()), watch(&recorder()) {
    RecorderInit(recorder());
    began = ::GetTickCount();
    scene = MemoryOpenWindow("Scene", {0, 0, 640, 480}, 0);
    scene->paint = [this] { PaintScene(); };
    PaintScene();
    MemoryGiveKeyboard(scene);
    Settle();
    before = TheMemoryDisplay().screen;
  }
  ~Control() override { RecorderShutDown(recorder()); }

  RecorderState& recorder() { return recording.recorder; }
  // The script's times are ms since RecorderInit.
  void At(uint32_t time, std::function<void()> run) { MemoryAt(began + time, std::move(run)); }
  void RunUntil(uint32_t time) { RunFor(began + time - ::GetTickCount()); }
  void Hold(uint32_t from, uint32_t to, const std::vector<uint8_t>& keys) {
    for (const uint8_t key : keys) {
      At(from, [key] { MemoryPressKey(key); });
      At(to, [key] { MemoryReleaseKey(key); });
    }
  }
  void HoldStartStop(uint32_t from, uint32_t to) { Hold(from, to, {VK_CONTROL, VK_MENU, VK_SHIFT}); }
  void HoldGrab(uint32_t from, uint32_t to) { Hold(from, to, {VK_CONTROL, VK_MENU, VK_SPACE}); }
  // Something in the area changes its colour, so that the next frame has something to show.
  void Change() {
    blockIsWhite = !blockIsWhite;
    MemoryPaintWindow(*scene, blockPlace, blockIsWhite ? White() : 0);
  }
  void PaintScene() const {
    for (int32_t x = 0; x < 640; x += 5) MemoryPaintWindow(*scene, {x, 0, x + 5, 480}, x % 2 ? 0 : White());
    MemoryPaintWindow(*scene, blockPlace, blockIsWhite ? White() : 0);
  }

  bool ScreenIsAsBefore() const { return TheMemoryDisplay().screen == before; }
  // The picture stands in the middle of the area, and all else is as before.
  bool Shows(uint16_t bitmap) const {
    const BitmapResource& picture = *FindBitmapResource(bitmap);
    std::vector<uint32_t> expected = before;
    for (int32_t y = 0; y < picture.height; ++y) {
      for (int32_t x = 0; x < picture.width; ++x) {
        expected[size_t((168 + y) * 640 + 428 + x)] = picture.rows[y][x] == '#' ? 0 : White();
      }
    }
    return TheMemoryDisplay().screen == expected;
  }
  bool CanTake(bool start, bool grab, bool stop) const {
    const RecordButtons& b = recording.buttons;
    return b.start == start && b.grab == grab && b.stop == stop;
  }
  bool IsReady() const { return CanTake(true, true, false); }
  bool IsRecording() const { return CanTake(false, false, true); }
  bool IsBlocked() const { return CanTake(false, false, false); }

  WindowProgram program;
  Recording recording;
  Watch watch;
  DisplayWindow* scene; // of another program, which has the keyboard
  PixelRect blockPlace = {330, 110, 340, 120};
  bool blockIsWhite = false;
  uint32_t began;
  std::vector<uint32_t> before; // what stood on the screen
};

TEST_F(Control, CountsThreeSecondsDownAndTakesTheFirstFrameOfACleanScreen) {
  HoldStartStop(250, 450);
  const uint32_t start = 2 * kPoll + 1; // the poll that sees the chord, and the tick behind it
  const uint32_t first = start + 3 * kDigit;
  At(start - 1, [&] { EXPECT_TRUE(ScreenIsAsBefore()); });
  At(start + 1, [&] { EXPECT_TRUE(Shows(kThree) && IsRecording()); });
  At(start + kDigit - 1, [&] { EXPECT_TRUE(Shows(kThree)); });
  At(start + kDigit + 1, [&] { EXPECT_TRUE(Shows(kTwo)); });
  At(start + 2 * kDigit + 1, [&] { EXPECT_TRUE(Shows(kOne)); });
  At(first - 1, [&] {
    EXPECT_TRUE(Shows(kOne) && recording.optionsEnabled);
    EXPECT_EQ(recording.stream.streamSize, 0u);
  });
  At(first + 1, [&] {
    EXPECT_TRUE(ScreenIsAsBefore());
    EXPECT_FALSE(recording.optionsEnabled);
    EXPECT_EQ(recording.status.substr(0, 8), "1 Frame ");
  });
  RunUntil(first + 2);
  const GifPicture gif = recording.Read();
  ASSERT_EQ(gif.frames.size(), 1u);
  const std::vector<uint32_t> seen = Composite(gif, 0);
  for (int32_t y = 0; y < 200; y += 3) {
    for (int32_t x = 0; x < 280; ++x) {
      const bool dark = before[size_t((100 + y) * 640 + 320 + x)] == 0;
      EXPECT_EQ(seen[size_t(y * 280 + x)] == gif.colours[0], dark || gif.colours[1] == 0) << x << " " << y;
    }
  }
}

TEST_F(Control, TakesAFrameEveryDelayAndTellsTheTrueTimes) {
  recording.options.frameDelay = 24;                                   // 40 a second
  recorder().panel.setStatus = [](void*, const char*) { ::Sleep(7); }; // a frame takes its time
  RecorderStart(recorder());
  RunUntil(1 + 3 * kDigit + 1);
  const uint32_t first = 1 + 3 * kDigit;
  for (uint32_t n = 1; n <= 40; ++n) At(first + n * 25 - 3, [&] { Change(); });
  At(first + 40 * 25 + 1, [&] { recording.options.frameDelay = 1999; }); // taken up behind the next tick
  At(first + 41 * 25 + 1, [&] { Change(); });
  RunUntil(first + 41 * 25 + 2001);
  const GifPicture gif = recording.Read();
  ASSERT_EQ(gif.frames.size(), 42u);
  for (size_t n = 1; n <= 40; ++n) EXPECT_EQ(gif.frames[n].delay, 2) << n;
  EXPECT_EQ(gif.frames[41].delay, 202); // nothing had changed at the 41st tick
  RecorderStop(recorder());
}

TEST_F(Control, ShowsThePauseSignAfterAStopAndDoesNothingElseMeanwhile) {
  RecorderStart(recorder());
  RunUntil(1 + 3 * kDigit + 1);
  const uint32_t stop = 1 + 3 * kDigit + 2 * 100;
  HoldStartStop(stop - 5, stop + 5000);
  At(stop + 1, [&] { EXPECT_TRUE(Shows(kPause) && IsReady()); });
  bool fired = false;
  TimerSchedule([](void* timer) { *static_cast<bool*>(timer) = true; }, &fired, began + stop + 300 - ::GetTickCount());
  At(stop + 749, [&] { EXPECT_TRUE(Shows(kPause) && !fired); });
  At(stop + 751, [&] { EXPECT_TRUE(ScreenIsAsBefore() && IsReady()); });
  RunUntil(stop + 4900);
  EXPECT_TRUE(fired);
  EXPECT_TRUE(ScreenIsAsBefore() && IsReady()) << "held, the chord does not start again";
  EXPECT_FALSE(recording.optionsEnabled);
  HoldStartStop(stop + 5300, stop + 5600);
  RunUntil(stop + 5700);
  EXPECT_TRUE(IsRecording()) << "pressed again, it goes on";
  EXPECT_EQ(recorder().frameCount, 1u);
}

// Milliseconds behind the start: ahead of the first digit, in each of them, and just ahead of the first frame.
TEST_F(Control, StopsInTheCountdownWithoutAFrameOrATrace) {
  for (const uint32_t wait : {0u, 10u, 1500u, 2500u, 3 * kDigit - 1}) {
    for (const bool byChord : {false, true}) {
      if (byChord && wait > 2500) continue; // the chord is seen when a digit changes
      SCOPED_TRACE(testing::Message() << wait << (byChord ? " by chord" : " by button"));
      RecorderStart(recorder());
      const uint32_t now = ::GetTickCount() - began;
      if (byChord) HoldStartStop(now + wait, now + wait + 1100);
      RunUntil(now + wait + (byChord ? 1100 : 0));
      if (!byChord) RecorderStop(recorder());
      RunFor(2000);
      EXPECT_TRUE(ScreenIsAsBefore() && IsReady() && recording.optionsEnabled);
      EXPECT_EQ(recording.stream.streamSize, 0u);
      EXPECT_FALSE(recorder().animationStarted);
      EXPECT_EQ(recorder().control.savedScreen, nullptr);
    }
  }
  const uint32_t now = ::GetTickCount();
  RecorderStop(recorder());
  EXPECT_EQ(::GetTickCount(), now) << "a stop when nothing is recorded shows no sign";
}

// What they paint just as the picture has it cannot be told from the picture: they are asked to paint the place anew
// before another one takes its place.
TEST_F(Control, AsksOthersToPaintAnewWhereverTheyHavePaintedUnderAPicture) {
  blockPlace = {440, 190, 470, 200};
  RecorderStart(recorder());
  RunUntil(1500);
  Change();
  recording.SetArea({10, 10, 110, 210}); // the pause sign stands elsewhere
  uint32_t asked = 0;
  scene->paint = [&] {
    asked = ::GetTickCount();
    PaintScene();
  };
  const uint32_t now = ::GetTickCount();
  RecorderStop(recorder());
  EXPECT_EQ(asked, now);
  const std::vector<uint32_t> after = TheMemoryDisplay().screen;
  PaintScene();
  EXPECT_EQ(TheMemoryDisplay().screen, after);
  scene->paint = {};
}

TEST_F(Control, CountsAChordOnceAndOnlyItsOwnKeys) {
  HoldGrab(210, 2000);
  RunUntil(2500);
  EXPECT_EQ(recorder().frameCount, 1u) << "held, it counts once";
  EXPECT_FALSE(recording.optionsEnabled);
  Hold(2600, 3000, {VK_CONTROL, VK_MENU, VK_SHIFT, VK_SPACE}); // both at once are neither
  Hold(3100, 3500, {VK_CONTROL, VK_MENU});
  Hold(3600, 3605, {VK_CONTROL, VK_MENU, VK_SPACE}); // between two polls
  At(3650, [&] { Change(); });
  RunUntil(3900);
  EXPECT_TRUE(IsReady());
  EXPECT_EQ(recorder().frameCount, 1u);
  HoldStartStop(4000, 4300);
  Hold(4400, 5600, {VK_CONTROL, VK_MENU, VK_SPACE}); // while it counts and records, Grab means nothing
  RunUntil(4000 + 3 * kDigit + 350);
  EXPECT_TRUE(IsRecording());
  EXPECT_EQ(recorder().frameCount, 2u);
  const GifPicture gif = recording.Read();
  ASSERT_EQ(gif.frames.size(), 2u);
  EXPECT_EQ(gif.frames[0].delay, 9) << "a grabbed frame tells the delay that is asked for";
}

TEST_F(Control, BeepsAtAChordWhoseActionIsNotToBeHad) {
  MemoryDisplaySetMode(640, 480, 12); // no depth that can be recorded
  HoldStartStop(250, 450);
  HoldGrab(650, 850);
  RunUntil(1200);
  EXPECT_EQ(TheMemoryDesktop().beeps, 2u);
  EXPECT_EQ(recorder().frameCount, 0u);
  EXPECT_TRUE(IsBlocked());
}

// The depth goes at that time behind the start and comes back a second later: while it is ready, counts, records.
TEST_F(Control, OutlivesAChangeOfDepthInEveryState) {
  RecorderGrab(recorder());
  RunUntil(300);
  for (const uint32_t wait : {500u, 1500u, 2500u, 3500u}) {
    SCOPED_TRACE(wait);
    RecorderStart(recorder());
    const uint32_t now = ::GetTickCount() - began;
    At(now + wait, [] { MemoryDisplaySetMode(640, 480, 8); });
    At(now + wait + 600, [&] {
      EXPECT_TRUE(IsBlocked());
      EXPECT_NE(recording.message, "");
    });
    At(now + wait + 1000, [] { MemoryDisplaySetMode(640, 480, 24); });
    At(now + 5000, [&] { Change(); });
    const uint32_t frames = recorder().frameCount;
    RunUntil(now + 5200);
    EXPECT_TRUE(IsRecording());
    EXPECT_EQ(recording.message, "");
    EXPECT_GT(recorder().frameCount, frames);
    RecorderStop(recorder());
    RunFor(300);
    EXPECT_TRUE(IsReady());
  }
}

TEST_F(Control, EndsABlockedRecordingByChordAlone) {
  RecorderStart(recorder());
  RunUntil(3 * kDigit + 50);
  MemoryDisplaySetMode(640, 480, 8);
  HoldStartStop(3500, 3800);
  RunUntil(6000);
  EXPECT_FALSE(recorder().control.recording);
  MemoryDisplaySetMode(640, 480, 24);
  RunUntil(6100);
  EXPECT_TRUE(IsReady());
}

TEST_F(Control, ThawsTheOptionsForANewAnimationAndLeavesNothingWhenItEnds) {
  RecorderStart(recorder());
  RunUntil(3 * kDigit + 50);
  RecorderThaw(recorder());
  EXPECT_TRUE(recording.optionsEnabled && IsReady());
  StreamClear(recording.stream);
  RecorderReset(recorder());
  EXPECT_EQ(recording.status, "0 Frames (0 bytes)");
  RecorderStart(recorder());
  RunFor(1500);
  EXPECT_TRUE(Shows(kTwo));
  RecorderShutDown(recorder());
  EXPECT_TRUE(ScreenIsAsBefore());
}

// What stood on the screen when the status line was told of a frame.
std::vector<uint32_t> seenBehindFrame;

// Another program paints pixels that the picture does not have, in every picture and beside it: they are what stands
// there from then on, and all others are as they were. Only behind the frame is it asked to paint anew.
TEST(ControlUnderOthers, PutsBackOnlyWhatStillShowsThePicture) {
  for (const int32_t depth : {1, 2, 4, 8, 16, 32}) {
    SCOPED_TRACE(depth);
    WindowProgram program(640, 480, depth);
    Recording recording({100, 320, 300, 600}, Plain());
    DisplayWindow* scene = MemoryOpenWindow("Scene", {300, 0, 640, 480}, 0);
    for (int y = 0; y < 480; y += 3) MemoryPaintWindow(*scene, {0, y, 340, y + 1}, White());
    RecorderInit(recording.recorder);
    recording.recorder.panel.setStatus = [](void*, const char*) { seenBehindFrame = TheMemoryDisplay().screen; };
    std::vector<uint32_t> expected = TheMemoryDisplay().screen;
    const auto paint = [&](const PixelRect& where) {
      for (int y = where.top; y < where.bottom; ++y) {
        for (int x = where.left; x < where.right; ++x) {
          expected[size_t(y * 640 + x)] = MemoryPixel(x, y) ^ White();
          MemoryPaintWindow(*scene, {x - 300, y, x - 299, y + 1}, expected[size_t(y * 640 + x)]);
        }
      }
    };
    const uint32_t refreshes = TheMemoryDesktop().refreshes;
    RecorderStart(recording.recorder);
    for (const PixelRect& where : {PixelRect{420, 160, 450, 181}, {440, 170, 470, 240}, {428, 231, 492, 232}}) {
      RunFor(500);
      paint(where);
      RunFor(500);
    }
    EXPECT_EQ(TheMemoryDesktop().refreshes, refreshes);
    RunFor(50);
    EXPECT_EQ(recording.recorder.frameCount, 1u);
    EXPECT_EQ(seenBehindFrame, expected);
    EXPECT_EQ(TheMemoryDesktop().refreshes, refreshes + 1);

    expected = TheMemoryDisplay().screen;
    MemoryAt(::GetTickCount() + 100, [&] { paint({450, 190, 460, 200}); });
    scene->paint = [&] { EXPECT_EQ(TheMemoryDisplay().screen, expected); };
    RecorderStop(recording.recorder);
    EXPECT_EQ(TheMemoryDesktop().refreshes, refreshes + 2);
    RecorderShutDown(recording.recorder);
    scene->paint = {};
  }
}

// Parts of the picture lie off the screen, and the screen has other pixels.
TEST(ControlAtTheEdge, PutsBackWhatThePictureCovered) {
  for (const int32_t depth : {1, 4, 8, 16, 32}) {
    for (const Rect& area : {Rect{0, 0, 4, 6}, Rect{470, 630, 480, 640}, Rect{-40, 600, 20, 680}}) {
      WindowProgram program(640, 480, depth);
      Recording recording(area, Plain());
      RecorderInit(recording.recorder);
      for (int y = 0; y < 480; y += 3) MemoryFill({0, y, 640, y + 1}, uint32_t(y) & 1);
      const std::vector<uint32_t> before = TheMemoryDisplay().screen;
      RecorderStart(recording.recorder);
      RunFor(1500);
      EXPECT_NE(TheMemoryDisplay().screen, before);
      RecorderStop(recording.recorder);
      EXPECT_EQ(TheMemoryDisplay().screen, before) << depth << " " << area.left;
      RecorderShutDown(recording.recorder);
    }
  }
}

} // namespace
} // namespace framereel
