// Having the screen painted anew.
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

// A window that comes and goes uncovers the others. It has no background of its own to be seen.
void Uncover(const X11Connection* x, const XRectangle& where) {
  XSetWindowAttributes attributes{};
  attributes.override_redirect = True;
  Window over = XCreateWindow(x->display, x->root, where.x, where.y, where.width, where.height, 0, CopyFromParent,
                              InputOutput, CopyFromParent, CWOverrideRedirect, &attributes);
  XMapRaised(x->display, over);
  XDestroyWindow(x->display, over);
}

} // namespace

void DisplayRefresh(const PixelRect& where) {
  X11Connection* x = X11Live();
  if (!x) return;
  const PixelRect cut = Intersect(where, {0, 0, x->facts.width, x->facts.height});
  if (IsEmpty(cut)) return;
  const XRectangle area = {static_cast<short>(cut.left), static_cast<short>(cut.top),
                           static_cast<unsigned short>(cut.right - cut.left),
                           static_cast<unsigned short>(cut.bottom - cut.top)};
  // Under a compositor the windows have kept what they show.
  if (!X11DropMarks(x, cut)) Uncover(x, area);
  XFlush(x->display);
}

} // namespace framereel
