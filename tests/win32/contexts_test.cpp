// What contexts, bitmaps and regions tell, and what they refuse.
#include "win32/canvas.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

TEST(Bitmaps, AreRefusedWithoutASizeThatTheyCanHave) {
  ScreenCanvas screen(4, 4, 24);
  const BITMAPINFOHEADER upsideDown = {sizeof upsideDown, 4, -4, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
  EXPECT_EQ(::CreateDIBitmap(screen.context, &upsideDown, 0, nullptr, nullptr, DIB_RGB_COLORS), nullptr);
  for (const int bad : {0, -1, INT32_MIN}) {
    EXPECT_EQ(::CreateBitmap(bad, 1, 1, 1, nullptr), nullptr);
    EXPECT_EQ(::CreateCompatibleBitmap(screen.context, 1, bad), nullptr);
  }
  EXPECT_EQ(::CreateBitmap(INT32_MAX, 1, 1, 1, nullptr), nullptr); // a row of 2^31 bytes
  EXPECT_EQ(::CreateCompatibleBitmap(screen.context, INT32_MAX, 1), nullptr);
  EXPECT_EQ(::LoadBitmapA(nullptr, MAKEINTRESOURCEA(152)), nullptr);
}

TEST(Copies, GiveColoursWhereTheLayoutsDifferAndReadTheScreenOnce) {
  ScreenCanvas screen(2, 1, 24);
  BitmapCanvas deep(screen.context, 2, 1), mono(screen.context, 2, 1, false);
  SetPixelAt(mono.bitmap->surface, 1, 0, 1);
  ASSERT_TRUE(::BitBlt(screen.context, 0, 0, 2, 1, mono.context, 0, 0, SRCCOPY));
  EXPECT_EQ(TheMemoryDisplay().screen, (std::vector<uint32_t>{0, 0xFFFFFF}));

  MemoryDisplaySetMode(2, 1, 16);
  MemoryPixel(0, 0) = 0xF800 | 1; // full red, the least blue
  MemoryPixel(1, 0) = 0x8410;     // half of all
  ASSERT_TRUE(::BitBlt(deep.context, 0, 0, 2, 1, screen.context, 0, 0, SRCCOPY));
  EXPECT_EQ(PictureOf(deep.context).pixels, (std::vector<uint32_t>{0xFF0008, 0x848284}));
  EXPECT_EQ(TheMemoryDisplay().screenReads, 1U);

  MemoryDisplaySetMode(2, 1, 4);
  ASSERT_TRUE(::BitBlt(screen.context, 0, 0, 2, 1, deep.context, 0, 0, SRCCOPY));
  EXPECT_EQ(TheMemoryDisplay().screen, (std::vector<uint32_t>{9, 8}));
}

TEST(Regions, TellTheirBoxAndTheClipTellsItsOwn) {
  ScreenCanvas screen(12, 8, 24);
  RECT box;
  HRGN region = ::CreateRectRgn(8, 9, 2, 1), none = ::CreateRectRgn(4, 4, 4, 9);
  EXPECT_EQ(::GetRgnBox(none, &box), NULLREGION);
  EXPECT_TRUE(box.left == 0 && box.top == 0 && box.right == 0 && box.bottom == 0);
  EXPECT_EQ(::GetClipRgn(screen.context, none), 0);
  ::SelectClipRgn(screen.context, region);
  EXPECT_EQ(::GetClipBox(screen.context, &box), SIMPLEREGION);
  EXPECT_TRUE(box.left == 2 && box.top == 1 && box.right == 8 && box.bottom == 8);
  EXPECT_EQ(::GetClipRgn(screen.context, none), 1);
  EXPECT_EQ(::GetRgnBox(none, &box), SIMPLEREGION);
  EXPECT_EQ(box.bottom, 9);
  const RECT touching = {7, 8, 30, 30}, beside = {8, 5, 30, 30}, empty = {6, 6, 6, 8};
  EXPECT_TRUE(::RectInRegion(region, &touching));
  EXPECT_FALSE(::RectInRegion(region, &beside) || ::RectInRegion(region, &empty));
  ::SelectClipRgn(screen.context, nullptr);
  EXPECT_EQ(::IntersectClipRect(screen.context, 4, 4, 4, 8), NULLREGION); // where there was none
  EXPECT_TRUE(::DeleteObject(region) && ::DeleteObject(none));
}

} // namespace
} // namespace framereel
