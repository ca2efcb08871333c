// The hash behind lzw_probe_rule.h. It keeps keys only; codes are the encoder's business.
#include "gif/lzw_probe_rule.h"

#include <algorithm>
#include <iterator>

namespace framereel {
namespace {

// True if one of the entries has first slot 0.
bool TakesSlotZero(const LzwTables& tables, uint32_t first, uint32_t next) {
  for (uint32_t entry = first; entry < next; ++entry) {
    if (tables.codes[entry] == tables.pixels[entry] * 16) return true;
  }
  return false;
}

// Where a key goes that is not there: the first slot that is free, or that holds key 0 and is not the key's own.
int32_t FindSlot(const LzwTables& tables, int32_t prefix, int32_t pixel) {
  int32_t slot = (pixel * 16) ^ prefix;
  if (tables.probeKeys[slot] < 0) return slot;
  const int32_t step = slot == 0 ? 1 : kProbeSlots - slot;
  do {
    slot -= step;
    if (slot < 0) slot += kProbeSlots;
  } while (tables.probeKeys[slot] > 0);
  return slot;
}

// Adds the entries up to `next` to the hash in their order. True if one of them takes the place of key 0.
bool LosesKeyZero(LzwTables& tables, uint32_t next) {
  bool lost = false;
  for (uint32_t& entry = tables.probedEntries; entry < next; ++entry) {
    const int32_t prefix = tables.codes[entry], pixel = tables.pixels[entry];
    int32_t& place = tables.probeKeys[FindSlot(tables, prefix, pixel)];
    if (place == 0) lost = true;
    place = pixel * 4096 + prefix;
  }
  return lost;
}

} // namespace

void LzwApplyProbeRule(LzwTables& tables, uint32_t first, uint32_t next) {
  if (tables.keyZero == KeyZero::kHarmless || tables.runLongest[0] == 1) return;
  if (tables.keyZero == KeyZero::kNotAsked) {
    const uint32_t entryOfKeyZero = RunCodes(tables, 0)[1];
    const bool displaced = TakesSlotZero(tables, first, entryOfKeyZero);
    tables.keyZero = displaced ? KeyZero::kDisplaced : KeyZero::kHarmless;
    if (!displaced) return;
    std::fill(std::begin(tables.probeKeys), std::end(tables.probeKeys), -1);
    tables.probedEntries = first;
  }
  if (LosesKeyZero(tables, next)) tables.runLongest[0] = 1;
}

} // namespace framereel
