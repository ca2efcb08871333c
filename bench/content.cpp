// The drawing behind content.h: a made-up font, pages of words, a desktop, noise.
#include "content.h"

#include <algorithm>

namespace framereel::bench {
namespace {

constexpr uint32_t kBlack = 0x000000, kWhite = 0xFFFFFF, kFace = 0xC0C0C0, kTitle = 0x000080;
constexpr int kGlyphWidth = 7, kGlyphHeight = 12, kLineHeight = 16, kGlyphs = 64;

// xorshift64*: the same numbers on every machine.
struct Random {
  uint64_t state;
  uint32_t Next() {
    state ^= state >> 12;
    state ^= state << 25;
    state ^= state >> 27;
    return uint32_t((state * 0x2545F4914F6CDD1Dull) >> 32);
  }
  int Below(int limit) { return int(Next() % uint32_t(limit)); }
};

Picture NewPicture(int width, int height, uint32_t colour) {
  return {width, height, std::vector<uint32_t>(size_t(width) * height, colour)};
}

// Parts outside the picture are left out.
void Fill(Picture& picture, int left, int top, int width, int height, uint32_t colour) {
  const int right = std::min(left + width, picture.width), bottom = std::min(top + height, picture.height);
  for (int y = std::max(top, 0); y < bottom; ++y) {
    for (int x = std::max(left, 0); x < right; ++x) {
      picture.pixels[size_t(y) * picture.width + x] = colour;
    }
  }
}

// Strokes of letters: stems, bars, a slope. Which of them a glyph has follows from its number.
void DrawGlyph(Picture& picture, int left, int top, int glyph, uint32_t colour) {
  const unsigned strokes = unsigned(glyph) * 2654435761u >> 20;
  const int height = strokes & 1 ? 9 : 6, base = top + kGlyphHeight - 3;
  if (strokes & 2) Fill(picture, left + 1, base - height, 1, height, colour);
  if (strokes & 4) Fill(picture, left + 5, base - 6, 1, strokes & 8 ? 9 : 6, colour);
  if (strokes & 16) Fill(picture, left + 2, base - 6, 3, 1, colour);
  if (strokes & 32) Fill(picture, left + 2, base - 3, 3, 1, colour);
  if (strokes & 64) Fill(picture, left + 2, base - 1, 3, 1, colour);
  if ((strokes & 6) == 0) Fill(picture, left + 3, base - height, 1, height, colour);
  if ((strokes & 112) == 0) {
    for (int i = 0; i < 5; ++i) Fill(picture, left + 1 + i, base - 1 - i, 1, 1, colour);
  }
}

// Words of letters from a small vocabulary in lines of differing length, some words in colour, as an editor shows.
void DrawText(Picture& picture, int left, int top, int width, int height, Random& random) {
  constexpr uint32_t kInks[] = {kBlack, kBlack, kBlack, kBlack, 0x0000CC, 0x996600};
  for (int y = top; y + kLineHeight <= top + height; y += kLineHeight) {
    if (random.Below(7) == 0) continue;
    int x = left + 4 * kGlyphWidth * random.Below(3);
    const int right = left + width / 3 + random.Below(width * 2 / 3);
    while (x < right) {
      Random word{uint64_t(random.Below(random.Below(400) + 1)) * 7919 + 1};
      word.Next();
      const uint32_t ink = kInks[random.Below(6)];
      for (int letters = 1 + word.Below(9); letters > 0 && x + kGlyphWidth <= right; --letters) {
        DrawGlyph(picture, x, y + 2, word.Below(word.Below(kGlyphs) + 1), ink);
        x += kGlyphWidth;
      }
      x += kGlyphWidth;
    }
  }
}

Picture MakeDesktop(int width, int height, Random& random) {
  Picture desktop = NewPicture(width, height, 0);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto blue = uint32_t(96 + 128 * y / height), green = uint32_t(160 * x / width);
      desktop.pixels[size_t(y) * width + x] = green << 8 | blue;
    }
  }
  for (int y = 16; y + 64 < height; y += 80) {
    const auto colour = uint32_t(random.Next() & 0xFFFFFF);
    Fill(desktop, 24, y, 32, 32, colour);
    Fill(desktop, 30, y + 6, 20, 12, kWhite);
    Fill(desktop, 12, y + 38, 56, kLineHeight, kBlack);
    DrawText(desktop, 14, y + 38, 52, kLineHeight, random);
  }
  Fill(desktop, 0, height - 28, width, 28, kFace);
  return desktop;
}

