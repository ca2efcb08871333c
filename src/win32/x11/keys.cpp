// The keyboard of the X11 display: from keys to virtual keys and characters by the layout in force, and which keys are
// down. Layouts are the XKB extension's; Xlib falls back to the core protocol by itself where it is missing.
//
// Nothing is asked of the keyboard before the first window or the first question.
#include <X11/XKBlib.h>
#define XK_LATIN1
#define XK_MISCELLANY
#define XK_XKB_KEYS
#include <X11/keysymdef.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

constexpr int32_t kFirstKey = 8;        // of every server
constexpr uint8_t kCharacterKey = 0xDF; // a key that has a character but no name
constexpr unsigned int kButtons = Button1Mask | Button2Mask | Button3Mask;

struct NamedKey {
  KeySym symbol;
  uint8_t key;
};

// Letters, digits, function keys and the keypad's digits are counted out below.
constexpr NamedKey kNamedKeys[] = {
    {XK_BackSpace, 0x08},  {XK_Tab, 0x09},          {XK_ISO_Left_Tab, 0x09}, {XK_Clear, 0x0C},
    {XK_KP_Begin, 0x0C},   {XK_Return, 0x0D},       {XK_KP_Enter, 0x0D},     {XK_Shift_L, 0x10},
    {XK_Shift_R, 0x10},    {XK_Control_L, 0x11},    {XK_Control_R, 0x11},    {XK_Alt_L, 0x12},
    {XK_Alt_R, 0x12},      {XK_Meta_L, 0x12},       {XK_Meta_R, 0x12},       {XK_Pause, 0x13},
    {XK_Caps_Lock, 0x14},  {XK_Escape, 0x1B},       {XK_space, 0x20},        {XK_Prior, 0x21},
    {XK_KP_Prior, 0x21},   {XK_Next, 0x22},         {XK_KP_Next, 0x22},      {XK_End, 0x23},
    {XK_KP_End, 0x23},     {XK_Home, 0x24},         {XK_KP_Home, 0x24},      {XK_Left, 0x25},
    {XK_KP_Left, 0x25},    {XK_Up, 0x26},           {XK_KP_Up, 0x26},        {XK_Right, 0x27},
    {XK_KP_Right, 0x27},   {XK_Down, 0x28},         {XK_KP_Down, 0x28},      {XK_Print, 0x2C},
    {XK_Insert, 0x2D},     {XK_KP_Insert, 0x2D},    {XK_Delete, 0x2E},       {XK_KP_Delete, 0x2E},
    {XK_Super_L, 0x5B},    {XK_Super_R, 0x5C},      {XK_Menu, 0x5D},         {XK_KP_Multiply, 0x6A},
    {XK_KP_Add, 0x6B},     {XK_KP_Separator, 0x6C}, {XK_KP_Subtract, 0x6D},  {XK_KP_Decimal, 0x6E},
    {XK_KP_Divide, 0x6F},  {XK_Num_Lock, 0x90},     {XK_Scroll_Lock, 0x91},  {XK_semicolon, 0xBA},
    {XK_equal, 0xBB},      {XK_plus, 0xBB},         {XK_comma, 0xBC},        {XK_minus, 0xBD},
    {XK_period, 0xBE},     {XK_slash, 0xBF},        {XK_numbersign, 0xBF},   {XK_grave, 0xC0},
    {XK_dead_grave, 0xC0}, {XK_bracketleft, 0xDB},  {XK_backslash, 0xDC},    {XK_bracketright, 0xDD},
    {XK_apostrophe, 0xDE}, {XK_dead_acute, 0xDE},   {XK_less, 0xE2},
};

bool IsKeypad(KeySym symbol) {
  return symbol >= XK_KP_Space && symbol <= XK_KP_9;
}

uint8_t KeyOfSymbol(KeySym symbol) {
  if (symbol >= XK_a && symbol <= XK_z) return uint8_t('A' + (symbol - XK_a));
  if (symbol >= XK_A && symbol <= XK_Z) return uint8_t(symbol);
  if (symbol >= XK_0 && symbol <= XK_9) return uint8_t(symbol);
  if (symbol >= XK_KP_0 && symbol <= XK_KP_9) return uint8_t(0x60 + (symbol - XK_KP_0));
  if (symbol >= XK_F1 && symbol <= XK_F24) return uint8_t(0x70 + (symbol - XK_F1));
  for (const NamedKey& named : kNamedKeys) {
    if (named.symbol == symbol) return named.key;
  }
  return 0;
}

