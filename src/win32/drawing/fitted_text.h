// Text that is shortened to what has room. Internal to the layer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "win32/win32_types.h"

namespace framereel {

enum class TextCut : uint8_t { kEnd, kMiddle };

// The text or, where it is wider than `width` pixels in the font of the context, as much of it as has room together
// with the dots that stand for what is missing. Empty when not even those have.
std::string FittedText(HDC context, std::string_view text, int32_t width, TextCut cut);

} // namespace framereel