Picture MakeWindow(int width, int height, Random& random) {
  Picture window = NewPicture(width, height, kFace);
  Fill(window, 3, 3, width - 6, 18, kTitle);
  Fill(window, 3, 24, width - 6, height - 27, kWhite);
  DrawText(window, 8, 26, width - 24, height - 32, random);
  Fill(window, width - 19, 24, 16, height - 27, kFace);
  return window;
}

// Light that changes slowly: values at the corners of large squares, and between them what lies between.
class Light {
public:
  Light(int width, int height, int square, Random& random)
      : side(square), across(width / square + 2), corners(size_t(across) * (height / square + 2)) {
    for (int& corner : corners) corner = random.Below(256);
  }
  int At(int x, int y) const {
    const int* upper = corners.data() + size_t(y / side) * across + x / side;
    const int* lower = upper + across;
    const int right = x % side, left = side - right, below = y % side;
    return ((upper[0] * left + upper[1] * right) * (side - below) + (lower[0] * left + lower[1] * right) * below) /
           (side * side);
  }

private:
  int side, across;
  std::vector<int> corners;
};

// Three channels of light, coarse and fine, and the grain of a film over them.
Picture MakePhoto(int width, int height, Random& random) {
  constexpr int kCoarse = 160, kFine = 48, kGrain = 13;
  Picture photo = NewPicture(width, height, 0);
  for (int channel = 0; channel < 3; ++channel) {
    const Light coarse(width, height, kCoarse, random), fine(width, height, kFine, random);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const int level = (3 * coarse.At(x, y) + fine.At(x, y)) / 4 + random.Below(kGrain) - kGrain / 2;
        photo.pixels[size_t(y) * width + x] |= uint32_t(std::clamp(level, 0, 255)) << 8 * channel;
      }
    }
  }
  return photo;
}

// The part of `from` at sourceLeft, sourceTop, as far as it goes, at left, top of a frame.
void Copy(const Picture& from, int sourceLeft, int sourceTop, int left, int top, int width, int height,
          uint32_t* xrgb) {
  const int across = std::min(from.width - sourceLeft, width - left);
  const int down = std::min(from.height - sourceTop, height - top);
  for (int y = 0; y < down; ++y) {
    const uint32_t* row = from.pixels.data() + size_t(sourceTop + y) * from.width + sourceLeft;
    std::copy(row, row + across, xrgb + size_t(top + y) * width + left);
  }
}

void DrawNoise(const Scene& scene, int n, uint32_t* xrgb) {
  Random random{uint64_t(n) + 0x9E3779B97F4A7C15ull};
  const size_t count = size_t(scene.width) * scene.height;
  for (size_t i = 0; i < count; ++i) xrgb[i] = random.Next() & 0xFFFFFF;
}

void DrawCaret(const Scene& scene, int n, uint32_t* xrgb) {
  if (n % 2 == 0) return;
  const int x = scene.width / 2, top = scene.height / 2;
  for (int y = top; y < top + kLineHeight; ++y) {
    std::fill_n(xrgb + size_t(y) * scene.width + x, 2, kBlack);
  }
}

