// The class "button": when a press is a click, and what it looks like.
#include "win32/window_scene.h"

namespace framereel {
namespace {

class Button : public OneWindow {
protected:
  HWND button = ShowControl("button", "Go", BS_PUSHBUTTON, {20, 20, 100, 44}, main, 7);
};

TEST_F(Button, IsClickedByAReleaseOnItOfAPressThatBeganThere) {
  const std::string edges = "rgb? main 20 20 rgb? main 21 21 rgb? main 22 22 rgb? main 98 42 rgb? main 99 43";
  Act(edges + " m main 60 32 +lb then " + edges);
  EXPECT_EQ(Heard("notice"), "w l s d k k d s l w");
  Walk("notice", {{"m main 60 60 then rgb? main 20 20 m main 60 32 then rgb? main 20 20 -lb", "w k | main.notice:7/0"},
                  {"+lb m main 60 60 -lb", ""},
                  {"+lb m main 60 32 -lb rb +lb then -lb", "| main.notice:7/0"},
                  {"focus?", "Go"}});
  EXPECT_EQ(::GetFocus(), button);
}

TEST_F(Button, IsPressedByItsKeysAndByAMessageWhileItIsEnabled) {
  ::SetFocus(button);
  Walk("notice",
       {{"+space +space then rgb? main 20 20 -space", "k | main.notice:7/0"}, {"+enter enter A", "| main.notice:7/0"}});
  for (const bool enabled : {true, false}) {
    ::EnableWindow(button, enabled);
    ::SendMessageA(button, BM_CLICK, 0, 0);
    Act("m main 60 32 lb then");
    EXPECT_EQ(Heard("notice"), enabled ? "main.notice:7/0 main.notice:7/0" : "");
  }
}

TEST_F(Button, ForgetsAPressThatIsTakenAwayFromIt) {
  struct {
    const char *press, *taker, *release;
  } cases[] = {{"+space", "esc", "-space"},  {"+space", "disable Go", "-space"}, {"+space", "keyboard other", "-space"},
               {"+lb", "disable Go", "-lb"}, {"+lb", "takemouse", "-lb"},        {"+lb", "esc", "-lb"}};
  for (const auto& one : cases) {
    Act("enable Go keyboard main m main 60 32 then");
    ::SetFocus(button);
    Act(std::string(one.press) + " then rgb? main 20 20 " + one.taker + " then " + one.release +
        " then rgb? main 20 20");
    EXPECT_EQ(Heard("notice"), "k w") << one.press << one.taker;
  }
}

} // namespace
} // namespace framereel
