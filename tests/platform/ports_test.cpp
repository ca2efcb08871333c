// The clip, the Ports of windows, and copies from every kind of Port.
#include "platform/drawing/ports.h"

#include "platform/bitmaps/copy_bits.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/sheet.h"
#include "support/dice.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/rectangles.h"

namespace framereel {
namespace {

PixelRect ClipBox() {
  RECT box = {};
  ::GetClipBox(CurrentContext(), &box);
  return {box.left, box.top, box.right, box.bottom};
}

// Beside a plain rectangle, on two Offscreens that take turns.
TEST(Clip, IsNarrowedSavedAndRestoredWithinItsPortAndGoesWithIt) {
  const Sheet sheet(20, 20);
  Offscreen* const offscreens[] = {sheet.offscreen, NewOffscreen(20, 20, true)};
  const PixelRect whole = {0, 0, 20, 20};
  PixelRect clip = whole;
  struct Saved {
    SavedClip handle;
    PixelRect clip;
  };
  std::vector<Saved> saved;
  Dice dice(1);
  SetPortOffscreen(sheet.offscreen);
  for (int step = 0; step < 2000; ++step) {
    const int left = dice.Below(20), top = dice.Below(20);
    const PixelRect any = {left, top, left + 1 + dice.Below(30), top + 1 + dice.Below(30)};
    const int operation = dice.Below(6);
    if (operation == 0) SetClip(any.left, any.top, any.right, any.bottom), clip = Intersect(any, whole);
    if (operation == 1) saved.push_back({SaveClip(), clip});
    if (operation == 2) {
      saved.push_back({NarrowClip(any.left, any.top, any.right, any.bottom), clip});
      clip = Intersect(any, clip);
    }
    if (operation >= 3 && !saved.empty()) {
      if (saved.back().handle.port == CurrentPort()) clip = saved.back().clip;
      RestoreClip(saved.back().handle);
      saved.pop_back();
    }
    if (dice.OneIn(20)) SetPortOffscreen(offscreens[dice.Below(2)]), clip = whole; // a Port begins without one
    const PixelRect box = ClipBox();
    ASSERT_EQ(IsEmpty(box), IsEmpty(clip)) << "step " << step;
    if (IsEmpty(clip)) continue;
    ASSERT_TRUE(box.left == clip.left && box.top == clip.top && SameSize(box, clip)) << "step " << step;
  }
  for (const Saved& one : saved) DropSavedClip(one.handle);
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
  DrawPixel(3, 4);
  DrawPixel(30, 30);
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

// Of each kind of Port, of the current one among them, from a place that is not its corner.
TEST(CopyBits, TakesThePixelsOfEveryKindOfPort) {
  for (const int depth : {1, 2, 4, 8, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    const Sheet sheet(8, 4, depth);
    ChildWindow* window = OpenTestWindow(kWindowMayClose);
    Offscreen* other = NewOffscreen(20, 20, true);
    MoveMainWindow(nullptr, 20, 60);
    Settle();
    const auto drawMark = [](int x, int y) {
      UseDrawState(DrawStateWhite());
      FillRectXY(0, 0, 16, 16);
      UseDrawState(DrawStateDefault());
      FillRectXY(x, y, x + 3, y + 1);
      DrawPixel(x, y + 1);
    };
    const auto expectCopy = [&](const Port* from, int x, int y) {
      SetPortOffscreen(sheet.offscreen);
      if (from != CurrentPort()) sheet.Clear();
      CopyBits(from, {int16_t(y - 1), int16_t(x - 2), int16_t(y + 3), int16_t(x + 6)}, {0, 0, 4, 8}, 1);
      EXPECT_EQ(sheet.Picture(), Rows({"........", "..###...", "..#.....", "........"})) << from->kind;
    };
    SetPortScreen();
    drawMark(4, 3);
    expectCopy(ScreenPort(), 4, 3);
    SetPortWindow(window);
    drawMark(5, 2);
    expectCopy(&window->port, 5, 2);
    SetPortMain(nullptr); // which is read from the screen, from its outer corner on, with what stands over it
    drawMark(6, 6);
    const WindowGeometry& main = TheMainWindow()->geometry;
    expectCopy(&TheMainWindow()->port, main.insetLeft + 6, main.insetTop + 6);
    SetPortOffscreen(other);
    drawMark(7, 8);
    expectCopy(&other->port, 7, 8);
    SetPortScreen(); // and back
    CopyBits(&other->port, {7, 5, 11, 13}, {0, 0, 4, 8}, 1);
    expectCopy(ScreenPort(), 2, 1);
    SetPortOffscreen(sheet.offscreen);
    sheet.Clear();
    UseDrawState(DrawStateDefault());
    FillRectXY(5, 0, 8, 1);
    DrawPixel(5, 1);
    CopyBits(&sheet.offscreen->port, {0, 5, 2, 8}, {1, 2, 3, 5}, 1);
    EXPECT_EQ(sheet.Picture(), Rows({".....###", "..####..", "..#.....", "........"}));
  }
}

} // namespace
} // namespace framereel
