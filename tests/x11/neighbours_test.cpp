// What other programs do with their windows: where each one stands is known, and a picture of which only those rows are
// read again that are told to have changed is the screen's.
#include "x11/user.h"

#include <X11/cursorfont.h>

#include <iterator>
#include <optional>
#include <random>

#include "win32/pixels/rectangles.h"
#include "win32/pixels/region.h"

namespace framereel {

namespace {

constexpr PixelRect kArea = {30, 20, 430, 320}, kMark = {100, 80, 164, 143}; // the picture, and a mark of ours on it

class X11WindowNeighbours : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    pictures.emplace();
  }
  // X11 has a macro of the name that dice have for this.
  int Any(int limit) { return int(random() % uint32_t(limit)); }
  Window& AnyWindow() { return theirs[size_t(Any(int(theirs.size())))]; }
  PixelRect AnyPlace() {
    const int32_t left = Any(200) - 60, top = Any(200) - 60;
    return {left, top, left + 1 + Any(300), top + 1 + Any(300)};
  }
  void OpenAny() {
    const Window parent = theirs.empty() || Any(5) == 0 ? artist.root : AnyWindow();
    theirs.push_back(artist.Make(parent, AnyPlace(), Any(3), Any(3) == 0 ? 32 : 0));
  }

  // What programs may do to windows of their own, and to the root.
  void Disturb(Window& which) {
    Display* display = artist.display;
    const PixelRect to = AnyPlace(), block = {to.left / 3, to.top / 3, to.left / 3 + 30, to.top / 3 + 20};
    const int deed = Any(12);
    if (deed == 0) OpenAny();
    if (deed == 1) (artist.State(which).map_state == IsUnmapped ? XMapWindow : XUnmapWindow)(display, which);
    if (deed == 2) (Any(2) == 0 ? XRaiseWindow : XLowerWindow)(display, which);
    if (deed == 3) XCirculateSubwindowsUp(display, artist.root);
    if (deed == 4) XMoveResizeWindow(display, which, to.left, to.top, unsigned(WidthOf(to)), unsigned(HeightOf(to)));
    if (deed == 5 && Children(which).empty()) Reparent(which, to);
    if (deed == 6 && Children(which).empty() && theirs.size() >= 8) Destroy(which);
    if (deed == 7) Fill(artist.root, to, IncludeInferiors);
    if (deed > 7) Fill(which, block, ClipByChildren);
  }
  void Reparent(Window window, const PixelRect& to) {
    const Window other = AnyWindow(), parent = other == window || Any(3) == 0 ? artist.root : other;
    XReparentWindow(artist.display, window, parent, to.left, to.top);
  }
  // From then on nobody knows it.
  void Destroy(Window& which) {
    const auto gone = DesktopWindow(std::exchange(which, theirs.back()));
    theirs.pop_back();
    XDestroyWindow(artist.display, gone);
    PixelRect place;
    EXPECT_FALSE(DisplayWindowPlace(gone, &place) || DisplayHasWindow(gone));
    EXPECT_EQ(DisplayWindowAt(gone, 100, 100), 0u);
    EXPECT_EQ(DisplayWindowTitle(gone), "");
  }
  void Fill(Drawable to, const PixelRect& r, int mode) {
    XGCValues values{};
    values.foreground = static_cast<unsigned long>(random()) & artist.PixelBits();
    values.subwindow_mode = mode;
    const GC context = XCreateGC(artist.display, to, GCForeground | GCSubwindowMode, &values);
    XFillRectangle(artist.display, to, context, r.left, r.top, unsigned(WidthOf(r)), unsigned(HeightOf(r)));
    if (mode == ClipByChildren) XCopyArea(artist.display, to, to, context, 5, 5, 40, 30, Any(90), Any(90));
    XFreeGC(artist.display, context);
  }
  // The pointer in another shape, or another colour of the same.
  void ShapePointer() {
    const Cursor cursor = XCreateFontCursor(artist.display, Any(2) == 0 ? XC_crosshair : XC_arrow);
    XColor ink = {0, uint16_t(random()), uint16_t(random()), 0, 0, 0}, rim = {};
    XRecolorCursor(artist.display, cursor, &ink, &rim);
    for (const Window each : {artist.root, AnyWindow()}) XDefineCursor(artist.display, each, cursor);
  }

  // From the top down.
  std::vector<Window> Children(Window window) const {
    Window root, parent, *first = nullptr;
    unsigned int count = 0;
    XQueryTree(artist.display, window, &root, &parent, &first, &count);
    std::vector<Window> children(std::make_reverse_iterator(first + count), std::make_reverse_iterator(first));
    if (first) XFree(first);
    return children;
  }

  // ---- Where they stand ----

