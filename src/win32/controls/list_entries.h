// The entries of a list box, in their order. It knows nothing of windows. Internal to the layer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace framereel {

struct ListEntries {
  std::vector<std::string> texts;
  bool sorted;   // they are to be
  bool unsorted; // some have been added since they last were
};

inline constexpr int32_t kNoEntry = -1;

void AddEntry(ListEntries* entries, std::string_view text);
// Brings them into their order, all that have been added at once: one by one each would move half of the others.
void SortEntries(ListEntries* entries);
// The first entry from `from` on, and then from the top, that begins with the text, whatever the case of ASCII letters;
// kNoEntry for none. "[" ahead of an entry is passed over unless the text has it.
int32_t EntryBeginning(const ListEntries& entries, std::string_view text, int32_t from);

} // namespace framereel
