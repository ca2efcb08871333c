// Windows: their records, where they stand, which is modal, which is active, and how they follow the desktop.
#include <gtest/gtest.h>

#include "core/notices.h"
#include "support/window_script.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_windows.h"
#include "win32/windows/window.h"

namespace framereel {
namespace {

// ---- Geometry ----------------------------------------------------------------------------------------------------

TEST(Windows, HaveThePlaceAndSizeThatTheirKindAllows) {
  WindowScript script;
  script.words["sizes"] = [&script](std::istream&) {
    script.Act("where a size a 0 -5 where a size a 5000 5000 where a max a 300 90 where a");
  };
  script.Walk({
      {"open a d sizes close a", "a+ 100,100+200x100 100,100+40x40 100,100+800x600 100,100+300x90 a.gone"},
      {"open a p sizes close a", "a+ 100,100+200x100 100,100+1x1 100,100+800x600 100,100+300x90 a.gone a-"},
      {"wheremain open a dk at a -1000 2000 where a",
       "3,22+600x440 a+ 8,457+200x100 active=a"}, // five pixels stay in sight
      {"open b d at b -1000 2000 where b", "a- b+ -1000,2000+200x100 active=b"},
      {"open p p inside p 590 430 where p inside p -10 -10 where p inside p 60 70 where p",
       "p+ 402,361+200x100 4,23+200x100 60,70+200x100 modal=p focus=p"}, // with its frame
      {"centre b where b upper b where b", "203,202+200x100 200,127+200x100"},
      {"main 1000 50 centre p where p upper p where p",
       "!5 -697,222+200x100 -698,138+200x100"}, // on the screen, while the main window is away
  });
}

TEST(Windows, HearOfTheUsersMovesOnlyAndStayWhereTheyAreOnTheScreen) {
  WindowScript script;
  // By its frame: so much to the right, and wider.
  script.words["drag"] = [&script](std::istream&) {
    const WindowGeometry& g = script.Window("m")->geometry;
    const int left = TheMainWindow()->originX + g.outerLeft + 11, top = TheMainWindow()->originY + g.outerTop;
    MemoryMoveWindow(MemoryWindowTitled("m"), {left, top, left + g.outerWidth + 20, top + g.outerHeight});
  };
  script.Walk({
      {"open a d open m m at m 30 40 size m 150 60", "a+ block a- m+ active=m modal=m off=main,a focus=m"},
      {"drag", "m=170x60 m=41,40"},
      {"main 60 70 where a where m", "!5 100,100+200x100 -16,-8+170x60"},
      {"mainsize 300 280 wheremain", "!1 3,22+300x280"},
      {"minimise wheremain", "m- !4 3,22+300x280 active= focus="},
      {"mainsize 310 290", ""}, // taken at the restore
      {"restore wheremain", "!4 m+ 3,22+310x290 active=m focus=m"},
  });
}

// ---- The desktop changes -----------------------------------------------------------------------------------------

TEST(MainWindow, HearsOfWhatTheDisplayIsAndOfTheAreaThatItLeaves) {
  WindowScript script;
  script.words["usable"] = [&script](std::istream&) {
    const MainWindow* main = TheMainWindow();
    script.Say(Text(main->usableLeft, ',', main->usableTop, '+', main->usableWidth, 'x', main->usableHeight));
  };
  script.Add("bar", [](int32_t left, int32_t top, int32_t right, int32_t bottom) {
    MemorySetTaskBar({left, top, right, bottom});
  });
  script.Add("mode", MemoryDisplaySetMode);
  script.words["untold"] = [](std::istream&) { TheMemoryDesktop().events.clear(); };
  script.Walk({
      {"bar 0 572 800 600 usable wheremain", "0,0+800x572 3,22+600x440"},
      {"bar 0 0 800 30 usable", "0,30+800x570"},
      {"bar 0 0 60 600 usable", "60,0+740x600"},
      {"bar 0 0 0 0 mode 1024 768 24 usable", "0,0+1024x768"},
      {"mode 1024 768 8", "!2on8"},
      // A resolution that nobody tells is looked for.
      {"together mode 900 700 8 untold main 60 60 usable", "!5 0,0+900x700"},
  });
}

// ---- Life --------------------------------------------------------------------------------------------------------

TEST(Windows, ComeOnceAreAskedBeforeTheUserClosesThemAndGoOnce) {
  WindowScript script;
  script.Add("showfront", ShowChildWindowFront);
  script.Walk({
      {"open a dc open b d open c dc open r dcr", "a+ a- b+ b- c+ c- r+ active=r"},
      {"menuclose a menuclose b menuclose r", "a? a.close a.gone r?"}, // b may not, r does not want to
      {"when c? close c . menuclose c close r", "c? c.gone r.gone b+ active=b"},
      {"close b close b", "b.gone active="},
      {"open d d make s m show s showfront s", "d+ block d- s+ active=s modal=s off=main,d focus=s"},
  });
  EXPECT_EQ(script.Window("s")->openCount, 2);
}

// ---- Modal and active windows ------------------------------------------------------------------------------------

TEST(ModalWindows, GiveTheStateBackOneByOneInWhateverOrderTheyGo) {
  WindowScript().Walk({
      {"open a m", "block a+ active=a modal=a off=main focus=a"},
      {"open b m", "a- b+ active=b modal=b off=main,a focus=b"},
      {"open c m", "b- c+ active=c modal=c off=main,a,b focus=c"},
      {"close b", "b.gone off=main,a"},
      {"front a", "c- a+ active=a modal=a off=main,c focus=a"},
      {"close a", "a.gone a- c+ active=c modal=c off=main focus=c"},
      {"close c", "c.gone free c- active= modal= off= focus=main"},
  });
}

TEST(ModalWindows, APopupDoesNotBlockAndGoesWhenSomethingElseBegins) {
  WindowScript().Walk({
      {"open a d open p p", "a+ p+ active=a modal=p focus=p"},
      {"when p.go close p . m 600 450 d u", "p< p~500,350 p.go p.gone p- modal= focus=main"},
      {"open p p when p.go close p . alt", "p+ p.go p.gone p-"},
      {"open p p when p.go close p . leave", "p+ p.go p.gone p- a- active= focus="},
      {"return dismiss", "a+ active=a focus=a"},
  });
}

// With the program's keyboard the main window's caption is lit, whichever of its windows is active.
TEST(ActiveWindow, IsTheTopmostDocumentUntilAModalWindowComes) {
  WindowScript script;
  script.words["lit?"] = [&script](std::istream&) {
    EXPECT_EQ(ActiveGet(), TheMainWindow()->window->captionLit);
    script.Say(ActiveGet() ? "lit" : "grey");
  };
  script.Walk({
      {"open a d open b d", "a+ a- b+ active=b"},
      {"open t t open p p", "t+ t- p+ modal=p focus=p"},
      {"close p front a", "p.gone p- b- a+ active=a modal= focus=main"},
      {"open m m lit?", "block a- m+ lit active=m modal=m off=main,a,b focus=m"},
      {"leave lit?", "m- grey active= focus="},
      {"return", "m+ active=m focus=m"}, // a palette above it stays what it is
      {"close m", "m.gone free m- a+ active=a modal= off= focus=main"},
      {"behind a", "a- b+ active=b"},
      {"close b", "b.gone a+ active=a"},
      {"open b d suspend", "a- b+ b- active=b"}, // for a dialog of the system
      {"front a", ""},
      {"resume", "b+ focus=b"},
      {"evaluate", "b- a+ active=a focus=a"},
  });
}

} // namespace
} // namespace framereel
