// Each output pixel lands on a place that has been read already, so the reductions need no second buffer.
#include "recorder/engine/reduce.h"

#include "recorder/engine/colour_tables.h"
#include "recorder/engine/full_frame.h"

namespace framereel {
namespace {

// A row of the frame on its way through a reduction.
struct SourceRow {
  const uint8_t* work;
  const uint8_t* previous;
};

SourceRow RowAt(const RecorderState& recorder, int32_t y) {
  const int64_t start = int64_t(y) * recorder.frameWidth;
  return {recorder.workFrame + start, recorder.previousFrame + start};
}

// The true colour of a pixel, as an index of the frame.
inline uint8_t Shown(const SourceRow& row, int32_t x, uint8_t transparent) {
  return row.work[x] == transparent ? row.previous[x] : row.work[x];
}

// ---- 2:1 ---------------------------------------------------------------------------------------------------------

inline bool PairIs(const SourceRow& row, int32_t x, uint8_t value) {
  return row.work[x] == value && row.work[x + 1] == value;
}

// The four true indices of a block.
struct Block4 {
  uint8_t index[4];
};

inline Block4 BlockAt(const SourceRow& a, const SourceRow& b, int32_t x, uint8_t transparent) {
  return {
      {Shown(a, x, transparent), Shown(a, x + 1, transparent), Shown(b, x, transparent), Shown(b, x + 1, transparent)}};
}

// Levels are averaged and cut.
struct AverageCube {
  uint8_t operator()(const Block4& block) const {
    uint32_t sum = 0;
    for (const uint8_t index : block.index) sum += CubeLanes[index];
    return CubeIndex(sum >> 18, sum >> 10 & 15, sum >> 2 & 15);
  }
};

// Colours are averaged and then rounded to levels.
struct AveragePalette {
  const uint8_t* palette;

  uint8_t operator()(const Block4& block) const {
    uint32_t sums[3] = {};
    for (const uint8_t index : block.index) {
      for (int channel = 0; channel < 3; ++channel) sums[channel] += palette[3 * index + channel];
    }
    return CubeIndex(CubeLevel8[sums[0] >> 2], CubeLevel8[sums[1] >> 2], CubeLevel8[sums[2] >> 2]);
  }
};

// `out` is in output pixels, inside the frame.
template <typename Average> void ReduceHalf(RecorderState& recorder, const Rect& out, const Average& average) {
  const uint8_t transparent = recorder.colours.captureTransparent;
  for (int32_t y = out.top; y < out.bottom; ++y) {
    const SourceRow a = RowAt(recorder, 2 * y), b = RowAt(recorder, 2 * y + 1);
    uint8_t* target = recorder.workFrame + int64_t(y) * recorder.frameWidth;
    for (int32_t x = out.left; x < out.right; ++x) {
      const bool nothing = PairIs(a, 2 * x, transparent) && PairIs(b, 2 * x, transparent);
      target[x] = nothing ? kCubeTransparent : average(BlockAt(a, b, 2 * x, transparent));
    }
  }
}

// ---- 3:2 ---------------------------------------------------------------------------------------------------------

// Nine source pixels, row after row: whether each is transparent, and the levels of its true colour.
struct Block9 {
  bool transparent[9];
  uint32_t lanes[9];
};

inline Block9 BlockAt(const SourceRow rows[3], int32_t x, uint8_t transparent, const uint32_t* lanes) {
  Block9 block;
  for (int i = 0; i < 9; ++i) {
    const SourceRow& row = rows[i / 3];
    block.transparent[i] = row.work[x + i % 3] == transparent;
    block.lanes[i] = lanes[Shown(row, x + i % 3, transparent)];
  }
  return block;
}

// The output pixel at a corner of the block: the corner weighs 4, its two neighbours 2 each, the centre 1.
inline uint8_t CornerOf(const Block9& block, int corner, int beside, int below) {
  constexpr int kCentre = 4;
  if (block.transparent[corner] && block.transparent[beside] && block.transparent[below] &&
      block.transparent[kCentre]) {
    return kCubeTransparent;
  }
  const uint32_t sum = 4 * block.lanes[corner] + 2 * (block.lanes[beside] + block.lanes[below]) + block.lanes[kCentre];
  return CubeIndex(CubeLevelSum9[sum >> 16], CubeLevelSum9[sum >> 8 & 255], CubeLevelSum9[sum & 255]);
}

bool AllTransparent(const SourceRow rows[3], int32_t x, uint8_t transparent) {
  for (int i = 0; i < 3; ++i) {
    if (!PairIs(rows[i], x, transparent) || rows[i].work[x + 2] != transparent) return false;
  }
  return true;
}

// `blocks` counts blocks of 3 by 3 pixels, inside the frame. `lanes` gives the levels of each index of the frame.
void ReduceThird(RecorderState& recorder, const Rect& blocks, const uint32_t* lanes) {
  const uint8_t transparent = recorder.colours.captureTransparent;
  for (int32_t y = blocks.top; y < blocks.bottom; ++y) {
    const SourceRow rows[3] = {RowAt(recorder, 3 * y), RowAt(recorder, 3 * y + 1), RowAt(recorder, 3 * y + 2)};
    uint8_t* upper = recorder.workFrame + int64_t(2 * y) * recorder.frameWidth;
    uint8_t* lower = upper + recorder.frameWidth;
    for (int32_t x = blocks.left; x < blocks.right; ++x) {
      uint8_t corners[4] = {kCubeTransparent, kCubeTransparent, kCubeTransparent, kCubeTransparent};
      if (!AllTransparent(rows, 3 * x, transparent)) {
        const Block9 block = BlockAt(rows, 3 * x, transparent, lanes);
        corners[0] = CornerOf(block, 0, 1, 3);
        corners[1] = CornerOf(block, 2, 1, 5);
        corners[2] = CornerOf(block, 6, 7, 3);
        corners[3] = CornerOf(block, 8, 7, 5);
      }
      upper[2 * x] = corners[0];
      upper[2 * x + 1] = corners[1];
      lower[2 * x] = corners[2];
      lower[2 * x + 1] = corners[3];
    }
  }
}

// The dirty rectangle in whole blocks of the frame.
Rect DirtyBlocks(const RecorderState& recorder, int32_t side) {
  const auto down = [side](int32_t edge) { return int16_t(edge / side); };
  const Rect& dirty = recorder.dirty;
  return {down(dirty.top), down(dirty.left), down(dirty.bottom + side - 1), down(dirty.right + side - 1)};
}

} // namespace

void ReduceFrame(RecorderState& recorder) {
  const RecordingScale& scale = ScaleOf(recorder.recordingSize);
  if (scale.denominator == 1 || NothingIsDirty(recorder)) return;
  const bool cube = recorder.screenFormat == kFormatTrueColour;
  const Rect blocks = DirtyBlocks(recorder, scale.denominator);
  if (scale.denominator == 3) {
    ReduceThird(recorder, blocks, cube ? CubeLanes.data() : recorder.colours.paletteLanes);
  } else if (cube) {
    ReduceHalf(recorder, blocks, AverageCube{});
  } else {
    ReduceHalf(recorder, blocks, AveragePalette{recorder.colours.screenPalette});
  }
  const int32_t n = scale.numerator;
  SetDirtyRect(recorder, blocks.left * n, blocks.top * n, blocks.right * n, blocks.bottom * n);
}

} // namespace framereel
