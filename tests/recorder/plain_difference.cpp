// See plain_difference.h.
#include "recorder/plain_difference.h"

#include <algorithm>
#include <array>

#include "resources/standard_colours.h"

namespace framereel {
namespace {

constexpr int kCubeFree = 216;

using Channels = std::array<int, 3>; // red, green, blue

Channels ChannelsOf(PaletteColour colour) {
  return {colour.red, colour.green, colour.blue};
}

int LevelOf(int channel) {
  return (10 * channel + 255) / 510;
}

Channels CubeLevels(int index) {
  return {index / 36, index / 6 % 6, index % 6};
}

uint8_t CubeOf(const Channels& levels) {
  return uint8_t(36 * levels[0] + 6 * levels[1] + levels[2]);
}

// The lowest index of those with the smallest sum of channels.
int DarkestColour(const std::vector<PaletteColour>& palette) {
  const auto brightness = [](PaletteColour c) { return c.red + c.green + c.blue; };
  const auto darker = [&](PaletteColour a, PaletteColour b) { return brightness(a) < brightness(b); };
  return int(std::min_element(palette.begin(), palette.end(), darker) - palette.begin());
}

// ---- Difference --------------------------------------------------------------------------------------------------

// Edges of a rectangle in the frame, right and bottom one past the last pixel.
struct Edges {
  int left, top, right, bottom;
};

bool FindFree(PlainAnimation& a, const std::vector<uint8_t>& frame) {
  for (int value = 0; value < 256; ++value) {
    if (std::find(frame.begin(), frame.end(), value) != frame.end()) continue;
    a.captureTransparent = value;
    if (a.recordingSize == kSize100) a.outputTransparent = value;
    return true;
  }
  return false;
}

// Clears `transparent` if the frame has to do without.
Edges Compare(PlainAnimation& a, const std::vector<uint8_t>& frame, bool& transparent, bool explorer) {
  Edges e = {a.width, a.height, 0, 0};
  int collisions = 0;
  for (size_t i = 0; i < frame.size(); ++i) {
    const int x = int(i) % a.width, y = int(i) / a.width, index = frame[i];
    const int before = i == 0 ? -1 : a.work[i - 1];
    if (index == a.previous[i]) {
      a.work[i] = uint8_t(transparent && before != index ? a.captureTransparent : index);
      continue;
    }
    if (a.depth == 8 && transparent && index == a.captureTransparent) {
      const int oldTransparent = a.captureTransparent;
      ++collisions;
      if (collisions == 1 && FindFree(a, frame)) {
        for (size_t k = 0; k < i; ++k) {
          if (a.work[k] != oldTransparent) a.previous[k] = uint8_t(oldTransparent);
        }
      } else {
        transparent = false;
      }
      i = size_t(-1); // again from the first pixel
      continue;
    }
    a.previous[i] = a.work[i] = uint8_t(index);
    e = {std::min(e.left, x), std::min(e.top, y), std::max(e.right, x + 1), std::max(e.bottom, y + 1)};
  }
  if (explorer) e.left = e.top = 0;
  return e;
}

// ---- Reduction ---------------------------------------------------------------------------------------------------

// A pixel of a block, and what it weighs in an output pixel.
struct Share {
  int x, y, weight;
};
using Shares = std::array<Share, 4>;

// The output pixel that the shares of the block at x, y of `from` make. Halves on a palette screen are means of
// colours, all others of levels; halves are cut, thirds rounded.
uint8_t MeanOf(const PlainAnimation& a, const std::vector<uint8_t>& from, int x, int y, const Shares& shares) {
  const bool half = a.recordingSize == kSize25, cube = a.depth >= 16;
  bool marked = true;
  Channels mean = {};
  for (const Share& share : shares) {
    const auto at = size_t((y + share.y) * a.width + x + share.x);
    const bool unchanged = from[at] == a.captureTransparent;
    const int index = unchanged ? a.previous[at] : from[at];
    const Channels colour = cube ? CubeLevels(index) : ChannelsOf(a.palette[size_t(index)]);
    for (size_t c = 0; c < 3; ++c) mean[c] += share.weight * (cube || half ? colour[c] : LevelOf(colour[c]));
    marked = marked && unchanged;
  }
  if (marked) return kCubeFree;
  for (int& sum : mean) sum = !half ? (10 * sum + 45) / 90 : cube ? sum / 4 : LevelOf(sum / 4);
  return CubeOf(mean);
}

// Shrinks whole blocks of `work` and answers where they are then.
Edges Reduce(PlainAnimation& a, const Edges& e) {
  if (a.recordingSize == kSize100) return e;
  const int side = a.recordingSize == kSize25 ? 2 : 3, n = side - 1;
  const Edges out = {e.left / side * n, e.top / side * n, (e.right + side - 1) / side * n,
                     (e.bottom + side - 1) / side * n};
  const std::vector<uint8_t> source = a.work;
  for (int y = out.top; y < out.bottom; ++y) {
    for (int x = out.left; x < out.right; ++x) {
      Shares shares = {{{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}}};
      const int cornerX = 2 * (x % n), cornerY = 2 * (y % n);
      if (side == 3) shares = {{{cornerX, cornerY, 4}, {1, cornerY, 2}, {cornerX, 1, 2}, {1, 1, 1}}};
      a.work[size_t(y * a.width + x)] = MeanOf(a, source, x / n * side, y / n * side, shares);
    }
  }
  return out;
}

int OutputSide(uint16_t recordingSize, int side) {
  return recordingSize == kSize25 ? side / 2 : recordingSize == kSize44 ? side * 2 / 3 : side;
}

// ---- Border, delay -----------------------------------------------------------------------------------------------

void DrawBorder(PlainAnimation& a, int value) {
  const int width = OutputSide(a.recordingSize, a.width), height = OutputSide(a.recordingSize, a.height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      if (x == 0 || y == 0 || x == width - 1 || y == height - 1) a.work[size_t(y * a.width + x)] = uint8_t(value);
    }
  }
}

// In hundredths of a second, cut to 16 bits; more than 2^31 ms count as negative.
uint16_t DelayOf(const PlainAnimation& a, const RecordingOptions& options, bool grab, uint32_t tick) {
  if (!options.recordTimingInfo) return 0;
  const int32_t passed = a.frames > 0 ? int32_t(tick - a.lastTick) : 0;
  return uint16_t((grab ? options.frameDelay : passed) / 10);
}

} // namespace

