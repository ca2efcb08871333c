// What a context holds and tells.
#include "win32/canvas.h"

namespace framereel {
namespace {

TEST(SelectObject, PutsABitmapIntoOneContextOnly) {
  ScreenCanvas screen(4, 4, 8);
  BitmapCanvas canvas(screen.context, 2, 2);
  const HDC other = ::CreateCompatibleDC(screen.context);
  EXPECT_EQ(::SelectObject(other, canvas.bitmap), nullptr);
  EXPECT_FALSE(::DeleteObject(canvas.bitmap));
  EXPECT_EQ(::SelectObject(canvas.context, canvas.before), canvas.bitmap);
  EXPECT_EQ(::SelectObject(screen.context, canvas.bitmap), nullptr);
  EXPECT_NE(::SelectObject(other, canvas.bitmap), nullptr);
  // A context that goes gives its bitmap free.
  EXPECT_TRUE(::DeleteDC(other));
  EXPECT_NE(::SelectObject(canvas.context, canvas.bitmap), nullptr);
  EXPECT_EQ(::SelectObject(canvas.context, canvas.bitmap), canvas.bitmap);
}

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
  EXPECT_FALSE(::DeleteObject(nullptr));
  EXPECT_FALSE(::DeleteDC(nullptr));
}

struct FactsCase {
  int depth, colours, rasterCaps, paletteSize;
  UINT entries;
};

TEST(Facts, AreThoseOfTheScreenAtEveryDepth) {
  const FactsCase cases[] = {{1, 2, 0, 0, 2},   {2, 4, 0, 0, 4},   {4, 16, 0, 0, 16}, {8, 256, RC_PALETTE, 256, 256},
                             {16, -1, 0, 0, 0}, {24, -1, 0, 0, 0}, {32, -1, 0, 0, 0}};
  for (const FactsCase& c : cases) {
    SCOPED_TRACE(c.depth);
    ScreenCanvas screen(4, 4, c.depth);
    EXPECT_EQ(::GetDeviceCaps(screen.context, NUMCOLORS), c.colours);
    EXPECT_EQ(::GetDeviceCaps(screen.context, RASTERCAPS), c.rasterCaps);
    EXPECT_EQ(::GetDeviceCaps(screen.context, SIZEPALETTE), c.paletteSize);
    EXPECT_EQ(::GetDeviceCaps(screen.context, NUMRESERVED), c.paletteSize);
    PALETTEENTRY last[2] = {{1, 2, 3, 4}, {1, 2, 3, 4}};
    EXPECT_EQ(::GetSystemPaletteEntries(screen.context, c.entries - 1, 2, last), c.entries);
    EXPECT_EQ(last[0].peGreen, c.entries ? 255 : 2); // white comes last, and nothing behind it
    EXPECT_EQ(last[1].peGreen, 2);
    EXPECT_EQ(::GetNearestColor(screen.context, RGB(250, 251, 252)), c.depth >= 24   ? RGB(250, 251, 252)
                                                                     : c.depth == 16 ? RGB(247, 251, 255)
                                                                                     : RGB(255, 255, 255));
  }
}

} // namespace
} // namespace framereel
