// Blocks for work in passing, kept between uses so that such work does not allocate each time.
#pragma once

#include <cstddef>

namespace framereel {

enum ScratchSlot {
  kScratchFormat = 0,  // the private copy of a format (text_format.h, text_scan.h)
  kScratchGeneral = 1, // anybody else's
};

// The slot's block, of at least `bytes` bytes; contents have no meaning. It is good until the slot is asked again,
// and never the caller's. A request below the capacity answers the block that stands; any other resizes it to
// exactly the size asked for.
void* ScratchBuffer(ScratchSlot slot, size_t bytes);

} // namespace framereel
