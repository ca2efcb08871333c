// The steps of SmallestTakeFrame in their order: the rectangle that has to be written, its pixels as symbols, the
// phrases for them without and with transparent pixels, and the colour table that goes with the fewest bytes.
#include "gif/smallest_frames.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>
#include <numeric>
#include <utility>

#include "core/memory.h"

namespace framereel {
namespace {

// Pixels in a row that need not change are better transparent once their colour changes so often among them.
constexpr uint32_t kPatchworkChanges = 8;

constexpr uint32_t kTriple = 3;

uint32_t BitsFor(uint32_t values) {
  return uint32_t(std::bit_width(std::max(values, 1u) - 1));
}
uint8_t CodeSizeFor(uint32_t symbols) {
  return uint8_t(std::max(2u, BitsFor(symbols)));
}
uint8_t TableBitsFor(uint32_t colours) {
  return uint8_t(std::max(1u, BitsFor(colours)));
}

// ---- The rectangle -------------------------------------------------------------------------------------------------

struct Edges {
  int32_t left, top, right, bottom; // right and bottom one past the last pixel
};

const uint8_t* RowOf(const FramePixels& frame, int32_t y) {
  return frame.pixels.readPointer + int64_t(y - frame.top) * (frame.pixels.rowWidth + frame.pixels.rowSkip) -
         frame.left;
}

// Above 255: no index means that a pixel is unchanged.
int32_t MarkOf(const FramePixels& frame) {
  return frame.marked ? frame.mark : UINT8_MAX + 1;
}

// Rows are indexed by the place on the logical screen.
struct RowPair {
  const uint8_t* pixels;
  const uint8_t* shown;
  int32_t mark;

