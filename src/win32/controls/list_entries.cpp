// The entries of a list box, in their order.
#include "win32/controls/list_entries.h"

#include <algorithm>

namespace framereel {
namespace {

uint8_t Folded(char byte) {
  return uint8_t(byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte);
}

bool ComesBefore(const std::string& a, const std::string& b) {
  const auto [atA, atB] =
      std::mismatch(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Folded(x) == Folded(y); });
  if (atB == b.end()) return atA == a.end() && a < b;
  return atA == a.end() || Folded(*atA) < Folded(*atB);
}

bool Begins(std::string_view entry, std::string_view text) {
  if (entry.starts_with('[') && !text.starts_with('[')) entry.remove_prefix(1);
  return entry.size() >= text.size() &&
         std::equal(text.begin(), text.end(), entry.begin(), [](char x, char y) { return Folded(x) == Folded(y); });
}

} // namespace

void AddEntry(ListEntries* entries, std::string_view text) {
  entries->texts.emplace_back(text);
  entries->unsorted = entries->sorted;
}

void SortEntries(ListEntries* entries) {
  if (!entries->unsorted) return;
  std::sort(entries->texts.begin(), entries->texts.end(), ComesBefore);
  entries->unsorted = false;
}

int32_t EntryBeginning(const ListEntries& entries, std::string_view text, int32_t from) {
  const auto count = int32_t(entries.texts.size());
  for (int32_t i = 0; i < count; ++i) {
    const int32_t index = (from + i) % count;
    if (Begins(entries.texts[size_t(index)], text)) return index;
  }
  return kNoEntry;
}

} // namespace framereel
