// Having the screen painted anew: by the programs, and by a compositor that shows pictures of their windows.
#include <string>

#include <X11/extensions/Xdamage.h>
#include <X11/extensions/Xfixes.h>

#include "win32/x11/x11_display.h"
#include "win32/x11/x11_windows.h"

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

// A window is shown again where it is said to have changed. One that goes meanwhile is an error that nobody minds.
void TellChanged(const X11Connection* x, Window window, XRectangle where) {
  XWindowAttributes state{};
  if (!XGetWindowAttributes(x->display, window, &state)) return;
  if (state.map_state != IsViewable || state.c_class != InputOutput) return;
  where.x = static_cast<short>(where.x - state.x - state.border_width);
  where.y = static_cast<short>(where.y - state.y - state.border_width);
  XserverRegion region = XFixesCreateRegion(x->display, &where, 1);
  XDamageAdd(x->display, window, region);
  XFixesDestroyRegion(x->display, region);
}

bool HasCompositor(const X11Connection* x) {
  Atom name = XInternAtom(x->display, ("_NET_WM_CM_S" + std::to_string(DefaultScreen(x->display))).c_str(), False);
  return XGetSelectionOwner(x->display, name) != None;
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
  Uncover(x, area);
  int event, error;
  if (HasCompositor(x) && XDamageQueryExtension(x->display, &event, &error)) {
    Window root, parent, *windows = nullptr;
    unsigned int count = 0;
    const unsigned long request = NextRequest(x->display);
    if (!XQueryTree(x->display, x->root, &root, &parent, &windows, &count)) X11NoAnswer(x, request);
    for (unsigned int i = 0; i < count; i++) TellChanged(x, windows[i], area);
    if (windows) XFree(windows);
  }
  XFlush(x->display);
}

} // namespace framereel
