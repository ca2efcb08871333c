// Update regions, what contexts may draw on, and what reaches the screen.
#include <sstream>

#include "win32/window_scene.h"

namespace framereel {
namespace {

using WindowPainting = OneWindow;
using WindowContext = OneWindow;
using WindowRepair = OneWindow;
using WindowScrolling = OneWindow;
using WindowPresenting = OneWindow;

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

// The rectangle round what the window is still to paint.
std::string UpdateBox(HWND window) {
  HRGN region = ::CreateRectRgn(0, 0, 0, 0);
  ::GetUpdateRgn(window, region, FALSE);
  RECT r;
  ::GetRgnBox(region, &r);
  ::DeleteObject(region);
  std::ostringstream text;
  text << r.left << ',' << r.top << ',' << r.right << ',' << r.bottom;
  return text.str();
}

TEST_F(WindowPainting, ErasesWithTheClassesColourAndPaintsParentsFirst) {
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  EXPECT_EQ(At(main, 0, 0), kWhite);
  PaintIn(main, kRed);
  PaintIn(child, kGreen);
  ::InvalidateRect(child, nullptr, TRUE);
  ::InvalidateRect(main, nullptr, TRUE);
  Drain();
  EXPECT_EQ(TakeLog({"PAINT", "ERASEBKGND"}), "main PAINT; main ERASEBKGND; child PAINT; child ERASEBKGND");
  EXPECT_EQ(At(main, 9, 10), kRed);
  EXPECT_EQ(At(main, 10, 10), kGreen);
  ::InvalidateRect(main, nullptr, FALSE);
  Drain();
  EXPECT_EQ(TakeLog({"PAINT", "ERASEBKGND"}), "main PAINT");
}

TEST_F(WindowPainting, CutsThePaintContextToWhatIsAskedFor) {
  PaintIn(main, kRed);
  const RECT part = {10, 20, 30, 40}, outside = {-50, 190, 20, 1000};
  ::InvalidateRect(main, &part, FALSE);
  ::InvalidateRect(main, &outside, FALSE);
  EXPECT_EQ(UpdateBox(main), "0,20,30,200");
  ::UpdateWindow(main);
  EXPECT_EQ(UpdateBox(main), "0,0,0,0");
  EXPECT_EQ(At(main, 10, 20), kRed);
  EXPECT_EQ(At(main, 30, 39), kWhite);
  EXPECT_EQ(At(main, 19, 199), kRed);
  EXPECT_EQ(At(main, 9, 100), kWhite);
  TakeLog();
  ::UpdateWindow(main);
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(WindowPainting, AsksNothingOfAWindowThatIsNotShown) {
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  ::ShowWindow(child, SW_HIDE);
  Drain();
  TakeLog();
  ::InvalidateRect(child, nullptr, TRUE);
  ::UpdateWindow(child);
  Drain();
  EXPECT_EQ(TakeLog(), "");
  ::ShowWindow(child, SW_SHOW);
  Drain();
  EXPECT_EQ(TakeLog({"PAINT"}), "child PAINT");
}

TEST_F(WindowContext, IsCutByParentsByChildrenAndBySiblingsAsTheStylesSay) {
  HWND low = ShowChild("low", {150, 150, 300, 300}, main);
  HWND high = ShowChild("high", {160, 160, 300, 300}, main, WS_CHILD);
  const RECT all = {-100, -100, 1000, 1000};
  FillWindow(main, all, kRed);
  EXPECT_EQ(At(main, 199, 149), kRed);
  EXPECT_EQ(At(main, 150, 150), kWhite); // spared as a child
  EXPECT_EQ(ColourAt(103, 121), RGB(192, 192, 192));
  FillWindow(low, all, kGreen);
  EXPECT_EQ(At(main, 150, 150), kGreen);
  EXPECT_EQ(At(main, 160, 160), kWhite); // spared as a sibling above
  FillWindow(high, all, kBlue);
  EXPECT_EQ(At(main, 160, 160), kBlue);
  EXPECT_EQ(ColourAt(303, 290), RGB(192, 192, 192)); // the parent's border
}

TEST_F(WindowContext, OfAParentThatDoesNotSpareChildrenDrawsOverThemAndAsksThemToPaint) {
  HWND parent = MakeWindow("parent", WS_CAPTION, {400, 50, 606, 275});
  ::ShowWindow(parent, SW_SHOWNORMAL);
  HWND child = ShowChild("child", {10, 10, 60, 60}, parent);
  FillWindow(parent, {0, 0, 300, 300}, kRed);
  EXPECT_EQ(At(child, 5, 5), kRed);
  ::InvalidateRect(parent, nullptr, TRUE);
  Drain();
  EXPECT_EQ(TakeLog({"PAINT"}), "parent PAINT; child PAINT");
}

TEST_F(WindowContext, FollowsItsWindow) {
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

TEST_F(WindowContext, OfAClassOfItsOwnKeepsItsStateAndOthersBeginAnew) {
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

TEST_F(WindowContext, OutlivesItsWindowUntilItIsGivenBack) {
  HWND own = MakeWindow("own", kFrameStyle, {0, 0, 90, 90}, nullptr, "LogOwn");
  const HDC contexts[] = {::GetDC(main), ::GetDC(own)};
  ::DestroyWindow(main);
  ::DestroyWindow(own);
  for (HDC context : contexts) ::SetTextColor(context, kRed); // the last window has taken neither along
  HWND next = ShowFrame("next", kMainPlace);
  FillWindow(next, {0, 0, 10, 10}, kGreen); // nor does the next one get them
  for (HDC context : contexts) {
    Fill(context, {0, 0, 50, 50}, kRed);
    EXPECT_EQ(::SetTextColor(context, kBlue), kRed);
    EXPECT_EQ(::ReleaseDC(nullptr, context), 0);
  }
  EXPECT_EQ(At(next, 2, 2), kGreen);
}

TEST_F(WindowContext, OfACoverDrawsOnTheScreenOverEverythingAndHasAllInput) {
  MemoryOpenWindow("other", {400, 100, 500, 200}, MemoryPixelOf(1, 2, 3));
  HWND cover = ShowCover(main);
  EXPECT_EQ(ColourAt(410, 110), RGB(1, 2, 3));
  FillWindow(cover, {1999 + 410, 1999 + 110, 1999 + 420, 1999 + 120}, kRed);
  EXPECT_EQ(ColourAt(410, 110), kRed);
  EXPECT_EQ(ColourAt(419, 119), kRed);
  EXPECT_EQ(ColourAt(420, 110), RGB(1, 2, 3));
  MemoryMovePointerTo(450, 150);
  MemoryTypeKey('A');
  Drain();
  EXPECT_EQ(TakeLog(), "cover MOUSEMOVE 0 at 2449,2149; cover KEYDOWN 65; cover CHAR 97; cover KEYUP 65");
  ::DestroyWindow(cover);
  Drain();
  EXPECT_EQ(At(main, 0, 0), kWhite);
}

TEST_F(WindowRepair, TakesPixelsAlongAndAsksOnlyForWhatIsNew) {
  HWND child = ShowChild("child", {10, 10, 60, 60}, main);
  FillWindow(child, {0, 0, 50, 50}, kRed);
  ::MoveWindow(child, 20, 25, 60, 50, TRUE);
  EXPECT_EQ(UpdateBox(child), "50,0,60,50");
  EXPECT_EQ(At(main, 20, 25), kRed);
  EXPECT_EQ(At(main, 69, 74), kRed);
  Drain();
  EXPECT_EQ(At(main, 10, 10), kWhite);
  EXPECT_EQ(At(main, 19, 59), kWhite);
  FillWindow(main, {0, 100, 200, 200}, kGreen);
  ::MoveWindow(main, 100, 100, 226, 225, TRUE);
  EXPECT_EQ(UpdateBox(main), "200,0,220,200");
  EXPECT_EQ(At(main, 0, 150), kGreen);
  HWND anew = MakeWindow("anew", kChildStyle | WS_VISIBLE, {0, 0, 50, 50}, main, "LogAnew");
  Drain();
  ::MoveWindow(anew, 0, 0, 50, 40, TRUE);
  EXPECT_EQ(UpdateBox(anew), "0,0,50,40"); // its class wants it so
}

TEST_F(WindowRepair, OfAChildThatIsHiddenRaisedOrLoweredPaintsWhatItUncovers) {
  HWND low = ShowChild("low", {0, 0, 50, 50}, main);
  HWND high = ShowChild("high", {25, 25, 75, 75}, main);
  PaintIn(low, kRed);
  PaintIn(high, kGreen);
  ::InvalidateRect(low, nullptr, TRUE);
  ::InvalidateRect(high, nullptr, TRUE);
  Drain();
  EXPECT_EQ(At(main, 30, 30), kGreen);
  ::BringWindowToTop(low);
  EXPECT_EQ(UpdateBox(low), "25,25,50,50");
  Drain();
  EXPECT_EQ(At(main, 30, 30), kRed);
  ::ShowWindow(low, SW_HIDE);
  EXPECT_EQ(UpdateBox(high), "0,0,25,25");
  Drain();
  EXPECT_EQ(At(main, 30, 30), kGreen);
  EXPECT_EQ(At(main, 20, 20), kWhite);
}

TEST_F(WindowScrolling, MovesPixelsAndWhatIsYetToBePaintedAndAsksForTheRest) {
  FillWindow(main, {10, 10, 20, 20}, kRed);
  const RECT stale = {40, 40, 45, 45}, area = {0, 0, 100, 100};
  ::InvalidateRect(main, &stale, FALSE);
  EXPECT_TRUE(::ScrollWindow(main, 5, -7, &area, &area));
  EXPECT_EQ(At(main, 15, 3), kRed);
  EXPECT_EQ(At(main, 24, 12), kRed);
  EXPECT_EQ(At(main, 14, 3), kWhite);
  HRGN region = ::CreateRectRgn(0, 0, 0, 0);
  ::GetUpdateRgn(main, region, FALSE);
  const auto waits = [region](const RECT& place) { return ::RectInRegion(region, &place); };
  EXPECT_TRUE(waits({45, 33, 50, 38})); // moved along
  EXPECT_TRUE(waits({0, 0, 5, 10}));
  EXPECT_TRUE(waits({50, 93, 60, 100}));
  EXPECT_FALSE(waits({60, 50, 90, 90}));
  ::DeleteObject(region);
}

TEST_F(WindowPresenting, BringsOnlyWhatWasDrawn) {
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

TEST_F(WindowPresenting, ComesBeforeTheScreenItselfIsReadOrDrawnOn) {
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
  ::SetROP2(screen, R2_COPYPEN);
  ::BitBlt(screen, 600, 400, 2, 2, screen, point.x, point.y, SRCCOPY);
  EXPECT_EQ(ColourAt(601, 401), kBlue);
  ::DeleteDC(screen);
}

TEST_F(WindowPresenting, DoesNotWaitForEverWhileMessagesKeepComing) {
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

TEST_F(WindowPresenting, RestoresWhatAnotherProgramUncovers) {
  FillWindow(main, {0, 0, 200, 200}, kRed);
  Drain();
  DisplayWindow* other = MemoryOpenWindow("other", {150, 150, 200, 200}, 0);
  EXPECT_EQ(ColourAt(170, 170), RGB(0, 0, 0));
  FillWindow(main, {0, 0, 200, 200}, kGreen);
  ::Sleep(0);
  EXPECT_EQ(ColourAt(170, 170), RGB(0, 0, 0));
  MemoryCloseWindow(other);
  Drain();
  EXPECT_EQ(ColourAt(170, 170), kGreen);
  EXPECT_EQ(TakeLog({"PAINT"}), ""); // its pixels are still there
}

TEST_F(WindowPresenting, RefreshingTheScreenPaintsEverybodysWindowsAndClearsStrayPixels) {
  ShowChild("child", {10, 10, 60, 60}, main);
  DisplayWindow* other = MemoryOpenWindow("other", {400, 100, 500, 200}, 77);
  const uint8_t all[8] = {255, 255, 255, 255, 255, 255, 255, 255};
  DisplayInvertScreen({0, 0, 640, 480}, all);
  const uint32_t paints = other->paints;
  ::InvalidateRect(nullptr, nullptr, TRUE);
  Drain();
  EXPECT_EQ(other->paints, paints + 1);
  EXPECT_EQ(TakeLog({"PAINT"}), "main PAINT; child PAINT");
  EXPECT_EQ(At(main, 0, 0), kWhite);
  EXPECT_EQ(MemoryPixel(410, 110), 77U);
  EXPECT_EQ(MemoryPixel(550, 400), 0U);
}

TEST(PresentingAnywhere, StandsInEveryDepthAndThroughAChangeOfIt) {
  for (const int32_t depth : {1, 2, 4, 8, 16, 24, 32}) {
    WindowScene scene(640, 480, depth);
    HWND main = ShowFrame("main", kMainPlace);
    EXPECT_EQ(At(main, 0, 0), kWhite) << depth;
    MemoryDisplaySetMode(800, 600, depth == 24 ? 8 : 24);
    Drain();
    EXPECT_EQ(At(main, 0, 0), kWhite) << depth;
    const char* eight = "main DISPLAYCHANGE 8 800x600; main WININICHANGE";
    const char* trueColour = "main DISPLAYCHANGE 24 800x600; main WININICHANGE";
    EXPECT_EQ(TakeLog({"DISPLAYCHANGE", "WININICHANGE"}), depth == 24 ? eight : trueColour) << depth;
  }
}

} // namespace
} // namespace framereel
