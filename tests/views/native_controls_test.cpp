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
#include "toolkit/text/text_layout.h"
#include "views/view_scene.h"
#include "win32/input/clipboard.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

int16_t textWidth; // what fields take their text to need

EditField* DataOf(const View* view) {
  return static_cast<EditField*>(view->classData);
}

class NativeControls : public ViewScene {
protected:
  NativeControls() {
    textWidth = 80;
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
        [](View* v, const KeyEvent* e) { Say(v, e ? Text('.', int(e->character)) : "."); },
        [](View* v, int16_t width, int16_t) { Say(v, Text('=', width)); });
    DataOf(view)->naturalSize = [](const View*, int16_t* width, int16_t*) { *width = textWidth; };
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
  Play({{"edit f", ""}, {"show f", "f!"}, {"endedit f endedit f", "f."}}); // begins when it has been painted
  const struct {
    bool multiLine;
    const char *key, *heard;
  } cases[] = {{false, "tab", "f! f.9 aB"},    {true, "tab", "f! f.9 aB"}, {false, "esc", "f! f.27 aB"},
               {false, "enter", "f! f.13 aB"}, {true, "enter", "f! aB/"},  {true, "backspace", "f! a"}};
  for (const auto& one : cases) {
    EditFieldSetText(field, "old\ntext");
    Play({{"text? f", "old/text"}});
    DataOf(field)->multiLine = one.multiLine;
    Play({{(std::string("edit f A +shift B -shift ") + one.key + " text? f").c_str(), one.heard}});
    script.Act("endedit f");
    script.Heard();
    EXPECT_TRUE(MainHasTheKeyboard());
  }
  // It asks for the width of its text when that leaves its own, which is 80 pixels.
  script.Act("edit f");
  for (const int16_t width : {80, 60, 59, 81}) {
    textWidth = width;
    script.Act("A");
  }
  Play({{"", "f! f=59 f=81"}});
}

TEST_F(NativeControls, AFieldHasAnEdgeAndTheSizeOfItsText) {
  View* field = Shown("f", 10);
  EXPECT_EQ(PictureOf(field).substr(0, 2 * 81), std::string(79, '-') + ".\n-" + std::string(77, '#') + "-.\n");
  DataOf(field)->naturalSize = nullptr;
  EditFieldSetText(field, "word");
  ViewMakeCurrent(field);
  const TextSize word = MeasureLines("word");
  ViewFit(field);
  EXPECT_EQ(field->width, word.width + 7);
  EXPECT_EQ(field->height, word.height + 6);
}

TEST_F(NativeControls, ASessionEndsWithWhateverTakesTheKeyboardElsewhere) {
  View* field = Shown("f", 10);
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
  script.Act("wait 1"); // the bar comes, and the windows move down with what lies below it
  const auto choose = [](uint16_t index) { MenuCommand(ItemAt(MenuAt(CurrentMenuBar(), 0), index)->id); };
  script.Act("over w 14 20 d u");
  EXPECT_EQ(GetEditEnabled(), 0);
  script.Act("+shift right -shift");
  EXPECT_EQ(GetEditEnabled(), kEditCut | kEditCopy);
  choose(0);
  script.Heard();
  EXPECT_TRUE(HasEditSession(field)); // which the letter of the item tells
  Play({{"text? f", "ord"}});
  EXPECT_EQ(GetEditEnabled(), kEditPaste);
  choose(2);
  Play({{"text? f", "word"}});
  script.Act("endedit f");
  script.Heard();
  EXPECT_EQ(GetEditEnabled(), 0);
  choose(2);
  Play({{"text? f", "word"}});
}

} // namespace
} // namespace framereel