  bool Changes(int32_t x) const { return pixels[x] != shown[x] && pixels[x] != mark; }
};

RowPair RowsAt(const SmallestFrames& smallest, const FramePixels& frame, int32_t y) {
  return {RowOf(frame, y), smallest.shown + int64_t(y) * smallest.width, MarkOf(frame)};
}

// Widens the edges by what changes in row y; only pixels outside are looked at.
void WidenBy(const RowPair& row, int32_t y, const FramePixels& frame, Edges& edges) {
  const int32_t right = frame.left + frame.width;
  int32_t x = frame.left;
  while (x < right && !row.Changes(x)) ++x;
  if (x == right) return;
  int32_t last = right - 1;
  while (!row.Changes(last)) --last;
  edges = {std::min(edges.left, x), std::min(edges.top, y), std::max(edges.right, last + 1), y + 1};
}

// What has to be written of the frame, a pixel at least.
Edges ChangedEdges(const SmallestFrames& smallest, const FramePixels& frame) {
  const Edges all = {frame.left, frame.top, frame.left + frame.width, frame.top + frame.height};
  if (!smallest.anyShown) return all;
  Edges edges = {all.right, all.bottom, all.left, all.top};
  for (int32_t y = all.top; y < all.bottom; ++y) WidenBy(RowsAt(smallest, frame, y), y, frame, edges);
  if (edges.right <= edges.left) return {all.left, all.top, all.left + 1, all.top + 1};
  if (frame.inPlace) edges.left = all.left, edges.top = all.top;
  return edges;
}

// ---- The pixels ----------------------------------------------------------------------------------------------------

// Brings a row of `shown` up to date and says which pixels need not have been written. The loops are for vectors.
void ShowRow(const uint8_t* pixels, int32_t mark, size_t count, uint8_t* shown, Freedom* freedom) {
  for (size_t x = 0; x < count; ++x) {
    freedom[x] = pixels[x] == shown[x] ? Freedom::kColourOrMarker : Freedom::kColour;
  }
  if (mark <= UINT8_MAX) {
    const auto unchanged = uint8_t(mark);
    for (size_t x = 0; x < count; ++x) {
      freedom[x] = pixels[x] == unchanged ? Freedom::kColourOrMarker : freedom[x];
      shown[x] = pixels[x] == unchanged ? shown[x] : pixels[x];
    }
  } else {
    std::memcpy(shown, pixels, count);
  }
}

// Numbers the colours of a row as they come. What has no number yet has kNoPlace.
void NumberRow(SmallestFrames& smallest, const uint8_t* colours, size_t count, uint16_t* symbolOf, uint8_t* symbols) {
  for (size_t x = 0; x < count; ++x) {
    uint16_t& symbol = symbolOf[colours[x]];
    if (symbol == kNoPlace) {
      symbol = uint16_t(smallest.symbolCount);
      smallest.symbolColours[smallest.symbolCount++] = colours[x];
    }
    symbols[x] = uint8_t(symbol);
  }
}

// Fills symbols and freedom for the pixels within the edges, and brings `shown` up to date.
void TakePixels(SmallestFrames& smallest, const FramePixels& frame, const Edges& edges) {
  uint16_t symbolOf[256];
  std::fill(std::begin(symbolOf), std::end(symbolOf), kNoPlace);
  smallest.symbolCount = 0;
  const auto width = size_t(edges.right - edges.left);
  size_t at = 0;
  for (int32_t y = edges.top; y < edges.bottom; ++y, at += width) {
    uint8_t* shown = smallest.shown + int64_t(y) * smallest.width + edges.left;
    const uint8_t* pixels = RowOf(frame, y) + edges.left;
    if (smallest.anyShown) {
      ShowRow(pixels, MarkOf(frame), width, shown, smallest.freedom + at);
    } else {
      std::memcpy(shown, pixels, width);
      std::fill_n(smallest.freedom + at, width, Freedom::kColour);
    }
    NumberRow(smallest, shown, width, symbolOf, smallest.symbols + at);
  }
}

// How often the colour changes among `count` pixels.
uint32_t ColourChanges(const uint8_t* symbols, uint32_t count) {
  uint32_t changes = 0;
  for (uint32_t i = 1; i < count; ++i) changes += symbols[i] != symbols[i - 1];
  return changes;
}

// Has stretches of free pixels that are patchwork marked, and answers how many pixels that makes.
uint32_t MarkPatchwork(SmallestFrames& smallest, uint32_t count) {
  Freedom* const freedom = smallest.freedom;
  uint32_t marked = 0, end = 0;
  // Stretches of interest have pixels at one of these places.
  for (uint32_t at = kPatchworkChanges; at < count; at = std::max(at, end) + kPatchworkChanges + 1) {
    if (freedom[at] == Freedom::kColour) continue;
    uint32_t start = at;
    while (start > end && freedom[start - 1] != Freedom::kColour) --start;
    end = at + 1;
    while (end < count && freedom[end] != Freedom::kColour) ++end;
    if (ColourChanges(smallest.symbols + start, end - start) < kPatchworkChanges) continue;
    std::fill(freedom + start, freedom + end, Freedom::kMarkerOrColour);
    marked += end - start;
  }
  return marked;
}

// ---- The colour table ----------------------------------------------------------------------------------------------

// Both fill the trial's indices and answer the code size for symbols in that table. The marker is the symbol behind the
// colours'.

uint8_t UseOwnTable(SmallestFrames& smallest, bool marker) {
  const uint32_t symbols = smallest.symbolCount + marker;
  SmallestFrame& trial = smallest.trial;
  trial.tableBits = TableBitsFor(symbols);
  std::iota(trial.indices, trial.indices + symbols, uint8_t{0});
  return CodeSizeFor(symbols);
}

// 0 if it lacks a colour.
uint8_t UseFileTable(SmallestFrames& smallest, bool marker) {
  SmallestFrame& trial = smallest.trial;
  trial.tableBits = 0;
  bool taken[256] = {};
  uint32_t most = 0;
  const auto take = [&](uint32_t symbol, uint32_t place) {
    trial.indices[symbol] = uint8_t(place);
    taken[place] = true;
    most = std::max(most, place);
  };
  for (uint32_t symbol = 0; symbol < smallest.symbolCount; ++symbol) {
    const uint32_t place = smallest.place[smallest.symbolColours[symbol]];
    if (place == kNoPlace) return 0;
    take(symbol, place);
  }
  if (marker) {
    take(smallest.symbolCount, uint32_t(std::find(taken, taken + 256, false) - taken)); // the table has room for it
  }
  return CodeSizeFor(most + 1);
}

// Of a frame's own table in the file.
uint64_t TableSizeBits(uint32_t tableBits) {
  return tableBits == 0 ? 0 : uint64_t{8 * kTriple} << tableBits;
}

// ---- Choices -------------------------------------------------------------------------------------------------------

// Cuts the frame into phrases with the table that the trial has, and keeps the trial if that is the best so far.
void Try(SmallestFrames& smallest, bool marker, uint8_t codeSize, uint32_t count, uint64_t& leastBits) {
  SmallestFrame& trial = smallest.trial;
  const uint64_t table = TableSizeBits(trial.tableBits);
  if (table >= leastBits) return;
  const auto symbol = uint8_t(smallest.symbolCount);
  const PhraseImage image = {smallest.symbols, marker ? smallest.freedom : nullptr, count, codeSize, symbol};
  if (!ParsePhrases(smallest.parser, image, leastBits - table - 1, trial.phrases)) return;
  leastBits = trial.phrases.bits + table;
  trial.transparent = marker;
  trial.transparentIndex = marker ? trial.indices[symbol] : 0;
  std::swap(smallest.frame, trial);
}

// What a dictionary that fills up loses by a code size of `larger` against `smaller`, as measured.
uint64_t LossByCodeSize(uint8_t larger, uint8_t smaller) {
  constexpr uint64_t kBitsForEach = 6; // symbol that is not there
  return larger <= smaller ? 0 : kBitsForEach * ((1u << larger) - (1u << smaller));
}

// A frame that has a choice of tables is cut with both, as long as that takes little time; else with the one that is
// likely the better.
void TryBothTables(SmallestFrames& smallest, bool marker, uint32_t count, uint64_t& leastBits) {
  const uint64_t dictionaries = uint64_t{smallest.phrasesOfLate} * count / kPhraseCodes >> 16;
  const uint8_t ownSize = UseOwnTable(smallest, marker), ownBits = smallest.trial.tableBits;
  const uint8_t fileSize = UseFileTable(smallest, marker);
  const bool small = dictionaries == 0;
  const bool ownIsBetter = dictionaries * LossByCodeSize(fileSize, ownSize) > TableSizeBits(ownBits);
  if (fileSize != 0 && (small || !ownIsBetter)) Try(smallest, marker, fileSize, count, leastBits);
  if (fileSize != 0 && (ownSize >= fileSize || !(small || ownIsBetter))) return;
  UseOwnTable(smallest, marker);
  Try(smallest, marker, ownSize, count, leastBits);
}

// ---- The file's colour table ---------------------------------------------------------------------------------------

struct Placing {
  SmallestFrames& smallest;
  uint8_t* table;
  uint32_t next;

