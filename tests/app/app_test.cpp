// The program as a whole on a desktop in memory: it starts, slides in, and ends at its close box.
#include <csignal>
#include <gtest/gtest.h>
#include <vector>

#include "app/app.h"
#include "app/end_signals.h"
#include "app/slide_frame.h"
#include "core/notices.h"
#include "platform/records/window_records.h"
#include "platform/windows/modal.h"
#include "platform/windows/window_geometry.h"
#include "platform/windows/window_list.h"
#include "support/allocations.h"
#include "support/temporary_folder.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/create.h"
#include "win32/windows/window.h"

namespace framereel {
namespace {

char module;

DisplayWindow* Frame() {
  return MemoryWindowTitled("Framereel");
}

// Runs the program until somebody in the script ends it.
int RunProgram() {
  return AppMain(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL);
}

class AppTest : public ::testing::Test {
protected:
  AppTest() { MemoryDisplayReset(640, 480, 24); }
  ~AppTest() override { ForgetAllWindows(); }

  const WorkingFolder folder;
};

// The last tick at which the script does something; then the user closes the program.
void CloseAt(uint32_t tick) {
  MemoryAt(tick, [] { MemoryAskToClose(Frame()); });
}

TEST_F(AppTest, SlidesInFromTheRightToItsCornerAndLeavesNothingBehind) {
  std::vector<int32_t> way;
  PixelRect rest = {};
  uint32_t inside = 0;
  MemorySetTaskBar({0, 0, 640, 28});
  for (uint32_t tick = 0; tick < 3000; tick += 10) {
    MemoryAt(tick, [&] { way.push_back(Frame()->place.left); });
  }
  MemoryAt(4000, [&] {
    rest = Frame()->place;
    inside = MemoryPixel(rest.right - 10, rest.bottom - 10); // beside the last popup
    EXPECT_FALSE(SlideFrameIsRunning());
    EXPECT_EQ(Frame()->iconSizes, 4u);
  });
  CloseAt(4100);
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_GE(way.at(0), 640 - 6);
  for (size_t i = 1; i < way.size(); ++i) {
    EXPECT_LE(way[i], way[i - 1]);
    EXPECT_GE(way[i], way[i - 1] - 6);
  }
  EXPECT_EQ(rest.top, 28 + 5); // below the task bar
  EXPECT_GE(rest.right, 640 - 10);
  EXPECT_LE(rest.right, 640);
  const uint32_t menu = ::GetSysColor(COLOR_MENU);
  EXPECT_EQ(inside, MemoryPixelOf(GetRValue(menu), GetGValue(menu), GetBValue(menu)));
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 1u); // the task bar
}

// On a desktop whose windows stand on a grid wider than the steps, to the right of where they are asked to.
void PlaceOnGrid(intptr_t code, void*) {
  const MainWindow* main = TheMainWindow();
  const int past = main->originX % 16;
  if (code != kChangeMainMoved || past == 0) return;
  MoveMainWindow(nullptr, int16_t(main->originX + 16 - past + main->geometry.insetLeft),
                 int16_t(main->originY + main->geometry.insetTop));
}

TEST_F(AppTest, SlidesInOnADesktopThatPlacesWindowsElsewhere) {
  MemoryAt(300, [] { NotifyAdd(PlaceOnGrid, nullptr); });
  MemoryAt(4000, [] {
    EXPECT_LE(Frame()->place.right, 640 + 16);
    NotifyRemove(PlaceOnGrid, nullptr);
  });
  CloseAt(4100);
  EXPECT_EQ(RunProgram(), 0);
}

TEST_F(AppTest, SlidesOnAfterItHasBeenMinimised) {
  int32_t stopped = 0;
  MemoryAt(500, [] { MemoryMinimiseWindow(Frame(), true); });
  MemoryAt(600, [&] { stopped = Frame()->place.left; });
  MemoryAt(2000, [&] {
    EXPECT_EQ(Frame()->place.left, stopped);
    MemoryMinimiseWindow(Frame(), false);
  });
  MemoryAt(5000, [] { EXPECT_LE(Frame()->place.right, 640); });
  CloseAt(5100);
  EXPECT_EQ(RunProgram(), 0);
}

TEST_F(AppTest, EndsInOrderWhenAnotherProgramDestroysItsWindow) {
  for (const bool whileSelecting : {false, true}) {
    if (whileSelecting) MemoryAt(4000, [] { MemoryTypeKey(VK_SPACE); });
    MemoryAt(4500, [] { MemoryDestroyWindow(Frame()); });
    EXPECT_EQ(RunProgram(), 0);
    EXPECT_TRUE(TheMemoryDisplay().desktop.windows.empty());
    MemoryDisplayReset(640, 480, 24);
  }
}

// In a countdown, which a chord begins; the signal takes the picture off.
TEST_F(AppTest, ASignalEndsItInOrder) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    MemoryDisplayReset(640, 480, 24);
    MemoryAt(4000, [] {
      for (const int key : {VK_CONTROL, VK_MENU, VK_SHIFT}) MemoryPressKey(uint8_t(key));
    });
    MemoryAt(5000, [number] {
      EXPECT_NE(MemoryPixel(200, 150), 0u); // near the corner of the digit's picture, which is white
      std::raise(number);
    });
    EXPECT_EQ(RunProgram(), 0);
    EXPECT_EQ(EndSignalThatCame(), number);
    EXPECT_EQ(TheMemoryDisplay().screen, std::vector<uint32_t>(640 * 480));
    EXPECT_EQ(std::signal(number, SIG_DFL), SIG_DFL);
    ForgetAllWindows();
  }
  std::signal(SIGHUP, SIG_IGN); // as nohup does
  MemoryDisplayReset(640, 480, 24);
  MemoryAt(100, [] { std::raise(SIGHUP); });
  MemoryAt(200, [] { std::raise(SIGTERM); });
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_EQ(EndSignalThatCame(), SIGTERM);
  EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST_F(AppTest, OffersWhatWasKeptOnceItHasComeIn) {
  std::filesystem::create_directory(folder / "framereel");
  WriteWholeFile(folder / "framereel/framereel-recovered-1.gif", "GIF89a");
  static bool asked;
  asked = false;
  for (uint32_t tick = 100; tick < 6000; tick += 100) {
    MemoryAt(tick, [] {
      RECT place;
      if (asked || !GetModalWindow() || !::GetWindowRect(GetModalWindow()->window, &place)) return;
      asked = true;
      EXPECT_LT((place.left + place.right) / 2, 640) << "it is centred on the main window";
      MemoryTypeKey(VK_ESCAPE);
    });
  }
  CloseAt(6100);
  EXPECT_EQ(RunProgram(), 0);
  EXPECT_TRUE(asked);
  EXPECT_TRUE(std::filesystem::is_empty(folder / "framereel"));
}

