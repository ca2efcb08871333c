#include <new>
#include "win32/fonts.h"
namespace framereel {
void FreeFont(HFONT font) {
  delete font->record;
  delete font;
}
HFONT SystemFont() {
  static Win32Font font = {{GdiKind::kFont, true, 0}, nullptr};
  return &font;
}
} // namespace framereel
