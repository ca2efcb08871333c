// Picking a window: which one it is, the outline that jumps from one to the next, and how it ends.
#include "area_program.h"
#include "support/dice.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

// ---- Which window --------------------------------------------------------------------------------------------------

std::vector<MemoryChild> AnyChildren(Dice& dice, int32_t depth) {
  std::vector<MemoryChild> children(size_t(dice.Below(depth + 1)));
  for (MemoryChild& child : children) {
    const int32_t left = dice.Below(200) - 40, top = dice.Below(150) - 40; // beyond the parent too
    child = {{left, top, left + 1 + dice.Below(120), top + 1 + dice.Below(120)}, !dice.OneIn(5)};
    child.children = AnyChildren(dice, depth - 1);
  }
  return children;
}

// The rectangle of the last window of the chain, cut by all before it.
PixelRect PlainDeepest(const std::vector<MemoryChild>& children, const PixelRect& around, const PixelRect& cut,
                       int32_t x, int32_t y) {
  for (const MemoryChild& child : children) {
    const PixelRect place = Moved(child.place, around.left, around.top);
    if (child.visible && Holds(place, x, y)) return PlainDeepest(child.children, place, Intersect(cut, place), x, y);
  }
  return cut;
}

TEST(WindowSearch, FindsTheDeepestOneInAForestOfWindows) {
  AreaProgram program;
  Dice dice(7);
  MemoryMinimiseWindow(MemoryWindowTitled("Framereel"),
                       true); // not seen: one that is minimised, and one that is hidden
  MemoryOpenWindow("Hidden", {0, 0, 640, 480}, 1)->shown = false;
  int found = 0, deep = 0;
  for (int round = 0; round < 60; ++round) {
    const int32_t left = dice.Below(700) - 60, top = dice.Below(500) - 60;
    DisplayWindow* window = MemoryOpenWindow("", {left, top, left + 200, top + 160}, 1);
    window->children = AnyChildren(dice, 4);
    if (dice.OneIn(4)) MemoryCloseWindow(TheMemoryDesktop().windows.front().get());
    for (int at = 0; at < 60; ++at) {
      const int32_t x = dice.Below(640), y = dice.Below(480);
      PixelRect wanted = {};
      for (const auto& each : TheMemoryDesktop().windows) {
        if (!each->shown || each->minimised || !Holds(each->place, x, y)) continue;
        wanted = PlainDeepest(each->children, each->place, each->place, x, y);
        deep += !Same(wanted, each->place);
        break;
      }
      Rect picked = {};
      found += FindWindowAt(x, y, &picked);
      EXPECT_TRUE(Same(wanted, {picked.left, picked.top, picked.right, picked.bottom})) << x << "," << y;
    }
  }
  EXPECT_GT(found, 2000);
  EXPECT_GT(deep, 300);
}

TEST(WindowSearch, FindsOurOwnWindowsWithWhatIsInThemButNotTheCover) {
  AreaProgram program;
  const HWND panel = program.panel.window->window;
  RECT inner, outer;
  ::GetWindowRect(panel, &inner);
  ::GetWindowRect(::GetParent(panel), &outer);
  const auto at = [](int32_t x, int32_t y) {
    Rect picked = {};
    FindWindowAt(x, y, &picked);
    return PixelRect{picked.left, picked.top, picked.right, picked.bottom};
  };
  program.Act("begin");
  EXPECT_TRUE(Same(at(inner.left + 50, inner.top + 50), Intersect(PixelsOf(inner), PixelsOf(outer))));
  EXPECT_TRUE(Same(at(outer.left + 30, outer.top), PixelsOf(outer))); // on its frame
  EXPECT_TRUE(IsEmpty(at(5, 5)));
}

// ---- Picking -------------------------------------------------------------------------------------------------------

// Two windows of other programs: one beyond the screen's left edge, and one with a child, of which the upper half is
// seen, and in that a hidden one.
struct Desk : AreaProgram {
  Desk() {
    MemoryOpenWindow("Off", {-50, 200, 51, 300}, 0x102030);
    other = MemoryOpenWindow("Other", {100, 80, 301, 181}, 0x405060);
    other->children = {{{20, 50, 121, 200}, true, {{{0, 0, 500, 500}, false}}}};
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
      {"m 130 140 pick mode 200 170 16 m 130 140 tick d", "rest 120,130 80x40 window !2on16 save"},
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
