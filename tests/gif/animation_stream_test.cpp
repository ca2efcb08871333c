// The chunked store: where chunks begin and end, and that nothing is lost or moved there.
#include "gif/animation_stream.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "gif/stream_bytes.h"

namespace framereel {
namespace {

constexpr uint32_t kChunk = kStreamChunkSize;

// The stream holds these bytes, by its own account as well.
void ExpectHolds(const AnimationStream& stream, const std::vector<uint8_t>& bytes) {
  const uint32_t current = stream.currentChunk ? stream.currentUsed : 0;
  EXPECT_LT(current, kChunk);
  EXPECT_EQ(stream.streamSize, bytes.size());
  EXPECT_EQ(stream.streamSize, ListCount(stream.fullChunks) * kChunk + current);
  EXPECT_EQ(StreamBytes(stream), bytes);
}

void ExpectGoesOn(AnimationStream& stream, std::vector<uint8_t> bytes) {
  const std::vector<uint8_t> more = SomeBytes(2 * kChunk + 10, 2);
  StreamAppend(stream, uint32_t(more.size()), more.data());
  bytes.insert(bytes.end(), more.begin(), more.end());
  ExpectHolds(stream, bytes);
}

TEST(AnimationStream, SplitsAppendsAtTheEndsOfChunksAndMovesNothing) {
  for (const uint32_t length : {0u, 5u, kChunk - 1, kChunk, kChunk + 1, 3 * kChunk + 7}) {
    SCOPED_TRACE(length);
    OwnStream stream;
    const std::vector<uint8_t> bytes = SomeBytes(length);
    const uint8_t* chunk = stream.currentChunk;
    StreamAppend(stream, length, bytes.data());
    ExpectHolds(stream, bytes);
    StreamAppend(stream, 0, nullptr);
    EXPECT_NE(stream.currentChunk, nullptr);
    ExpectGoesOn(stream, bytes);
    EXPECT_EQ(FromListValue<uint8_t>(ListFirst(stream.fullChunks)), chunk);
  }
}

TEST(AnimationStream, KeepsExactlyTheFirstBytesWhenTruncated) {
  const uint32_t lengths[][2] = {
      {5, 0},
      {5, 6},
      {kChunk, kChunk - 1},
      {kChunk, 0},
      {kChunk + 1, kChunk},
      {2 * kChunk, kChunk},
      {2 * kChunk, 2 * kChunk},
      {3 * kChunk + 9, 3},
      {3 * kChunk + 9, 3 * kChunk},
  };
  for (const auto& [before, after] : lengths) {
    SCOPED_TRACE(testing::Message() << before << " to " << after);
    OwnStream stream;
    std::vector<uint8_t> bytes = SomeBytes(before);
    StreamAppend(stream, before, bytes.data());
    StreamTruncate(stream, after);
    bytes.resize(std::min(before, after));
    ExpectHolds(stream, bytes);
    ExpectGoesOn(stream, bytes);
  }
}

TEST(AnimationStream, KeepsItsCurrentChunkWhenCleared) {
  for (const uint32_t length : {5u, kChunk, 3 * kChunk + 5}) {
    SCOPED_TRACE(length);
    OwnStream stream;
    StreamAppend(stream, length, SomeBytes(length).data());
    const uint8_t* chunk = stream.currentChunk;
    stream.savedSize = stream.streamSize;
    StreamClear(stream);
    EXPECT_EQ(stream.savedSize, 0u);
    EXPECT_EQ(stream.currentChunk, chunk);
    ExpectHolds(stream, {});
    ExpectGoesOn(stream, {});
  }
}

} // namespace
} // namespace framereel