PlainAnimation PlainBegin(int depth, uint16_t recordingSize, int width, int height,
                          const std::vector<PaletteColour>& palette) {
  const std::vector<uint8_t> black(size_t(width * height));
  PlainAnimation a = {depth, recordingSize, width, height, palette, kCubeFree, kCubeFree, 0, black, black, 0, 0};
  if (depth == 4) a.palette.assign(std::begin(kStandardColours), std::end(kStandardColours));
  if (depth < 16) a.captureTransparent = depth == 8 ? 77 : int(palette.size());
  if (recordingSize == kSize100) {
    a.outputTransparent = a.captureTransparent;
    if (depth <= 2) a.blackIndex = DarkestColour(palette);
  }
  return a;
}

PlainHead PlainHeadOf(const PlainAnimation& a, bool loops, const std::string& ownerName) {
  std::vector<PaletteColour> colours = a.palette;
  const bool cube = a.recordingSize != kSize100 || a.depth >= 16;
  if (cube) colours.clear();
  for (int i = 0; i < kCubeFree && cube; ++i) {
    const Channels levels = CubeLevels(i);
    colours.push_back({uint8_t(51 * levels[0]), uint8_t(51 * levels[1]), uint8_t(51 * levels[2])});
  }
  if (cube && a.depth == 8) colours.push_back(a.palette[77]); // stands where a marked block is seen
  // Room for a transparent index, but on 256 colours.
  const int bits = colours.size() > 16 ? 8 : colours.size() == 16 ? 5 : colours.size() == 4 ? 3 : 2;
  const int width = OutputSide(a.recordingSize, a.width), height = OutputSide(a.recordingSize, a.height);
  return {width, height, bits, colours, loops, "Created by " + ownerName + ", using Framereel v1.23."};
}

std::optional<PlainFrame> PlainTake(PlainAnimation& a, const std::vector<uint8_t>& indices,
                                    const RecordingOptions& options, bool grab, uint32_t tick) {
  const bool first = a.frames == 0;
  bool transparent = options.interframeTransparency;
  Edges e = {0, 0, a.width, a.height};
  if (first) {
    a.previous = a.work = indices;
    transparent &= std::find(indices.begin(), indices.end(), a.captureTransparent) == indices.end();
  } else {
    e = Compare(a, indices, transparent, options.explorerCompatible);
  }
  if (e.right <= e.left) return {};
  const Edges out = Reduce(a, e);
  if (options.overlayBorder) DrawBorder(a, transparent && !first ? a.outputTransparent : a.blackIndex);
  PlainFrame frame = {out.left, out.top, out.right - out.left, out.bottom - out.top, {}, 0, transparent, 0};
  frame.delay = DelayOf(a, options, grab, tick);
  frame.transparentIndex = a.outputTransparent;
  for (int y = out.top; y < out.bottom; ++y) {
    const auto row = a.work.begin() + y * a.width;
    frame.indices.insert(frame.indices.end(), row + out.left, row + out.right);
  }
  ++a.frames;
  a.lastTick = tick;
  return frame;
}

uint8_t PlainCubeIndex(PaletteColour colour) {
  return CubeOf({LevelOf(colour.red), LevelOf(colour.green), LevelOf(colour.blue)});
}

} // namespace framereel
