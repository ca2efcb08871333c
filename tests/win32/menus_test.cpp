// Menus: the bar in the frame, the user's way through it by mouse and keys, and what happens to it meanwhile.
#include "win32/win32_input.h"
#include "win32/win32_menus.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
#include "win32/window_scene.h"

namespace framereel {
namespace {

constexpr COLORREF kNavy = RGB(0, 0, 128); // behind what is marked

// A window with the bar
//
//   File: New (1), a line, Save (2, checked), More: Deep (4), Grey (5, greyed)
//   Grey: greyed, with New and the rest of File
//   Edit: Cut (7), Copy (8), Copy (9); both have the letter c
class Menus : public OneWindow {
protected:
  Menus() {
    ::AppendMenuA(more, 0, 4, "Dee&p");
    ::AppendMenuA(more, MF_GRAYED, 5, "&Grey");
    ::AppendMenuA(file, 0, 1, "&New\tCtrl+N");
    ::AppendMenuA(file, MF_SEPARATOR, 0, nullptr);
    ::AppendMenuA(file, MF_CHECKED, 2, "&Save\tCtrl+S");
    ::AppendMenuA(file, MF_POPUP, uintptr_t(more), "&More");
    ::AppendMenuA(edit, 0, 7, "Cu&t");
    ::AppendMenuA(edit, 0, 8, "&Copy");
    ::AppendMenuA(edit, 0, 9, "&Copy");
    ::AppendMenuA(bar, MF_POPUP, uintptr_t(file), "&File");
    ::AppendMenuA(bar, MF_POPUP | MF_GRAYED, uintptr_t(file), "&Grey");
    ::AppendMenuA(bar, MF_POPUP, uintptr_t(edit), "&Edit");
    ::SetMenu(main, bar);
    TheScript().words["?"] = [this](std::istream&) { looks += Looks() + " "; };
    for (const std::string word : {"over", "press", "click"}) {
      TheScript().words[word] = [this, word](std::istream& in) {
        const POINT at = PlaceOf(Word(in));
        MemoryMovePointerTo(at.x, at.y);
        if (word != "over") Act(word == "press" ? "+lb" : "lb");
      };
    }
    Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
    Drain();
    Heard();
  }

  // By steps, with "?" for what is open, as Looks tells, and over:P, press:P and click:P for the mouse there; P is
  // File, Grey, Edit, system, out, or a popup's row as 0.2. Answers the looks, and then the commands that came.
  std::string Play(const std::string& script) {
    looks.clear();
    bool over = false;
    MemoryAt(TheScript().Schedule(script), [this, &over, &script] {
      EXPECT_EQ(Looks(), "-") << script;
      ::SendMessageA(main, WM_CANCELMODE, 0, 0); // else a menu that is open would stay so for ever
      over = true;
    });
    while (!over) {
      Drain();
      ::Sleep(10);
    }
    EXPECT_EQ(TheMemoryDisplay().desktop.captured != nullptr, TheWindows().capture != nullptr) << script;
    return looks + Heard("notice command");
  }

  HWND ShowDialog() {
    Act("make dialog dialog main 400 100 100 100 show dialog");
    return Named("dialog");
  }

  // The open popups, in the order in which they were opened.
  static std::vector<PixelRect> Popups() {
    std::vector<PixelRect> popups;
    for (const auto& window : TheMemoryDisplay().desktop.windows) {
      if (window->role == WindowRole::kPopup) popups.insert(popups.begin(), window->place);
    }
    return popups;
  }

  // A row of a popup: within a border of 3 pixels, rows of 20, and in File the line of 8.
  static PixelRect Row(const PixelRect& popup, int32_t index) {
    const bool behindTheLine = TheWindows().markedTitle == 0 && index > 1 && Same(popup, Popups().front());
    const int32_t top = popup.top + 3 + 20 * index - (behindTheLine ? 12 : 0);
    return {popup.left + 3, top, popup.right - 3, top + 20};
  }

  PixelRect TitlePlace(int32_t title) const { return MenuTitlePlaces(*main, FramePart(*main, HTMENU))[size_t(title)]; }

  POINT PlaceOf(const std::string& name) const {
    const std::map<std::string, int32_t> titles = {{"File", 0}, {"Grey", 1}, {"Edit", 2}};
    PixelRect place = {500, 400, 500, 400};
    if (name == "system") place = FramePart(*main, HTSYSMENU);
    if (titles.count(name)) place = TitlePlace(titles.at(name));
    const size_t level = size_t(name[0] - '0');
    if (level < Popups().size()) place = Row(Popups()[level], name[2] - '0');
    return {(place.left + place.right) / 2, place.top + 4};
  }

