// The pointer of the X11 display. Its picture comes from the XFixes extension and is asked for again only when the
// server has told that it changed; its place, while it rests, only when a device (devices.cpp), a window of ours or our
// own doing has told that it may have moved.
//
// One thing goes untold: another program that moves the pointer by itself (XWarpPointer) while it is over no window of
// ours. Over ours the server tells, and a frame of a recording asks in any case.
#include <X11/extensions/Xfixes.h>

#include <algorithm>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

// The extension hands out each pixel of 32 bits in an unsigned long.
void KeepPicture(X11Connection* x, const XFixesCursorImage& image) {
  size_t count = size_t(image.width) * image.height;
  x->pointerPixels.resize(count);
  for (size_t i = 0; i < count; i++) x->pointerPixels[i] = uint32_t(image.pixels[i]);
  x->pointer = {image.width,
                image.height,
                image.xhot,
                image.yhot,
                count > 0 ? x->pointerPixels.data() : nullptr,
                uint32_t(image.cursor_serial)};
}

void FetchPicture(X11Connection* x) {
  x->pictureStale = false;
  x->pointer = {};
  const unsigned long request = NextRequest(x->display);
  XFixesCursorImage* image = XFixesGetCursorImage(x->display);
  if (!image) return X11NoAnswer(x, request);
  KeepPicture(x, *image);
  XFree(image);
}

void AskPlace(X11Connection* x) {
  int32_t wasX = x->pointerX, wasY = x->pointerY;
  X11AskPointer(x);
  bool moved = x->pointerX != wasX || x->pointerY != wasY;
  if (X11Live() && X11ListensFrom(x, moved)) X11AskPointer(x);
}

} // namespace

void X11WatchPointer(X11Connection* x) {
  int events = 0;
  int errors = 0;
  x->hasPointerPictures = XFixesQueryExtension(x->display, &events, &errors);
  if (!x->hasPointerPictures) return;
  x->pointerEvent = events + XFixesCursorNotify;
  x->pictureStale = true;
  XFixesSelectCursorInput(x->display, x->root, XFixesDisplayCursorNotifyMask);
}

bool X11TakePointerEvent(X11Connection* x, const XEvent& event) {
  if (!x->hasPointerPictures || event.type != x->pointerEvent) return false;
  const auto& notice = reinterpret_cast<const XFixesCursorNotifyEvent&>(event);
  x->changes.unsure = true;
  // A notice may be older than the picture that stands.
  x->pictureStale = !x->pointer.pixels || notice.cursor_serial != x->pointer.serial;
  return true;
}

unsigned int X11AskPointer(X11Connection* x) {
  Window root, child;
  int windowX, windowY;
  unsigned int buttons = 0;
  // What is heard from here on is newer than the answer, or taken for it.
  x->devices.pointerStale = false;
  x->pointerHere =
      XQueryPointer(x->display, x->root, &root, &child, &x->pointerX, &x->pointerY, &windowX, &windowY, &buttons);
  return buttons;
}

const PointerPicture* DisplayPointer() {
  X11Connection* x = X11Live();
  if (!x || !x->hasPointerPictures) return nullptr;
  X11TakeEvents(x, QueuedAfterReading);
  if (!X11Live()) return nullptr;
  if (x->pictureStale) FetchPicture(x);
  return x->pointer.pixels ? &x->pointer : nullptr;
}

bool DisplayPointerPlace(int32_t* x, int32_t* y) {
  X11Connection* connection = X11Live();
  if (!connection) return false;
  X11TakeEvents(connection, QueuedAfterReading);
  bool known = connection->devices.hearsMotion && !connection->devices.pointerStale;
  if (X11Live() && !known) AskPlace(connection);
  if (!X11Live() || !connection->pointerHere) return false;
  *x = connection->pointerX;
  *y = connection->pointerY;
  return true;
}

void DisplayMovePointer(int32_t x, int32_t y) {
  X11Connection* connection = X11Live();
  if (!connection) return;
  // The server keeps the pointer on the screen by itself.
  auto place = [](int32_t v) { return std::clamp(v, kX11PlaceMin, kX11PlaceMax); };
  XWarpPointer(connection->display, None, connection->root, 0, 0, 0, 0, place(x), place(y));
  connection->devices.pointerStale = true; // what programs do is no device's doing
  XFlush(connection->display);
}

} // namespace framereel
