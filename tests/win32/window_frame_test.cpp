// The frame: its thickness and look, its boxes, dragging by the caption, the system menu.
#include <algorithm>
#include <vector>

#include "win32/window_scene.h"
#include "win32/windows/window.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

using WindowFrame = OneWindow;
using SystemMenu = OneWindow;
using SystemKeys = OneWindow;

constexpr int32_t kNavy = 0x800000, kGrey = 0x808080; // COLORREF
constexpr POINT kClose = {293, 111}, kMinimise = {275, 111}, kMenu = {113, 111}, kCaption = {200, 111};

std::string Commands() {
  return TakeLog({"SYSCOMMAND"});
}

void ExpectCorner(HWND window, int x, int y) {
  RECT rect;
  ::GetWindowRect(window, &rect);
  EXPECT_EQ(rect.left, x);
  EXPECT_EQ(rect.top, y);
}

// What stands in the rectangle of the screen.
std::vector<COLORREF> ColoursIn(const PixelRect& where) {
  std::vector<COLORREF> colours;
  for (int32_t y = where.top; y < where.bottom; ++y) {
    for (int32_t x = where.left; x < where.right; ++x) colours.push_back(ColourAt(x, y));
  }
  return colours;
}

int64_t Count(const PixelRect& where, COLORREF colour) {
  const std::vector<COLORREF> colours = ColoursIn(where);
  return std::count(colours.begin(), colours.end(), colour);
}

// The user does one thing after the other, 20 ms apart, once somebody waits.
void Later(std::initializer_list<std::function<void()>> acts) {
  uint32_t at = ::GetTickCount() + 20;
  for (const std::function<void()>& act : acts) {
    MemoryAt(at, act);
    at += 20;
  }
}

void MoveTo(POINT point) {
  MemoryMovePointerTo(point.x, point.y);
}

// Presses, then does those things.
void PressAndThen(POINT point, std::initializer_list<std::function<void()>> acts) {
  MoveTo(point);
  MemoryPressButton();
  Later(acts);
  Drain();
}

void LetGo() {
  MemoryReleaseButton();
}

TEST_F(WindowFrame, TakesItsThicknessOffTheClientArea) {
  const auto clientWith = [](DWORD style) {
    const PixelRect client = ClientOnScreen(*MakeWindow("x", style, {0, 0, 200, 100}));
    return std::vector<int32_t>{client.left, client.top, client.right, client.bottom};
  };
  EXPECT_EQ(clientWith(WS_POPUP), (std::vector<int32_t>{0, 0, 200, 100}));
  EXPECT_EQ(clientWith(WS_POPUP | WS_BORDER), (std::vector<int32_t>{1, 1, 199, 99}));
  EXPECT_EQ(clientWith(WS_POPUP | WS_CAPTION), (std::vector<int32_t>{3, 22, 197, 97}));
}

TEST(FrameOnAnyDesktop, LightsTheCaptionOfTheActiveWindowAndLettersItsTitle) {
  constexpr PixelRect kTitleStrip = {125, 103, 262, 121};
  constexpr int kAll = 137 * 18;
  for (const int32_t depth : {1, 4, 8, 16, 24}) {
    SCOPED_TRACE(depth);
    WindowScene scene(640, 480, depth);
    HWND main = ShowFrame("A title", kMainPlace);
    HDC context = ::GetDC(main);
    const COLORREF lit = ::GetNearestColor(context, kNavy), dim = ::GetNearestColor(context, kGrey);
    ::ReleaseDC(main, context);
    EXPECT_GT(Count(kTitleStrip, lit), kAll * 3 / 4);
    EXPECT_LT(Count(kTitleStrip, lit), kAll);
    MemoryGiveKeyboard(MemoryOpenWindow("other", {400, 300, 500, 400}, 0));
    Drain();
    EXPECT_GT(Count(kTitleStrip, dim), kAll * 3 / 4);
    EXPECT_LT(Count(kTitleStrip, dim), kAll);
    ::SetWindowTextA(main, "");
    Drain();
    EXPECT_EQ(Count(kTitleStrip, dim), kAll);
  }
}

TEST_F(WindowFrame, CutsATitleThatHasNoRoomShortOfTheBoxes) {
  const PixelRect boxes = {265, 103, 303, 121};
  const std::vector<COLORREF> before = ColoursIn(boxes);
  ::SetWindowTextA(main, std::string(300, 'W').c_str());
  Drain();
  EXPECT_EQ(ColoursIn(boxes), before);
  ::MoveWindow(main, 100, 100, 60, 225, TRUE);
  ::MoveWindow(main, 100, 100, 4, 4, TRUE);
  Drain();
}

