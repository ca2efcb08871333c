// What kind of session the user has logged in to.
#pragma once

namespace framereel {

// A Wayland session. It may have an X server for the programs of X11 (XWayland), but that one shows nobody the windows:
// what is read from its screen is black but for the pointer, even where windows of X11 programs stand. A private X
// server in such a session is fine, and who starts one takes WAYLAND_DISPLAY away from what runs on it.
bool SessionIsWayland();

} // namespace framereel
