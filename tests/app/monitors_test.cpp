// The program on several monitors, whichever of them is the primary one: where its windows come up, that an area may
// lie on any of them and across, and that it stays on one that is there.
#include "app/application_program.h"
#include "app/picture_windows.h"
#include "app/slide_frame.h"
#include "platform/records/window_records.h"
#include "platform/windows/child_window.h"
#include "toolkit/controls/alert.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

constexpr PixelRect kLeft = {0, 100, 640, 580}, kRight = {640, 0, 1440, 600}, kBelow = {640, 600, 1440, 1100};

class MonitorsTest : public ApplicationTest, public testing::WithParamInterface<std::vector<PixelRect>> {
protected:
  MonitorsTest() {
    MemoryDisplaySetMode(1440, 1100, 24);
    MemorySetMonitors(GetParam());
    MemorySetTaskBar({0, 1080, 1440, 1100});
    Settle();
  }
  static bool Inside(const PixelRect& inner, const PixelRect& outer) { return Same(Intersect(inner, outer), inner); }
  static PixelRect PlaceOf(const ChildWindow* window) {
    const Point corner = OnScreen(window, int16_t(-window->geometry.insetLeft), int16_t(-window->geometry.insetTop));
    return {corner.h, corner.v, corner.h + window->geometry.outerWidth, corner.v + window->geometry.outerHeight};
  }
  static PixelRect Panel() { return MemoryWindowTitled("Framereel")->place; }
  static void MovePanel(int32_t left, int32_t top) {
    const PixelRect panel = Panel();
    MemoryMoveWindow(MemoryWindowTitled("Framereel"), Moved(panel, left - panel.left, top - panel.top));
    Settle();
  }
  // With the panel there. It is wider than that.
  static void ExpectAlertOn(const PixelRect& monitor, int32_t left, int32_t top) {
    MovePanel(left, top);
    std::string text;
    while (text.size() < 500) text += "Why? ";
    ChildWindow* alert = AlertBuild(nullptr, "", 130, text.c_str(), "One", nullptr, nullptr, nullptr);
    EXPECT_GT(alert->geometry.outerWidth, TheMainWindow()->geometry.outerWidth);
    EXPECT_TRUE(Inside(PlaceOf(alert), monitor)) << left;
    ShowChildWindow(alert);
    Type(VK_RETURN);
  }
};

TEST_P(MonitorsTest, ComesUpOnThePrimaryOneAndWhatItOpensWhereItIsMovedTo) {
  const PixelRect primary = GetParam()[0];
  ApplicationStart(app);
  EXPECT_TRUE(Inside(PlaceOf(app.splash.window), primary));
  ApplicationEnd(app);
  Start();
  EXPECT_TRUE(Inside(Panel(), primary));
  EXPECT_GE(Panel().right, primary.right - 10);
  ExpectAlertOn(primary, 1500, 100); // the panel cannot be seen
  for (const PixelRect& monitor : GetParam()) {
    ExpectAlertOn(monitor, monitor.left, monitor.bottom - 470);
    ExpectAlertOn(monitor, monitor.right - 215, monitor.bottom - 470);
    ShowAbout(app);
    RunFor(8000);
    EXPECT_TRUE(Inside(PlaceOf(app.about.window), monitor));
    Type(VK_ESCAPE);
  }
}

TEST_P(MonitorsTest, RecordsAnAreaAcrossThem) {
  Start();
  SelectByKeysAndMouse(900, 590, 960, 640);
  MemoryPaintDesktop({900, 590, 960, 640}, kRed);
  RecorderGrab(app.recorder);
  EXPECT_EQ(Seen(0, 2, 2), kRed);
  EXPECT_EQ(Seen(0, 57, 47), kRed);
  End();
  Start();
  EXPECT_EQ(Area(), "{ 900, 590, 960, 640 }"); // as the settings have it
}

TEST_P(MonitorsTest, StaysOnOneThatIsThereAlsoOnItsWay) {
  const PixelRect primary = GetParam()[0], other = GetParam()[1];
  Start();
  MovePanel(other.left + 300, other.top + 20);
  MemorySetMonitors({other, primary}); // another primary one is no reason to go
  Settle();
  EXPECT_TRUE(Inside(Panel(), other));
  MemorySetMonitors({primary});
  Settle();
  EXPECT_TRUE(Inside(Panel(), primary));
  End();
  MemorySetMonitors({});
  ApplicationStart(app);
  RunFor(200);
  MemoryDisplaySetMode(640, 480, 24);
  RunFor(4000);
  EXPECT_FALSE(SlideFrameIsRunning());
  EXPECT_TRUE(Inside(Panel(), {0, 0, 640, 480}));
  ApplicationEnd(app);
}

INSTANTIATE_TEST_SUITE_P(Layouts, MonitorsTest,
                         testing::Values(std::vector{kLeft, kRight, kBelow}, std::vector{kRight, kLeft, kBelow},
                                         std::vector{kBelow, kRight, kLeft}));

} // namespace
} // namespace framereel
