// The pointer: its picture with alpha and hot spot, when it is asked for, and its place.
#include "x11/artist.h"

#include <cstdlib>
#include <ostream>

#include <X11/extensions/XTest.h>
#include <X11/extensions/Xrender.h>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

struct Point {
  int32_t x, y;
  bool operator==(const Point&) const = default;
};

void PrintTo(const Point& p, std::ostream* out) {
  *out << "{" << p.x << ", " << p.y << "}";
}

class X11Pointer : public X11Test {
protected:
  // Gives the root a pointer of 5 by 3 pixels, black but for a white pixel at 4, 2; the right top pixel is not there.
  void UseBitmapPointer() {
    const char there[] = {0x0F, 0x1F, 0x1F};
    const char white[] = {0, 0, 0x10};
    Pixmap source = XCreateBitmapFromData(artist.display, artist.root, white, 5, 3);
    Pixmap mask = XCreateBitmapFromData(artist.display, artist.root, there, 5, 3);
    XColor light{0, 0xFFFF, 0xFFFF, 0xFFFF, 0, 0};
    XColor dark{};
    Use(XCreatePixmapCursor(artist.display, source, mask, &light, &dark, 3, 1));
    XFreePixmap(artist.display, source);
    XFreePixmap(artist.display, mask);
  }

  // Gives the root a pointer of these premultiplied pixels.
  void UseAlphaPointer(int32_t width, int32_t height, const uint32_t* pixels, int32_t hotX, int32_t hotY) {
    Display* d = artist.display;
    Pixmap pixmap = XCreatePixmap(d, artist.root, width, height, 32);
    GC context = XCreateGC(d, pixmap, 0, nullptr);
    XImage* image = XCreateImage(d, nullptr, 32, ZPixmap, 0, nullptr, width, height, 32, 0);
    image->data = static_cast<char*>(std::calloc(height, image->bytes_per_line));
    for (int32_t i = 0; i < width * height; i++) XPutPixel(image, i % width, i / width, pixels[i]);
    XPutImage(d, pixmap, context, image, 0, 0, 0, 0, width, height);
    XDestroyImage(image);
    ::Picture picture = XRenderCreatePicture(d, pixmap, XRenderFindStandardFormat(d, PictStandardARGB32), 0, nullptr);
    Use(XRenderCreateCursor(d, picture, hotX, hotY));
    XRenderFreePicture(d, picture);
    XFreeGC(d, context);
    XFreePixmap(d, pixmap);
  }

