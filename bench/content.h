// What the benchmarks record: six kinds of moving screen, drawn the same way in every run.
#pragma once

#include <cstdint>
#include <vector>

namespace framereel::bench {

enum class SceneKind {
  kScrollingText, // a page of text that moves up by a few pixels a frame
  kDraggedWindow, // a window of text dragged over a desktop with a gradient and icons
  kStaticCaret,   // a page of text on which nothing but a caret changes
  kTyping,        // a page of text on which letters come one by one while a clock runs in the opposite corner
  kPannedPhoto,   // a smooth picture with grain, of which each frame shows another part
  kNoise,         // every pixel of every frame at random
};

inline constexpr SceneKind kAllScenes[] = {SceneKind::kScrollingText, SceneKind::kDraggedWindow,
                                           SceneKind::kStaticCaret,   SceneKind::kTyping,
                                           SceneKind::kPannedPhoto,   SceneKind::kNoise};

// A drawn background of which each frame shows a part. Pixels are 0x00RRGGBB, rows without padding.
struct Picture {
  int width, height;
  std::vector<uint32_t> pixels;
};

struct Scene {
  SceneKind kind;
  int width, height; // of a frame, in pixels
  Picture backdrop;  // the long page, or the desktop; empty for noise
  Picture window;    // what is dragged; empty for the other kinds
};

const char* SceneName(SceneKind kind);

// The sides are at least 64 pixels.
Scene MakeScene(SceneKind kind, int width, int height);

// Frame n, from 0 on, as width x height pixels 0x00RRGGBB.
void DrawFrame(const Scene& scene, int n, uint32_t* xrgb);

// The same frame as indices 36 r + 6 g + b of the 216-colour cube, each channel at its nearest level.
void DrawIndexFrame(const Scene& scene, int n, uint8_t* indices);

} // namespace framereel::bench
