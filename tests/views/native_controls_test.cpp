// Native controls in Views: where the keyboard is, what an edit session lets through and when it ends, and what a click
// on a button leaves behind.
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "core/memory.h"
#include "core/strings.h"
#include "platform/controls/edit_field.h"
#include "platform/controls/native_control.h"
#include "platform/controls/push_button.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/font_cache.h"
#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_commands.h"
#include "platform/menus/menus.h"
#include "platform/menus/platform_menus.h"
#include "platform/records/later_modules.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"
#include "support/window_program.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "toolkit/views_start.h"
#include "win32/input/clipboard.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

std::string calls;
int16_t textWidth; // what fields take their text to need

void Say(const std::string& what) {
  calls += what + " ";
}

// Both classes keep the record of an edit field, of which a button needs the first two fields.
EditField* DataOf(const View* view) {
  return static_cast<EditField*>(view->classData);
}

void InitControl(View* view, const char* className, DWORD style) {
  view->width = 80;
  view->height = 40;
  view->classData = new EditField{};
  const uint16_t id = ControlTableTake(&view->window->controls, view);
  DataOf(view)->control = CreateNativeControl(view, className, WS_CHILD | style, id);
}

void InitButton(View* view) {
  InitControl(view, "button", 0);
  SubclassButton(view, &DataOf(view)->procedure);
  SetNativeFont(view, DataOf(view)->control, view->drawing, true);
}

