// Update regions, what contexts may draw on, and what reaches the screen.
#include <gtest/gtest.h>

#include "win32/window_scene.h"

namespace framereel {
namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255), kWhite = RGB(255, 255, 255);

void Fill(HDC context, const RECT& rect, COLORREF colour) {
  HBRUSH brush = ::CreateSolidBrush(colour);
  ::FillRect(context, &rect, brush);
  ::DeleteObject(brush);
}

void FillWindow(HWND window, const RECT& rect, COLORREF colour) {
  HDC context = ::GetDC(window);
  Fill(context, rect, colour);
  EXPECT_EQ(::ReleaseDC(window, context), 1);
}

COLORREF At(HWND window, int x, int y) {
  ::Sleep(0);
  const POINT point = OnScreen(window, x, y);
  return ColourAt(point.x, point.y);
}

RECT UpdateBox(HWND window) {
  HRGN region = ::CreateRectRgn(0, 0, 0, 0);
  ::GetUpdateRgn(window, region, FALSE);
  RECT box;
  ::GetRgnBox(region, &box);
  ::DeleteObject(region);
  return box;
}

std::string Text(const RECT& r) {
  return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
         std::to_string(r.bottom);
}

TEST(WindowPainting, ErasesWithTheClassesColourAndPaintsParentsFirst) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  EXPECT_EQ(At(main, 0, 0), kWhite);
  PaintIn(main, kRed);
  PaintIn(child, kGreen);
  ::InvalidateRect(child, nullptr, TRUE);
  ::InvalidateRect(main, nullptr, TRUE);
  Drain();
  EXPECT_EQ(Joined(TakeLog({"PAINT", "ERASEBKGND"})), "main PAINT; main ERASEBKGND; child PAINT; child ERASEBKGND");
  EXPECT_EQ(At(main, 9, 10), kRed);
  EXPECT_EQ(At(main, 10, 10), kGreen);
  ::InvalidateRect(main, nullptr, FALSE);
  Drain();
  EXPECT_EQ(Joined(TakeLog({"PAINT", "ERASEBKGND"})), "main PAINT");
}

TEST(WindowPainting, CutsThePaintContextToWhatIsAskedFor) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  PaintIn(main, kRed);
  const RECT part = {10, 20, 30, 40}, outside = {-50, 190, 20, 1000};
  ::InvalidateRect(main, &part, FALSE);
  ::InvalidateRect(main, &outside, FALSE);
  EXPECT_EQ(Text(UpdateBox(main)), "0,20,30,200");
  ::UpdateWindow(main);
  EXPECT_EQ(Text(UpdateBox(main)), "0,0,0,0");
  EXPECT_EQ(At(main, 10, 20), kRed);
  EXPECT_EQ(At(main, 30, 39), kWhite);
  EXPECT_EQ(At(main, 19, 199), kRed);
  EXPECT_EQ(At(main, 9, 100), kWhite);
  TakeLog();
  ::UpdateWindow(main);
  EXPECT_EQ(Joined(TakeLog()), "");
}

TEST(WindowPainting, AsksNothingOfAWindowThatIsNotShown) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  ::ShowWindow(child, SW_HIDE);
  Drain();
  TakeLog();
  ::InvalidateRect(child, nullptr, TRUE);
  ::UpdateWindow(child);
  Drain();
  EXPECT_EQ(Joined(TakeLog()), "");
  ::ShowWindow(child, SW_SHOW);
  Drain();
  EXPECT_EQ(Joined(TakeLog({"PAINT"})), "child PAINT");
}

TEST(WindowContext, IsCutByParentsByChildrenAndBySiblingsAsTheStylesSay) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  HWND low = ShowChild("low", {150, 150, 300, 300}, main);
  HWND high = ShowChild("high", {160, 160, 300, 300}, main, WS_CHILD);
  const RECT all = {-100, -100, 1000, 1000};
  FillWindow(main, all, kRed);
  EXPECT_EQ(At(main, 199, 149), kRed);
  EXPECT_EQ(At(main, 150, 150), kWhite); // spared as a child
  EXPECT_EQ(ColourAt(50 + 3, 50 + 21), RGB(192, 192, 192));
  FillWindow(low, all, kGreen);
  EXPECT_EQ(At(main, 150, 150), kGreen);
  EXPECT_EQ(At(main, 160, 160), kWhite); // spared as a sibling above
  FillWindow(high, all, kBlue);
  EXPECT_EQ(At(main, 160, 160), kBlue);
  EXPECT_EQ(ColourAt(50 + 203, 240), RGB(192, 192, 192)); // the parent's border
}

