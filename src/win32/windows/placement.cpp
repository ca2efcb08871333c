// Where windows stand: moving, sizing, showing, stacking, minimising.
#include "win32/windows/placement.h"

#include <algorithm>

#include "win32/pixels/rectangles.h"
#include "win32/pixels/scale.h"
#include "win32/win32_windows.h"
#include "win32/windows/activation.h"
#include "win32/windows/frame.h"
#include "win32/windows/sending.h"
#include "win32/windows/update_regions.h"
#include "win32/windows/visible.h"
#include "win32/windows/window_contexts.h"
#include "win32/windows/window_surfaces.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr UINT kPosNothing = SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE;
constexpr Scaled kIconWidth{160}; // of a minimised window of which the caption is left

PixelRect NotNegative(const PixelRect& r) {
  return {r.left, r.top, std::max(r.right, r.left), std::max(r.bottom, r.top)};
}

// What a window's pixels were before it changed.
struct Before {
  Region visible;
  PixelRect place, client; // on the screen
};

Before Now(const Win32Window& window) {
  return {VisibleWindow(window), PlaceOnScreen(window), ClientOnScreen(window)};
}

bool PaintsAllAnew(const Win32Window& window, const PixelRect& before, const PixelRect& after) {
  const UINT style = window.windowClass->style;
  return (style & CS_HREDRAW && WidthOf(before) != WidthOf(after)) ||
         (style & CS_VREDRAW && HeightOf(before) != HeightOf(after));
}

// The pixels came along with the surface; what is new of the client area is to be painted, and the frame.
void RepairTopLevel(HWND window, const Before& before) {
  InvalidateFrame(window);
  const PixelRect client = window->client;
  Region fresh(client);
  const bool sameInsets = client.left - window->place.left == before.client.left - before.place.left &&
                          client.top - window->place.top == before.client.top - before.place.top;
  if (sameInsets && !PaintsAllAnew(*window, before.client, client)) {
    fresh.Subtract(Moved(before.client, client.left - before.client.left, client.top - before.client.top));
  }
  Expose(window, fresh);
}

// Takes the pixels of a child along within its top-level window's surface, and paints what that leaves.
void RepairChild(HWND window, const Before& before) {
  const Region after = VisibleWindow(*window);
  const PixelRect client = ClientOnScreen(*window);
  const int32_t dx = client.left - before.client.left, dy = client.top - before.client.top;
  Region kept;
  if (!PaintsAllAnew(*window, before.client, client)) {
    // The frame comes along only as long as its size stays.
    const bool sameSize = SameSize(before.place, PlaceOnScreen(*window));
    kept = before.visible;
    if (!sameSize) kept.Intersect(before.client);
    kept.Offset(dx, dy);
    kept.Intersect(after);
    if (!sameSize) kept.Intersect(client);
  }
  CopyPixels(window, kept, dx, dy);
  Region fresh = after;
  fresh.Subtract(kept);
  Expose(window, fresh);
  Region left = before.visible;
  left.Subtract(after);
  Expose(window->parent, left);
}

UINT ChangesOf(const Before& before, const Win32Window& window) {
  const PixelRect place = PlaceOnScreen(window);
  UINT flags = kPosNothing;
  if (!SameSize(before.place, place)) flags &= ~SWP_NOSIZE;
  if (before.place.left != place.left || before.place.top != place.top) flags &= ~SWP_NOMOVE;
  return flags;
}

// Asks for the client area of a place; a minimised window has none.
PixelRect ClientAt(HWND window, const PixelRect& place) {
  const PixelRect client = ClientFor(window, place);
  return window->minimised ? PixelRect{place.left, place.top, place.left, place.top} : client;
}

void SendPosChanged(HWND window, UINT flags) {
  const PixelRect& place = window->place;
  WINDOWPOS pos = {window, HWND_TOP, place.left, place.top, WidthOf(place), HeightOf(place), flags};
  Send(window, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&pos));
}

// Puts the window there, with its state of minimised or not as it is now, and tells it. `anew`: the client area is to
// be worked out even if the size stays.
void Apply(HWND window, const PixelRect& place, bool anew, bool byDesktop) {
  const Before before = Now(*window);
  const bool sized = anew || !SameSize(place, window->place);
  const PixelRect client = sized
                               ? ClientAt(window, place)
                               : Moved(window->client, place.left - window->place.left, place.top - window->place.top);
  if (!IsLive(window)) return;
  window->place = place;
  window->client = client;
  if (!window->minimised) window->normalPlace = place;
  if (!window->top) {
    RepairChild(window, before);
  } else {
    if (!byDesktop) DisplayPlaceWindow(window->top->shown.display, DisplayPlace(*window));
    if (sized && FitSurface(window)) RepairTopLevel(window, before);
  }
  RefreshContexts();
  SendPosChanged(window, ChangesOf(before, *window));
}

