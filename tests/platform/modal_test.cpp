// Which window is modal, which is active, and where the keyboard goes.
#include "platform/windows/modal.h"

#include <gtest/gtest.h>
#include <string>

#include "core/notices.h"
#include "platform/drawing/current_port.h"
#include "platform/records/later_modules.h"
#include "platform/windows/active_window.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"
#include "win32/windows/window.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

std::string calls;

class ModalTest : public ::testing::Test {
protected:
  ModalTest() { calls.clear(); }
  ~ModalTest() override {
    TheLaterModules().blockMenus = [](bool) {};
  }

  ChildWindow* Open(const char* title, uint32_t flags) {
    ChildWindow* window = OpenChildWindow(nullptr, title, flags | kWindowUnclamped);
    SetWindowMethod(
        window, &WindowMethods::activated, +[](ChildWindow* activated) {
          EXPECT_EQ(CurrentPort(), &activated->port);
          calls += std::string("+") + activated->title;
        });
    SetWindowMethod(
        window, &WindowMethods::deactivated,
        +[](ChildWindow* deactivated) { calls += std::string("-") + deactivated->title; });
    ShowChildWindow(window);
    Settle();
    return window;
  }

  bool MainIsEnabled() { return IsEnabled(TheMainWindow()->window); }

  WindowProgram program;
};

// ---- Modal windows -----------------------------------------------------------------------------------------------

TEST_F(ModalTest, ModalWindowsGiveTheStateBackOneByOneInWhateverOrderTheyGo) {
  TheLaterModules().blockMenus = [](bool block) { calls += block ? "block " : "free "; };
  ChildWindow* one = OpenTestWindow(kWindowModal);
  EXPECT_FALSE(MainIsEnabled());
  EXPECT_TRUE(ModalIsBlocking());
  EXPECT_EQ(TheWindows().focus, one->window);
  ChildWindow* two = OpenTestWindow(kWindowModal);
  ChildWindow* three = OpenTestWindow(kWindowModal);
  CloseChildWindow(two);
  EXPECT_EQ(GetModalWindow(), three);
  EXPECT_FALSE(IsEnabled(one->window));
  BringChildWindowForward(one);
  EXPECT_EQ(GetModalWindow(), one);
  EXPECT_TRUE(IsEnabled(one->window));
  EXPECT_FALSE(IsEnabled(three->window));
  CloseChildWindow(one);
  EXPECT_EQ(GetModalWindow(), three);
  EXPECT_FALSE(MainIsEnabled());
  CloseChildWindow(three);
  Settle();
  EXPECT_EQ(GetModalWindow(), nullptr);
  EXPECT_TRUE(MainIsEnabled());
  EXPECT_EQ(TheWindows().focus, TheMainWindow()->window);
  EXPECT_EQ(calls, "block free ");
}

TEST_F(ModalTest, APopupDoesNotBlockAndGoesWhenSomethingElseBegins) {
  const auto open = [] {
    ChildWindow* popup = OpenTestWindow(kWindowPopup);
    SetWindowMethod(
        popup, &WindowMethods::menuCommand, +[](ChildWindow* chosenIn, MenuItem* item) {
          calls += item ? "?" : "go ";
          CloseChildWindow(chosenIn);
        });
    return popup;
  };
  const ChildWindow* first = open();
  EXPECT_EQ(GetModalWindow(), first);
  EXPECT_FALSE(ModalIsBlocking());
  EXPECT_TRUE(MainIsEnabled());
  const Point p = OnScreenInMain(400, 300);
  MemoryClick(p.h, p.v);
  Settle();
  EXPECT_EQ(calls, "go ");
  open();
  Type(VK_MENU);
  EXPECT_EQ(calls, "go go ");
  open();
  LeaveProgram();
  EXPECT_EQ(calls, "go go go ");
  EXPECT_EQ(GetModalWindow(), nullptr);
  DismissPopup();
  EXPECT_EQ(calls, "go go go ");
}

// ---- The active window -------------------------------------------------------------------------------------------

TEST_F(ModalTest, TheTopmostDocumentIsActiveUntilAModalWindowComes) {
  ChildWindow *a = Open("a", 0), *b = Open("b", 0);
  Open("palette", kWindowPalette);
  Open("popup", kWindowPopup);
  EXPECT_EQ(ActiveWindow(), b);
  BringChildWindowForward(a);
  EXPECT_EQ(ActiveWindow(), a);
  ChildWindow* m = Open("m", kWindowModal);
  EXPECT_EQ(ActiveWindow(), m);
  CloseChildWindow(m);
  Settle();
  EXPECT_EQ(ActiveWindow(), a);
  SendChildWindowBack(a);
  EXPECT_EQ(ActiveWindow(), b);
  CloseChildWindow(b);
  EXPECT_EQ(ActiveWindow(), a);
}

TEST_F(ModalTest, EachChangeIsToldOnceToBothSides) {
  ChildWindow* a = Open("a", 0);
  EXPECT_EQ(calls, "+a");
  ChildWindow* m = Open("m", kWindowModal);
  EXPECT_EQ(calls, "+a-a+m");
  calls.clear();
  LeaveProgram();
  EXPECT_EQ(calls, "-m");
  EXPECT_EQ(ActiveWindow(), nullptr);
  EXPECT_FALSE(ActiveGet());
  ReturnToProgram();
  EXPECT_EQ(calls, "-m+m");
  EXPECT_TRUE(ActiveGet());
  CloseChildWindow(m);
  Settle();
  EXPECT_TRUE(a->activated);
  EXPECT_EQ(calls.substr(calls.size() - 2), "+a");
}

TEST_F(ModalTest, ASystemDialogPutsTheActiveWindowToSleep) {
  ChildWindow *a = Open("a", 0), *b = Open("b", 0);
  calls.clear();
  SuspendActivation();
  EXPECT_EQ(calls, "-b");
  BringChildWindowForward(a);
  EXPECT_EQ(ActiveWindow(), b);
  ResumeActivation();
  EXPECT_EQ(calls, "-b+b");
  EvaluateActiveWindow();
  EXPECT_EQ(ActiveWindow(), a);
}

// The colour of the main window's caption, in a place without letters and boxes.
uint32_t CaptionPixel() {
  const MainWindow* main = TheMainWindow();
  RunFor(60);
  return MemoryPixel(main->originX + main->geometry.outerWidth / 2, main->originY + main->geometry.insetTop / 2);
}

TEST_F(ModalTest, TheMainCaptionIsLitAsLongAsTheProgramHasTheKeyboard) {
  SetMainClientSize(nullptr, 400, 300);
  Settle();
  const uint32_t lit = CaptionPixel();
  ChildWindow* m = Open("m", kWindowModal);
  EXPECT_EQ(CaptionPixel(), lit);
  LeaveProgram();
  EXPECT_NE(CaptionPixel(), lit);
  ReturnToProgram();
  CloseChildWindow(m);
  Settle();
  EXPECT_EQ(CaptionPixel(), lit);
}

} // namespace
} // namespace framereel
