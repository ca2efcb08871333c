// Controls by script: what presses and keys do to them, where the keyboard is, and what stands on the screen.
#include "platform/drawing/font_cache.h"
#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_commands.h"
#include "platform/menus/menus.h"
#include "platform/menus/platform_menus.h"
#include "toolkit/controls/check_box.h"
#include "toolkit/controls/edit_field.h"
#include "toolkit/controls/popup.h"
#include "toolkit/controls/popup_list.h"
#include "toolkit/controls/push_button.h"
#include "toolkit/controls/separator.h"
#include "views/view_scene.h"
#include "win32/input/clipboard.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

using Controls = ViewScene;

TEST_F(Controls, LooksAreDrawn) {
  View* separator = Make(SeparatorClass());
  SeparatorSetKind(separator, 2);
  script.Act("resize v 8 9 fit v resize v 8 0");
  script.Act("show v");
  EXPECT_EQ(PictureOf(separator), "........\n.######.\n........\n.######.\n........\n");
  View* box = Make(CheckBoxClass(), 50, 50);
  script.Act("resize v 20 16 show v");
  const std::string empty = PictureOf(box);
  CheckBoxSetValue(box, true, true);
  script.Act("settle");
  EXPECT_NE(PictureOf(box), empty);
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

// ---- Native controls ---------------------------------------------------------------------------------------------

bool MainHasTheKeyboard() {
  return ::GetFocus() == TheMainWindow()->window;
}

TEST_F(Controls, AClickOnAButtonTellsTheViewAndGivesTheKeyboardBack) {
  View* button = Make(PushButtonClass(), 10, 10, "b");
  PushButtonSetCallback(button, [](View* view) { Say(view, "*"); });
  script.Act("resize b 80 40 show b");
  const Font* font = button->drawing->font;
  Play({{"over w 20 20 d", ""}});
  EXPECT_EQ(::GetFocus(), button->viewClass->nativeHandle(button));
  Play({{"u wait 5", "b*"}});
  EXPECT_TRUE(MainHasTheKeyboard());
  Play({{"d takemouse wait 5 u", ""}}); // a press that is taken away does so too
  EXPECT_TRUE(MainHasTheKeyboard());
  const uint16_t held = font->selectCount;
  PushButtonSetCallback(button, ViewDestroy);
  script.Act("d u wait 5");
  EXPECT_TRUE(MainHasTheKeyboard());
  EXPECT_LT(font->selectCount, held);
  EXPECT_EQ(ControlTableTake(&Window()->controls, nullptr), 3); // the number is free again
}

// The session begins ("!") when the field has the keyboard, and ends (".", with the key) with whatever takes it
// elsewhere.
TEST_F(Controls, AnEditFieldTakesTextAndTheEditMenuUntilItsSessionEnds) {
  for (const int16_t x : {10, 100}) {
    View* field = Make(EditFieldClass(), x, 10, x == 10 ? "f" : "g");
    EditFieldSetFunctions(
        field, [](View* v) { Say(v, "!"); },
        [](View* v, const KeyEvent* e) { Say(v, e ? Text('.', int(e->character)) : "."); }, nullptr);
    ViewResize(field, 80, 40);
  }
  SetClipboardText("");
  SetEditTitle(1, 'E', "Edit");
  for (uint16_t i = 0; i < 3; ++i) SetEditItem(i, uint8_t("XCV"[i]), 0, "item");
  SetMenuBar(NewMenuBar());
  BuildEditMenu(kEditCut | kEditCopy | kEditPaste);
  script.Add("edit", FocusEditField);
  script.Add("text?", [](View* view) { Answer(EditFieldText(view)); });
  script.Add("old", [](View* view) { EditFieldSetText(view, "old"); });
  script.Add("can?", [] { Answer(std::to_string(GetEditEnabled())); });
  script.Add("choose", [](uint16_t index) { MenuCommand(ItemAt(MenuAt(CurrentMenuBar(), 0), index)->id); });
  Play({{"wait 1 edit f", ""},
        {"show f show g", "f!"}, // when it has been painted
        {"esc old f edit f A +shift B -shift tab text? f", "f.27 f! f.9 aB"},
        {"old f edit f A esc text? f edit f enter", "f! f.27 a f! f.13"},
        {"old f over w 14 20 d u can?", "f! 0"},
        {"+shift right -shift can? choose 0 text? f can? choose 2 text? f", "3 ld 4 old"},
        {"over w 11 11 d u", ""}, // in its own bevel
        {"over w 130 30 d u can?", "f. g! 4"},
        {"over w 50 90 d u can? choose 2 text? f", "g. 0 old"}, // beside them
        {"edit g +ctrl C -ctrl edit f leave return edit f", "g! g. f! f. f!"},
        {"destroy f", ""}});
  EXPECT_TRUE(MainHasTheKeyboard());
}

// ---- Popups ------------------------------------------------------------------------------------------------------

class Popups : public ViewScene {
protected:
  Popups() {
    static const char* const kEntries[] = {"one", "two", "three"};
    PopupSetItems(popup, 3, kEntries);
    PopupSetCallback(popup, [](View* view, uint16_t index) { Say(view, std::to_string(index)); });
    // Over an entry of the list, with the first one selected, a pixel beside the last time.
    script.Add("entry", [this](int entry) {
      jitter = 1 - jitter;
      const int row = popup->height - 5 + 1;
      script.Act(Text("over w ", 115 + jitter, ' ', 32 + entry * row + row / 2));
    });
    script.Add("list?", [] { Answer(PopupListIsOpen() ? "open" : "shut"); });
    script.Act("fit v show v");
    script.Heard();
  }

  View* popup = Make(PopupClass(), 100, 30);
  int jitter = 0;
};

TEST_F(Popups, AreDraggedThroughOrClickedOpenAndClickedAgain) {
  Play({{"entry 0 d list? entry 1 entry 1 entry 2 u list?", "open v2 shut"}});
  EXPECT_EQ(PopupSelected(popup), 2);
  PopupSetSelected(popup, 0);
  Play({{"entry 0 d u list? entry 0 entry 1 entry 1 d u list?", "open v1 shut"}});
}

TEST_F(Popups, CloseWithoutAChoiceAndStayShutWhileDisabled) {
  Play({{"entry 0 d entry 1 entry 2 entry 0 u list?", "shut"}, // on the selected one
        {"entry 0 d entry 1 entry 2 over w 5 40 u list?", "shut"},
        {"entry 0 d u entry 1 entry 2 over w 5 90 d list? u", "shut"},
        {"entry 0 d u left list? esc list?", "open shut"},
        {"entry 0 d entry 1 entry 2 left list? esc list? u", "open shut"},
        {"entry 0 d u leave list? return", "shut"},
        {"disable v entry 0 d u list? enable v", "shut"},
        {"entry 0 d u list? destroy v list?", "open shut"}});
}

TEST_F(Popups, ScrollToBothEndsWhenTheListIsTooHigh) {
  const std::vector<const char*> texts(60, "entry");
  PopupSetItems(popup, 60, texts.data());
  PopupSetSelected(popup, 30);
  // Beyond the end the list runs until it has shown its last entry; there the mouse chooses.
  for (const bool down : {true, false}) {
    script.Act("entry 0 d u");
    const PixelRect list = TheMemoryDesktop().windows.front()->place;
    EXPECT_LE(list.bottom - list.top, TheMainWindow()->geometry.clientHeight - 8 + 2); // with its border
    const int32_t x = (list.left + list.right) / 2, end = down ? list.bottom : list.top, in = down ? -1 : 1;
    for (const int deep : {100, 130, 4, 18}) {
      MemoryMovePointerTo(x, end + in * deep);
      script.Act(deep == 4 ? "wait 20000" : "settle");
    }
    Play({{"d u", down ? "v59" : "v0"}});
  }
}

} // namespace
} // namespace framereel
