// See plain_difference.h.
#include "recorder/plain_difference.h"

#include <algorithm>

namespace framereel {
namespace {

constexpr int kCubeFree = 216;

struct Levels {
  int red, green, blue;
};

int LevelOfChannel(int channel) {
  return (10 * channel + 255) / 510;
}

Levels LevelsOfCube(int index) {
  return {index / 36, index / 6 % 6, index % 6};
}

uint8_t CubeOf(const Levels& levels) {
  return uint8_t(36 * levels.red + 6 * levels.green + levels.blue);
}

PaletteColour ColourOfCube(int index) {
  const Levels levels = LevelsOfCube(index);
  return {uint8_t(levels.red * 51), uint8_t(levels.green * 51), uint8_t(levels.blue * 51)};
}

// Edges of a rectangle in the frame, right and bottom one past the last pixel.
struct Edges {
  int left, top, right, bottom;
};

struct Difference {
  Edges edges;
  bool gaveUp;
};

int DarkestColour(const std::vector<PaletteColour>& palette) {
  int least = 768, darkest = 0;
  for (size_t i = 0; i < palette.size(); ++i) {
    const int sum = palette[i].red + palette[i].green + palette[i].blue;
    if (sum < least) {
      least = sum;
      darkest = int(i);
    }
  }
  return darkest;
}

bool FindFree(PlainAnimation& a, const std::vector<uint8_t>& frame) {
  for (int value = 0; value < 256; ++value) {
    if (std::find(frame.begin(), frame.end(), value) != frame.end()) continue;
    a.captureTransparent = value;
    if (a.recordingSize == kSize100) a.outputTransparent = value;
    return true;
  }
  return false;
}

Difference Compare(PlainAnimation& a, const std::vector<uint8_t>& frame, bool transparent, bool explorer) {
  int minX = a.width, maxX = -1, minY = a.height, maxY = -1, collisions = 0;
  bool gaveUp = false;
  for (size_t i = 0; i < frame.size(); ++i) {
    const int x = int(i) % a.width, y = int(i) / a.width, index = frame[i];
    const int before = i == 0 ? -1 : a.work[i - 1];
    if (index == a.previous[i]) {
      a.work[i] = uint8_t(transparent && before != index ? a.captureTransparent : index);
      continue;
    }
    if (a.format == 1 && transparent && index == a.captureTransparent) {
      const int oldTransparent = a.captureTransparent;
      ++collisions;
      if (collisions == 1 && FindFree(a, frame)) {
        for (size_t k = 0; k < i; ++k) {
          if (a.work[k] != oldTransparent) a.previous[k] = uint8_t(oldTransparent);
        }
      } else {
        transparent = false;
        gaveUp = true;
      }
      i = size_t(-1); // again from the first pixel
      continue;
    }
    a.previous[i] = a.work[i] = uint8_t(index);
    minX = std::min(minX, x), maxX = std::max(maxX, x);
    minY = std::min(minY, y), maxY = std::max(maxY, y);
  }
  if (explorer) minX = minY = 0;
  return {{minX, minY, maxX + 1, maxY + 1}, gaveUp};
}

// ---- Reduction ---------------------------------------------------------------------------------------------------

// Up to nine pixels, row after row: as they stand in the frame, and their true indices.
struct Block {
  int side;
  int marked[9], shown[9];
};

Block BlockAt(const PlainAnimation& a, const std::vector<uint8_t>& frame, int side, int x, int y) {
  Block block = {side, {}, {}};
  for (int i = 0; i < side * side; ++i) {
    const size_t at = size_t((y * side + i / side) * a.width + x * side + i % side);
    block.marked[i] = frame[at];
    block.shown[i] = frame[at] == a.captureTransparent ? a.previous[at] : frame[at];
  }
  return block;
}

PaletteColour ScreenColour(const PlainAnimation& a, int index) {
  return size_t(index) < a.palette.size() ? a.palette[size_t(index)] : PaletteColour{0, 0, 0};
}

Levels LevelsOfIndex(const PlainAnimation& a, int index) {
  if (a.format == 3) return LevelsOfCube(index);
  const PaletteColour c = ScreenColour(a, index);
  return {LevelOfChannel(c.red), LevelOfChannel(c.green), LevelOfChannel(c.blue)};
}

bool AllMarked(const PlainAnimation& a, const Block& block, std::initializer_list<int> places) {
  return std::all_of(places.begin(), places.end(), [&](int i) { return block.marked[i] == a.captureTransparent; });
}

uint8_t Half(const PlainAnimation& a, const Block& block) {
  if (AllMarked(a, block, {0, 1, 2, 3})) return kCubeFree;
  Levels sum = {0, 0, 0};
  for (int i = 0; i < 4; ++i) {
    const Levels levels = LevelsOfCube(block.shown[i]);
    const PaletteColour colour = ScreenColour(a, block.shown[i]);
    const bool cube = a.format == 3;
    sum.red += cube ? levels.red : colour.red;
    sum.green += cube ? levels.green : colour.green;
    sum.blue += cube ? levels.blue : colour.blue;
  }
  if (a.format == 3) return CubeOf({sum.red / 4, sum.green / 4, sum.blue / 4});
  return CubeOf({LevelOfChannel(sum.red / 4), LevelOfChannel(sum.green / 4), LevelOfChannel(sum.blue / 4)});
}

uint8_t Corner(const PlainAnimation& a, const Block& block, int corner, int beside, int below) {
  if (AllMarked(a, block, {corner, beside, below, 4})) return kCubeFree;
  Levels sum = {0, 0, 0};
  const int places[] = {corner, beside, below, 4}, weights[] = {4, 2, 2, 1};
  for (int i = 0; i < 4; ++i) {
    const Levels levels = LevelsOfIndex(a, block.shown[places[i]]);
    sum.red += weights[i] * levels.red;
    sum.green += weights[i] * levels.green;
    sum.blue += weights[i] * levels.blue;
  }
  const auto level = [](int weighted) { return (10 * weighted + 45) / 90; };
  return CubeOf({level(sum.red), level(sum.green), level(sum.blue)});
}

// The output pixels of whole blocks of `from`, laid down in `to` with the frame's row length.
void ReduceBlocks(const PlainAnimation& a, const std::vector<uint8_t>& from, const Edges& blocks,
                  std::vector<uint8_t>& to) {
  const bool half = a.recordingSize == kSize25;
  for (int y = blocks.top; y < blocks.bottom; ++y) {
    for (int x = blocks.left; x < blocks.right; ++x) {
      const Block block = BlockAt(a, from, half ? 2 : 3, x, y);
      if (half) {
        to[size_t(y * a.width + x)] = Half(a, block);
        continue;
      }
      uint8_t* out = &to[size_t(2 * y * a.width + 2 * x)];
      out[0] = Corner(a, block, 0, 1, 3);
      out[1] = Corner(a, block, 2, 1, 5);
      out[a.width] = Corner(a, block, 6, 3, 7);
      out[a.width + 1] = Corner(a, block, 8, 5, 7);
    }
  }
}

Edges Reduce(PlainAnimation& a, const Edges& e) {
  if (a.recordingSize == kSize100) return e;
  const int side = a.recordingSize == kSize25 ? 2 : 3, out = side - 1;
  const Edges blocks = {e.left / side, e.top / side, (e.right + side - 1) / side, (e.bottom + side - 1) / side};
  const std::vector<uint8_t> source = a.work;
  ReduceBlocks(a, source, blocks, a.work);
  return {blocks.left * out, blocks.top * out, blocks.right * out, blocks.bottom * out};
}

// ---- Border, delay -----------------------------------------------------------------------------------------------

void DrawBorder(PlainAnimation& a, int value) {
  const int width = PlainOutputSide(a.recordingSize, a.width), height = PlainOutputSide(a.recordingSize, a.height);
  for (int i = 0; i < width * height; ++i) {
    const int x = i % width, y = i / width;
    if (x == 0 || y == 0 || x == width - 1 || y == height - 1) a.work[size_t(y * a.width + x)] = uint8_t(value);
  }
}

uint16_t DelayOf(const PlainAnimation& a, const RecordingOptions& options, bool grab, uint32_t tick) {
  int32_t delay = 0;
  if (options.recordTimingInfo && grab) {
    delay = options.frameDelay;
  } else if (options.recordTimingInfo && a.frames > 0) {
    delay = int32_t(tick - a.lastTick);
  }
  return uint16_t(delay / 10);
}

} // namespace

PlainAnimation PlainBegin(PixelFormat format, uint16_t recordingSize, int width, int height,
                          const std::vector<PaletteColour>& palette) {
  const auto pixels = size_t(width * height);
  PlainAnimation a = {format, recordingSize, width, height, palette, 0, 0, 0, {}, {}, 0, 0};
  a.previous.resize(pixels);
  a.work.resize(pixels);
  a.captureTransparent = format == 1 ? 77 : format == 3 ? 216 : int(palette.size());
  a.outputTransparent = recordingSize == kSize100 ? a.captureTransparent : kCubeFree;
  a.blackIndex = (format == 6 || format == 7) && recordingSize == kSize100 ? DarkestColour(palette) : 0;
  return a;
}

PlainFrame PlainTake(PlainAnimation& a, const std::vector<uint8_t>& indices, const RecordingOptions& options, bool grab,
                     uint32_t tick) {
  const bool first = a.frames == 0;
  bool transparent = options.interframeTransparency;
  Difference difference = {{0, 0, a.width, a.height}, false};
  if (first) {
    a.previous = a.work = indices;
    difference.gaveUp = std::find(indices.begin(), indices.end(), a.captureTransparent) != indices.end();
  } else {
    difference = Compare(a, indices, transparent, options.explorerCompatible);
  }
  if (difference.gaveUp) transparent = false;
  if (difference.edges.right - difference.edges.left < 1) return {};

  const Edges out = Reduce(a, difference.edges);
  if (options.overlayBorder) DrawBorder(a, transparent && !first ? a.outputTransparent : a.blackIndex);
  PlainFrame frame = {true,
                      transparent,
                      a.outputTransparent,
                      out.left,
                      out.top,
                      out.right - out.left,
                      out.bottom - out.top,
                      {},
                      DelayOf(a, options, grab, tick)};
  for (int y = out.top; y < out.bottom; ++y) {
    const auto row = a.work.begin() + y * a.width;
    frame.pixels.insert(frame.pixels.end(), row + out.left, row + out.right);
  }
  ++a.frames;
  a.lastTick = tick;
  return frame;
}

uint8_t PlainCubeIndex(PaletteColour colour) {
  return CubeOf({LevelOfChannel(colour.red), LevelOfChannel(colour.green), LevelOfChannel(colour.blue)});
}

std::vector<PaletteColour> PlainColourTable(const PlainAnimation& a) {
  if (a.recordingSize == kSize100 && a.format != 3) return a.palette;
  std::vector<PaletteColour> cube;
  for (int i = 0; i < kCubeFree; ++i) cube.push_back(ColourOfCube(i));
  return cube;
}

std::vector<uint8_t> PlainReduction(const PlainAnimation& a, const std::vector<uint8_t>& indices) {
  if (a.recordingSize == kSize100) return indices;
  PlainAnimation copy = a;
  copy.captureTransparent = -1; // nothing is marked
  copy.work = indices;
  const Edges out = Reduce(copy, {0, 0, a.width, a.height});
  std::vector<uint8_t> image;
  for (int y = 0; y < out.bottom; ++y) {
    const auto row = copy.work.begin() + y * a.width;
    image.insert(image.end(), row, row + out.right);
  }
  return image;
}

int PlainOutputSide(uint16_t recordingSize, int side) {
  return recordingSize == kSize25 ? side / 2 : recordingSize == kSize44 ? side * 2 / 3 : side;
}

} // namespace framereel
