// The class "listbox": its order, what selects in it, how it scrolls.
#include "win32/controls/control_base.h"
#include "win32/drawing/relief.h"
#include "win32/window_scene.h"
#include "win32/windows/window.h"

namespace framereel {
namespace {

constexpr DWORD kStyle = LBS_NOTIFY | LBS_SORT | WS_VSCROLL;
constexpr int32_t kRows = 5, kWidth = 100;

class ListBox : public OneWindow {
protected:
  HWND list = ShowControl("listbox", "", kStyle, {0, 0, kWidth, 1}, main, 7);
  const int32_t row = LineHeight(ControlContext(list, nullptr));

  ListBox() { ::MoveWindow(list, 0, 0, kWidth, kRows * row, TRUE); }

  void Add(const char* text) { ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)); }
  std::string TextAt(int32_t entry) const {
    char text[100] = "-";
    ::SendMessageA(list, LB_GETTEXT, WPARAM(entry), reinterpret_cast<LPARAM>(text));
    return text;
  }
  std::string Selected() const { return TextAt(int32_t(::SendMessageA(list, LB_GETCURSEL, 0, 0))); }
  void Over(int32_t x, int32_t y) { MemoryMovePointerTo(OnScreen(list, x, y).x, OnScreen(list, x, y).y); }
  void ClickAt(int32_t x, int32_t y) {
    Over(x, y);
    MemoryPressButton();
    MemoryReleaseButton();
    Drain();
  }
  // What a click on the row seen at that number selects.
  std::string Click(int32_t number) {
    ClickAt(5, number * row + 2);
    return Selected();
  }
  // What has been selected, and what the parent heard of it.
  std::string Type(uint8_t key) {
    MemoryTypeKey(key);
    Drain();
    return Selected() + (Heard("notice") == "main.notice:7/1" ? "!" : "");
  }
  void AddTwenty() {
    for (char tens : {'1', '2'}) {
      for (char ones = '0'; ones <= '9'; ++ones) Add((std::string{'e', tens, ones}).c_str());
    }
    Drain();
  }
};

TEST_F(ListBox, IsInTheOrderOfItsLettersAndFindsWhatIsTyped) {
  for (const char* text : {"b", "[dir]", "Bc", "a", "", "\xC3\xA9", "bb", "ba\n", "[..]", "a"}) Add(text);
  std::string order;
  for (int32_t i = 0; TextAt(i) != "-"; ++i) order += TextAt(i) + "|";
  EXPECT_EQ(order, "|[..]|[dir]|a|a|b|ba\n|bb|Bc|\xC3\xA9|");
  ::SetFocus(list);
  Heard();
  // Letters close together begin one word, one again and again goes through those that begin with it.
  const struct {
    uint32_t wait;
    const char *text, *found;
  } typed[] = {{0, "B", "b"},
               {0, "B", "ba\n"},
               {0, "C", "Bc"},
               {0, "x", "Bc"},
               {1500, "d", "[dir]"},
               {1500, "[", "[..]"},
               {1500, "\xC3\xA9", "\xC3\xA9"}};
  for (const auto& each : typed) {
    ::Sleep(each.wait);
    MemoryTypeText(each.text);
    Drain();
    EXPECT_EQ(Selected(), each.found) << each.text;
  }
  EXPECT_EQ(::SendMessageA(list, LB_GETTEXT, 99, 0), LB_ERR);
  ::SendMessageA(list, LB_SETCURSEL, WPARAM(-1), 0);
  EXPECT_EQ(Selected(), "-");
}

TEST_F(ListBox, SelectsByKeysAndTheMouseAndTellsItsParent) {
  AddTwenty();
  EXPECT_EQ(Click(2), "e12");
  EXPECT_EQ(Heard("notice"), "main.notice:7/1");
  const std::pair<int, const char*> keys[] = {{VK_DOWN, "e13!"}, {VK_UP, "e12!"},  {VK_NEXT, "e16!"},
                                              {VK_END, "e29!"},  {VK_DOWN, "e29"}, {VK_PRIOR, "e25!"},
                                              {VK_HOME, "e10!"}, {VK_UP, "e10"}};
  for (const auto& [key, selected] : keys) EXPECT_EQ(Type(uint8_t(key)), selected) << key;
  // Dragged out below, the entries go on passing by; the notice comes with the release.
  Over(5, 2);
  MemoryPressButton();
  Over(5, kRows * row + 50);
  Drain();
  ::Sleep(60);
  Drain();
  EXPECT_GT(Selected(), "e18");
  EXPECT_EQ(Heard("notice"), "");
  MemoryReleaseButton();
  Drain();
  EXPECT_EQ(Heard("notice"), "main.notice:7/1");
  ::Sleep(1000);
  MemoryClick(OnScreen(list, 5, 2).x, OnScreen(list, 5, 2).y);
  MemoryClick(OnScreen(list, 5, 2).x, OnScreen(list, 5, 2).y);
  Drain();
  EXPECT_EQ(Heard("notice"), "main.notice:7/1 main.notice:7/2");
  ::SetFocus(main);
  EXPECT_EQ(Heard("notice"), "main.notice:7/5");
}

TEST_F(ListBox, ScrollsByItsBarAndTheWheelAndNoFurtherThanThereIsAny) {
  AddTwenty();
  const int32_t bar = kWidth - 8, bottom = kRows * row;
  Over(5, 5);
  MemoryTurnWheel(-2);
  EXPECT_EQ(Click(0), "e16");
  MemoryTurnWheel(100);
  EXPECT_EQ(Click(0), "e10");
  ClickAt(bar, bottom - 5); // the arrow down
  EXPECT_EQ(Click(0), "e11");
  ClickAt(bar, bottom - 18); // below the thumb
  EXPECT_EQ(Click(0), "e15");
  ClickAt(bar, 5);
  EXPECT_EQ(Click(0), "e14");
  // The thumb, taken anywhere, goes with the mouse from end to end.
  for (const auto& [from, to, seen] : {std::tuple{30, 500, "e25"}, std::tuple{bottom - 20, -500, "e10"}}) {
    Over(bar, from);
    MemoryPressButton();
    Over(bar, to);
    MemoryReleaseButton();
    Drain();
    EXPECT_EQ(Click(0), seen);
  }
  // An arrow that is held goes on, a moment later.
  Over(bar, bottom - 5);
  MemoryPressButton();
  Drain();
  for (int i = 0; i < 5; ++i) {
    ::Sleep(100);
    Drain();
  }
  MemoryReleaseButton();
  Drain();
  EXPECT_GT(Click(0), "e12");
  // With room for all there is no bar.
  ::SendMessageA(list, LB_RESETCONTENT, 0, 0);
  Add("only");
  ClickAt(bar, 2);
  EXPECT_EQ(Selected(), "only");
}

} // namespace
} // namespace framereel
