// Ports and their clips, copies from all of them, Offscreens, DibBuffers, and what the program knows of the display.
#include <algorithm>

#include "core/rects.h"
#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/dib_buffers.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/sheet.h"
#include "support/desktop.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

PixelRect ClipBox() {
  RECT box = {};
  ::GetClipBox(CurrentContext(), &box);
  return {box.left, box.top, box.right, box.bottom};
}

TEST(Clip, IsNarrowedWithinItsPortAndComesBackThereAlone) {
  const Sheet sheet(20, 20);
  SetClip(5, 5, 30, 15);
  const SavedClip before = NarrowClip(0, 10, 8, 40), narrow = SaveClip();
  EXPECT_TRUE(Same(ClipBox(), {5, 10, 8, 15}));
  SetPortOffscreen(NewOffscreen(20, 20, true)); // a Port begins without one
  SetClip(1, 2, 3, 4);
  RestoreClip(before);
  EXPECT_TRUE(Same(ClipBox(), {1, 2, 3, 4}));
  SetPortOffscreen(sheet.offscreen);
  RestoreClip(narrow);
  EXPECT_TRUE(Same(ClipBox(), {5, 10, 8, 15}));
}

TEST(Ports, OfWindowsDrawInWindowCoordinatesAndNothingWhileMinimised) {
  const WindowProgram program;
  ChildWindow* window = OpenTestWindow(kWindowMayClose);
  const auto at = [window](int16_t x, int16_t y) {
    const Point p = OnScreen(window, x, y);
    return ::GetPixel(ScreenContext(), p.h, p.v);
  };
  SetPortWindow(window);
  UseDrawState(DrawStateDefault());
  DrawHLine(3, 4, 3);
  DrawHLine(30, 30, 30);
  ScrollPortRect({20, 20, 60, 60}, -5, 7);
  EXPECT_TRUE(at(3, 4) == 0 && at(25, 37) == 0 && at(4, 4) == RGB(255, 255, 255));
  ::ShowWindow(window->window, SW_SHOWMINIMIZED);
  Settle();
  ASSERT_TRUE(window->iconic);
  SetPortWindow(window);
  EXPECT_TRUE(IsEmpty(ClipBox()));
  SetClip(0, 0, 50, 50); // no way round it
  EXPECT_TRUE(IsEmpty(ClipBox()));
}

// Of each kind of Port, from a place that is not its corner. The main window is read from the screen, from its outer
// corner on, with what stands over it.
TEST(CopyBits, TakesThePixelsOfEveryKindOfPort) {
  static Offscreen* other;
  static ChildWindow* window;
  const WindowGeometry& main = TheMainWindow()->geometry;
  for (const int depth : {1, 2, 4, 8, 16, 24, 32}) {
    const Sheet sheet(8, 4, depth);
    window = OpenTestWindow(kWindowMayClose);
    other = NewOffscreen(20, 20, true);
    MoveMainWindow(nullptr, 20, 60);
    Settle();
    const struct {
      void (*select)();
      const Port* port;
      int16_t left, top; // of what is drawn into, in what is read
    } kinds[] = {{SetPortScreen, ScreenPort(), 0, 0},
                 {[] { SetPortWindow(window); }, &window->port, 0, 0},
                 {[] { SetPortMain(nullptr); }, &TheMainWindow()->port, main.insetLeft, main.insetTop},
                 {[] { SetPortOffscreen(other); }, &other->port, 0, 0}};
    for (const auto& kind : kinds) {
      kind.select();
      UseDrawState(DrawStateFill());
      SetForeColour(kWhite);
      FillRectXY(0, 0, 16, 16);
      UseDrawState(DrawStateDefault());
      FillRectXY(5, 4, 8, 5);
      DrawHLine(5, 5, 5);
      CopyBits(kind.port, RectOf(kind.left + 5, kind.top + 4, 3, 2), RectOf(9, 8, 3, 2), 1); // within the current one
      SetPortOffscreen(sheet.offscreen);
      sheet.Clear();
      for (const int from : {3, 7}) {
        CopyBits(kind.port, RectOf(kind.left + from, kind.top + from, 8, 4), RectOf(0, 0, 8, 4), 1);
        EXPECT_EQ(sheet.Picture(), Rows({"........", "..###...", "..#.....", "........"})) << depth << " " << from;
      }
    }
  }
}

