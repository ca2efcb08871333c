// Sets of pixels, as unions of rectangles: what of a window can be seen, what of it is to be painted.
//
// A thin owner round pixman's regions, whose functions do the arithmetic. One rectangle, the usual case, allocates
// nothing. A region that pixman has no memory for would be empty without a word, so that ends the program.
#pragma once

#include <pixman.h>

#include "win32/pixels/exhaustion.h"
#include "win32/pixels/surface.h"

namespace framereel {

class Region {
public:
  Region() { pixman_region32_init(&area_); }
  explicit Region(const PixelRect& r) : Region() { Add(r); }
  Region(const Region& other) : Region() { Made(pixman_region32_copy(&area_, &other.area_)); }
  Region(Region&& other) noexcept : area_(other.area_) { pixman_region32_init(&other.area_); }
  Region& operator=(const Region& other) {
    if (this != &other) Made(pixman_region32_copy(&area_, &other.area_));
    return *this;
  }
  ~Region() { pixman_region32_fini(&area_); }

  bool IsEmpty() const { return !pixman_region32_not_empty(&area_); }
  PixelRect Bounds() const {
    const pixman_box32_t& box = *pixman_region32_extents(&area_);
    return {box.x1, box.y1, box.x2, box.y2};
  }
  int32_t Rectangles() const { return pixman_region32_n_rects(&area_); }

  bool Touches(const PixelRect& r) const {
    const pixman_box32_t box = {r.left, r.top, r.right, r.bottom};
    return !framereel::IsEmpty(r) && pixman_region32_contains_rectangle(&area_, &box) != PIXMAN_REGION_OUT;
  }

  void Clear() { pixman_region32_clear(&area_); }
  void Offset(int32_t dx, int32_t dy) { pixman_region32_translate(&area_, dx, dy); }
  // Empty rectangles add, take away and leave nothing.
  void Add(const PixelRect& r) {
    if (framereel::IsEmpty(r)) return;
    Made(pixman_region32_union_rect(&area_, &area_, r.left, r.top, WidthOf(r), HeightOf(r)));
  }
  void Add(const Region& other) { Made(pixman_region32_union(&area_, &area_, &other.area_)); }
  void Subtract(const Region& other) { Made(pixman_region32_subtract(&area_, &area_, &other.area_)); }
  void Subtract(const PixelRect& r) { Subtract(Region(r)); }
  void Intersect(const Region& other) { Made(pixman_region32_intersect(&area_, &area_, &other.area_)); }
  void Intersect(const PixelRect& r) {
    if (framereel::IsEmpty(r)) return Clear();
    Made(pixman_region32_intersect_rect(&area_, &area_, r.left, r.top, WidthOf(r), HeightOf(r)));
  }

  // Calls what is given with each of the rectangles, which do not overlap, from the top down.
  template <typename Function> void ForEach(Function function) const {
    int count = 0;
    const pixman_box32_t* box = pixman_region32_rectangles(&area_, &count);
    for (const pixman_box32_t* end = box + count; box != end; ++box) {
      function(PixelRect{box->x1, box->y1, box->x2, box->y2});
    }
  }

private:
  static void Made(bool made) {
    if (!made) EndWithoutMemory();
  }
  static unsigned WidthOf(const PixelRect& r) { return unsigned(r.right) - unsigned(r.left); }
  static unsigned HeightOf(const PixelRect& r) { return unsigned(r.bottom) - unsigned(r.top); }

  pixman_region32_t area_;
};

} // namespace framereel