  void Place(uint8_t colour) {
    smallest.place[colour] = uint16_t(next);
    std::memcpy(table + kTriple * next++, smallest.colours + kTriple * colour, kTriple);
  }
};

// The square of the distance between a colour and the nearest of those in the table.
uint32_t DistanceFrom(const Placing& placing, uint8_t colour) {
  const uint8_t* wanted = placing.smallest.colours + kTriple * colour;
  uint32_t least = UINT32_MAX;
  for (const uint8_t* at = placing.table; at != placing.table + kTriple * placing.next; at += kTriple) {
    const int32_t red = at[0] - wanted[0], green = at[1] - wanted[1], blue = at[2] - wanted[2];
    least = std::min(least, uint32_t(red * red + green * green + blue * blue));
  }
  return least;
}

// Fills places that are left over with the colours that are most likely to come: those next to the ones that are there.
void PlaceNeighbours(Placing& placing, uint32_t end) {
  std::pair<uint32_t, uint8_t> others[256];
  uint32_t count = 0;
  for (uint32_t colour = 0; colour < 256; ++colour) {
    if (placing.smallest.place[colour] != kNoPlace) continue;
    const uint32_t distance = DistanceFrom(placing, uint8_t(colour));
    if (distance != 0) others[count++] = {distance, uint8_t(colour)};
  }
  std::sort(others, others + count);
  for (uint32_t i = 0; i < count && placing.next < end; ++i) placing.Place(others[i].second);
}

} // namespace

SmallestFrames* SmallestNew(int16_t width, int16_t height, const uint8_t* colours) {
  auto* smallest = static_cast<SmallestFrames*>(MemAlloc(sizeof(SmallestFrames)));
  *smallest = {};
  smallest->width = width;
  smallest->height = height;
  std::memcpy(smallest->colours, colours, sizeof smallest->colours);
  const size_t pixels = size_t(width) * size_t(height);
  smallest->shown = static_cast<uint8_t*>(MemAlloc(pixels));
  smallest->symbols = static_cast<uint8_t*>(MemAlloc(pixels));
  smallest->freedom = static_cast<Freedom*>(MemAlloc(pixels));
  for (SmallestFrame* frame : {&smallest->frame, &smallest->trial}) {
    frame->phrases.codes = static_cast<uint16_t*>(MemAlloc(PhraseCodesMax(pixels) * sizeof(uint16_t)));
  }
  PhraseParserInit(smallest->parser);
  return smallest;
}

void SmallestFree(SmallestFrames* smallest) {
  if (!smallest) return;
  PhraseParserFree(smallest->parser);
  MemFree(smallest->frame.phrases.codes);
  MemFree(smallest->trial.phrases.codes);
  MemFree(smallest->freedom);
  MemFree(smallest->symbols);
  MemFree(smallest->shown);
  MemFree(smallest);
}

int SmallestBegin(SmallestFrames& smallest, const FramePixels& first, uint8_t* table) {
  uint32_t counts[256] = {};
  for (int32_t y = 0; y < first.height; ++y) {
    const uint8_t* row = RowOf(first, first.top + y) + first.left;
    for (int32_t x = 0; x < first.width; ++x) ++counts[row[x]];
  }
  uint8_t order[256];
  std::iota(order, order + 256, uint8_t{0});
  std::stable_sort(order, order + 256, [&](uint8_t a, uint8_t b) { return counts[a] > counts[b]; });
  std::fill(std::begin(smallest.place), std::end(smallest.place), kNoPlace);
  Placing placing = {smallest, table, 0};
  for (uint32_t i = 0; i < 256 && counts[order[i]] != 0; ++i) placing.Place(order[i]);
  const int tableBits = TableBitsFor(std::min(placing.next + 1, 256u)); // with room for a transparent index
  const uint32_t size = 1u << tableBits;
  std::memset(table + kTriple * placing.next, 0, kTriple * (size - placing.next));
  if (placing.next + 1 < size) PlaceNeighbours(placing, size - 1);
  return tableBits;
}

const SmallestFrame& SmallestTakeFrame(SmallestFrames& smallest, const FramePixels& frame) {
  const Edges edges = ChangedEdges(smallest, frame);
  const auto width = int16_t(edges.right - edges.left), height = int16_t(edges.bottom - edges.top);
  const auto count = uint32_t(width) * uint32_t(height);
  TakePixels(smallest, frame, edges);
  const uint32_t marked = frame.mayMark && smallest.symbolCount < kPhraseSymbols ? MarkPatchwork(smallest, count) : 0;
  // What is likely the better one goes first: the other one is given up as soon as it is longer.
  uint64_t leastBits = UINT64_MAX;
  if (marked > count / 2) TryBothTables(smallest, true, count, leastBits);
  TryBothTables(smallest, false, count, leastBits);
  if (marked >= count / 16 && marked <= count / 2) TryBothTables(smallest, true, count, leastBits);
  smallest.anyShown = true;
  smallest.phrasesOfLate = uint32_t((uint64_t{smallest.frame.phrases.count} << 16) / count);
  SmallestFrame& best = smallest.frame;
  best.left = int16_t(edges.left), best.top = int16_t(edges.top);
  best.width = width, best.height = height;
  return best;
}

void SmallestWriteImage(SmallestFrames& smallest, GifWriter& gif) {
  const SmallestFrame& frame = smallest.frame;
  uint8_t table[kColourTableBytes] = {};
  for (uint32_t symbol = 0; symbol < smallest.symbolCount; ++symbol) {
    std::memcpy(table + kTriple * symbol, smallest.colours + kTriple * smallest.symbolColours[symbol], kTriple);
  }
  GifWriteDescriptor(gif, frame.left, frame.top, frame.width, frame.height, frame.tableBits, table);
  GifBeginImageData(gif, frame.phrases.codeSize);
  PackerBegin(smallest.packer, gif.stream);
  PackPhrases(smallest.packer, frame.phrases, frame.indices);
  PackerEnd(smallest.packer);
  GifEndImageData(gif);
}

} // namespace framereel
