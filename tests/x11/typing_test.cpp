// What keys type: by all levels of real layouts, by dead keys and by Compose.
#include "x11/user.h"

#include <cstdlib>

#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace framereel {

namespace {

// Keys as a keyboard numbers them, whatever its layout says.
constexpr KeyCode kEscape = 9, kQ = 24, kE = 26, kO = 32, kA = 38, kX = 53, kC = 54, kSpace = 65;
constexpr KeyCode kAcute = 21, kControl = 37, kShift = 50, kAlt = 64, kRightAlt = 108, kMenu = 135;

class X11TypingTest : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    window = Show(Role::kMain, {10, 10, 110, 110});
    Activate(window);
    // As where nobody has set a locale.
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) ::unsetenv(name);
  }
  void TearDown() override {
    UseLayout("us");
    X11WindowTest::TearDown();
  }

  // The Menu key is Compose.
  void UseLayout(const std::string& layout) {
    const std::string command = "setxkbmap -layout " + layout + " -option '' -option compose:menu";
    ASSERT_EQ(std::system(command.c_str()), 0);
    Drain();
  }

  // All that is typed by keys one after the other while others are held, "." for a press that types nothing.
  std::string Typed(const std::vector<KeyCode>& codes, const std::vector<KeyCode>& held = {}) {
    Drain();
    for (const KeyCode code : held) XTestFakeKeyEvent(artist.display, code, True, CurrentTime);
    std::string text;
    for (const KeyCode code : codes) {
      Type(code);
      DisplayEvent press;
      do press = Next(Kind::kKeyDown, window);
      while (press.window && press.scan != code);
      text += press.text.empty() ? "." : press.text;
    }
    for (const KeyCode code : held) XTestFakeKeyEvent(artist.display, code, False, CurrentTime);
    Drain();
    return text;
  }

  DisplayWindow* window = nullptr;
};

TEST_F(X11TypingTest, AccentsAndComposeJoinAndWhatDoesNotJoinStandsBesideThem) {
  UseLayout("de");
  EXPECT_EQ(Typed({kAcute, kE, kE}), ".\u00E9e");
  EXPECT_EQ(Typed({kAcute, kX, kE}), ".'xe");
  EXPECT_EQ(Typed({kAcute, kSpace, kE}), ".'e");
  EXPECT_EQ(Typed({kAcute, kAcute, kE}), ".\u00B4e");
  EXPECT_EQ(Typed({kAcute, kEscape, kE}), "..e");
  EXPECT_EQ(Typed({kMenu, kO, kC}), "..\u00A9");
  EXPECT_EQ(Typed({kMenu, kX, kQ, kE}), "...e");
  Typed({kAcute});
  EXPECT_EQ(Typed({kE}, {kShift}), "\u00C9");
  Typed({kAcute});
  EXPECT_EQ(Typed({kC}, {kControl}), "c"); // no text, and it ends nothing
  EXPECT_EQ(Typed({kE}), "\u00E9");
  // What has begun in one window does not go on in another.
  Typed({kAcute});
  DisplayWindow* other = Show(Role::kMain, {200, 10, 300, 110});
  Activate(other);
  Activate(window);
  EXPECT_EQ(Typed({kE}), "e");
}

TEST_F(X11TypingTest, LevelsGroupsAndOtherAlphabetsTypeWhatTheySay) {
  UseLayout("de");
  EXPECT_EQ(Typed({kQ, kE}, {kRightAlt}), "@\u20AC");
  XTestFakeKeyEvent(artist.display, kRightAlt, True, CurrentTime);
  EXPECT_EQ(Next(Kind::kKeyDown, window).key, 0); // it is neither Ctrl nor Alt
  EXPECT_FALSE(DisplayKeyIsDown(17) || DisplayKeyIsDown(18));
  XTestFakeKeyEvent(artist.display, kRightAlt, False, CurrentTime);
  EXPECT_EQ(Typed({kQ, kSpace}, {kControl, kAlt}), "q "); // the keys of a chord stay what they are
  for (const char* layouts : {"ru,us", "ru"}) {           // also with no Latin letters at all
    UseLayout(layouts);
    EXPECT_EQ(Typed({kA, kQ}, {kShift}), "\u0424\u0419");
    Type(kA);
    EXPECT_EQ(Next(Kind::kKeyDown, window).key, 'A') << layouts;
  }
}

} // namespace

} // namespace framereel
