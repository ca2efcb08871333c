// What frames, menus and controls look like on any screen: text can be read, and states can be told apart.
#include <set>

#include "win32/window_scene.h"

namespace framereel {
namespace {

constexpr COLORREF kNavy = RGB(0, 0, 128), kGrey = RGB(128, 128, 128), kBlack = RGB(0, 0, 0);

class Look : public testing::TestWithParam<int> {
protected:
  // Mostly ground, and some of another colour.
  static void ExpectLegible(const PixelRect& where, COLORREF ground) {
    const int64_t all = int64_t{WidthOf(where)} * HeightOf(where), under = Count(where, ground);
    EXPECT_GT(under, all / 2);
    EXPECT_LT(under, all);
  }
  // The pixels of the control as they stand on the screen are none that it has had before.
  void ExpectAnother(HWND control) {
    Drain();
    std::vector<COLORREF> look;
    for (int i = 0; i < WidthOf(control->client) * HeightOf(control->client); ++i) {
      look.push_back(ColourAt(OnScreen(control, i % WidthOf(control->client), i / WidthOf(control->client))));
    }
    EXPECT_TRUE(looks.insert(look).second) << "look " << looks.size();
  }

  WindowScene scene = WindowScene(640, 480, GetParam());
  HWND main = ShowMain();
  std::set<std::vector<COLORREF>> looks;
};

TEST_P(Look, OfACaptionTellsTheActiveWindowAndItsTitleEndsAheadOfTheBoxes) {
  constexpr PixelRect kTitle = {125, 103, 262, 121}, kBoxes = {265, 103, 303, 121};
  ExpectLegible(kTitle, kNavy);
  Act("keyboard other then");
  ExpectLegible(kTitle, kGrey);
  const int64_t boxes = Count(kBoxes, kGrey);
  for (const size_t letters : {300, 0}) {
    ::SetWindowTextA(main, std::string(letters, 'W').c_str());
    Drain();
    EXPECT_EQ(Count(kBoxes, kGrey), boxes);
  }
  EXPECT_EQ(Count(kTitle, kGrey), WidthOf(kTitle) * HeightOf(kTitle));
}

TEST_P(Look, OfMenusTellsWhatIsMarkedGreyedAndChecked) {
  HMENU bar = ::CreateMenu(), file = ::CreatePopupMenu();
  for (const UINT flags : {0U, MF_GRAYED, MF_CHECKED, 0U}) ::AppendMenuA(file, flags, 1, "&Same text");
  ::AppendMenuA(bar, MF_POPUP, uintptr_t(file), "&Same");
  ::SetMenu(main, bar);
  MemoryAt(100, [this] {
    const PixelRect popup = TheMemoryDisplay().desktop.windows.front()->place;
    const auto row = [&](int32_t i) {
      return PixelRect{popup.left + 3, popup.top + 3 + i * 20, popup.right - 3, popup.top + 23 + i * 20};
    };
    ExpectLegible(MenuTitlePlaces(*main, FramePart(*main, HTMENU))[0], kNavy);
    ExpectLegible(row(0), kNavy);
    ExpectLegible(row(1), ::GetSysColor(COLOR_MENU));
    // Of what is greyed some ink is left out, or is another ink.
    EXPECT_LT(Count(row(1), kBlack), Count(row(3), kBlack));
    EXPECT_EQ(Count(row(2), kBlack), Count(row(3), kBlack) + 21); // the tick
    Act("esc esc");
  });
  Act("alt+S then");
}

TEST_P(Look, OfControlsIsAnotherInEachState) {
  HWND button = ShowControl("button", "Go on", BS_PUSHBUTTON, {20, 20, 100, 44}, main, 7);
  const std::function<void()> changes[] = {
      [] {},
      [=] { ::SendMessageA(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE); },
      [=] { ::SetFocus(button); },
      [] { Act("+space"); },
      [=] { ::EnableWindow(button, FALSE); },
      [=] { ::SetWindowTextA(button, "Stop"); },
  };
  for (const auto& change : changes) change(), ExpectAnother(button);
  Act("-space");
  HWND edit = ShowControl("edit", "mm mm", 0, {10, 60, 110, 80}, main, 5);
  ExpectAnother(edit);
  ::SetFocus(edit);
  ExpectAnother(edit); // the caret
  ::SendMessageA(edit, EM_SETSEL, 0, 3);
  ExpectAnother(edit);
  const POINT marked = OnScreen(edit, 2, 10);
  EXPECT_GT(18 - Count({marked.x, marked.y, marked.x + 18, marked.y + 1}, ColourAt(OnScreen(edit, 1, 10))), 2);
  ::EnableWindow(edit, FALSE);
  ExpectAnother(edit);
}

INSTANTIATE_TEST_SUITE_P(Depths, Look, testing::Values(1, 2, 4, 8, 16, 24));

} // namespace
} // namespace framereel
