// Clips, copies from all kinds of Ports, Offscreens, and what the program knows of the display.
#include "core/rects.h"
#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/shared_contexts.h"
#include "platform/sheet.h"
#include "support/desktop.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_drawing.h"

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

// ---- The display -------------------------------------------------------------------------------------------------

TEST(DisplayCaps, TellDepthColourAndSizeOfEveryDisplayAndOffscreensTakeItsFormat) {
  for (const int depth : {1, 2, 4, 8, 12, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    const Desktop desktop(300 + depth, 200, depth);
    const DisplayCaps& caps = TheDisplayCaps();
    EXPECT_EQ(caps.screenPlanes * caps.screenPlaneBits, depth);
    EXPECT_EQ(caps.screenHasColour, depth > 1);
    EXPECT_TRUE(caps.screenWidth == 300 + depth && caps.screenHeight == 200);
    if (depth == 12) continue; // which cannot be drawn on
    Offscreen* like = NewOffscreen(33, 7, true);
    EXPECT_EQ(like->bitmap->ofScreen, depth > 1);
    EXPECT_FALSE(NewOffscreen(2, 1, false)->bitmap->ofScreen); // left to the desktop's end
    SetPortOffscreen(like);
    FreeOffscreen(like);
    EXPECT_FALSE(CurrentPort() || CurrentContext()); // it was the current Port
    EXPECT_FALSE(NewOffscreen(0, 5, true) || LoadOffscreen(152) || LoadPicture(1));
  }
}

} // namespace
} // namespace framereel
