// The windows of all programs on the X11 display, as they are seen at a place of the screen.
//
// Whoever follows the pointer asks sixty times a second, on desktops of hundreds of windows. So what has been asked for
// is kept, and the server tells when a window may be different by now; where nothing changes, it is asked nothing. Once
// nobody looks for windows any more, the first thing that is told ends it.
#include <X11/Xatom.h>
#include <X11/Xlib-xcb.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "win32/pixels/utf8.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

constexpr uint32_t kInterestMs = 1000; // nobody who waits longer follows the pointer
// How deep window managers put a window into their own.
constexpr int32_t kFrameDepth = 2;
// Of no program's windows. What is known of them may be of different moments, and lead round in a circle.
constexpr int32_t kDeepest = 1000;

// Nothing where the window has gone, or the connection.
template <typename T> struct Answer : std::unique_ptr<T, decltype(&std::free)> {
  explicit Answer(T* reply) : std::unique_ptr<T, decltype(&std::free)>(reply, std::free) {}
};

X11Seen& SeenOf(X11Connection* x, Window window) {
  return x->desktop.seen[window];
}

// From here on nothing that becomes of its children goes unheard. Ours tell of themselves, and have none.
void Hear(X11Connection* x, Window window) {
  X11Seen& seen = SeenOf(x, window);
  if (seen.heard || X11WindowOf(x, window)) return;
  seen.heard = true;
  XSelectInput(x->display, window, window == x->root ? X11RootEvents(x) : X11ForeignEvents(x, window));
}

// A window that has gone has no children, and shows nothing.
const std::vector<Window>& ChildrenOf(X11Connection* x, Window window) {
  Hear(x, window);
  X11Seen& seen = SeenOf(x, window);
  if (seen.listed) return seen.children;
  seen.listed = true;
  seen.children.clear();
  Window root, parent, *children = nullptr;
  unsigned int count = 0;
  const unsigned long request = NextRequest(x->display);
  if (!XQueryTree(x->display, window, &root, &parent, &children, &count)) X11NoAnswer(x, request);
  if (children) seen.children.assign(children, children + count);
  if (children) XFree(children);
  std::reverse(seen.children.begin(), seen.children.end());
  for (Window child : seen.children) SeenOf(x, child).parent = window;
  return seen.children;
}

// All questions go out before the first answer is waited for: a desktop of hundreds of windows is one way to the server
// and back. Xlib itself asks one after the other.
void LookAt(X11Connection* x, const std::vector<Window>& windows) {
  struct Look {
    Window window;
    X11Seen* seen;
    xcb_get_window_attributes_cookie_t state;
    xcb_get_geometry_cookie_t place;
  };
  xcb_connection_t* connection = XGetXCBConnection(x->display);
  std::vector<Look> looks;
  for (Window window : windows) {
    X11Seen& seen = SeenOf(x, window);
    if (seen.looked) continue;
    const xcb_window_t id = static_cast<xcb_window_t>(window);
    looks.push_back({window, &seen, xcb_get_window_attributes(connection, id), xcb_get_geometry(connection, id)});
  }
  for (const Look& look : looks) {
    const Answer state(xcb_get_window_attributes_reply(connection, look.state, nullptr));
    const Answer place(xcb_get_geometry_reply(connection, look.place, nullptr));
    X11Seen& seen = *look.seen;
    seen.looked = true;
    seen.shown = state && place && state->map_state != XCB_MAP_STATE_UNMAPPED && state->_class == InputOutput &&
                 !X11IsMark(x, look.window);
    if (!place) continue;
    seen.border = place->border_width;
    seen.place = {place->x, place->y, place->x + place->width + 2 * seen.border,
                  place->y + place->height + 2 * seen.border};
  }
}

const X11Seen& LookAt(X11Connection* x, Window window) {
  X11Seen& seen = SeenOf(x, window);
  if (!seen.looked) LookAt(x, std::vector<Window>{window});
  return seen;
}

// ---- Frames ------------------------------------------------------------------------------------------------------

// Window managers say so of each window that they manage (ICCCM).
bool IsManaged(X11Connection* x, Window window) {
  return !X11ReadItems(x, window, X11AtomOf(x, kWmState), X11AtomOf(x, kWmState)).empty();
}

// Left, right, top and bottom, as GTK began to write them and others have taken over; none when the program says
// nothing of them.
X11Margins ReadMargins(X11Connection* x, Window window) {
  const std::vector<unsigned long> items = X11ReadItems(x, window, X11AtomOf(x, kGtkFrameExtents), XA_CARDINAL);
  if (items.size() < 4) return {};
  auto item = [&](size_t i) { return int32_t(std::min(items[i], 65535ul)); };
  return {item(0), item(1), item(2), item(3)};
}

