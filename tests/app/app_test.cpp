// The program as a whole on a desktop in memory, by scripts: it starts, slides in, and ends at its close box.
#include <csignal>
#include <gtest/gtest.h>
#include <vector>

#include "app/app.h"
#include "app/end_signals.h"
#include "app/slide_frame.h"
#include "core/notices.h"
#include "core/timers.h"
#include "platform/records/window_records.h"
#include "platform/windows/modal.h"
#include "platform/windows/window_geometry.h"
#include "support/allocations.h"
#include "support/temporary_folder.h"
#include "support/timed_script.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
#include "win32/windows/create.h"

namespace framereel {
namespace {

char module;

DisplayWindow* Frame() {
  return MemoryWindowTitled("Framereel");
}

// On a desktop whose windows stand on a grid wider than the steps, to the right of where they are asked to.
void PlaceOnGrid(intptr_t code, void*) {
  const MainWindow* main = TheMainWindow();
  const int past = main->originX % 16;
  if (code != kChangeMainMoved || past == 0) return;
  MoveMainWindow(nullptr, int16_t(main->originX + 16 - past + main->geometry.insetLeft),
                 int16_t(main->originY + main->geometry.insetTop));
}

// Words besides those of script.h: "where" notes the main window's place, with dots while it slides; "icons", "seen",
// "digit" and "face" note what stands on the screen; the others are what becomes of the window, its desktop and
// its process, and "yes" answers whatever is asked from then on.
struct AppTest : testing::Test {
  const WorkingFolder folder;
  Script script;
  std::string noted;

  AppTest() {
    BeginAnew();
    const auto note = [this](const auto&... what) { noted += Text(noted.empty() ? "" : " ", what...); };
    script.Add("where",
               [=] { note(Frame()->place.left, ',', Frame()->place.top, SlideFrameIsRunning() ? "..." : ""); });
    script.Add("icons", [=] { note(Frame()->iconSizes); });
    script.Add("seen", [=] { // on which side of the screen's right edge the question is
      RECT place = {};
      if (GetModalWindow()) ::GetWindowRect(GetModalWindow()->window, &place);
      note(place.right == 0 ? "-" : (place.left + place.right) / 2 < 640 ? "seen" : "beyond");
    });
    script.Add("digit", [=] { note(MemoryPixel(200, 150) ? "digit" : "-"); }); // near the corner of its white picture
    script.Add("face", [=] {
      note(MemoryPixel(Frame()->place.right - 10, Frame()->place.bottom - 10) == ::GetSysColor(COLOR_MENU));
    }); // beside the last popup; it is grey
    script.Add("focus", [] { MemoryGiveKeyboard(Frame()); });
    script.Add("close", [] { MemoryAskToClose(Frame()); });
    script.Add("destroy", [] { MemoryDestroyWindow(Frame()); });
    script.Add("minimise", [] { MemoryMinimiseWindow(Frame(), true); });
    script.Add("restore", [] { MemoryMinimiseWindow(Frame(), false); });
    script.Add("grid", [] { NotifyAdd(PlaceOnGrid, nullptr); });
    script.Add("nogrid", [] { NotifyRemove(PlaceOnGrid, nullptr); });
    script.Add("lose", [] { TheMemoryDisplay().lost = true; });
    script.Add("raise", [](int number) { std::raise(number); });
    script.Add("draw", [] { MemoryFill({120, 120, 150, 150}, 0xFFFFFF); });
    script.Add("yes", [this] {
      const ChildWindow* modal = GetModalWindow();
      if (modal && !(modal->flags & kWindowPopup)) script.Act("enter");
      MemoryAt(::GetTickCount() + 100, [this] { script.Act("yes"); });
    });
  }
  ~AppTest() override { ForgetAllWindows(); }