void InitField(View* view) {
  InitControl(view, "edit", ES_MULTILINE);
  EditField* field = DataOf(view);
  field->started = [](View*) { Say("started"); };
  field->finished = [](View*, const KeyEvent* e) { Say(e ? "finished:" + std::to_string(e->character) : "finished"); };
  field->requestSize = [](View*, int16_t w, int16_t) { Say("size:" + std::to_string(w)); };
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

ViewClass* NewControlClass(void (*init)(View*)) {
  ViewClass* viewClass = ClassNew();
  viewClass->init = init;
  viewClass->destroy = Destroy;
  viewClass->shown = [](View* view, bool) { ShowNativeControl(DataOf(view)->control, true); };
  viewClass->nativeHandle = [](const View* view) { return DataOf(view)->control; };
  viewClass->nativeProcedure = [](const View* view) { return DataOf(view)->procedure; };
  return viewClass;
}

class NativeControls : public ::testing::Test {
protected:
  NativeControls() : buttons((ViewsStartUp(), NewControlClass(InitButton))), fields(NewControlClass(InitField)) {
    buttons->nativeNotice = [](View*, uint16_t code) { Say("notice:" + std::to_string(code)); };
    LaterModules& later = TheLaterModules();
    saved = later;
    later.menuShortcut = [](const KeyEvent& event) {
      return Say(std::string("shortcut:") + char(event.unshifted)), true;
    };
    window = OpenTestWindow(kWindowUnclamped);
    textWidth = 80;
    calls.clear();
  }
  ~NativeControls() override {
    TheLaterModules() = saved;
    CloseChildWindow(window);
    MemFree(buttons);
    MemFree(fields);
  }

  View* Shown(const ViewClass* viewClass, int16_t x, int16_t y) {
    View* view = ViewCreateTop(viewClass, window, x, y);
    ViewShow(view);
    Settle();
    return view;
  }
  void Click(int16_t x, int16_t y) {
    Press(window, x, y);
    Release();
  }
  void With(uint8_t held, uint8_t key) {
    MemoryPressKey(held);
    Type(key);
    MemoryReleaseKey(held);
    Settle();
  }
  std::string Heard() { return std::exchange(calls, ""); }
  std::string TextOf(View* view) {
    FetchEditText(view);
    return DataOf(view)->text;
  }

  ViewClass *buttons, *fields;
  LaterModules saved;
  WindowProgram program;
  ChildWindow* window;
};

TEST_F(NativeControls, AClickTellsTheViewAndGivesTheKeyboardBack) {
  View* button = Shown(buttons, 10, 10);
  Press(window, 20, 20);
  EXPECT_EQ(::GetFocus(), DataOf(button)->control);
  Release();
  EXPECT_EQ(Heard(), "notice:0 ");
  RunFor(5);
  EXPECT_EQ(::GetFocus(), TheMainWindow()->window);
  // So does a press that is taken away.
  Press(window, 20, 20);
  MemoryTakeCapture();
  RunFor(5);
  EXPECT_EQ(::GetFocus(), TheMainWindow()->window);
  Release();
  EXPECT_EQ(Heard(), "");
}

TEST_F(NativeControls, AButtonMayEndInItsOwnNoticeWithTheKeyboardBack) {
  View* button = Shown(buttons, 10, 10);
  const Font* font = button->drawing->font;
  const uint16_t held = font->selectCount;
  buttons->nativeNotice = [](View* view, uint16_t) { ViewDestroy(view); };
  Click(20, 20);
  RunFor(5);
  EXPECT_EQ(::GetFocus(), TheMainWindow()->window);
  EXPECT_LT(font->selectCount, held);
  EXPECT_EQ(ControlTableTake(&window->controls, nullptr), 3); // the number is free again
}

TEST_F(NativeControls, ASessionTakesTextAndHandsTheKeyThatEndsItOn) {
  View* field = ViewCreateTop(fields, window, 10, 10);
  // The first time it has not been painted.
  FocusEditField(field);
  Settle();
  EXPECT_EQ(Heard(), "");
  ViewShow(field);
  Settle();
  EXPECT_EQ(Heard(), "started ");
  EndEditSession(nullptr);
  EndEditSession(nullptr);
  EXPECT_EQ(Heard(), "finished ");
  struct Case {
    bool multiLine;
    uint8_t key;
    const char* heard;
    const char* text;
  };
  const Case cases[] = {
      {false, VK_TAB, "finished:9 ", "aB"},
      {true, VK_TAB, "finished:9 ", "aB"},
      {false, VK_ESCAPE, "finished:27 ", "aB"},
      {false, VK_RETURN, "finished:13 ", "aB"},
      {true, VK_RETURN, "", "aB\n"},
      {true, VK_BACK, "", "a"},
  };
  for (const Case& one : cases) {
    SetNativeText(DataOf(field)->control, "old\ntext");
    EXPECT_EQ(TextOf(field), "old\ntext");
    DataOf(field)->multiLine = one.multiLine;
    FocusEditField(field);
    Type('A');
    With(VK_SHIFT, 'B');
    EXPECT_EQ(Heard(), "started ");
    Type(one.key);
    Settle();
    EXPECT_EQ(Heard(), one.heard) << int(one.key);
    EXPECT_EQ(TextOf(field), one.text) << int(one.key);
    EndEditSession(nullptr);
    Heard();
    EXPECT_EQ(::GetFocus(), TheMainWindow()->window);
  }
  // It asks for the width of its text when that leaves its own, which is 80 pixels.
  FocusEditField(field);
  for (const int16_t width : {80, 60, 59, 81}) {
    textWidth = width;
    Type('A');
    Settle();
  }
  EXPECT_EQ(Heard(), "started size:59 size:81 ");
}

TEST_F(NativeControls, ASessionEndsWithWhateverTakesTheKeyboardElsewhere) {
  View* field = Shown(fields, 10, 10);
  View* other = Shown(fields, 100, 10);
  Click(30, 30);
  EXPECT_TRUE(HasEditSession(field));
  EXPECT_EQ(Heard(), "started ");
  Click(11, 11); // in its own bevel
  EXPECT_EQ(Heard(), "");
  Click(130, 30); // in another field
  EXPECT_TRUE(HasEditSession(other));
  EXPECT_EQ(Heard(), "finished started ");
  Click(50, 90); // beside them
  EXPECT_EQ(Heard(), "finished ");
  Click(130, 30);
  With(VK_CONTROL, 'C');
  EXPECT_EQ(Heard(), "started shortcut:c ");
  FocusEditField(field);
  EXPECT_EQ(Heard(), "finished started ");
  LeaveProgram();
  EXPECT_EQ(Heard(), "finished ");
  ReturnToProgram();
  FocusEditField(field);
  window->methods.menuCommand(window, nullptr);
  EXPECT_EQ(Heard(), "started finished ");
  FocusEditField(field);
  ViewDestroy(field);
  EXPECT_EQ(Heard(), "started ");
  EXPECT_EQ(::GetFocus(), TheMainWindow()->window);
}

TEST_F(NativeControls, CutCopyAndPasteFollowSelectionAndClipboard) {
  View* field = Shown(fields, 10, 10);
  SetNativeText(DataOf(field)->control, "word");
  SetClipboardText("");
  SetEditTitle(1, 'E', "Edit");
  for (uint16_t i = 0; i < 3; ++i) SetEditItem(i, uint8_t("XCV"[i]), 0, "item");
  SetMenuBar(NewMenuBar());
  BuildEditMenu(kEditCut | kEditCopy | kEditPaste);
  RunFor(1); // the bar comes, and the windows move down with what lies below it
  const auto choose = [](uint16_t index) { MenuCommand(ItemAt(MenuAt(CurrentMenuBar(), 0), index)->id); };
  Click(14, 20);
  EXPECT_EQ(GetEditEnabled(), 0);
  With(VK_SHIFT, VK_RIGHT);
  EXPECT_EQ(GetEditEnabled(), kEditCut | kEditCopy);
  choose(0);
  EXPECT_TRUE(HasEditSession(field)); // which the letter of the item tells
  EXPECT_EQ(TextOf(field), "ord");
  EXPECT_EQ(GetEditEnabled(), kEditPaste);
  choose(2);
  EXPECT_EQ(TextOf(field), "word");
  EndEditSession(nullptr);
  EXPECT_EQ(GetEditEnabled(), 0);
  choose(2);
  EXPECT_EQ(TextOf(field), "word");
}

} // namespace
} // namespace framereel
