// Texts with a marked letter: taking the sign out, and drawing the line.
#include "win32/drawing/mnemonics.h"

#include <cctype>

#include "win32/drawing/gdi.h"
#include "win32/drawing/relief.h"
#include "win32/pixels/scale.h"
#include "win32/win32_drawing.h"

namespace framereel {

MnemonicText MnemonicTextOf(std::string_view text) {
  MnemonicText made = {"", std::string::npos};
  for (size_t i = 0; i < text.size(); ++i) {
    const bool sign = text[i] == '&' && i + 1 < text.size();
    if (sign) ++i;
    if (sign && text[i] != '&' && made.letter == std::string::npos) made.letter = made.shown.size();
    made.shown += text[i];
  }
  return made;
}

bool PicksText(const MnemonicText& text, uint8_t character) {
  return text.letter != std::string::npos && std::tolower(uint8_t(text.shown[text.letter])) == std::tolower(character);
}

void DrawMnemonicText(HDC context, int32_t x, int32_t y, const MnemonicText& text, bool greyed, COLORREF ground,
                      COLORREF ink) {
  DrawLabel(context, x, y, text.shown, greyed, ground, ink);
  if (text.letter == std::string::npos) return;
  TEXTMETRICA metrics = {};
  ::GetTextMetricsA(context, &metrics);
  const std::string_view shown = text.shown;
  const int32_t under = y + metrics.tmAscent + kThinLine;
  FillPixels(context,
             {x + TextWidth(context, shown.substr(0, text.letter)), under,
              x + TextWidth(context, shown.substr(0, text.letter + 1)), under + kThinLine},
             context->textColour);
}

} // namespace framereel