bool TypesSomething(Display* display, KeyCode code) {
  for (int group = 0; group < XkbNumKbdGroups; group++) {
    for (int level = 0; level < 2; level++) {
      KeySym symbol = XkbKeycodeToKeysym(display, code, group, level);
      if (X11CharacterOf(symbol) || X11IsDeadKey(symbol)) return true;
    }
  }
  return false;
}

// A key of the row of digits is a digit even where digits take Shift; any other is named by what it gives alone. A
// layout of other letters leaves that to the layout beside it.
uint8_t KeyOfCode(Display* display, KeyCode code) {
  for (int group = 0; group < XkbNumKbdGroups; group++) {
    KeySym alone = XkbKeycodeToKeysym(display, code, group, 0);
    KeySym shifted = XkbKeycodeToKeysym(display, code, group, 1);
    if (shifted >= XK_0 && shifted <= XK_9) return uint8_t(shifted);
    if (uint8_t key = KeyOfSymbol(alone)) return key;
    if (uint8_t key = IsKeypad(shifted) ? 0 : KeyOfSymbol(shifted)) return key;
  }
  return TypesSomething(display, code) ? kCharacterKey : 0;
}

// The letters of a US keyboard by their places: the numbers that keyboards of PCs have them under.
struct LetterRow {
  KeyCode first;
  const char* letters;
};
constexpr LetterRow kLetterRows[] = {{24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};

// Commands are Latin letters, and who has none on his keyboard gives them where others have them.
void NameByPlace(uint8_t* keys) {
  if (std::any_of(keys, keys + 256, [](uint8_t key) { return key >= 'A' && key <= 'Z'; })) return;
  for (const LetterRow& row : kLetterRows) {
    for (size_t i = 0; row.letters[i]; i++) {
      uint8_t& key = keys[row.first + i];
      if (key == kCharacterKey) key = uint8_t(row.letters[i]);
    }
  }
}

// What Num Lock makes of a key of the keypad.
uint8_t NumLockedKeyOf(Display* display, KeyCode code) {
  KeySym locked = XkbKeycodeToKeysym(display, code, 0, 1);
  bool digit = (locked >= XK_KP_0 && locked <= XK_KP_9) || locked == XK_KP_Decimal || locked == XK_KP_Separator;
  return digit ? KeyOfSymbol(locked) : 0;
}

void Watch(X11Connection* x) {
  X11Keys& keys = x->keyboard;
  keys.watched = true;
  keys.unsure = true;
  keys.event = -1;
  int opcode, event, error, major = XkbMajorVersion, minor = XkbMinorVersion;
  if (!XkbQueryExtension(x->display, &opcode, &event, &error, &major, &minor)) return;
  keys.event = event;
  // A key that is held then comes as further presses without releases between them.
  Bool repeats;
  XkbSetDetectableAutoRepeat(x->display, True, &repeats);
  constexpr unsigned long watched = XkbGroupStateMask | XkbModifierLockMask;
  XkbSelectEventDetails(x->display, XkbUseCoreKbd, XkbStateNotify, watched, watched);
  XkbStateRec state{};
  XkbGetState(x->display, XkbUseCoreKbd, &state);
  keys.group = state.group;
  keys.locked = state.locked_mods;
}

void Rebuild(X11Connection* x) {
  X11Keys& keys = x->keyboard;
  keys.unsure = false;
  // Without the server's map each look asks for it, and a lost server takes but so many requests before Xlib breaks.
  for (int32_t code = kFirstKey; code < 256 && X11Live(); code++) {
    keys.keys[code] = KeyOfCode(x->display, static_cast<KeyCode>(code));
    keys.keysNumLocked[code] = NumLockedKeyOf(x->display, static_cast<KeyCode>(code));
  }
  NameByPlace(keys.keys);
  keys.numLock = XkbKeysymToModifiers(x->display, XK_Num_Lock);
}

bool AnyPressed(const X11Keys& keys) {
  auto down = [](char eight) { return eight != 0; };
  return keys.buttons & kButtons || std::any_of(std::begin(keys.pressed), std::end(keys.pressed), down);
}

// Whether what was read last still holds. That nothing is down holds until a device is heard of; of what is down it is
// better to make sure, but once a millisecond will do: a chord takes several questions.
bool KnowsPressed(const X11Connection* x) {
  const X11Keys& keys = x->keyboard;
  if (!keys.hasPressed || x->devices.pressedStale) return false;
  return keys.pressedTick == DisplayTick() || (x->devices.tell && !AnyPressed(keys));
}

void ReadPressed(X11Connection* x) {
  X11Keys& keys = x->keyboard;
  x->devices.pressedStale = false;
  std::memset(keys.pressed, 0, sizeof keys.pressed);
  keys.buttons = X11AskPointer(x);
  XQueryKeymap(x->display, keys.pressed);
  keys.hasPressed = true;
  keys.pressedTick = DisplayTick();
}

unsigned int ButtonMask(uint8_t virtualKey) {
  return virtualKey == 1 ? Button1Mask : virtualKey == 2 ? Button3Mask : virtualKey == 4 ? Button2Mask : 0;
}

} // namespace

