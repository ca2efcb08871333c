// The pointer of the desktop in memory.
#include "win32/memory/memory_display.h"

namespace framereel {

const PointerPicture* DisplayPointer() {
  const MemoryDisplay& display = TheMemoryDisplay();
  if (!display.hasPointer || display.lost) return nullptr;
  static PointerPicture picture;
  static std::vector<uint32_t> pixels;
  const uint32_t serial = picture.serial;
  const bool same = pixels == display.pointerPixels && picture.width == display.pointerWidth &&
                    picture.hotX == display.hotX && picture.hotY == display.hotY;
  pixels = display.pointerPixels;
  picture = {display.pointerWidth, display.pointerHeight, display.hotX,
             display.hotY,         pixels.data(),         same ? serial : serial + 1};
  return &picture;
}

bool DisplayPointerPlace(int32_t* x, int32_t* y) {
  const MemoryDisplay& display = TheMemoryDisplay();
  if (display.lost) return false;
  *x = display.pointerX;
  *y = display.pointerY;
  return true;
}

void DisplayMovePointer(int32_t x, int32_t y) {
  MemoryMovePointerTo(x, y);
}

} // namespace framereel