TEST(WindowContext, OfAParentThatDoesNotSpareChildrenDrawsOverThemAndAsksThemToPaint) {
  WindowScene scene;
  HWND main = MakeWindow("main", WS_CAPTION, {50, 50, 256, 275});
  ::ShowWindow(main, SW_SHOWNORMAL);
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  FillWindow(main, {0, 0, 300, 300}, kRed);
  EXPECT_EQ(At(child, 5, 5), kRed);
  ::InvalidateRect(main, nullptr, TRUE);
  Drain();
  EXPECT_EQ(Joined(TakeLog({"PAINT"})), "main PAINT; child PAINT");
}

TEST(WindowContext, FollowsItsWindow) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  HDC context = ::GetDC(child);
  ::MoveWindow(child, 100, 100, 50, 50, TRUE);
  Fill(context, {0, 0, 5, 5}, kRed);
  EXPECT_EQ(At(main, 100, 100), kRed);
  ::MoveWindow(main, 0, 0, 206, 225, TRUE);
  Drain();
  Fill(context, {5, 5, 10, 10}, kGreen);
  EXPECT_EQ(At(main, 105, 105), kGreen);
  EXPECT_EQ(At(main, 100, 100), kRed);
  ::DestroyWindow(child);
  Fill(context, {0, 0, 50, 50}, kBlue);
  Drain();
  EXPECT_EQ(At(main, 100, 100), kWhite);
  EXPECT_EQ(::ReleaseDC(child, context), 0);
}

TEST(WindowContext, OfAClassOfItsOwnKeepsItsStateAndOthersBeginAnew) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  HWND own = MakeWindow("own", kChildStyle | WS_VISIBLE, {0, 0, 50, 50}, main, "LogOwn");
  for (HWND window : {main, own}) {
    HDC context = ::GetDC(window);
    EXPECT_EQ(::SetTextColor(context, kRed), RGB(0, 0, 0));
    ::ReleaseDC(window, context);
    context = ::GetDC(window);
    EXPECT_EQ(::SetTextColor(context, kBlue), window == own ? kRed : RGB(0, 0, 0));
    ::ReleaseDC(window, context);
  }
}

TEST(WindowContext, OfACoverDrawsOnTheScreenOverEverything) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  MemoryOpenWindow("other", {300, 100, 400, 200}, MemoryPixelOf(1, 2, 3));
  HWND cover = MakeWindow("cover", WS_POPUP | WS_BORDER, {-2000, -2000, 2000, 2000}, main, "LogBare", WS_EX_TOPMOST);
  ::ShowWindow(cover, SW_SHOWNORMAL);
  Drain();
  EXPECT_EQ(ColourAt(310, 110), RGB(1, 2, 3));
  FillWindow(cover, {1999 + 310, 1999 + 110, 1999 + 320, 1999 + 120}, kRed);
  EXPECT_EQ(ColourAt(310, 110), kRed);
  EXPECT_EQ(ColourAt(319, 119), kRed);
  EXPECT_EQ(ColourAt(320, 110), RGB(1, 2, 3));
  ::DestroyWindow(cover);
  Drain();
  EXPECT_EQ(At(main, 0, 0), kWhite);
}

TEST(WindowRepair, TakesPixelsAlongAndAsksOnlyForWhatIsNew) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  FillWindow(child, {0, 0, 50, 50}, kRed);
  ::MoveWindow(child, 20, 25, 60, 50, TRUE);
  EXPECT_EQ(Text(UpdateBox(child)), "50,0,60,50");
  EXPECT_EQ(At(main, 20, 25), kRed);
  EXPECT_EQ(At(main, 69, 74), kRed);
  Drain();
  EXPECT_EQ(At(main, 10, 10), kWhite);
  EXPECT_EQ(At(main, 19, 59), kWhite);
  FillWindow(main, {0, 100, 200, 200}, kGreen);
  ::MoveWindow(main, 50, 50, 226, 225, TRUE);
  EXPECT_EQ(Text(UpdateBox(main)), "200,0,220,200");
  EXPECT_EQ(At(main, 0, 150), kGreen);
}