  // From the top-level window down to the deepest one.
  std::vector<Window> Found(int32_t x, int32_t y) {
    Catch();
    std::vector<Window> chain;
    for (DesktopWindow at = 0; (at = DisplayWindowAt(at, x, y)) != 0;) chain.push_back(at);
    return chain;
  }
  PixelRect FoundPlace(Window window) {
    PixelRect place = {};
    EXPECT_TRUE(DisplayWindowPlace(DesktopWindow(window), &place));
    return place;
  }
  // What is found, from the server alone, each time anew.
  std::vector<Window> Truth(int32_t x, int32_t y) const {
    std::vector<Window> chain;
    for (Window at = artist.root; at != None;) {
      const std::vector<Window> children = Children(at);
      const auto next = std::find_if(children.begin(), children.end(), [=, this](Window each) {
        const bool shows = artist.State(each).map_state == IsViewable && !X11IsMark(X11Live(), each);
        return shows && Holds(PlaceOf(each), x, y);
      });
      at = next == children.end() ? None : *next;
      if (at != None) chain.push_back(at);
    }
    return chain;
  }

  // ---- What of the screen has changed ----

  // Brings the picture up to date, and answers what was read for that.
  Region Update() {
    Region rows;
    DisplayAddChanges(kArea, &rows);
    rows.ForEach([&](const PixelRect& r) {
      EXPECT_TRUE(DisplayReadScreen(r, pictures->kept.surface, r.left - kArea.left, r.top - kArea.top));
    });
    return rows;
  }
  std::string Fault() const {
    EXPECT_TRUE(DisplayReadScreen(kArea, pictures->whole.surface, 0, 0));
    return Difference(pictures->kept.Pixels(), pictures->whole.Pixels());
  }
  // Whether just a part is read, if the server tells any.
  void ExpectRead(int32_t top, int32_t bottom, Place where = Place::current()) {
    const bool tellsRows = artist.Depth() > 8 && artist.HasExtension("DAMAGE");
    const Region rows = Update();
    const PixelRect expected = tellsRows ? PixelRect{kArea.left, top, kArea.right, bottom} : kArea;
    EXPECT_TRUE(IsEmpty(expected) ? rows.IsEmpty() : rows.Bounds() == expected) << "line " << where.line();
    EXPECT_EQ(Fault(), "") << "line " << where.line();
  }

  // What ours may do: marks that go on and off, another rectangle that is asked of.
  void DisturbOurselves() {
    constexpr uint8_t stripes[8] = {0xF0, 0xE1, 0xC3, 0x87, 0x0F, 0x1E, 0x3C, 0x78};
    const int deed = Any(3);
    if (deed == 0) {
      EXPECT_TRUE(DisplayInvertScreen({40, 60, 290, 61}, stripes));
      DisplaySleep(0);
    } else if (deed == 1) {
      EXPECT_TRUE(pictured || DisplayReadScreen(kMark, pictures->below.surface, 0, 0));
      pictured = !pictured;
      const Surface& shown = (pictured ? pictures->mark : pictures->below).surface;
      EXPECT_TRUE(DisplayDrawScreen(shown, {0, 0, 64, 63}, kMark.left, kMark.top));
    } else {
      Region rows;
      DisplayAddChanges(kMark, &rows);
      EXPECT_TRUE(rows.Bounds() == kMark);
    }
  }

  // Made once the display stands.
  struct Pictures {
    OwnSurface kept{400, 300}, whole{400, 300}, mark{64, 63, 0x3C}, below{64, 63};
  };
  std::optional<Pictures> pictures;
  bool pictured = false;
  std::mt19937 random{3};
  std::vector<Window> theirs;
};

TEST_F(X11WindowNeighbours, StandWhereTheyAreFoundAndLeaveNothingUnreadWhateverTheyDo) {
  for (int i = 0; i < 12; i++) OpenAny();
  size_t deepest = 0;
  for (int round = 0; round < (HasCompositor() ? 60 : 400); ++round) {
    SCOPED_TRACE(round);
    if (round % 50 == 49) X11Live()->desktop.soughtAt -= 10000; // as if nobody had asked for long: all is forgotten
    for (int deeds = Any(3); deeds > 0; --deeds) Disturb(AnyWindow());
    if (Any(4) == 0) DisturbOurselves();
    if (Any(4) == 0) ShapePointer();
    if (Any(2) == 0) MovePointer(Any(450), Any(350));
    Update();
    // A compositor shows changes in its own time.
    if (HasCompositor()) Until([&] { return Fault().empty() || (Update(), false); });
    EXPECT_TRUE(HasCompositor() || Fault().empty()) << Fault();
    ASSERT_FALSE(HasFailure());
    const auto named = DesktopWindow(AnyWindow()); // by nobody but us: it need not have been found anywhere
    const bool shows = artist.State(named).map_state == IsViewable;
    PixelRect place;
    ASSERT_TRUE(DisplayHasWindow(named));
    ASSERT_EQ(DisplayWindowPlace(named, &place), shows);
    ASSERT_TRUE(!shows || place == PlaceOf(named));
    for (int at = 0; at < 4; at++) {
      const int32_t x = Any(300), y = Any(300);
      const std::vector<Window> found = Found(x, y);
      ASSERT_EQ(found, Truth(x, y)) << "at " << x << "," << y;
      for (const Window each : found) ASSERT_EQ(FoundPlace(each), PlaceOf(each));
      deepest = std::max(deepest, found.size());
    }
  }
  EXPECT_GE(deepest, 3u);
}

