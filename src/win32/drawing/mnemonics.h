// Texts in which "&" marks the letter that picks them by the keyboard. Internal to the layer.
#pragma once

#include <string>
#include <string_view>

#include "win32/win32_types.h"

namespace framereel {

// Such a text as it is shown: without the sign, and "&" for two of them.
struct MnemonicText {
  std::string shown;
  size_t letter; // place of the letter in it, or npos
};

MnemonicText MnemonicTextOf(std::string_view text);
// Whether the character, of any case, picks it.
bool PicksText(const MnemonicText& text, uint8_t character);

// As DrawLabel, with a line under the letter.
void DrawMnemonicText(HDC context, int32_t x, int32_t y, const MnemonicText& text, bool greyed, COLORREF ground,
                      COLORREF ink);

} // namespace framereel
