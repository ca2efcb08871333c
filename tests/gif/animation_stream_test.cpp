// The chunked store: where chunks begin and end, and that nothing is lost or moved there.
#include "gif/animation_stream.h"

#include <gtest/gtest.h>

#include "gif/stream_bytes.h"

namespace framereel {
namespace {

void Append(AnimationStream& stream, const std::vector<uint8_t>& bytes) {
  StreamAppend(stream, static_cast<uint32_t>(bytes.size()), bytes.data());
}

std::vector<uint8_t> FirstOf(const std::vector<uint8_t>& bytes, size_t count) {
  return {bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(count)};
}

// The record's own account of its chunks.
void ExpectSound(const AnimationStream& stream) {
  const uint32_t current = stream.currentChunk ? stream.currentUsed : 0;
  EXPECT_EQ(stream.streamSize, ListCount(stream.fullChunks) * kStreamChunkSize + current);
  EXPECT_LT(current, kStreamChunkSize);
}

TEST(AnimationStream, BeginsEmptyWithAChunkReady) {
  OwnStream stream;
  EXPECT_EQ(stream.streamSize, 0u);
  EXPECT_EQ(stream.savedSize, 0u);
  EXPECT_NE(stream.currentChunk, nullptr);
  EXPECT_EQ(ListCount(stream.fullChunks), 0);
}

TEST(AnimationStream, SplitsAnAppendAtTheEndOfAChunk) {
  OwnStream stream;
  const std::vector<uint8_t> bytes = SomeBytes(kStreamChunkSize - 100 + 768);
  StreamAppend(stream, kStreamChunkSize - 100, bytes.data());
  StreamAppend(stream, 768, bytes.data() + kStreamChunkSize - 100);
  EXPECT_EQ(ListCount(stream.fullChunks), 1);
  EXPECT_EQ(stream.currentUsed, 668u);
  EXPECT_EQ(StreamBytes(stream), bytes);
  ExpectSound(stream);
}

TEST(AnimationStream, SpreadsOneLargeAppendOverManyChunks) {
  OwnStream stream;
  const std::vector<uint8_t> bytes = SomeBytes(3 * kStreamChunkSize + 7);
  Append(stream, bytes);
  EXPECT_EQ(ListCount(stream.fullChunks), 3);
  EXPECT_EQ(stream.currentUsed, 7u);
  EXPECT_EQ(StreamBytes(stream), bytes);
}

TEST(AnimationStream, HasNoCurrentChunkAfterAnAppendThatFillsItExactly) {
  OwnStream stream;
  Append(stream, SomeBytes(kStreamChunkSize));
  EXPECT_EQ(stream.currentChunk, nullptr);
  ExpectSound(stream);
  StreamAppend(stream, 0, nullptr);
  EXPECT_NE(stream.currentChunk, nullptr);
  ExpectSound(stream);
  const uint8_t next = 0x77;
  StreamAppend(stream, 1, &next);
  EXPECT_EQ(stream.currentUsed, 1u);
  EXPECT_EQ(StreamBytes(stream).back(), next);
}

TEST(AnimationStream, NeverMovesBytesThatItHolds) {
  OwnStream stream;
  Append(stream, SomeBytes(10));
  const uint8_t* chunk = stream.currentChunk;
  Append(stream, SomeBytes(2 * kStreamChunkSize));
  EXPECT_EQ(FromListValue<uint8_t>(ListFirst(stream.fullChunks)), chunk);
}

TEST(AnimationStream, KeepsItsCurrentChunkWhenCleared) {
  OwnStream stream;
  Append(stream, SomeBytes(3 * kStreamChunkSize + 5));
  const uint8_t* chunk = stream.currentChunk;
  stream.savedSize = stream.streamSize;
  StreamClear(stream);
  EXPECT_EQ(stream.streamSize, 0u);
  EXPECT_EQ(stream.savedSize, 0u);
  EXPECT_EQ(stream.currentChunk, chunk);
  const std::vector<uint8_t> bytes = SomeBytes(20);
  Append(stream, bytes);
  EXPECT_EQ(StreamBytes(stream), bytes);
  ExpectSound(stream);
}

TEST(AnimationStream, CanBeClearedWithoutACurrentChunk) {
  OwnStream stream;
  Append(stream, SomeBytes(kStreamChunkSize));
  StreamClear(stream);
  ExpectSound(stream);
  Append(stream, {1, 2, 3});
  EXPECT_EQ(StreamBytes(stream), (std::vector<uint8_t>{1, 2, 3}));
}

TEST(AnimationStream, KeepsExactlyTheFirstBytesWhenTruncated) {
  constexpr uint32_t kChunk = kStreamChunkSize;
  const uint32_t lengths[][2] = {
      {5, 0},
      {5, 5},
      {kChunk, kChunk - 1},
      {kChunk, 0},
      {kChunk + 1, kChunk},
      {kChunk + 1, 3},
      {2 * kChunk, kChunk},
      {2 * kChunk, kChunk - 1},
      {3 * kChunk + 9, 0},
      {3 * kChunk + 9, 3 * kChunk},
      {3 * kChunk, 1},
      {2 * kChunk, 2 * kChunk},
  };
  for (const auto& [before, after] : lengths) {
    SCOPED_TRACE(testing::Message() << before << " to " << after);
    OwnStream stream;
    const std::vector<uint8_t> bytes = SomeBytes(before);
    Append(stream, bytes);
    StreamTruncate(stream, after);
    EXPECT_EQ(stream.streamSize, after);
    std::vector<uint8_t> expected = FirstOf(bytes, after);
    EXPECT_EQ(StreamBytes(stream), expected);
    Append(stream, {0xEE, 0xDD});
    expected.insert(expected.end(), {0xEE, 0xDD});
    EXPECT_EQ(StreamBytes(stream), expected);
    ExpectSound(stream);
  }
}

TEST(AnimationStream, IsNotLengthenedByATruncation) {
  OwnStream stream;
  Append(stream, SomeBytes(9));
  StreamTruncate(stream, 10);
  EXPECT_EQ(StreamBytes(stream), SomeBytes(9));
}

TEST(AnimationStream, KeepsAnEmptyChunkForTheNextAppend) {
  OwnStream stream;
  Append(stream, SomeBytes(kStreamChunkSize + 1));
  StreamTruncate(stream, kStreamChunkSize);
  EXPECT_NE(stream.currentChunk, nullptr);
  EXPECT_EQ(stream.currentUsed, 0u);
  EXPECT_EQ(ListCount(stream.fullChunks), 1);
}

} // namespace
} // namespace framereel
