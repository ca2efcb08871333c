// What the user can do. See user.h.
#include <cstdarg>
#include <utility>

#include "fuzz/user.h"
#include "support/window_program.h"
#include "toolkit/views/child_set.h"
#include "toolkit/views/stack.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

// ---- The table ----------------------------------------------------------------------------------------------------

struct Deed {
  int32_t weight; // among all
  const char* words;
};

// The words of support/script.h and those of AddWords. A number lets so many ms pass ahead of the next word, "~200"
// less than that, and "~" a while: mostly of little use for a chord, which is looked for every 200 ms, and sometimes
// beyond the slowest frames.
constexpr Deed kDeeds[] = {
    {10, "+ctrl +alt +shift ~ -ctrl -alt -shift"},
    {8, "+ctrl +alt +space ~ -ctrl -alt -space"},
    {3, "+shift ~ -shift"},
    {2, "+ctrl ~ -ctrl"},
    {1, "+alt ~ -alt"},
    {1, "+alt +space ~ -alt -space"},
    {1, "+ctrl +f4 ~ -ctrl -f4"},
    {1, "+ctrl +f6 ~ -ctrl -f6"},
    {12, "type"},
    {10, "move"},
    {8, "move press release"},
    {4, "move press ~200 move ~200 release"},
    {8, "move press ~200 move ~200 move ~200 move ~200 move ~200 release"},
    {8, "goto-ours +shift 600 select ~ move -shift ~ press release"}, // a window
    {1, "let-go"},

    {8, "goto-ours"},
    {3, "goto-other"},
    {1, "goto-none"},
    {2, "minimise"}, // or restore
    {2, "shift-ours"},
    {1, "drags-otherwise"},

    {3, "open"},
    {2, "close"},
    {3, "shift-other"},
    {14, "paint"},
    {6, "paint-middle"},
    {6, "film"},
    {1, "paint-desktop"},
    {2, "takemouse"},

    {2, "depth"},
    {2, "size"},
    {1, "taskbar"},
    {2, "monitors"},
    {1, "pointer"},
    {1, "palette"},

    {19, "panel press release"},
    {6, "panel press ~900 release"},
    {4, "goto-ours ctrl+S ~ name ~ answer ~ answer ~ answer"},
    {2, "goto-ours ctrl+N ~ answer"},
    {1, "goto-ours ctrl+Q ~ answer"},
    {1, "logout ~ answer ~ stays"},
    {3, "goto-ours f10 ~ menu-key ~ menu-key ~ menu-key"},
};

// ---- Places, windows, displays ------------------------------------------------------------------------------------

void MoveTo(User& user, const POINT& to) {
  Tell(user, " to %d,%d", to.x, to.y);
  MemoryMovePointerTo(to.x, to.y);
}

// On one of its controls.
POINT PlaceOnPanel(User& user) {
  const View* view = user.app.panel.root;
  while (view->viewClass == StackClass()) {
    const ChildSet* set = ChildSetOf(view);
    view = ChildAt(set, uint16_t(user.dice.Below(set->children.count)));
  }
  const Point place = OnScreen(view->window, int16_t(view->x + user.dice.Below(view->width)),
                               int16_t(view->y + user.dice.Below(view->height)));
  return {place.h, place.v};
}

// Anywhere, near where the pointer is, on our window, or at a corner of the screen.
POINT AnyPlace(User& user) {
  const MemoryDisplay& display = TheMemoryDisplay();
  const int32_t kind = user.dice.Below(8);
  const DisplayWindow* ours = OurWindow();
  if (kind < 3) return {display.pointerX + user.dice.Below(81) - 40, display.pointerY + user.dice.Below(81) - 40};
  if (kind == 3) return {user.dice.Below(2) * (display.width - 1), user.dice.Below(2) * (display.height - 1)};
  if (kind == 4 && ours) return {ours->place.left + user.dice.Below(190), ours->place.top + user.dice.Below(25)};
  if (kind == 5 && ours) return PlaceOnPanel(user);
  return {user.dice.Below(display.width), user.dice.Below(display.height)};
}

void ReleaseIfDown(uint8_t key) {
  const uint8_t button = key == VK_LBUTTON ? 1 : key == VK_RBUTTON ? 3 : key == VK_MBUTTON ? 2 : 0;
  if (TheMemoryDesktop().keys[key]) button ? MemoryReleaseButton(button) : MemoryReleaseKey(key);
}

void Shift(User& user, DisplayWindow* window, int32_t reach) {
  if (!window) return;
  const PixelRect& r = window->place;
  const int32_t dx = user.dice.Below(2 * reach) - reach, dy = user.dice.Below(2 * reach) - reach;
  Tell(user, " by %d,%d", dx, dy);
  MemoryMoveWindow(window, {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy});
}

