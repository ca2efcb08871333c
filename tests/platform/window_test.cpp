// Windows: their records, where they stand, and how they follow the desktop.
#include <gtest/gtest.h>
#include <string>
#include <tuple>

#include "core/notices.h"
#include "platform/display/display_caps.h"
#include "platform/display/usable_area.h"
#include "platform/drawing/current_port.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/windows/modal.h"
#include "platform/windows/paint_messages.h"
#include "platform/windows/window_classes.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/rectangles.h"
#include "win32/windows/window.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

std::string calls;

void NoteChange(intptr_t code, void*) {
  calls += std::to_string(code);
}

using Box = std::tuple<int, int, int, int>; // left, top, width, height
using Size = std::pair<int, int>;

Box ClientOf(const WindowGeometry& g) {
  return {g.clientLeft, g.clientTop, g.clientWidth, g.clientHeight};
}

Box OuterOf(const WindowGeometry& g) {
  return {g.outerLeft, g.outerTop, g.outerWidth, g.outerHeight};
}

Size ClientSizeOf(const WindowGeometry& g) {
  return {g.clientWidth, g.clientHeight};
}

// The record is what the platform has, in toolkit coordinates, with the frame round it.
void ExpectAgreement(const WindowGeometry& g, HWND window) {
  const MainWindow* main = TheMainWindow();
  const PixelRect client = ClientOnScreen(*window);
  const int left = client.left - main->originX, top = client.top - main->originY;
  EXPECT_EQ(ClientOf(g), Box(left, top, WidthOf(client), HeightOf(client)));
  EXPECT_EQ(OuterOf(g), Box(left - g.insetLeft, top - g.insetTop, WidthOf(client) + g.insetLeft + g.insetRight,
                            HeightOf(client) + g.insetTop + g.insetBottom));
}

class WindowTest : public ::testing::Test {
protected:
  WindowTest() : program(800, 600) {
    SetMainClientSize(nullptr, 500, 400);
    Settle();
    calls.clear();
    NotifyAdd(NoteChange, nullptr);
  }
  ~WindowTest() override { NotifyRemove(NoteChange, nullptr); }

  MainWindow* main = TheMainWindow();
  WindowProgram program;
};

// ---- Geometry ----------------------------------------------------------------------------------------------------

TEST(MainWindowTest, IsAtFirstAsLargeAsTheUsableScreen) {
  MemoryDisplayReset(800, 600, 24);
  WindowProgram program(800, 600);
  const MainWindow* main = TheMainWindow();
  EXPECT_EQ(main->geometry.outerWidth, 800);
  EXPECT_EQ(main->geometry.outerHeight, 600);
  EXPECT_EQ(main->minWidth, 250);
  EXPECT_EQ(Size(main->usableWidth, main->usableHeight), Size(800, 600));
}

TEST_F(WindowTest, TheRecordAgreesWithThePlatformInEveryKindOfWindow) {
  EXPECT_EQ(ClientOf(main->geometry), Box(main->geometry.insetLeft, main->geometry.insetTop, 500, 400));
  for (const uint32_t flags : {uint32_t{0}, kWindowModal | 0u, kWindowPopup | 0u, kWindowLoosePopup | 0u,
                               kWindowPalette | kWindowMayClose, kWindowNoMinimise | kWindowFilled}) {
    ChildWindow* window = OpenTestWindow(flags | kWindowUnclamped);
    SCOPED_TRACE(flags);
    ExpectAgreement(window->geometry, window->window);
    EXPECT_EQ(ClientOf(window->geometry), Box(100, 100, 200, 100));
    EXPECT_GT(window->geometry.insetTop, 0);
    CloseChildWindow(window);
  }
}

