// What contexts, objects, regions and the pointer tell, and what they refuse.
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

TEST(DeleteObject, LeavesWhatAContextHoldsAndStockObjects) {
  ScreenCanvas screen(4, 4, 24);
  LOGFONTA what = {};
  for (const HGDIOBJ object : {HGDIOBJ(::CreatePen(PS_SOLID, 1, 0)), HGDIOBJ(::CreateFontIndirectA(&what))}) {
    const HGDIOBJ before = ::SelectObject(screen.context, object);
    EXPECT_FALSE(::DeleteObject(object));
    EXPECT_EQ(::SelectObject(screen.context, before), object);
    EXPECT_TRUE(::DeleteObject(object));
  }
  EXPECT_FALSE(::DeleteObject(::GetStockObject(BLACK_BRUSH)));
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
  EXPECT_EQ(::LoadBitmapA(nullptr, MAKEINTRESOURCEA(152)), nullptr);
}

TEST(Contexts, DoNothingWithoutObjectsASurfaceOrADisplay) {
  ScreenCanvas screen(4, 4, 24);
  BitmapCanvas bitmap(screen.context, 4, 4);
  const HDC lost = ::CreateCompatibleDC(screen.context);
  const RECT all = {0, 0, 4, 4};
  const POINT points[] = {{0, 0}, {3, 3}};
  const auto copies = [](HDC to, HDC from, int width) { return ::BitBlt(to, 0, 0, width, 4, from, 0, 0, SRCPAINT); };
  EXPECT_FALSE(::Polyline(nullptr, points, 2) || ::Polygon(nullptr, points, 2) || ::Rectangle(nullptr, 0, 0, 4, 4));
  EXPECT_FALSE(::FillRect(nullptr, &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH))));
  EXPECT_FALSE(::FillRect(screen.context, &all, nullptr) || ::TextOutA(nullptr, 0, 0, "x", 1));
  EXPECT_FALSE(copies(nullptr, screen.context, 4) || copies(lost, nullptr, 4) || copies(lost, screen.context, 0));
  EXPECT_FALSE(::SelectObject(nullptr, ::GetStockObject(BLACK_PEN)) || ::SelectObject(screen.context, nullptr));
  EXPECT_EQ(::SetROP2(screen.context, 6), 0);                                                  // no such mode here
  EXPECT_FALSE(::StretchBlt(screen.context, 0, 0, 9, 9, bitmap.context, 1, 0, 4, 4, SRCCOPY)); // over its edge
  SetPixelAt(bitmap.bitmap->surface, 1, 1, 77);
  TheMemoryDisplay().lost = true;
  copies(bitmap.context, screen.context, 4);
  copies(screen.context, bitmap.context, 4);
  EXPECT_EQ(::GetPixel(screen.context, 0, 0), CLR_INVALID);
  EXPECT_EQ(PixelAt(bitmap.bitmap->surface, 1, 1), 77U);
  EXPECT_EQ(TheMemoryDisplay().screen, std::vector<uint32_t>(16, 0));
  ::DeleteDC(lost);
  const HDC without = NewContext(); // of a window that has gone
  RECT box;
  EXPECT_TRUE(::FillRect(without, &all, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH))));
  EXPECT_TRUE(::TextOutA(without, 0, 0, "gone", 4));
  EXPECT_EQ(::GetPixel(without, 0, 0), CLR_INVALID);
  EXPECT_EQ(::GetClipBox(without, &box), NULLREGION);
  FreeContext(without);
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

TEST(Facts, AreThoseOfTheScreenAtEveryDepth) {
  const struct {
    int depth, colours, rasterCaps, paletteSize;
    UINT entries;
  } cases[] = {{1, 2, 0, 0, 2},   {2, 4, 0, 0, 4},   {4, 16, 0, 0, 16}, {8, 256, RC_PALETTE, 256, 256},
               {16, -1, 0, 0, 0}, {24, -1, 0, 0, 0}, {32, -1, 0, 0, 0}};
  for (const auto& c : cases) {
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

TEST(Pointer, TellsItsHotSpotAndPlaceAndThatItHasNoPicture) {
  MemoryDisplayReset(4, 4, 24);
  EXPECT_EQ(::GetCursor(), nullptr);
  ICONINFO info;
  EXPECT_FALSE(::GetIconInfo(nullptr, &info));
  MemoryDisplay& display = TheMemoryDisplay();
  display.hasPointer = true;
  display.pointerWidth = 2, display.pointerHeight = 3, display.hotX = 1, display.hotY = 2;
  display.pointerPixels.resize(6);
  ASSERT_TRUE(::GetIconInfo(::GetCursor(), &info));
  EXPECT_EQ(info.xHotspot, 1U);
  EXPECT_EQ(info.yHotspot, 2U);
  EXPECT_EQ(info.hbmMask, nullptr);
  EXPECT_EQ(info.hbmColor, nullptr);
  DisplayMovePointer(-3, 700);
  POINT place;
  ASSERT_TRUE(::GetCursorPos(&place));
  EXPECT_EQ(place.x, 0); // it stays on the screen
  EXPECT_EQ(place.y, 3);
  display.lost = true;
  EXPECT_EQ(::GetCursor(), nullptr);
  EXPECT_FALSE(::GetCursorPos(&place));
}

} // namespace
} // namespace framereel
