// The class "listbox": its order, what selects in it, how it scrolls.
#include "win32/controls/control_base.h"
#include "win32/window_scene.h"

namespace framereel {
namespace {

constexpr DWORD kStyle = LBS_NOTIFY | LBS_SORT | WS_VSCROLL;
constexpr int32_t kRows = 5, kWidth = 100;

// Words of its script: "over X Y" moves the pointer there, Y from the bottom where it is below 0; "row N" clicks on the
// entry that is the Nth to be seen.
class ListBox : public OneWindow {
protected:
  HWND list = ShowControl("listbox", "", kStyle, {0, 0, kWidth, 1}, main, 7);
  const int32_t row = LineHeight(ControlContext(list, nullptr));

  ListBox() {
    ::MoveWindow(list, 0, 0, kWidth, kRows * row, TRUE);
    TheScript().Add("over", [this](int x, int y) {
      const POINT at = OnScreen(list, x, y < 0 ? kRows * row + y : y);
      MemoryMovePointerTo(at.x, at.y);
    });
    TheScript().Add("row", [this](int entry) { Act(Text("over 5 ", entry * row + 2, " lb")); });
  }
  void Add(const std::string& text) { ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())); }
  void AddTwenty() {
    for (int i = 10; i < 30; ++i) Add(Text('e', i));
    Drain();
    Heard();
  }
  std::string TextAt(int32_t entry) const {
    char text[100] = "-";
    ::SendMessageA(list, LB_GETTEXT, WPARAM(entry), reinterpret_cast<LPARAM>(text));
    return text;
  }
  std::string Selected() const { return TextAt(int32_t(::SendMessageA(list, LB_GETCURSEL, 0, 0))); }
  // What is selected behind each step, and behind it the notices that the parent has heard.
  void Play(std::initializer_list<Step> steps) {
    for (const Step& step : steps) {
      Act(step.words);
      Drain();
      std::string seen = Selected();
      std::istringstream notices(Heard("notice"));
      for (std::string notice; notices >> notice;) seen += notice.substr(notice.find('/'));
      EXPECT_EQ(seen, step.brings) << step.words;
    }
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
  TheScript().words["type"] = [](std::istream& in) { MemoryTypeText(Word(in)); };
  Play({{"B", "b/1"},
        {"B", "ba\n/1"},
        {"C", "Bc/1"},
        {"X", "Bc"},
        {"wait 1500 D", "[dir]/1"},
        {"wait 1500 type [", "[..]/1"},
        {"wait 1500 type \u00E9", "\u00E9/1"}});
  EXPECT_EQ(::SendMessageA(list, LB_GETTEXT, 99, 0), LB_ERR);
  ::SendMessageA(list, LB_SETCURSEL, WPARAM(-1), 0);
  EXPECT_EQ(Selected(), "-");
}

TEST_F(ListBox, SelectsByKeysAndTheMouseAndTellsItsParent) {
  AddTwenty();
  Play({{"row 2", "e12/1"},
        {"down", "e13/1"},
        {"up pagedown", "e16/1/1"},
        {"end down", "e29/1"},
        {"pageup", "e25/1"},
        {"home up", "e10/1"},
        {"over 5 2 +lb over 5 150 then wait 60", "e24"}, // dragged out below, the entries go on passing by
        {"-lb", "e24/1"},
        {"wait 1000 row 0 row 0", "e20/1/2"},
        {"focus main", "e20/5"}});
}

TEST_F(ListBox, ScrollsByItsBarAndTheWheelAndNoFurtherThanThereIsAny) {
  AddTwenty();
  Play({{"over 5 5 wheel -2 row 0", "e16/1"},
        {"wheel 100 row 0", "e10/1"},
        {"over 92 -5 lb row 0", "e11/1"},  // the arrow down
        {"over 92 -18 lb row 0", "e15/1"}, // below the thumb
        {"over 92 5 lb row 0", "e14/1"},
        {"over 92 30 +lb over 92 500 -lb row 0", "e25/1"}, // the thumb, taken anywhere, from end to end
        {"over 92 -20 +lb over 92 -999 -lb row 0", "e10/1"},
        // An arrow that is held goes on, a moment later.
        {"over 92 -5 +lb then wait 100 then wait 100 then wait 100 then wait 100 then wait 100 then -lb row 0",
         "e14/1"}});
  ::SendMessageA(list, LB_RESETCONTENT, 0, 0);
  Add("only");
  Play({{"over 92 2 lb", "only/1"}}); // with room for all there is no bar
}

} // namespace
} // namespace framereel
