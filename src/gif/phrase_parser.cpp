// Start reading at ParsePhrases. phrase_trie.h finds phrases; here it is decided which are taken.
#include "gif/phrase_parser.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "core/memory.h"

namespace framereel {
namespace {

constexpr uint32_t kMaxWidth = 12;
// Codes of a dictionary from one clear code to the next, and as many as take no more bits.
constexpr uint32_t kStretchMax = kPhraseCodes + 8;

// One way through the image, as far as it has come.
struct Walk {
  PhraseTrie* trie;
  uint32_t at;         // the next pixel
  uint32_t sinceClear; // codes
  uint64_t bits;
  uint16_t* next; // where the next code goes
};

uint32_t ClearCode(uint32_t codeSize) {
  return 1u << codeSize;
}

// The width of a code that has `sinceClear` others between itself and the last clear code.
inline uint32_t CodeWidth(uint32_t codeSize, uint32_t sinceClear) {
  return std::min<uint32_t>(uint32_t(std::bit_width(ClearCode(codeSize) + 1 + sinceClear)), kMaxWidth);
}

void PutOut(Walk& walk, const PhraseImage& image, const Phrase& phrase) {
  *walk.next++ = uint16_t(phrase.node);
  walk.bits += CodeWidth(image.codeSize, walk.sinceClear++);
  walk.at += phrase.length;
}

// Two phrases, one behind the other.
struct PhrasePair {
  Phrase phrase, behind;
  bool cut; // the first could be longer
};

// While a dictionary grows a phrase is cut only where it has just entered a run. The run then stays in one piece, and
// rows that have it in common look alike. What is cut short teaches nothing, so it has to pay well.
void CutAheadOfRun(const Walk& walk, const PhraseImage& image, PhrasePair& pair) {
  constexpr uint32_t kMostCut = 4, kLeastGain = 12;
  const uint8_t* const end = image.colours + walk.at + pair.phrase.length;
  uint32_t cut = 0;
  while (cut <= kMostCut && cut < pair.phrase.length && end[-1 - int32_t(cut)] == *end) ++cut;
  if (cut == 0 || cut > kMostCut || cut == pair.phrase.length) return;
  const Phrase behind = LongestPhrase(*walk.trie, image, walk.at + pair.phrase.length - cut, {});
  if (behind.length < pair.behind.length + cut + kLeastGain) return;
  pair = {BeginningOf(*walk.trie, image, walk.at, pair.phrase.length - cut), behind, true};
}

// A full dictionary learns nothing, so any gain counts.
void CutForReach(const Walk& walk, const PhraseImage& image, PhrasePair& pair) {
  constexpr uint32_t kMostCut = 2;
  const uint32_t length = pair.phrase.length;
  uint32_t best = 0;
  for (uint32_t cut = 1; cut <= kMostCut && cut < length; ++cut) {
    const Phrase behind = LongestPhrase(*walk.trie, image, walk.at + length - cut, {});
    if (behind.length <= pair.behind.length + cut - best) continue;
    pair.behind = behind;
    best = cut;
  }
  if (best != 0) pair.phrase = BeginningOf(*walk.trie, image, walk.at, length - best);
}

// Both put out a phrase and answer the one behind it, or none at the image's end.

Phrase TakeAndLearn(Walk& walk, const PhraseImage& image, const Phrase& phrase) {
  PhraseTrie& trie = *walk.trie;
  const uint32_t end = walk.at + phrase.length;
  PhrasePair pair = {phrase, {}, false};
  if (end != image.count) {
    pair.behind = LongestPhrase(trie, image, end, phrase);
    if (!image.freedom) CutAheadOfRun(walk, image, pair);
  }
  PutOut(walk, image, pair.phrase);
  if (pair.cut || pair.behind.length == 0) {
    ++trie.next;
  } else {
    const uint32_t node = pair.behind.node == trie.next ? phrase.node : pair.behind.node;
    TrieLearn(trie, image, phrase, trie.first[node]);
  }
  return pair.behind;
}

Phrase Take(Walk& walk, const PhraseImage& image, const Phrase& phrase) {
  const uint32_t end = walk.at + phrase.length;
  PhrasePair pair = {phrase, {}, false};
  if (end != image.count) {
    pair.behind = LongestPhrase(*walk.trie, image, end, {});
    if (!image.freedom) CutForReach(walk, image, pair);
  }
  PutOut(walk, image, pair.phrase);
  return pair.behind;
}

// Puts out a clear code and goes on until the dictionary is full or the image ends.
void FillDictionary(Walk& walk, const PhraseImage& image) {
  *walk.next++ = uint16_t(ClearCode(image.codeSize));
  walk.bits += walk.at == 0 ? image.codeSize + 1 : CodeWidth(image.codeSize, walk.sinceClear);
  walk.sinceClear = 0;
  TrieForget(*walk.trie, image);
  Phrase phrase = LongestPhrase(*walk.trie, image, walk.at, {});
  while (phrase.length != 0 && walk.trie->next < kPhraseCodes) phrase = TakeAndLearn(walk, image, phrase);
}

// Goes on with the full dictionary to pixel `end` or a little further. False if that takes more than `limit` bits.
bool KeepDictionary(Walk& walk, const PhraseImage& image, uint32_t end, uint64_t limit) {
  Phrase phrase = LongestPhrase(*walk.trie, image, walk.at, {});
  while (walk.at < end && walk.bits <= limit) phrase = Take(walk, image, phrase);
  return walk.at >= end && walk.bits <= limit;
}

// Behind a full dictionary: goes on with it or with a new one, as far as a new one reaches, whichever takes fewer bits
// a pixel.
void GoOn(PhraseParser& parser, const PhraseImage& image, Walk& walk) {
  constexpr uint32_t kMostUntried = 7;
  Walk renewed = walk;
  renewed.trie = parser.other;
  FillDictionary(renewed, image);
  if (parser.untried > 0) {
    --parser.untried;
  } else {
    Walk kept = walk;
    kept.next = parser.keptCodes;
    // What goes beyond the end is the kept one's gain: as many bits as the renewed one would take for it.
    const uint64_t pixels = renewed.at - walk.at, bits = renewed.bits - walk.bits;
    const bool there = KeepDictionary(kept, image, renewed.at, renewed.bits + kMaxWidth);
    if (there && (kept.bits - walk.bits) * pixels <= bits * (kept.at - walk.at)) {
      const auto codes = size_t(kept.next - parser.keptCodes);
      std::memcpy(walk.next, parser.keptCodes, codes * sizeof *walk.next);
      kept.next = walk.next + codes;
      walk = kept;
      parser.losses = 0;
      return;
    }
    parser.losses = std::min(2 * parser.losses + 1, kMostUntried);
    parser.untried = parser.losses;
  }
  walk = renewed;
  std::swap(parser.trie, parser.other);
}

} // namespace

void PhraseParserInit(PhraseParser& parser) {
  parser = {};
  parser.trie = static_cast<PhraseTrie*>(MemAlloc(sizeof(PhraseTrie)));
  parser.other = static_cast<PhraseTrie*>(MemAlloc(sizeof(PhraseTrie)));
  parser.keptCodes = static_cast<uint16_t*>(MemAlloc(kStretchMax * sizeof(uint16_t)));
}

void PhraseParserFree(PhraseParser& parser) {
  MemFree(parser.trie);
  MemFree(parser.other);
  MemFree(parser.keptCodes);
  parser = {};
}

bool ParsePhrases(PhraseParser& parser, const PhraseImage& image, uint64_t limit, PhraseCodes& phrases) {
  Walk walk = {parser.trie, 0, 0, 0, phrases.codes};
  FillDictionary(walk, image);
  phrases.codeSize = image.codeSize;
  while (walk.at != image.count && walk.bits <= limit) GoOn(parser, image, walk);
  phrases.count = uint32_t(walk.next - phrases.codes);
  phrases.bits = walk.bits + CodeWidth(image.codeSize, walk.sinceClear);
  return walk.at == image.count && phrases.bits <= limit;
}

void PackPhrases(CodePacker& packer, const PhraseCodes& phrases, const uint8_t* symbols) {
  const uint32_t codeSize = phrases.codeSize, clear = ClearCode(codeSize);
  const auto end = uint16_t(clear + 1);
  uint32_t width = codeSize + 1, sinceClear = 0;
  for (uint32_t i = 0; i < phrases.count; ++i) {
    const uint16_t code = phrases.codes[i];
    const uint16_t coded = code < clear ? symbols[code] : code;
    PackCodes(packer, &coded, 1, width);
    sinceClear = code == clear ? 0 : sinceClear + 1;
    width = CodeWidth(codeSize, sinceClear);
    if (i % kPhraseCodes == 0) PackerAppendFullBlocks(packer);
  }
  PackCodes(packer, &end, 1, width);
}

} // namespace framereel
