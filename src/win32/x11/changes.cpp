// What has been drawn on the screen since somebody asked last, by the DAMAGE extension.
//
// The server notes down what it draws on the root and on all that shows there: windows that paint, come, go and move,
// the root's own background, the pictures of a compositor. The pointer is not among it, whoever draws that. It is taken
// from the server ahead of a read, in one step: what is drawn between the two is read, and told again the next time.
//
// It is no word on all that a read may find. Where more may have changed, all has: another size of the screen, a
// compositor that comes or goes, our marks, a read that failed, another picture of the pointer, and, without a
// compositor, its moves.
#include <X11/Xlib-xcb.h>
#include <X11/extensions/Xfixes.h>

#include <algorithm>
#include <utility>

#include "win32/pixels/region.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

constexpr uint32_t kInterestMs = 10000; // twice as long as frames may be apart
// A read takes its way to the server and back as well, in which these could have been read along.
constexpr int32_t kBytesBetweenReads = 1 << 17;

// Extensions of drivers that let programs draw on the screen past the server, or are not known to tell it of that.
constexpr const char* kPastTheServer[] = {"XFree86-DRI", "NV-GLX"};

bool HasExtension(X11Connection* x, const char* name) {
  int major, event, error;
  return XQueryExtension(x->display, name, &major, &event, &error);
}

void Listen(X11Connection* x) {
  X11Changes& changes = x->changes;
  changes.damage = XDamageCreate(x->display, x->root, XDamageReportNonEmpty);
  changes.taken = XFixesCreateRegion(x->display, nullptr, 0);
  changes.unsure = true;
}

// Without a compositor windows of another depth than the screen's have pixels of their own all the same. The server
// puts them on the screen when it comes to it, but ahead of any read. A read of one pixel does, and nobody waits for
// its answer.
void PutWindowsOnScreen(const X11Connection* x) {
  xcb_connection_t* connection = XGetXCBConnection(x->display);
  const auto root = static_cast<xcb_window_t>(x->root);
  const auto read = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root, 0, 0, 1, 1, UINT32_MAX);
  xcb_discard_reply(connection, read.sequence);
}

// What the server has noted down, in bands from the top down; it begins anew.
struct Damaged {
  XRectangle* places; // null when it does not answer
  int count;

  explicit Damaged(X11Connection* x) : places(nullptr), count(0) {
    if (!x->marks.composited) PutWindowsOnScreen(x);
    XDamageSubtract(x->display, x->changes.damage, None, x->changes.taken);
    const unsigned long request = NextRequest(x->display);
    places = XFixesFetchRegion(x->display, x->changes.taken, &count);
    if (!places) X11NoAnswer(x, request);
  }
  ~Damaged() {
    if (places) XFree(places);
  }
  Damaged(const Damaged&) = delete;
};

// A server that draws the pointer itself puts those windows on the screen ahead of that, too, and notes down neither.
// So without a compositor nothing is sure of a screen on which the pointer has moved.
bool PointerHasMoved(X11Connection* x) {
  X11Changes& changes = x->changes;
  int32_t left = 0, top = 0;
  if (x->marks.composited || !DisplayPointerPlace(&left, &top)) return false;
  const bool same = changes.pointerX == left && changes.pointerY == top;
  changes.pointerX = left;
  changes.pointerY = top;
  return !same;
}

// Rows that are close to each other come with those between them.
void AddRows(const X11Connection* x, const Damaged& damaged, const PixelRect& where, Region* rows) {
  const int32_t rowBytes = (where.right - where.left) * x->facts.layout.bytesPerPixel;
  const int32_t between = kBytesBetweenReads / rowBytes;
  PixelRect band = {};
  for (const XRectangle* place = damaged.places; place != damaged.places + damaged.count; ++place) {
    const PixelRect changed = Intersect(where, {place->x, place->y, place->x + place->width, place->y + place->height});
    if (IsEmpty(changed)) continue;
    if (!IsEmpty(band) && changed.top - band.bottom > between) rows->Add(std::exchange(band, {}));
    band = {where.left, IsEmpty(band) ? changed.top : band.top, where.right, changed.bottom};
  }
  rows->Add(band);
}

// False when all may have changed.
bool Tell(X11Connection* x, const PixelRect& where, Region* rows) {
  X11Changes& changes = x->changes;
  if (!changes.told || IsEmpty(where)) return false;
  X11SettleMarks(x); // as a read does, so that what this draws is among it
  changes.askedTick = DisplayTick();
  if (!changes.damage) Listen(x);
  const Damaged damaged(x);
  const bool moved = PointerHasMoved(x);
  if (!X11Live()) return false;
  X11TakeEvents(x, QueuedAlready); // what has been told ahead of the answers
  const bool elsewhere = !Same(std::exchange(changes.where, where), where);
  const bool unsure = std::exchange(changes.unsure, false);
  if (elsewhere || unsure || moved || !damaged.places || X11ShowsMarks(x, where)) return false;
  AddRows(x, damaged, where, rows);
  return true;
}

} // namespace

void X11WatchChanges(X11Connection* x) {
  // A program may change the colours of a palette, of which nothing tells.
  if (IsPalette(x->facts.layout)) return;
  X11Changes& changes = x->changes;
  int errors = 0, fixes = 0, major = 0, minor = 0;
  if (!XDamageQueryExtension(x->display, &changes.event, &errors)) return;
  if (!XFixesQueryExtension(x->display, &fixes, &errors) || !XFixesQueryVersion(x->display, &major, &minor)) return;
  changes.event += XDamageNotify;
  changes.told = major >= 2 && std::none_of(std::begin(kPastTheServer), std::end(kPastTheServer),
                                            [x](const char* name) { return HasExtension(x, name); });
}

// The notice that something has been drawn at all: it is asked for where it matters.
bool X11TakeChangeEvent(const X11Connection* x, const XEvent& event) {
  return x->changes.told && event.type == x->changes.event;
}

void X11ForgetOldChanges(X11Connection* x) {
  X11Changes& changes = x->changes;
  if (!X11Live() || !changes.damage || DisplayTick() - changes.askedTick < kInterestMs) return;
  XDamageDestroy(x->display, std::exchange(changes.damage, None));
  XFixesDestroyRegion(x->display, changes.taken);
  XFlush(x->display);
}

void DisplayAddChanges(const PixelRect& where, Region* rows) {
  X11Connection* x = X11Live();
  // Whoever draws the pointer into the picture wants it exact, whatever has moved it.
  if (x) x->devices.pointerStale = true;
  if (!x || !Tell(x, where, rows)) rows->Add(where);
}

} // namespace framereel
