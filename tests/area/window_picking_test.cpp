// Picking a window: which one it is, the outline that jumps from one to the next, and how it ends.
#include "area/area_program.h"

namespace framereel {
namespace {

// Windows of other programs: one beyond the screen's left edge, and one with a child, of which the upper half is seen,
// and in that a hidden one and two that meet, the upper one first. A hidden and a minimised one stand over it all.
struct Desk : AreaProgram {
  Desk() {
    MemoryOpenWindow("Off", {-50, 200, 51, 300}, 0x102030);
    other = MemoryOpenWindow("Other", {100, 80, 301, 181}, 0x405060);
    const MemoryChild hidden = {{0, 0, 500, 500}, false}, upper = {{40, 10, 60, 30}, true},
                      lower = {{50, 20, 75, 35}, true};
    other->children = {{{20, 50, 121, 200}, true, {hidden, upper, lower}}};
    MemoryMinimiseWindow(MemoryOpenWindow("Minimised", {0, 0, 640, 480}, 1), true);
    MemoryOpenWindow("Hidden", {0, 0, 640, 480}, 1)->shown = false;
    MemoryExpose(Region(PixelRect{0, 0, 640, 480}));
    Settle();
    words["pick"] = [this](std::istream&) { Act("+shift pass 501 begin -shift pass 1"); };
    words["goes"] = [this](std::istream&) { MemoryCloseWindow(other); };
    words["minimises"] = [this](std::istream&) { MemoryMinimiseWindow(other, true); };
    words["bares"] = [this](std::istream&) { other->children.clear(); };
    words["beeps"] = [this](std::istream&) { Say(Text(TheMemoryDesktop().beeps, " beeps")); };
    Add("tick", [] { PassTime(kHoverTick); });
    Add("comes", [] { MemoryOpenWindow("", {125, 135, 135, 145}, 0); });
    Add("takeskeys", [] { MemoryGrabKeys(true); });
  }

  static constexpr uint32_t kHoverTick = 18; // ms to the next step of the outline
  DisplayWindow* other;
};

TEST(WindowPick, GoesFromWindowToWindowAndEnds) {
  const struct {
    const char *steps, *state;
  } cases[] = {
      // Shift alone, held in the active program, offers it. It takes the presses; the keys stay.
      {"+shift pass 501 +ctrl pass 501 -ctrl pass 500", "rest 0,0 440x330 window area"},
      {"+shift pass 501 leave pass 501 return pass 501", "rest 0,0 440x330 window area window"},
      {"+shift pass 501 space -shift pass 501 m 100 80 m 9 9 u space right X", "armed 0,0 440x330 window"},
      {"+shift pass 501 space -shift esc pass 501", "rest 0,0 440x330 window save area"},
      // The outline rushes, stays while the pointer moves within a window, and jumps to the next.
      {"note m 130 140 pick look tick look m 200 170 tick tick look tick tick tick tick tick look",
       "armed 0,0 440x330 window 120,130 101x51/0 120,130 101x51/1 120,130 101x51/3 120,130 101x51/0"},
      {"note m 110 90 pick look m 3 299 tick look m 130 140 tick look m 3 400 tick look",
       "armed 0,0 440x330 window 100,80 201x101/0 -50,200 101x100/0 120,130 101x51/0 line"},
      {"m 130 140 note pick tick esc look tick tick look", "rest 0,0 440x330 window save clear clear"},
      {"m 130 140 note pick tick stopall look", "rest 0,0 440x330 window clear"},
      {"note m 130 140 pick esc m 110 90 pick look", "armed 0,0 440x330 window save 100,80 201x101/0"},
      {"note m 110 90 pick hide look tick look", "armed 0,0 440x330 window line 100,80 201x101/0"},
      {"note m 110 90 pick hide pauseline tick look resumeline tick look",
       "armed 0,0 440x330 window clear 100,80 201x101/0"},
      // A press takes the window, whichever button it is, cut to the screen and in whole blocks; no drag follows.
      {"m 130 140 pick d", "rest 120,130 101x51 window save"},
      {"m 130 140 pick rd m 110 90 ru beeps", "rest 120,130 101x51 window save 0 beeps"},
      {"m 110 90 size25 pick d readouts", "rest 99,79 202x102 window save Size: 202x102 (101x51), Top Left: 99,79"},
      {"m 3 250 pick d", "rest 0,200 51x100 window save"},
      {"m 175 155 pick d", "rest 160,140 20x20 window save"},
      {"m 185 155 pick d", "rest 170,150 25x15 window save"},
      {"m 450 120 pick d", "rest 399,41 206x125 window save"}, // our panel, and the main window beside it
      {"m 500 250 pick d", "rest 397,38 243x250 window save"},
      {"m 3 400 pick d beeps", "rest 0,0 440x330 window save 1 beeps"},
      // Windows come and go, since the last look and before the next.
      {"m 130 140 note pick goes d beeps", "rest 0,0 440x330 window save 1 beeps"},
      {"m 130 140 pick minimises d beeps", "rest 0,0 440x330 window save 1 beeps"},
      {"m 130 140 pick bares d", "rest 100,80 201x101 window save"},
      {"m 130 140 pick comes d", "rest 125,135 10x10 window save"},
      {"m 130 140 pick goes tick tick d", "rest 0,0 440x330 window save"},
      // Others take the mouse or the keyboard, or change the screen; the options are frozen.
      {"m 130 140 pick takemouse d", "rest 120,130 101x51 window save"},
      {"m 130 140 pick takeskeys d", "rest 120,130 101x51 window save"},
      {"m 130 140 pick leave d", "rest 120,130 101x51 window save"},
      {"m 130 140 pick mode 200 170 16 m 130 140 tick d", "rest 120,130 80x40 window !2on16 !5 save"},
      {"m 130 140 pick freezes d u", "rest 0,0 440x330 window"},
  };
  for (const auto& c : cases) {
    Desk desk;
    desk.Act(c.steps);
    EXPECT_EQ(desk.State(), c.state) << c.steps;
  }
}

} // namespace
} // namespace framereel
