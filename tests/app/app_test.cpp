// The program as a whole on a desktop in memory: it starts, slides in, and ends at its close box.
#include <gtest/gtest.h>
#include <vector>

#include "app/app.h"
#include "app/panel.h"
#include "app/slide_frame.h"
#include "platform/child_window.h"
#include "platform/main_window.h"
#include "win32/memory/memory_display.h"
#include "win32/window.h"

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
};

TEST_F(AppTest, SlidesInFromTheRightToItsCorner) {
  std::vector<int32_t> way;
  PixelRect rest = {};
  for (uint32_t tick = 0; tick < 3000; tick += 10) {
    MemoryAt(tick, [&] { way.push_back(Frame()->place.left); });
  }
  MemoryAt(4000, [&] {
    rest = Frame()->place;
    MemoryAskToClose(Frame());
  });
  EXPECT_EQ(RunProgram(), 0);
  ASSERT_FALSE(way.empty());
  EXPECT_GE(way.front(), 640 - 6);
  for (size_t i = 1; i < way.size(); ++i) {
    EXPECT_LE(way[i], way[i - 1]);
    EXPECT_GE(way[i], way[i - 1] - 6);
  }
  EXPECT_EQ(rest.top, 5);
  EXPECT_LT(rest.right, 640);
  EXPECT_GT(rest.right, 640 - 20);
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 0u);
}

} // namespace
} // namespace framereel
