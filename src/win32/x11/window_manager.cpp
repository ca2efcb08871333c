// What our windows say to a window manager, and what it says of them and of the desktop, by the ICCCM (version 2.0) and
// the EWMH (version 1.5, everything named _NET). A desktop without a window manager reads nothing of it, and our
// windows work there too.
#include <X11/Xatom.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "win32/pixels/utf8.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

// In the order of X11Atom.
constexpr const char* kAtomNames[kAtomCount] = {
    "WM_PROTOCOLS",
    "WM_DELETE_WINDOW",
    "WM_STATE",
    "UTF8_STRING",
    "CLIPBOARD",
    "TARGETS",
    "TIMESTAMP",
    "MULTIPLE",
    "ATOM_PAIR",
    "INCR",
    "FRAMEREEL_TEXT",
    "_COMPTON_SHADOW",
    "_GTK_FRAME_EXTENTS",
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
    "_NET_WM_STATE_MODAL",
    "_NET_WM_STATE_SKIP_PAGER",
    "_NET_WM_STATE_SKIP_TASKBAR",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_USER_TIME",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_DND",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_UTILITY",
};

// The most of an icon that is given: it fits one request of any server.
constexpr size_t kIconItemsMax = 128 * 128;

// What _NET_WM_MOVERESIZE says: how to move, by the left button, on an application's behalf.
constexpr long kDragMove = 8, kDragCancel = 11, kDragButton = 1, kDragSource = 1;

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
  X11WriteItems(x, window.id, X11AtomOf(x, kNetWmWindowType), XA_ATOM, types);
}

// Our captions and borders are on our pixels, so nobody may add any. The five items of Motif's hints are flags,
// functions, decorations, input mode and status.
void WriteMotifHints(X11Connection* x, const DisplayWindow& window) {
  constexpr unsigned long functions = 1, decorations = 2; // flags: which of the items count
  constexpr unsigned long move = 4, minimise = 8, close = 32;
  unsigned long can = move | close | (window.role == WindowRole::kMain ? minimise : 0);
  Atom hints = X11AtomOf(x, kMotifHints);
  X11WriteItems(x, window.id, hints, hints, {functions | decorations, can, 0, 0, 0});
}

void WriteProcess(X11Connection* x, const DisplayWindow& window) {
  char host[256] = "";
  if (::gethostname(host, sizeof host - 1) != 0) return;
  // The number means something only together with the machine.
  X11WriteBytes(x, window.id, XA_WM_CLIENT_MACHINE, XA_STRING, host);
  X11WriteItems(x, window.id, X11AtomOf(x, kNetWmPid), XA_CARDINAL, {static_cast<unsigned long>(::getpid())});
}

void WriteHints(X11Connection* x, const DisplayWindow& window) {
  XWMHints hints{};
  hints.flags = InputHint | StateHint;
  hints.input = True;
  hints.initial_state = window.startsMinimised ? IconicState : NormalState;
  XSetWMHints(x->display, window.id, &hints);
}

// ---- Text --------------------------------------------------------------------------------------------------------

// Well-formed, and without control characters, which a title must not have.
std::string Printable(std::string_view text) {
  std::string kept;
  for (size_t at = 0; at < text.size();) {
    const CodePoint character = CodePointAt(text, at);
    at += character.length;
    const bool control = character.code < 0x20 || (character.code >= 0x7F && character.code < 0xA0);
    if (!control) kept += Utf8Of(character.code);
  }
  return kept;
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
  std::vector<unsigned long> areas = X11ReadItems(x, x->root, X11AtomOf(x, kNetWorkArea), XA_CARDINAL);
  std::vector<unsigned long> current = X11ReadItems(x, x->root, X11AtomOf(x, kNetCurrentDesktop), XA_CARDINAL);
  size_t first = current.empty() ? 0 : size_t(std::min(current[0], 10000ul)) * 4;
  if (first + 4 > areas.size()) first = 0;
  if (areas.size() < 4) return false;
  auto item = [&](size_t i) { return int32_t(std::min(areas[first + i], 65535ul)); };
  *area = {item(0), item(1), item(0) + item(2), item(1) + item(3)};
  return true;
}

