// The whole program under the hands of a user at random, on desktops of all kinds, and what must hold however that
// goes: it ends in order, nothing of it stays on the screen, and the animation is one. The arguments stand in rounds.h;
// steps.txt in the folder tells what the user of the last round did, and the files that were there are there too.
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

#include "recorder/control/recording_control.h"
#include "app/application.h"
#include "area/ants.h"
#include "fuzz/rounds.h"
#include "fuzz/user.h"
#include "gif/save_animation.h"
#include "platform/platform_init.h"
#include "platform/pump.h"
#include "recorder/engine/recorder_core.h"
#include "recorder/engine/status.h"
#include "support/gif_reader.h"
#include "support/temporary_folder.h"
#include "toolkit/view_class.h"
#include "win32/windows/create.h"

namespace framereel {
namespace {

constexpr int32_t kShortest = 5000, kMore = 40000; // ms of a user's time with the program

char module;

void Expect(const User& user, bool holds, const std::string& what) {
  CheckRound(user.seed, holds, what);
}

// ---- The desktop --------------------------------------------------------------------------------------------------

void SetUpDesktop(std::mt19937& random, OtherPrograms& others) {
  static constexpr int32_t kDepths[] = {1, 2, 4, 8, 16, 24, 32}, kWidths[] = {320, 640, 800};
  const int32_t width = kWidths[random() % std::size(kWidths)];
  MemoryDisplayReset(width, width * 3 / 4, kDepths[random() % std::size(kDepths)]);
  if (random() % 4 == 0) TheMemoryDisplay().tick = uint32_t(-20000); // wraps on the way
  others.PaintDesktop(random);
  for (uint32_t i = random() % 4; i > 0; --i) others.Open(random);
  if (random() % 3 == 0) others.SetTaskBar({0, 0, width, 28});
}

std::string AnySettings(std::mt19937& random) {
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
  for (uint32_t i = random() % 6; i > 0; --i) text += kLines[random() % std::size(kLines)];
  return text;
}

int32_t WindowsOfOurs() {
  const auto& windows = TheMemoryDesktop().windows;
  return int32_t(std::count_if(windows.begin(), windows.end(), [](const auto& window) { return window->ours; }));
}

// ---- The animation ------------------------------------------------------------------------------------------------

std::vector<uint8_t> Saved(User& user) {
  FileType* type = NewFileType(kFileTypeGif);
  FileRef* ref = AppFileRef("animation", type);
  FileDelete(ref);
  Expect(user, FileCreate(ref), "the animation's file cannot be made");
  File* file = FileOpen(ref, FileModeWrite);
  Expect(user, file && SaveAnimationTo(user.app.gif, file), "the animation cannot be saved");
  Expect(user, FileClose(file), "the animation's file does not close");
  FreeFileRef(ref);
  FreeFileType(type);
  const std::string bytes = ReadWholeFile("animation.gif");
  return {bytes.begin(), bytes.end()};
}

std::string Place(int32_t x, int32_t y) {
  return std::to_string(x) + "," + std::to_string(y);
}

bool IsOnRim(const GifPicture& gif, int x, int y) {
  return x == 0 || y == 0 || x == gif.width - 1 || y == gif.height - 1;
}

// Everything in the frames is dim, as other programs and the pointer are. Beyond the edges of the screen it is black.
void ExpectOthersOnly(const User& user, const GifPicture& gif) {
  for (size_t f = 0; f < gif.frames.size(); ++f) {
    const GifFrame& frame = gif.frames[f];
    for (size_t i = 0; i < frame.indices.size(); ++i) {
      const int x = frame.left + int(i) % frame.width, y = frame.top + int(i) / frame.width;
      if (frame.indices[i] == frame.transparent || IsOnRim(gif, x, y)) continue;
      const uint32_t colour = gif.colours[frame.indices[i]];
      if (IsDim(colour) || (user.areaLeftScreen && colour == 0)) continue;
      Expect(user, false, "something of ours is recorded, frame " + std::to_string(f) + " at " + Place(x, y));
    }
  }
}

bool IsNear(uint32_t a, uint32_t b) {
  constexpr int kCubeStep = 51;
  for (const int shift : {0, 8, 16}) {
    if (2 * std::abs(int(a >> shift & 255) - int(b >> shift & 255)) > kCubeStep + 2) return false;
  }
  return true;
}

bool IsUnderPointer(int32_t x, int32_t y) {
  const MemoryDisplay& display = TheMemoryDisplay();
  const int32_t left = display.pointerX - display.hotX, top = display.pointerY - display.hotY;
  return display.hasPointer && x >= left && x < left + display.pointerWidth && y >= top &&
         y < top + display.pointerHeight;
}

// Whether the last frame shows what stands on the screen now.
bool ShowsTheScreen(const User& user, const GifPicture& gif) {
  const RecorderState& recorder = user.app.recorder;
  const MemoryDisplay& display = TheMemoryDisplay();
  const std::vector<uint32_t> shown = Composite(gif, gif.frames.size() - 1);
  for (int y = 0; y < gif.height; ++y) {
    for (int x = 0; x < gif.width; ++x) {
      const int32_t screenX = recorder.frameLeft + x, screenY = recorder.frameTop + y;
      if (IsOnRim(gif, x, y) || IsUnderPointer(screenX, screenY)) continue;
      if (screenX >= display.width || screenY >= display.height) continue;
      const PaletteColour c = MemoryColourOf(MemoryPixel(screenX, screenY));
      if (!IsNear(shown[size_t(y * gif.width + x)], uint32_t(c.red << 16 | c.green << 8 | c.blue))) return false;
    }
  }
  return true;
}

void CheckAnimation(User& user, bool screenIsRecorded) {
  RecorderState& recorder = user.app.recorder;
  const uint32_t size = user.app.stream.streamSize;
  Expect(user, (size != 0) == recorder.animationStarted, "there are bytes without an animation");
  if (size == 0) return;
  const GifPicture gif = ReadGif(Saved(user));
  Expect(user, user.app.stream.streamSize == size, "the stream is not what it was before the save");
  Expect(user, gif.error.empty(), "the animation cannot be read: " + gif.error);
  Expect(user, gif.frames.size() == recorder.frameCount, "the animation has another count of frames");
  const std::vector<uint32_t> first = Composite(gif, 0);
  Expect(user, !first.empty() && std::count(first.begin(), first.end(), kUncovered) == 0, "a first frame with holes");
  Expect(user, !Composite(gif, gif.frames.size() - 1).empty(), "a frame leaves the picture, or its colours");
  const bool whole = gif.width == recorder.frameWidth && gif.height == recorder.frameHeight;
  if (user.coloursChanged) return;
  if (recorder.animationFormat == kFormatTrueColour || recorder.animationFormat == kFormat8Bit) {
    if (!user.ownMayBeSeen) ExpectOthersOnly(user, gif);
  }
  Expect(user, !screenIsRecorded || !whole || ShowsTheScreen(user, gif), "the last frame is not what the screen shows");
}

// ---- How it ends --------------------------------------------------------------------------------------------------

constexpr uint32_t kPatience = 20000; // ms for the program to end

void At(User& user, uint32_t milliseconds, std::function<void(User&)> act) {
  MemoryAt(TheMemoryDisplay().tick + milliseconds, [&user, act = std::move(act)] { act(user); });
}

// Whoever asks to close may have a menu open or a window at the pointer: Escape and letting go get out of all that.
void Close(User& user, uint32_t patience) {
  Expect(user, patience > 0, "the program does not end");
  LetGo();
  if (DisplayWindow* ours = MemoryWindowTitled("Framereel")) {
    MemoryGiveKeyboard(ours);
    MemoryTypeKey(VK_ESCAPE);
    MemoryAskToClose(ours);
  }
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
}

// What stands on the screen is what everybody paints there.
void ExpectCleanScreen(User& user, const std::vector<uint32_t>& before, const std::string& when) {
  const MemoryDisplay& display = TheMemoryDisplay();
  Region differs;
  for (size_t i = 0; i < before.size(); ++i) {
    const int32_t x = int32_t(i) % display.width, y = int32_t(i) / display.width;
    if (display.screen[i] != before[i]) differs.Add({x, y, x + 1, y + 1});
  }
  if (differs.IsEmpty()) return;
  const PixelRect r = differs.Bounds();
  MemoryWritePicture("painted.ppm");
  TheMemoryDisplay().screen = before;
  MemoryWritePicture("stands.ppm");
  Expect(user, false,
         when + " nobody paints what stands on the screen from " + Place(r.left, r.top) + " to " +
             Place(r.right, r.bottom));
}

void ExpectALivePanel(User& user) {
  MemoryMovePointerTo(9, 9);
  for (const uint8_t key : {VK_LEFT, VK_LEFT, VK_RIGHT, VK_LEFT}) MemoryTypeKey(key);
  At(user, 300, [](User& u) { Expect(u, TheMemoryDisplay().pointerX == 7, "the panel does not hear its keys"); });
}

// Ends what is under way, one after the other, and looks at what is left.
void ComeToRest(User& user) {
  LetGo();
  if (DisplayWindow* ours = MemoryWindowTitled("Framereel")) {
    if (ours->minimised) MemoryMinimiseWindow(ours, false);
    MemoryGiveKeyboard(ours);
  }
  for (uint32_t i = 1; i < 6; ++i) At(user, i * 200, [](User&) { MemoryTypeKey(VK_ESCAPE); });
  At(user, 1500, [](User& u) {
    WishFor(u, [](User& wisher) {
      RecorderStop(wisher.app.recorder);
      if (wisher.wantsLine) AntsHide(wisher.app.area);
      wisher.wantsLine = false;
      RefreshScreen(wisher.app.area);
    });
  });
  At(user, 8000, [](User& u) {
    ExpectRest(u);
    const std::vector<uint32_t> before = TheMemoryDisplay().screen;
    MemoryExpose(Region(PixelRect{0, 0, TheMemoryDisplay().width, TheMemoryDisplay().height}));
    At(u, 300, [before](User& later) { ExpectCleanScreen(later, before, "at rest"); });
  });
  At(user, 8500, ExpectALivePanel);
}

void Finish(User& user) {
  Tell(user, "\n%u ms: has had enough", TheMemoryDisplay().tick - user.began);
  if (Below(user, 2) == 0) return Close(user, kPatience);
  ComeToRest(user);
  At(user, 9000, [](User& u) {
    WishFor(u, [](User& wisher) {
      const bool grabs = RecorderButtons(wisher.app.recorder).grab;
      if (grabs) RecorderGrab(wisher.app.recorder);
      CheckAnimation(wisher, grabs);
    });
  });
  At(user, 10000, [](User& u) { Close(u, kPatience); });
}

// ---- A round ------------------------------------------------------------------------------------------------------

uint32_t PauseBetweenDeeds(User& user) {
  const int32_t kind = Below(user, 10);
  return uint32_t(Below(user, kind < 4 ? 30 : kind < 8 ? 400 : kind == 8 ? 1500 : 5000));
}

void Act(User& user, uint32_t end) {
  if (int32_t(TheMemoryDisplay().tick - end) >= 0) return Finish(user);
  LookAtWindows(user);
  DoSomething(user);
  At(user, PauseBetweenDeeds(user), [end](User& u) { Act(u, end); });
}

void Round(uint32_t seed) {
  std::mt19937 random(seed);
  OtherPrograms others;
  SetUpDesktop(random, others);
  WriteWholeFile("Settings.prf", AnySettings(random));
  TimerFireDue(); // there is none: the clock has begun anew, and the timers are to know
  ViewsStartUp();
  PlatformInit(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL);
  Application app;
  User user = {seed, random, app, others, std::fopen("steps.txt", "w"), ::GetTickCount()};
  Tell(user, "seed %u, %dx%d, %d bits", seed, TheMemoryDisplay().width, TheMemoryDisplay().height,
       TheMemoryDisplay().layout.depth);
  ApplicationStart(app);
  const uint32_t end = user.began + uint32_t(kShortest + Below(user, kMore));
  At(user, 0, [end](User& u) { Act(u, end); });
  RunEventLoop();
  for (const User::Wish& wish : user.wishes) TimerCancel(wish.timer);
  TheMemoryDisplay().script.clear();
  CheckAnimation(user, false);
  ApplicationEnd(app);
  Expect(user, !TimerPending(), "a timer outlives the application");
  PlatformShutdown();
  Expect(user, WindowsOfOurs() == 0, "a window outlives the program");
  const std::vector<uint32_t> left = TheMemoryDisplay().screen;
  MemoryExpose(Region(PixelRect{0, 0, TheMemoryDisplay().width, TheMemoryDisplay().height}));
  ExpectCleanScreen(user, left, "after the end");
  std::fclose(user.steps);
  ForgetAllWindows();
}

} // namespace
} // namespace framereel

int main(int count, char** arguments) {
  const framereel::WorkingFolder folder;
  return framereel::RunRounds(count, arguments, folder.path, framereel::Round);
}
