// Controls by script: how they measure, what a press does to them, and what stands on the screen.
#include "toolkit/controls/check_box.h"
#include "toolkit/controls/popup.h"
#include "toolkit/controls/popup_list.h"
#include "toolkit/controls/separator.h"
#include "toolkit/controls/text_pane.h"
#include "views/view_scene.h"

namespace framereel {
namespace {

using Controls = ViewScene;

int Ink(const View* view) {
  const std::string picture = PictureOf(view);
  return int(std::count(picture.begin(), picture.end(), '#'));
}

TEST_F(Controls, MeasureThemselves) {
  CheckBoxSetLabel(Make(CheckBoxClass(), 10, 10, "box"), "Loop");
  TextPaneSetText(Make(TextPaneClass(), 10, 10, "pane"), "one two three four five six");
  script.Act("resize pane 60 0 fit box");
  SetPortWindow(Window());
  UseDrawState(DrawStateDefault());
  const TextMeasure text = MeasureText("Loop");
  EXPECT_EQ(Named("box")->width, 16 + 4 + text.width + 4);
  EXPECT_LE(Named("pane")->width, 64);
  EXPECT_GT(Named("pane")->height, 2 * (text.ascent + text.descent));
}

TEST_F(Controls, LooksAreDrawn) {
  View* separator = Make(SeparatorClass());
  SeparatorSetKind(separator, 2);
  script.Act("resize v 8 9 fit v resize v 8 0");
  script.Act("show v");
  EXPECT_EQ(PictureOf(separator), "........\n.######.\n........\n.######.\n........\n");
  View* box = Make(CheckBoxClass(), 50, 50);
  script.Act("resize v 20 16 show v");
  const int empty = Ink(box);
  CheckBoxSetValue(box, true, true);
  script.Act("settle");
  EXPECT_GT(Ink(box), empty + 20);
  View* label = Make(LabelClass(), 50, 80);
  LabelSetValue(label, "Framed");
  script.Act("fit v show v");
  const int enabled = Ink(label);
  EXPECT_GT(enabled, 2 * (label->width + label->height));
  script.Act("disable v");
  EXPECT_LT(Ink(label), enabled); // the letters are grey
}

TEST_F(Controls, ACheckBoxFlipsWhenThePressEndsOverIt) {
  View* box = Make(CheckBoxClass());
  CheckBoxSetCallback(box, [](View* view, bool value) { Say(view, value ? "=1" : "=0"); });
  script.Act("show v over w 15 15");
  script.Heard();
  Walk({{"d", "mouse=Framereel"},
        {"u", "v=1 mouse="},
        {"d over w 100 90 u", ""},
        {"over w 15 15 d over w 100 90 over w 16 16 u", "v=0"},
        {"disable v d u enable v", "wv16@16,16 w^16@16,16"}});
}

// ---- Popups ------------------------------------------------------------------------------------------------------

const char* const kEntries[] = {"one", "two", nullptr, "four"};

class Popups : public ViewScene {
protected:
  Popups() {
    popup = Make(PopupClass(), 100, 30);
    PopupSetItems(popup, 4, kEntries);
    PopupSetCallback(popup, [](View* view, uint16_t index) { Say(view, std::to_string(index)); });
    // Over an entry of the list, with the first one selected, a pixel beside the last time.
    script.words["entry"] = [this](std::istream& in) {
      int entry = 0;
      in >> entry;
      const int row = popup->height - 5 + 1, top = 32 + entry * row - (entry > 2 ? row - 4 : 0); // a divider takes 4
      jitter = 1 - jitter;
      script.Act("over w " + std::to_string(115 + jitter) + " " + std::to_string(top + (entry == 2 ? 2 : row / 2)));
    };
    script.words["list?"] = [this](std::istream&) { script.Say(PopupListIsOpen() ? "open" : "shut"); };
    script.Act("fit v show v");
    script.Heard();
  }

  View* popup;
  int jitter = 0;
};

TEST_F(Popups, AreDraggedThroughOrClickedOpenAndClickedAgain) {
  Play({{"entry 0 d list? entry 1 entry 1 entry 3 u list?", "open v3 shut"}});
  EXPECT_EQ(PopupSelected(popup), 3);
  PopupSetSelected(popup, 0);
  Play({{"entry 0 d u list? entry 0 entry 1 entry 1 d u list?", "open v1 shut"}});
}

TEST_F(Popups, CloseWithoutAChoiceAndStayShutWhileDisabledOrEmpty) {
  Play({{"entry 0 d entry 1 entry 3 entry 0 u list?", "shut"}, // on the selected one
        {"entry 0 d entry 1 entry 3 entry 2 u list?", "shut"}, // on the divider
        {"entry 0 d entry 1 entry 3 over w 5 40 u list?", "shut"},
        {"entry 0 d u entry 1 entry 3 over w 5 90 d list? u", "shut"},
        {"entry 0 d u left list? esc list?", "open shut"},
        {"entry 0 d entry 1 entry 3 left list? esc list? u", "open shut"},
        {"entry 0 d u leave list? return", "shut"},
        {"disable v entry 0 d u list? enable v", "shut"},
        {"entry 0 d u list? destroy v list?", "open shut"}});
  popup = Make(PopupClass(), 100, 30);
  Play({{"resize v 50 20 show v entry 0 d u list?", "shut"}});
}

TEST_F(Popups, ScrollToBothEndsWhenTheListIsTooHigh) {
  constexpr uint16_t kMany = 60;
  const char* texts[kMany];
  std::fill(texts, texts + kMany, "entry");
  PopupSetItems(popup, kMany, texts);
  PopupSetSelected(popup, 30);
  script.Act("entry 0 d u");
  PixelRect list = {0, 0, 0, 0};
  for (const auto& window : TheMemoryDesktop().windows) {
    if (window->ours && window->role == WindowRole::kPopup) list = window->place;
  }
  EXPECT_LE(list.bottom - list.top, TheMainWindow()->geometry.clientHeight - 8 + 2); // with its border
  // Beyond the end the list runs until it has shown its last entry; there the mouse chooses.
  for (const bool down : {true, false}) {
    const int32_t x = (list.left + list.right) / 2;
    const int32_t end = down ? list.bottom : list.top, in = down ? -1 : 1;
    for (const int deep : {100, 130, 4, 18}) {
      MemoryMovePointerTo(x, end + in * deep);
      script.Act(deep == 4 ? "wait 20000" : "settle");
    }
    Play({{"d u", down ? "v59" : "v0"}});
    if (down) script.Act("entry 0 d u");
  }
}

} // namespace
} // namespace framereel
