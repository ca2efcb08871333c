// Shows a scene on the screen that DISPLAY names, for a recorder to record: scene_player KIND WIDTH HEIGHT SECONDS.
//
// KIND counts the scenes of content.h from 0. The frames are drawn ahead and shown 60 times a second, so that showing
// them costs little beside what is being measured. Prints a line when the first one stands.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "content.h"
#include "win32/pixels/display.h"

using namespace framereel;

namespace {

constexpr int kFramesAhead = 60;
constexpr uint32_t kFrameTime = 1000 / 60; // ms

std::vector<Surface> DrawAhead(const bench::Scene& scene) {
  std::vector<Surface> frames(kFramesAhead);
  std::vector<uint32_t> pixels(size_t(scene.width) * size_t(scene.height));
  for (int n = 0; n < kFramesAhead; ++n) {
    if (!DisplayNewSurface(scene.width, scene.height, &frames[n])) return {};
    bench::DrawFrame(scene, n, pixels.data());
    for (int y = 0; y < scene.height; ++y) {
      ::memcpy(RowOf(frames[n], y), &pixels[size_t(y) * scene.width], size_t(scene.width) * sizeof(uint32_t));
    }
  }
  return frames;
}

// Forward and back again, so that no step is larger than between two frames.
int FrameAt(uint32_t n) {
  const int place = int(n % (2 * kFramesAhead - 2));
  return place < kFramesAhead ? place : 2 * kFramesAhead - 2 - place;
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 5 || !DisplayOpen() || DisplayScreen().layout.bytesPerPixel != 4) {
    ::fprintf(stderr, "usage, on a screen of 24 bits: scene_player KIND WIDTH HEIGHT SECONDS\n");
    return 2;
  }
  const auto kind = bench::SceneKind(::atoi(argv[1]));
  const std::vector<Surface> frames = DrawAhead(bench::MakeScene(kind, ::atoi(argv[2]), ::atoi(argv[3])));
  if (frames.empty()) return 1;
  const uint32_t shows = uint32_t(::atoi(argv[4])) * 1000 / kFrameTime;
  const uint32_t start = DisplayTick();
  for (uint32_t n = 0; n < shows && !DisplayIsLost(); ++n) {
    const Surface& frame = frames[size_t(FrameAt(n))];
    DisplayDrawScreen(frame, {0, 0, frame.width, frame.height}, 0, 0);
    if (n == 0) {
      ::puts("ready");
      ::fflush(stdout);
    }
    const int32_t rest = int32_t(start + (n + 1) * kFrameTime - DisplayTick());
    if (rest > 0) DisplaySleep(uint32_t(rest));
  }
  return 0;
}
