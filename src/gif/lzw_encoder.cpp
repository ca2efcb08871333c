// The matching half of the LZW encoder: pixels into codes. code_packer.h turns codes into bytes.
//
// What makes it fast:
// - A code goes out exactly when an entry is learned, so the list of entries is the list of codes. Widths follow from
// an
//   entry's number, and codes are packed many at a time.
// - Most of a screen is runs of one colour. A string that begins with a run takes the longest known string of that
//   colour from a table: a step for each code instead of one for each pixel.
// - Everywhere else a pixel costs one load, mostly from a small table, and there are no collisions.
//
// The bytes are those of a plain hash encoder, which tests/support/plain_gif.cpp is; see lzw_probe_rule.h for the
// catch.
#include "gif/lzw_encoder.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

#include "core/memory.h"
#include "gif/code_packer.h"
#include "gif/lzw_probe_rule.h"
#include "gif/lzw_tables.h"
#include "gif/pixel_reader.h"

namespace framereel {
namespace {

constexpr uint32_t kMaxWidth = 12;

// Where the encoder stands in an image.
struct Position {
  PixelReader reader;
  uint32_t nextEntry; // to be learned next; kCodeLimit: the dictionary is full
  uint32_t prefix;    // code of the string that is being matched
};

uint32_t ClearCode(uint32_t initBits) {
  return 1u << (initBits - 1);
}
uint32_t EndCode(uint32_t initBits) {
  return ClearCode(initBits) + 1;
}
uint32_t FirstEntry(uint32_t initBits) {
  return ClearCode(initBits) + 2;
}

// Packs codes[FirstEntry] to codes[last]. The code that goes out ahead of entry e has the fewest bits that hold e - 1.
void PackEntries(LzwTables& tables, uint32_t initBits, uint32_t last) {
  uint32_t entry = FirstEntry(initBits);
  for (uint32_t width = initBits; entry <= last; ++width) {
    const uint32_t end = std::min(last, 1u << width) + 1;
    PackCodes(tables.packer, tables.codes + entry, end - entry, width);
    entry = end;
  }
}

// Has no pairs of the present dictionary be known. A small one takes its own out; a large one outdates them all at
// once.
void ForgetPairs(LzwTables& tables, uint32_t first, uint32_t nextEntry) {
  constexpr uint32_t kFewEntries = 256;
  if (nextEntry - first <= kFewEntries) {
    for (uint32_t entry = first; entry < nextEntry; ++entry) {
      const uint32_t prefix = tables.codes[entry];
      if (prefix < kColours) tables.pairCode[prefix * kColours + tables.pixels[entry]] = 0;
    }
  } else if (++tables.pairTag == kPairTags) {
    std::memset(tables.pairCode, 0, sizeof tables.pairCode); // the tags go round: old ones would be taken for new ones
    tables.pairTag = 1;
  }
}

// Empties the dictionary of the entries below `nextEntry`.
void Forget(LzwTables& tables, uint32_t initBits, uint32_t nextEntry) {
  const uint32_t first = FirstEntry(initBits);
  std::memset(tables.children + first, 0, (nextEntry - first) * sizeof(LzwChildren));
  std::fill(std::begin(tables.runLongest), std::end(tables.runLongest), uint16_t{1});
  tables.keyZero = KeyZero::kNotAsked;
  ForgetPairs(tables, first, nextEntry);
}

// The dictionary is full: puts out its codes and a clear code. Answers the first entry of the next one.
[[gnu::noinline]] uint32_t StartOver(LzwTables& tables, uint32_t initBits) {
  PackEntries(tables, initBits, kCodeLimit);
  const auto clear = uint16_t(ClearCode(initBits));
  PackCodes(tables.packer, &clear, 1, kMaxWidth);
  PackerAppendFullBlocks(tables.packer);
  Forget(tables, initBits, kCodeLimit);
  return FirstEntry(initBits);
}

// Puts out at.prefix and makes at.nextEntry the string with `pixel` behind it. The caller has made the entry known
// already, also when it is kCodeLimit, a number that no entry has: then everything is forgotten at once. The pixel
// begins a new string.
inline void PutOut(LzwTables& tables, uint32_t initBits, uint32_t pixel, Position& at) {
  tables.codes[at.nextEntry] = uint16_t(at.prefix);
  tables.pixels[at.nextEntry] = uint8_t(pixel);
  at.prefix = pixel;
  if (++at.nextEntry > kCodeLimit) at.nextEntry = StartOver(tables, initBits);
}

// Matches `run` pixels of the colour at.prefix that begin a string. All strings of one colour are learned here, each a
// pixel longer than the one before. Leaves the last string in at.prefix; it may go on with another colour.
inline void MatchRun(LzwTables& tables, uint32_t initBits, uint32_t run, Position& at) {
  const uint32_t colour = at.prefix;
  uint16_t* const codes = RunCodes(tables, colour);
  if (colour == 0) LzwApplyProbeRule(tables, FirstEntry(initBits), at.nextEntry);
  while (run > tables.runLongest[colour]) {
    const uint32_t longest = tables.runLongest[colour]++;
    codes[longest] = uint16_t(at.nextEntry);
    at.prefix = codes[longest - 1];
    PutOut(tables, initBits, colour, at);
    run -= longest;
    if (colour == 0) LzwApplyProbeRule(tables, FirstEntry(initBits), at.nextEntry);
  }
  at.prefix = codes[run - 1];
}

// Matches strings that begin with two colours, which differ, until a pair is known, a run begins or the row ends. True
// if a pair was known; its code is then in at.prefix. Entry kCodeLimit, which is none, may be learned as the last one.
inline bool MatchPairs(LzwTables& tables, uint32_t initBits, Position& at) {
  const uint8_t* next = at.reader.next;
  const ptrdiff_t room = std::min<ptrdiff_t>(at.reader.rowEnd - next, kCodeLimit + 1 - at.nextEntry);
  const uint8_t* const end = next + room;
  const uint32_t tag = tables.pairTag;
  size_t colour = at.prefix, entry = at.nextEntry;
  bool known = false;
  for (; next != end; ++entry) {
    const size_t pixel = *next;
    if (pixel == colour) break;
    ++next;
    uint16_t& pair = tables.pairCode[colour * kColours + pixel];
    const uint32_t found = pair;
    known = found % kPairTags == tag;
    if (known) {
      colour = found / kPairTags;
      break;
    }
    pair = uint16_t(entry * kPairTags + tag);
    tables.codes[entry] = uint16_t(colour);
    tables.pixels[entry] = uint8_t(pixel);
    colour = pixel;
  }
  at.reader.next = next;
  at.prefix = uint32_t(colour);
  at.nextEntry = uint32_t(entry);
  if (entry > kCodeLimit) at.nextEntry = StartOver(tables, initBits);
  return known;
}

// Lengthens the string at.prefix, which is an entry, by `pixel`. False if the longer string was new.
inline bool MatchChild(LzwTables& tables, uint32_t initBits, uint32_t pixel, Position& at) {
  LzwChildren& children = tables.children[at.prefix];
  if (children.pixel[0] == pixel && children.code[0] != 0) {
    at.prefix = children.code[0];
    return true;
  }
  if (children.pixel[1] == pixel && children.code[1] != 0) {
    at.prefix = children.code[1];
    return true;
  }
  if (children.code[1] == 0) {
    const int place = children.code[0] != 0;
    children.code[place] = uint16_t(at.nextEntry);
    children.pixel[place] = uint8_t(pixel);
    PutOut(tables, initBits, pixel, at);
    return false;
  }
  // What an earlier dictionary left is another string by now, or a number that is not given yet. Below the present
  // first entry nothing can match, since an entry's number is above its prefix.
  uint16_t& other = tables.otherChild[pixel * kCodeLimit + at.prefix];
  if (children.hasOthers && other < at.nextEntry && tables.codes[other] == at.prefix && tables.pixels[other] == pixel) {
    at.prefix = other;
    return true;
  }
  children.hasOthers = true;
  other = uint16_t(at.nextEntry);
  PutOut(tables, initBits, pixel, at);
  return false;
}

// Matches the whole image. What is left to put out is codes[FirstEntry] to codes[nextEntry - 1] and the prefix.
Position MatchImage(LzwTables& tables, uint32_t initBits, PixelReader reader) {
  const uint32_t firstPixel = *reader.next++;
  Position at = {reader, FirstEntry(initBits), firstPixel};
  while (HasPixel(at.reader)) {
    // A string begins: at.prefix is its first pixel.
    const uint32_t colour = at.prefix;
    if (*at.reader.next != colour) {
      if (!MatchPairs(tables, initBits, at)) continue;
    } else {
      MatchRun(tables, initBits, 1 + ReadRun(at.reader, uint8_t(colour)), at);
      if (at.prefix == colour) continue;
    }
    while (HasPixel(at.reader) && MatchChild(tables, initBits, *at.reader.next++, at)) {
    }
  }
  return at;
}

} // namespace

void LzwInit(LzwEncoder& lzw) {
  lzw.tables = static_cast<LzwTables*>(MemAlloc(sizeof(LzwTables)));
  LzwTables& tables = *lzw.tables;
  std::memset(&tables, 0, sizeof tables);
  tables.codes[0] = 0xFFFF; // no code; what otherChild's zeros lead to
  for (uint32_t colour = 0; colour < kColours; ++colour) {
    *RunCodes(tables, colour) = uint16_t(colour);
  }
  Forget(tables, 3, kCodeLimit);
}

void LzwFree(LzwEncoder& lzw) {
  MemFree(lzw.tables);
  lzw.tables = nullptr;
}

void LzwEncodeImage(LzwEncoder& lzw, AnimationStream& stream, PixelCursor cursor, uint16_t initBits, uint32_t count) {
  if (count == 0 || initBits < 3 || initBits > 9 || cursor.rowWidth <= 0) return;
  LzwTables& tables = *lzw.tables;
  const auto clear = uint16_t(ClearCode(initBits)), end = uint16_t(EndCode(initBits));
  PackerBegin(tables.packer, &stream);
  PackCodes(tables.packer, &clear, 1, initBits);

  const Position at = MatchImage(tables, initBits, ReadPixels(cursor, count));
  tables.codes[at.nextEntry] = uint16_t(at.prefix);
  PackEntries(tables, initBits, at.nextEntry);
  PackCodes(tables.packer, &end, 1, std::min<uint32_t>(std::bit_width(at.nextEntry), kMaxWidth));
  PackerEnd(tables.packer);
  Forget(tables, initBits, at.nextEntry);
}

} // namespace framereel
