// The moving line, pixel by pixel, and its pauses.
#include "area/ants.h"

#include <gtest/gtest.h>

#include "area/selection.h"
#include "area_program.h"
#include "platform/windows/child_window.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

constexpr uint32_t kTick = 151; // to the next step of the line

constexpr int kDepths[] = {1, 4, 8, 16, 24};

TEST(Ants, MoveRoundTheAreaAndLeaveTheScreenAsItWas) {
  // Inside, as small as it gets, across the panel, and beyond the screen's edges on two sides and on all.
  const Rect areas[] = {{80, 100, 150, 201}, {77, 33, 78, 34}, {70, 380, 100, 470}, {0, 0, 330, 440}, {0, 0, 480, 640}};
  for (const int depth : kDepths) {
    AreaProgram program(depth);
    AreaState& area = program.area;
    for (const Rect& captured : areas) {
      SCOPED_TRACE(testing::Message() << depth << " bits, from " << captured.left);
      program.SetArea(captured);
      const Picture before = Screen();
      const auto shows = [&](int phase) { return Screen() == WithLine(before, AreaOutline(area), phase); };
      const int first = area.ants.phase;
      InvalidateChildWindow(program.panel.window); // what is still to be painted goes under the line
      AntsShow(area);
      EXPECT_TRUE(shows(first));
      for (int phase = first; phase < first + 9; ++phase) {
        PassTime(kTick - 1);
        EXPECT_TRUE(shows(phase));
        PassTime(1);
        EXPECT_TRUE(shows(phase + 1));
      }
      AntsHide(area);
      EXPECT_TRUE(Screen() == before);
      PassTime(kTick);
      EXPECT_TRUE(Screen() == before);
    }
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
  AntsShow(area);
  AntsShow(area);
  AreaShutDown(area);
  EXPECT_EQ(Screen(), before);
}

TEST(Ants, FollowTheRubberBandAlsoAcrossTheReadOuts) {
  for (const int depth : kDepths) {
    AreaProgram program(depth);
    AreaState& area = program.area;
    // The panel's labels are repainted at each step, under the line.
    const Point label = OnScreen(program.panel.window, 10, 10);
    program.Act("begin m " + std::to_string(label.h + 5) + " " + std::to_string(label.v + 5) + " d");
    for (const char* steps : {"m 300 200", "m 620 110"}) {
      program.Act(steps);
      const Picture with = Screen();
      AntsToggle(area);
      const Picture without = Screen();
      EXPECT_TRUE(with == WithLine(without, AreaOutline(area), area.ants.phase)) << depth << " " << steps;
      MemoryExpose(Region(PixelRect{0, 0, 640, 480}));
      EXPECT_TRUE(without == Screen()) << depth << " " << steps;
      AntsToggle(area);
    }
  }
}

// Show Area is on while the user draws the area that stands there already, so that all read-outs stay.
class AntsPauseTest : public ::testing::Test {
protected:
  AntsPauseTest() {
    program.Act(kSelection);
    before = Screen();
    AntsShow(program.area);
  }

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
  }

  static constexpr const char* kSelection = "begin m 100 80 d m 150 130 u";
  AreaProgram program;
  Picture before;
};

TEST_F(AntsPauseTest, ASelectionTakesTheLineOffForAWhileButTheNextOneShowsItsBand) {
  PassTime(3 * kTick);
  program.Act(kSelection);
  EXPECT_TRUE(IsClear());
  program.Act("begin m 100 80");
  EXPECT_TRUE(HasLine());
  program.Act("d m 150 130");
  EXPECT_TRUE(HasLine());
  program.Act("u");
  ExpectAPauseOfEightTicks();
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
  program.options.recordingSize = kSize25; // 51 by 51 to 52 by 52
  AreaRecompute(program.area);
  EXPECT_EQ(program.recorder.captureArea.left, 99);
  EXPECT_TRUE(HasLine());
  RefreshScreen(program.area);
  program.recorder.captureArea = {80, 100, 131, 151};
  AreaRecompute(program.area);
  ExpectAPauseOfEightTicks();
}

} // namespace
} // namespace framereel
