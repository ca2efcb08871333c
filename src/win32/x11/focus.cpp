// Which window of ours gets the keys on the X11 display.
//
// A window manager gives the keyboard to windows that it manages, and takes it that whatever it made active still is.
// A window that it does not know and that took the server's focus would take it along when it goes, and the manager
// would find nothing to do. So popups and covers have the keyboard in the place of their owner, which keeps the focus.
// A cover holds it by a grab: everything that happens over the screen meanwhile is meant for it, also where the focus
// follows the pointer.
#include <X11/Xatom.h>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

using Kind = DisplayEventKind;

// Who has to have the server's focus for the window to have the keyboard.
DisplayWindow* FocusFor(DisplayWindow* window) {
  for (DisplayWindow* each = window; each; each = each->owner) {
    if (X11IsManaged(*each) && each->shown) return each;
  }
  return window;
}

DisplayWindow* Holder(const X11Focus& focus) {
  bool standsIn = focus.standIn && (focus.grabbed || (focus.focused && FocusFor(focus.standIn) == focus.focused));
  return standsIn ? focus.standIn : focus.focused;
}

void Tell(X11Connection* x) {
  X11Focus& focus = x->desktop.focus;
  DisplayWindow* before = focus.told;
  focus.told = Holder(focus);
  if (before == focus.told) return;
  X11EndSequence(x);
  if (before) X11QueueEvent(x, Kind::kActive, before, false);
  if (focus.told) X11QueueEvent(x, Kind::kActive, focus.told, true);
}

// Another program may hold the keyboard for a moment.
void Grab(X11Connection* x) {
  X11Focus& focus = x->desktop.focus;
  int answer = XGrabKeyboard(x->display, focus.standIn->id, False, GrabModeAsync, GrabModeAsync, CurrentTime);
  focus.grabbed = answer == GrabSuccess;
  focus.grabWaits = false;
}

void Ungrab(X11Connection* x) {
  X11Focus& focus = x->desktop.focus;
  if (focus.grabbed) XUngrabKeyboard(x->display, CurrentTime);
  focus.grabbed = focus.grabWaits = false;
}

bool IsCover(const DisplayWindow* window) {
  return window && window->role == WindowRole::kCover;
}

// A window that the manager does not manage has taken the focus meanwhile. Asked for a window that is active to it
// already, it does nothing.
bool ManagerBelievesActive(X11Connection* x, const DisplayWindow& window) {
  if (x->desktop.focus.focused) return false;
  return X11ReadItems(x, x->root, X11AtomOf(x, kNetActiveWindow), XA_WINDOW) == std::vector<unsigned long>{window.id};
}

// An application asks, and says when its user was last at work, and in which of its windows.
void AskManagerForFocus(X11Connection* x, const DisplayWindow& window) {
  constexpr long application = 1;
  const DisplayWindow* focused = x->desktop.focus.focused;
  const long current = focused ? long(focused->id) : None;
  X11AskManager(x, window, kNetActiveWindow, {application, long(x->desktop.userTime), current, 0, 0});
}

void AskForFocus(X11Connection* x, DisplayWindow* window) {
  window->wantsKeyboard = false;
  const bool isManaged = X11IsManaged(*window) && X11ManagerCan(x, kNetActiveWindow);
  if (!isManaged || ManagerBelievesActive(x, *window)) {
    XSetInputFocus(x->display, window->id, RevertToPointerRoot, CurrentTime);
  }
  // Also where the focus has been taken, for earlier requests may still wait with the manager.
  if (isManaged) AskManagerForFocus(x, *window);
}

} // namespace

void X11TakeFocus(X11Connection* x, DisplayWindow* window, const XFocusChangeEvent& event) {
  X11Focus& focus = x->desktop.focus;
  // A window that merely lies under the pointer has not been given the keyboard.
  if (event.detail == NotifyInferior || event.detail == NotifyPointer) return;
  // Nor does a program have it that takes all keys for a moment, as window managers do for their own.
  if (event.mode == NotifyGrab) return;
  if (event.mode == NotifyUngrab) {
    focus.grabWaits = IsCover(focus.standIn) && !focus.grabbed;
    if (event.type == FocusIn) X11QueueEvent(x, Kind::kKeysUnseen, window, false);
    return;
  }
  if (event.type == FocusIn) {
    focus.focused = window;
  } else if (focus.focused == window) {
    focus.focused = nullptr;
  }
  Tell(x);
}

bool X11SettleFocus(X11Connection* x) {
  if (!x->desktop.focus.grabWaits) return false;
  Grab(x);
  Tell(x);
  return true;
}

void X11GiveKeyboard(X11Connection* x, DisplayWindow* window) {
  if (window->wantsKeyboard) AskForFocus(x, window);
}

void X11ReleaseKeyboard(X11Connection* x, const DisplayWindow* window) {
  X11Focus& focus = x->desktop.focus;
  if (focus.focused == window) focus.focused = nullptr;
  if (focus.standIn == window) {
    Ungrab(x);
    focus.standIn = nullptr;
  }
  Tell(x);
}

void DisplayActivateWindow(DisplayWindow* window) {
  X11Connection* x = X11Live();
  if (!x) return;
  X11Focus& focus = x->desktop.focus;
  focus.standIn = X11IsManaged(*window) ? nullptr : window;
  IsCover(focus.standIn) ? Grab(x) : Ungrab(x);
  Tell(x);
  if (!focus.grabbed) {
    DisplayWindow* focused = FocusFor(window);
    X11AllowKeyboard(x, *focused);
    // A window manager shows it when it gets round to it; until then there is nothing to give the keyboard to.
    focused->wantsKeyboard = X11IsManaged(*focused) && !focused->viewable && X11HasManager(x);
    if (!focused->wantsKeyboard) AskForFocus(x, focused);
  }
  XFlush(x->display);
}

} // namespace framereel
