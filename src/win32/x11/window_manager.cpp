// What our windows say to a window manager, and what it says of them and of the desktop, by the ICCCM (version 2.0) and
// the EWMH (version 1.5, everything named _NET). A desktop without a window manager reads nothing of it, and our
// windows work there too.
#include <X11/Xatom.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "win32/pixels/exhaustion.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

// In the order of X11Atom.
constexpr const char* kAtomNames[kAtomCount] = {
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "WM_STATE",
    "UTF8_STRING",
    "_MOTIF_WM_HINTS",
    "_NET_SUPPORTED",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_CURRENT_DESKTOP",
    "_NET_WORKAREA",
    "_NET_WM_ICON",
    "_NET_WM_ICON_NAME",
    "_NET_WM_MOVERESIZE",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_PING",
    "_NET_WM_STATE",
    "_NET_WM_STATE_ABOVE",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_SKIP_PAGER",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_USER_TIME",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_UTILITY",
};

// The most that is read of a property, in 32-bit items: far above what a desktop of any use writes.
constexpr long kItemsMax = 65536;
// The most of an icon that fits one request of any server.
constexpr int32_t kIconSideMax = 128;

// What _NET_WM_MOVERESIZE says: how to move, by the left button, on an application's behalf.
constexpr long kDragMove = 8, kDragCancel = 11, kDragButton = 1, kDragSource = 1;

// ---- Properties --------------------------------------------------------------------------------------------------

// Items of 32 bits; Xlib takes each in an unsigned long.
void Write(X11Connection* x, Window window, Atom property, Atom type, const std::vector<unsigned long>& items) {
  XChangeProperty(x->display, window, property, type, 32, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(items.data()), static_cast<int>(items.size()));
}

void WriteText(X11Connection* x, Window window, Atom property, Atom type, const std::string& text) {
  XChangeProperty(x->display, window, property, type, 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
}

// Empty when the window or its property is not there, or is of another kind.
std::vector<unsigned long> Read(X11Connection* x, Window window, Atom property, Atom type) {
  Atom actual = None;
  int format = 0;
  unsigned long count = 0, rest = 0;
  unsigned char* data = nullptr;
  const int answer = XGetWindowProperty(x->display, window, property, 0, kItemsMax, False, type, &actual, &format,
                                        &count, &rest, &data);
  if (answer == BadAlloc) EndWithoutMemory(); // of Xlib's own memory: the server's errors come as BadRequest
  std::vector<unsigned long> items;
  if (answer == Success && format == 32 && actual == type) {
    const unsigned long* first = reinterpret_cast<const unsigned long*>(data);
    items.assign(first, first + count);
  }
  if (data) XFree(data);
  return items;
}

bool Holds(const std::vector<unsigned long>& items, Atom atom) {
  return std::find(items.begin(), items.end(), atom) != items.end();
}

// ---- Describing --------------------------------------------------------------------------------------------------

void WriteTypes(X11Connection* x, const DisplayWindow& window) {
  std::vector<unsigned long> types;
  switch (window.role) {
  case WindowRole::kMain:
    types = {X11AtomOf(x, kNetWmWindowTypeNormal)};
    break;
  case WindowRole::kDialog:
  case WindowRole::kPalette:
    types = {X11AtomOf(x, kNetWmWindowTypeDialog)};
    break;
  default:
    // Nobody manages it; the type tells compositors how to treat it.
    types = {X11AtomOf(x, kNetWmWindowTypePopupMenu), X11AtomOf(x, kNetWmWindowTypeUtility)};
  }
  Write(x, window.id, X11AtomOf(x, kNetWmWindowType), XA_ATOM, types);
}

// Our captions and borders are on our pixels, so nobody may add any. The five items of Motif's hints are flags,
// functions, decorations, input mode and status.
void WriteMotifHints(X11Connection* x, const DisplayWindow& window) {
  constexpr unsigned long functions = 1, decorations = 2; // flags: which of the items count
  constexpr unsigned long move = 4, minimise = 8, close = 32;
  unsigned long can = move | close | (window.role == WindowRole::kMain ? minimise : 0);
  Atom hints = X11AtomOf(x, kMotifHints);
  Write(x, window.id, hints, hints, {functions | decorations, can, 0, 0, 0});
}

void WriteProcess(X11Connection* x, const DisplayWindow& window) {
  char host[256] = "";
  if (::gethostname(host, sizeof host - 1) != 0) return;
  // The number means something only together with the machine.
  WriteText(x, window.id, XA_WM_CLIENT_MACHINE, XA_STRING, host);
  Write(x, window.id, X11AtomOf(x, kNetWmPid), XA_CARDINAL, {static_cast<unsigned long>(::getpid())});
}

void WriteHints(X11Connection* x, const DisplayWindow& window) {
  XWMHints hints{};
  hints.flags = InputHint | StateHint;
  hints.input = True;
  hints.initial_state = window.startsMinimised ? IconicState : NormalState;
  XSetWMHints(x->display, window.id, &hints);
}

// ---- Text --------------------------------------------------------------------------------------------------------

// Of Latin-1, without its control characters, which a title in either encoding must not have.
std::string Printable(const char* text) {
  std::string kept;
  for (; *text; text++) {
    uint8_t byte = static_cast<uint8_t>(*text);
    if (byte >= 32 && (byte < 127 || byte >= 160)) kept += *text;
  }
  return kept;
}

std::string Utf8OfLatin1(const std::string& text) {
  std::string utf8;
  for (char character : text) {
    uint8_t byte = static_cast<uint8_t>(character);
    if (byte < 128) {
      utf8 += character;
    } else {
      utf8 += static_cast<char>(0xC0 | byte >> 6);
      utf8 += static_cast<char>(0x80 | (byte & 63));
    }
  }
  return utf8;
}

// Icons are not premultiplied, as pointers are.
uint32_t PlainPixel(uint32_t pixel) {
  uint32_t alpha = pixel >> 24;
  if (alpha == 0) return 0;
  auto plain = [=](int32_t shift) { return std::min(255u, ((pixel >> shift & 255) * 255 + alpha / 2) / alpha); };
  return alpha << 24 | plain(16) << 16 | plain(8) << 8 | plain(0);
}

// ---- The desktop -------------------------------------------------------------------------------------------------

// The four items of the current desktop, each desktop having its own: left, top, width, height.
bool ReadWorkArea(X11Connection* x, PixelRect* area) {
  std::vector<unsigned long> areas = Read(x, x->root, X11AtomOf(x, kNetWorkArea), XA_CARDINAL);
  std::vector<unsigned long> current = Read(x, x->root, X11AtomOf(x, kNetCurrentDesktop), XA_CARDINAL);
  size_t first = current.empty() ? 0 : static_cast<size_t>(std::min(current[0], 10000ul)) * 4;
  if (first + 4 > areas.size()) first = 0;
  if (areas.size() < 4) return false;
  auto item = [&](size_t i) { return static_cast<int32_t>(std::min(areas[first + i], 65535ul)); };
  *area = {item(0), item(1), item(0) + item(2), item(1) + item(3)};
  return true;
}

// Takes away the strips at the screen's edges that docks ask for; items 0 to 3 are their thickness at left, right, top
// and bottom.
PixelRect WithoutStruts(X11Connection* x, PixelRect area) {
  int32_t width = area.right;
  int32_t height = area.bottom;
  for (unsigned long window : Read(x, x->root, X11AtomOf(x, kNetClientList), XA_WINDOW)) {
    if (X11WindowOf(x, window)) continue;
    // It may change its mind.
    XSelectInput(x->display, window, PropertyChangeMask);
    std::vector<unsigned long> strut = Read(x, window, X11AtomOf(x, kNetWmStrutPartial), XA_CARDINAL);
    if (strut.size() < 4) continue;
    auto item = [&](size_t i) { return static_cast<int32_t>(std::min(strut[i], 65535ul)); };
    area = Intersect(area, {item(0), item(2), width - item(1), height - item(3)});
  }
  return area;
}

} // namespace

