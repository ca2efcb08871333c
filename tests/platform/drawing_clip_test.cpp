// The clip, and the Ports of windows: minimised, being painted, scrolled, copied from.
#include "platform/clip.h"

#include <gtest/gtest.h>

#include "platform/bitmaps.h"
#include "platform/drawing.h"
#include "platform/main_window.h"
#include "platform/primitives.h"
#include "platform/standard_drawing.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"
#include "win32/memory/memory_windows.h"

namespace framereel {
namespace {

constexpr uint32_t kBlack = 0, kWhite = 0xFFFFFF;

// Fills the current Port in the colour of the state, white or black.
void FillPort(DrawState* state) {
  UseDrawState(state);
  FillRectXY(0, 0, 1000, 1000);
}

COLORREF At(const Offscreen* offscreen, int x, int y) {
  const HGDIOBJ before = ::SelectObject(SourceContext(), offscreen->bitmap);
  const COLORREF colour = ::GetPixel(SourceContext(), x, y);
  ::SelectObject(SourceContext(), before);
  return colour;
}

RECT ClipBox() {
  RECT box = {};
  ::GetClipBox(CurrentContext(), &box);
  return box;
}

TEST(Clip, IsNarrowedAndRestored) {
  WindowProgram program;
  Offscreen* offscreen = NewOffscreen(20, 20, true);
  SetPortOffscreen(offscreen);
  FillPort(DrawStateWhite());
  SetClip(2, 2, 12, 12);
  SavedClip* outer = NarrowClip(8, 8, 30, 30);
  FillPort(DrawStateDefault());
  RestoreClip(outer);
  EXPECT_EQ(ClipBox().left, 2);
  EXPECT_EQ(ClipBox().bottom, 12);
  UseDrawState(DrawStateDefault());
  DrawPixel(2, 2);
  DrawPixel(12, 12); // outside
  ReleasePort();
  for (int i = 0; i < 400; ++i) {
    const int x = i % 20, y = i / 20;
    const bool black = (x >= 8 && x < 12 && y >= 8 && y < 12) || (x == 2 && y == 2);
    ASSERT_EQ(At(offscreen, x, y), black ? kBlack : kWhite) << x << ", " << y;
  }
  SetPortOffscreen(offscreen);
  EXPECT_EQ(ClipBox().right, 20); // a Port begins without a clip
  FreeOffscreen(offscreen);
}

TEST(Clip, SavedWhereThereWasNoneComesBackAsALargeRectangle) {
  WindowProgram program;
  SetPortScreen();
  SavedClip* saved = SaveClip();
  HRGN region = ::CreateRectRgn(0, 0, 0, 0);
  EXPECT_EQ(::GetClipRgn(CurrentContext(), region), 0);
  RestoreClip(saved);
  ASSERT_EQ(::GetClipRgn(CurrentContext(), region), 1);
  RECT box;
  ::GetRgnBox(region, &box);
  EXPECT_TRUE(box.left == 0 && box.top == 0 && box.right == 10000 && box.bottom == 10000);
  ::DeleteObject(region);
  ::SelectClipRgn(CurrentContext(), nullptr);
}

TEST(Clip, OfAnotherPortIsDropped) {
  WindowProgram program;
  Offscreen *a = NewOffscreen(20, 20, true), *b = NewOffscreen(20, 20, true);
  SetPortOffscreen(a);
  SetClip(1, 1, 2, 2);
  SavedClip* saved = SaveClip();
  SetPortOffscreen(b);
  RestoreClip(saved);
  EXPECT_EQ(ClipBox().right, 20);
  FreeOffscreen(a);
  FreeOffscreen(b);
}

TEST(WindowPorts, DrawInWindowCoordinatesAndNothingWhileMinimised) {
  WindowProgram program;
  ChildWindow* window = OpenTestWindow(kWindowMayClose);
  SetPortWindow(window);
  EXPECT_EQ(CurrentPort(), &window->port);
  EXPECT_EQ(CurrentContextWindow(), window->window);
  UseDrawState(DrawStateDefault());
  DrawPixel(3, 4);
  Settle();
  const Point place = OnScreen(window, 3, 4);
  EXPECT_EQ(MemoryPixel(place.h, place.v), kBlack);
  EXPECT_EQ(MemoryPixel(place.h + 1, place.v), kWhite);

  ::ShowWindow(window->window, SW_SHOWMINIMIZED);
  Settle();
  ASSERT_TRUE(window->iconic);
  SetPortWindow(window);
  const RECT box = ClipBox();
  EXPECT_TRUE(box.left == box.right || box.top == box.bottom);
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
        FillPort(DrawStateDefault());
      });
  InvalidateChildRect(window, {10, 20, 30, 50});
  Settle();
  EXPECT_TRUE(during.left == 20 && during.top == 10 && during.right == 50 && during.bottom == 30);
  EXPECT_GT(other.right - other.left, 50);
  const Point inside = OnScreen(window, 20, 10), outside = OnScreen(window, 19, 10);
  EXPECT_EQ(MemoryPixel(inside.h, inside.v), kBlack);
  EXPECT_EQ(MemoryPixel(outside.h, outside.v), kWhite);
}

TEST(WindowPorts, ScrollTheirPixels) {
  WindowProgram program;
  ChildWindow* window = OpenTestWindow(kWindowMayClose);
  SetPortWindow(window);
  UseDrawState(DrawStateDefault());
  DrawPixel(30, 30);
  ScrollPortRect({0, 0, 60, 60}, -5, 7);
  ReleasePort();
  Settle();
  const Point to = OnScreen(window, 25, 37);
  EXPECT_EQ(MemoryPixel(to.h, to.v), kBlack);
}

TEST(WindowPorts, AreCopiedFrom) {
  WindowProgram program;
  ChildWindow* window = OpenTestWindow(kWindowMayClose);
  SetPortWindow(window);
  UseDrawState(DrawStateDefault());
  FillRectXY(10, 10, 14, 12);
  Settle();
  Offscreen* copy = NewOffscreen(8, 6, true);
  SetPortOffscreen(copy);
  CopyBits(&window->port, {8, 8, 14, 16}, OffscreenBounds(copy), 1);
  for (int i = 0; i < 48; ++i) {
    const int x = i % 8, y = i / 8;
    const bool black = x >= 2 && x < 6 && y >= 2 && y < 4;
    ASSERT_EQ(PixelIsSet(copy, x, y), black) << x << ", " << y;
  }
  // The main window is read from the screen, from its outer corner on, with what stands over it.
  MainWindow* main = TheMainWindow();
  CopyBits(&main->port, {0, 0, 6, 8}, OffscreenBounds(copy), 1);
  ReleasePort();
  EXPECT_EQ(At(copy, 3, 2), ::GetPixel(ScreenContext(), main->originX + 3, main->originY + 2));
  FreeOffscreen(copy);
}

} // namespace
} // namespace framereel
