#include "views/toolkit_program.h"

#include "platform/windows/child_window.h"
#include "toolkit/views_start.h"
#include "win32/memory/memory_display.h"

namespace framereel {

ToolkitProgram::ToolkitProgram(int32_t depth)
    : platformIsUp((ViewsStartUp(), 1)), program(640, 480, depth), window(OpenTestWindow(kWindowUnclamped)) {
  SetMainClientSize(nullptr, 600, 400);
  SizeChildWindow(window, 300, 200);
  PlaceChildWindow(window, 30, 40);
  Settle();
}

std::string BoundsText(const View* view) {
  return std::to_string(view->x) + "," + std::to_string(view->y) + " " + std::to_string(view->width) + "x" +
         std::to_string(view->height);
}

std::string PictureOf(const View* view) {
  std::string picture;
  for (int16_t y = 0; y < view->height; ++y) {
    for (int16_t x = 0; x < view->width; ++x) {
      const Point p = OnScreen(view->window, int16_t(view->x + x), int16_t(view->y + y));
      const uint32_t pixel = MemoryPixel(p.h, p.v);
      picture += pixel == 0 ? '#' : pixel == 0xFFFFFF ? '.' : '-';
    }
    picture += '\n';
  }
  return picture;
}

} // namespace framereel