TEST_F(AppTest, SaysUnderWaylandThatItSeesNothingThere) {
  ::setenv("WAYLAND_DISPLAY", "wayland-0", 1);
  MemoryAt(100, [] { EXPECT_EQ(GetModalWindow(), nullptr) << "the main window is still coming in"; });
  MemoryAt(4000, [] {
    EXPECT_NE(GetModalWindow(), nullptr);
    MemoryTypeKey(VK_RETURN);
  });
  MemoryAt(4100, [] { EXPECT_EQ(GetModalWindow(), nullptr); });
  CloseAt(4200);
  EXPECT_EQ(RunProgram(), 0);
  ::unsetenv("WAYLAND_DISPLAY");
}

TEST_F(AppTest, SaysSoWhenThereIsNoDisplayOrItIsLostAtAnyTime) {
  const auto run = [] {
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunProgram(), 1);
    ForgetAllWindows();
    return testing::internal::GetCapturedStderr();
  };
  TheMemoryDisplay().present = false;
  EXPECT_EQ(run(), "framereel: there is no display that could be recorded\n");
  for (const uint32_t window : {1, 2, 0}) { // the main window, the panel, none
    MemoryDisplayReset(640, 480, 24);
    TheMemoryDisplay().lostAtWindow = window;
    MemoryAt(700, [] { TheMemoryDisplay().lost = true; });
    EXPECT_EQ(run(), "framereel: the connection to the display is lost\n") << window;
  }
}

// The user draws an area, records, opens the system menu, closes the program, and says yes to whatever it asks.
void ScriptASession() {
  MemoryAt(500, [] {
    MemoryGiveKeyboard(Frame());
    MemoryMovePointerTo(100, 100);
    MemoryTypeKey(VK_SPACE);
  });
  MemoryAt(700, [] { MemoryMovePointerTo(200, 180); });
  MemoryAt(800, [] { MemoryTypeKey(VK_SPACE); });
  for (const uint32_t tick : {1000, 5500}) {
    for (const uint8_t key : {VK_CONTROL, VK_MENU, VK_SHIFT}) {
      MemoryAt(tick, [key] { MemoryPressKey(key); });
      MemoryAt(tick + 400, [key] { MemoryReleaseKey(key); });
    }
  }
  MemoryAt(5000, [] { MemoryFill({120, 120, 150, 150}, 0xFFFFFF); });
  MemoryAt(7000, [] { MemoryTypeKey(VK_F10); });
  MemoryAt(7200, [] { MemoryTypeKey(VK_ESCAPE); });
  CloseAt(7500);
  for (uint32_t tick = 100; tick < 10000; tick += 100) {
    MemoryAt(tick, [] {
      const ChildWindow* modal = GetModalWindow();
      if (modal && !(modal->flags & kWindowPopup)) MemoryTypeKey(VK_RETURN);
    });
  }
}

size_t ends, badEnds, unnoticed;

TEST_F(AppTest, EndsInOrderWhicheverAllocationFails) {
  for (const bool fails : {false, true}) { // what is made once for all runs is made by the first
    MemoryDisplayReset(640, 480, 24);
    ScriptASession();
    testing::internal::CaptureStderr();
    const auto judge = [](int status) {
      ++ends;
      unnoticed += WEXITSTATUS(status) == kWentOn;
      if (status != 0 && WEXITSTATUS(status) != kWentOn && badEnds++ == 0) {
        ::fprintf(stderr, "bad, and the last words: %zu\n", ends);
      }
    };
    if (fails) FailEachAllocation(judge);
    EXPECT_EQ(RunProgram(), 0);
    FailEachAllocation(nullptr);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(badEnds, 0u) << told.substr(0, told.find("last words"));
    ForgetAllWindows();
  }
  EXPECT_GT(ends, 1000u);
  EXPECT_LT(unnoticed, 5u) << "the system's own, that it can do without";
}

} // namespace
} // namespace framereel
