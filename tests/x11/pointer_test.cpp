// The pointer: its picture with alpha and hot spot, when it is asked for, and its place.
#include "x11/user.h"

#include <utility>

#include <X11/extensions/Xrender.h>

namespace framereel {

namespace {

using Point = std::pair<int32_t, int32_t>;

class X11Pointer : public X11WindowTest {
protected:
  Picture Told() {
    Catch();
    const PointerPicture* told = DisplayPointer();
    if (!told) return {};
    hot = {told->hotX, told->hotY};
    return {told->width, told->height, {told->pixels, told->pixels + told->width * told->height}};
  }
  Point Place() {
    Point at{-1, -1};
    EXPECT_TRUE(DisplayPointerPlace(&at.first, &at.second));
    return at;
  }
  // Makes the display believe that the pointer has stood still for long.
  void Rest() {
    Place();
    X11Live()->devices.movedTick -= 10000;
    X11Live()->devices.pointerStale = true;
    Place();
    ASSERT_TRUE(X11Live()->devices.hearsMotion);
  }

  Point hot; // of the picture told last
};

TEST_F(X11Pointer, TellsItsPictureWithAlphaAndHotSpot) {
  const Picture own = {3, 2, {0x80402010, 0xFFFF0000, 0, 0x01000001, 0x40404040, 0xFF00FF00}}; // premultiplied
  Display* d = artist.display;
  Pixmap pixmap = XCreatePixmap(d, artist.root, own.width, own.height, 32);
  artist.Put(own, pixmap, 32);
  ::Picture picture = XRenderCreatePicture(d, pixmap, XRenderFindStandardFormat(d, PictStandardARGB32), 0, nullptr);
  XDefineCursor(d, artist.root, XRenderCreateCursor(d, picture, 2, 0));
  EXPECT_EQ(Difference(Told(), own), "");
  EXPECT_EQ(hot, Point(2, 0));

  // Over our windows it has their shape; of pictures of their own the server's cursors show black and white.
  DisplayWindow* window = Show(Role::kPopup, {10, 10, 210, 210});
  MovePointer(50, 50);
  const uint32_t lightNoneDark[] = {0xFFE0E0E0, 0, 0xFF300000};
  const PointerPicture shape = {3, 1, 2, 0, lightNoneDark};
  Picture before = own;
  for (const PointerShape each : {PointerShape::kIBeam, PointerShape::kArrow, PointerShape::kOwn}) {
    DisplayPointerShape(window, each, &shape);
    EXPECT_NE(Difference(Told(), before), "");
    before = Told();
  }
  EXPECT_EQ(Difference(before, {3, 1, {0xFFFFFFFF, 0, 0xFF000000}}), "");
  EXPECT_EQ(hot, Point(2, 0));
}

TEST_F(X11Pointer, IsWhereItStandsWhateverHasMovedIt) {
  const int32_t w = artist.Width(), h = artist.Height();
  OwnSurface frame(10, 10);
  const auto warp = [this](int x, int y) { XWarpPointer(artist.display, None, artist.root, 0, 0, 0, 0, x, y); };
  const struct {
    std::function<void()> move;
    Point place;
  } moves[] = {
      {[&] { Rest(), MovePointer(31, 41); }, {31, 41}},
      {[&] { warp(33, 43); }, {33, 43}}, // on its way it is asked for each time
      {[&] { Rest(), GrabMouse(), MovePointer(32, 42); }, {32, 42}},
      {[&] { XUngrabPointer(artist.display, CurrentTime), Rest(), DisplayMovePointer(17, 39); }, {17, 39}},
      {[&] { DisplayMovePointer(65546, -65526); }, {w - 1, 0}},
      {[&] { DisplayMovePointer(-5, h + 5); }, {0, h - 1}},
      {[&] { artist.ResizeScreen(w - 100, h - 100); }, {0, h - 101}},
      {[&] {
         artist.ResizeScreen(w, h), warp(77, 88), DisplayReadScreen({0, 0, 10, 10}, frame.surface, 0, 0);
       },
       {77, 88}}, // with the pointer
      {[&] {
         Show(Role::kPopup, {100, 100, 200, 200}), Rest(), warp(110, 120);
       },
       {110, 120}}, // which tells
      {[&] { warp(150, 130); }, {150, 130}},
      {[&] { warp(300, 300); }, {300, 300}},
      // A server that does not tell is asked each time.
      {[&] { Rest(), X11Live()->devices.tell = X11Live()->devices.hearsMotion = false, warp(12, 13); }, {12, 13}}};
  for (const auto& [move, place] : moves) {
    move();
    Catch();
    EXPECT_EQ(Place(), place);
  }
}

} // namespace

} // namespace framereel
