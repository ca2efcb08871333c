// The keyboard of the desktop in memory: a small US layout, and a second one with dead keys. A key's own number is its
// virtual key.
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

constexpr uint8_t kCapsLock = 20;

struct KeyCharacters {
  uint8_t key;
  char plain, shifted;
};
constexpr KeyCharacters kSigns[] = {
    {'1', '1', '!'},   {'2', '2', '@'},  {'3', '3', '#'},   {'4', '4', '$'},  {'5', '5', '%'},  {'6', '6', '^'},
    {'7', '7', '&'},   {'8', '8', '*'},  {'9', '9', '('},   {'0', '0', ')'},  {0xBA, ';', ':'}, {0xBB, '=', '+'},
    {0xBC, ',', '<'},  {0xBD, '-', '_'}, {0xBE, '.', '>'},  {0xBF, '/', '?'}, {0xC0, '`', '~'}, {0xDB, '[', '{'},
    {0xDC, '\\', '|'}, {0xDD, ']', '}'}, {0xDE, '\'', '"'}, {' ', ' ', ' '},  {8, 8, 8},        {9, 9, 9},
    {13, 13, 13},      {27, 27, 27},
};

bool IsAccent(char character) {
  return character == '`' || character == '~' || character == '\'' || character == '"' || character == '^';
}

void QueueKey(DisplayEventKind kind, uint8_t key) {
  MemoryDisplay& display = TheMemoryDisplay();
  DisplayWindow* window = display.desktop.keyboard;
  if (!window || !window->ours || display.desktop.keysGrabbed) return;
  DisplayEvent event = {};
  event.kind = kind;
  event.window = window;
  event.x = display.pointerX;
  event.y = display.pointerY;
  event.key = event.scan = key;
  event.tick = display.tick;
  display.desktop.events.push_back(event);
}

} // namespace

void MemoryPressKey(uint8_t key) {
  MemoryDesktop& desktop = TheMemoryDesktop();
  if (key == kCapsLock && !desktop.keys[key]) desktop.capsLock = !desktop.capsLock;
  desktop.keys[key] = true;
  QueueKey(DisplayEventKind::kKeyDown, key);
}

void MemoryReleaseKey(uint8_t key) {
  TheMemoryDesktop().keys[key] = false;
  QueueKey(DisplayEventKind::kKeyUp, key);
}

void MemoryTypeKey(uint8_t key) {
  MemoryPressKey(key);
  MemoryReleaseKey(key);
}

void MemoryGrabKeys(bool grabs) {
  MemoryDesktop& desktop = TheMemoryDesktop();
  desktop.keysGrabbed = grabs;
  const bool ours = desktop.keyboard && desktop.keyboard->ours;
  if (ours && !grabs) MemoryQueueEvent(DisplayEventKind::kKeysUnseen, desktop.keyboard, false);
}

bool DisplayKeyIsDown(uint8_t virtualKey) {
  return TheMemoryDesktop().keys[virtualKey];
}

bool DisplayCapsLockIsOn() {
  return TheMemoryDesktop().capsLock;
}

uint8_t DisplayKeyCharacter(uint8_t scan, bool shift, bool capsLock, bool* dead) {
  *dead = false;
  if (scan >= 'A' && scan <= 'Z') return uint8_t(shift != capsLock ? scan : scan + 32);
  for (const KeyCharacters& sign : kSigns) {
    if (sign.key != scan) continue;
    const char character = shift ? sign.shifted : sign.plain;
    *dead = TheMemoryDesktop().deadKeys && IsAccent(character);
    return uint8_t(character);
  }
  return 0;
}

} // namespace framereel
