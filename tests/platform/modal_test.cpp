// Which window is modal, which is active, and where the keyboard goes.
#include <gtest/gtest.h>

#include "core/notices.h"
#include "support/window_script.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

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

TEST(ActiveWindow, IsTheTopmostDocumentUntilAModalWindowComes) {
  WindowScript().Walk({
      {"open a d open b d", "a+ a- b+ active=b"},
      {"open t t open p p", "t+ t- p+ modal=p focus=p"},
      {"close p front a", "p.gone p- b- a+ active=a modal= focus=main"},
      {"open m m", "block a- m+ active=m modal=m off=main,a,b focus=m"},
      {"leave", "m- active= focus="},
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

// The colour of the main window's caption, in a place without letters and boxes.
uint32_t CaptionPixel() {
  const MainWindow* main = TheMainWindow();
  RunFor(60);
  return MemoryPixel(main->originX + main->geometry.outerWidth / 2, main->originY + main->geometry.insetTop / 2);
}

TEST(ActiveWindow, TheMainCaptionIsLitAsLongAsTheProgramHasTheKeyboard) {
  WindowScript script;
  const uint32_t lit = CaptionPixel();
  for (const auto& [words, isLit] : {std::pair{"open m m", true}, {"leave", false}, {"return close m", true}}) {
    script.Act(words);
    EXPECT_EQ(CaptionPixel() == lit, isLit) << words;
    EXPECT_EQ(ActiveGet(), isLit);
  }
}

} // namespace
} // namespace framereel
