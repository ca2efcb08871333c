// Which window is active and has the focus: among our own windows, and across other programs.
#include "win32/window_scene.h"

namespace framereel {
namespace {

using WindowActivation = OneWindow;
constexpr const char* kEvents = "app lit act focus blur d u key";

TEST_F(WindowActivation, GoesWithShowingFocusClicksAndTheDesktopAmongOurWindows) {
  Walk(
      kEvents,
      {{"make dlg dialog main 310 0 206 225 show dlg", "main.lit:0 main.act:0 dlg.lit:1 dlg.act:1 main.blur dlg.focus"},
       {"m main 47 38 lb",
        "| dlg.lit:0 dlg.act:0 main.lit:1 main.act:1 dlg.blur main.focus main.d:1@47,38 main.u:0@47,38"},
       {"keyboard dlg", "| main.lit:0 main.act:0 dlg.lit:1 dlg.act:1 main.blur dlg.focus"},
       {"hide dlg", "dlg.lit:0 dlg.act:0 main.lit:1 main.act:1 dlg.blur main.focus"},
       {"showna dlg focus?", "main"},
       {"new child child dlg 0 0 50 50 focus child focus?",
        "main.lit:0 main.act:0 dlg.lit:1 dlg.act:1 main.blur dlg.focus dlg.blur child.focus child"},
       {"make last frame - 0 0 50 50 show last keyboard dlg",
        "dlg.lit:0 dlg.act:0 last.lit:1 last.act:1 child.blur last.focus | last.lit:0 last.act:0 dlg.lit:1 dlg.act:1 "
        "last.blur dlg.focus"},
       {"destroy dlg",
        "dlg.lit:0 dlg.act:0 main.lit:1 main.act:1 dlg.blur main.focus"}, // to its owner, not to the one last active
       {"focus? A", "main | main.key:A"}});
  EXPECT_EQ(TheMemoryDisplay().desktop.keyboard, shown);
}

TEST_F(WindowActivation, GoesWithTheProgramsKeyboardAndComesBackWithIt) {
  Walk(kEvents,
       {{"new dlg dialog main 310 0 206 225 keyboard other", "| main.lit:0 main.act:0 dlg.app:0 main.app:0 main.blur"},
        {"focus dlg focus? A", "-"}, // not ours to set
        {"keyboard main", "| dlg.app:1 main.app:1 main.lit:1 main.act:1 main.focus"},
        {"minimise main", "| main.lit:0 main.act:0 dlg.app:0 main.app:0 main.blur"},
        {"focus main focus?", "-"},
        {"restore main focus?", "- | dlg.app:1 main.app:1 main.lit:1 main.act:1 main.focus"},
        {"disable main keyboard other", "main.blur | main.lit:0 main.act:0 dlg.app:0 main.app:0"},
        {"m main 47 38 lb", "| dlg.app:1 main.app:1 dlg.lit:1 dlg.act:1 dlg.focus"}, // its dialog stands in for it
        {"focus? A", "dlg | dlg.key:A"}});
  EXPECT_NE(TheMemoryDisplay().desktop.keyboard, shown);
}

TEST_F(WindowActivation, ComesBeforeTheClickThatAskedForItAndNeverToAWindowThatGoes) {
  Walk(kEvents,
       {{"new pop popup main 310 0 100 100 keyboard other",
         "| main.lit:0 main.act:0 pop.app:0 main.app:0 main.blur"}, // to which the desktop gives nothing
        {"m 350 50 lb", "| pop.app:1 main.app:1 pop.lit:1 pop.act:1 pop.focus pop.d:1@39,49 pop.u:0@39,49"},
        {"new dlg dialog main 310 0 206 225 keyboard dlg",
         "| pop.lit:0 pop.act:0 dlg.lit:1 dlg.act:1 pop.blur dlg.focus"},
        {"when dlg.shown:0 top dlg . destroy dlg", "dlg.lit:0 dlg.act:0 main.lit:1 main.act:1 dlg.blur main.focus"},
        {"when main.destroy focus main . make last frame - 0 0 50 50 show last then keyboard main",
         "main.lit:0 main.act:0 last.lit:1 last.act:1 main.blur last.focus | last.lit:0 last.act:0 main.lit:1 "
         "main.act:1 last.blur main.focus"},
        {"destroy main focus?", "main.lit:0 main.act:0 last.lit:1 last.act:1 main.blur last.focus last"}});
}

TEST_F(WindowActivation, OfADialogOverADialogComesBackToItWhereverTheUserDoes) {
  Walk("focus", {{"make dlg dialog main 310 0 206 225 show dlg disable main", "dlg.focus"},
                 {"make upper dialog dlg 320 10 180 90 show upper disable dlg", "upper.focus"},
                 {"keyboard other then keyboard main", "| upper.focus"},
                 {"keyboard other then m 150 160 lb", "| upper.focus"},
                 // One that goes before it has enabled the one under it leaves nobody without the keyboard.
                 {"enable main destroy upper", "main.focus"}});
}

TEST_F(WindowActivation, TheUserMovesAndClosesThroughTheDesktop) {
  Walk("pos frame command close destroy",
       {{"shift main 40 50 206 225", "| main.pos@40,50"},
        {"ask main disable main", ""},
        {"enable main ask main", "| main.command:f060 main.close main.pos main.destroy"}});
}

} // namespace
} // namespace framereel
