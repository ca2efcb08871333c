// The search of images with freedom goes many ways at once: at each pixel all strings are known that may stand there.
#include "gif/phrase_trie.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "gif/pixel_reader.h"

namespace framereel {
namespace {

constexpr uint32_t kSlotMask = (1u << kPhraseSlotBits) - 1;
constexpr uint32_t kCodeBits = 12, kCodeMask = kPhraseCodes - 1;

constexpr uint16_t kNoPlaceYet = UINT16_MAX;

// A run of markers of this length is taken without a look at what else may stand there.
constexpr uint32_t kLongRun = 32;

// Where the search for a symbol begins: this and the node, which have different bits for the nodes of one symbol.
constexpr auto kScatter = [] {
  std::array<uint16_t, kPhraseSymbols> scatter = {};
  for (uint32_t symbol = 0; symbol < kPhraseSymbols; ++symbol) {
    scatter[symbol] = uint16_t((symbol + 1) * 0x9E3779B1u >> (32 - kPhraseSlotBits));
  }
  return scatter;
}();

// Where the search for the string of `node` with `symbol` behind it begins.
inline uint32_t HomeOf(uint32_t node, uint32_t symbol) {
  return node ^ kScatter[symbol];
}

// The slot of that string from `place` on, or a free one for it. At most a quarter of all are taken.
inline uint32_t FindSlot(const PhraseTrie& trie, uint32_t node, uint32_t symbol, uint32_t place) {
  const uint32_t key = node | symbol << kCodeBits;
  while (trie.slots[place] != 0 && trie.slots[place] >> kCodeBits != key) place = (place + 1) & kSlotMask;
  return place;
}

// 0 if there is none.
inline uint32_t Child(const PhraseTrie& trie, uint32_t node, uint32_t symbol) {
  return trie.slots[FindSlot(trie, node, symbol, HomeOf(node, symbol))] & kCodeMask;
}

// Strings that stand at one place, the one that is liked best first.
struct Candidates {
  static constexpr uint32_t kMost = 4;
  uint32_t nodes[kMost];
  uint32_t count;

