// See plain_gif.h.
#include "support/plain_gif.h"

#include <algorithm>

namespace framereel {
namespace {

void Put(Bytes& file, std::initializer_list<int> bytes) {
  for (const int byte : bytes) file.push_back(uint8_t(byte));
}

void PutWords(Bytes& file, std::initializer_list<int> words) {
  for (const int word : words) Put(file, {word, word >> 8});
}

void PutSubBlocks(Bytes& file, const Bytes& data) {
  for (size_t at = 0; at < data.size(); ++at) {
    if (at % 255 == 0) file.push_back(uint8_t(std::min<size_t>(data.size() - at, 255)));
    file.push_back(data[at]);
  }
}

// Codes as bits, lowest first.
struct Codes {
  Bytes bytes;
  int width, freeBits = 0;

  void Put(int code) {
    for (int bit = 0; bit < width; ++bit) {
      if (freeBits == 0) bytes.push_back(0);
      if (freeBits == 0) freeBits = 8;
      bytes.back() |= uint8_t((code >> bit & 1) << (8 - freeBits--));
    }
  }
};

} // namespace

void PlainWriteHead(Bytes& file, const PlainHead& head) {
  const std::string version = "GIF89a";
  file.insert(file.end(), version.begin(), version.end());
  PutWords(file, {head.width, head.height});
  Put(file, {0x80 | (head.bits - 1) << 4 | (head.bits - 1), 0, 0x31});
  for (const PaletteColour& c : head.colours) Put(file, {c.red, c.green, c.blue});
  file.resize(file.size() + 3 * ((size_t{1} << head.bits) - head.colours.size()));
  if (head.loops) Put(file, {0x21, 0xFF, 11, 'N', 'E', 'T', 'S', 'C', 'A', 'P', 'E', '2', '.', '0', 3, 1, 0, 0, 0});
  Put(file, {0x21, 0xFE});
  PutSubBlocks(file, {head.comment.begin(), head.comment.end()});
  Put(file, {0});
}

void PlainWriteFrame(Bytes& file, const PlainHead& head, const PlainFrame& frame) {
  const int codeSize = std::max(head.bits, 2);
  Put(file, {0x21, 0xF9, 4, frame.transparent ? 5 : 4});
  PutWords(file, {frame.delay});
  Put(file, {frame.transparentIndex, 0, 0x2C});
  PutWords(file, {frame.left, frame.top, frame.width, frame.height});
  Put(file, {0, codeSize});
  PlainLzwEncode(frame.indices, codeSize + 1, file);
  Put(file, {0});
}

bool PlainLzwEncode(const Bytes& pixels, int initBits, Bytes& file) {
  constexpr int kSlots = 5003, kCodeLimit = 4096;
  const int clear = 1 << (initBits - 1);
  std::vector<int> keys(kSlots, -1), codes(kSlots);
  int next = clear + 2, prefix = pixels[0];
  bool lostKeyZero = false;
  Codes out = {{}, initBits};
  const auto put = [&out, &next](int code) {
    out.Put(code);
    if (next >= 1 << out.width && out.width < 12) ++out.width;
  };
  put(clear);
  for (size_t i = 1; i < pixels.size(); ++i) {
    const int pixel = pixels[i], key = pixel * 4096 + prefix;
    int slot = (pixel << 4) ^ prefix;
    const int step = slot == 0 ? 1 : kSlots - slot;
    if (keys[size_t(slot)] >= 0 && keys[size_t(slot)] != key) {
      do slot = (slot - step + kSlots) % kSlots;
      while (keys[size_t(slot)] > 0 && keys[size_t(slot)] != key);
    }
    if (keys[size_t(slot)] == key) {
      prefix = codes[size_t(slot)];
      continue;
    }
    put(prefix);
    prefix = pixel;
    if (next < kCodeLimit) {
      lostKeyZero |= keys[size_t(slot)] == 0;
      keys[size_t(slot)] = key;
      codes[size_t(slot)] = next++;
    } else {
      out.Put(clear);
      out.width = initBits;
      next = clear + 2;
      keys.assign(kSlots, -1);
    }
  }
  put(prefix);
  put(clear + 1);
  PutSubBlocks(file, out.bytes);
  return lostKeyZero;
}

} // namespace framereel
