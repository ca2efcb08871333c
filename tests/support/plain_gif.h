// A GIF written the plain way, to be checked by eye and not to be fast: the judge of the program's own, which puts out
// the same bytes by other means.
//
// The dictionary of its LZW is part of the rules: an open-addressing hash of 5003 places whose probe takes a place with
// key 0 for a free one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "win32/pixels/surface.h"

namespace framereel {

using Bytes = std::vector<uint8_t>;

struct PlainHead {
  int width, height;
  int bits;                           // of the colour table
  std::vector<PaletteColour> colours; // up to 2^bits; black fills up
  bool loops;                         // for ever
  std::string comment;
};

struct PlainFrame {
  int left, top, width, height;
  Bytes indices; // width x height, the top row first
  int delay;     // hundredths of a second
  bool transparent;
  int transparentIndex; // written in any case
};

// The file as far as it goes without its trailer.
void PlainWriteHead(Bytes& file, const PlainHead& head);
void PlainWriteFrame(Bytes& file, const PlainHead& head, const PlainFrame& frame);

// Appends the sub-blocks of the pixels, which are at least one. initBits is the code size plus one. Answers whether key
// 0, the string 0 0, lost its place.
bool PlainLzwEncode(const Bytes& pixels, int initBits, Bytes& file);

} // namespace framereel
