// The toolkit's menus by script, and the platform's menus as they come of them.
#include "platform/menus/menus.h"

#include <gtest/gtest.h>

#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_commands.h"
#include "platform/menus/menu_items.h"
#include "platform/menus/platform_menus.h"
#include "platform/records/later_modules.h"
#include "support/script.h"
#include "support/window_program.h"
#include "win32/memory/memory_display.h"
#include "win32/win32_menus.h"
#include "win32/windows/menu_record.h"
#include "win32/windows/window.h"

namespace framereel {

namespace {

// By their texts; "-" is none.
std::map<std::string, Menu*> menus;
std::map<std::string, MenuItem*> items;

} // namespace

template <> Menu* Told<Menu*>(std::istream& in) {
  return menus[Word(in)];
}
template <> MenuItem* Told<MenuItem*>(std::istream& in) {
  return items[Word(in)];
}
template <> char Told<char>(std::istream& in) { // "-" is none
  const char letter = Word(in)[0];
  return letter == '-' ? '\0' : letter;
}

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
    if (entry.popup) text += Text('[', Shown(entry.popup), ']');
  }
  return text;
}

// On the main window Apple with About, and File with New, a separator and Quit.
//
// Words: "menu NAME" and "item NAME MENU" make them, and an item notes its name when it is chosen; "last MENU" and
// "behind MENU MENU" put a menu onto the bar; "edit" and "canedit" take a mask of the Edit menu's items; "modal" opens
// a window and "close" closes it.
class MenusTest : public ::testing::Test {
protected:
  MenusTest() {
    calls.clear(), menus.clear(), items.clear();
    TheLaterModules().endEditSession = [](const KeyEvent*) { calls += "end "; };
    AddWords();
    script.settle = Settle;
    script.Act("menu Apple menu File item About... Apple item New File separator File item Quit File letter About... A "
               "key New N letter New N key Quit Q letter Quit x last Apple last File bar 1");
    SetMenuMnemonic(menus["File"], 'f');
  }

  void AddWords() {
    script.Add("key", [](MenuItem* item, char letter) { SetItemShortcut(item, uint8_t(letter)); });
    script.Add("letter", [](MenuItem* item, char letter) { SetItemMnemonic(item, uint8_t(letter)); });
    script.Add("enable", [](MenuItem* item) { SetItemEnabled(item, true); });
    script.Add("grey", [](MenuItem* item) { SetItemEnabled(item, false); });
    script.Add("free", FreeMenuItem);
    script.Add("freemenu", FreeMenu);
    script.Add("separator", [](Menu* menu) { AddMenuItem(menu, NewSeparator()); });
    script.Add("last", [this](Menu* menu) { AddMenu(bar, menu); });
    script.Add("behind", [this](Menu* before, Menu* menu) { InsertMenuAfter(bar, before, menu); });
    script.Add("bar", [this](int on) { SetMenuBar(on ? bar : nullptr); });
    script.Add("edit",
               [](uint16_t mask) { BuildEditMenu(mask), menus["Edit"] = MenuTitled(CurrentMenuBar(), "Edit"); });
    script.Add("canedit", SetEditEnabled);
    script.Add("modal", [this] { modal = OpenTestWindow(kWindowModal); });
    script.Add("close", [this] { CloseChildWindow(modal); });
    script.words["menu"] = [](std::istream& in) {
      const std::string name = Word(in);
      menus[name] = NewMenu(name.c_str());
    };
    script.words["item"] = [](std::istream& in) {
      const std::string name = Word(in);
      MenuItem* item = items[name] = NewMenuItem(name.c_str());
      SetItemFunction(item, Note, item->text);
      AddMenuItem(Told<Menu*>(in), item);
    };
  }

  static std::string OnBar() {
    HMENU shown = TheMainWindow()->window->menuBar;
    return shown ? Shown(shown) : "none";
  }
  static std::string InSystemMenu() { return Shown(::GetSystemMenu(TheMainWindow()->window, FALSE)); }
  // What stands on the bar behind each step.
  void Walk(std::initializer_list<std::pair<const char*, std::string>> steps) {
    for (const auto& [words, shown] : steps) {
      script.Act(words);
      EXPECT_EQ(OnBar(), shown) << words;
    }
  }

