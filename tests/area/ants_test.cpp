// The moving line, pixel by pixel, and its pauses.
#include "area/area_program.h"

namespace framereel {
namespace {

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

TEST(Ants, CountShowsAndHidesAndPauseForSelectionsAndPaints) {
  // The user draws the area that stands there already, so that all read-outs stay.
  const std::string select = "begin m 100 80 d m 150 130 u ", begun = select + "note showline ";
  const std::pair<std::string, const char*> cases[] = {
      // A dialog that opens while no line is shown takes it below zero, and the dialog's end back again.
      {"note hideline look showline look", "clear clear"},
      {"note showline showline look pass 151 hideline look hideline look", "line line clear"},
      {"note showline showline stopall look", "clear"},
      // A selection takes the line off for a while, but the next one shows its band.
      {begun + "pass 151 pass 151 " + select + "look begin m 100 80 look d m 150 130 look u pause",
       "save clear line line save line after 8"},
      // As if something had been painted under it.
      {begun + "toggleline look refresh pause", "clear line after 8"},
      // In a pause hiding draws nothing, and showing ends it. Below zero a selection has no band.
      {begun + "pauseline look hideline look showline look", "clear clear line"},
      {begun + "hideline hideline begin m 120 90 d u begin m 100 80 d m 150 130 look", "save clear"},
      // A new recording size, which takes 51 by 51 to 52 by 52, moves the line along, or nothing in a pause.
      {begun + "size25 recompute look", "line"},
      {begun + "refresh size25 recompute pause", "line after 8"},
  };
  for (const auto& [steps, told] : cases) {
    AreaProgram program;
    program.Act(steps);
    std::string log = program.log;
    if (log.compare(0, 5, "save ") == 0) log.erase(0, 5); // of the first selection
    EXPECT_EQ(log, told) << steps;
  }
}

} // namespace
} // namespace framereel
