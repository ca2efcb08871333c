// Rows of pixels to rows of indices, a function for each layout.
#include "recorder/engine/index_rows.h"

#include <cstring>

#include "recorder/engine/cube_index.h"
#include "recorder/engine/grab.h"

namespace framereel {
namespace {

// `bits` a pixel, the leftmost pixel in the top bits; the first `lead` pixels are skipped.
void UnpackRow(const uint8_t* row, int bits, int32_t lead, int32_t count, uint8_t* indices) {
  const int perByte = 8 / bits;
  const uint32_t mask = (1U << bits) - 1;
  for (int32_t i = 0; i < count; ++i) {
    const int32_t place = lead + i;
    const int shift = 8 - bits * (place % perByte + 1);
    indices[i] = uint8_t(row[place / perByte] >> shift & mask);
  }
}

} // namespace

void IndexRow(RecorderState& recorder, int32_t y, uint8_t* indices) {
  const GrabPipeline& grab = recorder.grab;
  const uint8_t* row = GrabRow(recorder, y);
  const auto count = size_t(recorder.frameWidth);
  switch (grab.format) {
  case kFormatTrueColour:
    BgrToCube(row, count, indices);
    break;
  case kFormat4Bit:
    for (size_t i = 0; i < count; ++i) indices[i] = row[i] & 15;
    break;
  case kFormat2Bit:
    UnpackRow(row, 2, grab.lead, recorder.frameWidth, indices);
    break;
  case kFormat1Bit:
    UnpackRow(row, 1, 0, recorder.frameWidth, indices);
    break;
  default:
    ::memcpy(indices, row, count);
    break;
  }
}

} // namespace framereel
