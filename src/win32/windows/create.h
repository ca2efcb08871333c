// How windows come into being, and how they go. Internal to the layer; the calls stand in win32_windows.h.
#pragma once

namespace framereel {

// Forgets all windows, classes, menus and messages without telling anyone: for tests, between one program and the next.
void ForgetAllWindows();

} // namespace framereel