TEST(WindowRepair, PaintsAWindowAnewWhoseClassWantsIt) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  HWND child = MakeWindow("anew", kChildStyle | WS_VISIBLE, {0, 0, 50, 50}, main, "LogAnew");
  Drain();
  ::MoveWindow(child, 0, 0, 50, 40, TRUE);
  EXPECT_EQ(Text(UpdateBox(child)), "0,0,50,40");
}

TEST(WindowRepair, OfAChildThatIsHiddenRaisedOrLoweredPaintsWhatItUncovers) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  HWND low = ShowChild("low", {0, 0, 50, 50}, main);
  HWND high = ShowChild("high", {25, 25, 75, 75}, main);
  PaintIn(low, kRed);
  PaintIn(high, kGreen);
  ::InvalidateRect(low, nullptr, TRUE);
  ::InvalidateRect(high, nullptr, TRUE);
  Drain();
  EXPECT_EQ(At(main, 30, 30), kGreen);
  ::BringWindowToTop(low);
  EXPECT_EQ(Text(UpdateBox(low)), "25,25,50,50");
  Drain();
  EXPECT_EQ(At(main, 30, 30), kRed);
  ::ShowWindow(low, SW_HIDE);
  EXPECT_EQ(Text(UpdateBox(high)), "0,0,25,25");
  Drain();
  EXPECT_EQ(At(main, 30, 30), kGreen);
  EXPECT_EQ(At(main, 20, 20), kWhite);
}

TEST(WindowScrolling, MovesPixelsAndWhatIsYetToBePaintedAndAsksForTheRest) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  FillWindow(main, {10, 10, 20, 20}, kRed);
  const RECT stale = {40, 40, 45, 45}, area = {0, 0, 100, 100};
  ::InvalidateRect(main, &stale, FALSE);
  EXPECT_TRUE(::ScrollWindow(main, 5, -7, &area, &area));
  EXPECT_EQ(At(main, 15, 3), kRed);
  EXPECT_EQ(At(main, 24, 12), kRed);
  EXPECT_EQ(At(main, 14, 3), kWhite);
  HRGN region = ::CreateRectRgn(0, 0, 0, 0);
  ::GetUpdateRgn(main, region, FALSE);
  const RECT moved = {45, 33, 50, 38}, left = {0, 0, 5, 10}, bottom = {50, 93, 60, 100}, none = {60, 50, 90, 90};
  EXPECT_TRUE(::RectInRegion(region, &moved));
  EXPECT_TRUE(::RectInRegion(region, &left));
  EXPECT_TRUE(::RectInRegion(region, &bottom));
  EXPECT_FALSE(::RectInRegion(region, &none));
  ::DeleteObject(region);
}

TEST(WindowPresenting, BringsOnlyWhatWasDrawn) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  MemoryDesktop& desktop = TheMemoryDisplay().desktop;
  const uint64_t before = desktop.presentedPixels;
  FillWindow(main, {0, 0, 10, 10}, kRed);
  FillWindow(main, {100, 100, 110, 110}, kRed);
  EXPECT_EQ(desktop.presentedPixels, before);
  MSG message;
  ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
  EXPECT_EQ(desktop.presentedPixels, before + 200);
  for (int i = 0; i < 40; ++i) FillWindow(main, {5 * i, i, 5 * i + 2, i + 2}, kGreen);
  ::Sleep(0);
  EXPECT_LT(desktop.presentedPixels, before + 200 + 200 * 42);
  for (int i = 0; i < 40; ++i) EXPECT_EQ(At(main, 5 * i + 1, i + 1), kGreen);
}