// The page fills up from half its height on, and the clock shows another number every fourth frame.
void DrawTyping(const Scene& scene, int n, uint32_t* xrgb) {
  Picture frame = NewPicture(scene.width, scene.height, kWhite);
  Copy(scene.backdrop, 0, 0, 0, 0, scene.width, scene.height / 2, frame.pixels.data());
  for (int digit = 0; digit < 6; ++digit) {
    DrawGlyph(frame, scene.width - 8 * kGlyphWidth + digit * kGlyphWidth, 4, digit < 5 ? digit : n / 4 % 10, kBlack);
  }
  const int perLine = scene.width / kGlyphWidth - 4;
  for (int letter = 0; letter <= n; ++letter) {
    const int left = 2 * kGlyphWidth + letter % perLine * kGlyphWidth;
    DrawGlyph(frame, left, scene.height / 2 + letter / perLine * kLineHeight, letter * 7 % kGlyphs, kBlack);
  }
  std::copy(frame.pixels.begin(), frame.pixels.end(), xrgb);
}

} // namespace

const char* SceneName(SceneKind kind) {
  switch (kind) {
  case SceneKind::kScrollingText:
    return "scrolling text";
  case SceneKind::kDraggedWindow:
    return "dragged window";
  case SceneKind::kStaticCaret:
    return "static with caret";
  case SceneKind::kTyping:
    return "typing, a clock";
  case SceneKind::kPannedPhoto:
    return "panned photo";
  case SceneKind::kNoise:
    return "noise";
  }
  return "";
}

Scene MakeScene(SceneKind kind, int width, int height) {
  Random random{0x5EED};
  Scene scene = {kind, width, height, {}, {}};
  if (kind == SceneKind::kScrollingText || kind == SceneKind::kStaticCaret || kind == SceneKind::kTyping) {
    scene.backdrop = NewPicture(width, height * 4, kWhite);
    DrawText(scene.backdrop, 8, 0, width - 16, height * 4, random);
  } else if (kind == SceneKind::kDraggedWindow) {
    scene.backdrop = MakeDesktop(width, height, random);
    scene.window = MakeWindow(width / 2, height / 2, random);
  } else if (kind == SceneKind::kPannedPhoto) {
    scene.backdrop = MakePhoto(width * 2, height * 2, random);
  }
  return scene;
}

void DrawFrame(const Scene& scene, int n, uint32_t* xrgb) {
  switch (scene.kind) {
  case SceneKind::kScrollingText:
    Copy(scene.backdrop, 0, n * 5 % (scene.height * 3), 0, 0, scene.width, scene.height, xrgb);
    break;
  case SceneKind::kDraggedWindow: {
    Copy(scene.backdrop, 0, 0, 0, 0, scene.width, scene.height, xrgb);
    const int across = scene.width - scene.window.width, down = scene.height - scene.window.height;
    Copy(scene.window, 0, 0, (across / 4 + n * 7) % across, (down / 4 + n * 3) % down, scene.width, scene.height, xrgb);
    break;
  }
  case SceneKind::kStaticCaret:
    Copy(scene.backdrop, 0, 0, 0, 0, scene.width, scene.height, xrgb);
    DrawCaret(scene, n, xrgb);
    break;
  case SceneKind::kTyping:
    DrawTyping(scene, n, xrgb);
    break;
  case SceneKind::kPannedPhoto:
    Copy(scene.backdrop, n * 3 % scene.width, n % scene.height, 0, 0, scene.width, scene.height, xrgb);
    break;
  case SceneKind::kNoise:
    DrawNoise(scene, n, xrgb);
    break;
  }
}

void DrawIndexFrame(const Scene& scene, int n, uint8_t* indices) {
  const size_t count = size_t(scene.width) * scene.height;
  std::vector<uint32_t> xrgb(count);
  DrawFrame(scene, n, xrgb.data());
  const auto level = [](uint32_t channel) { return ((channel & 0xFF) + 25) / 51; };
  for (size_t i = 0; i < count; ++i) {
    indices[i] = uint8_t(36 * level(xrgb[i] >> 16) + 6 * level(xrgb[i] >> 8) + level(xrgb[i]));
  }
}

} // namespace framereel::bench