  void MoveMouse(int32_t x, int32_t y) {
    XTestFakeMotionEvent(artist.display, -1, x, y, CurrentTime);
    XSync(artist.display, False);
    Catch();
  }
  void WarpByAnotherProgram(int32_t x, int32_t y) {
    XWarpPointer(artist.display, None, artist.root, 0, 0, 0, 0, x, y);
    XSync(artist.display, False);
    Catch();
  }
  Point Place() {
    Point at{-1, -1};
    EXPECT_TRUE(DisplayPointerPlace(&at.x, &at.y));
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

private:
  void Use(Cursor cursor) {
    XDefineCursor(artist.display, artist.root, cursor);
    XFreeCursor(artist.display, cursor);
    XSync(artist.display, False);
    Catch();
  }
};

TEST_F(X11Pointer, TellsPictureAndHotSpotOfABitmap) {
  UseBitmapPointer();
  const PointerPicture* picture = DisplayPointer();
  ASSERT_NE(picture, nullptr);
  ASSERT_EQ(picture->width, 5);
  ASSERT_EQ(picture->height, 3);
  EXPECT_EQ(picture->hotX, 3);
  EXPECT_EQ(picture->hotY, 1);
  EXPECT_EQ(picture->pixels[0], 0xFF000000);
  EXPECT_EQ(picture->pixels[4], 0u);
  EXPECT_EQ(picture->pixels[2 * 5 + 3], 0xFF000000);
  EXPECT_EQ(picture->pixels[2 * 5 + 4], 0xFFFFFFFF);
}

TEST_F(X11Pointer, TellsAlphaPremultiplied) {
  const uint32_t pixels[] = {0x80402010, 0xFFFF0000, 0, 0x01000001, 0x40404040, 0xFF00FF00};
  UseAlphaPointer(3, 2, pixels, 2, 0);
  const PointerPicture* picture = DisplayPointer();
  ASSERT_NE(picture, nullptr);
  ASSERT_EQ(picture->width, 3);
  ASSERT_EQ(picture->height, 2);
  EXPECT_EQ(picture->hotX, 2);
  EXPECT_EQ(picture->hotY, 0);
  for (int32_t i = 0; i < 6; i++) EXPECT_EQ(picture->pixels[i], pixels[i]) << i;
}

TEST_F(X11Pointer, AsksForAPictureOnlyWhenItChanged) {
  UseBitmapPointer();
  ASSERT_NE(DisplayPointer(), nullptr);
  Display* display = X11Live()->display;
  unsigned long before = NextRequest(display);
  for (int32_t i = 0; i < 5; i++) ASSERT_EQ(DisplayPointer()->width, 5);
  EXPECT_EQ(NextRequest(display), before);

  const uint32_t pixel = 0xFF123456;
  UseAlphaPointer(1, 1, &pixel, 0, 0);
  ASSERT_EQ(DisplayPointer()->width, 1);
  EXPECT_EQ(DisplayPointer()->pixels[0], pixel);
}

TEST_F(X11Pointer, StandsWhereItWasMoved) {
  int32_t w = artist.Width();
  int32_t h = artist.Height();
  const struct {
    int32_t toX, toY, x, y;
  } moves[] = {
      {17, 39, 17, 39}, {0, 0, 0, 0}, {w - 1, h - 1, w - 1, h - 1}, {70000, -70000, w - 1, 0}, {-5, h + 5, 0, h - 1}};
  for (const auto& move : moves) {
    DisplayMovePointer(move.toX, move.toY);
    int32_t x = -1;
    int32_t y = -1;
    ASSERT_TRUE(DisplayPointerPlace(&x, &y));
    EXPECT_EQ(x, move.x);
    EXPECT_EQ(y, move.y);
  }
}

TEST_F(X11Pointer, AtRestIsNotAskedForUntilADeviceIsHeard) {
  DisplayMovePointer(10, 10);
  Rest();
  unsigned long before = NextRequest(X11Live()->display);
  for (int32_t i = 0; i < 5; i++) EXPECT_EQ(Place(), (Point{10, 10}));
  EXPECT_EQ(NextRequest(X11Live()->display), before);

  MoveMouse(31, 41);
  EXPECT_EQ(Place(), (Point{31, 41}));
  // On its way it is asked for each time, and the mouse is not listened to.
  EXPECT_FALSE(X11Live()->devices.hearsMotion);
  WarpByAnotherProgram(33, 43);
  EXPECT_EQ(Place(), (Point{33, 43}));
  Rest();
  // Held by another program, the mouse is still heard.
  XGrabPointer(artist.display, artist.root, False, 0, GrabModeAsync, GrabModeAsync, None, None, CurrentTime);
  MoveMouse(32, 42);
  EXPECT_EQ(Place(), (Point{32, 42}));
  XUngrabPointer(artist.display, CurrentTime);

  // A server that does not tell is asked each time.
  Rest();
  X11Live()->devices.tell = X11Live()->devices.hearsMotion = false;
  WarpByAnotherProgram(12, 13);
  EXPECT_EQ(Place(), (Point{12, 13}));
}

TEST_F(X11Pointer, PlaceIsTrueAfterMovesThatNoDeviceMakes) {
  Rest();
  const int32_t width = artist.Width(), height = artist.Height();
  DisplayMovePointer(width - 1, height - 1);
  EXPECT_EQ(Place(), (Point{width - 1, height - 1}));
  artist.ResizeScreen(width - 100, height - 100);
  Point pushed = Place();
  artist.ResizeScreen(width, height);
  EXPECT_EQ(pushed, (Point{width - 101, height - 101}));

  // A frame that is read has the pointer where it stands.
  WarpByAnotherProgram(77, 88);
  OwnSurface into(10, 10);
  ASSERT_TRUE(DisplayReadScreen({0, 0, 10, 10}, into.surface, 0, 0));
  EXPECT_EQ(Place(), (Point{77, 88}));
  // Our windows tell.
  DisplayWindow* window = DisplayNewWindow({WindowRole::kPopup, {100, 100, 200, 200}, nullptr, ""});
  DisplayShowWindow(window, true);
  Catch();
  for (const Point& to : {Point{110, 120}, Point{150, 130}, Point{300, 300}}) {
    WarpByAnotherProgram(to.x, to.y);
    EXPECT_EQ(Place(), to);
  }
  EXPECT_TRUE(X11Live()->devices.hearsMotion);
  DisplayFreeWindow(window);
}

} // namespace

} // namespace framereel