void X11InternAtoms(X11Connection* x) {
  char* names[kAtomCount];
  for (int32_t i = 0; i < kAtomCount; i++) names[i] = const_cast<char*>(kAtomNames[i]);
  const unsigned long request = NextRequest(x->display);
  if (!XInternAtoms(x->display, names, kAtomCount, False, x->desktop.atoms)) X11NoAnswer(x, request);
  x->desktop.talentsUnsure = true;
  x->desktop.usableUnsure = true;
}

Atom X11AtomOf(const X11Connection* x, X11Atom atom) {
  return x->desktop.atoms[atom];
}

bool X11HasManager(X11Connection* x) {
  // Only one client at a time can have the requests for top-level windows redirected to itself: the window manager.
  XWindowAttributes root{};
  return XGetWindowAttributes(x->display, x->root, &root) && root.all_event_masks & SubstructureRedirectMask;
}

bool X11ManagerCan(X11Connection* x, X11Atom what) {
  if (!X11HasManager(x)) return false;
  X11TakeEvents(x, QueuedAlready);
  X11Desktop& desktop = x->desktop;
  if (desktop.talentsUnsure) {
    desktop.talents = Read(x, x->root, X11AtomOf(x, kNetSupported), XA_ATOM);
    desktop.talentsUnsure = false;
  }
  return Holds(desktop.talents, X11AtomOf(x, what));
}

