// The keyboard: which key is which, what characters it gives by the layout in force, which keys are down, and what keys
// type by all levels of real layouts, by dead keys and by Compose.
#include "x11/user.h"

#include <cstdlib>

#include <X11/XKBlib.h>

namespace framereel {

namespace {

// Keys as a keyboard numbers them, whatever its layout says.
constexpr KeyCode kEscape = 9, kAcute = 21, kQ = 24, kE = 26, kO = 32, kControl = 37, kA = 38, kShift = 50, kX = 53,
                  kC = 54, kAlt = 64, kSpace = 65, kRightAlt = 108, kMenu = 135;

class X11KeysTest : public X11WindowTest {
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
  void Lock(unsigned int modifier, bool on) {
    XkbLockModifiers(artist.display, XkbUseCoreKbd, modifier, on ? modifier : 0);
    Drain();
  }

  uint8_t KeyOf(KeyCode code) {
    Type(code);
    DisplayEvent down = Next(Kind::kKeyDown, window);
    EXPECT_EQ(down.scan, code);
    EXPECT_EQ(Next(Kind::kKeyUp, window).key, down.key);
    return down.key;
  }
  // Those that the key gives by itself, with Shift and with Caps Lock, as far as it gives any.
  static std::u32string CharactersOf(KeyCode code) {
    std::u32string given = {DisplayKeyCharacter(code, false, false), DisplayKeyCharacter(code, true, false),
                            DisplayKeyCharacter(code, false, true)};
    given.erase(std::remove(given.begin(), given.end(), 0), given.end());
    return given;
  }
  // All that is typed by keys one after the other while others are held, "." for a press that types nothing.
  std::string Typed(const std::vector<KeyCode>& codes, const std::vector<KeyCode>& held = {}) {
    Drain();
    for (const KeyCode code : held) Hold(code, true);
    std::string text;
    for (const KeyCode code : codes) {
      Type(code);
      DisplayEvent press;
      do press = Next(Kind::kKeyDown, window);
      while (press.window && press.scan != code);
      text += press.text.empty() ? "." : press.text;
    }
    for (const KeyCode code : held) Hold(code, false);
    Drain();
    return text;
  }

