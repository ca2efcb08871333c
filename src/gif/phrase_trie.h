// PhraseTrie: LZW's dictionary with its strings, and the longest of them that stand at a place of an image. Part of the
// phrase parser.
//
// Strings are nodes of a trie in a hash. Those of one colour have a table by their length besides: most of a screen is
// runs, and so a run is one step.
#pragma once

#include <cstdint>

namespace framereel {

inline constexpr uint32_t kPhraseCodes = 4096; // codes have at most 12 bits
inline constexpr uint32_t kPhraseSymbols = 256;
inline constexpr uint32_t kPhraseSlotBits = 14;

// Which symbols a pixel may have; of two that serve alike the first named is taken.
enum class Freedom : uint8_t { kColour, kColourOrMarker, kMarkerOrColour };

// An image's pixels in reading order.
struct PhraseImage {
  const uint8_t* colours; // a symbol each, below 2^codeSize
  const Freedom* freedom; // of each pixel; null: all have their colour
  uint32_t count;         // above 0
  uint8_t codeSize;       // LZW's minimum code size, 2 to 8
  uint8_t marker;         // a symbol below 2^codeSize that is no pixel's colour; unused without freedom
};

// Pixels of one symbol.
struct PhraseRun {
  uint16_t length;
  uint16_t node;
};

// A node is the code of its string.
struct PhraseTrie {
  uint32_t next;                         // the code that the decoder gives next; kPhraseCodes: the dictionary is full
  uint32_t slots[1u << kPhraseSlotBits]; // node, symbol and the node of both together; 0: none
  uint8_t first[kPhraseCodes];           // the first symbol of each string
  PhraseRun runs[kPhraseSymbols];        // the longest known run of each symbol
  uint16_t runNode[kPhraseSymbols][kPhraseCodes]; // [symbol][length - 1]; touched as far as runs have grown
};

// A string of the dictionary that stands at some place of the image.
struct Phrase {
  uint32_t length; // pixels; 0: none
  uint16_t node;
  uint16_t place; // where the search for a longer one ended, for TrieLearn
};

// Forgets all strings but the single symbols.
void TrieForget(PhraseTrie& trie, const PhraseImage& image);

// Learns the string of `phrase` with `symbol` behind it, if it is new, as the string of code `next`.
void TrieLearn(PhraseTrie& trie, const PhraseImage& image, const Phrase& phrase, uint32_t symbol);

// The longest phrase at pixel `at`; with freedom, as far as a bounded search finds it. `ahead` is the phrase that ends
// there and is about to be lengthened by the first symbol of this one, as code `next`; this one may be that string
// already. A length of 0: nothing is about to be learned.
Phrase LongestPhrase(PhraseTrie& trie, const PhraseImage& image, uint32_t at, const Phrase& ahead);

// The first `length` pixels of a phrase that stands at pixel `at`. For an image without freedom.
Phrase BeginningOf(PhraseTrie& trie, const PhraseImage& image, uint32_t at, uint32_t length);

} // namespace framereel
