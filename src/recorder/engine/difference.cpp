// The comparison runs a row at a time: a row of indices is made in the cache, compared with the row of previousFrame,
// and left alone if they are equal. Only when a changed row is found are the unchanged rows above it filled in
// workFrame, and only as far as somebody will read them.
#include "recorder/engine/difference.h"

#include <algorithm>
#include <cstring>

#include "recorder/engine/full_frame.h"
#include "recorder/engine/grab.h"
#include "recorder/engine/index_rows.h"
#include "recorder/engine/work_rows.h"

namespace framereel {
namespace {

// A reduction widens the rectangle to whole blocks of at most 3 pixels.
inline constexpr int32_t kRowsAround = 2;

// One walk over a frame.
struct Walk {
  bool transparent;
  int32_t width, height;
  int32_t minX, maxX, minY, maxY; // of the changed pixels; empty: minX is width and maxX -1
  int32_t filled;                 // rows of workFrame that are as the rules say
  int32_t before;                 // the pixel of workFrame ahead of row `filled`; kNoPixel at the start
};

Walk NewWalk(const RecorderState& recorder, bool transparent) {
  const int32_t width = recorder.frameWidth, height = recorder.frameHeight;
  return {transparent, width, height, width, -1, height, -1, 0, kNoPixel};
}

uint8_t* RowOfFrame(uint8_t* frame, const Walk& walk, int32_t y) {
  return frame + int64_t(y) * walk.width;
}

// Fills the rows of workFrame from walk.filled to `end`, none of which has a changed pixel.
void FillUnchangedRows(RecorderState& recorder, Walk& walk, int32_t end) {
  for (; walk.filled < end; ++walk.filled) {
    const uint8_t* row = RowOfFrame(recorder.previousFrame, walk, walk.filled);
    uint8_t* work = RowOfFrame(recorder.workFrame, walk, walk.filled);
    if (walk.transparent) {
      walk.before = FillUnchanged(row, walk.width, walk.before, recorder.colours.captureTransparent, work);
    } else {
      ::memcpy(work, row, size_t(walk.width));
    }
  }
}

// Unchanged rows ahead of the first changed one that nobody reads need no pixels: with transparency all of them would
// be transparent, so the pixel before the next row is known without them. A repair reads them all.
void SkipUnreadRows(const RecorderState& recorder, Walk& walk, int32_t y) {
  const int32_t start = y - kRowsAround;
  if (walk.maxX >= 0 || walk.filled >= start) return;
  if (recorder.options->explorerCompatible || recorder.grab.format == kFormat8Bit) return;
  walk.filled = start;
  walk.before = recorder.colours.captureTransparent;
}

void Extend(Walk& walk, int32_t left, int32_t right, int32_t y) {
  walk.minX = std::min(walk.minX, left);
  walk.maxX = std::max(walk.maxX, right);
  walk.minY = std::min(walk.minY, y);
  walk.maxY = std::max(walk.maxY, y);
}

// Takes the first `count` pixels of a row that has changed among them.
void TakeChangedRow(RecorderState& recorder, Walk& walk, int32_t y, const uint8_t* indices, int32_t count) {
  uint8_t* previous = RowOfFrame(recorder.previousFrame, walk, y);
  const int32_t left = FirstDifference(indices, previous, count);
  if (left < count) Extend(walk, left, LastDifference(indices, previous, count), y);
  uint8_t* work = RowOfFrame(recorder.workFrame, walk, y);
  if (walk.transparent) {
    walk.before = MergeRow(indices, previous, count, walk.before, recorder.colours.captureTransparent, work);
  } else {
    ::memcpy(work, indices, size_t(count));
  }
  ::memcpy(previous, indices, size_t(count));
}

// Walks the frame from the top, or only those of its rows that are new. Answers walk.height at the end, or a row at
// whose pixel *column a changed pixel has the transparent index; everything ahead of that pixel has been taken.
int32_t WalkRows(RecorderState& recorder, Walk& walk, bool onlyNew, int32_t* column) {
  uint8_t* const indices = recorder.rowIndices;
  const bool mayCollide = walk.transparent && recorder.grab.format == kFormat8Bit;
  const RowSpan rows = onlyNew ? NewRows(recorder) : RowSpan{0, walk.height};
  for (int32_t y = rows.top; y < rows.bottom; ++y) {
    if (onlyNew && !RowIsNew(recorder, y)) continue;
    IndexRow(recorder, y, indices);
    const uint8_t* previous = RowOfFrame(recorder.previousFrame, walk, y);
    if (::memcmp(indices, previous, size_t(walk.width)) == 0) continue;
    SkipUnreadRows(recorder, walk, y);
    FillUnchangedRows(recorder, walk, y);
    if (mayCollide) {
      *column = FirstChangedTo(recorder.colours.captureTransparent, indices, previous, walk.width);
      if (*column < walk.width) {
        TakeChangedRow(recorder, walk, y, indices, *column);
        return y;
      }
    }
    TakeChangedRow(recorder, walk, y, indices, walk.width);
    walk.filled = y + 1;
  }
  if (walk.maxX >= 0) FillUnchangedRows(recorder, walk, std::min(walk.height, walk.maxY + 1 + kRowsAround));
  return walk.height;
}

// Takes the lowest index that no pixel of the grabbed frame has as the transparent one. False if all are in use.
bool FindFreeIndex(RecorderState& recorder) {
  bool used[256] = {};
  for (int32_t y = 0; y < recorder.frameHeight; ++y) {
    const uint8_t* row = GrabRow(recorder, y);
    for (int32_t x = 0; x < recorder.frameWidth; ++x) used[row[x]] = true;
  }
  const bool* free = std::find(used, used + 256, false);
  if (free == used + 256) return false;
  recorder.colours.captureTransparent = uint8_t(free - used);
  if (!IsReduced(recorder.recordingSize)) {
    recorder.colours.outputTransparent = recorder.colours.captureTransparent;
  }
  return true;
}

// The pixels that a walk has taken up to row y, column x have their new values in previousFrame; a second walk would
// see them unchanged and lose them. Those that it wrote with their colour get the old transparent index there, which
// they cannot have, and so differ again.
void RepairPrevious(RecorderState& recorder, int32_t y, int32_t x, uint8_t oldTransparent) {
  const int64_t end = int64_t(y) * recorder.frameWidth + x;
  for (int64_t i = 0; i < end; ++i) {
    if (recorder.workFrame[i] != oldTransparent) recorder.previousFrame[i] = oldTransparent;
  }
}

} // namespace

bool NextFrameConvert(RecorderState& recorder, bool transparent) {
  Walk walk = NewWalk(recorder, transparent);
  bool gaveUp = false;
  int32_t column = 0;
  const int32_t stopped = WalkRows(recorder, walk, true, &column);
  if (stopped < walk.height) {
    const uint8_t oldTransparent = recorder.colours.captureTransparent;
    gaveUp = !FindFreeIndex(recorder);
    if (gaveUp) {
      walk.transparent = false;
    } else {
      RepairPrevious(recorder, stopped, column, oldTransparent);
    }
    walk.filled = 0;
    walk.before = kNoPixel;
    WalkRows(recorder, walk, false, &column); // to the end: no pixel has the new index
  }
  if (recorder.options->explorerCompatible) walk.minX = walk.minY = 0;
  SetDirtyRect(recorder, walk.minX, walk.minY, walk.maxX + 1, walk.maxY + 1);
  return gaveUp;
}

} // namespace framereel