TEST_F(WindowTest, SizesStayWithinTheLimitsOfTheKind) {
  const std::pair<uint32_t, int> kinds[] = {{kWindowPalette, 20}, {kWindowPopup, 1}, {kWindowModal, 40}, {0, 40}};
  for (const auto& [flags, least] : kinds) {
    ChildWindow* window = OpenTestWindow(flags);
    SizeChildWindow(window, 0, -5);
    EXPECT_EQ(ClientSizeOf(window->geometry), Size(least, least)) << flags;
    SizeChildWindow(window, 5000, 5000);
    EXPECT_EQ(window->geometry.clientWidth, 800) << flags;
    SetMaxChildSize(window, 300, 90);
    EXPECT_EQ(ClientSizeOf(window->geometry), Size(300, 90)) << flags;
    CloseChildWindow(window);
  }
}

TEST_F(WindowTest, AClampedWindowKeepsFivePixelsFromTheEdges) {
  const int left = main->geometry.clientLeft, top = main->geometry.clientTop;
  ChildWindow *clamped = OpenTestWindow(0), *free = OpenTestWindow(kWindowUnclamped);
  for (ChildWindow* window : {clamped, free}) PlaceChildWindow(window, -1000, 2000);
  EXPECT_EQ(ClientOf(clamped->geometry), Box(left + 5, top + 395, 200, 100));
  EXPECT_EQ(ClientOf(free->geometry), Box(-1000, 2000, 200, 100));
}

TEST_F(WindowTest, KeptInsideMeansTheWholeFrame) {
  ChildWindow* window = OpenTestWindow(kWindowPopup | kWindowUnclamped);
  const WindowGeometry& g = window->geometry;
  const int left = main->geometry.clientLeft, top = main->geometry.clientTop;
  KeepChildWindowInside(window, 490, 390);
  EXPECT_EQ(OuterOf(g), Box(left + 500 - g.outerWidth, top + 400 - g.outerHeight, g.outerWidth, g.outerHeight));
  KeepChildWindowInside(window, -10, -10);
  EXPECT_EQ(OuterOf(g), Box(left, top, g.outerWidth, g.outerHeight));
  KeepChildWindowInside(window, 60, 70);
  EXPECT_EQ(ClientOf(g), Box(60, 70, 200, 100));
}

TEST_F(WindowTest, CentresOnTheMainWindowOrOnTheScreenWhileThatIsAway) {
  ChildWindow* window = OpenTestWindow(kWindowModal | kWindowUnclamped);
  CentreChildWindow(window);
  const WindowGeometry& g = window->geometry;
  EXPECT_EQ(g.outerLeft, main->geometry.clientLeft + 250 - g.outerWidth / 2);
  EXPECT_EQ(g.outerTop, main->geometry.clientTop + 200 - g.outerHeight / 2);
  MoveMainWindow(nullptr, 1000, 50);
  CentreChildWindow(window);
  EXPECT_EQ(g.outerLeft + main->originX, 400 - g.outerWidth / 2);
  EXPECT_EQ(g.outerTop + main->originY, 300 - g.outerHeight / 2);
  PlaceChildWindowUpper(window);
  EXPECT_EQ(g.clientTop + main->originY, (600 - g.outerHeight) / 3);
}

TEST_F(WindowTest, OnlyTheUsersMovesAreTold) {
  ChildWindow* window = OpenTestWindow(kWindowModal | kWindowUnclamped);
  SetWindowMethod(
      window, &WindowMethods::resized,
      +[](ChildWindow* w) { calls += "resized to " + std::to_string(w->geometry.clientWidth) + " "; });
  SetWindowMethod(
      window, &WindowMethods::moved,
      +[](ChildWindow* w) { calls += "moved to " + std::to_string(w->geometry.clientLeft) + " "; });
  PlaceChildWindow(window, 30, 40);
  SizeChildWindow(window, 150, 60);
  EXPECT_EQ(calls, "");
  const WindowGeometry g = window->geometry;
  const int left = main->originX + g.outerLeft + 11, top = main->originY + g.outerTop;
  MemoryMoveWindow(MemoryWindowTitled("Test"), {left, top, left + g.outerWidth + 20, top + g.outerHeight});
  Settle();
  EXPECT_EQ(calls, "resized to 170 moved to 41 ");
}

