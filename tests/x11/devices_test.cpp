// The keyboard: which key is which, what characters it gives by the layout in force, which keys are down, and what keys
// type by all levels of real layouts, by dead keys and by Compose. And the pointer: its picture with alpha and hot
// spot, when it is asked for, and its place.
#include "x11/user.h"

#include <cstdlib>
#include <utility>

#include <X11/XKBlib.h>
#include <X11/extensions/Xrender.h>

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

  uint8_t KeyOf(KeyCode code) {
    Type(code);
    DisplayEvent down = Next(Kind::kKeyDown, window);
    EXPECT_EQ(down.scan, code);
    EXPECT_EQ(Next(Kind::kKeyUp, window).key, down.key);
    return down.key;
  }
  // Those that the key gives by itself and with Shift, as far as it gives any.
  static std::u32string CharactersOf(KeyCode code) {
    std::u32string given = {DisplayKeyCharacter(code, false, false), DisplayKeyCharacter(code, true, false)};
    std::erase(given, 0);
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

TEST_F(X11KeysTest, KeysHaveTheNumberAndTheCharactersOfTheirSymbols) {
  // A letter that no other keyboard has makes messages all the same. In the row of digits these name the key. Symbols
  // may be Unicode numbers.
  constexpr uint8_t unnamed = 0xDF;
  const struct {
    KeySym symbols[2]; // alone, and with Shift
    uint8_t key;
    std::u32string characters;
  } keys[] = {{{XK_a, XK_A}, 'A', U"aA"},
              {{XK_0, XK_parenright}, '0', U"0)"},
              {{XK_minus, XK_underscore}, 189, U"-_"},
              {{XK_minus, XK_6}, '6', U"-6"},
              {{XK_Return, XK_Return}, 13, U"\r\r"},
              {{XK_BackSpace, XK_BackSpace}, 8, U"\b\b"},
              {{XK_Left}, 37, U""},
              {{XK_F1}, 112, U""},
              {{XK_KP_Add, XK_KP_Add}, 107, U"++"},
              {{XK_udiaeresis, XK_Udiaeresis}, unnamed, U"\u00FC\u00DC"},
              {{0x010000E5, XK_Greek_alpha}, unnamed, U"\u00E5\u03B1"},
              {{XK_Cyrillic_ya, XK_EuroSign}, unnamed, U"\u044F\u20AC"},
              {{XK_dead_acute, XK_dead_diaeresis}, 0xDE, U""},
              {{XK_dead_circumflex, XK_dead_cedilla}, unnamed, U""}};
  const KeyCode code = CodeOf(XK_u);
  for (const auto& each : keys) {
    KeySym symbols[] = {each.symbols[0], each.symbols[1]};
    XChangeKeyboardMapping(artist.display, code, 2, symbols, 1);
    Drain();
    EXPECT_EQ(CharactersOf(code), each.characters) << XKeysymToString(symbols[0]);
    EXPECT_EQ(KeyOf(code), each.key) << XKeysymToString(symbols[0]);
  }
  const KeyCode letter = CodeOf(XK_q), digit = CodeOf(XK_0);
  EXPECT_EQ(DisplayKeyCharacter(letter, true, true), 'q');
  EXPECT_EQ(DisplayKeyCharacter(digit, false, true), '0');
  for (KeyCode none : {0, 7}) EXPECT_EQ(CharactersOf(none), U"");
}

TEST_F(X11KeysTest, LocksAreTold) {
  const KeyCode code = CodeOf(XK_KP_Home);
  const unsigned int locks = XkbKeysymToModifiers(artist.display, XK_Num_Lock) | LockMask;
  for (const bool on : {true, false}) {
    XkbLockModifiers(artist.display, XkbUseCoreKbd, locks, on ? locks : 0);
    Drain();
    EXPECT_EQ(DisplayKeyCharacter(code, false, false), on ? U'7' : U'\0');
    EXPECT_EQ(KeyOf(code), on ? 0x67 : 36);
    EXPECT_EQ(DisplayCapsLockIsOn(), on);
  }
}

TEST_F(X11KeysTest, KeysAndButtonsArePolledWhoeverHasThem) {
  // Over a window that nobody else listens to: a window manager takes buttons over its own and over the desktop.
  Show(Role::kPopup, {300, 300, 400, 400});
  MovePointer(350, 350);
  GrabKeys();
  const std::pair<KeySym, uint8_t> keys[] = {
      {XK_Control_R, 17}, {XK_Alt_L, 18}, {XK_Shift_L, 16}, {XK_x, 'X'}, {1, 1}, {2, 4}, {3, 2}}; // left, middle, right
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
      for (const auto& [symbol, key] : keys) {
        EXPECT_EQ(isDown(key), !down) << int(key);
        symbol <= 3 ? Button(uint8_t(symbol), down) : Key(symbol, down);
        EXPECT_EQ(isDown(key), down) << int(key);
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

// ---- The pointer -------------------------------------------------------------------------------------------------

using Point = std::pair<int32_t, int32_t>;

class X11Pointer : public X11WindowTest {
protected:
  Picture Told() {
    Catch();
    const PointerPicture* told = DisplayPointer();
    if (!told) return {};
    hot = {told->hotX, told->hotY};
    return {told->width, told->height, {told->pixels, told->pixels + told->width * told->height}};
  }
  Point Place() {
    Point at{-1, -1};
    EXPECT_TRUE(DisplayPointerPlace(&at.first, &at.second));
    return at;
  }
  // Makes the display believe that the pointer has stood still for long.
  void Rest() {
    Place();
    X11Live()->devices.movedTick -= 10000;
    X11Live()->devices.pointerStale = true;
    Place();
    ASSERT_TRUE(X11Live()->devices.hearsMotion);
  }

  Point hot; // of the picture told last
};

TEST_F(X11Pointer, TellsItsPictureWithAlphaAndHotSpot) {
  const Picture own = {3, 2, {0x80402010, 0xFFFF0000, 0, 0x01000001, 0x40404040, 0xFF00FF00}}; // premultiplied
  Display* d = artist.display;
  Pixmap pixmap = XCreatePixmap(d, artist.root, own.width, own.height, 32);
  artist.Put(own, pixmap, 32);
  ::Picture picture = XRenderCreatePicture(d, pixmap, XRenderFindStandardFormat(d, PictStandardARGB32), 0, nullptr);
  XDefineCursor(d, artist.root, XRenderCreateCursor(d, picture, 2, 0));
  EXPECT_EQ(Difference(Told(), own), "");
  EXPECT_EQ(hot, Point(2, 0));

  // Over our windows it has their shape; of pictures of their own the server's cursors show black and white.
  DisplayWindow* window = Show(Role::kPopup, {10, 10, 210, 210});
  MovePointer(50, 50);
  const uint32_t lightNoneDark[] = {0xFFE0E0E0, 0, 0xFF300000};
  const PointerPicture shape = {3, 1, 2, 0, lightNoneDark};
  Picture before = own;
  for (const PointerShape each : {PointerShape::kIBeam, PointerShape::kArrow, PointerShape::kOwn}) {
    DisplayPointerShape(window, each, &shape);
    EXPECT_NE(Difference(Told(), before), "");
    before = Told();
  }
  EXPECT_EQ(Difference(before, {3, 1, {0xFFFFFFFF, 0, 0xFF000000}}), "");
  EXPECT_EQ(hot, Point(2, 0));
}

TEST_F(X11Pointer, IsWhereItStandsWhateverHasMovedIt) {
  const int32_t w = artist.Width(), h = artist.Height();
  const OwnSurface frame(10, 10);
  const auto show = [&] { Show(Role::kPopup, {100, 100, 200, 200}); };
  const auto read = [&] { DisplayReadScreen({0, 0, 10, 10}, frame.surface, 0, 0); };
  const auto warp = [this](int x, int y) { XWarpPointer(artist.display, None, artist.root, 0, 0, 0, 0, x, y); };
  const struct {
    std::function<void()> move;
    Point place;
  } moves[] = {
      {[&] { Rest(), MovePointer(31, 41); }, {31, 41}},
      {[&] { warp(33, 43); }, {33, 43}}, // on its way it is asked for each time
      {[&] { Rest(), GrabMouse(), MovePointer(32, 42); }, {32, 42}},
      {[&] { XUngrabPointer(artist.display, CurrentTime), Rest(), DisplayMovePointer(17, 39); }, {17, 39}},
      {[&] { DisplayMovePointer(65546, -65526); }, {w - 1, 0}},
      {[&] { DisplayMovePointer(-5, h + 5), artist.ResizeScreen(w - 100, h - 100); }, {0, h - 101}},
      {[&] { artist.ResizeScreen(w, h), warp(77, 88), read(); }, {77, 88}}, // with the pointer
      {[&] { show(), Rest(), warp(110, 120); }, {110, 120}},                // which tells
      {[&] { warp(300, 300); }, {300, 300}},
      // A server that does not tell is asked each time.
      {[&] { Rest(), X11Live()->devices.tell = X11Live()->devices.hearsMotion = false, warp(12, 13); }, {12, 13}}};
  for (const auto& [move, place] : moves) {
    move();
    Catch();
    EXPECT_EQ(Place(), place);
  }
}

} // namespace

} // namespace framereel