  WindowProgram program;
  MenuBar* bar = NewMenuBar();
  ChildWindow* modal = nullptr;
  Script script;
};

TEST_F(MenusTest, AreThePlatformsWithEachChange) {
  constexpr char kSystemMenu[] = "&Restore &Move Mi&nimise - &Close\tAlt+F4";
  EXPECT_EQ(InSystemMenu(), std::string(kSystemMenu) + " - &About...");
  Walk({
      {"", "&File[&New\tCtrl+N - Quit\tCtrl+Q]"}, // no x in Quit to mark
      {"key New - letter New W grey Quit", "&File[Ne&w - (Quit\tCtrl+Q)]"},
      {"menu More item First More item Save More free First behind - More", "More[Save] &File[Ne&w - (Quit\tCtrl+Q)]"},
      {"behind File More", "&File[Ne&w - (Quit\tCtrl+Q)] More[Save]"}, // it moves
      {"freemenu Apple bar 0", "none"},
      // A menu without an item that can be chosen is greyed until there is one.
      {"freemenu More grey New bar 1", "(&File)[(Ne&w) - (Quit\tCtrl+Q)]"},
      {"enable Quit", "&File[(Ne&w) - Quit\tCtrl+Q]"},
  });
  EXPECT_EQ(InSystemMenu(), kSystemMenu);
  FreeMenuBar(bar);
  EXPECT_EQ(OnBar(), "none");
  EXPECT_TRUE(TheWindows().menus.empty());
}

TEST_F(MenusTest, RunTheirItemsByMouseByLetterAndByShortcut) {
  const std::pair<const char*, const char*> steps[] = {
      {"ctrl+N", "end New "},
      {"later N . alt+F wait 30", "end end New "},
      {"later A . alt+space wait 30", "end end About... "},
      {"grey Quit ctrl+Q", ""}, // a beep
      {"ctrl+Z", "end "},
      {"key New C ctrl+C", "New "}, // as Copy does, it leaves an edit session alone
  };
  const uint32_t beeps = TheMemoryDisplay().desktop.beeps;
  for (const auto& [words, called] : steps) {
    calls.clear();
    script.Act(words);
    EXPECT_EQ(calls, called) << words;
  }
  EXPECT_EQ(TheMemoryDisplay().desktop.beeps, beeps + 1);
  const auto tell = [](ChildWindow*, MenuItem* item) { calls += std::string("told:") + item->text + " "; };
  SetWindowMethod(OpenTestWindow(kWindowPopup), &WindowMethods::menuCommand, +tell);
  MenuCommand(items["New"]->id);
  EXPECT_EQ(calls, "New told:New New ");
}

TEST_F(MenusTest, TheEditMenuStandsBehindItsNeighbourAndIsTheOnlyOneThatAModalWindowLeaves) {
  SetEditTitle(0, 'F', "File");
  SetEditTitle(1, 'E', "Edit");
  SetEditItem(0, 'X', 'T', "Cut");
  SetEditItem(1, 'C', 'C', "Copy");
  script.Act("menu Last item a Last last Last");
  const std::string file = "&File[&New\tCtrl+N - Quit\tCtrl+Q]", blocked = "(&File)[&New\tCtrl+N - Quit\tCtrl+Q]";
  Walk({
      {"edit 3", Text(file, " (&Edit)[(Cu&t\tCtrl+X) (&Copy\tCtrl+C)] Last[a]")},
      {"canedit 5 item Own Edit edit 1 edit 1", Text(file, " &Edit[(Cu&t\tCtrl+X) - Own] Last[a]")},
      {"freemenu Edit edit 0", Text(file, " Last[a]")},
      {"edit 2 canedit 2 modal", Text(blocked, " &Edit[&Copy\tCtrl+C] (Last)[a]")},
      {"menu Late item b Late last Late freemenu Last", Text(blocked, " &Edit[&Copy\tCtrl+C] (Late)[b]")},
      {"close", Text(file, " &Edit[&Copy\tCtrl+C] Late[b]")},
  });
}

} // namespace
} // namespace framereel