TEST_F(WindowTest, WindowsOnTheScreenStayThereWhenTheMainWindowMoves) {
  ChildWindow* dialog = OpenTestWindow(kWindowModal | kWindowUnclamped);
  ChildWindow* panel = OpenTestWindow(kWindowUnclamped);
  SetWindowMethod(
      dialog, &WindowMethods::moved, +[](ChildWindow*) { calls += "moved "; });
  const auto place = [dialog] { return Size(OnScreen(dialog, 0, 0).h, OnScreen(dialog, 0, 0).v); };
  const Size before = place();
  MoveMainWindow(nullptr, 150, 90);
  Settle();
  EXPECT_EQ(place(), before);
  ExpectAgreement(dialog->geometry, dialog->window);
  EXPECT_EQ(ClientOf(panel->geometry), Box(100, 100, 200, 100));
  EXPECT_EQ(calls, "5");
}

TEST_F(WindowTest, TheMainWindowMovesAndGrowsByItsClientArea) {
  const WindowGeometry& g = main->geometry;
  MoveMainWindow(nullptr, 60, 70);
  SetMainClientSize(nullptr, 300, 280);
  EXPECT_EQ(Size(main->originX, main->originY), Size(60 - g.insetLeft, 70 - g.insetTop));
  EXPECT_EQ(ClientSizeOf(g), Size(300, 280));
  SetMainMinimumSize(nullptr, 1, 1);
  SetMainBounds(nullptr, 20, 30, 100, 90);
  ExpectAgreement(g, main->window);
  EXPECT_EQ(calls, "5151");
}

TEST_F(WindowTest, AMinimisedMainWindowKeepsItsGeometryAndTakesANewSizeAtRestore) {
  const WindowGeometry before = main->geometry;
  MemoryMinimiseWindow(MemoryWindowTitled("Framereel"), true);
  Settle();
  EXPECT_TRUE(MainIsIconic(nullptr));
  EXPECT_FALSE(ActiveGet());
  EXPECT_EQ(ClientOf(main->geometry), ClientOf(before));
  SetMainClientSize(nullptr, 310, 290);
  MemoryMinimiseWindow(MemoryWindowTitled("Framereel"), false);
  Settle();
  EXPECT_FALSE(MainIsIconic(nullptr));
  EXPECT_EQ(ClientOf(main->geometry), Box(before.clientLeft, before.clientTop, 310, 290));
  ExpectAgreement(main->geometry, main->window);
  EXPECT_EQ(calls, "44");
}

// ---- The desktop changes -----------------------------------------------------------------------------------------

TEST_F(WindowTest, ATaskBarTakesItsEdgeOffTheUsableArea) {
  const std::pair<PixelRect, Box> cases[] = {{{0, 572, 800, 600}, {0, 0, 800, 572}},
                                             {{0, 0, 800, 30}, {0, 30, 800, 570}},
                                             {{0, 0, 60, 600}, {60, 0, 740, 600}},
                                             {{700, 0, 800, 600}, {0, 0, 700, 600}},
                                             {{}, {0, 0, 800, 600}}};
  const Box before = ClientOf(main->geometry);
  for (const auto& [bar, usable] : cases) {
    MemorySetTaskBar(bar);
    Settle();
    EXPECT_EQ(Box(main->usableLeft, main->usableTop, main->usableWidth, main->usableHeight), usable);
    Rect again;
    EXPECT_FALSE(QueryUsableArea(&again)); // the change is told once
  }
  EXPECT_EQ(ClientOf(main->geometry), before);
}

TEST_F(WindowTest, AMainWindowThatFillsTheUsableAreaGoesOnFillingIt) {
  const WindowGeometry& g = main->geometry;
  SetMainBounds(nullptr, g.insetLeft, g.insetTop, int16_t(800 - g.insetLeft - g.insetRight),
                int16_t(600 - g.insetTop - g.insetBottom));
  MemorySetTaskBar({0, 560, 800, 600});
  Settle();
  EXPECT_EQ(Size(g.outerWidth, g.outerHeight), Size(800, 560));
  MemorySetTaskBar({});
  Settle();
  EXPECT_EQ(g.outerHeight, 600);
}

