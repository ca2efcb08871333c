// What tells that a mouse or a keyboard has done anything, wherever the pointer is and whoever has the keyboard: the
// raw events of the XInput extension, which reach the root even while another client holds the devices (from
// version 2.1 on). They carry no state. They say that the state known is out of date, so that a program at rest has
// nothing to ask.
#include <X11/extensions/XInput2.h>

#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

void Select(X11Connection* x, int devices, std::initializer_list<int> kinds) {
  unsigned char bits[XIMaskLen(XI_LASTEVENT)] = {};
  for (int kind : kinds) XISetMask(bits, kind);
  XIEventMask mask = {devices, sizeof bits, bits};
  XISelectEvents(x->display, x->root, &mask, 1);
}

} // namespace

void X11WatchDevices(X11Connection* x) {
  X11Devices& devices = x->devices;
  int events, errors, major = 2, minor = 1;
  if (!XQueryExtension(x->display, "XInputExtension", &devices.extension, &events, &errors)) return;
  if (XIQueryVersion(x->display, &major, &minor) != Success || major * 10 + minor < 21) return;
  Select(x, XIAllMasterDevices,
         {XI_RawMotion, XI_RawButtonPress, XI_RawButtonRelease, XI_RawKeyPress, XI_RawKeyRelease});
  // A device that goes lets go of its keys without a word of each.
  Select(x, XIAllDevices, {XI_HierarchyChanged});
  devices.tell = devices.pointerStale = devices.pressedStale = true;
}

bool X11TakeDeviceEvent(X11Connection* x, const XEvent& event) {
  X11Devices& devices = x->devices;
  if (!devices.tell || event.type != GenericEvent || event.xcookie.extension != devices.extension) return false;
  const int kind = event.xcookie.evtype;
  // Some devices say where they are along with a press only.
  devices.pointerStale = true;
  if (kind == XI_RawMotion) return true;
  devices.pressedStale = true;
  if (kind == XI_RawButtonRelease) x->desktop.drag.unsure = true;
  return true;
}

} // namespace framereel
