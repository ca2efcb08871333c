// The class "button": when a press is a click, and what it looks like at each depth.
#include <set>

#include "win32/window_scene.h"

namespace framereel {
namespace {

constexpr PixelRect kPlace = {20, 20, 100, 44};

class Button : public OneWindow {
protected:
  HWND button = ShowControl("button", "Go", BS_PUSHBUTTON, kPlace, main, 7);
  POINT on = OnScreen(main, 60, 32), off = OnScreen(main, 60, 60);

  void MoveTo(POINT to) { MemoryMovePointerTo(to.x, to.y); }
  // Lets the program take what the user has done; "down" where the button then looks pressed, and what it has told.
  std::string Heard() {
    Drain();
    const POINT corner = OnScreen(main, kPlace.left, kPlace.top);
    const bool down = Lives(button) && ColourAt(corner.x, corner.y) == RGB(0, 0, 0);
    const std::string told = TakeLog({"COMMAND"});
    return (down ? "down " : "up ") + told;
  }
};

TEST_F(Button, IsClickedByAReleaseOnItOfAPressThatBeganThere) {
  MoveTo(on);
  MemoryPressButton();
  EXPECT_EQ(Heard(), "down ");
  EXPECT_EQ(::GetFocus(), button);
  MoveTo(off);
  EXPECT_EQ(Heard(), "up ");
  MoveTo(on);
  EXPECT_EQ(Heard(), "down ");
  MemoryReleaseButton();
  EXPECT_EQ(Heard(), "up main COMMAND 7:0");
  MemoryPressButton();
  MoveTo(off);
  MemoryReleaseButton();
  EXPECT_EQ(Heard(), "up ");
  MemoryPressButton();
  MoveTo(on);
  MemoryReleaseButton();
  EXPECT_EQ(Heard(), "up ");
  MemoryPressButton(3);
  EXPECT_EQ(Heard(), "up ");
}

TEST_F(Button, IsPressedByItsKeysAndByAMessage) {
  ::SetFocus(button);
  MemoryPressKey(VK_SPACE);
  MemoryPressKey(VK_SPACE);
  EXPECT_EQ(Heard(), "down ");
  MemoryReleaseKey(VK_SPACE);
  EXPECT_EQ(Heard(), "up main COMMAND 7:0");
  MemoryPressKey(VK_RETURN);
  MemoryPressKey(VK_RETURN);
  MemoryReleaseKey(VK_RETURN);
  EXPECT_EQ(Heard(), "up main COMMAND 7:0");
  MemoryTypeKey('A');
  EXPECT_EQ(Heard(), "up ");
  ::SendMessageA(button, BM_CLICK, 0, 0);
  EXPECT_EQ(Heard(), "up main COMMAND 7:0");
}

TEST_F(Button, ForgetsAPressThatIsTakenAwayFromIt) {
  const std::function<void()> takers[] = {
      [] { MemoryTypeKey(VK_ESCAPE); },
      [] { MemoryTakeCapture(); },
      [this] { ::EnableWindow(button, FALSE); },
      [this] {
        MemoryGiveKeyboard(MemoryOpenWindow("other", {400, 100, 500, 200}, 0));
      },
  };
  for (size_t i = 0; i < std::size(takers); ++i) {
    for (const bool byKey : {false, true}) {
      if (byKey && i == 1) continue; // nothing is captured
      ::EnableWindow(button, TRUE);
      MemoryGiveKeyboard(shown);
      Drain();
      ::SetFocus(button);
      MoveTo(on);
      byKey ? MemoryPressKey(VK_SPACE) : MemoryPressButton();
      EXPECT_EQ(Heard(), "down ") << i;
      takers[i]();
      Drain();
      byKey ? MemoryReleaseKey(VK_SPACE) : MemoryReleaseButton();
      // Another program's window leaves the mouse where it is.
      EXPECT_EQ(Heard(), i == 3 && !byKey ? "up main COMMAND 7:0" : "up ") << i << byKey;
    }
  }
}

TEST_F(Button, TellsNothingWhileItIsDisabledAndMayEndInItsOwnNotice) {
  ::EnableWindow(button, FALSE);
  MemoryClick(on.x, on.y);
  ::SendMessageA(button, BM_CLICK, 0, 0);
  EXPECT_EQ(Heard(), "up ");
  ::EnableWindow(button, TRUE);
  Answer(WM_COMMAND, [this](HWND, WPARAM, LPARAM lParam) {
    EXPECT_EQ(reinterpret_cast<HWND>(lParam), button);
    ::DestroyWindow(button);
    return 0;
  });
  MemoryClick(on.x, on.y);
  EXPECT_EQ(Heard(), "up main COMMAND 7:0");
  EXPECT_FALSE(Lives(button));
}

TEST_F(Button, PaintsAheadOfAWindowThatCoversIt) {
  HWND plain = MakeWindow("plain", WS_CAPTION | WS_VISIBLE, {350, 100, 500, 250});
  PaintIn(plain, RGB(0, 255, 0));
  ShowControl("button", "On", BS_PUSHBUTTON, kPlace, plain, 8);
  const POINT inside = OnScreen(plain, 90, 40);
  ::InvalidateRect(plain, nullptr, TRUE);
  // Pressed at once, before the window has painted what lies under it.
  MemoryMovePointerTo(inside.x, inside.y);
  MemoryPressButton();
  Drain();
  EXPECT_EQ(ColourAt(inside.x, inside.y), ::GetSysColor(COLOR_BTNFACE));
}

// ---- Its look ----------------------------------------------------------------------------------------------------

// The pixels of the button as it is shown.
std::vector<COLORREF> Picture(HWND main) {
  Drain();
  std::vector<COLORREF> pixels;
  for (int y = kPlace.top; y < kPlace.bottom; ++y) {
    for (int x = kPlace.left; x < kPlace.right; ++x) {
      const POINT at = OnScreen(main, x, y);
      pixels.push_back(ColourAt(at.x, at.y));
    }
  }
  return pixels;
}

TEST(ButtonLook, IsAnotherInEachStateAndLegibleAtEveryDepth) {
  for (const int depth : {1, 2, 4, 8, 16, 24, 32}) {
    WindowScene scene(640, 480, depth);
    HWND main = ShowFrame("main", kMainPlace);
    PaintIn(main, ::GetSysColor(COLOR_MENU));
    HWND button = ShowControl("button", "Go on", BS_PUSHBUTTON, kPlace, main, 7);
    const auto plain = Picture(main);
    const COLORREF face = plain[size_t(4 * 80 + 4)];
    const auto outline = [&](int from, int to) {
      return std::count_if(plain.begin() + from, plain.begin() + to, [=](COLORREF c) { return c != face; });
    };
    EXPECT_EQ(outline(0, 80), 80) << depth;            // of the top edge each pixel can be told
    EXPECT_EQ(outline(23 * 80, 24 * 80), 80) << depth; // and of the bottom edge
    EXPECT_GT(outline(8 * 80 + 20, 8 * 80 + 60) + outline(12 * 80 + 20, 12 * 80 + 60), 4) << depth; // text
    std::set<std::vector<COLORREF>> looks = {plain};
    ::SendMessageA(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    looks.insert(Picture(main));
    ::SetFocus(button);
    looks.insert(Picture(main));
    MemoryPressKey(VK_SPACE);
    looks.insert(Picture(main));
    ::EnableWindow(button, FALSE);
    looks.insert(Picture(main));
    ::SetWindowTextA(button, "Stop");
    looks.insert(Picture(main));
    EXPECT_EQ(looks.size(), 6U) << depth;
    MemoryReleaseKey(VK_SPACE);
  }
}

} // namespace
} // namespace framereel