// In the lower left corner of its parent or of the screen.
PixelRect IconPlace(const Win32Window& window) {
  const HWND parent = window.parent;
  const PixelRect room =
      parent ? PixelRect{0, 0, WidthOf(parent->client), HeightOf(parent->client)} : DisplayUsableArea();
  const PixelRect none = {0, 0, 0, 0};
  const PixelRect inside = ClientInside(window, none);
  const int32_t height = inside.top + (none.bottom - inside.bottom);
  return {room.left, room.bottom - height, room.left + kIconWidth, room.bottom};
}

void SyncOnScreen(HWND window);

void SyncOwned(HWND owner) {
  for (HWND window : TheWindows().topLevels) {
    if (window->owner == owner) SyncOnScreen(window);
  }
}

// Shows or hides a top-level window on the display as its state and its owners say, and the windows that it owns.
void SyncOnScreen(HWND window) {
  if (!window->top) return;
  const bool wanted = Has(*window, WS_VISIBLE) && OwnersAreShown(*window);
  ShownSurface& shown = window->top->shown;
  if (shown.onScreen != wanted) {
    shown.onScreen = wanted;
    TellModal(window);
    DisplayShowWindow(shown.display, wanted);
    if (!wanted) AskForKeyboardAgain();
    if (wanted) NoteDamage(&shown, BoundsOf(shown.surface));
    if (wanted) Expose(window, VisibleWindow(*window)); // what it was to paint meanwhile was not noted
  }
  SyncOwned(window);
}

// What moving it in the order of its siblings uncovers.
void RepairOrder(HWND window, const Region& before) {
  if (window->top) return;
  const Region after = VisibleWindow(*window);
  Region more = after;
  more.Subtract(before);
  Expose(window, more);
  Region less = before;
  less.Subtract(after);
  Expose(window->parent, less);
}

void Stack(HWND window, bool top) {
  const Region before = VisibleWindow(*window);
  const bool changes = Restack(window, top);
  // Other programs' windows may stand between ours, so the display is told in any case.
  if (window->top) DisplayStackWindow(window->top->shown.display, top);
  if (!changes) return;
  RepairOrder(window, before);
  RefreshContexts();
  SendPosChanged(window, kPosNothing & ~SWP_NOZORDER);
}

} // namespace

PixelRect ClientFor(HWND window, const PixelRect& place) {
  RECT rect = RectOf(place);
  Send(window, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect));
  return NotNegative(PixelsOf(rect));
}

