// The probe rule: a corner in which the bytes that this program puts out are not those of textbook LZW.
//
// By the rules of the output the dictionary is an open-addressing hash with 5003 slots. Key pixel * 4096 + prefix first
// looks at slot (pixel * 16) ^ prefix, s, and then at s less multiples of 5003 - s; and while probing, a slot that
// holds key 0 counts as free. Key 0 is the string 0 0. Its own first slot is 0, where it harms nobody: other keys come
// to slot 0 last of all. But if a key with prefix = 16 * pixel is there before it, key 0 lies elsewhere, and a later
// key that probes this place takes it. The string 0 0 is then unknown again, with all that begin with it.
//
// Nothing else in the dictionary suffers: what a key would find beyond key 0 was never put there. So the encoder uses
// a dictionary of its own and asks here whenever it is about to use the string 0 0.
#pragma once

#include <cstdint>

#include "gif/lzw_tables.h"

namespace framereel {

// Makes the encoder forget the string 0 0 if by now it would be lost: runLongest[0] becomes 1. The entries from `first`
// up to `next` are those of the present dictionary. To be called ahead of each use of runLongest[0]; costs nothing
// until a displaced key 0 is learned, and a hash step for each entry from then on.
void LzwApplyProbeRule(LzwTables& tables, uint32_t first, uint32_t next);

} // namespace framereel
