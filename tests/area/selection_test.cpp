// A selection with the mouse and with the keys, and what it leaves behind.
#include "area/area_program.h"

namespace framereel {
namespace {

TEST(Selection, GoesFromStateToStateByMouseAndKeys) {
  const struct {
    const char *steps, *state;
  } cases[] = {
      // Armed, Esc ends it.
      {"begin m 100 80 esc", "rest 0,0 440x330 save"},
      // Dragging with the mouse, in all directions, across the panel and to the screen's ends.
      {"begin m 100 80 d m 40 90", "dragging 40,80 61x11"},
      {"begin m 639 479 d m 0 0 u", "rest 0,0 640x480 save"},
      {"begin m 100 80 rd m 120 70 ru", "rest 100,70 21x11 save"},
      {"begin m 100 80 d m 120 90 esc m 9 9 u", "rest 100,80 21x11 save"},
      {"begin m 100 80 d m 120 90 space", "rest 100,80 21x11 save"},
      // Keyboard drags, from rest too, with whatever else is held.
      {"m 100 80 +shift space -shift", "dragging 100,80 1x1"},
      {"m 100 80 space right right down X", "dragging 100,80 3x2"},
      {"m 100 80 space m 110 80 d m 120 80 u", "rest 100,80 21x1 save"},
      // A tenth of a second, and the drag follows what nobody has told.
      {"m 100 80 space slip 101 pass 101 slip 102 pass 101", "dragging 100,80 3x1"},
      {"m 100 80 space slip 101 pass 101 space slip 200 pass 500", "rest 100,80 2x1 save"},
      // Also where the key goes down as the keyboard comes.
      {"leave together return +space settle", "dragging 0,0 1x1"},
      // Held, Space is one press. In a chord it is none, whichever key goes first.
      {"m 100 80 +space +space +space m 120 90", "dragging 100,80 21x11"},
      {"m 100 80 +ctrl +alt space -alt -ctrl +ctrl +alt +shift space", "rest 0,0 440x330"},
      {"m 100 80 +ctrl +alt +space -ctrl +space -alt +space", "rest 0,0 440x330"}, // Alt and Space, but no menu
      {"begin m 100 80 d m 120 90 +ctrl +alt esc space", "dragging 100,80 21x11"},
      // At rest.
      {"esc", "rest 0,0 440x330 slide"},
      {"frame space", "rest 0,0 440x330"},
      // The arrow keys move the pointer in every state.
      {"m 300 200 left left up begin right down down down d right up", "dragging 299,201 2x2"},
      // The display changes under it.
      {"begin m 100 80 d m 120 90 mode 800 600 16 m 700 500 u", "rest 100,80 601x421 !2on16 save"},
      // The aligned area and the animation's size.
      {"readouts", "rest 0,0 440x330 Size: 440x330, Top Left: 0,0"},
      {"size44 begin m 10 20 d m 309 319 u readouts",
       "rest 10,20 300x300 save Size: 300x300 (200x200), Top Left: 10,20"},
      {"size25 begin m 310 20 d m 10 320 u readouts", // room on the low side
       "rest 9,19 302x302 save Size: 302x302 (151x151), Top Left: 9,19"},
      {"size25 begin m 1 1 d m 101 101 u", "rest 1,1 102x102 save"},         // none there
      {"size44 begin m 100 100 d m 199 201 u", "rest 99,100 102x102 save"},  // of two pixels one on each side
      {"size44 begin m 539 279 d m 638 380 u", "rest 537,279 102x102 save"}, // the far side is at its bound
      {"size44 begin m 0 0 d m 639 479 u readouts",                          // none at all
       "rest 1,0 639x480 save Size: 639x480 (426x320), Top Left: 1,0"},
  };
  for (const auto& c : cases) {
    AreaProgram program;
    program.Act(c.steps);
    EXPECT_EQ(program.State(), c.state) << c.steps;
  }
}

bool IsCovered(int x, int y) {
  return MemoryWindowAt(x, y) && MemoryWindowAt(x, y)->role == WindowRole::kCover;
}

TEST(Selection, CoversTheScreenWithACrosshairAndTakesTheMouseWhereverTheMainWindowStands) {
  AreaProgram program;
  MemoryDisplaySetMode(2700, 480, 24);
  MemoryOpenWindow("Other", {0, 0, 50, 50}, 1);
  for (const int place : {60, 5, 2600, 32700, -32700}) { // at the ends of a wide screen, and far off the screen
    SCOPED_TRACE(place);
    MoveMainWindow(nullptr, int16_t(place), int16_t(place));
    program.Act("begin begin");
    for (const auto& [x, y] : {std::pair{0, 0}, {2699, 0}, {0, 479}, {2699, 479}, {65, 85}}) {
      EXPECT_TRUE(IsCovered(x, y)) << x;
    }
    EXPECT_EQ(MemoryWindowAt(0, 0)->shape, PointerShape::kCross);
    program.log.clear();
    program.Act("m 2699 479 d m 0 0 u");
    EXPECT_EQ(program.State(), "rest 0,0 2700x480 save");
    EXPECT_FALSE(IsCovered(65, 85));
    program.Act("m 100 80 space m 120 90 right space");
    EXPECT_EQ(program.State(), "rest 100,80 22x11 save");
  }
}

} // namespace
} // namespace framereel
