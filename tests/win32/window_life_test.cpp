// The messages of a window's life, in their order.
#include <gtest/gtest.h>

#include "win32/window_scene.h"

namespace framereel {
namespace {

using testing::Test;

TEST(WindowLife, AFrameHearsOfItsLimitsItsRecordItsFrameAndItsCreation) {
  WindowScene scene;
  MakeWindow("main", kFrameStyle, {10, 20, 110, 120});
  EXPECT_EQ(Joined(TakeLog()), "main GETMINMAXINFO; main NCCREATE; main NCCALCSIZE 100x100; main CREATE");
  HWND owner = ::GetTopWindow(nullptr);
  MakeWindow("dialog", WS_POPUP | WS_CAPTION, {0, 0, 50, 50}, owner);
  EXPECT_EQ(Joined(TakeLog()), "dialog NCCREATE; dialog NCCALCSIZE 50x50; dialog CREATE");
  MakeWindow("child", kChildStyle, {0, 0, 50, 50}, owner);
  EXPECT_EQ(Joined(TakeLog()), "child NCCREATE; child NCCALCSIZE 50x50; child CREATE");
}

TEST(WindowLife, ShowingTellsTheWindowThatItIsShownAndThenActivatesIt) {
  WindowScene scene;
  HWND window = MakeWindow("main", kFrameStyle, {10, 20, 110, 120});
  TakeLog();
  EXPECT_FALSE(::ShowWindow(window, SW_RESTORE));
  EXPECT_EQ(Joined(TakeLog()), "main SHOWWINDOW 1; main WINDOWPOSCHANGED");
  Drain();
  EXPECT_EQ(Joined(TakeLog()), "main ACTIVATEAPP 1; main NCACTIVATE 1; main ACTIVATE 1; main SETFOCUS; main PAINT; "
                               "main ERASEBKGND");
  EXPECT_TRUE(::ShowWindow(window, SW_RESTORE));
  EXPECT_EQ(Joined(TakeLog()), "");
}

} // namespace
} // namespace framereel