void Paint(User& user, OtherWindow& other, int32_t left, int32_t top) {
  const int32_t width = 1 + user.dice.Below(60), height = 1 + user.dice.Below(60);
  user.others.Paint(other, {left, top, left + width, top + height}, uint32_t(user.dice.Below(kShades)));
}

void SetMode(User& user, int32_t width, int32_t height, int32_t depth) {
  Tell(user, " %dx%d, %d bits", width, height, depth);
  MemoryDisplaySetMode(width, height, depth);
  user.others.PaintDesktop(user.dice);
}

// One, or two side by side or one above the other, of which either is the primary one.
void ChangeMonitors(Dice& dice) {
  const int32_t width = TheMemoryDisplay().width, height = TheMemoryDisplay().height;
  const int32_t x = 1 + dice.Below(width), y = 1 + dice.Below(height);
  const std::vector<PixelRect> layouts[] = {{},
                                            {{0, 0, x, height}, {x, 0, width, y}},
                                            {{x, 0, width, height}, {0, 0, x, y}},
                                            {{0, y, width, height}, {0, 0, x, y}},
                                            {{0, 0, x, y}}};
  MemorySetMonitors(dice.OneOf(layouts));
}

void ChangePointer(Dice& dice) {
  MemoryDisplay& display = TheMemoryDisplay();
  display.hasPointer = dice.Below(3) != 0;
  display.pointerWidth = 1 + dice.Below(40), display.pointerHeight = 1 + dice.Below(40);
  display.hotX = dice.Below(display.pointerWidth), display.hotY = dice.Below(display.pointerHeight);
  display.pointerPixels.assign(size_t(display.pointerWidth * display.pointerHeight), 0xFF336633);
}

template <size_t n> void TypeOneOf(User& user, const uint8_t (&keys)[n]) {
  const uint8_t key = user.dice.OneOf(keys);
  Tell(user, " %d", key);
  MemoryTypeKey(key);
}

// ---- The words ----------------------------------------------------------------------------------------------------

void AddWordsOfTheUser(User& user) {
  Script& script = user.script;
  Dice& dice = user.dice;
  script.Add("move", [&] { MoveTo(user, AnyPlace(user)); });
  script.Add("panel", [&] { MoveTo(user, PlaceOnPanel(user)); });
  script.Add("press", [&] {
    const auto button = uint8_t(dice.OneIn(4) ? 1 + dice.Below(3) : 1);
    if (!TheMemoryDesktop().keys[button == 1 ? VK_LBUTTON : button == 2 ? VK_MBUTTON : VK_RBUTTON]) {
      MemoryPressButton(button);
    }
  });
  script.Add("release", [] {
    for (const int button : {VK_LBUTTON, VK_RBUTTON, VK_MBUTTON}) ReleaseIfDown(uint8_t(button));
  });
  script.Add("let-go", LetGo);
  script.Add("type", [&] {
    static constexpr uint8_t kKeys[] = {VK_SPACE, VK_SPACE, VK_SPACE,  VK_ESCAPE, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN,
                                        VK_TAB,   VK_F4,    VK_RETURN, 'M',       'Q',     0xDE,     93,    20};
    const uint8_t key = dice.OneOf(kKeys);
    const int32_t times = dice.OneIn(4) ? 1 + dice.Below(20) : 1;
    Tell(user, " %d, %d times", key, times);
    for (int32_t i = 0; i < times; ++i) MemoryPressKey(key);
    MemoryReleaseKey(key);
  });
  script.Add("select", [&] {
    const View* button = user.app.panel.selectButton;
    const Point place = OnScreen(button->window, button->x, button->y);
    MemoryClick(place.h, place.v);
  });
  script.Add("name", [&] { MemoryTypeText("clip" + std::to_string(dice.Below(3)) + ".gif"); });
  script.Add("answer", [&] { // to whatever has been asked by then
    TypeOneOf(user, {VK_ESCAPE, VK_RETURN, VK_RETURN});
  });
  script.Add("menu-key", [&] { TypeOneOf(user, {VK_DOWN, VK_UP, VK_LEFT, VK_RIGHT, VK_RETURN, VK_ESCAPE, 'A', 'S'}); });
  script.Add("goto-ours", [] { MemoryGiveKeyboard(OurWindow()); });
  script.Add("goto-none", [] { MemoryGiveKeyboard(nullptr); });
  script.Add("shift-ours", [&] { Shift(user, OurWindow(), dice.OneIn(4) ? 35000 : 300); });
  script.Add("minimise", [] {
    if (OurWindow()) MemoryMinimiseWindow(OurWindow(), !OurWindow()->minimised);
  });
}

