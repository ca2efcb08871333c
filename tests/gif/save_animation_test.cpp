// Saves: the bytes of the file, and the stream afterwards.
#include "gif/save_animation.h"

#include <gtest/gtest.h>

#include "gif/own_writer.h"
#include "support/temporary_folder.h"

namespace framereel {
namespace {

using Bytes = std::vector<uint8_t>;

// Whether a save into a file that stands open in the mode took all bytes.
bool SavedTo(const std::string& path, GifWriter& gif, FileMode mode) {
  FileRef* ref = FileRefFromPath(path.c_str());
  File* file = FileOpen(ref, mode);
  const bool saved = file && SaveAnimationTo(gif, file);
  FileClose(file);
  FreeFileRef(ref);
  return saved;
}

// An animation of one small frame, which goes on.
void Record(GifWriter& gif) {
  const uint8_t table[12] = {0, 0, 0, 255, 255, 255}, pixels[] = {0, 1, 1, 0, 0, 1};
  GifWriteHeader(gif, 3, 2, 0, 0, 2, table);
  GifWriteImage(gif, 0, 0, 3, 2, {pixels, 3, 0});
}

TEST(SaveAnimation, WritesTheStreamAndATrailerWhereverAChunkEndsAndLetsTheRecordingGoOn) {
  const TemporaryFolder folder;
  const std::string path = folder / "saved.gif";
  OwnWriter alone;
  Record(alone);
  const auto size = uint32_t(alone.Bytes().size());
  for (uint32_t before = kStreamChunkSize - size - 1; before <= kStreamChunkSize; ++before) {
    SCOPED_TRACE(before);
    OwnWriter gif;
    StreamAppend(*gif.stream, before, SomeBytes(before).data());
    Record(gif);
    for (int saves = 0; saves < 2; ++saves) {
      const Bytes held = gif.Bytes();
      WriteWholeFile(path, "");
      EXPECT_TRUE(SavedTo(path, gif, FileModeWrite));
      const std::string file = ReadWholeFile(path);
      Bytes expected = held;
      expected.push_back(0x3B);
      ASSERT_TRUE(Bytes(file.begin(), file.end()) == expected);
      ASSERT_TRUE(gif.Bytes() == held);
      const uint8_t next = 0x21;
      StreamAppend(*gif.stream, 1, &next);
      ASSERT_EQ(gif.stream->streamSize, held.size() + 1);
    }
  }
}

TEST(SaveAnimation, ReportsAFileThatTakesNoBytes) {
  const TemporaryFolder folder;
  WriteWholeFile(folder / "read-only.gif", "x");
  OwnWriter gif;
  Record(gif);
  const Bytes held = gif.Bytes();
  EXPECT_FALSE(SavedTo(folder / "read-only.gif", gif, FileModeRead));
  EXPECT_EQ(gif.Bytes(), held);
}

} // namespace
} // namespace framereel
