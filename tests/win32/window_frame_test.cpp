// The frame: its thickness and look, its boxes, dragging by the caption, the system menu.
#include <gtest/gtest.h>

#include "win32/window_scene.h"

namespace framereel {
namespace {

constexpr int32_t kNavy = 0x800000, kGrey = 0x808080; // COLORREF
constexpr PixelRect kPlace = {100, 100, 306, 325};    // client 103, 122 to 303, 322
constexpr POINT kClose = {293, 111}, kMinimise = {275, 111}, kMenu = {113, 111}, kCaption = {200, 111};

std::string Commands() {
  return Joined(TakeLog({"SYSCOMMAND"}));
}

// How many pixels of the rectangle have the colour.
int Count(const PixelRect& where, COLORREF colour) {
  int count = 0;
  for (int32_t y = where.top; y < where.bottom; ++y) {
    for (int32_t x = where.left; x < where.right; ++x) count += ColourAt(x, y) == colour;
  }
  return count;
}

constexpr PixelRect kTitleStrip = {125, 103, 262, 121};

TEST(WindowFrame, TakesItsThicknessOffTheClientArea) {
  WindowScene scene;
  const auto insets = [](DWORD style) {
    HWND window = MakeWindow("x", style, {0, 0, 200, 100});
    const SIZE client = ClientSize(window);
    const POINT origin = OnScreen(window, 0, 0);
    return std::to_string(origin.x) + "," + std::to_string(origin.y) + " " + std::to_string(client.cx) + "x" +
           std::to_string(client.cy);
  };
  EXPECT_EQ(insets(WS_POPUP), "0,0 200x100");
  EXPECT_EQ(insets(WS_POPUP | WS_BORDER), "1,1 198x98");
  EXPECT_EQ(insets(WS_POPUP | WS_CAPTION), "3,22 194x75");
}

TEST(WindowFrame, LightsTheCaptionOfTheActiveWindowAndLettersItsTitle) {
  for (const int32_t depth : {1, 4, 8, 16, 24}) {
    WindowScene scene(640, 480, depth);
    HWND main = ShowFrame("A title", kPlace);
    HDC context = ::GetDC(main);
    const COLORREF lit = ::GetNearestColor(context, kNavy), dim = ::GetNearestColor(context, kGrey);
    ::ReleaseDC(main, context);
    const int all = 137 * 18, litPixels = Count(kTitleStrip, lit);
    EXPECT_GT(litPixels, all * 3 / 4) << depth;
    EXPECT_LT(litPixels, all) << depth;
    MemoryGiveKeyboard(MemoryOpenWindow("other", {400, 300, 500, 400}, 0));
    Drain();
    EXPECT_GT(Count(kTitleStrip, dim), all * 3 / 4) << depth;
    EXPECT_LT(Count(kTitleStrip, dim), all) << depth;
    ::SetWindowTextA(main, "");
    Drain();
    EXPECT_EQ(Count(kTitleStrip, dim), all) << depth;
  }
}

TEST(WindowFrame, CutsATitleThatHasNoRoomShortOfTheBoxes) {
  WindowScene scene;
  HWND main = ShowFrame("short", kPlace);
  const PixelRect boxes = {265, 103, 303, 121};
  std::vector<COLORREF> before, after;
  const auto take = [&boxes](std::vector<COLORREF>* pixels) {
    for (int32_t y = boxes.top; y < boxes.bottom; ++y) {
      for (int32_t x = boxes.left; x < boxes.right; ++x) pixels->push_back(ColourAt(x, y));
    }
  };
  take(&before);
  ::SetWindowTextA(main, std::string(300, 'W').c_str());
  Drain();
  take(&after);
  EXPECT_EQ(before, after);
  ::MoveWindow(main, 100, 100, 60, 225, TRUE);
  ::MoveWindow(main, 100, 100, 4, 4, TRUE);
  Drain();
}

TEST(WindowFrame, ABoxActsWhenItIsReleasedWhereItWasPressed) {
  WindowScene scene;
  ShowFrame("main", kPlace);
  MemoryClick(kClose.x, kClose.y);
  Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
  Drain();
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61536");
  MemoryMovePointerTo(kClose.x, kClose.y);
  MemoryPressButton();
  MemoryMovePointerTo(50, 50);
  MemoryReleaseButton();
  Drain();
  EXPECT_EQ(Commands(), "");
  MemoryClick(kMinimise.x, kMinimise.y);
  Drain();
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61472");
  EXPECT_TRUE(MemoryWindowTitled("main")->minimised);
}

TEST(WindowFrame, ABoxLooksPressedWhileTheMouseIsOnIt) {
  WindowScene scene;
  HWND main = ShowFrame("main", kPlace);
  const PixelRect edge = {285, 105, 301, 106}; // the top line of the close box
  std::string looks;
  const auto look = [&looks, &edge] { looks += Count(edge, RGB(0, 0, 0)) > 10 ? "in " : "out "; };
  MemoryMovePointerTo(kClose.x, kClose.y);
  MemoryPressButton();
  MemoryAt(20, look);
  MemoryAt(30, [] { MemoryMovePointerTo(50, 50); });
  MemoryAt(50, look);
  MemoryAt(60, [] { MemoryMovePointerTo(kClose.x, kClose.y); });
  MemoryAt(80, look);
  MemoryAt(90, [] { MemoryTypeKey(VK_ESCAPE); });
  Drain();
  look();
  EXPECT_EQ(looks, "in out in out ");
  EXPECT_EQ(Commands(), "");
  MemoryReleaseButton();
  EXPECT_TRUE(Lives(main));
}

TEST(WindowFrame, ABoxLetsGoWhenTheReleaseNeverComes) {
  WindowScene scene;
  ShowFrame("main", kPlace);
  for (const bool taken : {true, false}) {
    MemoryMovePointerTo(kClose.x, kClose.y);
    MemoryPressButton();
    MemoryAt(::GetTickCount() + 20, [taken] {
      if (taken) MemoryTakeCapture();
      if (!taken) TheMemoryDisplay().desktop.keys[VK_LBUTTON] = false;
    });
    Drain();
    EXPECT_EQ(Commands(), "");
    MemoryReleaseButton();
    Drain();
  }
}

TEST(WindowFrame, TheCaptionDragsWithTheDesktopOrWithoutIt) {
  for (const bool byDesktop : {true, false}) {
    WindowScene scene;
    HWND main = ShowFrame("main", kPlace);
    TheMemoryDisplay().desktop.leavesDragging = !byDesktop;
    MemoryMovePointerTo(kCaption.x, kCaption.y);
    MemoryPressButton();
    MemoryAt(20, [] { MemoryMovePointerTo(kCaption.x + 30, kCaption.y - 20); });
    MemoryAt(40, [] { MemoryMovePointerTo(kCaption.x + 40, kCaption.y + 50); });
    MemoryAt(60, [] { MemoryReleaseButton(); });
    Drain();
    ::Sleep(100);
    Drain();
    RECT rect;
    ::GetWindowRect(main, &rect);
    EXPECT_EQ(rect.left, 140) << byDesktop;
    EXPECT_EQ(rect.top, 150) << byDesktop;
    EXPECT_EQ(rect.right, 346) << byDesktop;
    EXPECT_EQ(ColourAt(143, 172), RGB(255, 255, 255)) << byDesktop;
    EXPECT_EQ(::GetKeyState(VK_LBUTTON), 0) << byDesktop;
  }
}

TEST(WindowFrame, TheDesktopIsAskedToDragOnlyWhatMovesWithTheButtonDown) {
  for (const bool released : {false, true}) {
    WindowScene scene;
    HWND main = ShowFrame("main", kPlace);
    MemoryMovePointerTo(kCaption.x, kCaption.y);
    MemoryPressButton();
    MemoryAt(20, [=] {
      EXPECT_EQ(TheMemoryDisplay().desktop.dragged, nullptr);
      // The release has gone to somebody else.
      if (released) TheMemoryDisplay().desktop.keys[VK_LBUTTON] = false;
      MemoryMovePointerTo(kCaption.x + 30, kCaption.y - 20);
    });
    Drain();
    EXPECT_EQ(TheMemoryDisplay().desktop.dragged != nullptr, !released);
    MemoryReleaseButton();
    RECT rect;
    ::GetWindowRect(main, &rect);
    EXPECT_EQ(rect.left, kPlace.left + 30);
    EXPECT_EQ(rect.top, kPlace.top - 20);
  }
}

TEST(WindowFrame, EscapeTakesADragBackAndAChildDragsInItsParent) {
  WindowScene scene;
  HWND main = ShowFrame("main", kPlace);
  HWND child = ShowChild("child", {20, 20, 120, 90}, main, kChildStyle | WS_CAPTION);
  const POINT caption = OnScreen(child, 20, -10);
  MemoryMovePointerTo(caption.x, caption.y);
  MemoryPressButton();
  MemoryAt(20, [=] { MemoryMovePointerTo(caption.x + 15, caption.y + 25); });
  MemoryAt(40, [] { MemoryReleaseButton(); });
  Drain();
  RECT rect;
  ::GetWindowRect(child, &rect);
  EXPECT_EQ(rect.left, 103 + 35);
  EXPECT_EQ(rect.top, 122 + 45);
  MemoryMovePointerTo(caption.x + 15, caption.y + 25);
  MemoryPressButton();
  MemoryAt(60, [=] { MemoryMovePointerTo(caption.x, caption.y); });
  MemoryAt(80, [] { MemoryTypeKey(VK_ESCAPE); });
  Drain();
  ::GetWindowRect(child, &rect);
  EXPECT_EQ(rect.left, 103 + 35);
}

// Opens the system menu with Alt and the space bar and types the keys, one each 20 ms, once it is open.
void ChooseByKeys(std::initializer_list<uint8_t> keys) {
  uint32_t at = ::GetTickCount() + 20;
  for (const uint8_t key : keys) {
    MemoryAt(at, [key] { MemoryTypeKey(key); });
    at += 20;
  }
  MemoryPressKey(VK_MENU);
  MemoryTypeKey(VK_SPACE);
  MemoryReleaseKey(VK_MENU);
  Drain();
}

TEST(SystemMenu, OpensWithTheKeyboardAndChoosesByArrowsOrLetter) {
  WindowScene scene;
  HWND main = ShowFrame("main", kPlace);
  Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
  ChooseByKeys({VK_DOWN, VK_DOWN, VK_RETURN});
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696; main SYSCOMMAND 61472");
  ::ShowWindow(main, SW_RESTORE);
  Drain();
  ChooseByKeys({VK_UP, VK_UP, VK_RETURN});
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696; main SYSCOMMAND 61472");
  ::ShowWindow(main, SW_RESTORE);
  Drain();
  ChooseByKeys({'C'});
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696; main SYSCOMMAND 61536");
  ChooseByKeys({VK_RETURN, 'R', VK_ESCAPE}); // what is grey is not chosen
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696");
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 1U);
}

TEST(SystemMenu, OpensWithTheMouseByDraggingOrByClicking) {
  WindowScene scene;
  ShowFrame("main", kPlace);
  Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
  const auto lastItem = [] {
    const PixelRect menu = MemoryWindowAt(kMenu.x + 5, kMenu.y + 12)->place;
    MemoryMovePointerTo(menu.left + 10, menu.bottom - 8);
  };
  MemoryMovePointerTo(kMenu.x, kMenu.y);
  MemoryPressButton();
  MemoryAt(20, lastItem);
  MemoryAt(40, [] { MemoryReleaseButton(); });
  Drain();
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61587; main SYSCOMMAND 61536");
  MemoryClick(kMenu.x, kMenu.y);
  MemoryAt(60, lastItem);
  MemoryAt(80, [] { MemoryPressButton(); });
  MemoryAt(100, [] { MemoryReleaseButton(); });
  Drain();
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61587; main SYSCOMMAND 61536");
  MemoryClick(kMenu.x, kMenu.y);
  MemoryAt(120, [] { MemoryClick(600, 400); });
  Drain();
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61587");
}

TEST(SystemMenu, TakesChangedAndAddedItemsAndTellsTheOwnerThatItWaits) {
  WindowScene scene;
  HWND main = ShowFrame("main", kPlace);
  HMENU menu = ::GetSystemMenu(main, FALSE);
  EXPECT_FALSE(::ModifyMenuA(menu, SC_TASKLIST, 0, 32, "Nex&t\tCtrl+F6"));
  EXPECT_TRUE(::ModifyMenuA(menu, SC_CLOSE, 0, SC_CLOSE, "&Shut\tCtrl+F4"));
  EXPECT_TRUE(::AppendMenuA(menu, MF_SEPARATOR, 0, nullptr));
  EXPECT_TRUE(::AppendMenuA(menu, MF_CHECKED, 300, "&About..."));
  ChooseByKeys({VK_UP, VK_RETURN});
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696; main SYSCOMMAND 300");
  ChooseByKeys({'A'});
  const std::vector<std::string> idle = TakeLog({"ENTERIDLE"});
  EXPECT_GE(idle.size(), 2U);
  EXPECT_EQ(idle.front(), "main ENTERIDLE 2");
  EXPECT_EQ(::GetSystemMenu(main, TRUE), nullptr);
  ChooseByKeys({'A', 'S', VK_ESCAPE});
  EXPECT_EQ(Commands(), "main SYSCOMMAND 61696");
  HWND bare = MakeWindow("bare", WS_POPUP | WS_CAPTION, {0, 0, 100, 100}, main);
  EXPECT_EQ(::GetSystemMenu(bare, FALSE), nullptr);
}

TEST(SystemMenu, ClosesWhenAnotherProgramTakesTheKeyboardOrItsWindowGoes) {
  WindowScene scene;
  HWND main = ShowFrame("main", kPlace);
  MemoryAt(20, [] { MemoryGiveKeyboard(MemoryOpenWindow("other", {400, 300, 500, 400}, 0)); });
  ChooseByKeys({});
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 2U);
  MemoryGiveKeyboard(MemoryWindowTitled("main"));
  Drain();
  MemoryAt(::GetTickCount() + 20, [main] { ::DestroyWindow(main); });
  ChooseByKeys({});
  EXPECT_EQ(TheMemoryDisplay().desktop.windows.size(), 1U);
}