void AddWordsOfTheDesktop(User& user) {
  Script& script = user.script;
  Dice& dice = user.dice;
  const auto onAny = [&](const char* word, auto act) { // of the others' windows, if there is one
    script.Add(word, [&user, act] {
      if (OtherWindow* other = user.others.Any(user.dice)) act(*other);
    });
  };
  const auto paint = [&](OtherWindow& other) {
    const PixelRect& place = other.window->place;
    Paint(user, other, dice.Below(place.right - place.left), dice.Below(place.bottom - place.top));
  };
  onAny("goto-other", [](OtherWindow& other) { MemoryGiveKeyboard(other.window); });
  onAny("shift-other", [&](OtherWindow& other) { Shift(user, other.window, 100); });
  onAny("close", [&](OtherWindow& other) { user.others.Close(&other); });
  onAny("paint", paint);
  onAny("paint-middle", [&](OtherWindow& other) { // of the area, where pictures come to stand
    const Rect& area = user.app.recorder.captureArea;
    const int32_t left = (area.left + area.right) / 2 - 30 + dice.Below(30) - other.window->place.left;
    Paint(user, other, left, (area.top + area.bottom) / 2 - dice.Below(30) - other.window->place.top);
  });
  script.Add("open", [&] { user.others.Open(dice); });
  script.Add("paint-desktop", [&] { user.others.PaintDesktop(dice); });
  script.Add("film", [&] {
    const int32_t pictures = dice.Below(60), pause = 10 + dice.Below(90);
    Tell(user, " of %d pictures, one every %d ms", pictures, pause);
    for (int32_t i = 1; i <= pictures; ++i) At(user, uint32_t(i * pause), [](User& u) { u.script.Act("paint"); });
  });
  script.Add("depth", [&] {
    static constexpr int32_t kDepths[] = {1, 2, 4, 8, 16, 24, 32, 12};
    SetMode(user, TheMemoryDisplay().width, TheMemoryDisplay().height, dice.OneOf(kDepths));
  });
  script.Add("size",
             [&] { SetMode(user, 100 + dice.Below(600), 80 + dice.Below(400), TheMemoryDisplay().layout.depth); });
  script.Add("taskbar", [&] {
    const int32_t width = TheMemoryDisplay().width, height = TheMemoryDisplay().height;
    const PixelRect places[] = {{}, {0, 0, width, 28}, {0, height - 28, width, height}, {0, 0, 40, height}};
    user.others.SetTaskBar(dice.OneOf(places));
  });
  script.Add("monitors", [&] { ChangeMonitors(dice); });
  script.Add("pointer", [&] { ChangePointer(dice); });
  script.Add("palette", [&] {
    std::vector<PaletteColour>& palette = TheMemoryDisplay().palette;
    if (palette.empty()) return;
    std::swap(palette[size_t(dice.Below(int32_t(palette.size())))], palette[0]);
    user.mixture.coloursChanged = true;
  });
  script.Add("drags-otherwise", [] { TheMemoryDesktop().leavesDragging ^= true; });
  script.Add("logout", [] { MemoryTellOfSession(DisplayEventKind::kSessionAsks, false); });
  script.Add("stays", [] { MemoryTellOfSession(DisplayEventKind::kSessionEnds, false); });
}

} // namespace

void AddWords(User& user) {
  AddWordsOfTheUser(user);
  AddWordsOfTheDesktop(user);
}

void DoSomething(User& user) {
  int32_t all = 0;
  for (const Deed& each : kDeeds) all += each.weight;
  int32_t at = user.dice.Below(all);
  const Deed* deed = kDeeds;
  while (at >= deed->weight) at -= deed++->weight;
  std::istringstream words(deed->words);
  int32_t time = 0;
  for (std::string word; words >> word;) {
    const auto number = [&](size_t from) { return std::stoi(word.substr(from)); };
    const bool isPause = word[0] == '~' || std::isdigit(word[0]);
    if (isPause && word != "~") time += word[0] == '~' ? user.dice.Below(number(1)) : number(0);
    if (word == "~") time += user.dice.Below(user.dice.OneIn(8) ? 6000 : 600);
    if (isPause) continue;
    At(user, uint32_t(time), [word](User& u) {
      Tell(u, "\n%u ms: %s", TheMemoryDisplay().tick - u.began, word.c_str());
      u.script.Act(word);
    });
  }
}

void At(User& user, uint32_t milliseconds, std::function<void(User&)> act) {
  MemoryAt(TheMemoryDisplay().tick + milliseconds, [&user, act = std::move(act)] {
    LookAtWindows(user);
    act(user);
  });
}

void Tell(User& user, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::vfprintf(user.steps, format, arguments);
  va_end(arguments);
  std::fflush(user.steps); // the program may die at the next one
}

DisplayWindow* OurWindow() {
  for (const auto& window : TheMemoryDesktop().windows) {
    if (window->ours && window->role == WindowRole::kMain) return window.get();
  }
  return nullptr;
}

void LetGo() {
  for (int key = 0; key < 256; ++key) ReleaseIfDown(uint8_t(key));
}

} // namespace framereel
