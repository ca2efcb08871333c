// The memory of the LZW encoder, shared by lzw_encoder.cpp and lzw_probe_rule.cpp.
#pragma once

#include <cstddef>
#include <cstdint>

#include "gif/code_packer.h"

namespace framereel {

inline constexpr uint32_t kCodeLimit = 4096; // codes have at most 12 bits
inline constexpr uint32_t kColours = 256;
inline constexpr uint32_t kPairTags = 16; // what 16 bits leave beside a code

// Whether the probe rule can make a difference in the present dictionary; see lzw_probe_rule.h.
enum class KeyZero : uint8_t { kNotAsked, kHarmless, kDisplaced };

inline constexpr int32_t kProbeSlots = 5003; // a prime

// The first two strings that are one pixel longer than another.
struct LzwChildren {
  uint16_t code[2]; // 0: there is none
  uint8_t pixel[2]; // the last one
  bool hasOthers;   // there are more than these
};

// A dictionary lives until it is full or the image ends. It is spread over tables by the kind of string, because the
// kinds are asked for differently, and all that is asked for often stays small enough for the processor's nearest
// caches. Each kind has its way of telling what was left by an earlier dictionary, so that forgetting costs little.
struct LzwTables {
  // Entry e is the string codes[e] with pixels[e] behind it. codes[e] went out when e was learned: the codes are packed
  // from here. The place behind the last entry takes a code that no entry goes with.
  uint16_t codes[kCodeLimit + 1];
  uint8_t pixels[kCodeLimit + 1];

  // Strings of one colour c: RunCodes(c)[n - 1] is the code of n times c, for n from 1 to runLongest[c].
  uint16_t runCode[kColours * kCodeLimit];
  uint16_t runLongest[kColours];

  // Strings of two colours a, b that differ: pairCode[a * kColours + b] is the code times kPairTags, plus pairTag if it
  // is of the present dictionary. In noise almost every string ends here.
  uint16_t pairCode[kColours * kColours];
  uint32_t pairTag; // from 1 on; 0 stands in places that were never used

  // All others, by the string that they are a pixel longer than: the first two that were learned ...
  LzwChildren children[kCodeLimit];
  // ... and their siblings: otherChild[pixel * kCodeLimit + prefix] is a code if that entry says the same.
  uint16_t otherChild[kColours * kCodeLimit];

  CodePacker packer;

  // See lzw_probe_rule.h. probeKeys holds the entries below probedEntries while key 0 is displaced.
  KeyZero keyZero;
  uint32_t probedEntries;
  int32_t probeKeys[kProbeSlots];
};

inline uint16_t* RunCodes(LzwTables& tables, size_t colour) {
  return tables.runCode + colour * kCodeLimit;
}

} // namespace framereel
