// The application at work on a desktop in memory: what the user does from the choice of an area to a recording.
#include "app/application_program.h"

#include <cstdio>
#include <unistd.h>

#include "core/memory.h"
#include "core/timers.h"
#include "support/allocations.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

// Pictures that are larger than the area have the line across them; the next recording's are not. `o`: another program
// paints there, and is asked to do so anew. `h`: the line is hidden over a picture. `n`: it is not shown at all.
TEST_F(ApplicationTest, PicturesAndTheLineStandInOnePlaceAndNeitherLeavesATrace) {
  Start();
  for (const int32_t side : {20, 120}) {
    RecorderThaw(app.recorder);
    StreamClear(app.stream);
    RecorderReset(app.recorder);
    SelectByKeysAndMouse(100, 100, 100 + side, 100 + side);
    RunFor(2000);
    const std::vector<uint32_t> before = TheMemoryDisplay().screen;
    for (const char kind : {' ', 'o', 'h', 'n'}) {
      SCOPED_TRACE(testing::Message() << side << kind);
      const uint32_t refreshes = TheMemoryDesktop().refreshes;
      if (kind != 'n') AntsShow(app.area);
      HoldStartStop();
      RunFor(1500);
      if (kind == 'o') MemoryPaintWindow(*scene, {105, 105, 170, 170}, kBlue);
      if (kind == 'h') AntsHide(app.area);
      RunFor(3000);
      HoldStartStop();
      RunFor(500);
      EXPECT_EQ(TheMemoryDesktop().refreshes, refreshes + (kind == 'o'));
      if (kind != 'n' && kind != 'h') AntsHide(app.area);
      EXPECT_TRUE(IsBesidesPanel(before));
      EXPECT_EQ(Seen(0, side / 2, side / 2), kBlue);
    }
  }
}

// The outline runs across the pictures of a countdown; the first frame ends it.
TEST_F(ApplicationTest, ShowsTheWindowThatTheUserPointsAtUntilHeTakesItOrARecordingBegins) {
  Start();
  scene->children = {{{90, 95, 111, 115}, true}};
  const std::vector<uint32_t> before = TheMemoryDisplay().screen;
  const auto title = [this] {
    char text[40] = "";
    ::GetWindowTextA(app.panel.selectButton->viewClass->nativeHandle(app.panel.selectButton), text, sizeof text);
    return std::string(text);
  };
  for (const bool records : {false, true}) {
    std::filesystem::remove(folder.usersSettings);
    const uint32_t refreshes = TheMemoryDesktop().refreshes;
    if (records) RecorderStart(app.recorder);
    BeginPick(100, 100);
    EXPECT_EQ(title(), "Select Window");
    RunFor(records ? 3000 : 100);
    EXPECT_EQ(app.area.backdrop == nullptr && title() == "Select Area", records);
    EXPECT_EQ(IsBesidesPanel(before), records);
    if (!records) MemoryClick(100, 100);
    RunFor(600);
    EXPECT_EQ(Area(), "{ 90, 95, 111, 115 }");
    EXPECT_EQ(ReadWholeFile(folder.usersSettings).substr(0, 28), "Recording Area:90,95 21x20\r\n");
    RecorderStop(app.recorder);
    RunFor(100);
    EXPECT_TRUE(IsBesidesPanel(before));
    EXPECT_EQ(TheMemoryDesktop().refreshes, refreshes + 1); // its end; nobody else has painted there
  }
  EXPECT_EQ(Seen(0, 10, 10), kBlue);
}

// The rubber band runs across the panel, whose read-outs change under it as if they painted themselves.
TEST_F(ApplicationTest, TheReadOutsFollowASelectionAlsoUnderItsLine) {
  Start();
  const View* label = app.panel.sizeLabel;
  const Point corner = OnScreen(label->window, label->x, label->y);
  MemoryMovePointerTo(corner.h + 5, corner.v + 5);
  Type(VK_SPACE);
  for (const auto& [x, y] : {std::pair{300, 200}, {620, 110}}) {
    const std::vector<uint32_t> before = TheMemoryDisplay().screen;
    MemoryMovePointerTo(x, y);
    Settle();
    AntsToggle(app.area);
    const std::vector<uint32_t> without = TheMemoryDisplay().screen;
    EXPECT_NE(without, before);
    MemoryExpose(Region(PixelRect{0, 0, 640, 480}));
    Settle();
    EXPECT_EQ(TheMemoryDisplay().screen, without);
    AntsToggle(app.area);
  }
  Type(VK_ESCAPE);
}

std::vector<uint32_t> screenBefore;

// Ends the process for want of memory, and says what stands on the screen by the time at which it tells so.
[[noreturn]] void RunOutOfMemory() {
  const cookie_io_functions_t look = {nullptr,
                                      [](void*, const char*, size_t size) {
                                        const bool clean = IsBesidesPanel(screenBefore);
                                        if (::write(STDERR_FILENO, clean ? "clean" : "dirty", 5) != 5) ::_exit(1);
                                        return ssize_t(size);
                                      },
                                      nullptr, nullptr};
  stderr = ::fopencookie(nullptr, "w", look);
  std::setvbuf(stderr, nullptr, _IONBF, 0);
  FailAllocations(0);
  FatalExit();
}

TEST_F(ApplicationTest, LeavesNothingOnTheScreenWhenMemoryEnds) {
  Start();
  SelectByKeysAndMouse(100, 100, 120, 120);
  RunFor(2000);
  screenBefore = TheMemoryDisplay().screen;
  AntsShow(app.area);
  RecorderStart(app.recorder);
  RunFor(800);
  BeginPick(20, 20);
  EXPECT_EXIT(RunOutOfMemory(), testing::ExitedWithCode(0), "^(clean)+$");
}

// While a frame is taken the windows are sound, and the user is told, as far as there is memory for that.
TEST_F(ApplicationTest, TellsThatMemoryHasEndedWithWhatIsLeftOfIt) {
  Start();
  app.recorder.captureBusy = true;
  const auto exhaust = [](void*) {
    MemoryAt(::GetTickCount() + 500, [] { MemoryTypeKey(VK_RETURN); }); // "Quit"
    FailEachAllocation([](int status) {
      if (status != 0) ::_exit(9);
    });
    FatalExit();
  };
  EXPECT_EXIT((TimerSchedule(exhaust, nullptr, 0), RunFor(100)), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace framereel
