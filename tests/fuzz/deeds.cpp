// What the user can do. See user.h.
#include <algorithm>
#include <cstdarg>
#include <utility>
#include <vector>

#include "fuzz/user.h"
#include "support/window_program.h"
#include "toolkit/views/child_set.h"
#include "toolkit/views/stack.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

// ---- His hands ----------------------------------------------------------------------------------------------------

// Mostly of little use for a chord, which is looked for every 200 ms, and sometimes beyond the slowest frames.
uint32_t AWhile(User& user) {
  return uint32_t(user.dice.OneIn(8) ? user.dice.Below(6000) : user.dice.Below(600));
}

bool IsDown(uint8_t key) {
  return TheMemoryDesktop().keys[key];
}

void ReleaseKey(uint8_t key) {
  if (IsDown(key)) MemoryReleaseKey(key);
}

void Hold(User& user, const std::vector<uint8_t>& keys) {
  const uint32_t time = AWhile(user);
  Tell(user, " for %u ms", time);
  for (const uint8_t key : keys) MemoryPressKey(key);
  At(user, time, [keys](User&) { std::for_each(keys.begin(), keys.end(), ReleaseKey); });
}

template <uint8_t... keys> void Holds(User& user) {
  Hold(user, {keys...});
}

void TypeAnyKey(User& user) {
  static constexpr uint8_t kKeys[] = {VK_SPACE, VK_SPACE, VK_SPACE,  VK_ESCAPE, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN,
                                      VK_TAB,   VK_F4,    VK_RETURN, 'M',       'Q',     0xDE,     93,    20};
  const uint8_t key = user.dice.OneOf(kKeys);
  const int32_t times = user.dice.OneIn(4) ? 1 + user.dice.Below(20) : 1;
  Tell(user, " %d, %d times", key, times);
  for (int32_t i = 0; i < times; ++i) MemoryPressKey(key);
  ReleaseKey(key);
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

void Move(User& user) {
  const POINT to = AnyPlace(user);
  Tell(user, " to %d,%d", to.x, to.y);
  MemoryMovePointerTo(to.x, to.y);
}

uint8_t AnyButton(User& user) {
  return uint8_t(user.dice.OneIn(4) ? 1 + user.dice.Below(3) : 1);
}

bool ButtonIsDown(uint8_t button) {
  return IsDown(button == 1 ? 1 : button == 2 ? 4 : 2);
}

void PressButton(User& user, uint8_t button) {
  Tell(user, " with %d", button);
  if (!ButtonIsDown(button)) MemoryPressButton(button);
}

void ReleaseButton(uint8_t button) {
  if (ButtonIsDown(button)) MemoryReleaseButton(button);
}

void Click(User& user) {
  Move(user);
  const uint8_t button = AnyButton(user);
  PressButton(user, button);
  ReleaseButton(button);
}

void UsePanel(User& user) {
  const POINT to = PlaceOnPanel(user);
  Tell(user, " at %d,%d", to.x, to.y);
  MemoryMovePointerTo(to.x, to.y);
  PressButton(user, 1);
  At(user, uint32_t(user.dice.OneIn(4) ? user.dice.Below(900) : 0), [](User&) { ReleaseButton(1); });
}

// Shift goes down long enough to be seen, and up again at some time.
void PickWindow(User& user) {
  MemoryGiveKeyboard(OurWindow());
  Hold(user, {VK_SHIFT});
  const POINT to = AnyPlace(user);
  Tell(user, " at %d,%d", to.x, to.y);
  At(user, 600, [](User& u) {
    const View* button = u.app.panel.selectButton;
    const Point place = OnScreen(button->window, button->x, button->y);
    MemoryClick(place.h, place.v);
  });
  At(user, 700, [to](User&) { MemoryMovePointerTo(to.x, to.y); });
  At(user, 700 + AWhile(user), [to](User&) { MemoryClick(to.x, to.y); });
}

void Drag(User& user) {
  Move(user);
  const uint8_t button = AnyButton(user);
  const int32_t moves = 1 + user.dice.Below(5);
  uint32_t time = 0;
  PressButton(user, button);
  for (int32_t i = 0; i < moves; ++i) {
    const POINT to = AnyPlace(user);
    time += uint32_t(user.dice.Below(200));
    At(user, time, [=](User&) { MemoryMovePointerTo(to.x, to.y); });
    Tell(user, " to %d,%d", to.x, to.y);
  }
  time += uint32_t(user.dice.Below(200));
  At(user, time, [=](User&) { ReleaseButton(button); });
  Tell(user, " for %u ms", time);
}

// ---- The desktop and the others -----------------------------------------------------------------------------------

void PaintAt(User& user, OtherWindow& other, int32_t left, int32_t top) {
  const int32_t width = 1 + user.dice.Below(60), height = 1 + user.dice.Below(60);
  user.others.Paint(other, {left, top, left + width, top + height}, uint32_t(user.dice.Below(kShades)));
}

// With any other window, if there is one.
template <void (*act)(User& user, OtherWindow& other)> void OnAny(User& user) {
  if (OtherWindow* other = user.others.Any(user.dice)) act(user, *other);
}

void GoTo(User&, OtherWindow& other) {
  MemoryGiveKeyboard(other.window);
}

void Close(User& user, OtherWindow& other) {
  user.others.Close(&other);
}

void PaintAnywhere(User& user, OtherWindow& other) {
  const PixelRect& place = other.window->place;
  const int32_t left = user.dice.Below(place.right - place.left), top = user.dice.Below(place.bottom - place.top);
  PaintAt(user, other, left, top);
}

void PlayFilm(User& user) {
  const int32_t pictures = user.dice.Below(60), pause = 10 + user.dice.Below(90);
  Tell(user, " of %d pictures, one every %d ms", pictures, pause);
  for (int32_t i = 1; i <= pictures; ++i) At(user, uint32_t(i * pause), OnAny<PaintAnywhere>);
}

// In the middle of the area, where pictures come to stand.
void PaintUnderThePicture(User& user, OtherWindow& other) {
  const Rect& area = user.app.recorder.captureArea;
  const int32_t left = (area.left + area.right) / 2 - 30 + user.dice.Below(30) - other.window->place.left;
  PaintAt(user, other, left, (area.top + area.bottom) / 2 - user.dice.Below(30) - other.window->place.top);
}

void MoveWindow(User& user, DisplayWindow* window, int32_t reach) {
  if (!window) return;
  const PixelRect& r = window->place;
  const int32_t dx = user.dice.Below(2 * reach) - reach, dy = user.dice.Below(2 * reach) - reach;
  Tell(user, " by %d,%d", dx, dy);
  MemoryMoveWindow(window, {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy});
}

void MoveAnother(User& user, OtherWindow& other) {
  MoveWindow(user, other.window, 100);
}

void SetMode(User& user, int32_t width, int32_t height, int32_t depth) {
  Tell(user, " %dx%d, %d bits", width, height, depth);
  MemoryDisplaySetMode(width, height, depth);
  user.others.PaintDesktop(user.dice);
}

void ChangeDepth(User& user) {
  static constexpr int32_t kDepths[] = {1, 2, 4, 8, 16, 24, 32, 12};
  const MemoryDisplay& display = TheMemoryDisplay();
  SetMode(user, display.width, display.height, user.dice.OneOf(kDepths));
}

void ChangeSize(User& user) {
  SetMode(user, 100 + user.dice.Below(600), 80 + user.dice.Below(400), TheMemoryDisplay().layout.depth);
}

void ChangeTaskBar(User& user) {
  const int32_t width = TheMemoryDisplay().width, height = TheMemoryDisplay().height;
  const PixelRect places[] = {{}, {0, 0, width, 28}, {0, height - 28, width, height}, {0, 0, 40, height}};
  user.others.SetTaskBar(user.dice.OneOf(places));
}

void ChangePointer(User& user) {
  MemoryDisplay& display = TheMemoryDisplay();
  display.hasPointer = user.dice.Below(3) != 0;
  display.pointerWidth = 1 + user.dice.Below(40);
  display.pointerHeight = 1 + user.dice.Below(40);
  display.hotX = user.dice.Below(display.pointerWidth);
  display.hotY = user.dice.Below(display.pointerHeight);
  display.pointerPixels.assign(size_t(display.pointerWidth * display.pointerHeight), 0xFF336633);
}

void ChangeColours(User& user) {
  std::vector<PaletteColour>& palette = TheMemoryDisplay().palette;
  if (palette.empty()) return;
  std::swap(palette[size_t(user.dice.Below(int32_t(palette.size())))], palette[0]);
  user.mixture.coloursChanged = true;
}

// ---- The document -------------------------------------------------------------------------------------------------

void TypeWithCtrl(uint8_t letter) {
  MemoryGiveKeyboard(OurWindow());
  MemoryPressKey(VK_CONTROL);
  MemoryTypeKey(letter);
  MemoryReleaseKey(VK_CONTROL);
}

// To whatever has been asked by then.
void Answer(User& user) {
  const uint8_t key = user.dice.OneIn(3) ? VK_ESCAPE : VK_RETURN;
  Tell(user, ", says %s in a while", key == VK_RETURN ? "yes" : "no");
  At(user, AWhile(user), [=](User&) { MemoryTypeKey(key); });
}

void Save(User& user) {
  TypeWithCtrl('S');
  const std::string name = "clip" + std::to_string(user.dice.Below(3)) + ".gif";
  if (!user.dice.OneIn(4)) At(user, AWhile(user), [=](User&) { MemoryTypeText(name); });
  for (int32_t answers = user.dice.Below(4); answers > 0; --answers) Answer(user);
}

void New(User& user) {
  TypeWithCtrl('N');
  Answer(user);
}

void Quit(User& user) {
  TypeWithCtrl('Q');
  if (!user.dice.OneIn(4)) At(user, AWhile(user), [](User&) { MemoryTypeKey(VK_ESCAPE); });
}

// Another program may take it back in the end.
void LogOut(User& user) {
  MemoryTellOfSession(DisplayEventKind::kSessionAsks, false);
  Answer(user);
  if (!user.dice.OneIn(3)) return;
  At(user, AWhile(user), [](User&) { MemoryTellOfSession(DisplayEventKind::kSessionEnds, false); });
}

void OpenMenu(User& user) {
  static constexpr uint8_t kKeys[] = {VK_DOWN, VK_UP, VK_LEFT, VK_RIGHT, VK_RETURN, VK_ESCAPE, 'A', 'S'};
  MemoryGiveKeyboard(OurWindow());
  MemoryTypeKey(VK_F10);
  for (int32_t keys = user.dice.Below(6); keys > 0; --keys) {
    const uint8_t key = user.dice.OneOf(kKeys);
    At(user, AWhile(user), [=](User&) { MemoryTypeKey(key); });
  }
}

// ---- The table ----------------------------------------------------------------------------------------------------

struct Deed {
  int32_t weight; // among all
  const char* name;
  void (*act)(User& user);
};

constexpr Deed kDeeds[] = {
    {10, "holds Ctrl, Alt and Shift", Holds<VK_CONTROL, VK_MENU, VK_SHIFT>},
    {8, "holds Ctrl, Alt and Space", Holds<VK_CONTROL, VK_MENU, VK_SPACE>},
    {3, "holds Shift", Holds<VK_SHIFT>},
    {2, "holds Ctrl", Holds<VK_CONTROL>},
    {1, "holds Alt", Holds<VK_MENU>},
    {1, "holds Alt and Space", Holds<VK_MENU, VK_SPACE>},
    {1, "holds Ctrl and F4", Holds<VK_CONTROL, VK_F4>},
    {1, "holds Ctrl and F6", Holds<VK_CONTROL, VK_F6>},
    {12, "types", TypeAnyKey},
    {10, "moves", Move},
    {8, "clicks", Click},
    {12, "drags", Drag},
    {8, "picks a window", PickWindow},
    {1, "lets go of everything", [](User&) { LetGo(); }},

    {8, "goes to our window", [](User&) { MemoryGiveKeyboard(OurWindow()); }},
    {3, "goes to another window", OnAny<GoTo>},
    {1, "leaves all windows", [](User&) { MemoryGiveKeyboard(nullptr); }},
    {2, "minimises our window, or restores it",
     [](User&) {
       if (OurWindow()) MemoryMinimiseWindow(OurWindow(), !OurWindow()->minimised);
     }},
    {2, "moves our window", [](User& u) { MoveWindow(u, OurWindow(), u.dice.OneIn(4) ? 35000 : 300); }},
    {1, "has windows dragged otherwise",
     [](User&) { TheMemoryDesktop().leavesDragging = !TheMemoryDesktop().leavesDragging; }},

    {3, "opens a window", [](User& u) { u.others.Open(u.dice); }},
    {2, "closes a window", OnAny<Close>},
    {3, "moves a window", OnAny<MoveAnother>},
    {14, "paints", OnAny<PaintAnywhere>},
    {6, "paints in the middle", OnAny<PaintUnderThePicture>},
    {6, "plays a film", PlayFilm},
    {1, "paints the desktop", [](User& u) { u.others.PaintDesktop(u.dice); }},
    {2, "takes the mouse away", [](User&) { MemoryTakeCapture(); }},

    {2, "changes the depth", ChangeDepth},
    {2, "changes the screen's size", ChangeSize},
    {1, "changes the task bar", ChangeTaskBar},
    {1, "changes the pointer", ChangePointer},
    {1, "changes the palette", ChangeColours},

    {25, "uses the panel", UsePanel},
    {4, "saves", Save},
    {2, "asks for a new animation", New},
    {1, "quits, perhaps", Quit},
    {1, "logs out", LogOut},
    {3, "opens a menu", OpenMenu},
};

const Deed& AnyDeed(User& user) {
  int32_t all = 0;
  for (const Deed& deed : kDeeds) all += deed.weight;
  int32_t at = user.dice.Below(all);
  const Deed* deed = kDeeds;
  while (at >= deed->weight) at -= deed++->weight;
  return *deed;
}

} // namespace

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

void WishFor(User& user, std::function<void(User&)> act) {
  user.wishes.push_back({&user, nullptr, std::move(act)});
  const auto fulfil = [](void* argument) {
    auto* wish = static_cast<User::Wish*>(argument);
    User& wisher = *wish->user;
    const std::function<void(User&)> fulfilled = std::move(wish->act);
    wisher.wishes.remove_if([=](const User::Wish& each) { return &each == wish; });
    fulfilled(wisher);
  };
  user.wishes.back().timer = TimerSchedule(fulfil, &user.wishes.back(), 0);
}

void DoSomething(User& user) {
  const Deed& deed = AnyDeed(user);
  Tell(user, "\n%u ms: %s", TheMemoryDisplay().tick - user.began, deed.name);
  deed.act(user);
}

DisplayWindow* OurWindow() {
  for (const auto& window : TheMemoryDesktop().windows) {
    if (window->ours && window->role == WindowRole::kMain) return window.get();
  }
  return nullptr;
}

void LetGo() {
  for (const uint8_t button : {1, 2, 3}) ReleaseButton(button);
  for (int key = 0; key < 256; ++key) ReleaseKey(uint8_t(key));
}

} // namespace framereel
