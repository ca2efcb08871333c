// The chunked store and its saves: where chunks begin and end, and that nothing is lost or moved there.
#include "gif/animation_stream.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "gif/own_writer.h"
#include "gif/save_animation.h"
#include "support/temporary_folder.h"

namespace framereel {
namespace {

using Bytes = std::vector<uint8_t>;

constexpr uint32_t kChunk = kStreamChunkSize;

class AnimationStreamTest : public testing::Test {
protected:
  // Whether a save into the file took all bytes.
  bool Save(FileMode mode) {
    FileRef* ref = FileRefFromPath(path.c_str());
    File* file = FileOpen(ref, mode);
    const bool saved = file && SaveAnimationTo(gif, file);
    FileClose(file);
    FreeFileRef(ref);
    return saved;
  }

  // The stream holds these bytes, by its own account as well, and a save writes them and a trailer.
  void ExpectHolds(const Bytes& bytes) {
    const uint32_t current = stream.currentChunk ? stream.currentUsed : 0;
    EXPECT_LT(current, kChunk);
    EXPECT_EQ(stream.streamSize, bytes.size());
    EXPECT_EQ(stream.streamSize, ListCount(stream.fullChunks) * kChunk + current);
    EXPECT_TRUE(StreamBytes(stream) == bytes);
    WriteWholeFile(path, "");
    EXPECT_TRUE(Save(FileModeWrite));
    EXPECT_TRUE(ReadWholeFile(path) == std::string(bytes.begin(), bytes.end()) + ';');
    EXPECT_TRUE(StreamBytes(stream) == bytes);
    EXPECT_EQ(stream.streamSize, bytes.size());
  }

  void Append(Bytes& bytes, const Bytes& more) {
    StreamAppend(stream, uint32_t(more.size()), more.data());
    bytes.insert(bytes.end(), more.begin(), more.end());
    ExpectHolds(bytes);
  }

  const TemporaryFolder folder;
  const std::string path = folder / "saved.gif";
  OwnWriter gif;
  AnimationStream& stream = gif.ownStream;
};

TEST_F(AnimationStreamTest, SplitsAppendsAtTheEndsOfChunksAndMovesNothing) {
  for (const uint32_t length : {0u, 5u, kChunk - 2, kChunk - 1, kChunk, kChunk + 1, 3 * kChunk + 7}) {
    SCOPED_TRACE(length);
    const uint8_t* chunk = stream.currentChunk;
    Bytes bytes;
    Append(bytes, SomeBytes(length));
    StreamAppend(stream, 0, nullptr);
    EXPECT_NE(stream.currentChunk, nullptr);
    Append(bytes, SomeBytes(2 * kChunk + 10, 2));
    EXPECT_EQ(FromListValue<uint8_t>(ListFirst(stream.fullChunks)), chunk);
    StreamClear(stream);
  }
}

TEST_F(AnimationStreamTest, KeepsExactlyTheFirstBytesWhenTruncated) {
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
    Bytes bytes;
    Append(bytes, SomeBytes(before));
    StreamTruncate(stream, after);
    bytes.resize(std::min(before, after));
    ExpectHolds(bytes);
    Append(bytes, SomeBytes(2 * kChunk + 10, 2));
    StreamClear(stream);
  }
}

TEST_F(AnimationStreamTest, KeepsItsCurrentChunkWhenCleared) {
  for (const uint32_t length : {5u, kChunk, 3 * kChunk + 5}) {
    SCOPED_TRACE(length);
    StreamAppend(stream, length, SomeBytes(length).data());
    const uint8_t* chunk = stream.currentChunk;
    stream.savedSize = stream.streamSize;
    StreamClear(stream);
    EXPECT_EQ(stream.savedSize, 0u);
    EXPECT_EQ(stream.currentChunk, chunk);
    ExpectHolds({});
  }
}

TEST_F(AnimationStreamTest, StaysAsItIsWhenAFileTakesNoBytes) {
  const Bytes bytes = SomeBytes(5);
  StreamAppend(stream, 5, bytes.data());
  WriteWholeFile(path, "x");
  EXPECT_FALSE(Save(FileModeRead));
  ExpectHolds(bytes);
}

} // namespace
} // namespace framereel
