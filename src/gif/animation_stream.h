// AnimationStream: the bytes of a GIF file, held in memory while they are produced, without the file's last byte.
//
// It is the only form in which an animation exists. gif_records.h says what is appended, save_animation.h how the
// bytes reach a file.
#pragma once

#include <cstdint>

#include "core/file_refs.h"
#include "core/list.h"

namespace framereel {

// Bytes in a chunk. A long animation grows by whole chunks, so that nothing in the stream ever moves.
inline constexpr uint32_t kStreamChunkSize = 200000;

// A list of full chunks with one behind them that is being filled. `streamSize` is kStreamChunkSize for each full
// chunk, plus `currentUsed` while there is a current chunk. All fields but `savedSize` belong to the operations below.
struct AnimationStream {
  uint32_t streamSize;   // bytes in the stream
  uint32_t savedSize;    // streamSize at the last save; the document commands set it. StreamClear: 0
  uint8_t* currentChunk; // owned; null between an append that fills a chunk exactly and the next append
  uint32_t currentUsed;  // bytes of currentChunk in use
  List* fullChunks;      // owned, and so are the chunks; oldest first
};

// Makes an empty stream with its first chunk. The record's earlier contents do not matter.
void StreamInit(AnimationStream& stream);
// Releases all that the stream holds; StreamInit makes it good again.
void StreamFree(AnimationStream& stream);

// Adds `length` bytes at the end. A length of 0 needs no bytes; it only makes sure of a current chunk. Running out of
// memory ends in FatalExit; the counters are good for 4 GiB - 1 in all, and the caller keeps below that.
void StreamAppend(AnimationStream& stream, uint32_t length, const void* bytes);

// Empties the stream and frees all chunks but the current one.
void StreamClear(AnimationStream& stream);

// Cuts the stream back to its first `newLength` bytes; the next append goes on right behind them. A length that is not
// below streamSize changes nothing.
void StreamTruncate(AnimationStream& stream, uint32_t newLength);

// Puts `length` bytes, at least one, in the place of those from `offset` on. What lies beyond the stream's end is the
// caller's bug. It costs a step for each chunk behind the place.
void StreamOverwrite(AnimationStream& stream, uint32_t offset, uint32_t length, const void* bytes);

// Writes all bytes in order, one write a chunk. True when every byte went out; stops at the first write that fails.
// The stream does not change.
bool StreamWrite(AnimationStream& stream, File* file);

} // namespace framereel
