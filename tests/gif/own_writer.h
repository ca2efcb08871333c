// A GifWriter with its stream for the length of a test.
#pragma once

#include "gif/gif_records.h"
#include "gif/stream_bytes.h"

namespace framereel {

struct OwnWriter : GifWriter {
  OwnWriter() { GifWriterInit(*this, &ownStream); }
  OwnWriter(const OwnWriter&) = delete;
  ~OwnWriter() { GifWriterFree(*this); }
  std::vector<uint8_t> Bytes() const { return StreamBytes(ownStream); }

  OwnStream ownStream;
};

} // namespace framereel