// ---- Offscreens --------------------------------------------------------------------------------------------------

TEST(DibBuffers, TakeAnyRowsOfAnOffscreenOfTheirWidthFromTheBottomUpAndRefuseAllOthers) {
  constexpr int16_t kWidth = 7, kHeight = 6;
  constexpr uint8_t kUntouched = 0xE7;
  const Desktop desktop(kWidth + 1, kHeight, 24);
  for (int32_t y = 0; y < kHeight; ++y) MemoryFill({0, y, kWidth + 1, y + 1}, MemoryPixelOf(0, 0, uint8_t(y)));
  DibBuffer* buffer = NewDibBuffer24(kWidth, kHeight);
  EXPECT_EQ(buffer->rowSize, 24u);
  EXPECT_EQ(std::count(buffer->bits, buffer->bits + 24 * kHeight, 0), 24 * kHeight);
  for (const int16_t width : {kWidth - 1, kWidth + 1, kWidth + 0}) {
    Offscreen* offscreen = NewOffscreen(width, kHeight, true);
    SetPortOffscreen(offscreen);
    CopyBits(ScreenPort(), OffscreenBounds(offscreen), OffscreenBounds(offscreen), 1);
    for (int i = 0; i < 9 * 9 * 9; ++i) {
      const int to = i % 9 - 1, from = i / 9 % 9 - 1, rows = i / 81 - 1;
      std::fill(buffer->bits, buffer->bits + 24 * kHeight, kUntouched);
      ReadDibBuffer24(buffer, int16_t(to), offscreen, int16_t(from), int16_t(rows));
      const bool fits = width == kWidth && to >= 0 && from >= 0 && to + rows <= kHeight && from + rows <= kHeight;
      for (int row = 0; row < kHeight; ++row) {
        const bool read = fits && row >= to && row < to + rows;
        ASSERT_EQ(buffer->bits[24 * row], read ? from + rows - 1 - (row - to) : kUntouched)
            << rows << " rows from " << from << " to " << to;
      }
    }
    EXPECT_EQ(CurrentPort(), width == kWidth ? nullptr : &offscreen->port); // reading has let go of it
  }
  FreeDibBuffer(buffer);
}

// ---- The display -------------------------------------------------------------------------------------------------

TEST(DisplayCaps, TellDepthColourAndSizeOfEveryDisplayAndOffscreensTakeItsFormat) {
  for (const int depth : {1, 2, 4, 8, 12, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    const Desktop desktop(300 + depth, 200, depth);
    const DisplayCaps& caps = TheDisplayCaps();
    EXPECT_EQ(caps.screenDepth, depth);
    EXPECT_EQ(caps.screenPlanes * caps.screenPlaneBits, depth);
    EXPECT_EQ(caps.screenHasColour, depth > 1);
    EXPECT_TRUE(caps.screenWidth == 300 + depth && caps.screenHeight == 200);
    if (depth == 12) continue; // which cannot be drawn on
    Offscreen* like = NewOffscreen(33, 7, true);
    EXPECT_EQ(like->bitmap->ofScreen, depth > 1);
    EXPECT_TRUE(OffscreenBounds(like).bottom == 7 && OffscreenBounds(like).right == 33);
    EXPECT_FALSE(NewOffscreen(2, 1, false)->bitmap->ofScreen); // left to the desktop's end
    SetPortOffscreen(like);
    FreeOffscreen(like);
    EXPECT_FALSE(CurrentPort() || CurrentContext()); // it was the current Port
    EXPECT_FALSE(NewOffscreen(0, 5, true) || LoadOffscreen(152) || LoadPicture(1));
  }
}

} // namespace
} // namespace framereel