void X11AskManager(X11Connection* x, const DisplayWindow& window, X11Atom what, const long (&data)[5]) {
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window.id;
  event.xclient.message_type = X11AtomOf(x, what);
  event.xclient.format = 32;
  std::copy(std::begin(data), std::end(data), event.xclient.data.l);
  XSendEvent(x->display, x->root, False, SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

void X11AskToDrag(X11Connection* x, const DisplayWindow& window, int32_t pointerX, int32_t pointerY) {
  X11AskManager(x, window, kNetWmMoveResize, {pointerX, pointerY, kDragMove, kDragButton, kDragSource});
}

void X11AskNotToDrag(X11Connection* x, const DisplayWindow& window) {
  X11AskManager(x, window, kNetWmMoveResize, {0, 0, kDragCancel, kDragButton, kDragSource});
}

void X11Describe(X11Connection* x, const DisplayWindow& window) {
  char name[] = "framereel", className[] = "Framereel";
  XClassHint classHint = {name, className};
  XSetClassHint(x->display, window.id, &classHint);
  WriteTypes(x, window);
  WriteProcess(x, window);
  if (window.owner) XSetTransientForHint(x->display, window.id, window.owner->id);
  if (!X11IsManaged(window)) return;
  WriteMotifHints(x, window);
  Atom protocols[] = {X11AtomOf(x, kWmDeleteWindow), X11AtomOf(x, kNetWmPing)};
  XSetWMProtocols(x->display, window.id, protocols, 2);
}

void X11WriteTitle(X11Connection* x, const DisplayWindow& window, const char* title) {
  std::string latin1 = Printable(title);
  std::string utf8 = Utf8OfLatin1(latin1);
  WriteText(x, window.id, XA_WM_NAME, XA_STRING, latin1);
  WriteText(x, window.id, XA_WM_ICON_NAME, XA_STRING, latin1);
  WriteText(x, window.id, X11AtomOf(x, kNetWmName), X11AtomOf(x, kUtf8String), utf8);
  WriteText(x, window.id, X11AtomOf(x, kNetWmIconName), X11AtomOf(x, kUtf8String), utf8);
}

void X11WriteIcon(X11Connection* x, const DisplayWindow& window, const PointerPicture& icon) {
  if (icon.width < 1 || icon.height < 1 || icon.width > kIconSideMax || icon.height > kIconSideMax) return;
  size_t count = static_cast<size_t>(icon.width) * icon.height;
  std::vector<unsigned long> items = {static_cast<unsigned long>(icon.width), static_cast<unsigned long>(icon.height)};
  for (size_t i = 0; i < count; i++) items.push_back(PlainPixel(icon.pixels[i]));
  Write(x, window.id, X11AtomOf(x, kNetWmIcon), XA_CARDINAL, items);
}

void X11WritePlace(X11Connection* x, const DisplayWindow& window) {
  const X11Place place = X11PlaceOf(window.place);
  XSizeHints hints{};
  // The user's position counts more than the program's with every window manager, and ours is to be kept to.
  hints.flags = USPosition | PPosition | USSize | PSize | PMinSize | PMaxSize | PWinGravity;
  hints.x = place.x;
  hints.y = place.y;
  hints.width = hints.min_width = hints.max_width = place.width;
  hints.height = hints.min_height = hints.max_height = place.height;
  // Places are the window's own, whatever frame may come around it.
  hints.win_gravity = StaticGravity;
  XSetWMNormalHints(x->display, window.id, &hints);
}

void X11WriteStart(X11Connection* x, const DisplayWindow& window) {
  WriteHints(x, window);
  // A user who was never at work on a window does not want it to take the keyboard.
  Write(x, window.id, X11AtomOf(x, kNetWmUserTime), XA_CARDINAL, {0});
  if (window.role == WindowRole::kMain) return;
  // Said each time: a window manager forgets it when the window is hidden.
  std::vector<unsigned long> state = {X11AtomOf(x, kNetWmStateSkipTaskbar), X11AtomOf(x, kNetWmStateSkipPager)};
  if (window.role == WindowRole::kPalette) state.push_back(X11AtomOf(x, kNetWmStateAbove));
  Write(x, window.id, X11AtomOf(x, kNetWmState), XA_ATOM, state);
}

void X11AllowKeyboard(X11Connection* x, const DisplayWindow& window) {
  XDeleteProperty(x->display, window.id, X11AtomOf(x, kNetWmUserTime));
}

bool X11ReadMinimised(X11Connection* x, const DisplayWindow& window, bool* minimised) {
  std::vector<unsigned long> state = Read(x, window.id, X11AtomOf(x, kWmState), X11AtomOf(x, kWmState));
  bool managed = !state.empty() && (state[0] == NormalState || state[0] == IconicState);
  if (!managed) return false;
  // Window managers call windows iconic, too, that are on another desktop; the newer state tells them apart. By itself
  // it may be left over from before.
  *minimised = state[0] == IconicState;
  if (*minimised && X11ManagerCan(x, kNetWmStateHidden)) {
    *minimised = Holds(Read(x, window.id, X11AtomOf(x, kNetWmState), XA_ATOM), X11AtomOf(x, kNetWmStateHidden));
  }
  return true;
}

PixelRect X11ReadUsableArea(X11Connection* x) {
  PixelRect screen = {0, 0, x->facts.width, x->facts.height};
  PixelRect area = screen;
  if (ReadWorkArea(x, &area)) {
    area = Intersect(area, screen);
  } else if (X11HasManager(x)) {
    area = WithoutStruts(x, screen);
  }
  return IsEmpty(area) ? screen : area;
}

} // namespace framereel
