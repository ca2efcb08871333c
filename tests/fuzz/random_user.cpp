// The whole program under the hands of a user at random, on desktops of all kinds, and what must hold however that
// goes: it ends in order, nothing of it stays on the screen, and the animation is one. The arguments stand in rounds.h;
// steps.txt in the folder tells what the user of the last round did, and the files that were there are there too.
#include <algorithm>
#include <string>
#include <vector>

#include "area/ants.h"
#include "fuzz/rounds.h"
#include "fuzz/user.h"
#include "platform/pump/platform_start.h"
#include "platform/pump/pump.h"
#include "recorder/control/recording_control.h"
#include "recorder/engine/status.h"
#include "support/temporary_folder.h"
#include "toolkit/controls/check_box.h"
#include "toolkit/views_start.h"
#include "win32/win32_input.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
#include "win32/windows/create.h"

namespace framereel {
namespace {

constexpr int32_t kShortest = 5000, kMore = 40000; // ms of a user's time with the program
constexpr uint32_t kPatience = 20000;              // ms for the program to end

char module;

// ---- The desktop --------------------------------------------------------------------------------------------------

void SetUpDesktop(Dice& dice, OtherPrograms& others) {
  static constexpr int32_t kDepths[] = {1, 2, 4, 8, 16, 24, 32}, kWidths[] = {320, 640, 800};
  const int32_t width = dice.OneOf(kWidths);
  MemoryDisplayReset(width, width * 3 / 4, dice.OneOf(kDepths));
  if (dice.OneIn(3)) TheMemoryDisplay().dotsPerInch = 144 + dice.Below(150);
  if (dice.OneIn(4)) TheMemoryDisplay().tick = uint32_t(-20000); // wraps on the way
  others.PaintDesktop(dice);
  for (int i = dice.Below(4); i > 0; --i) others.Open(dice);
  if (dice.OneIn(3)) others.SetTaskBar({0, 0, width, 28});
}

std::string AnySettings(Dice& dice) {
  static const char* const kLines[] = {"Recording Area:30,40 70x50\r\n",
                                       "Recording Area:100,60 120x160\r\n",
                                       "Recording Size:25\r\n",
                                       "Recording Size:44\r\n",
                                       "Frame Delay:25\r\n",
                                       "Frame Delay:100\r\n",
                                       "Overlay Border:No\r\n",
                                       "Overlay Cursor:No\r\n",
                                       "Explorer 2.0 Compatible:Yes\r\n"};
  std::string text;
  for (int i = dice.Below(6); i > 0; --i) text += dice.OneOf(kLines);
  return text;
}

int32_t WindowsOfOurs() {
  const auto& windows = TheMemoryDesktop().windows;
  return int32_t(std::count_if(windows.begin(), windows.end(), [](const auto& window) { return window->ours; }));
}

// ---- How it ends --------------------------------------------------------------------------------------------------

// A menu may be open, a question, or a window at the pointer: letting go and Escape get out of all that.
void Escape() {
  LetGo();
  DisplayWindow* ours = OurWindow();
  if (ours && ours->minimised) MemoryMinimiseWindow(ours, false);
  if (ours) MemoryGiveKeyboard(ours);
  MemoryTypeKey(VK_ESCAPE);
}

void Close(User& user, uint32_t patience) {
  Expect(user, patience > 0, "the program does not end");
  if (patience < kPatience) Escape();
  if (DisplayWindow* ours = OurWindow()) MemoryAskToClose(ours);
  At(user, 500, [](User&) {
    if (MemoryWindowTitled("Warning!")) MemoryTypeKey(VK_RETURN); // what is unsaved may go
  });
  At(user, 1000, [=](User& u) { Close(u, patience - 1000); });
}

// All that was begun is ended, and everything has come to rest.
void ExpectRest(User& user) {
  const Application& app = user.app;
  Expect(user, !app.recorder.control.recording && !app.recorder.control.savedScreen, "the recorder is not at rest");
  Expect(user, !app.area.backdrop, "the selection has not ended");
  Expect(user, app.area.ants.count == 0, "shows and hides of the line do not meet");
  Expect(user, WindowsOfOurs() == 1, "there is a window besides the main one");
  Expect(user, !TheMemoryDesktop().captured, "the mouse is held");
  const ScreenStatus told = app.recorder.screenStatus;
  RecorderCheckScreen(user.app.recorder);
  Expect(user, app.recorder.screenStatus == told, "the recorder has not heard of the screen");
}

std::vector<uint32_t> PaintAll() {
  std::vector<uint32_t> before = TheMemoryDisplay().screen;
  MemoryExpose(Region(PixelRect{0, 0, TheMemoryDisplay().width, TheMemoryDisplay().height}));
  return before;
}

// Everybody has painted, and that is what stood on the screen before.
void ExpectSameScreen(User& user, const std::vector<uint32_t>& before) {
  MemoryDisplay& display = TheMemoryDisplay();
  if (display.screen == before) return;
  MemoryWritePicture("painted.ppm");
  display.screen = before;
  MemoryWritePicture("stands.ppm");
  Expect(user, false, "something stands on the screen that nobody paints; see stands.ppm and painted.ppm");
}

void ExpectALivePanel(User& user) {
  MemoryMovePointerTo(9, 9);
  for (const uint8_t key : {VK_LEFT, VK_LEFT, VK_RIGHT, VK_LEFT}) MemoryTypeKey(key);
  At(user, 300, [](User& u) { Expect(u, TheMemoryDisplay().pointerX == 7, "the panel does not hear its keys"); });
}

// Has the program do it in its event loop, as the panel does.
void WishFor(User& user, TimerFunction wish) {
  user.wish = TimerSchedule(wish, &user, 0);
}

void EndAll(void* argument) {
  User& user = *static_cast<User*>(argument);
  user.wish = nullptr;
  RecorderStop(user.app.recorder);
  CheckBoxSetValue(user.app.panel.showAreaBox, false, true);
  RefreshScreen(user.app.area);
}

void GrabAndCheck(void* argument) {
  User& user = *static_cast<User*>(argument);
  user.wish = nullptr;
  const bool grabs = RecorderButtons(user.app.recorder).grab;
  if (grabs) RecorderGrab(user.app.recorder);
  CheckAnimation(user, grabs);
}

// Ends what is under way, one after the other, and looks at what is left.
void ComeToRest(User& user) {
  for (uint32_t i = 0; i < 14; ++i) At(user, i * 500, [](User&) { Escape(); }); // he may have more in mind
  At(user, 7500, [](User& u) { WishFor(u, EndAll); });
  At(user, 14000, [](User& u) {
    ExpectRest(u);
    At(u, 300, [before = PaintAll()](User& later) { ExpectSameScreen(later, before); });
  });
  At(user, 14500, ExpectALivePanel);
  At(user, 15000, [](User& u) { WishFor(u, GrabAndCheck); });
  At(user, 16000, [](User& u) { Close(u, kPatience); });
}

void Finish(User& user) {
  Tell(user, "\n%u ms: has had enough", TheMemoryDisplay().tick - user.began);
  const int32_t way = user.dice.Below(8);
  if (way > 4) return ComeToRest(user);
  if (way == 1) MemoryTellOfSession(DisplayEventKind::kSessionEnds, true);
  if (way > 0) return Close(user, kPatience);
  TheMemoryDisplay().lost = true;
}

// ---- A round ------------------------------------------------------------------------------------------------------

uint32_t PauseBetweenDeeds(User& user) {
  const int32_t kind = user.dice.Below(10);
  return uint32_t(user.dice.Below(kind < 4 ? 30 : kind < 8 ? 400 : kind == 8 ? 1500 : 5000));
}

void Act(User& user, uint32_t end) {
  if (int32_t(TheMemoryDisplay().tick - end) >= 0) return Finish(user);
  DoSomething(user);
  At(user, PauseBetweenDeeds(user), [end](User& u) { Act(u, end); });
}

void Run(User& user) {
  ApplicationStart(user.app);
  const uint32_t end = user.began + uint32_t(kShortest + user.dice.Below(kMore));
  At(user, 0, [end](User& u) { Act(u, end); });
  RunEventLoop();
  TimerCancel(user.wish);
  TheMemoryDisplay().script.clear();
  CheckAnimation(user, false);
  ApplicationEnd(user.app);
}

void Round(uint32_t seed) {
  Dice dice(seed);
  OtherPrograms others;
  SetUpDesktop(dice, others);
  WriteWholeFile("Settings.prf", AnySettings(dice));
  TimerFireDue(); // there is none: the clock has begun anew, and the timers are to know
  ViewsStartUp();
  PlatformInit(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL);
  Application app;
  User user = {seed, dice, app, others, std::fopen("steps.txt", "w"), ::GetTickCount()};
  const MemoryDisplay& display = TheMemoryDisplay();
  Tell(user, "seed %u, %dx%d, %d bits, %d to the inch", seed, display.width, display.height, display.layout.depth,
       display.dotsPerInch);
  AddWords(user);
  Run(user);
  PlatformShutdown();
  Expect(user, !TimerPending(), "a timer outlives the program");
  if (!display.lost) {
    Expect(user, WindowsOfOurs() == 0, "a window outlives the program");
    const std::vector<uint32_t> before = PaintAll();
    ExpectSameScreen(user, before);
  }
  std::fclose(user.steps);
  ForgetAllWindows();
}

} // namespace
} // namespace framereel

void framereel::Expect(const User& user, bool holds, const std::string& what) {
  if (!holds) CheckRound(user.seed, false, what + "; steps.txt ends with what the user did last");
}

int main(int count, char** arguments) {
  const framereel::WorkingFolder folder;
  ::setenv("HOME", folder.path.c_str(), 1);
  return framereel::RunRounds(count, arguments, folder.path, framereel::Round);
}
