// The keyboard of the desktop in memory: a small US layout, and a second one with dead keys. A key's own number is its
// virtual key.
#include <cstring>
#include <utility>

#include "win32/memory/memory_display.h"
#include "win32/pixels/utf8.h"

namespace framereel {
namespace {

constexpr uint8_t kShift = 16, kCapsLock = 20, kUnnamedKey = 0xDF;

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

char32_t PlainCharacter(uint8_t key, bool shift, bool capsLock) {
  if (key >= 'A' && key <= 'Z') return shift != capsLock ? key : key + 32U;
  for (const KeyCharacters& sign : kSigns) {
    if (sign.key == key) return char32_t(shift ? sign.shifted : sign.plain);
  }
  return 0;
}

// The letters that each accent stands on, and what comes of them, in Latin-1.
struct Accent {
  char accent;
  const char* letters;
  const char* joined;
};
constexpr Accent kAccents[] = {
    {'`', "AEIOUaeiou", "\xC0\xC8\xCC\xD2\xD9\xE0\xE8\xEC\xF2\xF9"},
    {'\'', "AEIOUYaeiouy", "\xC1\xC9\xCD\xD3\xDA\xDD\xE1\xE9\xED\xF3\xFA\xFD"},
    {'^', "AEIOUaeiou", "\xC2\xCA\xCE\xD4\xDB\xE2\xEA\xEE\xF4\xFB"},
    {'~', "ANOano", "\xC3\xD1\xD5\xE3\xF1\xF5"},
    {'"', "AEIOUaeiouy", "\xC4\xCB\xCF\xD6\xDC\xE4\xEB\xEF\xF6\xFC\xFF"},
};

const Accent* AccentOf(char32_t character) {
  for (const Accent& known : kAccents) {
    if (char32_t(known.accent) == character) return &known;
  }
  return nullptr;
}

// The accented letter, the accent itself for a blank, or both where they don't join.
std::string Join(const Accent& accent, char32_t character) {
  if (character == ' ') return {accent.accent};
  const char* letter = std::strchr(accent.letters, int(character));
  if (letter) return Utf8OfLatin1({accent.joined + (letter - accent.letters), 1});
  return accent.accent + Utf8Of(character);
}

// A dead key waits for the next one that types something.
std::string Typed(uint8_t key) {
  MemoryDesktop& desktop = TheMemoryDesktop();
  const char32_t character = PlainCharacter(key, desktop.keys[kShift], desktop.capsLock);
  if (!character) return "";
  if (const char waiting = std::exchange(desktop.accent, 0)) return Join(*AccentOf(char32_t(waiting)), character);
  if (!desktop.deadKeys || !AccentOf(character)) return Utf8Of(character);
  desktop.accent = char(character);
  return "";
}

void QueueKey(DisplayEventKind kind, uint8_t key, std::string text) {
  MemoryDisplay& display = TheMemoryDisplay();
  DisplayWindow* window = display.desktop.keyboard;
  if (!window || !window->ours || display.desktop.keysGrabbed) return;
  DisplayEvent event = {};
  event.kind = kind;
  event.window = window;
  event.x = display.pointerX;
  event.y = display.pointerY;
  event.key = event.scan = key;
  event.text = std::move(text);
  event.tick = display.tick;
  display.desktop.events.push_back(event);
}

} // namespace

void MemoryPressKey(uint8_t key) {
  MemoryDesktop& desktop = TheMemoryDesktop();
  if (key == kCapsLock && !desktop.keys[key]) desktop.capsLock = !desktop.capsLock;
  desktop.keys[key] = true;
  QueueKey(DisplayEventKind::kKeyDown, key, Typed(key));
}

void MemoryReleaseKey(uint8_t key) {
  TheMemoryDesktop().keys[key] = false;
  QueueKey(DisplayEventKind::kKeyUp, key, "");
}

void MemoryTypeKey(uint8_t key) {
  MemoryPressKey(key);
  MemoryReleaseKey(key);
}

void MemoryTypeText(std::string_view text) {
  for (size_t at = 0; at < text.size();) {
    const size_t next = NextCharacter(text, at);
    QueueKey(DisplayEventKind::kKeyDown, kUnnamedKey, std::string(text.substr(at, next - at)));
    QueueKey(DisplayEventKind::kKeyUp, kUnnamedKey, "");
    at = next;
  }
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

char32_t DisplayKeyCharacter(uint8_t scan, bool shift, bool capsLock) {
  const char32_t character = PlainCharacter(scan, shift, capsLock);
  return TheMemoryDesktop().deadKeys && AccentOf(character) ? 0 : character;
}

} // namespace framereel
