// The toolkit's menus, and the platform's menus as they come of them.
#include "platform/menus/menus.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/temporary_blocks.h"
#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_commands.h"
#include "platform/menus/menu_items.h"
#include "platform/menus/platform_menus.h"
#include "platform/records/later_modules.h"
#include "platform/windows/modal.h"
#include "support/script.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_input.h"
#include "win32/win32_menus.h"
#include "win32/win32_system.h"
#include "win32/windows/menu_record.h"
#include "win32/windows/window.h"

namespace framereel {
namespace {

std::string calls;

void Note(void* what) {
  calls += std::string(static_cast<const char*>(what)) + " ";
}

// What the platform shows of a menu: "(text)" greyed, a popup in brackets.
std::string Shown(HMENU menu) {
  std::string text;
  for (const MenuEntry& entry : menu->items) {
    text += text.empty() ? "" : " ";
    const std::string name = entry.flags & MF_SEPARATOR ? "-" : entry.text;
    text += entry.flags & MF_GRAYED ? Text('(', name, ')') : name;
    if (entry.popup) text += "[" + Shown(entry.popup) + "]";
  }
  return text;
}

class MenusTest : public ::testing::Test {
protected:
  MenusTest() {
    calls.clear();
    TheLaterModules().endEditSession = [](const KeyEvent*) { calls += "end "; };
  }

  // The letters as in SetItemShortcut and SetItemMnemonic; its function notes the text.
  static MenuItem* Item(Menu* menu, const char* text, char shortcut = 0, char mnemonic = 0) {
    MenuItem* item = NewMenuItem(text);
    SetItemShortcut(item, uint8_t(shortcut));
    SetItemMnemonic(item, uint8_t(mnemonic));
    SetItemFunction(item, Note, item->text);
    AddMenuItem(menu, item);
    return item;
  }

  // Apple with About, and File with New, a separator and Quit, on the main window.
  void MakeBar() {
    bar = NewMenuBar();
    apple = NewMenu("Apple");
    file = NewMenu("File");
    SetMenuMnemonic(file, 'f');
    Item(apple, "About...", 0, 'A');
    newItem = Item(file, "New", 'N', 'N');
    AddMenuItem(file, NewSeparator());
    quitItem = Item(file, "Quit", 'Q', 'x');
    AddMenu(bar, apple);
    AddMenu(bar, file);
    SetMenuBar(bar);
  }

  static std::string OnBar() {
    HMENU shown = TheMainWindow()->window->menuBar;
    return shown ? Shown(shown) : "none";
  }
  static std::string InSystemMenu() { return Shown(::GetSystemMenu(TheMainWindow()->window, FALSE)); }
  static std::string Heard() { return std::exchange(calls, ""); }
  static void With(uint8_t held, uint8_t key) {
    MemoryPressKey(held);
    MemoryTypeKey(key);
    MemoryReleaseKey(held);
    Settle();
  }

