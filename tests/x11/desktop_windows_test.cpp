// Windows of all programs as they are seen at a place of the screen, while these come, go and change.
#include "support/dice.h" // ahead of Xlib, whose macros are ordinary words

#include "x11/user.h"

#include <iterator>
#include <optional>

#include "win32/pixels/rectangles.h"

#undef Below // of X's, which the dice have a use for

namespace framereel {

namespace {

class X11WindowSearch : public X11WindowTest {
protected:
  // A window of another program that no window manager takes for its own.
  Window Make(Window parent, const PixelRect& place, int32_t border = 0, unsigned int windowClass = InputOutput) const {
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    Window window = XCreateWindow(artist.display, parent, place.left, place.top, unsigned(WidthOf(place)),
                                  unsigned(HeightOf(place)), unsigned(border), CopyFromParent, windowClass,
                                  CopyFromParent, CWOverrideRedirect, &attributes);
    XMapWindow(artist.display, window);
    return window;
  }

  // From the top-level window down to the deepest one.
  std::vector<DesktopWindow> Found(int32_t x, int32_t y) {
    Catch();
    std::vector<DesktopWindow> chain;
    for (DesktopWindow at = 0; (at = DisplayWindowAt(at, x, y)) != 0;) chain.push_back(at);
    return chain;
  }
  PixelRect FoundPlace(Window window) {
    PixelRect place = {};
    EXPECT_TRUE(DisplayWindowPlace(DesktopWindow(window), &place));
    return place;
  }