  static void BeginAnew() {
    ForgetAllWindows();
    MemoryDisplayReset(640, 480, 24);
    TimerClearAll(); // the clock goes back, too
  }
  // Runs the program until somebody in the script ends it, and answers what was noted.
  std::string Run(const std::string& steps, int status = 0) {
    noted.clear();
    ActAt(script, steps);
    EXPECT_EQ(AppMain(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL), status);
    return noted;
  }
  // On a desktop made anew.
  std::string RunAnew(const std::string& steps, int status = 0) {
    BeginAnew();
    return Run(steps, status);
  }
};

TEST_F(AppTest, SlidesInFromTheRightToItsCornerAndLeavesNothingBehind) {
  MemorySetTaskBar({0, 0, 640, 28});
  EXPECT_EQ(Run("1 where 11 where 101 where 1001 where 4000 where 4000 icons 4000 face 4100 close"),
            "640,33... 634,33... 580,33... 420,33 420,33 4 1");
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 1u); // the task bar
  EXPECT_EQ(RunAnew("300 grid 4000 where 4000 nogrid 4100 close"), "416,5") << "where windows are placed elsewhere";
  EXPECT_EQ(RunAnew("300 minimise 301 where 2000 where 2000 restore 5000 where 5100 close"), "472,5... 472,5... 420,5");
}

TEST_F(AppTest, EndsInOrderWhenAnotherProgramDestroysItsWindow) {
  for (const char* steps : {"4500 destroy", "4000 space 4500 destroy"}) {
    RunAnew(steps);
    EXPECT_TRUE(TheMemoryDisplay().desktop.windows.empty());
  }
}

// In a countdown, which a chord begins; the signal takes the picture off.
TEST_F(AppTest, ASignalEndsItInOrder) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    EXPECT_EQ(RunAnew(Text("4000 +ctrl+alt+shift 5000 digit 5000 raise:", number)), "digit");
    EXPECT_EQ(EndSignalThatCame(), number);
    EXPECT_EQ(TheMemoryDisplay().screen, std::vector<uint32_t>(640 * 480));
    EXPECT_EQ(std::signal(number, SIG_DFL), SIG_DFL);
  }
  std::signal(SIGHUP, SIG_IGN); // as nohup does
  RunAnew(Text("100 raise:", SIGHUP, " 200 raise:", SIGTERM));
  EXPECT_EQ(EndSignalThatCame(), SIGTERM);
  EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST_F(AppTest, AsksOnceItHasComeInAndSaysUnderWaylandThatItSeesNothingThere) {
  std::filesystem::create_directory(folder / "framereel");
  WriteWholeFile(folder / "framereel/framereel-recovered-1.gif", "GIF89a");
  EXPECT_EQ(Run("3000 seen 4000 seen 4000 esc 4100 seen 4200 close"), "seen seen -");
  EXPECT_TRUE(std::filesystem::is_empty(folder / "framereel")) << "the user did not want it";
  ::setenv("WAYLAND_DISPLAY", "wayland-0", 1);
  EXPECT_EQ(RunAnew("100 seen 4000 seen 4000 enter 4100 seen 4200 close"), "- seen -");
  ::unsetenv("WAYLAND_DISPLAY");
}

TEST_F(AppTest, SaysSoWhenTheDisplayIsLostAtAnyTime) {
  for (const uint32_t window : {1, 2, 0}) { // the main window, the panel, none
    BeginAnew();
    TheMemoryDisplay().lostAtWindow = window;
    testing::internal::CaptureStderr();
    Run("700 lose", 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "framereel: the connection to the display is lost\n") << window;
  }
}

size_t ends, badEnds, unnoticed;

// The user draws an area, records, opens the system menu, closes the program, and says yes to whatever it asks.
TEST_F(AppTest, EndsInOrderWhicheverAllocationFails) {
  for (const bool fails : {false, true}) { // what is made once for all runs is made by the first
    testing::internal::CaptureStderr();
    const auto judge = [](int status) {
      ++ends;
      unnoticed += WEXITSTATUS(status) == kWentOn;
      if (status != 0 && WEXITSTATUS(status) != kWentOn && badEnds++ == 0) {
        ::fprintf(stderr, "bad, and the last words: %zu\n", ends);
      }
    };
    BeginAnew();
    ActAt(script,
          "100 yes 500 focus 500 m:100:100 500 space 700 m:200:180 800 space 1000 +ctrl+alt+shift "
          "1400 -shift+alt+ctrl 5000 draw 5500 +ctrl+alt+shift 5900 -shift+alt+ctrl 7000 f10 7200 esc 7500 close");
    if (fails) FailEachAllocation(judge);
    Run("");
    FailEachAllocation(nullptr);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(badEnds, 0u) << told.substr(0, told.find("last words"));
  }
  EXPECT_GT(ends, 1000u);
  EXPECT_LT(unnoticed, 10u) << "the system's own, that it can do without";
}

} // namespace
} // namespace framereel