TEST_F(WindowTest, ANewDepthIsToldOnceAndANewResolutionNot) {
  calls.clear();
  MemoryDisplaySetMode(1024, 768, 24);
  Settle();
  EXPECT_EQ(calls, "");
  EXPECT_EQ(Size(main->usableWidth, main->usableHeight), Size(1024, 768));
  const auto draw = [](intptr_t, void*) {
    UseDrawState(DrawStateWhite());
    FillRectXY(0, 0, 3, 3);
  };
  NotifyAdd(draw, nullptr);
  MemoryDisplaySetMode(1024, 768, 8);
  MSG message;
  ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
  EXPECT_EQ(calls, "2");
  EXPECT_EQ(TheDisplayCaps().screenDepth, 8);
  const HDC context = CurrentContext(); // a listener draws in the main window
  EXPECT_EQ(::GetPixel(context, 2, 2), RGB(255, 255, 255));
  EXPECT_NE(::GetPixel(context, 3, 3), RGB(255, 255, 255));
  NotifyRemove(draw, nullptr);
  MemoryDisplaySetMode(900, 700, 8);
  TheMemoryDesktop().events.clear(); // one that is not told
  MoveMainWindow(nullptr, 50, 50);
  EXPECT_EQ(main->usableWidth, 900);
}

// ---- Life --------------------------------------------------------------------------------------------------------