void X11ReadKeys(X11Connection* x) {
  if (!x->keyboard.watched) Watch(x);
  if (x->keyboard.unsure && X11Live()) Rebuild(x);
}

bool X11TakeKeyboardEvent(X11Connection* x, XEvent* event) {
  X11Keys& keys = x->keyboard;
  if (event->type == MappingNotify) {
    XRefreshKeyboardMapping(&event->xmapping);
    keys.unsure = true;
    return true;
  }
  if (!keys.watched || event->type != keys.event) return false;
  const XkbEvent& told = *reinterpret_cast<const XkbEvent*>(event);
  if (told.any.xkb_type == XkbStateNotify) {
    keys.group = told.state.group;
    keys.locked = told.state.locked_mods;
  }
  return true;
}

uint8_t X11VirtualKey(X11Connection* x, uint8_t code, unsigned int state) {
  X11ReadKeys(x);
  const X11Keys& keys = x->keyboard;
  // Shift takes Num Lock back.
  bool digits = state & keys.numLock && !(state & ShiftMask);
  return digits && keys.keysNumLocked[code] ? keys.keysNumLocked[code] : keys.keys[code];
}

bool DisplayKeyIsDown(uint8_t virtualKey) {
  X11Connection* x = X11Live();
  if (!x || virtualKey == 0) return false;
  X11TakeEvents(x, QueuedAfterReading);
  if (X11Live()) X11ReadKeys(x);
  if (X11Live() && !KnowsPressed(x)) ReadPressed(x);
  if (!X11Live()) return false;
  const X11Keys& keys = x->keyboard;
  if (unsigned int mask = ButtonMask(virtualKey)) return keys.buttons & mask;
  for (int32_t code = kFirstKey; code < 256; code++) {
    bool down = keys.pressed[code / 8] >> code % 8 & 1;
    if (down && (keys.keys[code] == virtualKey || keys.keysNumLocked[code] == virtualKey)) return true;
  }
  return false;
}

bool DisplayCapsLockIsOn() {
  X11Connection* x = X11Live();
  if (!x) return false;
  X11ReadKeys(x);
  if (X11Live()) X11TakeEvents(x, QueuedAfterReading);
  return X11Live() && x->keyboard.locked & LockMask;
}

char32_t DisplayKeyCharacter(uint8_t scan, bool shift, bool capsLock) {
  X11Connection* x = X11Live();
  if (!x || scan < kFirstKey) return 0;
  X11ReadKeys(x);
  const X11Keys& keys = x->keyboard;
  unsigned int modifiers = (shift ? ShiftMask : 0) | (capsLock ? LockMask : 0) | (keys.locked & keys.numLock);
  KeySym symbol = NoSymbol;
  unsigned int used;
  XkbLookupKeySym(x->display, scan, XkbBuildCoreState(modifiers, keys.group), &used, &symbol);
  return X11CharacterOf(symbol);
}

} // namespace framereel