  void Add(uint32_t node) {
    if (node != 0 && count < kMost) nodes[count++] = node;
  }
  bool Has(uint32_t node) const { return std::find(nodes, nodes + count, node) != nodes + count; }
};

// The symbols that a pixel may have, in order; with one of them both are the same.
struct Symbols {
  uint32_t first, second;
};

inline Symbols SymbolsAt(const PhraseImage& image, uint32_t at) {
  const uint32_t colour = image.colours[at], marker = image.marker;
  switch (image.freedom[at]) {
  case Freedom::kColourOrMarker:
    return {colour, marker};
  case Freedom::kMarkerOrColour:
    return {marker, colour};
  case Freedom::kColour:
    break;
  }
  return {colour, colour};
}

inline Candidates Lengthen(PhraseTrie& trie, const Candidates& from, const Symbols& symbols) {
  Candidates longer;
  longer.count = 0;
  for (uint32_t i = 0; i < from.count; ++i) {
    longer.Add(Child(trie, from.nodes[i], symbols.first));
    if (symbols.second != symbols.first) longer.Add(Child(trie, from.nodes[i], symbols.second));
  }
  return longer;
}

// The length of the run of pixels that are best marked, counted up to `most`.
uint32_t MarkedRun(const PhraseImage& image, uint32_t at, uint32_t most) {
  const auto* from = reinterpret_cast<const uint8_t*>(image.freedom + at);
  const uint32_t count = std::min(most, image.count - at);
  return uint32_t(EqualBytes(from, from + count, uint8_t(Freedom::kMarkerOrColour)));
}

} // namespace

void TrieForget(PhraseTrie& trie, const PhraseImage& image) {
  const uint32_t symbols = 1u << image.codeSize;
  std::memset(trie.slots, 0, sizeof trie.slots);
  for (uint32_t symbol = 0; symbol < symbols; ++symbol) {
    trie.first[symbol] = uint8_t(symbol);
    trie.runs[symbol] = {1, uint16_t(symbol)};
    trie.runNode[symbol][0] = uint16_t(symbol);
  }
  trie.next = symbols + 2; // behind the clear code and the end code
}

void TrieLearn(PhraseTrie& trie, const PhraseImage& image, const Phrase& phrase, uint32_t symbol) {
  PhraseRun& longest = trie.runs[symbol];
  const bool run = longest.node == phrase.node;
  if (run) {
    trie.runNode[symbol][longest.length] = uint16_t(trie.next);
    longest = {uint16_t(longest.length + 1), uint16_t(trie.next)};
  }
  if (!run || image.freedom) {
    const uint32_t place = phrase.place != kNoPlaceYet ? phrase.place : HomeOf(phrase.node, symbol);
    uint32_t& slot = trie.slots[FindSlot(trie, phrase.node, symbol, place)];
    if (slot == 0) slot = (phrase.node | symbol << kCodeBits) << kCodeBits | trie.next;
  }
  trie.first[trie.next] = trie.first[phrase.node];
  ++trie.next;
}

namespace {

// The longest phrase without freedom that does not go beyond pixel `end`.
inline Phrase LongestOfColours(PhraseTrie& trie, const PhraseImage& image, uint32_t at, uint32_t end) {
  const uint32_t colour = image.colours[at];
  const PhraseRun& longest = trie.runs[colour];
  const uint8_t* const from = image.colours + at;
  uint32_t node = colour, next = at + 1;
  if (next != end && from[1] == colour) {
    const auto run = uint32_t(EqualBytes(from, from + std::min(end - at, longest.length + 1u), uint8_t(colour)));
    if (run > longest.length) return {longest.length, longest.node, kNoPlaceYet};
    node = trie.runNode[colour][run - 1];
    next = at + run;
  }
  for (; next != end; ++next) {
    const uint32_t symbol = image.colours[next];
    const uint32_t place = FindSlot(trie, node, symbol, HomeOf(node, symbol));
    if (trie.slots[place] == 0) return {next - at, uint16_t(node), uint16_t(place)};
    node = trie.slots[place] & kCodeMask;
  }
  return {next - at, uint16_t(node), kNoPlaceYet};
}

// The phrases that may stand at pixel `at` with one symbol, or with a run of the marker, and how long they are.
uint32_t BeginCandidates(PhraseTrie& trie, const PhraseImage& image, uint32_t at, Candidates& candidates) {
  const Symbols symbols = SymbolsAt(image, at);
  const uint32_t longest = trie.runs[image.marker].length;
  if (longest < kLongRun || symbols.first != image.marker) {
    candidates = {{symbols.first, symbols.second}, symbols.first == symbols.second ? 1u : 2u};
    return 1;
  }
  const uint32_t run = MarkedRun(image, at, longest);
  candidates = {{trie.runNode[image.marker][run - 1]}, 1};
  return run;
}

[[gnu::noinline]] Phrase LongestWithFreedom(PhraseTrie& trie, const PhraseImage& image, uint32_t at,
                                            const Phrase& ahead) {
  Candidates candidates;
  uint32_t next = at + BeginCandidates(trie, image, at, candidates);
  for (; next != image.count; ++next) {
    const Candidates longer = Lengthen(trie, candidates, SymbolsAt(image, next));
    if (longer.count == 0) break;
    candidates = longer;
  }
  if (ahead.length != 0 && next != image.count && candidates.Has(ahead.node)) {
    const Symbols symbols = SymbolsAt(image, next);
    const uint32_t learned = trie.first[ahead.node];
    if (symbols.first == learned || symbols.second == learned) return {next + 1 - at, uint16_t(trie.next), kNoPlaceYet};
  }
  return {next - at, uint16_t(candidates.nodes[0]), kNoPlaceYet};
}

} // namespace

Phrase LongestPhrase(PhraseTrie& trie, const PhraseImage& image, uint32_t at, const Phrase& ahead) {
  if (image.freedom) return LongestWithFreedom(trie, image, at, ahead);
  const Phrase phrase = LongestOfColours(trie, image, at, image.count);
  const uint32_t end = at + phrase.length;
  if (ahead.length != 0 && phrase.node == ahead.node && end != image.count && image.colours[end] == image.colours[at]) {
    return {phrase.length + 1, uint16_t(trie.next), kNoPlaceYet};
  }
  return phrase;
}

Phrase BeginningOf(PhraseTrie& trie, const PhraseImage& image, uint32_t at, uint32_t length) {
  return LongestOfColours(trie, image, at, at + length);
}

} // namespace framereel
