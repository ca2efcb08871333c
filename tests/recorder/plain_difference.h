// The engine's rules once more, pixel by pixel and with no thought of speed: what the engine must equal.
//
// It is handed each frame as the colour indices that stand on the screen and answers what the file must hold. Nothing
// of the engine's own arithmetic is used here.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "recorder/engine/recorder_state.h"
#include "support/plain_gif.h"
#include "win32/pixels/surface.h"

namespace framereel {

// Everything of an animation that lasts from frame to frame.
struct PlainAnimation {
  int depth;                          // of the screen
  uint16_t recordingSize;             // of the table
  int width, height;                  // of the frame, at full size
  std::vector<PaletteColour> palette; // of the screen, the standard one on 16 colours; empty on true colour
  int captureTransparent, outputTransparent, blackIndex;
  std::vector<uint8_t> previous, work; // width x height
  uint32_t frames, lastTick;
};

PlainAnimation PlainBegin(int depth, uint16_t recordingSize, int width, int height,
                          const std::vector<PaletteColour>& palette);
// What stands ahead of its frames.
PlainHead PlainHeadOf(const PlainAnimation& animation, bool loops, const std::string& ownerName);
// The frame as it must stand in the file; nothing if none must. The options are those of this moment, `tick` the clock
// in ms.
std::optional<PlainFrame> PlainTake(PlainAnimation& animation, const std::vector<uint8_t>& indices,
                                    const RecordingOptions& options, bool grab, uint32_t tick);

// The index of a true colour: each channel's nearest level of six.
uint8_t PlainCubeIndex(PaletteColour colour);

} // namespace framereel