PixelRect LimitedPlace(HWND window, const PixelRect& place) {
  const bool overlapped = !(window->style & (WS_POPUP | WS_CHILD));
  if (!overlapped) return place;
  const ScreenFacts screen = DisplayScreen();
  const PixelRect empty = {0, 0, WidthOf(place), 0}; // as wide as asked: a bar of menus has rows by that
  const PixelRect inside = ClientInside(*window, empty);
  const int32_t side = inside.left, below = -inside.bottom;
  const POINT most = {screen.width + 2 * side, screen.height + 2 * below};
  MINMAXINFO limits = {{0, 0}, most, {-side, -below}, {0, 0}, most};
  limits.ptMinTrackSize = {2 * side, inside.top + below};
  Send(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
  const POINT low = limits.ptMinTrackSize, high = limits.ptMaxTrackSize;
  return {place.left, place.top, place.left + std::max(low.x, std::min(high.x, WidthOf(place))),
          place.top + std::max(low.y, std::min(high.y, HeightOf(place)))};
}

void Place(HWND window, const PixelRect& asked, bool byDesktop) {
  PixelRect place = NotNegative(asked);
  if (!byDesktop && !SameSize(place, window->place)) place = LimitedPlace(window, place);
  if (!IsLive(window)) return;
  const bool caption = window->top && window->top->asCaption;
  if (window->minimised && !(byDesktop && caption)) {
    window->normalPlace = place;
  } else if (!Same(place, window->place)) {
    Apply(window, place, false, byDesktop);
  }
}

void RenewFrame(HWND window) {
  Apply(window, window->place, true, true);
}

void SetVisible(HWND window, bool visible) {
  if (Has(*window, WS_VISIBLE) == visible) return;
  Send(window, WM_SHOWWINDOW, visible, 0);
  if (!IsLive(window)) return;
  const Region before = VisibleWindow(*window);
  window->style = visible ? window->style | WS_VISIBLE : window->style & ~WS_VISIBLE;
  SyncOnScreen(window);
  if (!visible && window->parent) Expose(window->parent, before);
  if (visible && window->parent) Expose(window, VisibleWindow(*window));
  RefreshContexts();
  SendPosChanged(window, kPosNothing);
}

void Minimise(HWND window, bool byDesktop) {
  if (window->minimised) return;
  // It is minimised once the desktop has done it, if ever.
  if (window->top && !byDesktop && DisplayMinimiseWindow(window->top->shown.display, true)) return;
  window->minimised = true;
  if (window->top) window->top->asCaption = !byDesktop;
  SyncOwned(window);
  if (!byDesktop) return Apply(window, IconPlace(*window), true, false);
  RefreshContexts();
  ClientFor(window, window->place);
  if (IsLive(window)) SendPosChanged(window, kPosNothing);
}

void Restore(HWND window, bool byDesktop) {
  if (!window->minimised) return;
  const bool away = window->top && !window->top->asCaption;
  if (away && !byDesktop && DisplayMinimiseWindow(window->top->shown.display, false)) {
    return DisplayActivateWindow(window->top->shown.display);
  }
  window->minimised = false;
  if (window->top) window->top->asCaption = false;
  SyncOwned(window);
  const PixelRect place = LimitedPlace(window, window->normalPlace);
  if (!IsLive(window)) return;
  Apply(window, place, true, byDesktop && Same(place, window->place));
  if (IsLive(window)) Expose(window, VisibleWindow(*window));
}

} // namespace framereel

using namespace framereel;

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL) {
  if (!IsLive(window)) return FALSE;
  Place(window, {x, y, x + width, y + height}, false);
  return TRUE;
}

BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height, UINT flags) {
  if (!IsLive(window)) return FALSE;
  const PixelRect& now = window->minimised ? window->normalPlace : window->place;
  PixelRect place = flags & SWP_NOMOVE ? now : PixelRect{x, y, x + WidthOf(now), y + HeightOf(now)};
  if (!(flags & SWP_NOSIZE)) place = {place.left, place.top, place.left + width, place.top + height};
  Place(window, place, false);
  if (!IsLive(window) || flags & SWP_NOZORDER) return TRUE;
  Stack(window, after != HWND_BOTTOM);
  if (IsLive(window) && window->top && after == HWND_TOP && !(flags & SWP_NOACTIVATE)) Activate(window, false);
  return TRUE;
}

BOOL BringWindowToTop(HWND window) {
  return ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

BOOL ShowWindow(HWND window, int how) {
  if (!IsLive(window)) return FALSE;
  const BOOL before = Has(*window, WS_VISIBLE);
  if (how == SW_HIDE) {
    SetVisible(window, false);
    if (IsLive(window) && window->top) ActivateNextOf(window);
    return before;
  }
  const bool minimises = how == SW_SHOWMINIMIZED || how == SW_MINIMIZE;
  if (minimises) {
    Minimise(window, false);
  } else if (how == SW_SHOWNORMAL || how == SW_RESTORE) {
    Restore(window, false);
  }
  if (IsLive(window)) SetVisible(window, true);
  if (!IsLive(window) || !window->top || minimises || how == SW_SHOWNA) return before;
  Stack(window, true);
  if (IsLive(window)) Activate(window, false);
  return before;
}

BOOL GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement) {
  if (!IsLive(window) || !placement) return FALSE;
  const PixelRect& place = window->minimised ? window->normalPlace : window->place;
  *placement = {placement->length, 0,        UINT(window->minimised ? SW_SHOWMINIMIZED : SW_SHOWNORMAL),
                {-1, -1},          {-1, -1}, RectOf(place)};
  return TRUE;
}

BOOL SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement) {
  if (!IsLive(window) || !placement) return FALSE;
  Place(window, PixelsOf(placement->rcNormalPosition), false);
  if (IsLive(window)) ::ShowWindow(window, int(placement->showCmd));
  return TRUE;
}
