// The chunked store under random operations beside a plain vector: nothing is lost or moved where chunks begin and end.
#include "gif/animation_stream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

#include "gif/stream_bytes.h"
#include "support/dice.h"
#include "support/plain_gif.h"

namespace framereel {
namespace {

constexpr int kChunk = int(kStreamChunkSize);

void ExpectHolds(const AnimationStream& stream, const Bytes& bytes) {
  ASSERT_TRUE(StreamBytes(stream) == bytes);
  ASSERT_EQ(stream.streamSize, bytes.size());
  ASSERT_EQ(stream.streamSize, ListCount(stream.fullChunks) * kChunk + (stream.currentChunk ? stream.currentUsed : 0));
  ASSERT_LT(stream.currentChunk ? stream.currentUsed : 0, kStreamChunkSize);
}

TEST(AnimationStream, HoldsWhatIsAppendedAndNotCutOrOverwrittenWhateverItsLength) {
  Dice dice(1);
  OwnStream stream;
  Bytes bytes;
  // Often at the ends of chunks.
  const auto length = [&dice](int chunks) { return std::max(0, kChunk * dice.Below(chunks) + dice.Below(5) - 2); };
  for (int step = 0; step < 200; ++step) {
    const int operation = dice.Below(8);
    const uint8_t* const chunk = stream.currentChunk;
    if (operation < 3) {
      Bytes more(size_t(dice.OneIn(2) ? length(4) : kChunk - int(bytes.size()) % kChunk));
      std::iota(more.begin(), more.end(), uint8_t(step));
      StreamAppend(stream, uint32_t(more.size()), more.data());
      bytes.insert(bytes.end(), more.begin(), more.end());
      ASSERT_TRUE(!chunk || chunk == stream.currentChunk ||
                  ListFind(stream.fullChunks, ToListValue(chunk), ListSameValue));
    } else if (operation < 6) {
      const auto kept = uint32_t(dice.OneIn(2) ? length(6) : int(bytes.size()) - length(2));
      StreamTruncate(stream, kept);
      bytes.resize(std::min<size_t>(kept, bytes.size()));
    } else if (dice.OneIn(2)) {
      const size_t count = std::min(bytes.size(), size_t(1 + dice.Below(3)));
      const auto at = uint32_t(std::clamp(length(4), 0, int(bytes.size() - count)));
      std::iota(bytes.begin() + at, bytes.begin() + at + ptrdiff_t(count), uint8_t(step));
      StreamOverwrite(stream, at, uint32_t(count), bytes.data() + at);
    } else if (dice.OneIn(3)) {
      stream.savedSize = stream.streamSize;
      StreamClear(stream);
      bytes.clear();
      ASSERT_EQ(stream.savedSize, 0u);
      ASSERT_EQ(stream.currentChunk, chunk);
    }
    ASSERT_NO_FATAL_FAILURE(ExpectHolds(stream, bytes)) << "step " << step;
  }
}

} // namespace
} // namespace framereel
