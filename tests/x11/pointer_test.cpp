// The pointer: its picture with alpha and hot spot, when it is asked for, and its place.
#include "x11/user.h"

#include <utility>

#include <X11/extensions/Xrender.h>

namespace framereel {

namespace {

using Point = std::pair<int32_t, int32_t>;

class X11Pointer : public X11WindowTest {
protected:
  void WarpByAnotherProgram(const Point& to) {
    XWarpPointer(artist.display, None, artist.root, 0, 0, 0, 0, to.first, to.second);
    Catch();
  }
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

TEST_F(X11Pointer, AtRestIsNotAskedForUntilADeviceIsHeard) {
  DisplayMovePointer(10, 10);
  Rest();
  MovePointer(31, 41);
  Catch();
  EXPECT_EQ(Place(), Point(31, 41));
  // On its way it is asked for each time, and the mouse is not listened to.
  EXPECT_FALSE(X11Live()->devices.hearsMotion);
  WarpByAnotherProgram({33, 43});
  EXPECT_EQ(Place(), Point(33, 43));
  Rest();
  // Held by another program, the mouse is still heard.
  GrabMouse();
  MovePointer(32, 42);
  Catch();
  EXPECT_EQ(Place(), Point(32, 42));
  XUngrabPointer(artist.display, CurrentTime);

  // A server that does not tell is asked each time.
  Rest();
  X11Live()->devices.tell = X11Live()->devices.hearsMotion = false;
  WarpByAnotherProgram({12, 13});
  EXPECT_EQ(Place(), Point(12, 13));
}

TEST_F(X11Pointer, PlaceIsTrueAfterMovesThatNoDeviceMakes) {
  Rest();
  const int32_t width = artist.Width(), height = artist.Height();
  const std::pair<Point, Point> moves[] = {{{17, 39}, {17, 39}},
                                           {{0, 0}, {0, 0}},
                                           {{65546, -65526}, {width - 1, 0}},
                                           {{-5, height + 5}, {0, height - 1}},
                                           {{width - 1, height - 1}, {width - 1, height - 1}}};
  for (const auto& [to, expected] : moves) {
    DisplayMovePointer(to.first, to.second);
    EXPECT_EQ(Place(), expected);
  }
  artist.ResizeScreen(width - 100, height - 100);
  const Point pushed = Place();
  artist.ResizeScreen(width, height);
  EXPECT_EQ(pushed, Point(width - 101, height - 101));

  // A frame that is read has the pointer where it stands.
  Catch();
  Place();
  WarpByAnotherProgram({77, 88});
  OwnSurface into(10, 10);
  ASSERT_TRUE(DisplayReadScreen({0, 0, 10, 10}, into.surface, 0, 0));
  EXPECT_EQ(Place(), Point(77, 88));
  // Our windows tell.
  Show(Role::kPopup, {100, 100, 200, 200});
  for (const Point& to : {Point(110, 120), Point(150, 130), Point(300, 300)}) {
    WarpByAnotherProgram(to);
    EXPECT_EQ(Place(), to);
  }
  EXPECT_TRUE(X11Live()->devices.hearsMotion);
}

} // namespace

} // namespace framereel