  WindowProgram program;
  MenuBar* bar = nullptr;
  Menu *apple = nullptr, *file = nullptr;
  MenuItem *newItem = nullptr, *quitItem = nullptr;
};

constexpr char kFirstSystemMenu[] = "&Restore &Move Mi&nimise - &Close\tAlt+F4";

TEST_F(MenusTest, AreThePlatformsWithEachChange) {
  MakeBar();
  EXPECT_EQ(OnBar(), "&File[&New\tCtrl+N - Quit\tCtrl+Q]"); // no x in Quit to mark
  EXPECT_EQ(InSystemMenu(), std::string(kFirstSystemMenu) + " - &About...");
  SetItemShortcut(newItem, 0);
  SetItemMnemonic(newItem, 'W');
  SetItemEnabled(quitItem, false);
  EXPECT_EQ(OnBar(), "&File[Ne&w - (Quit\tCtrl+Q)]");
  Menu* more = NewMenu("More");
  MenuItem* first = Item(more, "First");
  InsertMenuAfter(bar, nullptr, more);
  MenuItem* saved = NewMenuItem("Save");
  InsertMenuItemAfter(file, newItem, saved);
  EXPECT_EQ(OnBar(), "More[First] &File[Ne&w Save - (Quit\tCtrl+Q)]");
  RemoveMenuItem(saved);
  AddMenuItem(more, saved);
  FreeMenuItem(first);
  InsertMenuAfter(bar, file, more); // it moves
  EXPECT_EQ(OnBar(), "&File[Ne&w - (Quit\tCtrl+Q)] More[Save]");
  FreeMenu(apple);
  EXPECT_EQ(InSystemMenu(), kFirstSystemMenu);
  SetMenuBar(nullptr);
  EXPECT_EQ(OnBar(), "none");
  SetItemEnabled(quitItem, true);
  SetMenuBar(bar);
  EXPECT_EQ(OnBar(), "&File[Ne&w - Quit\tCtrl+Q] More[Save]");
  FreeMenuBar(bar);
  EXPECT_EQ(OnBar(), "none");
  EXPECT_TRUE(TheWindows().menus.empty());
}

TEST_F(MenusTest, WithoutAnItemThatCanBeChosenAreGreyedUntilThereIsOne) {
  MakeBar();
  SetItemEnabled(newItem, false);
  SetItemEnabled(quitItem, false);
  EXPECT_EQ(OnBar(), "(&File)[(&New\tCtrl+N) - (Quit\tCtrl+Q)]");
  SetMenuEnabled(file, false);
  SetItemEnabled(quitItem, true);
  EXPECT_EQ(OnBar(), "(&File)[(&New\tCtrl+N) - Quit\tCtrl+Q]"); // it is not to be
  SetItemEnabled(quitItem, false);
  SetMenuEnabled(file, true); // waits
  EXPECT_EQ(OnBar(), "(&File)[(&New\tCtrl+N) - (Quit\tCtrl+Q)]");
  Item(file, "More");
  EXPECT_EQ(OnBar(), "&File[(&New\tCtrl+N) - (Quit\tCtrl+Q) More]");
}

TEST_F(MenusTest, NumbersAreGivenAgain) {
  MakeBar();
  const uint32_t given = newItem->id, last = Item(file, "a")->id;
  FreeMenuItem(newItem);
  EXPECT_EQ(Item(file, "b")->id, given);
  EXPECT_EQ(Item(file, "c")->id, last + 1);
  Menu* menu = nullptr;
  MenuItem* item = nullptr;
  FindMenuItem(bar, given, &menu, &item);
  EXPECT_TRUE(menu == file && item->text == std::string("b"));
  FindMenuItem(bar, apple->id, &menu, &item);
  EXPECT_TRUE(menu == apple && !item);
  FindMenuItem(bar, 0, &menu, &item);
  EXPECT_EQ(menu, nullptr);
}

TEST_F(MenusTest, RunTheirItemsByMouseByLetterAndByShortcut) {
  MakeBar();
  Settle();
  With(VK_CONTROL, 'N');
  EXPECT_EQ(Heard(), "end New ");
  const auto afterwards = [](uint8_t key) { MemoryAt(::GetTickCount() + 50, [key] { MemoryTypeKey(key); }); };
  afterwards('N');
  With(VK_MENU, 'F');
  EXPECT_EQ(Heard(), "end end New ");
  afterwards('A');
  With(VK_MENU, VK_SPACE);
  EXPECT_EQ(Heard(), "end end About... ");
  SetItemEnabled(quitItem, false);
  const uint32_t beeps = TheMemoryDisplay().desktop.beeps;
  With(VK_CONTROL, 'Q');
  EXPECT_EQ(Heard(), "");
  EXPECT_EQ(TheMemoryDisplay().desktop.beeps, beeps + 1);
  With(VK_CONTROL, 'Z');
  EXPECT_EQ(Heard(), "end ");
  SetItemShortcut(newItem, 'C'); // as Copy does, it leaves an edit session alone
  With(VK_CONTROL, 'C');
  EXPECT_EQ(Heard(), "New ");
}

TEST_F(MenusTest, TellTheModalWindowAndSurviveWhatItDoes) {
  MakeBar();
  ChildWindow* popup = OpenTestWindow(kWindowPopup);
  Heard();
  SetWindowMethod(
      popup, &WindowMethods::menuCommand, +[](ChildWindow* window, MenuItem* item) {
        calls += std::string("told:") + item->text + " ";
        FreeMenuItem(item);
        CloseChildWindow(window);
      });
  TempScopeBegin();
  MenuCommand(newItem->id);
  TempScopeEnd();
  EXPECT_EQ(Heard(), "end told:New ");
}

// ---- The Edit menu -----------------------------------------------------------------------------------------------

class EditMenuTest : public MenusTest {
protected:
  EditMenuTest() {
    MakeBar();
    SetEditTitle(0, 'F', "File");
    SetEditTitle(1, 'E', "Edit");
    SetEditItem(0, 'X', 'T', "Cut");
    SetEditItem(1, 'C', 'C', "Copy");
    SetEditItem(2, 'V', 'P', "Paste");
    Item(NewMenu("Last"), "a");
  }
};

constexpr char kFile[] = "&File[&New\tCtrl+N - Quit\tCtrl+Q]";

TEST_F(EditMenuTest, StandsBehindItsNeighbourAndIsThereOnce) {
  Menu* last = NewMenu("Last");
  Item(last, "a");
  AddMenu(bar, last);
  BuildEditMenu(7);
  const std::string greyed = " (&Edit)[(Cu&t\tCtrl+X) (&Copy\tCtrl+C) (&Paste\tCtrl+V)] Last[a]";
  EXPECT_EQ(OnBar(), kFile + greyed);
  BuildEditMenu(7);
  EXPECT_EQ(OnBar(), kFile + greyed);
  EXPECT_TRUE(IsEditItem(ItemAt(MenuTitled(bar, "Edit"), 0)));
  EXPECT_FALSE(IsEditItem(newItem));
  SetEditEnabled(kEditCopy | kEditPaste);
  BuildEditMenu(kEditCopy);
  SetEditEnabled(kEditCopy | kEditPaste); // Paste is not there
  EXPECT_EQ(OnBar(), std::string(kFile) + " &Edit[&Copy\tCtrl+C] Last[a]");
  EXPECT_EQ(GetEditEnabled(), kEditCopy | kEditPaste);
  Item(MenuTitled(bar, "Edit"), "Own");
  BuildEditMenu(kEditCut);
  BuildEditMenu(kEditCut);
  EXPECT_EQ(OnBar(), std::string(kFile) + " &Edit[(Cu&t\tCtrl+X) - Own] Last[a]");
  FreeMenu(MenuTitled(bar, "Edit"));
  BuildEditMenu(0);
  EXPECT_EQ(OnBar(), std::string(kFile) + " Last[a]");
}

TEST_F(EditMenuTest, TellsItsTargetWhatIsChosenAndWhenItComesAndGoes) {
  BuildEditMenu(7);
  const auto told = [](void* name, uint16_t code) { calls += static_cast<char*>(name) + std::to_string(code) + " "; };
  char one[] = "one:", two[] = "two:";
  const EditTarget first = {told, one}, second = {told, two};
  EditTarget before = {};
  SetEditTarget(&first, &before);
  EXPECT_EQ(before.command, nullptr);
  SetEditEnabled(kEditCut | kEditPaste);
  With(VK_CONTROL, 'X');
  With(VK_CONTROL, 'C');
  EXPECT_EQ(Heard(), "one:8 one:1 ");
  SetEditTarget(&second, &before);
  EXPECT_EQ(before.data, one);
  With(VK_CONTROL, 'V');
  SetEditTarget(nullptr, nullptr);
  EXPECT_EQ(Heard(), "one:16 two:8 two:4 two:16 ");
  EXPECT_EQ(GetEditEnabled(), 0);
}

TEST_F(EditMenuTest, IsTheOnlyMenuThatAModalWindowLeaves) {
  BuildEditMenu(7);
  SetEditEnabled(kEditPaste);
  const std::string edit = " &Edit[(Cu&t\tCtrl+X) (&Copy\tCtrl+C) &Paste\tCtrl+V]", open = kFile + edit;
  const std::string blocked = "(&File)[&New\tCtrl+N - Quit\tCtrl+Q]" + edit;
  ChildWindow* modal = OpenTestWindow(kWindowModal);
  EXPECT_EQ(OnBar(), blocked);
  Menu* late = NewMenu("Late");
  Item(late, "a");
  AddMenu(bar, late);
  EXPECT_EQ(OnBar(), blocked + " (Late)[a]");
  CloseChildWindow(modal);
  EXPECT_EQ(OnBar(), open + " Late[a]");
  SetMenuEnabled(file, false);
  ChildWindow* again = OpenTestWindow(kWindowModal);
  FreeMenu(late);
  CloseChildWindow(again);
  EXPECT_EQ(OnBar(), blocked); // as it was before
}

} // namespace
} // namespace framereel