  // The marked title, and the row that is marked in each popup: "File:3,0". "-" when nothing is open.
  std::string Looks() const {
    const WindowSystem& system = TheWindows();
    if (!system.menuOwner) return "-";
    const char* names[] = {"none", "system", "File", "Grey", "Edit"};
    std::string text = names[system.markedTitle - kNoTitle];
    for (const PixelRect& popup : Popups()) {
      std::string marked = "_";
      for (int32_t i = 0; Row(popup, i).bottom < popup.bottom; ++i) {
        if (ColourAt({Row(popup, i).left + 1, Row(popup, i).top + 3}) == kNavy) marked = std::to_string(i);
      }
      text += ":" + marked;
    }
    return text;
  }

  HMENU bar = ::CreateMenu(), file = ::CreatePopupMenu(), edit = ::CreatePopupMenu(), more = ::CreatePopupMenu();
  std::string looks;
};

constexpr char kByKey[] = "main.command:f100", kByMouse[] = "main.command:f095";

TEST_F(Menus, AreWalkedThroughWithKeys) {
  const std::pair<const char*, std::string> cases[] = {
      {"alt ? right ? right ? right ? esc", std::string("File Grey Edit system ") + kByKey},
      {"alt down ? down ? down ? up ? esc ? esc", std::string("File:0 File:2 File:3 File:2 File ") + kByKey},
      {"alt+F ? enter", std::string("File:0 ") + kByKey + " main.notice:1/0"},
      {"alt+F S", std::string(kByKey) + " main.notice:2/0"},
      {"alt+F M ? P", std::string("File:3:0 ") + kByKey + " main.notice:4/0"},
      {"alt+F up right ? left ? right right ? esc ? esc", std::string("File:3:0 File:3 Grey Grey ") + kByKey},
      {"alt+F up right down ? enter ? G ? esc esc esc", std::string("File:3:1 File:3:1 File:3:1 ") + kByKey},
      {"alt+E C ? C ? C ? enter", std::string("Edit:1 Edit:2 Edit:1 ") + kByKey + " main.notice:8/0"},
      {"alt+E left ? left ? left ? esc esc", std::string("Grey File:0 system:0 ") + kByKey},
      {"+alt +E +E ? -E +C ? +C +C ? -C -alt esc esc", std::string("Edit:0 Edit:1 Edit:1 ") + kByKey},
      {"f10 ? E ? T", std::string("File Edit:0 ") + kByKey + " main.notice:7/0"},
      {"f10 ? f10 ?", std::string("File - ") + kByKey},
      {"alt ? alt ? alt ? alt", std::string("File - File ") + kByKey + " " + kByKey},
      {"alt space ? C", std::string("system:0 ") + kByKey + " main.command:f060"},
      {"alt+X ?", std::string("- ") + kByKey},
  };
  for (const auto& [script, expected] : cases) {
    SCOPED_TRACE(script);
    EXPECT_EQ(Play(script), expected);
  }
}

TEST_F(Menus, AreWalkedThroughWithTheMouse) {
  const std::pair<const char*, std::string> cases[] = {
      {"click:File ? over:0.0 ? click:0.0", std::string("File:_ File:0 ") + kByMouse + " main.notice:1/0"},
      {"press:File over:0.2 ? -lb", std::string("File:2 ") + kByMouse + " main.notice:2/0"},
      {"press:File -lb press:File -lb ? rest press:File ? -lb", std::string("File:_ - ") + kByMouse},
      {"press:File over:0.0 over:out ? -lb ?", std::string("File:_ - ") + kByMouse},
      {"click:File over:out ? click:out ?", std::string("File:_ - ") + kByMouse},
      {"click:File over:Edit ? over:Grey ? rest click:Grey ?", std::string("Edit:_ Grey - ") + kByMouse},
      {"click:File click:0.1 ? click:Edit ? click:0.0", std::string("File:_ Edit:_ ") + kByMouse + " main.notice:7/0"},
      // The popup at an item's side comes and goes once the mouse rests, or with a press.
      {"click:File over:0.3 ? rest ? over:0.2 ? over:1.0 ? rest ? over:0.2 rest ? click:out",
       std::string("File:3 File:3:_ File:2:_ File:3:0 File:3:0 File:2 ") + kByMouse},
      {"press:File over:0.3 rest over:1.1 -lb ? over:1.0 press:1.0 -lb",
       std::string("File:3:1 ") + kByMouse + " main.notice:4/0"},
      {"click:File click:0.3 ? click:1.1 ? click:1.0",
       std::string("File:3:_ File:3:1 ") + kByMouse + " main.notice:4/0"},
      {"click:File over:system ? click:0.4", std::string("system:_ ") + kByMouse + " main.command:f060"},
      {"click:Grey ?", "- "},
      {"alt over:Edit ? click:Edit ? esc ? esc", std::string("File Edit:_ Edit ") + kByKey},
  };
  for (const auto& [script, expected] : cases) {
    SCOPED_TRACE(script);
    EXPECT_EQ(Play(script), expected == "- " ? "- main.command:f095" : expected);
  }
}

// Whatever happens while File and More are open, the menu closes in order: it chooses nothing, lets go of the mouse,
// and the next one works.
TEST_F(Menus, CloseInOrderWhateverHappens) {
  Act("new child child main 10 10 50 50");
  TheScript().words["depth"] = [](std::istream&) { MemoryDisplaySetMode(640, 480, 8); };
  TheScript().words["barless"] = [this](std::istream&) { ::SetMenu(main, nullptr); };
  TheScript().words["endbar"] = [this](std::istream&) { ::DestroyMenu(bar); };
  for (const char* happens :
       {"keyboard other", "takemouse", "minimise main", "depth", "disable main", "hide main",
        "make dialog dialog main 400 100 100 100 show dialog", "capture child", "barless", "endbar"}) {
    SCOPED_TRACE(happens);
    MemoryAt(::GetTickCount() + 90, [this, happens] {
      EXPECT_EQ(Looks(), "File:3:0");
      Act(happens);
    });
    EXPECT_EQ(Play("alt+F M rest ? rest"), std::string("- ") + kByKey);
    ::ReleaseCapture();
    ::EnableWindow(main, TRUE);
    MemoryMinimiseWindow(shown, false);
    if (DisplayWindow* dialog = MemoryWindowTitled("dialog")) ::DestroyWindow(TopLevelOf(dialog));
    ::ShowWindow(main, SW_SHOWNORMAL);
    MemoryDisplaySetMode(640, 480, 24);
    MemoryGiveKeyboard(shown);
    if (::GetMenuItemCount(bar) == 3) ::SetMenu(main, bar);
    Drain();
    Heard();
  }
  ::DrawMenuBar(main);
  EXPECT_EQ(HeightOf(main->client), 200);
}

TEST_F(Menus, CloseAheadOfTheirWindow) {
  MemoryAt(::GetTickCount() + 90, [this] { MemoryAskToClose(shown); });
  EXPECT_EQ(Play("alt+F M rest ?"), std::string("- ") + kByKey + " main.command:f060");
  MemoryAt(::GetTickCount() + 90, [this] { ::DestroyWindow(main); });
  EXPECT_EQ(Play("alt+F M rest ?"), std::string("- ") + kByKey);
  EXPECT_TRUE(TheMemoryDisplay().desktop.windows.empty());
}

// A loop inside of WM_ENTERIDLE has its own messages, and its own menus.
TEST_F(Menus, LeaveALoopInsideItsMenus) {
  HWND dialog = nullptr;
  Answer(WM_ENTERIDLE, [&](HWND, WPARAM, LPARAM) {
    if (dialog || ::GetTickCount() < 90) return 0;
    dialog = ShowDialog();
    EXPECT_EQ(Looks(), "-");
    Act("alt+space M");
    MemoryAt(::GetTickCount() + 50, [] { Act("right enter"); });
    Drain();
    return 0;
  });
  EXPECT_EQ(Play("alt+F rest"), std::string(kByKey) + " dialog.command:f100 dialog.command:f010");
  RECT moved;
  ::GetWindowRect(dialog, &moved);
  EXPECT_EQ(moved.left, 408);
}

// What the program makes of its menus while they are open is what is shown.
TEST_F(Menus, FollowTheirItemsWhileTheyAreOpen) {
  const auto build = [this] {
    // As a program does that makes its menus anew: all at once.
    ::RemoveMenu(bar, 0, MF_BYPOSITION);
    while (::GetMenuItemCount(file) > 0) ::RemoveMenu(file, 0, MF_BYPOSITION);
    ::AppendMenuA(file, 0, 2, "Longer than it was before");
    ::AppendMenuA(file, MF_POPUP, uintptr_t(more), "&More");
    ::InsertMenuA(bar, 1, MF_BYPOSITION | MF_POPUP, uintptr_t(file), "&File");
    ::DrawMenuBar(main);
  };
  std::vector<PixelRect> before;
  MemoryAt(50, [&] { before = Popups(); });
  MemoryAt(90, build);
  MemoryAt(110, [&] {
    const std::vector<PixelRect> now = Popups();
    ASSERT_EQ(now.size(), 2U);
    EXPECT_EQ(TheWindows().markedTitle, 1);
    EXPECT_EQ(now[0].left, TitlePlace(1).left);
    EXPECT_GT(WidthOf(now[0]), WidthOf(before[0]));
    EXPECT_EQ(HeightOf(now[0]), 2 * 20 + 6);
  });
  EXPECT_EQ(Play("alt+F M rest left up enter"), std::string(kByKey) + " main.notice:2/0");
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"Grey:_", [this] { ::DestroyMenu(more); }},
      {"Grey", [this] { ::ModifyMenuA(bar, 1, MF_BYPOSITION | MF_POPUP | MF_GRAYED, uintptr_t(file), "&File"); }},
  };
  for (const auto& [left, happens] : cases) {
    MemoryAt(::GetTickCount() + 90, happens);
    EXPECT_EQ(Play("alt+F down rest ? esc esc"), std::string(left) + " " + kByKey);
    ::ModifyMenuA(bar, 1, MF_BYPOSITION | MF_POPUP, uintptr_t(file), "&File");
  }
}