TEST_F(X11WindowNeighbours, TakesAFrameAndTheMarginsOfAShadowForWhatTheyAre) {
  using Names = std::vector<Window>;
  const PixelRect around = {20, 30, 220, 200};
  const Window below = artist.Make(artist.root, {0, 0, 300, 300}), frame = artist.Make(artist.root, around);
  const Window title = artist.Make(frame, {0, 0, 200, 20}), wrapper = artist.Make(frame, {5, 20, 195, 165});
  const Window client = artist.Make(wrapper, {0, 0, 190, 145}), button = artist.Make(client, {10, 10, 40, 30});
  std::optional<OwnManager> manager;
  if (!HasManager()) {
    EXPECT_EQ(Found(40, 70), (Names{frame, wrapper, client, button}));
    manager.emplace(artist);
  }
  WriteItems(client, "WM_STATE", XID(AtomOf("WM_STATE")), {NormalState, None});
  XMoveWindow(artist.display, title, 0, 1); // nobody hears of the property; a manager maps its frame behind it
  EXPECT_EQ(Found(40, 40), Names{frame});
  EXPECT_EQ(Found(40, 70), (Names{frame, button}));
  EXPECT_EQ(FoundPlace(frame), around);
  EXPECT_EQ(FoundPlace(client), around);
  EXPECT_EQ(FoundPlace(wrapper), (PixelRect{25, 50, 215, 195}));
  EXPECT_EQ(FoundPlace(button), (PixelRect{35, 60, 65, 80}));
  const std::vector<DesktopWindow> all = DisplayWindows();
  const auto at = std::find(all.begin(), all.end(), client);
  EXPECT_NE(std::find(at, all.end(), below), all.end()) << "from the top down";
  EXPECT_EQ(std::find(all.begin(), all.end(), frame), all.end());
  XStoreName(artist.display, client, "caf\xe9");
  EXPECT_EQ((Catch(), DisplayWindowTitle(DesktopWindow(client))), "caf\u00e9");
  XChangeProperty(artist.display, client, XID(AtomOf("_NET_WM_NAME")), XID(AtomOf("UTF8_STRING")), 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>("\u30c6\n"), 4);
  EXPECT_EQ((Catch(), DisplayWindowTitle(DesktopWindow(client))), "\u30c6\n");

  // Left, right, top, bottom.
  WriteItems(client, "_GTK_FRAME_EXTENTS", XA_CARDINAL, {8, 7, 6, 5});
  EXPECT_EQ(Found(21, 100), Names{below});
  EXPECT_EQ(FoundPlace(frame), (PixelRect{28, 36, 213, 195}));
  WriteItems(client, "_GTK_FRAME_EXTENTS", XA_CARDINAL, {800, 7, 6, 5}); // more than there is
  EXPECT_EQ(Found(21, 100), Names{frame});
  WriteItems(below, "_GTK_FRAME_EXTENTS", XA_CARDINAL, {10, 10, 10, 10}); // without a frame
  EXPECT_EQ(Found(5, 100), Names{});
}

TEST_F(X11WindowNeighbours, OursAreFoundButNoCover) {
  DisplayWindow* main = Show(Role::kMain, {30, 30, 330, 230});
  Show(Role::kCover, {0, 0, 640, 480});
  const std::vector<Window> found = Found(100, 100);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(DisplayOwnWindow(DesktopWindow(found[0])), main);
  EXPECT_EQ(FoundPlace(found[0]), (PixelRect{30, 30, 330, 230}));
  EXPECT_EQ(DisplayOwnWindow(DesktopWindow(artist.Make(artist.root, {50, 50, 150, 150}))), nullptr);
}

TEST_F(X11WindowNeighbours, AreTheRowsThatWereDrawnOnAndNoMore) {
  if (HasCompositor()) GTEST_SKIP() << "its doings are its own";
  const Window window = artist.Show(artist.Noise(640, 480, 2), 0, 0);
  Catch();
  EXPECT_TRUE(Update().Bounds() == kArea); // the first time
  ExpectRead(0, 0);
  Fill(window, {50, 100, 58, 116}, IncludeInferiors);
  ExpectRead(100, 116);
  Fill(window, {50, 10, 58, 30}, IncludeInferiors); // over the edge
  ExpectRead(20, 30);
  Fill(window, {0, 0, 20, 400}, IncludeInferiors); // beside it
  Fill(window, {500, 0, 600, 400}, IncludeInferiors);
  ExpectRead(0, 0);
  for (const int32_t x : {200, 300}) { // the server's own drawing
    MovePointer(x, 150);
    ExpectRead(kArea.top, kArea.bottom);
    ExpectRead(0, 0);
  }
  for (const int32_t width : {500, 640}) {
    artist.ResizeScreen(width, width == 640 ? 480 : 400);
    ExpectRead(kArea.top, kArea.bottom);
  }
  ExpectRead(0, 0);
}

} // namespace

} // namespace framereel
