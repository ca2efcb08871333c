// Families, fonts, and the short list of those that are open.
#include "platform/drawing/font_cache.h"

#include <algorithm>

#include "core/memory.h"
#include "core/strings.h"
#include "platform/drawing/shared_contexts.h"
#include "win32/pixels/scale.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

constexpr uint16_t kFontsOpen = 6; // fonts in use may make it more
constexpr char kDefaultFamily[] = "MS Sans Serif";

struct FontState {
  GrowArray families;
  List* open;       // Fonts whose handle exists
  Font* selected;   // the one that was selected last
  HGDIOBJ homeFont; // what the first context held before
};

FontState fonts;

HFONT NewHandle(const char* family, const Font& font) {
  LOGFONTA what = {};
  what.lfHeight = Scaled(font.size);
  what.lfWidth = font.width;
  what.lfItalic = (font.style & kFontItalic) != 0;
  what.lfWeight = font.style & kFontBold ? FW_BOLD : FW_NORMAL;
  StrCopyN(family, what.lfFaceName, std::min(StrLength(family), size_t{LF_FACESIZE - 1}));
  return ::CreateFontIndirectA(&what);
}

// Asks the screen context about the handle.
TEXTMETRICA MetricsOf(HFONT handle) {
  TEXTMETRICA metrics = {};
  const HGDIOBJ before = ::SelectObject(ScreenContext(), handle);
  ::GetTextMetricsA(ScreenContext(), &metrics);
  ::SelectObject(ScreenContext(), before);
  return metrics;
}

// Closes the first open font that nothing holds, if too many are open.
void CloseOneTooMany() {
  if (ListCount(fonts.open) <= kFontsOpen) return;
  for (ListValue value = ListFirst(fonts.open); value; value = ListNext(fonts.open)) {
    auto* font = FromListValue<Font>(value);
    // A context that is not current may still hold it.
    if (font->selectCount > 0 || !::DeleteObject(font->handle)) continue;
    font->handle = nullptr;
    ListRemove(fonts.open);
    return;
  }
}

void NoteOpen(Font* font) {
  ListAppend(fonts.open, ToListValue(font));
  CloseOneTooMany();
}

bool OpenFont(Font* font) {
  if (font->handle) return true;
  font->handle = NewHandle(font->family->name, *font);
  if (!font->handle) return false;
  NoteOpen(font);
  return true;
}

// Makes the handle and fills in what it measures.
bool FillFont(Font* font) {
  const char* name = font->family->name;
  font->handle = NewHandle(name, *font);
  if (font->handle && font->scale != 1.0) {
    const LONG average = MetricsOf(font->handle).tmAveCharWidth;
    ::DeleteObject(font->handle);
    font->width = std::max(1, int32_t(average * font->scale));
    font->handle = NewHandle(name, *font);
  }
  if (!font->handle) return false;
  const TEXTMETRICA metrics = MetricsOf(font->handle);
  font->ascent = uint16_t(metrics.tmAscent);
  font->descent = uint16_t(metrics.tmDescent);
  font->leadingAbove = uint16_t(metrics.tmExternalLeading / 2);
  font->leadingBelow = uint16_t(metrics.tmExternalLeading - font->leadingAbove);
  return true;
}

Font* FindFont(const FontFamily* family, uint16_t size, uint16_t style, double scale) {
  for (uint16_t i = 0; i < family->fonts.count; ++i) {
    auto* font = FromListValue<Font>(family->fonts.entries[i]);
    if (font->size == size && font->style == style && font->scale == scale) return font;
  }
  return nullptr;
}

// Takes the last entry off an array that has one.
template <typename T> T* TakeLast(GrowArray* array) {
  const auto last = uint16_t(array->count - 1);
  auto* entry = FromListValue<T>(array->entries[last]);
  GrowArrayRemoveAt(array, last);
  return entry;
}

void FreeFamily(FontFamily* family) {
  while (family->fonts.count) {
    auto* font = TakeLast<Font>(&family->fonts);
    ::DeleteObject(font->handle);
    MemFree(font);
  }
  StrFree(family->name);
  MemFree(family);
}

} // namespace

void FontsStartUp() {
  fonts = {};
  fonts.open = ListNew();
}

void FontsShutDown() {
  while (fonts.families.count) FreeFamily(TakeLast<FontFamily>(&fonts.families));
  ListDelete(fonts.open);
  fonts = {};
}

FontFamily* GetFontFamily(const char* name) {
  if (!name) name = kDefaultFamily;
  for (uint16_t i = fonts.families.count; i-- > 0;) {
    auto* family = FromListValue<FontFamily>(fonts.families.entries[i]);
    if (StrEqual(family->name, name)) return family;
  }
  const HFONT test = NewHandle(name, Font{});
  if (!test) return nullptr;
  ::DeleteObject(test);
  auto* family = static_cast<FontFamily*>(MemAlloc(sizeof(FontFamily)));
  if (!family) return nullptr;
  *family = {StrDup(name), {}};
  GrowArrayAdd(&fonts.families, ToListValue(family));
  return family;
}

Font* GetFont(FontFamily* family, uint16_t size, uint16_t style, double scale) {
  if (!family) return nullptr;
  if (Font* font = FindFont(family, size, style, scale)) {
    ++font->references;
    return font;
  }
  auto* font = static_cast<Font*>(MemAlloc(sizeof(Font)));
  if (!font) return nullptr;
  *font = {};
  font->family = family;
  font->size = size;
  font->style = style;
  font->scale = scale;
  font->references = 1;
  if (!FillFont(font)) {
    MemFree(font);
    return nullptr;
  }
  GrowArrayAdd(&family->fonts, ToListValue(font));
  NoteOpen(font);
  return font;
}

void ReleaseFont(Font* font) {
  if (font) --font->references;
}

void SelectFont(HDC context, Font* font) {
  if (!context || !font) return;
  ++font->selectCount; // before it opens, so that it is not the one that closes
  const HGDIOBJ before = OpenFont(font) ? ::SelectObject(context, font->handle) : nullptr;
  if (!before) {
    --font->selectCount;
    return;
  }
  if (!fonts.homeFont) fonts.homeFont = before;
  if (fonts.selected) --fonts.selected->selectCount;
  fonts.selected = font;
  ::SetTextCharacterExtra(context, font->style & kFontOutlined ? 2 : 0);
}

HFONT HoldFont(Font* font) {
  if (!font) return nullptr;
  ++font->selectCount; // before it opens, as above
  return OpenFont(font) ? font->handle : nullptr;
}

void LetGoOfFont(Font* font) {
  if (font) --font->selectCount;
}

void DeselectFont(HDC context) {
  if (!context || !fonts.homeFont) return;
  ::SelectObject(context, fonts.homeFont);
  fonts.homeFont = nullptr;
  if (fonts.selected) --fonts.selected->selectCount;
  fonts.selected = nullptr;
}

} // namespace framereel
