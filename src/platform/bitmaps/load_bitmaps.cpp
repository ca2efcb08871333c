// Loading bitmap resources into Offscreens that have been made for them.
#include "platform/bitmaps/load_bitmaps.h"

#include "platform/bitmaps/offscreens.h"
#include "platform/drawing/shared_contexts.h"
#include "win32/win32_drawing.h"

namespace framereel {
namespace {

constexpr uint16_t kPictureResources = 4000; // where the pictures begin among the bitmap resources

// Takes the place of the bitmap of an Offscreen made for it, whose size is the new one's.
void TakeBitmap(Offscreen* offscreen, HBITMAP bitmap) {
  ::DeleteObject(offscreen->bitmap);
  offscreen->bitmap = bitmap;
  const HGDIOBJ replaced = ::SelectObject(SourceContext(), bitmap);
  RECT box = {};
  ::GetClipBox(SourceContext(), &box);
  ::SelectObject(SourceContext(), replaced);
  offscreen->width = int16_t(box.right);
  offscreen->height = int16_t(box.bottom);
}

} // namespace

Offscreen* LoadOffscreen(uint16_t id) {
  HBITMAP bitmap = ::LoadBitmapA(nullptr, MAKEINTRESOURCEA(id));
  if (!bitmap) return nullptr;
  Offscreen* offscreen = NewOffscreen(1, 1, true);
  if (offscreen) {
    TakeBitmap(offscreen, bitmap);
  } else {
    ::DeleteObject(bitmap);
  }
  return offscreen;
}

Offscreen* LoadPicture(uint16_t id) {
  return LoadOffscreen(uint16_t(id + kPictureResources));
}

} // namespace framereel
