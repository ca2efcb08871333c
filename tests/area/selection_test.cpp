// A selection with the mouse, with the keys, and of windows; and what it leaves behind.
#include "area/selection.h"

#include <gtest/gtest.h>

#include "area/ants.h"
#include "area_program.h"
#include "core/rects.h"
#include "core/timers.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/records/window_records.h"
#include "platform/windows/child_window.h"
#include "platform/windows/cursor_shape.h"
#include "platform/windows/window_geometry.h"
#include "platform/windows/window_list.h"
#include "toolkit/views/view.h"
#include "win32/memory/memory_display.h"
#include "win32/system/system_version.h"

namespace framereel {
namespace {

TEST(Selection, GoesFromStateToStateByMouseAndKeys) {
  const struct {
    const char *steps, *state;
  } cases[] = {
      // Armed: nothing but a press or Space begins, and Esc ends it.
      {"begin m 100 80", "armed 0,0 440x330"},
      {"begin begin u x", "armed 0,0 440x330"},
      {"begin m 100 80 d", "dragging 100,80 1x1"},
      {"begin m 100 80 esc", "rest 0,0 440x330 save"},
      // Dragging with the mouse, in all directions, across the panel and to the screen's ends.
      {"begin m 100 80 d m 40 90", "dragging 40,80 61x11"},
      {"begin m 450 100 d m 440 95", "dragging 440,95 11x6"},
      {"begin m 639 479 d m 0 0 u", "rest 0,0 640x480 save"},
      {"begin m 100 80 D m 120 70 U", "rest 100,70 21x11 save"},
      {"begin m 100 80 d d m 120 90 u u", "rest 100,80 21x11 save"},
      {"begin m 100 80 d m 120 90 esc m 9 9 u", "rest 100,80 21x11 save"},
      {"begin m 100 80 d m 120 90 space", "rest 100,80 21x11 save"},
      {"begin m 100 80 d m 120 90 left down", "dragging 100,80 20x12"},
      // Keyboard drags, from rest too, with whatever else is held.
      {"m 100 80 S space s", "dragging 100,80 1x1"},
      {"m 100 80 space right right down x", "dragging 100,80 3x2"},
      {"m 100 80 space left up space", "rest 99,79 2x2 save"},
      {"m 100 80 space left up esc", "rest 99,79 2x2 save"},
      {"m 100 80 space m 110 80 d m 120 80 u", "rest 100,80 21x1 save"},
      // Held, Space is one press. In a chord it is none, whichever key goes first.
      {"m 100 80 hold hold hold m 120 90", "dragging 100,80 21x11"},
      {"m 100 80 C A space a c C A S space", "rest 0,0 440x330"},
      {"m 100 80 C A hold a hold c hold", "rest 0,0 440x330"},
      {"m 100 80 C A hold c hold a hold", "rest 0,0 440x330"}, // Alt and Space, but no menu
      {"begin m 100 80 d m 120 90 C A esc space", "dragging 100,80 21x11"},
      // At rest.
      {"esc", "rest 0,0 440x330 slide"},
      {"m 100 80 d m 120 90 u x", "rest 0,0 440x330"},
      {"frame space", "rest 0,0 440x330"},
      // The arrow keys move the pointer in every state.
      {"m 300 200 left left up begin right down down down d right up", "dragging 299,201 2x2"},
  };
  for (const auto& c : cases) {
    AreaProgram program;
    program.Act(c.steps);
    EXPECT_EQ(program.State(), c.state) << c.steps;
  }
}

TEST(Selection, BeginsWithAKeyThatGoesDownAsTheKeyboardComes) {
  AreaProgram program;
  LeaveProgram();
  MemoryGiveKeyboard(MemoryWindowTitled("Framereel"));
  MemoryPressKey(VK_SPACE); // held by the time at which the program hears of the keyboard
  Settle();
  EXPECT_EQ(program.State(), "dragging 0,0 1x1");
}

TEST(Selection, AKeyboardDragFollowsThePointerEveryTenthOfASecond) {
  AreaProgram program;
  program.Act("m 100 80 space");
  for (int i = 1; i <= 3; ++i) {
    TheMemoryDisplay().pointerX = 100 + i; // without an event
    PassTime(100);
    EXPECT_EQ(program.recorder.captureArea.right, 100 + i);
    PassTime(1);
    EXPECT_EQ(program.recorder.captureArea.right, 101 + i);
  }
  program.Act("space");
  TheMemoryDisplay().pointerX = 200;
  PassTime(500);
  EXPECT_EQ(program.State(), "rest 100,80 4x1 save");
}

bool IsCovered(int x, int y) {
  return MemoryWindowAt(x, y) && MemoryWindowAt(x, y)->role == WindowRole::kCover;
}

TEST(Selection, CoversTheScreenWithACrosshairAndTakesTheMouse) {
  AreaProgram program;
  MemoryOpenWindow("Other", {0, 0, 50, 50}, 1);
  program.Act("begin begin");
  for (const auto& [x, y] : {std::pair{0, 0}, {639, 0}, {0, 479}, {639, 479}, {450, 100}}) EXPECT_TRUE(IsCovered(x, y));
  EXPECT_EQ(MemoryWindowAt(0, 0)->shape, PointerShape::kCross);
  EXPECT_EQ(GetCursorShape(), 2);
  RequestClose(program.area.backdrop);
  EXPECT_TRUE(IsOpenChildWindow(program.area.backdrop));
  program.Act("esc");
  EXPECT_FALSE(IsCovered(450, 100));
  EXPECT_EQ(GetCursorShape(), 1);
  Press(program.panel.window, 20, 20);
  EXPECT_EQ(program.State(), "rest 0,0 440x330 save label");
}

// At the ends of a wide screen, and far off the screen.
TEST(Selection, IsTheSameWhereverTheMainWindowStands) {
  AreaProgram program;
  MemoryDisplaySetMode(2700, 480, 24);
  Settle();
  for (const int place : {5, 2600, 30000, -30000}) {
    MoveMainWindow(nullptr, int16_t(place), int16_t(place));
    program.Act("begin");
    EXPECT_TRUE(IsCovered(0, 0) && IsCovered(2699, 479));
    program.Act("m 2699 479 d m 0 0 u");
    EXPECT_EQ(program.State(), "rest 0,0 2700x480 save") << place;
    program.Act("m 100 80 space m 120 90 right space");
    EXPECT_EQ(program.State(), "rest 100,80 22x11 save") << place;
  }
}

TEST(Selection, OutlivesAChangeOfTheDisplay) {
  AreaProgram program;
  program.Act("begin m 100 80 d m 120 90");
  MemoryDisplaySetMode(800, 600, 16);
  program.Act("m 700 500 u");
  EXPECT_EQ(program.State(), "rest 100,80 601x421 save");
}

TEST(Selection, DoesWithoutLabelsAndWithoutFunctions) {
  AreaProgram program;
  program.panel = {};
  program.panel.window = program.area.panel.window;
  AreaTakePanel(program.area, program.panel);
  program.Act("esc begin m 100 80 d m 120 90 u m 10 10 space esc");
  EXPECT_EQ(program.State(), "rest 10,10 1x1");
}

// ---- The read-outs and the geometry ------------------------------------------------------------------------------

TEST(AreaReadouts, TellTheAlignedAreaAndTheAnimationsSize) {
  const struct {
    uint16_t recordingSize;
    const char *steps, *readouts;
  } cases[] = {
      {kSize100, "m 439 0 d m 0 329", "Size: 440x330, Top Left: 0,0"},
      {kSize44, "m 10 20 d m 309 319", "Size: 300x300 (200x200), Top Left: 10,20"},
      {kSize25, "m 310 20 d m 10 320", "Size: 302x302 (151x151), Top Left: 9,19"}, // room on the low side
      {kSize25, "m 1 1 d m 101 101", "Size: 102x102 (51x51), Top Left: 1,1"},      // none there
      {kSize44, "m 0 0 d m 639 479", "Size: 639x480 (426x320), Top Left: 1,0"},    // none at all
  };
  AreaProgram program;
  for (const auto& c : cases) {
    program.options.recordingSize = c.recordingSize;
    program.Act("begin " + std::string(c.steps) + " u");
    EXPECT_EQ(program.size + ", " + program.topLeft, c.readouts);
  }
}

TEST(AreaReadouts, AreSetUpWithTheDefaultArea) {
  AreaProgram program;
  EXPECT_EQ(program.size, "Size: 440x330");
  program.Act("begin m 100 80 d u");
  SetSystemVersion(0x80000003);
  AreaSetDefault(program.area);
  SetSystemVersion(kThisSystem);
  EXPECT_EQ(program.State(), "rest 0,0 460x345 save");
}

// The same text where the label stands on the screen.
void DrawReadout(const ChildWindow* panel, const View* label, const char* text) {
  const Point at = OnScreen(panel, label->x, label->y);
  SetPortScreen();
  UseDrawState(DrawStateFill());
  SetForeColour(ColourMenu());
  FillRect(RectOf(at.h, at.v, label->width, label->height));
  UseDrawState(DrawStateDefault());
  DrawText(at.h, at.v + FontMetrics().ascent, text);
}

TEST(AreaReadouts, ArePaintedOverThePanelAndGoWithTheBackdrop) {
  for (const int depth : {1, 8, 24}) {
    AreaProgram program(depth);
    const Picture before = Screen();
    program.area.panel.setReadouts = nullptr; // the panel's own labels stay as they are
    program.Act("begin m 100 80 d m 120 90");
    AntsToggle(program.area);
    const Picture painted = Screen();
    EXPECT_NE(painted, before);
    DrawReadout(program.panel.window, program.panel.sizeLabel, "Size: 21x11");
    DrawReadout(program.panel.window, program.panel.topLeftLabel, "Top Left: 100,80");
    EXPECT_EQ(painted, Screen());
    AntsToggle(program.area);
    program.Act("u");
    EXPECT_EQ(Screen(), before);
  }
}

// ---- Windows instead -----------------------------------------------------------------------------------------------

std::string picked;
const WindowPicking picking = {[](AreaState&) { picked += "begin "; }, [](AreaState&) { picked += "end "; }};

TEST(WindowMode, ComesWithShiftAloneWhereWindowsCanBePicked) {
  AreaProgram program;
  program.Act("S");
  PassTime(501);
  EXPECT_EQ(program.heard, "");
  program.area.picking = &picking;
  PassTime(501);
  MemoryPressKey(VK_CONTROL);
  PassTime(501);
  MemoryReleaseKey(VK_CONTROL);
  PassTime(500);
  EXPECT_EQ(program.heard, " window area");
  PassTime(1);
  LeaveProgram();
  PassTime(501);
  ReturnToProgram();
  PassTime(501);
  EXPECT_EQ(program.heard, " window area window area window");
}

TEST(WindowMode, HandsThePressesToPickingAndKeepsTheKeys) {
  AreaProgram program;
  picked.clear();
  program.area.picking = &picking;
  program.Act("S");
  PassTime(501);
  program.Act("space s m 100 80");
  PassTime(501); // Shift is up, but the mode is the selection's
  program.Act("d u space right");
  EXPECT_EQ(program.State(), "armed 0,0 440x330 window");
  EXPECT_EQ(TheMemoryDisplay().pointerX, 101);
  EXPECT_EQ(picked, "begin ");
  program.Act("esc");
  EXPECT_EQ(picked, "begin end ");
  PassTime(501);
  EXPECT_EQ(program.State(), "rest 0,0 440x330 save area");
}

} // namespace
} // namespace framereel
