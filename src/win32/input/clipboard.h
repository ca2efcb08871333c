// The clipboard's text. Internal to the layer; the calls stand in win32_controls.h.
#pragma once

#include <string>
#include <string_view>

namespace framereel {

void SetClipboardText(std::string_view text); // UTF-8, lines end with LF
std::string ClipboardText();                  // empty when there is none

} // namespace framereel