TEST_F(WindowFrame, ABoxActsWhenItIsReleasedWhereItWasPressed) {
  Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
  MemoryClick(kClose.x, kClose.y);
  Drain();
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61536");
  MoveTo(kClose);
  MemoryPressButton();
  MoveTo({50, 50});
  MemoryReleaseButton();
  Drain();
  EXPECT_EQ(Commands(), "");
  MemoryClick(kMinimise.x, kMinimise.y);
  Drain();
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61472");
  EXPECT_TRUE(shown->minimised);
}

TEST_F(WindowFrame, ABoxLooksPressedWhileTheMouseIsOnItAndLetsGoWhenTheReleaseNeverComes) {
  const PixelRect edge = {285, 105, 301, 106}; // the top line of the close box
  std::string looks;
  const auto look = [&looks, &edge] { looks += Count(edge, RGB(0, 0, 0)) > 10 ? "in " : "out "; };
  const auto away = [] { MoveTo({50, 50}); };
  const auto back = [] { MoveTo(kClose); };
  PressAndThen(kClose, {look, away, look, back, look, [] { MemoryTypeKey(VK_ESCAPE); }});
  look();
  EXPECT_EQ(looks, "in out in out ");
  MemoryReleaseButton();
  PressAndThen(kClose, {MemoryTakeCapture});
  MemoryReleaseButton();
  PressAndThen(kClose, {[] { TheMemoryDisplay().desktop.keys[VK_LBUTTON] = false; }});
  MemoryReleaseButton();
  Drain();
  EXPECT_EQ(Commands(), "");
}

std::function<void()> CaptionDraggedBy(int dx, int dy) {
  return [=] { MoveTo({kCaption.x + dx, kCaption.y + dy}); };
}

TEST_F(WindowFrame, TheCaptionDragsWithTheDesktopOrWithoutIt) {
  for (const bool byDesktop : {true, false}) {
    SCOPED_TRACE(byDesktop);
    ::MoveWindow(main, 100, 100, 206, 225, TRUE);
    TheMemoryDisplay().desktop.leavesDragging = !byDesktop;
    PressAndThen(kCaption, {CaptionDraggedBy(30, -20), CaptionDraggedBy(40, 50), LetGo});
    ::Sleep(100);
    Drain();
    ExpectCorner(main, 140, 150);
    EXPECT_EQ(ClientSize(main).cx, 200);
    EXPECT_EQ(ColourAt(143, 172), RGB(255, 255, 255));
    EXPECT_EQ(::GetKeyState(VK_LBUTTON), 0);
  }
}

TEST_F(WindowFrame, IsGivenToTheDesktopToDragOnlyWhenItMovesWithTheButtonDown) {
  for (const bool released : {false, true}) {
    ::MoveWindow(main, 100, 100, 206, 225, TRUE);
    const auto drag = [released] {
      EXPECT_EQ(TheMemoryDisplay().desktop.dragged, nullptr);
      // The release has gone to somebody else.
      if (released) TheMemoryDisplay().desktop.keys[VK_LBUTTON] = false;
      CaptionDraggedBy(30, -20)();
    };
    PressAndThen(kCaption, {drag});
    EXPECT_EQ(TheMemoryDisplay().desktop.dragged != nullptr, !released);
    MemoryReleaseButton();
    ExpectCorner(main, 130, 80);
    Drain();
  }
}

TEST_F(WindowFrame, EscapeTakesADragBackAndAChildDragsInItsParent) {
  HWND child = ShowChild("child", {20, 20, 120, 90}, main, kChildStyle | WS_CAPTION);
  const POINT from = OnScreen(child, 20, -10), to = {from.x + 15, from.y + 25};
  PressAndThen(from, {[to] { MoveTo(to); }, LetGo});
  ExpectCorner(child, 103 + 35, 122 + 45);
  PressAndThen(to, {[from] { MoveTo(from); }, [] { MemoryTypeKey(VK_ESCAPE); }});
  ExpectCorner(child, 103 + 35, 122 + 45);
}

// ---- The system menu ---------------------------------------------------------------------------------------------

void OpenWithKeys() {
  TypeWith({VK_MENU}, VK_SPACE);
  Drain();
}

// Opens the system menu with Alt and the space bar and types the keys, one each 20 ms, once it is open.
void ChooseByKeys(std::initializer_list<uint8_t> keys) {
  uint32_t at = ::GetTickCount() + 20;
  for (const uint8_t key : keys) {
    MemoryAt(at, [key] { MemoryTypeKey(key); });
    at += 20;
  }
  OpenWithKeys();
}