TEST(SystemMenu, MovesTheWindowByKeys) {
  WindowScene scene;
  HWND main = ShowFrame("main", kPlace);
  ChooseByKeys({'M', VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN});
  RECT rect;
  ::GetWindowRect(main, &rect);
  EXPECT_EQ(rect.left, 108);
  EXPECT_EQ(rect.top, 116);
  ChooseByKeys({'M', VK_LEFT, VK_UP, VK_ESCAPE});
  ::GetWindowRect(main, &rect);
  EXPECT_EQ(rect.left, 108);
  MemoryAt(::GetTickCount() + 60, [] { MemoryGiveKeyboard(nullptr); });
  ChooseByKeys({'M'});
  EXPECT_EQ(TheMemoryDisplay().desktop.captured, nullptr);
}

TEST(SystemMenu, StaysWithinTheUsableArea) {
  WindowScene scene;
  ShowFrame("main", {500, 430, 706, 480});
  MemorySetTaskBar({0, 460, 640, 480});
  PixelRect menu = {};
  MemoryAt(20, [&menu] { menu = TheMemoryDisplay().desktop.windows.front()->place; });
  ChooseByKeys({0, VK_ESCAPE});
  EXPECT_GE(menu.left, 0);
  EXPECT_LE(menu.right, 640);
  EXPECT_LE(menu.bottom, 460);
  EXPECT_LT(menu.top, menu.bottom);
}

TEST(SystemKeys, AltF4AsksTheWholeFrameToClose) {
  WindowScene scene;
  HWND main = ShowFrame("main", kPlace);
  HWND child = ShowChild("child", {20, 20, 120, 90}, main);
  ::SetFocus(child);
  MemoryPressKey(VK_MENU);
  MemoryTypeKey(VK_F4);
  MemoryReleaseKey(VK_MENU);
  Drain();
  EXPECT_EQ(Joined(TakeLog({"SYSCOMMAND", "CLOSE"})), "main SYSCOMMAND 61536; main CLOSE");
}

} // namespace
} // namespace framereel
