// PictureView: the picture that it keeps, and copying it.
#include "toolkit/controls/picture_view.h"

#include "platform/bitmaps/copy_bits.h"
#include "platform/bitmaps/load_bitmaps.h"
#include "platform/bitmaps/offscreens.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/pixels/scale.h"

namespace framereel {
namespace {

constexpr int16_t kStoredSize = 32; // pixels

ViewClass* pictureViewClass;

Offscreen* PictureOf(const View* view) {
  return static_cast<Offscreen*>(view->classData);
}

void Destroy(View* view) {
  if (Offscreen* picture = PictureOf(view)) FreeOffscreen(picture);
  view->classData = nullptr;
}

void Draw(View* view) {
  const Offscreen* picture = PictureOf(view);
  if (picture) CopyBits(&picture->port, OffscreenBounds(picture), ViewBounds(view), 1);
}

void SetSize(View* view, int16_t width, int16_t height) {
  ViewInvalidate(view);
  const auto natural = int16_t(kStoredSize * PictureScale());
  view->width = width ? width : natural;
  view->height = height ? height : natural;
  ViewInvalidate(view);
}

} // namespace

const ViewClass* PictureViewClass() {
  return pictureViewClass;
}

void PictureViewSetUpClass() {
  if (pictureViewClass) return;
  pictureViewClass = ClassNew();
  pictureViewClass->destroy = Destroy;
  pictureViewClass->draw = Draw;
  pictureViewClass->setSize = SetSize;
}

void PictureViewSetBitmap(View* view, uint16_t id) {
  Destroy(view);
  view->classData = LoadPicture(id);
  ViewInvalidate(view);
}

} // namespace framereel
