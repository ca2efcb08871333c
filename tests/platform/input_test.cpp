// The way of mouse and keys to windows. What Views get of it is in tests/views.
#include <gtest/gtest.h>

#include "platform/input/keys.h"
#include "support/window_script.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

// ---- The mouse ---------------------------------------------------------------------------------------------------

TEST(Mouse, PressesGoToTheActiveWindowToPalettesAndToTheModalOne) {
  WindowScript().Walk({
      {"open a d", "a+ active=a"},
      {"over a 10 20 d", "a< a~10,20 av16@10,20 mouse=Framereel"},
      {"over a -50 130 u ru", "a~-50,130 a^16@-50,130 mouse="},
      {"over a 1 2 rd ru", "a~1,2 av64@1,2 a^64@1,2"},
      {"+ctrl d u -ctrl", "av28@1,2 a^28@1,2 a'17/0"}, // with it the menu key
      {"+shift d u -shift", "av18@1,2 a^18@1,2 a'16/0"},
      {"+alt d u -alt", "av16@1,2 a^16@1,2 a'18/0"},
      {"open b d at b 320 250", "a- b+ active=b"},
      {"over a 5 5 d u", "a> b< b~-215,-145 b- a+ active=a"}, // it only comes forward
      {"d u", "av16@5,5 a^16@5,5"},
      {"open p t at p 320 40 over p 7 8 d u", "p+ p- b> p< p~7,8 p+ pv16@7,8 p^16@7,8"},
      {"open m m at m 320 250 over a 5 5 d u",
       "block a- p- m+ active=m modal=m off=main,a,b focus=m"}, // nobody's: a is off
      {"close m open m p at m 320 250 over a 5 5 d u",
       "m.gone free m- a+ m+ p> m< m~-215,-145 m.go m- mv16@-215,-145 m^16@-215,-145 active=a off= focus=main"},
      {"close m when av close a . over a 6 6 d", "m.gone a< a~6,6 av16@6,6 a.gone b+ active=b modal="},
      {"u", ""},
  });
}

TEST(Mouse, RestingIsToldEvery100MillisecondsButNotDuringAPress) {
  WindowScript().Walk({
      {"open a d over a 30 30 wait 100", "a+ a< a~30,30 active=a"},
      {"wait 500", "a~30,30 a~30,30 a~30,30 a~30,30 a~30,30"},
      {"d", "av16@30,30 mouse=Framereel"},
      {"wait 500", ""},
      {"open p p wait 500", "p+ a~30,30 modal=p focus=p"}, // whoever becomes modal starts it anew
      {"u", "a^16@30,30 mouse="},
  });
}

TEST(Mouse, AReroutedPressEndsForTheOneAndBeginsForTheOther) {
  WindowScript().Walk({
      {"open a d open b d at b 110 150 front a over a 5 6", "a+ a- b+ b- a+ a< a~5,6 active=a"},
      {"when av reroute b 105 106 . d", "av16@5,6 a^16@5,6 bv16@-5,-44 mouse=Framereel"},
      {"wait 300", "b~-5,-44"}, // once, where the mouse rests
      {"u reroute a 0 0", "b^16@-5,-44 mouse="},
  });
}

// ---- The keys ----------------------------------------------------------------------------------------------------

TEST(Keys, GiveTheirCharactersToTheActiveWindow) {
  WindowScript script;
  script.words["accents"] = [](std::istream&) { TheMemoryDisplay().desktop.deadKeys = true; };
  script.Walk({
      {"open a d Q", "a+ a:q/q/0 a'81/0 active=a"},
      {"+shift Q 7 -shift", "a:Q/q/2 a'81/2 a:&/7/2 a'55/2 a'16/0"}, // a modifier gives no character
      {"+left +up +right +down +backspace", "a:28/28/0 a:29/29/0 a:30/30/0 a:31/31/0 a:8/8/0"},
      {"+tab +enter +esc +space +delete +f6", "a:9/9/0 a:13/13/0 a:27/27/0 a:32/32/0 a:127/127/0"},
      {"accents acute E", "a'222/0 a'69/0"}, // they join to what is no ASCII
      {"acute X", "a'222/0 a:'/'/0 a:x/x/0 a'88/0"},
  });
}

TEST(Keys, GoToTheMenusAheadOfTheWindowsUnlessAModalOneHasThem) {
  WindowScript script;
  script.words["sent"] = [](std::istream&) {
    SendKeyDown(true, {'+', '+', kFlagMenuKey | kFlagAlt}, 3, 4);
    SendKeyUp(false, {0, 65, kFlagAlt}, 3, 4);
  };
  script.Walk({
      {"open a d +ctrl S", "a+ shortcut:s active=a"},
      {"-ctrl", "a'17/0"},
      {"+ctrl left", "a:28/28/12 a'37/12"},
      {"+alt S -alt", "a:s/s/24 a'83/24 a'18/12"},
      {"open b d f6", "a- b+ b- a+ a'117/12"},
      {"open m m S", "block a- m+ m:s/s/12 m'83/12 active=m modal=m off=main,a,b focus=m"},
      {"f4", "m'115/12"},
      {"close m f4", "m.gone free m- a+ a? a.close a.gone b+ b'115/12 active=b modal= off= focus=main"},
      {"-ctrl sent", "b'17/0 b:+/+/12 b'65/16"}, // with the menu key in its form
  });
}

} // namespace
} // namespace framereel
