// What tells that a mouse or a keyboard has done anything, wherever the pointer is and whoever has the keyboard: the
// raw events of the XInput extension, which reach the root even while another client holds the devices (from version
// 2.1 on). They carry no state. They say that what is known of it is out of date, so that a program at rest has nothing
// to ask.
//
// A mouse on its way tells so up to a thousand times a second, and once would be enough: motion is listened to only
// while the pointer rests.

#include <X11/extensions/XInput2.h>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

constexpr uint32_t kRestMs = 250; // a pointer that has stood still for so long rests

void Select(X11Connection* x, int devices, std::initializer_list<int> kinds) {
  unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
  for (int kind : kinds) XISetMask(bits, kind);
  XIEventMask mask = {devices, sizeof bits, bits};
  XISelectEvents(x->display, x->root, &mask, 1);
}

void Listen(X11Connection* x, bool toMotion) {
  x->devices.hearsMotion = toMotion;
  int perhaps = toMotion ? XI_RawMotion : XI_RawKeyPress; // the latter is among them in any case
  Select(x, XIAllMasterDevices, {XI_RawKeyPress, XI_RawKeyRelease, XI_RawButtonPress, XI_RawButtonRelease, perhaps});
  XFlush(x->display);
}

} // namespace

void X11WatchDevices(X11Connection* x) {
  X11Devices& devices = x->devices;
  int events, errors, major = 2, minor = 1;
  if (!XQueryExtension(x->display, "XInputExtension", &devices.extension, &events, &errors)) return;
  if (XIQueryVersion(x->display, &major, &minor) != Success || major * 10 + minor < 21) return;
  devices.tell = devices.pressedStale = true;
  Listen(x, false);
  // A device that goes lets go of its keys without a word of each.
  Select(x, XIAllDevices, {XI_HierarchyChanged});
}

bool X11ListensFrom(X11Connection* x, bool pointerMoved) {
  X11Devices& devices = x->devices;
  uint32_t now = DisplayTick();
  if (pointerMoved) devices.movedTick = now;
  if (!devices.tell || devices.hearsMotion || now - devices.movedTick < kRestMs) return false;
  Listen(x, true);
  return true;
}

bool X11TakeDeviceEvent(X11Connection* x, const XEvent& event) {
  X11Devices& devices = x->devices;
  if (!devices.tell || event.type != GenericEvent || event.xcookie.extension != devices.extension) return false;
  devices.pointerStale = true; // some devices move the pointer with a press
  if (event.xcookie.evtype == XI_RawMotion) {
    x->changes.unsure = true; // the pointer may be back where it was
    if (devices.hearsMotion) Listen(x, false);
    return true;
  }
  devices.pressedStale = true;
  if (event.xcookie.evtype == XI_RawButtonRelease) x->desktop.drag.unsure = true;
  return true;
}

} // namespace framereel
