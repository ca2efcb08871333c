// GIF's LZW the plain way: one pixel, one hash step, one code at a time.
//
// The judge of the program's encoder, which must put out the same bytes by other means. Its dictionary is part of
// the rules: an open-addressing hash of 5003 places whose probe takes a place with key 0 for a free one.
#pragma once

#include <cstdint>
#include <vector>

namespace framereel {

// Appends the sub-blocks of the pixels, which are at least one, to `out`. initBits is the code size plus one. Answers
// whether key 0, the string 0 0, lost its place.
bool PlainLzwEncode(const std::vector<uint8_t>& pixels, int initBits, std::vector<uint8_t>& out);

} // namespace framereel
