// Menus: the bar in the frame, the user's way through it by mouse and keys, and what happens to it meanwhile.
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
    Script& script = TheScript();
    script.Add("?", [this] { Tell(Looks()); });
    script.words["over"] = [this](std::istream& in) {
      const POINT at = PlaceOf(Word(in));
      MemoryMovePointerTo(at.x, at.y);
    };
    script.Add("bar", [this] { ::SetMenu(main, bar); });
    script.Add("nobar", [this] { ::SetMenu(main, nullptr); });
    script.Add("endbar", [this] { ::DestroyMenu(bar); });
    script.Add("endmore", [this] { ::DestroyMenu(more); });
    script.Add("ask", [this] { MemoryAskToClose(shown); });
    Answer(WM_CLOSE, [](HWND, WPARAM, LPARAM) { return 0; });
    Drain();
    Heard();
  }

  // By steps, with "?" for what is open, as Looks tells, and over:P for the mouse; P is File, Grey, Edit, system, out,
  // or a popup's row as 0.2. Answers these looks and what was chosen, or other events.
  std::string Play(const std::string& script, const std::string& events = "notice close") {
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
    return Heard(events);
  }
  void Walk(std::initializer_list<Step> steps, const std::string& events = "notice close") {
    for (const Step& step : steps) EXPECT_EQ(Play(step.words, events), step.brings) << step.words;
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
};

TEST_F(Menus, AreWalkedThroughWithKeys) {
  Walk({{"alt ? right ? right ? right ? esc", "File Grey Edit system"},
        {"alt down ? down ? down ? up ? esc ? esc", "File:0 File:2 File:3 File:2 File"},
        {"alt+F ? enter", "File:0 main.notice:1/0"},
        {"alt+F M ? P", "File:3:0 main.notice:4/0"},
        {"alt+F up right ? left ? right right ? esc ? esc", "File:3:0 File:3 Grey Grey"},
        {"alt+F up right down ? enter ? G ? esc esc esc", "File:3:1 File:3:1 File:3:1"},
        {"alt+E C ? C ? C ? enter", "Edit:1 Edit:2 Edit:1 main.notice:8/0"},
        {"alt+E left ? left ? left ? esc esc", "Grey File:0 system:0"},
        {"+alt +E +E ? -E +C ? +C +C ? -C -alt esc esc", "Edit:0 Edit:1 Edit:1"},
        {"f10 ? E ? T", "File Edit:0 main.notice:7/0"},
        {"f10 ? f10 ?", "File -"},
        {"alt ? alt ? alt ? alt", "File - File"},
        {"alt space ? C", "system:0 main.close"},
        {"alt+X ?", "-"}});
}

TEST_F(Menus, AreWalkedThroughWithTheMouse) {
  Walk({{"over:File lb ? over:0.0 ? lb", "File:_ File:0 main.notice:1/0"},
        {"over:File +lb over:0.2 ? -lb", "File:2 main.notice:2/0"},
        {"over:File lb lb ? rest +lb ? -lb", "File:_ -"},
        {"over:File lb over:out ? lb ?", "File:_ -"},
        {"over:File lb over:Edit ? over:Grey ? rest lb ?", "Edit:_ Grey -"},
        {"over:File lb over:0.1 lb ? over:Edit lb ? over:0.0 lb", "File:_ Edit:_ main.notice:7/0"},
        // The popup at an item's side comes and goes once the mouse rests, or with a press.
        {"over:File lb over:0.3 ? rest ? over:0.2 ? over:1.0 ? rest ? over:0.2 rest ? over:out lb",
         "File:3 File:3:_ File:2:_ File:3:0 File:3:0 File:2"},
        {"over:File +lb over:0.3 rest over:1.1 -lb ? over:1.0 lb", "File:3:1 main.notice:4/0"},
        {"over:File lb over:0.3 lb ? over:1.1 lb ? over:1.0 lb", "File:3:_ File:3:1 main.notice:4/0"},
        {"over:File lb over:system ? over:0.4 lb", "system:_ main.close"},
        {"over:system +lb over:0.4 -lb over:system lb ? over:out lb", "main.close system:_"},
        {"over:Grey lb ?", "-"},
        {"alt over:Edit ? lb ? esc ? esc", "File Edit:_ Edit"}});
}

// By which way they open is a command of the window's, and so is what is chosen in the system's.
TEST_F(Menus, OfTheSystemMinimiseMoveAndCloseTheWindow) {
  Walk({{"alt+space down down enter back:main place?:main", "main.command:f100 main.command:f020 100,100+206x225"},
        {"alt+space up up enter back:main", "main.command:f100 main.command:f020"},
        {"alt+space C", "main.command:f100 main.command:f060"},
        {"alt+space enter R esc esc", "main.command:f100"}, // what is grey is not chosen
        {"alt+space M right down down enter place?:main", "main.command:f100 main.command:f010 108,116+206x225"},
        {"alt+space M left up esc place?:main", "main.command:f100 main.command:f010 108,116+206x225"},
        {"alt+space M left keyboard:other place?:main", "main.command:f100 main.command:f010 100,116+206x225"},
        {"keyboard:main over:Edit lb esc esc", "main.command:f095"},
        {"over:system lb over:out lb", "main.command:f093"}},
       "command");
}

// Whatever happens while they are open, they close in order: nothing is chosen, the mouse is let go, and the next one
// works.
TEST_F(Menus, CloseInOrderWhateverHappens) {
  Act("new child child main 10 10 50 50");
  for (const char* happens : {"keyboard:other", "takemouse", "minimise:main", "disable:main", "hide:main",
                              "capture:child", "nobar", "ask", "destroy:main"}) {
    const std::string brings = Text("File:3:0 ", happens == std::string("ask") ? "main.close " : "", "-");
    EXPECT_EQ(Play(Text("alt+F M ? ", happens, " rest ?")), brings) << happens;
    if (IsLive(main)) Act("restore main show main enable main loose bar keyboard main then");
  }
}

// What the program makes of its menus while they are open is what is shown.
TEST_F(Menus, FollowTheirItemsWhileTheyAreOpen) {
  TheScript().Add("state", [this](UINT flags) {
    ::ModifyMenuA(bar, 0, MF_BYPOSITION | MF_POPUP | flags, uintptr_t(file), "&File");
  });
  Walk({{"alt+F M ? endmore rest ? esc esc", "File:3:0 File:_"},
        {"alt+F down state:1 rest ? esc esc state:0", "File"},
        {"alt+F endbar rest ?", "-"}});
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
  ::MoveWindow(main, 100, 100, TitlePlace(1).right - 100 + 3, 225, TRUE);
  EXPECT_EQ(top(), 22 + 40);
  EXPECT_EQ(Play("over:Edit lb over:0.0 lb"), "main.notice:7/0");
  while (::GetMenuItemCount(bar) > 0) ::RemoveMenu(bar, 0, MF_BYPOSITION);
  ::DrawMenuBar(main);
  EXPECT_EQ(top(), 22);
}

} // namespace
} // namespace framereel