bool IsTopLevel(X11Connection* x, Window window) {
  return SeenOf(x, window).parent == x->root;
}

// A managed window in it, as near as there is one; None when there is none.
Window FindClient(X11Connection* x, const std::vector<Window>& among, int32_t depth) {
  for (Window window : among) {
    if (IsManaged(x, window)) return window;
  }
  if (depth == 1) return None;
  for (Window window : among) {
    if (Window client = FindClient(x, ChildrenOf(x, window), depth - 1)) return client;
  }
  return None;
}

// What a window manager has put its frame around; else the window itself.
Window ClientOf(X11Connection* x, Window window) {
  X11Seen& seen = SeenOf(x, window);
  if (!IsTopLevel(x, window)) return window;
  if (seen.clientFound) return seen.client;
  seen.client = window;
  if (!X11WindowOf(x, window) && X11HasManager(x) && !IsManaged(x, window)) {
    if (Window client = FindClient(x, ChildrenOf(x, window), kFrameDepth)) seen.client = client;
  }
  seen.clientFound = true;
  return seen.client;
}

const X11Margins& MarginsOf(X11Connection* x, Window client) {
  Hear(x, client);
  X11Seen& seen = SeenOf(x, client);
  if (!seen.marginsRead) seen.margins = ReadMargins(x, client);
  seen.marginsRead = true;
  return seen.margins;
}

// ---- Places ------------------------------------------------------------------------------------------------------

// Of a window that somebody has named, or that has gone to another parent, the server is asked. None when it has gone,
// and for the root.
Window ParentOf(X11Connection* x, Window window) {
  if (window == x->root || SeenOf(x, window).parent != None) return SeenOf(x, window).parent;
  Window root, parent = None, *children = nullptr;
  unsigned int count = 0;
  const unsigned long request = NextRequest(x->display);
  if (!XQueryTree(x->display, window, &root, &parent, &children, &count)) X11NoAnswer(x, request);
  if (children) XFree(children);
  if (parent != None) Hear(x, parent);
  return SeenOf(x, window).parent = parent;
}

// On the screen; false when the window or one around it is not seen.
bool PlaceWithMargins(X11Connection* x, Window window, PixelRect* place) {
  *place = {};
  int32_t depth = 0;
  for (Window each = window; each != x->root; each = ParentOf(x, each)) {
    if (each == None || ++depth > kDeepest) return false;
    const X11Seen& seen = LookAt(x, each);
    if (!seen.shown) return false;
    const int32_t inside = each == window ? 0 : seen.border;
    *place = each == window ? seen.place : Moved(*place, seen.place.left + inside, seen.place.top + inside);
  }
  return true;
}

bool PlaceOf(X11Connection* x, Window window, PixelRect* place) {
  if (!PlaceWithMargins(x, window, place)) return false;
  if (!IsTopLevel(x, window)) return true;
  const X11Margins& m = MarginsOf(x, ClientOf(x, window));
  const PixelRect less = {place->left + m.left, place->top + m.top, place->right - m.right, place->bottom - m.bottom};
  if (!IsEmpty(less)) *place = less;
  return true;
}

// What a window manager has put around a window; itself, where that is nothing.
Window WithFrame(X11Connection* x, Window window) {
  Window top = window;
  for (int32_t depth = 0; depth < kDeepest && top != None; ++depth) {
    const Window parent = ParentOf(x, top);
    if (parent == x->root) return ClientOf(x, top) == window ? top : window;
    top = parent;
  }
  return window;
}

// The first look is cheap, and most windows are elsewhere.
bool IsAt(X11Connection* x, Window window, int32_t left, int32_t top) {
  PixelRect place;
  return PlaceWithMargins(x, window, &place) && Holds(place, left, top) && PlaceOf(x, window, &place) &&
         Holds(place, left, top);
}

// ---- What is told ------------------------------------------------------------------------------------------------

void ForgetAll(X11Connection* x) {
  const std::unordered_map<Window, X11Seen> seen = std::move(x->desktop.seen);
  x->desktop.seen.clear();
  XSelectInput(x->display, x->root, X11RootEvents(x));
  for (const auto& [window, each] : seen) {
    if (each.heard && window != x->root) XSelectInput(x->display, window, X11ForeignEvents(x, window));
  }
  XFlush(x->display);
}

