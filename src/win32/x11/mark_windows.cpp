// The windows that marks are shown in, and the compositor that makes them needed.
//
// A window of 32 bits has no pixels of its own where alpha is 0, so that a mark changes by a change of pixels: no
// compositor fades that out or gives it a shadow of its own shape. Without XFixes a window cannot let the mouse
// through, and without colours that change nobody composes.
#include <X11/Xatom.h>
#include <X11/extensions/Xfixes.h>
#include <X11/extensions/shape.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "win32/pixels/exhaustion.h"
#include "win32/pixels/pixels.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

constexpr int32_t kMarkDepth = 32;

unsigned long ColourBits(const X11Connection* x) {
  const Visual& visual = *x->marks.visual;
  return visual.red_mask | visual.green_mask | visual.blue_mask;
}

// Nothing in it is there to be hit.
void LetMouseThrough(X11Connection* x, Window window) {
  const XserverRegion nothing = XFixesCreateRegion(x->display, nullptr, 0);
  XFixesSetWindowShapeRegion(x->display, window, ShapeInput, 0, 0, nothing);
  XFixesDestroyRegion(x->display, nothing);
}

// Windows that are dragged along with the pointer are nobody's business but the compositor's: no task bar lists them,
// and no effect is made of their coming and going. One compositor gives a shadow to everything that does not say no.
void Describe(X11Connection* x, Window window) {
  X11WriteItems(x, window, X11AtomOf(x, kNetWmWindowType), XA_ATOM, {X11AtomOf(x, kNetWmWindowTypeDnd)});
  X11WriteItems(x, window, X11AtomOf(x, kComptonShadow), XA_CARDINAL, {0});
}

Window Open(X11Connection* x, const PixelRect& where) {
  X11Marks& marks = x->marks;
  if (!marks.colours) marks.colours = XCreateColormap(x->display, x->root, marks.visual, AllocNone);
  XSetWindowAttributes attributes{}; // clear from the start
  attributes.override_redirect = True;
  attributes.colormap = marks.colours;
  const Window window = XCreateWindow(x->display, x->root, where.left, where.top, where.right - where.left,
                                      where.bottom - where.top, 0, kMarkDepth, InputOutput, marks.visual,
                                      CWOverrideRedirect | CWColormap | CWBackPixel | CWBorderPixel, &attributes);
  if (!marks.context) marks.context = XCreateGC(x->display, window, 0, nullptr);
  if (!marks.context) EndWithoutMemory();
  Describe(x, window);
  LetMouseThrough(x, window);
  XMapRaised(x->display, window);
  return window;
}

// None when no window of its size is there.
Window TakeSpare(X11Connection* x, const PixelRect& where) {
  std::vector<X11SpareWindow>& spares = x->marks.spares;
  for (auto spare = spares.begin(); spare != spares.end(); ++spare) {
    if (spare->width != where.right - where.left || spare->height != where.bottom - where.top) continue;
    const Window window = spare->window;
    spares.erase(spare);
    XMoveWindow(x->display, window, where.left, where.top);
    return window;
  }
  return None;
}

} // namespace

void X11WatchCompositor(X11Connection* x) {
  X11Marks& marks = x->marks;
  const int screen = DefaultScreen(x->display);
  int events = 0, errors = 0, major = 0, minor = 0;
  const bool fixes = XFixesQueryExtension(x->display, &events, &errors) &&
                     XFixesQueryVersion(x->display, &major, &minor) && major >= 2;
  XVisualInfo visual;
  if (!fixes || IsPalette(x->facts.layout) || !XMatchVisualInfo(x->display, screen, kMarkDepth, TrueColor, &visual)) {
    return;
  }
  marks.visual = visual.visual;
  marks.event = events + XFixesSelectionNotify;
  char name[32]; // of the selection that a compositor owns (EWMH)
  std::snprintf(name, sizeof name, "_NET_WM_CM_S%d", screen);
  marks.compositor = XInternAtom(x->display, name, False);
  marks.ownerUnsure = true;
  XFixesSelectSelectionInput(x->display, x->root, marks.compositor,
                             XFixesSetSelectionOwnerNotifyMask | XFixesSelectionWindowDestroyNotifyMask |
                                 XFixesSelectionClientCloseNotifyMask);
}

bool X11TakeCompositorEvent(X11Connection* x, const XEvent& event) {
  X11Marks& marks = x->marks;
  if (!marks.compositor || event.type != marks.event) return false;
  if (reinterpret_cast<const XFixesSelectionNotifyEvent&>(event).selection != marks.compositor) return false;
  marks.ownerUnsure = x->changes.unsure = true;
  return true;
}

uint32_t X11MarkPixel(const X11Connection* x, uint32_t pixel) {
  const Visual& to = *x->marks.visual;
  const PixelLayout& from = x->facts.layout;
  return ~uint32_t(ColourBits(x)) | ChannelBits(ChannelOf(pixel, from.redMask), uint32_t(to.red_mask)) |
         ChannelBits(ChannelOf(pixel, from.greenMask), uint32_t(to.green_mask)) |
         ChannelBits(ChannelOf(pixel, from.blueMask), uint32_t(to.blue_mask));
}

uint32_t X11InverseMarkPixel(const X11Connection* x, uint32_t shown) {
  return shown ^ uint32_t(ColourBits(x));
}

void X11ShowMark(X11Connection* x, X11Mark* mark) {
  if (!mark->window) mark->window = TakeSpare(x, mark->where);
  if (mark->window) {
    XRaiseWindow(x->display, mark->window);
  } else {
    mark->window = Open(x, mark->where);
  }
  const int32_t width = mark->where.right - mark->where.left, height = mark->where.bottom - mark->where.top;
  const X11Format format = {kMarkDepth, 32, 32, kOwnByteOrder, kOwnByteOrder, 32, false};
  XImage image = X11ImageOf(format, reinterpret_cast<uint8_t*>(mark->shown.data()), width, height, int64_t{width} * 4);
  XPutImage(x->display, mark->window, x->marks.context, &image, 0, 0, 0, 0, width, height);
  XFlush(x->display);
}

void X11ClearMark(X11Connection* x, const X11Mark& mark) {
  XClearWindow(x->display, mark.window);
  XFlush(x->display);
}

void X11CloseMark(X11Connection* x, X11Mark* mark) {
  X11ClearMark(x, *mark);
  const PixelRect& where = mark->where;
  x->marks.spares.push_back({std::exchange(mark->window, None), where.right - where.left, where.bottom - where.top});
}

// They have been cleared: some compositors fade out what a window showed when it went.
void X11FreeSpareWindows(X11Connection* x, size_t kept) {
  std::vector<X11SpareWindow>& spares = x->marks.spares;
  while (spares.size() > kept) {
    XDestroyWindow(x->display, spares.back().window);
    spares.pop_back();
  }
  XFlush(x->display);
}

void X11RaiseMarks(X11Connection* x) {
  for (const X11Mark& mark : x->marks.standing) {
    if (mark.window) XRaiseWindow(x->display, mark.window);
  }
}

bool X11IsMark(const X11Connection* x, Window window) {
  const X11Marks& marks = x->marks;
  const auto is = [=](const auto& each) { return each.window == window; };
  return std::any_of(marks.standing.begin(), marks.standing.end(), is) ||
         std::any_of(marks.spares.begin(), marks.spares.end(), is);
}

} // namespace framereel
