// The class "button": when a press is a click.
#include "win32/window_scene.h"

namespace framereel {
namespace {

class Button : public OneWindow {
protected:
  HWND button = ShowControl("button", "Go", BS_PUSHBUTTON, {20, 20, 100, 44}, main, 7);
  const POINT on = OnScreen(main, 60, 32), off = OnScreen(main, 60, 60);

  void MoveTo(POINT to) { MemoryMovePointerTo(to.x, to.y); }
  // Lets the program take what the user has done: whether the button then looks pressed, and what it has told.
  std::string Heard() {
    Drain();
    const POINT corner = OnScreen(main, 20, 20);
    const bool down = Lives(button) && ColourAt(corner.x, corner.y) == RGB(0, 0, 0);
    return (down ? "down " : "up ") + TakeLog({"COMMAND"});
  }
};

TEST_F(Button, IsClickedByAReleaseOnItOfAPressThatBeganThere) {
  // P presses and R releases the left button, p and r the right one; + is on the button, - beside it.
  const auto act = [this](char what) {
    if (what == '+' || what == '-') return MoveTo(what == '+' ? on : off);
    const uint8_t which = what == 'p' || what == 'r' ? 3 : 1;
    what == 'P' || what == 'p' ? MemoryPressButton(which) : MemoryReleaseButton(which);
  };
  const std::pair<const char*, const char*> acts[] = {
      {"+P", "down "}, {"-", "up "},   {"+", "down "}, {"R", "up main COMMAND 7:0"},
      {"P-R", "up "},  {"P+R", "up "}, {"pr", "up "},  {"PR", "up main COMMAND 7:0"},
  };
  for (const auto& [what, heard] : acts) {
    for (const char* each = what; *each; ++each) act(*each);
    EXPECT_EQ(Heard(), heard) << what;
  }
  EXPECT_EQ(::GetFocus(), button);
}

TEST_F(Button, IsPressedByItsKeysAndByAMessageWhileItIsEnabled) {
  ::SetFocus(button);
  MemoryPressKey(VK_SPACE);
  MemoryPressKey(VK_SPACE);
  EXPECT_EQ(Heard(), "down ");
  MemoryReleaseKey(VK_SPACE);
  EXPECT_EQ(Heard(), "up main COMMAND 7:0");
  MemoryPressKey(VK_RETURN);
  MemoryTypeKey(VK_RETURN);
  MemoryTypeKey('A');
  EXPECT_EQ(Heard(), "up main COMMAND 7:0");
  ::SendMessageA(button, BM_CLICK, 0, 0);
  EXPECT_EQ(Heard(), "up main COMMAND 7:0");
  ::EnableWindow(button, FALSE);
  ::SendMessageA(button, BM_CLICK, 0, 0);
  MemoryClick(on.x, on.y);
  EXPECT_EQ(Heard(), "up ");
}

TEST_F(Button, ForgetsAPressThatIsTakenAwayFromIt) {
  const std::function<void()> takers[] = {
      [] { MemoryTypeKey(VK_ESCAPE); }, [this] { ::EnableWindow(button, FALSE); },
      [] {
        MemoryGiveKeyboard(MemoryOpenWindow("other", {400, 100, 500, 200}, 0));
      },                           // a key's
      [] { MemoryTakeCapture(); }, // the mouse's
  };
  for (int i = 0; i < 6; ++i) {
    const bool byKey = i < 3;
    ::EnableWindow(button, TRUE);
    MemoryGiveKeyboard(shown);
    Drain();
    ::SetFocus(button);
    MoveTo(on);
    byKey ? MemoryPressKey(VK_SPACE) : MemoryPressButton();
    EXPECT_EQ(Heard(), "down ") << i;
    takers[byKey ? i : i == 5 ? 3 : i - 3]();
    Drain();
    byKey ? MemoryReleaseKey(VK_SPACE) : MemoryReleaseButton();
    EXPECT_EQ(Heard(), "up ") << i;
  }
}

TEST_F(Button, MayEndInItsOwnNotice) {
  Answer(WM_COMMAND, [](HWND, WPARAM, LPARAM lParam) { return ::DestroyWindow(reinterpret_cast<HWND>(lParam)); });
  MemoryClick(on.x, on.y);
  EXPECT_EQ(Heard(), "up main COMMAND 7:0");
  EXPECT_FALSE(Lives(button));
}

TEST_F(Button, IsSeenAlsoWherePressedAheadOfAWindowThatPaintsOverIt) {
  HWND plain = MakeWindow("plain", WS_CAPTION | WS_VISIBLE, {350, 100, 500, 250});
  PaintIn(plain, RGB(0, 255, 0));
  ShowControl("button", "On", BS_PUSHBUTTON, {20, 20, 100, 44}, plain, 8);
  ::InvalidateRect(plain, nullptr, TRUE);
  MoveTo(OnScreen(plain, 90, 40));
  MemoryPressButton();
  Drain();
  const POINT inside = OnScreen(plain, 90, 40);
  EXPECT_EQ(ColourAt(inside.x, inside.y), ::GetSysColor(COLOR_BTNFACE));
}

} // namespace
} // namespace framereel