TEST_F(Menus, StayOnTheirMonitorAndOnItsFreePart) {
  TheMemoryDisplay().desktop.monitors = {{0, 0, 320, 480}, {320, 0, 640, 480}};
  MemorySetTaskBar({0, 460, 640, 480});
  const auto at = [this](int32_t left, int32_t top) {
    ::MoveWindow(main, left, top, 206, 225, TRUE);
    std::vector<PixelRect> popups;
    MemoryAt(::GetTickCount() + 100, [&popups] { popups = Popups(); });
    Play("alt+F M rest esc esc esc");
    return popups;
  };
  // The popup of More has no room at the right; the one of File has, even from beyond the edge of the screen.
  const std::vector<PixelRect> right = at(180, 100), below = at(-100, 420);
  ASSERT_EQ(right.size() + below.size(), 4U);
  EXPECT_EQ(right[0].left, 183);
  EXPECT_LT(right[1].right, right[0].right);
  EXPECT_LE(below[0].bottom, 442); // above the bar
  EXPECT_EQ(below[0].left, 0);
  EXPECT_LE(below[1].bottom, 460);
}

TEST_F(Menus, TakeTheirRoomInTheFrameAndMoreRowsWhereItIsNarrow) {
  const auto top = [this] { return ClientOnScreen(*main).top - PlaceOnScreen(*main).top; };
  EXPECT_EQ(top(), 22 + 20);
  EXPECT_EQ(HeightOf(main->client), 180);
  EXPECT_EQ(HitTest(*main, 110, 130), HTMENU);
  EXPECT_EQ(HitTest(*main, 110, 143), HTCLIENT);
  ::MoveWindow(main, 100, 100, TitlePlace(1).right - 100 + 3, 225, TRUE);
  EXPECT_EQ(top(), 22 + 40);
  EXPECT_EQ(TitlePlace(2).left, TitlePlace(0).left);
  EXPECT_EQ(Play("click:Edit click:0.0"), std::string(kByMouse) + " main.notice:7/0");
  ::ModifyMenuA(bar, 0, MF_BYPOSITION | MF_POPUP, uintptr_t(file), "A much longer title");
  ::DrawMenuBar(main);
  EXPECT_EQ(top(), 22 + 60);
  TheMemoryDisplay().desktop.leavesMinimising = true;
  ::ShowWindow(main, SW_MINIMIZE);
  EXPECT_EQ(HeightOf(PlaceOnScreen(*main)), 25);
  EXPECT_EQ(Play("alt alt+F ?"), std::string("- ") + kByKey + " " + kByKey);
  ::ShowWindow(main, SW_RESTORE);
  while (::GetMenuItemCount(bar) > 0) ::RemoveMenu(bar, 0, MF_BYPOSITION);
  ::DrawMenuBar(main);
  EXPECT_EQ(top(), 22);
}

} // namespace
} // namespace framereel
