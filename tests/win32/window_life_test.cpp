// The messages of a window's life, in their order: making, showing, moving, minimising, stacking, activating, closing.
#include "win32/window_scene.h"

namespace framereel {
namespace {

using WindowLife = OneWindow;

TEST_F(WindowLife, MovingSizingMinimisingAndStackingTellWhatChanged) {
  Walk("", {{"place main 30 40 206 225", "main.pos@30,40 main.moved@33,62"},
            {"place main 30 40 120 100", "main.limits main.frame:120x100 main.pos:120x100 main.size:0,114x75"},
            {"new child child main 5 5 20 20 place child 7 8 30 31 place? child",
             "child.frame:30x31 child.pos@7,8:30x31 child.moved@7,8 child.size:0,30x31 40,70+30x31 | main.paint "
             "main.erase child.paint child.erase"},
            {"new box framed main 5 5 100 50 iconify box",
             "box.frame:160x25 box.pos@0,50:160x25 box.moved@0,50 box.size:1,0x0 | main.paint main.erase child.paint "
             "child.erase"},
            {"back box", "box.frame:100x50 box.pos@5,5:100x50 box.moved@8,27 box.size:0,94x25 | main.paint main.erase "
                         "box.paint box.erase"},
            {"hide child", "child.shown:0 child.pos"},
            {"top box bottom box bottom box", "box.pos^"}});
  Walk("frame pos size focus blur",
       {{"new dlg dialog main 0 0 50 50 iconify main focus?", "main | main.frame:120x100 main.pos main.blur"},
        {"focus main focus? at? 5 5 place main 40 50 200 200", "- -"},
        {"back main", "| main.frame:200x200 main.pos@40,50:200x200 main.size:0,194x175 main.focus"},
        {"place? main at? 5 5 focus?", "40,50+200x200 dlg main"}});
}

TEST_F(WindowLife, AFrameStaysWithinTheLimitsThatItAnswers) {
  Answer(WM_GETMINMAXINFO, [](HWND, WPARAM, LPARAM lParam) {
    auto* limits = reinterpret_cast<MINMAXINFO*>(lParam);
    limits->ptMinTrackSize = {80, 90};
    limits->ptMaxTrackSize = {200, 310};
    return 0;
  });
  Walk("none", {{"make frame frame - 0 0 1000 10 place? frame", "0,0+200x90"},
                {"place frame 0 0 10 1000 place? frame", "0,0+80x310"},
                {"new dlg dialog frame -99 0 1000 1000 place? dlg", "-99,0+1000x1000"}});
}

TEST_F(WindowLife, WhereTheDesktopMinimisesNothingACaptionStaysFromWhichItComesBack) {
  TheMemoryDisplay().desktop.leavesMinimising = true;
  MemorySetTaskBar({0, 460, 640, 480});
  Walk("size command",
       {{"iconify main place? main then rgb? 100 450 then shift main 200 435 160 25 place? main",
         "main.size:1,0x0 0,435+160x25 n 0,435+160x25"},
        {"m 329 446 lb then place? main focus?", "main.command:f120 main.size:0,200x200 100,100+206x225 main"},
        {"iconify main focus - focus main focus? back main", "main.size:1,0x0 - main.size:0,200x200"}});
}

TEST_F(WindowLife, AWindowOfWhichASmallerScreenShowsLessComesBackToIt) {
  TheScript().Add("mode", MemoryDisplaySetMode);
  TheMemoryDisplay().desktop.leavesMinimising = true;
  Walk("none",
       {{"new dlg dialog main 500 300 100 100 new pop popup main 500 300 50 50 place main 540 10 206 225", ""},
        {"mode 640 400 24 then place? main place? dlg", "540,10+206x225 500,300+100x100"},
        {"mode 400 300 24 then place? main place? dlg place? pop", "194,10+206x225 300,200+100x100 500,300+50x50"},
        {"iconify main mode 640 480 24 then place? main", "0,275+160x25"},
        {"mode 200 150 24 then place? main place? dlg", "0,125+160x25 100,50+100x100"},
        {"back main place? main", "0,0+206x156"}}); // as large as a window there may be
}

TEST_F(WindowLife, OwnedWindowsGoAndComeWithAMinimisedOneAndDieWithIt) {
  Walk("paint act destroy gone",
       {{"new frame frame - 400 300 80 80 new dlg dialog main 400 100 100 100", ""},
        {"new child child dlg 0 0 20 20 minimise main", "| main.act:0 frame.act:1"},
        {"at? 410 130 invalidate dlg top dlg", "-"},
        {"restore main", "| frame.act:0 main.act:1 dlg.paint child.paint main.paint"},
        {"at? 410 130 keyboard main kill main",
         "child | dlg.destroy child.destroy child.gone dlg.gone main.act:0 frame.act:1 main.destroy main.gone"}});
}

TEST(WindowLifeAlone, AWindowMayDestroyItselfInAnyOfItsMessages) {
  for (const std::string event : {"destroy", "paint", "erase", "act", "lit", "pos", "shown", "frame:70", "focus", "app",
                                  "m", "key", "moved", "size", "char", "blur"}) {
    WindowScene scene;
    Act("make main frame - 10 20 100 100");
    HWND main = Named("main");
    Act("when main." + event + " destroy main . show main then m 50 60 A then keyboard other then");
    ::MoveWindow(main, 0, 0, 70, 70, TRUE);
    ::DestroyWindow(main);
    Drain();
    EXPECT_FALSE(IsLive(main)) << event;
    EXPECT_EQ(Heard("gone"), "main.gone") << event;
  }
}

TEST_F(WindowLife, TopmostWindowsStayAboveOthersAndOwnedOnesAboveTheirOwners) {
  Walk("none", {{"new dlg dialog main 350 100 100 100 new pop popup main 340 90 100 100", ""},
                {"new second frame - 330 80 100 100 order?", "pop second dlg main"},
                {"top main order?", "pop dlg main second"},
                {"bottom main order?", "pop second dlg main"}});
}

TEST_F(WindowLife, ActivationComesBeforeTheClickThatAskedForItAndNeverToAWindowThatGoes) {
  Walk("app lit act focus blur d u",
       {{"new pop popup main 310 0 100 100 keyboard other",
         "| main.lit:0 main.act:0 pop.app:0 main.app:0 main.blur"}, // to which the desktop gives nothing
        {"m 350 50 lb", "| pop.app:1 main.app:1 pop.lit:1 pop.act:1 pop.focus pop.d:1@39,49 pop.u:0@39,49"},
        {"new dlg dialog main 310 0 206 225 keyboard dlg",
         "| pop.lit:0 pop.act:0 dlg.lit:1 dlg.act:1 pop.blur dlg.focus"},
        {"when dlg.shown:0 top dlg . destroy dlg", "dlg.lit:0 dlg.act:0 main.lit:1 main.act:1 dlg.blur main.focus"},
        {"when main.destroy focus main . make last frame - 0 0 50 50 show last then keyboard main",
         "main.lit:0 main.act:0 last.lit:1 last.act:1 main.blur last.focus | last.lit:0 last.act:0 main.lit:1 "
         "main.act:1 last.blur main.focus"},
        {"destroy main focus?", "main.lit:0 main.act:0 last.lit:1 last.act:1 main.blur last.focus last"},
        {"destroy last", "last.lit:0 last.act:0 last.blur"}});
}

} // namespace
} // namespace framereel
