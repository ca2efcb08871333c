// Native controls in Views: where the keyboard is, what an edit session lets through and when it ends, and what a click
// on a button leaves behind.
#include "core/memory.h"
#include "core/strings.h"
#include "platform/controls/edit_field.h"
#include "platform/controls/native_control.h"
#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_commands.h"
#include "platform/menus/menus.h"
#include "platform/menus/platform_menus.h"
#include "platform/windows/child_window.h"
#include "toolkit/controls/push_button.h"
#include "views/view_scene.h"
#include "win32/input/clipboard.h"

namespace framereel {
namespace {

int16_t textWidth; // what fields take their text to need

EditField* DataOf(const View* view) {
  return static_cast<EditField*>(view->classData);
}

void InitField(View* view) {
  view->width = 80;
  view->height = 40;
  auto* field = new EditField{};
  view->classData = field;
  const uint16_t id = ControlTableTake(&view->window->controls, view);
  field->control = CreateNativeControl(view, "edit", WS_CHILD | ES_MULTILINE, id);
  field->started = [](View* v) { Say(v, "!"); };
  field->finished = [](View* v, const KeyEvent* e) { Say(v, e ? Text('.', int(e->character)) : "."); };
  field->requestSize = [](View* v, int16_t width, int16_t) { Say(v, Text('=', width)); };
  field->naturalSize = [](const View*, int16_t* width, int16_t*) { *width = textWidth; };
  SubclassEditField(view);
  SetNativeFont(view, field->control, view->drawing, true);
  // A bevel of 3 pixels round it.
  SetNativeSize(view, field->control, 74, 34, 80, 40);
  SetNativePosition(view, field->control, int16_t(view->x + 3), int16_t(view->y + 3), view->x, view->y);
}

void Destroy(View* view) {
  DropEditSession(view);
  DestroyNativeControl(view);
  StrFree(DataOf(view)->text);
  delete DataOf(view);
}

ViewClass* NewFieldClass() {
  ViewClass* viewClass = ClassNew();
  viewClass->init = InitField;
  viewClass->destroy = Destroy;
  viewClass->shown = [](View* view, bool) { ShowNativeControl(DataOf(view)->control, true); };
  viewClass->nativeHandle = [](const View* view) { return DataOf(view)->control; };
  viewClass->nativeProcedure = [](const View* view) { return DataOf(view)->procedure; };
  return viewClass;
}

class NativeControls : public ViewScene {
protected:
  NativeControls() : fields(NewFieldClass()) {
    textWidth = 80;
    script.Add("edit", FocusEditField);
    script.Add("endedit", [](View*) { EndEditSession(nullptr); });
    script.Add("text?", [](View* view) {
      FetchEditText(view);
      std::string text = DataOf(view)->text;
      std::replace(text.begin(), text.end(), '\n', '/');
      Answer(text);
    });
  }
  ~NativeControls() override {
    script.Act("close w");
    MemFree(fields);
  }

  View* Shown(const char* name, const ViewClass* viewClass, int16_t x) {
    View* view = Make(viewClass, x, 10, name);
    script.Act(std::string("show ") + name);
    return view;
  }
  static bool MainHasTheKeyboard() { return ::GetFocus() == TheMainWindow()->window; }

  ViewClass* fields;
};

TEST_F(NativeControls, AClickOnAButtonTellsTheViewAndGivesTheKeyboardBack) {
  View* button = Shown("b", PushButtonClass(), 10);
  ViewResize(button, 80, 40);
  PushButtonSetCallback(button, [](View* view) { Say(view, "*"); });
  const HWND native = button->viewClass->nativeHandle(button);
  Play({{"over w 20 20 d", ""}});
  EXPECT_EQ(::GetFocus(), native);
  Play({{"u wait 5", "b*"}});
  EXPECT_TRUE(MainHasTheKeyboard());
  Play({{"d takemouse wait 5 u", ""}}); // a press that is taken away does so too
  EXPECT_TRUE(MainHasTheKeyboard());
  PushButtonSetCallback(button, ViewDestroy);
  script.Act("d u wait 5");
  EXPECT_TRUE(MainHasTheKeyboard());
  EXPECT_EQ(ControlTableTake(&Window()->controls, nullptr), 3); // the number is free again
}

TEST_F(NativeControls, ASessionTakesTextAndHandsTheKeyThatEndsItOn) {
  View* field = Make(fields, 10, 10, "f");
  Play({{"edit f", ""}, {"show f", "f!"}, {"endedit f endedit f", "f."}}); // begins when it has been painted
  const struct {
    bool multiLine;
    const char *key, *heard;
  } cases[] = {{false, "tab", "f! f.9 aB"},    {true, "tab", "f! f.9 aB"}, {false, "esc", "f! f.27 aB"},
               {false, "enter", "f! f.13 aB"}, {true, "enter", "f! aB/"},  {true, "backspace", "f! a"}};
  for (const auto& one : cases) {
    SetNativeText(DataOf(field)->control, "old\ntext");
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

TEST_F(NativeControls, ASessionEndsWithWhateverTakesTheKeyboardElsewhere) {
  View* field = Shown("f", fields, 10);
  Shown("g", fields, 100);
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
  View* field = Shown("f", fields, 10);
  SetNativeText(DataOf(field)->control, "word");
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
