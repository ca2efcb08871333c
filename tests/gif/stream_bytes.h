// A stream and a writer for the length of a test, and what a stream holds as one vector.
#pragma once

#include <cstdint>
#include <vector>

#include "gif/gif_records.h"

namespace framereel {

struct OwnStream : AnimationStream {
  OwnStream() { StreamInit(*this); }
  OwnStream(const OwnStream&) = delete;
  ~OwnStream() { StreamFree(*this); }
};

struct OwnWriter : GifWriter {
  OwnStream ownStream;

  OwnWriter() { GifWriterInit(*this, &ownStream); }
  ~OwnWriter() { GifWriterFree(*this); }
};

inline std::vector<uint8_t> StreamBytes(const AnimationStream& stream) {
  std::vector<uint8_t> bytes;
  for (ListValue chunk = ListFirst(stream.fullChunks); chunk != 0; chunk = ListNext(stream.fullChunks)) {
    const auto* from = FromListValue<uint8_t>(chunk);
    bytes.insert(bytes.end(), from, from + kStreamChunkSize);
  }
  if (stream.currentChunk) {
    bytes.insert(bytes.end(), stream.currentChunk, stream.currentChunk + stream.currentUsed);
  }
  return bytes;
}

// The file that a save would write now.
inline std::vector<uint8_t> FileBytes(const AnimationStream& stream) {
  std::vector<uint8_t> bytes = StreamBytes(stream);
  bytes.push_back(0x3B); // the trailer
  return bytes;
}

} // namespace framereel
