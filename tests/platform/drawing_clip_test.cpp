// The clip, and the Ports of windows: minimised, being painted, scrolled, copied from.
#include "platform/drawing/clip.h"

#include "platform/sheet.h"
#include "win32/memory/memory_display.h"
#include "win32/memory/memory_windows.h"

namespace framereel {
namespace {

RECT ClipBox() {
  RECT box = {};
  ::GetClipBox(CurrentContext(), &box);
  return box;
}

bool IsOnScreen(const ChildWindow* window, int16_t x, int16_t y, const Colour& colour) {
  const Point place = OnScreen(window, x, y);
  return ::GetPixel(ScreenContext(), place.h, place.v) == ColourRef(colour);
}

TEST(Clip, IsNarrowedAndRestored) {
  Sheet sheet(20, 20);
  SetClip(2, 2, 12, 12);
  const SavedClip outer = NarrowClip(8, 8, 30, 30);
  FillRectXY(0, 0, 1000, 1000);
  RestoreClip(outer);
  DrawPixel(2, 2);
  DrawPixel(12, 12); // outside
  sheet.ExpectColours([](int x, int y) {
    return Contains({8, 8, 12, 12}, x, y) || (x == 2 && y == 2) ? kBlack : kWhite;
  });
  SetPortOffscreen(sheet.offscreen);
  EXPECT_EQ(ClipBox().right, 20); // a Port begins without a clip
}

TEST(Clip, SavedWhereThereWasNoneComesBackAsALargeRectangle) {
  WindowProgram program;
  SetPortScreen();
  RestoreClip(SaveClip());
  HRGN region = ::CreateRectRgn(0, 0, 0, 0);
  ASSERT_EQ(::GetClipRgn(CurrentContext(), region), 1);
  RECT box;
  ::GetRgnBox(region, &box);
  EXPECT_TRUE(box.left == 0 && box.top == 0 && box.right == 10000 && box.bottom == 10000);
  ::DeleteObject(region);
}

TEST(Clip, OfAnotherPortIsDropped) {
  Sheet sheet(20, 20);
  SetClip(1, 1, 2, 2);
  const SavedClip saved = SaveClip();
  SetPortOffscreen(NewOffscreen(20, 20, true));
  RestoreClip(saved);
  EXPECT_EQ(ClipBox().right, 20);
}

TEST(WindowPorts, DrawInWindowCoordinatesAndNothingWhileMinimised) {
  WindowProgram program;
  ChildWindow* window = OpenTestWindow(kWindowMayClose);
  SetPortWindow(window);
  EXPECT_EQ(CurrentPort(), &window->port);
  EXPECT_EQ(TheCurrentPort().window, window->window);
  UseDrawState(DrawStateDefault());
  DrawPixel(3, 4);
  DrawPixel(30, 30);
  ScrollPortRect({20, 20, 60, 60}, -5, 7);
  EXPECT_TRUE(IsOnScreen(window, 3, 4, kBlack));
  EXPECT_TRUE(IsOnScreen(window, 4, 4, kWhite));
  EXPECT_TRUE(IsOnScreen(window, 25, 37, kBlack));

  ::ShowWindow(window->window, SW_SHOWMINIMIZED);
  Settle();
  ASSERT_TRUE(window->iconic);
  SetPortWindow(window);
  EXPECT_EQ(ClipBox().left, ClipBox().right);
  SetClip(0, 0, 50, 50); // no way round it
  EXPECT_EQ(ClipBox().left, ClipBox().right);
}

TEST(WindowPorts, KeepTheClipOfAPaintWhileItRuns) {
  WindowProgram program;
  ChildWindow* window = OpenTestWindow(kWindowMayClose);
  static RECT during, other;
  SetWindowMethod(
      window, &WindowMethods::paint, +[](ChildWindow* painted) {
        SetPortMain(nullptr);
        other = ClipBox();
        SetPortWindow(painted);
        during = ClipBox();
        UseDrawState(DrawStateDefault());
        FillRectXY(0, 0, 1000, 1000);
      });
  InvalidateChildRect(window, {10, 20, 30, 50});
  Settle();
  EXPECT_TRUE(during.left == 20 && during.top == 10 && during.right == 50 && during.bottom == 30);
  EXPECT_GT(other.right - other.left, 50);
  EXPECT_TRUE(IsOnScreen(window, 20, 10, kBlack));
  EXPECT_TRUE(IsOnScreen(window, 19, 10, kWhite));
}

TEST(WindowPorts, AreCopiedFrom) {
  Sheet sheet(8, 6);
  ChildWindow* window = OpenTestWindow(kWindowMayClose);
  SetPortWindow(window);
  UseDrawState(DrawStateDefault());
  FillRectXY(10, 10, 14, 12);
  SetPortOffscreen(sheet.offscreen);
  CopyBits(&window->port, {8, 8, 14, 16}, OffscreenBounds(sheet.offscreen), 1);
  sheet.ExpectColours([](int x, int y) { return Contains({2, 2, 4, 6}, x, y) ? kBlack : kWhite; });
  // The main window is read from the screen, from its outer corner on, with what stands over it.
  MainWindow* main = TheMainWindow();
  CopyBits(&main->port, {0, 0, 6, 8}, OffscreenBounds(sheet.offscreen), 1);
  EXPECT_EQ(sheet.Pixels()[2 * 8 + 3], MemoryPixel(main->originX + 3, main->originY + 2));
}

} // namespace
} // namespace framereel