TEST(WindowPresenting, ComesBeforeTheScreenItselfIsReadOrDrawnOn) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  HDC screen = ::CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  const POINT point = OnScreen(main, 0, 0);
  FillWindow(main, {0, 0, 10, 10}, kRed);
  EXPECT_EQ(::GetPixel(screen, point.x, point.y), kRed);
  FillWindow(main, {0, 0, 10, 10}, kGreen);
  ::SetROP2(screen, R2_NOTXORPEN);
  ::SelectObject(screen, ::GetStockObject(BLACK_BRUSH));
  ::Rectangle(screen, point.x, point.y, point.x + 5, point.y + 5);
  ::Sleep(0);
  EXPECT_EQ(ColourAt(point.x, point.y), RGB(255, 0, 255)); // the present did not come after it
  FillWindow(main, {0, 0, 10, 10}, kBlue);
  HDC memory = ::CreateCompatibleDC(screen);
  HBITMAP bitmap = ::CreateCompatibleBitmap(screen, 2, 2);
  HGDIOBJ before = ::SelectObject(memory, bitmap);
  ::BitBlt(memory, 0, 0, 2, 2, screen, point.x, point.y, SRCCOPY);
  EXPECT_EQ(::GetPixel(memory, 1, 1), kBlue);
  ::SelectObject(memory, before);
  ::DeleteObject(bitmap);
  ::DeleteDC(memory);
  ::DeleteDC(screen);
}

TEST(WindowPresenting, DoesNotWaitForEverWhileMessagesKeepComing) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  FillWindow(main, {0, 0, 10, 10}, kRed);
  MemoryTypeKey('A');
  MemoryTypeKey('B');
  MSG message;
  ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);
  const POINT point = OnScreen(main, 0, 0);
  EXPECT_EQ(ColourAt(point.x, point.y), kWhite);
  DisplaySleep(30);
  ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);
  EXPECT_EQ(ColourAt(point.x, point.y), kRed);
}

TEST(WindowPresenting, RestoresWhatAnotherProgramUncovers) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  FillWindow(main, {0, 0, 200, 200}, kRed);
  Drain();
  DisplayWindow* other = MemoryOpenWindow("other", {100, 100, 150, 150}, 0);
  EXPECT_EQ(ColourAt(120, 120), RGB(0, 0, 0));
  FillWindow(main, {0, 0, 200, 200}, kGreen);
  ::Sleep(0);
  EXPECT_EQ(ColourAt(120, 120), RGB(0, 0, 0));
  MemoryCloseWindow(other);
  Drain();
  EXPECT_EQ(ColourAt(120, 120), kGreen);
  EXPECT_EQ(Joined(TakeLog({"PAINT"})), ""); // its pixels are still there
}

TEST(WindowPresenting, RefreshingTheScreenPaintsEverybodysWindowsAndClearsStrayPixels) {
  WindowScene scene;
  HWND main = ShowFrame("main", {50, 50, 256, 275});
  ShowChild("child", {10, 10, 60, 60}, main);
  DisplayWindow* other = MemoryOpenWindow("other", {300, 100, 400, 200}, 77);
  const uint8_t all[8] = {255, 255, 255, 255, 255, 255, 255, 255};
  DisplayInvertScreen({0, 0, 640, 480}, all);
  const uint32_t paints = other->paints;
  ::InvalidateRect(nullptr, nullptr, TRUE);
  Drain();
  EXPECT_EQ(other->paints, paints + 1);
  EXPECT_EQ(Joined(TakeLog({"PAINT"})), "main PAINT; child PAINT");
  EXPECT_EQ(At(main, 0, 0), kWhite);
  EXPECT_EQ(MemoryPixel(310, 110), 77U);
  EXPECT_EQ(MemoryPixel(500, 400), 0U);
}

TEST(WindowPresenting, StandsInEveryDepthAndThroughAChangeOfIt) {
  for (const int32_t depth : {1, 2, 4, 8, 16, 24, 32}) {
    WindowScene scene(640, 480, depth);
    HWND main = ShowFrame("main", {50, 50, 256, 275});
    EXPECT_EQ(At(main, 0, 0), kWhite) << depth;
    MemoryDisplaySetMode(800, 600, depth == 24 ? 8 : 24);
    Drain();
    EXPECT_EQ(At(main, 0, 0), kWhite) << depth;
    EXPECT_EQ(Joined(TakeLog({"DISPLAYCHANGE", "WININICHANGE"})),
              depth == 24 ? "main DISPLAYCHANGE 8 800x600; main WININICHANGE"
                          : "main DISPLAYCHANGE 24 800x600; main WININICHANGE")
        << depth;
  }
}

} // namespace
} // namespace framereel
