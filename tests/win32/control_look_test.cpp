// What the controls look like at each depth: states can be told apart, text can be read.
#include <set>

#include "win32/win32_controls.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/window_scene.h"

namespace framereel {
namespace {

using Picture = std::vector<COLORREF>;

// The pixels of a control as they stand on the screen.
Picture PictureOf(HWND control) {
  Drain();
  Picture pixels;
  RECT size;
  ::GetClientRect(control, &size);
  for (int y = 0; y < size.bottom; ++y) {
    for (int x = 0; x < size.right; ++x) {
      pixels.push_back(ColourAt(OnScreen(control, x, y)));
    }
  }
  return pixels;
}

TEST(ControlLook, IsAnotherInEachStateAtEveryDepth) {
  for (const int depth : {1, 2, 4, 8, 16, 24}) {
    WindowScene scene(640, 480, depth);
    HWND main = ShowMain();
    HWND button = ShowControl("button", "Go on", BS_PUSHBUTTON, {20, 20, 100, 44}, main, 7);
    const Picture plain = PictureOf(button);
    const auto unlike = [&](int row, int from, int to) { // of its pixels there, those that are not the face
      const auto begin = plain.begin() + row * 80;
      return std::count_if(begin + from, begin + to, [&](COLORREF c) { return c != plain[4 * 80 + 4]; });
    };
    EXPECT_EQ(unlike(0, 0, 80) + unlike(23, 0, 80), 160) << depth;
    EXPECT_GT(unlike(10, 20, 60), 2) << depth;
    std::set<Picture> looks = {plain};
    const std::function<void()> changes[] = {
        [=] { ::SendMessageA(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE); },
        [=] { ::SetFocus(button); },
        [=] { MemoryPressKey(VK_SPACE); },
        [=] { ::EnableWindow(button, FALSE); },
        [=] { ::SetWindowTextA(button, "Stop"); },
    };
    for (const auto& change : changes) {
      change();
      EXPECT_TRUE(looks.insert(PictureOf(button)).second) << depth << " look " << looks.size();
    }
    MemoryReleaseKey(VK_SPACE);

    HWND edit = ShowControl("edit", "mm mm", 0, {10, 60, 110, 80}, main, 5);
    looks = {PictureOf(edit)};
    EXPECT_EQ(looks.begin()->back(), RGB(255, 255, 255)) << depth;
    ::SetFocus(edit);
    EXPECT_TRUE(looks.insert(PictureOf(edit)).second) << depth; // the caret
    ::SendMessageA(edit, EM_SETSEL, 0, 3);
    const Picture marked = PictureOf(edit);
    const COLORREF mark = marked[5 * 100 + 2];
    EXPECT_NE(mark, RGB(255, 255, 255)) << depth;
    const auto letters = marked.begin() + 10 * 100;
    EXPECT_GT(std::count_if(letters + 2, letters + 20, [=](COLORREF c) { return c != mark; }), 2) << depth;
    ::EnableWindow(edit, FALSE);
    EXPECT_TRUE(looks.insert(PictureOf(edit)).second) << depth;
  }
}

} // namespace
} // namespace framereel