TEST_F(SystemMenu, OpensWithTheKeyboardAndChoosesByArrowsOrLetter) {
  Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
  for (const uint8_t arrow : {VK_DOWN, VK_UP}) {
    ChooseByKeys({arrow, arrow, VK_RETURN});
    EXPECT_EQ(Commands(), "main SYSCOMMAND 61696; main SYSCOMMAND 61472");
    ::ShowWindow(main, SW_RESTORE);
    Drain();
  }
  ChooseByKeys({'C'});
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696; main SYSCOMMAND 61536");
  ChooseByKeys({VK_RETURN, 'R', VK_ESCAPE}); // what is grey is not chosen
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696");
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 1U);
}

TEST_F(SystemMenu, OpensWithTheMouseByDraggingOrByClicking) {
  Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
  const auto lastItem = [] {
    const PixelRect menu = MemoryWindowAt(kMenu.x + 5, kMenu.y + 12)->place;
    MoveTo({menu.left + 10, menu.bottom - 8});
  };
  PressAndThen(kMenu, {lastItem, LetGo});
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61587; main SYSCOMMAND 61536");
  MemoryClick(kMenu.x, kMenu.y);
  Later({lastItem, [] { MemoryPressButton(); }, LetGo});
  Drain();
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61587; main SYSCOMMAND 61536");
  MemoryClick(kMenu.x, kMenu.y);
  Later({[] { MemoryClick(600, 400); }});
  Drain();
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61587");
}

TEST_F(SystemMenu, TakesChangedAndAddedItemsAndTellsTheOwnerThatItWaits) {
  HMENU menu = ::GetSystemMenu(main, FALSE);
  EXPECT_FALSE(::ModifyMenuA(menu, SC_TASKLIST, 0, 32, "Nex&t\tCtrl+F6"));
  EXPECT_TRUE(::ModifyMenuA(menu, SC_CLOSE, 0, SC_CLOSE, "&Shut\tCtrl+F4"));
  EXPECT_TRUE(::AppendMenuA(menu, MF_SEPARATOR, 0, nullptr));
  EXPECT_TRUE(::AppendMenuA(menu, MF_CHECKED, 300, "&About..."));
  ChooseByKeys({VK_UP, VK_RETURN});
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696; main SYSCOMMAND 300");
  ChooseByKeys({'A'});
  EXPECT_EQ(TakeLog({"ENTERIDLE"}).rfind("main ENTERIDLE 2; main ENTERIDLE 2", 0), 0U);
  EXPECT_EQ(::GetSystemMenu(main, TRUE), nullptr);
  ChooseByKeys({'A', 'S', VK_ESCAPE});
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696");
  HWND bare = MakeWindow("bare", WS_POPUP | WS_CAPTION, {0, 0, 100, 100}, main);
  EXPECT_EQ(::GetSystemMenu(bare, FALSE), nullptr);
}

TEST_F(SystemMenu, ClosesWhenAnotherProgramTakesTheKeyboardOrItsWindowGoes) {
  Later({[] { MemoryGiveKeyboard(MemoryOpenWindow("other", {400, 300, 500, 400}, 0)); }});
  OpenWithKeys();
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 2U);
  MemoryGiveKeyboard(shown);
  Drain();
  Later({[this] { ::DestroyWindow(main); }});
  OpenWithKeys();
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 1U);
}

TEST_F(SystemMenu, MovesTheWindowByKeys) {
  ChooseByKeys({'M', VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN});
  ExpectCorner(main, 108, 116);
  ChooseByKeys({'M', VK_LEFT, VK_UP, VK_ESCAPE});
  ExpectCorner(main, 108, 116);
  MemoryAt(::GetTickCount() + 60, [] { MemoryGiveKeyboard(nullptr); });
  ChooseByKeys({'M'});
  EXPECT_EQ(TheMemoryDisplay().desktop.captured, nullptr);
}

TEST_F(SystemMenu, StaysWithinTheUsableArea) {
  ::MoveWindow(main, 500, 430, 206, 50, TRUE);
  MemorySetTaskBar({0, 460, 640, 480});
  Drain();
  PixelRect menu = {};
  MemoryAt(10, [&menu] { menu = TheMemoryDisplay().desktop.windows.front()->place; });
  ChooseByKeys({VK_ESCAPE});
  EXPECT_GE(menu.left, 0);
  EXPECT_LE(menu.right, 640);
  EXPECT_LE(menu.bottom, 460);
  EXPECT_LT(menu.top, menu.bottom);
}

TEST_F(SystemKeys, AltF4AsksTheWholeFrameToClose) {
  HWND child = ShowChild("child", {20, 20, 120, 90}, main);
  ::SetFocus(child);
  TypeWith({VK_MENU}, VK_F4);
  Drain();
  EXPECT_EQ(TakeLog({"SYSCOMMAND", "CLOSE"}), "main SYSCOMMAND 61536; main CLOSE");
}

} // namespace
} // namespace framereel