// The notices of children all begin with the window that was listened to and the one that it is about.
bool TellsOfChild(const XEvent& event) {
  switch (event.type) {
  case CreateNotify:
  case DestroyNotify:
  case UnmapNotify:
  case MapNotify:
  case ReparentNotify:
  case ConfigureNotify:
  case GravityNotify:
  case CirculateNotify:
    return event.xmap.event != event.xmap.window;
  default:
    return false;
  }
}

void NoteChange(X11Connection* x, int type, Window parent, Window window) {
  auto& seen = x->desktop.seen;
  if (type == CreateNotify || type == DestroyNotify) seen.erase(window); // the name is another window's from now on
  if (auto child = seen.find(window); child != seen.end()) {
    child->second.looked = false;
    if (type == ReparentNotify) child->second.parent = None; // until it is found in the other one
  }
  auto around = seen.find(parent);
  if (around == seen.end()) return;
  const bool sameOrder = type == MapNotify || type == UnmapNotify || type == GravityNotify;
  if (!sameOrder) around->second.listed = false;
  around->second.clientFound = false;
}

// What is known holds from here on. Null when there is no connection.
X11Connection* BeginToSeek() {
  X11Connection* x = X11Live();
  if (!x) return nullptr;
  X11TakeEvents(x, QueuedAfterReading);
  x->desktop.soughtAt = DisplayTick();
  return x;
}

} // namespace

long X11RootEvents(const X11Connection* x) {
  // The root tells of a new resolution by a change of its size, and of the window manager's doings by its properties.
  const auto seen = x->desktop.seen.find(x->root);
  const bool heard = seen != x->desktop.seen.end() && seen->second.heard;
  return StructureNotifyMask | PropertyChangeMask | (heard ? SubstructureNotifyMask : 0);
}

long X11ForeignEvents(const X11Connection* x, Window window) {
  const auto seen = x->desktop.seen.find(window);
  const bool heard = seen != x->desktop.seen.end() && seen->second.heard;
  return (heard ? SubstructureNotifyMask | PropertyChangeMask : 0) | (x->desktop.hearsStruts ? PropertyChangeMask : 0);
}

bool X11TakeDesktopEvent(X11Connection* x, const XEvent& event) {
  if (!TellsOfChild(event)) return false;
  if (DisplayTick() - x->desktop.soughtAt > kInterestMs) {
    if (!x->desktop.seen.empty()) ForgetAll(x);
  } else {
    NoteChange(x, event.type, event.xmap.event, event.xmap.window);
  }
  return true;
}

void X11TakeMargins(X11Connection* x, Window window) {
  const auto seen = x->desktop.seen.find(window);
  if (seen != x->desktop.seen.end()) seen->second.marginsRead = false;
}

DesktopWindow DisplayWindowAt(DesktopWindow in, int32_t left, int32_t top) {
  X11Connection* x = BeginToSeek();
  if (!x) return 0;
  const Window around = in == 0 ? x->root : ClientOf(x, in);
  const std::vector<Window>& children = ChildrenOf(x, around);
  LookAt(x, children);
  for (Window child : children) {
    if (X11Live() && IsAt(x, child, left, top)) return static_cast<DesktopWindow>(child);
  }
  return 0;
}

std::vector<DesktopWindow> DisplayWindows() {
  std::vector<DesktopWindow> found;
  X11Connection* x = BeginToSeek();
  if (!x) return found;
  const std::vector<Window> children = ChildrenOf(x, x->root);
  LookAt(x, children);
  for (Window child : children) {
    if (X11Live() && LookAt(x, child).shown) found.push_back(static_cast<DesktopWindow>(ClientOf(x, child)));
  }
  return found;
}

bool DisplayWindowPlace(DesktopWindow window, PixelRect* place) {
  X11Connection* x = BeginToSeek();
  return x && PlaceOf(x, WithFrame(x, window), place) && X11Live();
}

bool DisplayHasWindow(DesktopWindow window) {
  X11Connection* x = BeginToSeek();
  return x && ParentOf(x, window) != None && X11Live();
}

std::string DisplayWindowTitle(DesktopWindow window) {
  constexpr size_t kMost = 65536;
  X11Connection* x = X11Live();
  std::string title;
  if (!x) return title;
  for (const Atom property : {X11AtomOf(x, kNetWmName), Atom{XA_WM_NAME}}) {
    const Atom type = X11ReadBytes(x, window, property, kMost, &title);
    if (type == XA_STRING) title = Utf8OfLatin1(title);
    if (!title.empty()) break;
  }
  return title;
}

DisplayWindow* DisplayOwnWindow(DesktopWindow window) {
  X11Connection* x = X11Live();
  return x ? X11WindowOf(x, ClientOf(x, window)) : nullptr;
}

} // namespace framereel
