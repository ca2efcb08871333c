// Which Port is current, with the context that is drawn through. ports.h changes it; the clip and the DrawState in use
// are of this Port.
#pragma once

#include "platform/records/port.h"
#include "win32/win32_types.h"

namespace framereel {

struct CurrentPortState {
  const Port* port; // null: nothing is current
  HDC context;      // null when there is none
  HWND window;      // whose context it is, if it is a window's
  bool blind;       // all drawing is to be clipped away
};

const CurrentPortState& TheCurrentPort();
void StoreCurrentPort(const CurrentPortState& state);

inline const Port* CurrentPort() {
  return TheCurrentPort().port;
}
// For those who call the platform's drawing themselves.
inline HDC CurrentContext() {
  return TheCurrentPort().context;
}

} // namespace framereel
