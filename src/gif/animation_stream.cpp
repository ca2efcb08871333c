// The chunked store behind animation_stream.h.
#include "gif/animation_stream.h"

#include <cstring>

#include "core/memory.h"

namespace framereel {
namespace {

void FreeChunk(ListValue chunk) {
  MemFree(reinterpret_cast<void*>(chunk));
}

// Takes the newest full chunk off the list to be the current one again. There must be one.
void ReopenNewestChunk(AnimationStream& stream) {
  ListLast(stream.fullChunks);
  stream.currentChunk = reinterpret_cast<uint8_t*>(ListRemove(stream.fullChunks));
  stream.currentUsed = kStreamChunkSize;
}

} // namespace

void StreamInit(AnimationStream& stream) {
  stream = {};
  stream.fullChunks = ListNew();
  StreamAppend(stream, 0, nullptr);
}

void StreamFree(AnimationStream& stream) {
  StreamClear(stream);
  MemFree(stream.currentChunk);
  ListDelete(stream.fullChunks);
  stream = {};
}

void StreamAppend(AnimationStream& stream, uint32_t length, const void* bytes) {
  const auto* rest = static_cast<const uint8_t*>(bytes);
  do {
    if (!stream.currentChunk) {
      stream.currentUsed = 0;
      stream.currentChunk = static_cast<uint8_t*>(MemAlloc(kStreamChunkSize));
    }
    if (length == 0 || !stream.currentChunk) return;
    const uint32_t room = kStreamChunkSize - stream.currentUsed;
    const uint32_t part = length < room ? length : room;
    std::memcpy(stream.currentChunk + stream.currentUsed, rest, part);
    stream.currentUsed += part;
    stream.streamSize += part;
    rest += part;
    length -= part;
    if (stream.currentUsed == kStreamChunkSize) {
      ListAppend(stream.fullChunks, reinterpret_cast<ListValue>(stream.currentChunk));
      stream.currentChunk = nullptr;
    }
  } while (length > 0);
}

void StreamClear(AnimationStream& stream) {
  stream.streamSize = 0;
  stream.savedSize = 0;
  ListDrain(stream.fullChunks, FreeChunk);
  stream.currentUsed = 0;
}

void StreamTruncate(AnimationStream& stream, uint32_t newLength) {
  if (newLength >= stream.streamSize) return;
  uint32_t drop = stream.streamSize - newLength;
  if (!stream.currentChunk) ReopenNewestChunk(stream);
  while (drop > stream.currentUsed) {
    drop -= stream.currentUsed;
    stream.streamSize -= stream.currentUsed;
    MemFree(stream.currentChunk);
    ReopenNewestChunk(stream);
  }
  stream.currentUsed -= drop;
  stream.streamSize -= drop;
}

// From the last byte on: what is overwritten lies near the stream's end.
void StreamOverwrite(AnimationStream& stream, uint32_t offset, uint32_t length, const void* bytes) {
  const auto* from = static_cast<const uint8_t*>(bytes);
  const ListNode* behind = nullptr; // the full chunk that `chunk` is; null: the current one
  uint8_t* chunk = stream.currentChunk;
  uint32_t begin = stream.streamSize - (chunk ? stream.currentUsed : 0);
  for (uint32_t at = offset + length; at-- > offset;) {
    while (!chunk || at < begin) {
      behind = behind ? behind->previous : stream.fullChunks->last;
      chunk = FromListValue<uint8_t>(behind->value);
      begin -= kStreamChunkSize;
    }
    chunk[at - begin] = from[at - offset];
  }
}

bool StreamWrite(AnimationStream& stream, File* file) {
  ListValue chunk = ListFirst(stream.fullChunks);
  for (; chunk != 0; chunk = ListNext(stream.fullChunks)) {
    if (!FileWrite(file, kStreamChunkSize, reinterpret_cast<const void*>(chunk))) return false;
  }
  if (!stream.currentChunk || stream.currentUsed == 0) return true;
  return FileWrite(file, stream.currentUsed, stream.currentChunk);
}

} // namespace framereel
