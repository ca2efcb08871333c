// The text of windows. Internal to the layer.
#pragma once

#include <string_view>

#include "win32/windows/window.h"

namespace framereel {

// The title from now on, on the frame and in the desktop's lists.
void SetTitle(HWND window, const char* title);
// What WM_GETTEXT answers for a text.
LRESULT CopyText(std::string_view text, WPARAM bufferSize, LPARAM buffer);

} // namespace framereel
