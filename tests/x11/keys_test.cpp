// The keyboard: which key is which, what characters it gives by the layout in force, and which keys are down.
#include "x11/user.h"

#include <X11/XKBlib.h>
#include <X11/keysym.h>

namespace framereel {

namespace {

class X11KeysTest : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    window = Show(Role::kMain, {10, 10, 110, 110});
    Activate(window);
  }

  // Gives a key other symbols, alone and with Shift, and waits until the display knows of it.
  void Redefine(KeyCode code, KeySym alone, KeySym shifted) {
    X11ReadKeys(X11Live());
    KeySym symbols[] = {alone, shifted};
    XChangeKeyboardMapping(artist.display, code, 2, symbols, 1);
    Until([] {
      X11TakeEvents(X11Live(), QueuedAlready);
      return X11Live()->keyboard.unsure;
    });
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

  // Once the display has heard of all that happened. It asks once a millisecond at most, so what it has asked is made
  // to look older.
  bool IsDown(uint8_t key) {
    Catch();
    X11Live()->keyboard.pressedTick--;
    return DisplayKeyIsDown(key);
  }

  DisplayWindow* window = nullptr;
};

TEST_F(X11KeysTest, KeysHaveTheirNumbers) {
  const struct {
    KeySym symbol;
    uint8_t key;
  } keys[] = {{XK_a, 'A'},      {XK_z, 'Z'},           {XK_0, '0'},         {XK_9, '9'},       {XK_space, 32},
              {XK_Return, 13},  {XK_Escape, 27},       {XK_Tab, 9},         {XK_BackSpace, 8}, {XK_Delete, 46},
              {XK_Left, 37},    {XK_Up, 38},           {XK_Right, 39},      {XK_Down, 40},     {XK_Home, 36},
              {XK_End, 35},     {XK_Prior, 33},        {XK_Next, 34},       {XK_F1, 112},      {XK_F12, 123},
              {XK_Shift_R, 16}, {XK_Control_L, 17},    {XK_semicolon, 186}, {XK_minus, 189},   {XK_slash, 191},
              {XK_grave, 0xC0}, {XK_bracketleft, 219}, {XK_KP_Home, 36},    {XK_KP_Add, 107},  {XK_KP_Enter, 13},
              {XK_comma, 0xBC}, {XK_apostrophe, 222}};
  for (const auto& each : keys) EXPECT_EQ(KeyOf(CodeOf(each.symbol)), each.key) << XKeysymToString(each.symbol);
}

TEST_F(X11KeysTest, CharactersFollowShiftAndCapsLock) {
  const struct {
    KeySym symbol;
    char32_t alone, shifted, locked;
  } keys[] = {
      {XK_q, 'q', 'Q', 'Q'},   {XK_2, '2', '@', '2'},        {XK_minus, '-', '_', '-'}, {XK_space, ' ', ' ', ' '},
      {XK_Return, 13, 13, 13}, {XK_BackSpace, 8, 8, 8},      {XK_F5, 0, 0, 0},          {XK_Left, 0, 0, 0},
      {XK_Shift_L, 0, 0, 0},   {XK_KP_Divide, '/', '/', '/'}};
  for (const auto& each : keys) {
    KeyCode code = CodeOf(each.symbol);
    EXPECT_EQ(DisplayKeyCharacter(code, false, false), each.alone) << XKeysymToString(each.symbol);
    EXPECT_EQ(DisplayKeyCharacter(code, true, false), each.shifted) << XKeysymToString(each.symbol);
    EXPECT_EQ(DisplayKeyCharacter(code, false, true), each.locked) << XKeysymToString(each.symbol);
  }
  EXPECT_EQ(DisplayKeyCharacter(CodeOf(XK_q), true, true), 'q');
  for (KeyCode none : {0, 7}) EXPECT_EQ(DisplayKeyCharacter(none, false, false), 0);
}

TEST_F(X11KeysTest, LayoutsMayChange) {
  constexpr uint8_t unnamed = 0xDF; // a letter that no other keyboard has makes messages all the same
  const struct {
    KeySym alone, shifted;
    char32_t character, shiftedCharacter;
    uint8_t key;
  } keys[] = {{XK_udiaeresis, XK_Udiaeresis, 0xFC, 0xDC, unnamed},
              {XK_minus, XK_6, '-', '6', '6'},                    // in the row of digits they name the key
              {0x010000E5, XK_Greek_alpha, 0xE5, 0x3B1, unnamed}, // å by its Unicode number
              {XK_Cyrillic_ya, XK_EuroSign, 0x44F, 0x20AC, unnamed},
              {XK_dead_acute, XK_dead_diaeresis, 0, 0, 0xDE}, // accents
              {XK_dead_grave, XK_dead_tilde, 0, 0, 0xC0},
              {XK_dead_circumflex, XK_dead_cedilla, 0, 0, unnamed},
              {XK_u, XK_U, 'u', 'U', 'U'}};
  const KeyCode code = CodeOf(XK_u);
  for (const auto& each : keys) {
    Redefine(code, each.alone, each.shifted);
    EXPECT_EQ(DisplayKeyCharacter(code, false, false), each.character) << XKeysymToString(each.alone);
    EXPECT_EQ(DisplayKeyCharacter(code, true, false), each.shiftedCharacter) << XKeysymToString(each.alone);
    EXPECT_EQ(KeyOf(code), each.key) << XKeysymToString(each.alone);
  }
}

TEST_F(X11KeysTest, LocksAreTold) {
  KeyCode code = CodeOf(XK_KP_Home);
  EXPECT_EQ(DisplayKeyCharacter(code, false, false), 0);
  unsigned int numLock = XkbKeysymToModifiers(artist.display, XK_Num_Lock);
  ASSERT_NE(numLock, 0u);
  Lock(numLock, true);
  EXPECT_EQ(DisplayKeyCharacter(code, false, false), '7');
  EXPECT_EQ(KeyOf(code), 0x67);
  EXPECT_FALSE(DisplayCapsLockIsOn());
  Lock(numLock, false);
  EXPECT_EQ(KeyOf(code), 36);

  Lock(LockMask, true);
  EXPECT_TRUE(DisplayCapsLockIsOn());
  Lock(LockMask, false);
  EXPECT_FALSE(DisplayCapsLockIsOn());
}

TEST_F(X11KeysTest, KeysAndButtonsArePolledWhoeverHasThem) {
  // Over a window that nobody else listens to: a window manager takes buttons over its own and over the desktop.
  Show(Role::kPopup, {300, 300, 400, 400});
  MovePointer(350, 350);
  XGrabKeyboard(artist.display, artist.root, False, GrabModeAsync, GrabModeAsync, CurrentTime);
  const struct {
    KeySym symbol;
    unsigned int button;
    uint8_t key;
  } keys[] = {{XK_Control_R, 0, 17}, {XK_Alt_L, 0, 18}, {XK_Shift_L, 0, 16}, {XK_x, 0, 'X'},
              {NoSymbol, 1, 1},      {NoSymbol, 2, 4},  {NoSymbol, 3, 2}}; // left, middle, right
  for (bool tells : {true, false}) { // a server that does not tell is asked each time
    X11Live()->devices.tell = X11Live()->devices.pressedStale = tells;
    for (bool down : {true, false}) {
      for (const auto& each : keys) {
        EXPECT_EQ(IsDown(each.key), !down) << int(each.key);
        each.button ? Button(each.button, down) : Key(each.symbol, down);
        EXPECT_EQ(IsDown(each.key), down) << int(each.key);
      }
    }
  }
  XUngrabKeyboard(artist.display, CurrentTime);
  EXPECT_FALSE(IsDown(0));
}

TEST_F(X11KeysTest, AHeldKeyRepeatsAsFurtherPresses) {
  unsigned int delay, interval;
  XkbGetAutoRepeatRate(artist.display, XkbUseCoreKbd, &delay, &interval);
  XkbSetAutoRepeatRate(artist.display, XkbUseCoreKbd, 20, 10);
  Key(XK_m, true);
  int32_t presses = 0, releases = 0;
  Until([&] {
    for (const DisplayEvent& event : Drain()) {
      presses += event.kind == Kind::kKeyDown && event.key == 'M';
      releases += event.kind == Kind::kKeyUp;
    }
    return presses >= 3;
  });
  EXPECT_EQ(releases, 0);
  Key(XK_m, false);
  Next(Kind::kKeyUp, window);
  XkbSetAutoRepeatRate(artist.display, XkbUseCoreKbd, delay, interval);
}

} // namespace

} // namespace framereel
