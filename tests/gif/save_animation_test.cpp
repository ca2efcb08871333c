// Saves: the bytes of the file, the stream afterwards, and memory that runs out on the way.
#include "gif/save_animation.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "gif/own_writer.h"
#include "support/gif_reader.h"
#include "toolkit/core/memory.h"
#include "win32/heap_faults.h"

namespace framereel {
namespace {

using Bytes = std::vector<uint8_t>;

class SaveAnimation : public testing::Test {
protected:
  SaveAnimation() : path(testing::TempDir() + "framereel-save-" + std::to_string(::getpid()) + ".gif") {}
  ~SaveAnimation() override { std::remove(path.c_str()); }

  // What a save writes, as the file holds it.
  Bytes Saved(GifWriter& writer) {
    FileRef* ref = FileRefFromPath(path.c_str());
    FileDelete(ref);
    EXPECT_TRUE(FileCreate(ref));
    File* file = FileOpen(ref, FileModeWrite);
    EXPECT_TRUE(file != nullptr && SaveAnimationTo(writer, file));
    EXPECT_TRUE(FileClose(file));
    FreeFileRef(ref);
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  // An animation of one small frame.
  void Record(GifWriter& writer) {
    const uint8_t table[12] = {0, 0, 0, 255, 255, 255}, pixels[] = {0, 1, 1, 0, 0, 1};
    GifWriteHeader(writer, 3, 2, 0, 0, 2, table);
    GifWriteComment(writer, "x");
    GifWriteControl(writer, true, 7, 2);
    GifWriteImage(writer, 0, 0, 3, 2, {pixels, 3, 0});
  }

  std::string path;
};

TEST_F(SaveAnimation, WritesTheTrailerAloneForAnEmptyStream) {
  OwnWriter gif;
  EXPECT_EQ(Saved(gif), Bytes{0x3B});
  EXPECT_EQ(gif.stream->streamSize, 0u);
}

TEST_F(SaveAnimation, GivesTheSameFileTwiceAndLetsARecordingGoOn) {
  OwnWriter gif;
  Record(gif);
  const uint32_t size = gif.stream->streamSize;
  const Bytes first = Saved(gif);
  EXPECT_EQ(gif.stream->streamSize, size);
  EXPECT_EQ(Saved(gif), first);
  EXPECT_EQ(ReadGifFile(path).frames.size(), 1u);

  const uint8_t pixel = 1;
  GifWriteControl(gif, true, 12, 2);
  GifWriteImage(gif, 2, 1, 1, 1, {&pixel, 1, 0});
  const Bytes second = Saved(gif);
  EXPECT_TRUE(std::equal(first.begin(), first.end() - 1, second.begin()));
  const GifPicture read = ReadGif(second);
  ASSERT_EQ(read.error, "");
  ASSERT_EQ(read.frames.size(), 2u);
  EXPECT_EQ(read.frames[1].left, 2);
}

TEST_F(SaveAnimation, IsTheSameWhereverAChunkEnds) {
  OwnWriter whole;
  Record(whole);
  const Bytes expected = Saved(whole);
  for (uint32_t offset = 0; offset <= expected.size(); ++offset) {
    SCOPED_TRACE(offset);
    OwnWriter gif;
    const Bytes filler = SomeBytes(kStreamChunkSize - offset);
    StreamAppend(*gif.stream, static_cast<uint32_t>(filler.size()), filler.data());
    Record(gif);
    const Bytes before = gif.Bytes(), saved = Saved(gif);
    ASSERT_TRUE(std::equal(filler.begin(), filler.end(), saved.begin()));
    ASSERT_EQ(Bytes(saved.begin() + static_cast<ptrdiff_t>(filler.size()), saved.end()), expected);
    ASSERT_EQ(gif.Bytes(), before);
    const uint8_t next = 0x21;
    StreamAppend(*gif.stream, 1, &next);
    ASSERT_EQ(gif.stream->streamSize, before.size() + 1);
    ASSERT_EQ(gif.Bytes().back(), next);
  }
}

TEST_F(SaveAnimation, ReportsAFileThatTakesNoBytes) {
  OwnWriter gif;
  Record(gif);
  const uint32_t size = gif.stream->streamSize;
  std::ofstream(path).put('x');
  FileRef* ref = FileRefFromPath(path.c_str());
  File* readOnly = FileOpen(ref, FileModeRead);
  ASSERT_NE(readOnly, nullptr);
  EXPECT_FALSE(SaveAnimationTo(gif, readOnly));
  EXPECT_EQ(gif.stream->streamSize, size);
  FileClose(readOnly);
  FreeFileRef(ref);
}

// Stream and encoder of an animation that needs a second chunk: list, chunk, tables; list node, chunk.
TEST(GifMemory, EndsTheProgramAtEachAllocationThatFailsAndNeedsFive) {
  const auto record = [](int64_t allocations) {
    SetMemFailureHook([](void*, uint32_t) { std::fputs("exhausted", stderr); }, nullptr);
    FailAllocationsAfter(allocations);
    AnimationStream stream;
    GifWriter gif;
    StreamInit(stream);
    GifWriterInit(gif, &stream);
    const Bytes pixels = SomeBytes(kStreamChunkSize);
    gif.gifCodeSize = 8;
    GifWriteImage(gif, 0, 0, 500, 400, {pixels.data(), 500, 0});
    std::fputs("recorded", stderr);
    ::_exit(1);
  };
  for (int64_t allocations = 0; allocations < 5; ++allocations) {
    EXPECT_EXIT(record(allocations), testing::ExitedWithCode(0), "^exhausted$") << allocations;
  }
  EXPECT_EXIT(record(5), testing::ExitedWithCode(1), "^recorded$");
}

} // namespace
} // namespace framereel
