// The session tells its programs in the environment.
#include "platform/display/session.h"

#include <cstdlib>

namespace framereel {

bool SessionIsWayland() {
  const char* display = ::getenv("WAYLAND_DISPLAY");
  return display && *display;
}

} // namespace framereel
