// The class "button": when a press is a click, and what it looks like.
#include "win32/window_scene.h"

namespace framereel {
namespace {

class Button : public OneWindow {
protected:
  HWND button = ShowControl("button", "Go", BS_PUSHBUTTON, {20, 20, 100, 44}, main, 7);
};

TEST_F(Button, IsClickedByAPressThatBeginsAndEndsOnItOrByItsKeys) {
  const std::string edges = "rgb? main 20 20 rgb? main 21 21 rgb? main 22 22 rgb? main 98 42 rgb? main 99 43";
  Act(edges + " m main 60 32 +lb then " + edges);
  EXPECT_EQ(Heard("notice"), "w l s d k k d s l w");
  Walk("notice", {{"m main 60 60 then rgb? main 20 20 m main 60 32 then rgb? main 20 20 -lb", "w k | main.notice:7/0"},
                  {"+lb m main 60 60 -lb", ""},
                  {"+lb m main 60 32 -lb rb +lb then -lb", "| main.notice:7/0"},
                  {"focus? +space +space then rgb? main 20 20 -space", "Go k | main.notice:7/0"},
                  {"+enter enter A", "| main.notice:7/0"},
                  // A press that is taken away from it is forgotten.
                  {"+space then esc then rgb? main 20 20 -space", "w"},
                  {"+lb then takemouse then rgb? main 20 20 -lb", "w"},
                  {"+lb then disable Go then rgb? main 20 20 -lb lb", "w"}});
}

} // namespace
} // namespace framereel