TEST_F(WindowTest, AWindowAsksBeforeTheUserClosesItAndClosesOnce) {
  ChildWindow* window = OpenTestWindow(kWindowMayClose);
  const auto noteClose = [](intptr_t subject, void* closed) {
    calls += ToListValue(closed) == subject ? "told " : "wrong ";
  };
  NotifierAdd(&window->listeners, noteClose, window);
  SetWindowMethod(
      window, &WindowMethods::mayClose, +[](ChildWindow*) { return false; });
  SetWindowMethod(
      window, &WindowMethods::close, +[](ChildWindow*) { calls += "close "; });
  ::SendMessageA(window->window, WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_EQ(calls, "");
  SetWindowMethod(
      window, &WindowMethods::mayClose, +[](ChildWindow*) { return true; });
  ::SendMessageA(window->window, WM_SYSCOMMAND, SC_CLOSE + 1, 0);
  EXPECT_EQ(calls, "close told ");
  ChildWindow* other = OpenTestWindow(0);
  ::SendMessageA(other->window, WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_TRUE(IsOpenChildWindow(other));
  CloseChildWindow(other);
  CloseChildWindow(other);
  EXPECT_EQ(NextChildWindow(nullptr), nullptr);
}

TEST_F(WindowTest, TwoShowsShowOnceAndAHiddenWindowIsNotModal) {
  ChildWindow* window = OpenChildWindow(nullptr, "Shy", kWindowModal);
  EXPECT_FALSE(MemoryWindowTitled("Shy"));
  EXPECT_EQ(GetModalWindow(), nullptr);
  ShowChildWindow(window);
  ShowChildWindowFront(window);
  EXPECT_TRUE(MemoryWindowTitled("Shy"));
  EXPECT_EQ(window->openCount, 2);
  EXPECT_EQ(GetModalWindow(), window);
  SetChildWindowTitle(window, "Bold");
  EXPECT_TRUE(MemoryWindowTitled("Bold"));
}

TEST_F(WindowTest, TheNextWindowAloneIsOfTheSelectedClass) {
  SelectWindowClass(199);
  SelectWindowClass(201);
  ChildWindow* cover = OpenTestWindow(kWindowPopup);
  EXPECT_EQ(MemoryWindowTitled("Test")->role, WindowRole::kCover);
  CloseChildWindow(cover);
  OpenTestWindow(kWindowPopup);
  EXPECT_EQ(MemoryWindowTitled("Test")->role, WindowRole::kPopup);
}

// ---- Painting ----------------------------------------------------------------------------------------------------

TEST_F(WindowTest, AFilledWindowHasItsBackgroundAndPaintsWhatNeedsIt) {
  ChildWindow* window = OpenTestWindow(kWindowFilled | kWindowUnclamped);
  window->background = {0xFFFF, 0, 0};
  SetWindowMethod(
      window, &WindowMethods::paint, +[](ChildWindow* painted) {
        calls += RectNeedsPaint({0, 0, 10, 10}) ? "near " : "";
        calls += RectNeedsPaint({50, 150, 60, 160}) ? "far " : "";
        EXPECT_EQ(CurrentPort(), &painted->port);
      });
  InvalidateChildWindow(window);
  Settle();
  RunFor(60);
  const Point corner = OnScreen(window, 0, 0);
  EXPECT_EQ(MemoryPixel(corner.h, corner.v), MemoryPixelOf(255, 0, 0));
  EXPECT_EQ(MemoryPixel(corner.h + 199, corner.v + 99), MemoryPixelOf(255, 0, 0));
  EXPECT_NE(MemoryPixel(corner.h - 1, corner.v), MemoryPixelOf(255, 0, 0));
  InvalidateChildRect(window, {0, 0, 10, 10});
  Settle();
  EXPECT_EQ(calls, "near far near ");
  EXPECT_FALSE(RectNeedsPaint({0, 0, 10, 10}));
}

// ---- Scroll bars -------------------------------------------------------------------------------------------------

template <char method> void NoteScroll(ChildWindow*, uint16_t kind, int16_t value) {
  calls += std::string(1, method) + std::to_string(kind) + "," + std::to_string(value) + " ";
}

TEST_F(WindowTest, EachPartOfAScrollBarTellsItsMethodHowFar) {
  ChildWindow* window = OpenTestWindow(0);
  WindowMethods& m = window->methods;
  m.hScrollLine = NoteScroll<'l'>, m.hScrollPage = NoteScroll<'p'>, m.hScrollEnd = NoteScroll<'e'>;
  m.vScrollLine = NoteScroll<'L'>, m.vScrollPage = NoteScroll<'P'>, m.vScrollEnd = NoteScroll<'E'>;
  m.hScrollThumb = NoteScroll<'t'>, m.vScrollThumb = NoteScroll<'T'>;
  for (const UINT bar : {WM_HSCROLL, WM_VSCROLL}) {
    for (WPARAM part = 0; part < 9; ++part) ::SendMessageA(window->window, bar, 300 << 16 | part, 0);
  }
  EXPECT_EQ(calls, "l0,-1 l0,1 p1,-1 p1,1 t3,300 t3,300 e2,-1 e2,1 L0,-1 L0,1 P1,-1 P1,1 T3,300 T3,300 E2,-1 E2,1 ");
}

// ---- Native controls ---------------------------------------------------------------------------------------------

TEST(ControlTableTest, NumbersAreUniqueComeAgainAndAreNeverThatOfADyingControl) {
  ControlTable table = {};
  std::vector<bool> taken(0x10000);
  auto* view = reinterpret_cast<View*>(&table);
  for (int i = 0; i < 5000; ++i) {
    const uint16_t id = ControlTableTake(&table, view);
    ASSERT_FALSE(taken[id]);
    taken[id] = true;
    ASSERT_NE(id, kDyingControl);
    ASSERT_TRUE(i > 0 || id == 3);
  }
  ControlTableGiveBack(&table, 77);
  EXPECT_EQ(ControlTableFind(&table, 77), nullptr);
  ControlTableGiveBack(&table, 77);
  EXPECT_EQ(ControlTableTake(&table, view), 77);
  EXPECT_NE(ControlTableTake(&table, view), 77);
  EXPECT_EQ(ControlTableFind(&table, 78), view);
  EXPECT_EQ(ControlTableFind(&table, 60000), nullptr);
  EXPECT_EQ(ControlTableFind(&table, kDyingControl), nullptr);
  ControlTableFree(&table);
}

} // namespace
} // namespace framereel
