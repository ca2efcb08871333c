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
  constexpr uint32_t kMostCut = 4, kLeastReach = 12; // pixels
  const uint8_t* const end = image.colours + walk.at + pair.phrase.length;
  uint32_t cut = 0;
  while (cut <= kMostCut && cut < pair.phrase.length && end[-1 - int32_t(cut)] == *end) ++cut;
  if (cut == 0 || cut > kMostCut || cut == pair.phrase.length) return;
  const Phrase behind = LongestPhrase(*walk.trie, image, walk.at + pair.phrase.length - cut, {});
  if (behind.length < pair.behind.length + cut + kLeastReach) return;
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

Phrase Take(Walk& walk, const PhraseImage& image, const Phrase& phrase, bool mayCut) {
  const uint32_t end = walk.at + phrase.length;
  PhrasePair pair = {phrase, {}, false};
  if (end != image.count) {
    pair.behind = LongestPhrase(*walk.trie, image, end, {});
    if (mayCut && !image.freedom) CutForReach(walk, image, pair);
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

// The full dictionary, as against a new one that has been tried from the same place.
struct Comparison {
  Walk kept, best; // with the full one as far as it was tried, and to where it had gained most
  double gain;     // bits that it had saved there
  bool holds;      // as far as the new one reaches it is no worse
};

// How long a full dictionary is tried, and how well.
struct Patience {
  uint32_t codes; // at most
  double loss;    // bits of what was gained that may be lost again
  bool mayCut;
};

// Goes on from `start` with the full dictionary as far as the new one reaches, or patience does.
Comparison KeepDictionary(const Walk& start, const Walk& renewed, uint16_t* codes, const PhraseImage& image,
                          const Patience& patience) {
  const double bitsOfPixel = double(renewed.bits - start.bits) / (renewed.at - start.at);
  Comparison comparison = {start, start, 0, false};
  Walk& kept = comparison.kept;
  kept.next = codes;
  double gain = 0;
  Phrase phrase = LongestPhrase(*kept.trie, image, kept.at, {});
  while (kept.at < renewed.at && kept.bits <= renewed.bits && gain >= comparison.gain - patience.loss &&
         kept.next < codes + patience.codes) {
    phrase = Take(kept, image, phrase, patience.mayCut);
    gain = bitsOfPixel * (kept.at - start.at) - double(kept.bits - start.bits);
    if (gain <= comparison.gain) continue;
    comparison.best = kept;
    comparison.gain = gain;
  }
  comparison.holds = kept.at >= renewed.at && gain >= 0;
  return comparison;
}

// Behind a full dictionary: goes on with it or with a new one, whichever says more with its bits.
void GoOn(PhraseParser& parser, const PhraseImage& image, Walk& walk) {
  constexpr uint32_t kMostUntried = 7;
  constexpr double kLeastGain = 240; // bits
  constexpr Patience kAll = {kStretchMax, 1e9, true}, kLittle = {512, 200, false};
  Walk renewed = walk;
  renewed.trie = parser.other;
  FillDictionary(renewed, image);
  const Patience& patience = parser.untried > 0 ? kLittle : kAll;
  const Comparison comparison = KeepDictionary(walk, renewed, parser.keptCodes, image, patience);
  if (comparison.holds) {
    parser.losses = 0;
  } else if (parser.untried > 0) {
    --parser.untried;
  } else {
    parser.losses = std::min(2 * parser.losses + 1, kMostUntried);
    parser.untried = parser.losses;
  }
  if (!comparison.holds && comparison.gain < kLeastGain) {
    walk = renewed;
    std::swap(parser.trie, parser.other);
    return;
  }
  const Walk& taken = comparison.holds ? comparison.kept : comparison.best;
  uint16_t* const next = walk.next;
  const auto codes = size_t(taken.next - parser.keptCodes);
  std::memcpy(next, parser.keptCodes, codes * sizeof *next);
  walk = taken;
  walk.next = next + codes;
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
  Walk walk = {};
  walk.trie = parser.trie;
  walk.next = phrases.codes;
  FillDictionary(walk, image);
  phrases.codeSize = image.codeSize;
  while (walk.at != image.count && walk.bits <= limit) GoOn(parser, image, walk);
  phrases.count = uint32_t(walk.next - phrases.codes);
  phrases.bits = walk.bits + CodeWidth(image.codeSize, walk.sinceClear);
  return walk.at == image.count && phrases.bits <= limit;
}

void PackPhrases(CodePacker& packer, const PhraseCodes& phrases, const uint8_t* symbols) {
  constexpr uint32_t kPart = 512;
  const uint32_t codeSize = phrases.codeSize, clear = ClearCode(codeSize);
  const auto end = uint16_t(clear + 1);
  uint16_t part[kPart]; // of one width
  uint32_t width = codeSize + 1, sinceClear = 0, held = 0;
  const auto packHeld = [&] {
    PackCodes(packer, part, held, width);
    PackerAppendFullBlocks(packer);
    held = 0;
  };
  for (uint32_t i = 0; i < phrases.count; ++i) {
    const uint16_t code = phrases.codes[i];
    part[held++] = code < clear ? symbols[code] : code;
    sinceClear = code == clear ? 0 : sinceClear + 1;
    const uint32_t nextWidth = CodeWidth(codeSize, sinceClear);
    if (nextWidth == width && held != kPart) continue;
    packHeld();
    width = nextWidth;
  }
  part[held++] = end;
  packHeld();
}

} // namespace framereel