// Takes away the strips at the screen's edges that docks ask for; items 0 to 3 are their thickness at left, right, top
// and bottom.
PixelRect WithoutStruts(X11Connection* x, PixelRect area) {
  int32_t width = area.right;
  int32_t height = area.bottom;
  x->desktop.hearsStruts = true; // a dock may change its mind
  for (unsigned long window : X11ReadItems(x, x->root, X11AtomOf(x, kNetClientList), XA_WINDOW)) {
    if (X11WindowOf(x, window)) continue;
    XSelectInput(x->display, window, X11ForeignEvents(x, window));
    std::vector<unsigned long> strut = X11ReadItems(x, window, X11AtomOf(x, kNetWmStrutPartial), XA_CARDINAL);
    if (strut.size() < 4) continue;
    auto item = [&](size_t i) { return int32_t(std::min(strut[i], 65535ul)); };
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
  x->desktop.monitorsUnsure = true;
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
    desktop.talents = X11ReadItems(x, x->root, X11AtomOf(x, kNetSupported), XA_ATOM);
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
  const std::string utf8 = Printable(title), latin1 = Latin1Of(utf8);
  X11WriteBytes(x, window.id, XA_WM_NAME, XA_STRING, latin1);
  X11WriteBytes(x, window.id, XA_WM_ICON_NAME, XA_STRING, latin1);
  X11WriteBytes(x, window.id, X11AtomOf(x, kNetWmName), X11AtomOf(x, kUtf8String), utf8);
  X11WriteBytes(x, window.id, X11AtomOf(x, kNetWmIconName), X11AtomOf(x, kUtf8String), utf8);
}

void X11WriteIcon(X11Connection* x, const DisplayWindow& window, std::span<const PointerPicture> icon) {
  std::vector<unsigned long> items;
  for (const PointerPicture& picture : icon) {
    const size_t count = size_t(picture.width) * picture.height;
    if (count == 0 || items.size() + count > kIconItemsMax) continue;
    items.insert(items.end(), {static_cast<unsigned long>(picture.width), static_cast<unsigned long>(picture.height)});
    for (size_t i = 0; i < count; i++) items.push_back(PlainPixel(picture.pixels[i]));
  }
  X11WriteItems(x, window.id, X11AtomOf(x, kNetWmIcon), XA_CARDINAL, items);
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
  X11WriteItems(x, window.id, X11AtomOf(x, kNetWmUserTime), XA_CARDINAL, {0});
  if (window.role == WindowRole::kMain) return;
  // Said each time: a window manager forgets it when the window is hidden.
  std::vector<unsigned long> state = {X11AtomOf(x, kNetWmStateSkipTaskbar), X11AtomOf(x, kNetWmStateSkipPager)};
  if (window.role == WindowRole::kPalette) state.push_back(X11AtomOf(x, kNetWmStateAbove));
  if (window.modal) state.push_back(X11AtomOf(x, kNetWmStateModal));
  X11WriteItems(x, window.id, X11AtomOf(x, kNetWmState), XA_ATOM, state);
}

void X11AskModal(X11Connection* x, const DisplayWindow& window) {
  constexpr long remove = 0, add = 1, application = 1;
  const auto modal = long(X11AtomOf(x, kNetWmStateModal));
  X11AskManager(x, window, kNetWmState, {window.modal ? add : remove, modal, 0, application, 0});
}

void X11AllowKeyboard(X11Connection* x, const DisplayWindow& window) {
  XDeleteProperty(x->display, window.id, X11AtomOf(x, kNetWmUserTime));
}

bool X11ReadMinimised(X11Connection* x, const DisplayWindow& window, bool* minimised) {
  std::vector<unsigned long> state = X11ReadItems(x, window.id, X11AtomOf(x, kWmState), X11AtomOf(x, kWmState));
  bool managed = !state.empty() && (state[0] == NormalState || state[0] == IconicState);
  if (!managed) return false;
  // Window managers call windows iconic, too, that are on another desktop; the newer state tells them apart. By itself
  // it may be left over from before.
  *minimised = state[0] == IconicState;
  if (*minimised && X11ManagerCan(x, kNetWmStateHidden)) {
    *minimised = Holds(X11ReadItems(x, window.id, X11AtomOf(x, kNetWmState), XA_ATOM), X11AtomOf(x, kNetWmStateHidden));
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
