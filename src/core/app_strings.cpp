// A list of texts comes in groups of a hundred. Each group is named by a string resource, "1000
// 1099", that tells which string resources hold its texts, so a text's resource does not follow from its number
// alone.
#include "core/app_strings.h"

#include "core/memory.h"
#include "core/strings.h"
#include "core/text_scan.h"
#include "win32/win32_system.h"

namespace framereel {

namespace {

constexpr uint16_t kGroupSize = 100;
constexpr int kTextBuffer = 255; // bytes; a longer resource is cut
constexpr const char* kNoList = "IJString list not found";
constexpr const char* kNoString = "IJString Error";

struct StringGroup {
  uint16_t count; // 0 for a group that does not exist
  char** strings; // owned; never unloaded
};

struct StringList {
  uint16_t resourceBase; // group g is named by resource base + g
  uint16_t most;         // groups that it can have: what lies behind them is named for others
  uint16_t loaded;       // groups that have been looked for
  StringGroup* groups;
};

StringList programTexts = {128, 32, 0, nullptr};
StringList alertTexts = {160, 40, 0, nullptr};

char* LoadText(uint32_t id) {
  char text[kTextBuffer];
  ::LoadStringA(nullptr, id, text, kTextBuffer);
  return StrDup(text);
}

// Empty when there is no such group or its range is none.
StringGroup LoadGroup(uint16_t id) {
  char range[kTextBuffer];
  uint32_t first = 0;
  uint32_t last = 0;
  if (!::LoadStringA(nullptr, id, range, kTextBuffer)) return {};
  if (!ScanText(range, "%dl% %dl%", &first, &last) || first > last || last > UINT16_MAX) return {};
  auto count = uint16_t(last - first + 1);
  auto** strings = static_cast<char**>(MemAlloc(count * sizeof(char*)));
  if (!strings) return {}; // only while the program ends for want of memory
  for (uint16_t i = 0; i < count; ++i) strings[i] = LoadText(first + i);
  return {count, strings};
}

void LoadGroupsUpTo(StringList& list, uint16_t group) {
  auto* groups = static_cast<StringGroup*>(MemRealloc(list.groups, (group + size_t{1}) * sizeof(StringGroup)));
  if (!groups) return;
  list.groups = groups;
  for (; list.loaded <= group; ++list.loaded) {
    groups[list.loaded] = LoadGroup(uint16_t(list.resourceBase + list.loaded));
  }
}

const char* Lookup(StringList& list, uint16_t n) {
  auto number = uint16_t(n / kGroupSize);
  uint16_t index = n % kGroupSize;
  if (number >= list.most) return kNoString;
  if (number >= list.loaded) LoadGroupsUpTo(list, number);
  if (!list.groups) return kNoList;
  if (number >= list.loaded || index >= list.groups[number].count) return kNoString;
  const char* text = list.groups[number].strings[index];
  return text ? text : kNoString;
}

} // namespace

const char* AppString(uint16_t n) {
  return Lookup(programTexts, n);
}

const char* AppAlertString(uint16_t n) {
  return Lookup(alertTexts, n);
}

} // namespace framereel
