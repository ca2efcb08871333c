// Streams for tests: one that is released at its end, and what a stream holds as one vector.
#pragma once

#include <cstdint>
#include <vector>

#include "gif/animation_stream.h"

namespace framereel {

// A stream for the length of a test.
struct OwnStream : AnimationStream {
  OwnStream() { StreamInit(*this); }
  OwnStream(const OwnStream&) = delete;
  ~OwnStream() { StreamFree(*this); }
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

// Noise, the same in every test.
inline std::vector<uint8_t> SomeBytes(uint32_t count, uint32_t seed = 1) {
  std::vector<uint8_t> bytes(count);
  for (uint8_t& byte : bytes) {
    seed = seed * 1664525u + 1013904223u;
    byte = static_cast<uint8_t>(seed >> 24);
  }
  return bytes;
}

} // namespace framereel
