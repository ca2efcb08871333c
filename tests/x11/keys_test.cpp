// The keyboard: which key is which, what characters it gives by the layout in force, and which keys are down.
#include "x11/user.h"

#include <X11/XKBlib.h>
#include <X11/keysym.h>

namespace framereel {

namespace {

using Kind = DisplayEventKind;

class X11KeysTest : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    window = Show(WindowRole::kMain, {10, 10, 110, 110});
    Activate(window);
  }

  // Gives a key other symbols, alone and with Shift, and waits until the display knows of it.
  void Redefine(KeyCode code, KeySym alone, KeySym shifted) {
    X11ReadKeys(X11Live());
    KeySym symbols[] = {alone, shifted};
    XChangeKeyboardMapping(artist.display, code, 2, symbols, 1);
    XSync(artist.display, False);
    Until([] {
      X11TakeEvents(X11Live(), QueuedAlready);
      return X11Live()->keyboard.unsure;
    });
  }

  uint8_t Character(KeyCode code, bool shift, bool capsLock = false, bool dead = false) {
    bool isDead = !dead;
    uint8_t character = DisplayKeyCharacter(code, shift, capsLock, &isDead);
    EXPECT_EQ(isDead, dead);
    return character;
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
  for (const auto& each : keys) {
    Key(each.symbol, true);
    Key(each.symbol, false);
    DisplayEvent down = Next(Kind::kKeyDown, window);
    EXPECT_EQ(down.key, each.key) << XKeysymToString(each.symbol);
    EXPECT_EQ(down.scan, CodeOf(each.symbol));
    EXPECT_EQ(Next(Kind::kKeyUp, window).key, each.key) << XKeysymToString(each.symbol);
  }
}

TEST_F(X11KeysTest, CharactersFollowShiftAndCapsLock) {
  const struct {
    KeySym symbol;
    char alone, shifted, locked;
  } keys[] = {
      {XK_q, 'q', 'Q', 'Q'},   {XK_2, '2', '@', '2'},        {XK_minus, '-', '_', '-'}, {XK_space, ' ', ' ', ' '},
      {XK_Return, 13, 13, 13}, {XK_BackSpace, 8, 8, 8},      {XK_F5, 0, 0, 0},          {XK_Left, 0, 0, 0},
      {XK_Shift_L, 0, 0, 0},   {XK_KP_Divide, '/', '/', '/'}};
  for (const auto& each : keys) {
    KeyCode code = CodeOf(each.symbol);
    EXPECT_EQ(Character(code, false), each.alone) << XKeysymToString(each.symbol);
    EXPECT_EQ(Character(code, true), each.shifted) << XKeysymToString(each.symbol);
    EXPECT_EQ(Character(code, false, true), each.locked) << XKeysymToString(each.symbol);
  }
  EXPECT_EQ(Character(CodeOf(XK_q), true, true), 'q');
  EXPECT_EQ(Character(0, false), 0);
  EXPECT_EQ(Character(7, false), 0);
}

TEST_F(X11KeysTest, LayoutsMayChange) {
  KeyCode code = CodeOf(XK_u);
  Redefine(code, XK_udiaeresis, XK_Udiaeresis);
  EXPECT_EQ(Character(code, false), 0xFC);
  EXPECT_EQ(Character(code, true), 0xDC);
  // A letter that no other keyboard has still makes messages.
  Type(code);
  EXPECT_NE(Next(Kind::kKeyDown, window).key, 0);
  // In the row of digits the digit names the key, even if it takes Shift.
  Redefine(code, XK_eacute, XK_2);
  EXPECT_EQ(Character(code, false), 0xE9);
  Type(code);
  EXPECT_EQ(Next(Kind::kKeyDown, window).key, '2');
  Redefine(code, 0x010000E5, XK_Greek_alpha); // å by its Unicode number
  EXPECT_EQ(Character(code, false), 0xE5);
  EXPECT_EQ(Character(code, true), 0);
  Redefine(code, XK_u, XK_U);
}

TEST_F(X11KeysTest, DeadKeysGiveTheirAccents) {
  KeyCode code = CodeOf(XK_u);
  const struct {
    KeySym alone, shifted;
    uint8_t accent, shiftedAccent;
  } keys[] = {{XK_dead_acute, XK_dead_diaeresis, '\'', '"'},
              {XK_dead_grave, XK_dead_tilde, '`', '~'},
              {XK_dead_circumflex, XK_dead_cedilla, '^', 0xB8}};
  for (const auto& each : keys) {
    Redefine(code, each.alone, each.shifted);
    EXPECT_EQ(Character(code, false, false, true), each.accent);
    EXPECT_EQ(Character(code, true, false, true), each.shiftedAccent);
  }
  Redefine(code, XK_u, XK_U);
}

TEST_F(X11KeysTest, NumLockMakesDigitsOfTheKeypad) {
  KeyCode code = CodeOf(XK_KP_Home);
  EXPECT_EQ(Character(code, false), 0);
  unsigned int numLock = XkbKeysymToModifiers(artist.display, XK_Num_Lock);
  ASSERT_NE(numLock, 0u);
  XkbLockModifiers(artist.display, XkbUseCoreKbd, numLock, numLock);
  Drain();
  EXPECT_EQ(Character(code, false), '7');
  Type(code);
  EXPECT_EQ(Next(Kind::kKeyDown, window).key, 0x67);
  XkbLockModifiers(artist.display, XkbUseCoreKbd, numLock, 0);
  Drain();
  Type(code);
  EXPECT_EQ(Next(Kind::kKeyDown, window).key, 36);
}

TEST_F(X11KeysTest, CapsLockIsTold) {
  EXPECT_FALSE(DisplayCapsLockIsOn());
  XkbLockModifiers(artist.display, XkbUseCoreKbd, LockMask, LockMask);
  Drain();
  EXPECT_TRUE(DisplayCapsLockIsOn());
  XkbLockModifiers(artist.display, XkbUseCoreKbd, LockMask, 0);
  Drain();
  EXPECT_FALSE(DisplayCapsLockIsOn());
}

TEST_F(X11KeysTest, KeysArePolledWhoeverHasTheKeyboard) {
  Window others = artist.Show(artist.Noise(50, 50, 1), 200, 200);
  XSetInputFocus(artist.display, others, RevertToPointerRoot, CurrentTime);
  XSync(artist.display, False);
  const struct {
    KeySym symbol;
    uint8_t key;
  } keys[] = {{XK_Control_R, 17}, {XK_Alt_L, 18}, {XK_Shift_L, 16}, {XK_x, 'X'}};
  for (const auto& each : keys) EXPECT_FALSE(IsDown(each.key));
  for (const auto& each : keys) {
    Key(each.symbol, true);
    EXPECT_TRUE(IsDown(each.key)) << XKeysymToString(each.symbol);
  }
  for (const auto& each : keys) {
    Key(each.symbol, false);
    EXPECT_FALSE(IsDown(each.key)) << XKeysymToString(each.symbol);
  }
  // Over a window that nobody else listens to: a window manager takes buttons over its own and over the desktop.
  Show(WindowRole::kPopup, {300, 300, 400, 400});
  MovePointer(350, 350);
  const uint8_t buttons[] = {1, 4, 2}; // left, middle, right
  for (unsigned int button = 1; button <= 3; button++) {
    EXPECT_FALSE(IsDown(buttons[button - 1]));
    Button(button, true);
    EXPECT_TRUE(IsDown(buttons[button - 1]));
    Button(button, false);
    EXPECT_FALSE(IsDown(buttons[button - 1]));
  }
  EXPECT_FALSE(IsDown(0));
}

TEST_F(X11KeysTest, KeysArePolledWhileAnotherProgramHoldsThem) {
  XGrabKeyboard(artist.display, artist.root, False, GrabModeAsync, GrabModeAsync, CurrentTime);
  EXPECT_FALSE(IsDown('X'));
  unsigned long before = NextRequest(X11Live()->display);
  for (int32_t i = 0; i < 5; i++) {
    X11Live()->keyboard.pressedTick--;
    EXPECT_FALSE(DisplayKeyIsDown('X'));
  }
  EXPECT_EQ(NextRequest(X11Live()->display), before); // nothing is down, and nothing has been heard
  Key(XK_x, true);
  EXPECT_TRUE(IsDown('X'));
  EXPECT_FALSE(IsDown('Y'));
  Key(XK_x, false);
  EXPECT_FALSE(IsDown('X'));
  XUngrabKeyboard(artist.display, CurrentTime);

  // A server that does not tell is asked each time.
  X11Live()->devices.tell = X11Live()->devices.pressedStale = false;
  Key(XK_x, true);
  EXPECT_TRUE(IsDown('X'));
  Key(XK_x, false);
  EXPECT_FALSE(IsDown('X'));
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
