// The moving line, pixel by pixel, and its pauses.
#include "area/ants.h"

#include <gtest/gtest.h>

#include "area/selection.h"
#include "area_program.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

constexpr uint32_t kTick = 151; // to the next step of the line

class AntsOn : public ::testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(, AntsOn, ::testing::Values(1, 4, 8, 16, 24));

TEST_P(AntsOn, MoveRoundTheAreaAndLeaveTheScreenAsItWas) {
  // Inside, as small as it gets, across the panel, and beyond the screen's edges on two sides and on all.
  const Rect areas[] = {{80, 100, 150, 201}, {77, 33, 78, 34}, {70, 380, 100, 470}, {0, 0, 330, 440}, {0, 0, 480, 640}};
  AreaProgram program(GetParam());
  AreaState& area = program.area;
  for (const Rect& captured : areas) {
    program.SetArea(captured);
    const Rect outline = AreaOutline(area);
    const Picture before = Screen();
    const int first = area.ants.phase;
    InvalidateChildWindow(program.panel.window); // what is still to be painted goes under the line
    AntsShow(area);
    EXPECT_TRUE(Screen() == WithLine(before, outline, first));
    for (int step = 1; step <= 9; ++step) {
      PassTime(kTick - 1);
      EXPECT_TRUE(Screen() == WithLine(before, outline, first + step - 1)) << step;
      PassTime(1);
      EXPECT_TRUE(Screen() == WithLine(before, outline, first + step)) << step;
    }
    AntsHide(area);
    EXPECT_TRUE(Screen() == before);
    PassTime(kTick);
    EXPECT_TRUE(Screen() == before);
  }
}

TEST(Ants, CountShowsAndHidesAlsoBelowZero) {
  AreaProgram program;
  AreaState& area = program.area;
  const Picture before = Screen();
  const auto shown = [&] { return Screen() == WithLine(before, AreaOutline(area), area.ants.phase); };
  AntsHide(area); // a dialog that opens while no line is shown
  EXPECT_EQ(Screen(), before);
  AntsShow(area); // and closes
  EXPECT_EQ(Screen(), before);
  AntsShow(area);
  AntsShow(area);
  EXPECT_TRUE(shown());
  PassTime(kTick);
  AntsHide(area);
  EXPECT_TRUE(shown());
  AntsHide(area);
  EXPECT_EQ(Screen(), before);
}

TEST_P(AntsOn, FollowTheRubberBandAlsoAcrossTheReadOuts) {
  AreaProgram program(GetParam());
  AreaState& area = program.area;
  // The panel's labels are repainted at each step, under the line.
  const Point label = OnScreen(program.panel.window, 10, 10);
  program.Act("begin m " + std::to_string(label.h + 5) + " " + std::to_string(label.v + 5) + " d");
  for (const char* steps : {"m 300 200", "m 620 110", "m 639 110"}) {
    program.Act(steps);
    const Picture with = Screen();
    AntsToggle(area);
    const Picture without = Screen();
    EXPECT_TRUE(with == WithLine(without, AreaOutline(area), area.ants.phase)) << steps;
    MemoryExpose(Region(PixelRect{0, 0, 640, 480}));
    EXPECT_TRUE(without == Screen()) << steps;
    AntsToggle(area);
  }
}

// Show Area is on while the user draws the area that stands there already, so that all read-outs stay.
class AntsPauseTest : public ::testing::Test {
protected:
  AntsPauseTest() {
    Select();
    before = Screen();
    AntsShow(program.area);
  }

  void Select() { program.Act("begin m 100 80 d m 150 130 u"); }
  bool IsClear() { return Screen() == before; }
  bool HasLine() { return Screen() == WithLine(before, AreaOutline(program.area), program.area.ants.phase); }

  void ExpectAPauseOfEightTicks() {
    const uint16_t phase = program.area.ants.phase;
    for (int tick = 1; tick <= 8; ++tick) {
      EXPECT_TRUE(IsClear()) << tick;
      PassTime(kTick);
    }
    EXPECT_TRUE(HasLine());
    EXPECT_EQ(program.area.ants.phase, (phase + 1) & 7);
    AntsHide(program.area);
    EXPECT_TRUE(IsClear());
  }

  AreaProgram program;
  Picture before;
};

TEST_F(AntsPauseTest, ASelectionTakesTheLineOffForAWhileButTheNextOneShowsItsBand) {
  PassTime(3 * kTick);
  Select();
  EXPECT_TRUE(IsClear());
  program.Act("begin m 100 80");
  EXPECT_TRUE(HasLine());
  program.Act("d m 150 130");
  EXPECT_TRUE(HasLine());
  program.Act("u");
  ExpectAPauseOfEightTicks();
}

TEST_F(AntsPauseTest, ARefreshClearsStrayInversions) {
  AntsToggle(program.area); // as if something had been painted under it
  EXPECT_FALSE(HasLine());
  RefreshScreen(program.area);
  ExpectAPauseOfEightTicks();
}

TEST_F(AntsPauseTest, HidingInItDrawsNothingAndShowingEndsIt) {
  AntsPause(program.area);
  EXPECT_TRUE(IsClear());
  AntsHide(program.area);
  EXPECT_TRUE(IsClear());
  AntsShow(program.area);
  EXPECT_TRUE(HasLine());
  AntsHide(program.area);
  AntsHide(program.area); // below zero a selection has no band
  program.SetArea({5, 5, 9, 9});
  program.Act("begin m 100 80 d m 150 130");
  EXPECT_TRUE(IsClear());
}

TEST_F(AntsPauseTest, ANewRecordingSizeMovesTheLineOrNothingInAPause) {
  AreaState& area = program.area;
  program.options.recordingSize = kSize25; // 51 by 51 to 52 by 52
  AreaRecompute(area);
  EXPECT_EQ(area.recorder->captureArea.left, 99);
  EXPECT_TRUE(HasLine());
  RefreshScreen(area);
  area.recorder->captureArea = {80, 100, 131, 151};
  AreaRecompute(area);
  ExpectAPauseOfEightTicks();
}

} // namespace
} // namespace framereel