  DisplayWindow* window = nullptr;
};

TEST_F(X11KeysTest, KeysHaveTheirNumbersAndCharacters) {
  const struct {
    KeySym symbol;
    uint8_t key;
    std::u32string characters;
  } keys[] = {{XK_a, 'A', U"aAA"},          {XK_0, '0', U"0)0"},      {XK_space, 32, U"   "},
              {XK_Return, 13, U"\r\r\r"},   {XK_Tab, 9, U"\t\t\t"},   {XK_Escape, 27, U"\33\33\33"},
              {XK_Left, 37, U""},           {XK_Right, 39, U""},      {XK_Home, 36, U""},
              {XK_Prior, 33, U""},          {XK_F1, 112, U""},        {XK_Shift_R, 16, U""},
              {XK_Control_L, 17, U""},      {XK_minus, 189, U"-_-"},  {XK_semicolon, 186, U";:;"},
              {XK_comma, 0xBC, U",<,"},     {XK_grave, 0xC0, U"`~`"}, {XK_apostrophe, 222, U"'\"'"},
              {XK_BackSpace, 8, U"\b\b\b"}, {XK_KP_Add, 107, U"+++"}};
  for (const auto& each : keys) {
    EXPECT_EQ(KeyOf(CodeOf(each.symbol)), each.key) << XKeysymToString(each.symbol);
    EXPECT_EQ(CharactersOf(CodeOf(each.symbol)), each.characters) << XKeysymToString(each.symbol);
  }
  EXPECT_EQ(KeyOf(CodeOf(XK_Delete)), 46);
  EXPECT_EQ(DisplayKeyCharacter(CodeOf(XK_q), true, true), 'q');
  for (KeyCode none : {0, 7}) EXPECT_EQ(CharactersOf(none), U"");
}

TEST_F(X11KeysTest, LayoutsMayChange) {
  constexpr uint8_t unnamed = 0xDF; // a letter that no other keyboard has makes messages all the same
  const struct {
    KeySym symbols[2]; // alone, and with Shift
    std::u32string characters;
    uint8_t key;
  } keys[] = {{{XK_udiaeresis, XK_Udiaeresis}, U"\u00FC\u00DC", unnamed},
              {{XK_minus, XK_6}, U"-6", '6'},                           // in the row of digits they name the key
              {{0x010000E5, XK_Greek_alpha}, U"\u00E5\u03B1", unnamed}, // å by its Unicode number
              {{XK_Cyrillic_ya, XK_EuroSign}, U"\u044F\u20AC", unnamed},
              {{XK_dead_acute, XK_dead_diaeresis}, U"", 0xDE}, // accents
              {{XK_dead_grave, XK_dead_tilde}, U"", 0xC0},
              {{XK_dead_circumflex, XK_dead_cedilla}, U"", unnamed},
              {{XK_u, XK_U}, U"uU", 'U'}};
  const KeyCode code = CodeOf(XK_u);
  for (const auto& each : keys) {
    KeySym symbols[] = {each.symbols[0], each.symbols[1]};
    XChangeKeyboardMapping(artist.display, code, 2, symbols, 1);
    Drain();
    EXPECT_EQ(CharactersOf(code).substr(0, 2), each.characters) << XKeysymToString(symbols[0]);
    EXPECT_EQ(KeyOf(code), each.key) << XKeysymToString(symbols[0]);
  }
}

TEST_F(X11KeysTest, LocksAreTold) {
  const KeyCode code = CodeOf(XK_KP_Home);
  for (const bool on : {true, false}) {
    Lock(XkbKeysymToModifiers(artist.display, XK_Num_Lock), on);
    EXPECT_EQ(DisplayKeyCharacter(code, false, false), on ? U'7' : U'\0');
    EXPECT_EQ(KeyOf(code), on ? 0x67 : 36);
    Lock(LockMask, on);
    EXPECT_EQ(DisplayCapsLockIsOn(), on);
  }
}

TEST_F(X11KeysTest, KeysAndButtonsArePolledWhoeverHasThem) {
  // Over a window that nobody else listens to: a window manager takes buttons over its own and over the desktop.
  Show(Role::kPopup, {300, 300, 400, 400});
  MovePointer(350, 350);
  GrabKeys();
  const struct {
    KeySym symbol;
    unsigned int button;
    uint8_t key;
  } keys[] = {{XK_Control_R, 0, 17}, {XK_Alt_L, 0, 18}, {XK_Shift_L, 0, 16}, {XK_x, 0, 'X'},
              {NoSymbol, 1, 1},      {NoSymbol, 2, 4},  {NoSymbol, 3, 2}}; // left, middle, right
  // Once the display has heard of all that happened. It asks once a millisecond at most, so what it has asked is made
  // to look older.
  const auto isDown = [this](uint8_t key) {
    Catch();
    X11Live()->keyboard.pressedTick--;
    return DisplayKeyIsDown(key);
  };
  for (bool tells : {true, false}) { // a server that does not tell is asked each time
    X11Live()->devices.tell = X11Live()->devices.pressedStale = tells;
    for (bool down : {true, false}) {
      for (const auto& each : keys) {
        EXPECT_EQ(isDown(each.key), !down) << int(each.key);
        each.button ? Button(each.button, down) : Key(each.symbol, down);
        EXPECT_EQ(isDown(each.key), down) << int(each.key);
      }
    }
  }
  XUngrabKeyboard(artist.display, CurrentTime);
  EXPECT_FALSE(isDown(0));
}

TEST_F(X11KeysTest, AHeldKeyRepeatsAsFurtherPresses) {
  XkbSetAutoRepeatRate(artist.display, XkbUseCoreKbd, 20, 10);
  Key(XK_m, true);
  Until([&, presses = 0]() mutable {
    for (const DisplayEvent& event : Drain()) {
      presses += event.kind == Kind::kKeyDown && event.key == 'M';
      EXPECT_NE(event.kind, Kind::kKeyUp);
    }
    return presses >= 3;
  });
  Key(XK_m, false);
  Next(Kind::kKeyUp, window);
  XkbSetAutoRepeatRate(artist.display, XkbUseCoreKbd, 660, 40); // as the server begins
}

TEST_F(X11KeysTest, AccentsAndComposeJoinAndWhatDoesNotJoinStandsBesideThem) {
  UseLayout("de");
  const std::pair<std::vector<KeyCode>, const char*> typed[] = {
      {{kAcute, kE, kE}, ".\u00E9e"},     {{kAcute, kX, kE}, ".'xe"},     {{kAcute, kSpace, kE}, ".'e"},
      {{kAcute, kAcute, kE}, ".\u00B4e"}, {{kAcute, kEscape, kE}, "..e"}, {{kMenu, kO, kC}, "..\u00A9"},
      {{kMenu, kX, kQ, kE}, "...e"}};
  for (const auto& [codes, text] : typed) EXPECT_EQ(Typed(codes), text);
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

TEST_F(X11KeysTest, LevelsGroupsAndOtherAlphabetsTypeWhatTheySay) {
  UseLayout("de");
  EXPECT_EQ(Typed({kQ, kE}, {kRightAlt}), "@\u20AC");
  Hold(kRightAlt, true);
  EXPECT_EQ(Next(Kind::kKeyDown, window).key, 0); // it is neither Ctrl nor Alt
  EXPECT_FALSE(DisplayKeyIsDown(17) || DisplayKeyIsDown(18));
  Hold(kRightAlt, false);
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
