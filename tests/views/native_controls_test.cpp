// Native controls in Views: where the keyboard is, what an edit session lets through and when it ends, and what a click
// on a button leaves behind.
#include <algorithm>

#include "platform/drawing/draw_state.h"
#include "platform/drawing/font_cache.h"
#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_commands.h"
#include "platform/menus/menus.h"
#include "platform/menus/platform_menus.h"
#include "toolkit/controls/edit_field.h"
#include "toolkit/controls/push_button.h"
#include "views/view_scene.h"
#include "win32/input/clipboard.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

EditField* DataOf(const View* view) {
  return static_cast<EditField*>(view->classData);
}

class NativeControls : public ViewScene {
protected:
  NativeControls() {
    script.Add("edit", FocusEditField);
    script.Add("endedit", [](View*) { EndEditSession(nullptr); });
    script.Add("text?", [](View* view) {
      std::string text = EditFieldText(view);
      std::replace(text.begin(), text.end(), '\n', '/');
      Answer(text);
    });
  }

  // 80 by 40 pixels.
  View* Field(const char* name, int16_t x) {
    View* view = Make(EditFieldClass(), x, 10, name);
    EditFieldSetFunctions(
        view, [](View* v) { Say(v, "!"); },
        [](View* v, const KeyEvent* e) { Say(v, e ? Text('.', int(e->character)) : "."); }, nullptr);
    ViewResize(view, 80, 40);
    return view;
  }
  View* Shown(const char* name, int16_t x) {
    View* view = Field(name, x);
    script.Act(std::string("show ") + name);
    return view;
  }
  static bool MainHasTheKeyboard() { return ::GetFocus() == TheMainWindow()->window; }
};

TEST_F(NativeControls, AClickOnAButtonTellsTheViewAndGivesTheKeyboardBack) {
  View* button = Make(PushButtonClass(), 10, 10, "b");
  PushButtonSetCallback(button, [](View* view) { Say(view, "*"); });
  ViewResize(button, 80, 40);
  script.Act("show b");
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

TEST_F(NativeControls, ASessionTakesTextAndHandsTheKeyThatEndsItOn) {
  View* field = Field("f", 10);
  script.Add("old", [field] { EditFieldSetText(field, "old\ntext"); });
  script.Add("lines", [field] { DataOf(field)->multiLine = true; });
  Play({{"edit f", ""},
        {"show f", "f!"},
        {"endedit f endedit f", "f."}, // begins when it has been painted
        {"old text? f edit f A +shift B -shift tab text? f", "old/text f! f.9 aB"},
        {"old edit f A esc text? f", "f! f.27 a"},
        {"old edit f A enter text? f", "f! f.13 a"},
        {"lines old edit f A B backspace enter text? f tab", "f! a/ f.9"}});
  EXPECT_TRUE(MainHasTheKeyboard());
}

TEST_F(NativeControls, ASessionEndsWithWhateverTakesTheKeyboardElsewhere) {
  View* field = Shown("f", 10);
  EXPECT_EQ(PictureOf(field).substr(0, 2 * 81), std::string(79, '-') + ".\n-" + std::string(77, '#') + "-.\n");
  Shown("g", 100);
  script.Heard();
  Play({{"over w 30 30 d u", "f!"},
        {"over w 11 11 d u", ""}, // in its own bevel
        {"over w 130 30 d u", "f. g!"},
        {"over w 50 90 d u", "g."}, // beside them
        {"over w 130 30 d u +ctrl C -ctrl", "g! shortcut:c"},
        {"edit f", "g. f!"},
        {"leave", "f."},
        {"return edit f", "f!"}});
  Window()->methods.menuCommand(Window(), nullptr);
  Play({{"edit f", "f. f!"}});
  ViewDestroy(field);
  Play({{"", ""}});
  EXPECT_TRUE(MainHasTheKeyboard());
}

TEST_F(NativeControls, CutCopyAndPasteFollowSelectionAndClipboard) {
  View* field = Shown("f", 10);
  EditFieldSetText(field, "word");
  SetClipboardText("");
  SetEditTitle(1, 'E', "Edit");
  for (uint16_t i = 0; i < 3; ++i) SetEditItem(i, uint8_t("XCV"[i]), 0, "item");
  SetMenuBar(NewMenuBar());
  BuildEditMenu(kEditCut | kEditCopy | kEditPaste);
  script.Add("can?", [] { Answer(std::to_string(GetEditEnabled())); });
  script.Add("choose", [](uint16_t index) { MenuCommand(ItemAt(MenuAt(CurrentMenuBar(), 0), index)->id); });
  script.Act("wait 1"); // the bar comes, and the windows move down with what lies below it
  Play({{"over w 14 20 d u can?", "f! 0"},
        {"+shift right -shift can?", "3"},
        {"choose 0 text? f can?", "ord 4"},
        {"choose 2 text? f", "word"},
        {"endedit f can? choose 2 text? f", "f. 0 word"}});
}

} // namespace
} // namespace framereel