  // From the top down.
  std::vector<Window> Children(Window window, Window* parent = nullptr) const {
    Window root, above, *first = nullptr;
    unsigned int count = 0;
    XQueryTree(artist.display, window, &root, parent ? parent : &above, &first, &count);
    std::vector<Window> children(std::make_reverse_iterator(first + count), std::make_reverse_iterator(first));
    if (first) XFree(first);
    return children;
  }
  // What is found, from the server alone, each time anew.
  std::vector<DesktopWindow> Truth(int32_t x, int32_t y) const {
    std::vector<DesktopWindow> chain;
    for (Window at = artist.root; at != None;) {
      const std::vector<Window> children = Children(at);
      const auto next = std::find_if(children.begin(), children.end(), [=, this](Window each) {
        const XWindowAttributes now = artist.State(each);
        return now.map_state == IsViewable && now.c_class == InputOutput && Holds(PlaceOf(each), x, y);
      });
      at = next == children.end() ? None : *next;
      if (at != None) chain.push_back(DesktopWindow(at));
    }
    return chain;
  }
};

TEST_F(X11WindowSearch, KnowsWhatStandsWhereWhateverWindowsDo) {
  Display* display = artist.display;
  std::vector<Window> others;
  Dice dice(3);
  const auto anyPlace = [&] {
    const int32_t left = dice.Below(200) - 60, top = dice.Below(200) - 60;
    return PixelRect{left, top, left + 1 + dice.Below(300), top + 1 + dice.Below(300)};
  };
  const auto any = [&]() -> Window& { return others[size_t(dice.Below(int(others.size())))]; };
  const auto create = [&] {
    others.push_back(Make(others.empty() || dice.OneIn(3) ? artist.root : any(), anyPlace(), dice.Below(3)));
  };
  const auto change = [&](Window& which) {
    const int deed = dice.Below(7);
    const PixelRect to = anyPlace();
    if (deed == 0) create();
    if (deed == 1) (artist.State(which).map_state == IsUnmapped ? XMapWindow : XUnmapWindow)(display, which);
    if (deed == 2) (dice.OneIn(2) ? XRaiseWindow : XLowerWindow)(display, which);
    if (deed == 3) XCirculateSubwindowsUp(display, artist.root);
    if (deed == 4) XMoveResizeWindow(display, which, to.left, to.top, unsigned(WidthOf(to)), unsigned(HeightOf(to)));
    if (deed < 5 || !Children(which).empty()) return;
    if (deed == 5) {
      const Window parent = any();
      XReparentWindow(display, which, parent == which || dice.OneIn(3) ? artist.root : parent, to.left, to.top);
    } else if (others.size() >= 8) {
      XDestroyWindow(display, std::exchange(which, others.back()));
      others.pop_back();
    }
  };
  for (int i = 0; i < 12; i++) create();
  Make(artist.root, {0, 0, 300, 300}, 0, InputOnly);
  size_t deepest = 0;
  for (int round = 0; round < 400; round++) {
    change(any());
    Catch();
    const Window named = any(); // by nobody but us: it need not have been found anywhere
    PixelRect place;
    ASSERT_TRUE(DisplayHasWindow(DesktopWindow(named)));
    ASSERT_EQ(DisplayWindowPlace(DesktopWindow(named), &place), artist.State(named).map_state == IsViewable) << round;
    ASSERT_TRUE(artist.State(named).map_state != IsViewable || place == PlaceOf(named)) << round;
    for (int at = 0; at < 4; at++) {
      const int32_t x = dice.Below(300), y = dice.Below(300);
      const std::vector<DesktopWindow> found = Found(x, y);
      ASSERT_EQ(found, Truth(x, y)) << "at " << x << "," << y << " in round " << round;
      for (DesktopWindow each : found) ASSERT_EQ(FoundPlace(each), PlaceOf(each));
      deepest = std::max(deepest, found.size());
    }
  }
  EXPECT_GE(deepest, 3u);
}

TEST_F(X11WindowSearch, TakesAFrameAndTheMarginsOfAShadowForWhatTheyAre) {
  const PixelRect around = {20, 30, 220, 200};
  const Window below = Make(artist.root, {0, 0, 300, 300}), frame = Make(artist.root, around);
  const Window title = Make(frame, {0, 0, 200, 20}), wrapper = Make(frame, {5, 20, 195, 165});
  const Window client = Make(wrapper, {0, 0, 190, 145}), button = Make(client, {10, 10, 40, 30});
  const auto names = [](const std::vector<Window>& chain) {
    return std::vector<DesktopWindow>(chain.begin(), chain.end());
  };
  std::optional<OwnManager> manager;
  if (!HasManager()) {
    EXPECT_EQ(Found(40, 70), names({frame, wrapper, client, button}));
    manager.emplace(artist);
  }
  WriteItems(client, "WM_STATE", XID(AtomOf("WM_STATE")), {NormalState, None});
  XMoveWindow(artist.display, title, 0, 1); // nobody hears of the property; a manager maps its frame behind it
  EXPECT_EQ(Found(40, 40), names({frame}));
  EXPECT_EQ(Found(40, 70), names({frame, button}));
  EXPECT_EQ(Found(100, 150), names({frame}));
  EXPECT_EQ(FoundPlace(frame), around);
  EXPECT_EQ(FoundPlace(client), around);
  EXPECT_EQ(FoundPlace(wrapper), (PixelRect{25, 50, 215, 195}));
  const std::vector<DesktopWindow> all = DisplayWindows();
  const auto at = std::find(all.begin(), all.end(), DesktopWindow(client));
  EXPECT_NE(std::find(at, all.end(), DesktopWindow(below)), all.end()) << "from the top down";
  EXPECT_EQ(std::find(all.begin(), all.end(), DesktopWindow(frame)), all.end());
  XStoreName(artist.display, client, "caf\xe9");
  EXPECT_EQ((Catch(), DisplayWindowTitle(DesktopWindow(client))), "caf\u00e9");
  XChangeProperty(artist.display, client, XID(AtomOf("_NET_WM_NAME")), XID(AtomOf("UTF8_STRING")), 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>("\u30c6\n"), 4);
  EXPECT_EQ((Catch(), DisplayWindowTitle(DesktopWindow(client))), "\u30c6\n");
  EXPECT_EQ(FoundPlace(button), (PixelRect{35, 60, 65, 80}));

  // Left, right, top, bottom.
  WriteItems(client, "_GTK_FRAME_EXTENTS", XA_CARDINAL, {8, 7, 6, 5});
  EXPECT_EQ(Found(21, 100), names({below}));
  EXPECT_EQ(FoundPlace(frame), (PixelRect{28, 36, 213, 195}));
  WriteItems(client, "_GTK_FRAME_EXTENTS", XA_CARDINAL, {800, 7, 6, 5}); // more than there is
  EXPECT_EQ(Found(21, 100), names({frame}));
  XDeleteProperty(artist.display, client, XID(AtomOf("_GTK_FRAME_EXTENTS")));
  WriteItems(below, "_GTK_FRAME_EXTENTS", XA_CARDINAL, {10, 10, 10, 10}); // without a frame
  EXPECT_EQ(Found(21, 100), names({frame}));
  EXPECT_EQ(Found(5, 100), names({}));
  EXPECT_EQ(FoundPlace(below), (PixelRect{10, 10, 290, 290}));
}

TEST_F(X11WindowSearch, TakesTheFrameOfARealManagerForItsWindow) {
  if (!HasManager()) GTEST_SKIP() << "there is none";
  const Window window = XCreateSimpleWindow(artist.display, artist.root, 30, 120, 200, 150, 0, 0, 0);
  WriteItems(window, "_NET_WM_USER_TIME", XA_CARDINAL, {0}); // no keyboard for it, which could come at any time
  XMapWindow(artist.display, window);
  Until([&] { return artist.State(window).map_state == IsViewable; });
  WaitForManager();
  Window frame = window, parent = window;
  while (parent != artist.root) Children(frame = parent, &parent);
  EXPECT_LT(PlaceOf(frame).top, PlaceOf(window).top) << "there is a title";
  EXPECT_EQ(Found(PlaceOf(window).left + 20, PlaceOf(frame).top + 2), std::vector{DesktopWindow(frame)});
  EXPECT_EQ(FoundPlace(window), PlaceOf(frame));
  XDestroyWindow(artist.display, window);
}

TEST_F(X11WindowSearch, FindsOurWindowsButNoCoverAndNothingThatHasGone) {
  DisplayWindow* main = Show(Role::kMain, {30, 30, 330, 230});
  Show(Role::kCover, {0, 0, 640, 480});
  const std::vector<DesktopWindow> found = Found(100, 100);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(DisplayOwnWindow(found[0]), main);
  EXPECT_EQ(FoundPlace(found[0]), (PixelRect{30, 30, 330, 230}));

  const Window other = Make(artist.root, {50, 50, 150, 150}), child = Make(other, {0, 0, 100, 100});
  EXPECT_EQ(Found(100, 100), (std::vector{DesktopWindow(other), DesktopWindow(child)}));
  EXPECT_EQ(DisplayOwnWindow(DesktopWindow(other)), nullptr);
  XDestroyWindow(artist.display, other);
  PixelRect place;
  EXPECT_EQ(DisplayWindowAt(DesktopWindow(other), 100, 100), 0u);
  EXPECT_FALSE(DisplayWindowPlace(DesktopWindow(child), &place));
  EXPECT_EQ(Found(100, 100), found);
  EXPECT_FALSE(DisplayWindowPlace(4711, &place) || DisplayHasWindow(4711) || DisplayHasWindow(DesktopWindow(child)));
  EXPECT_EQ(DisplayWindowTitle(4711), "");
}

TEST_F(X11WindowSearch, EndsAWhileAfterTheLastQuestion) {
  const Window other = Make(artist.root, {50, 50, 150, 150});
  Found(100, 100);
  X11Live()->desktop.soughtAt -= 10000; // long ago
  XMoveWindow(artist.display, other, 60, 60);
  Drain();
  XWindowAttributes root{};
  XGetWindowAttributes(X11Live()->display, artist.root, &root);
  EXPECT_EQ(root.your_event_mask & SubstructureNotifyMask, 0);
  EXPECT_EQ(Found(55, 55), Truth(55, 55));
}

} // namespace

} // namespace framereel
