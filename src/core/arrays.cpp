// The three arrays that are resized at each change share their mechanics as the two templates on top.
#include "core/arrays.h"

#include <cstring>

#include "core/memory.h"
#include "core/numbers.h"

namespace framereel {

namespace {

// Opens a gap at the index, which is at most the count, and puts the entry there. False when the array is full.
template <typename Entry> bool InsertEntry(uint16_t* count, Entry** entries, uint16_t index, const Entry& entry) {
  if (*count == UINT16_MAX) return false;
  auto* block = static_cast<Entry*>(MemRealloc(*entries, (*count + size_t{1}) * sizeof(Entry)));
  if (!block) return false; // only while the program ends for want of memory
  std::memmove(block + index + 1, block + index, (*count - index) * sizeof(Entry));
  block[index] = entry;
  *entries = block;
  ++*count;
  return true;
}

template <typename Entry> void RemoveEntry(uint16_t* count, Entry** entries, uint16_t index) {
  if (index >= *count) return;
  --*count;
  std::memmove(*entries + index, *entries + index + 1, (*count - index) * sizeof(Entry));
  if (*count == 0) {
    MemFree(*entries);
    *entries = nullptr;
    return;
  }
  auto* block = static_cast<Entry*>(MemRealloc(*entries, *count * sizeof(Entry)));
  if (block) *entries = block;
}

} // namespace

// ---- Words --------------------------------------------------------------------------------------------------------

uint16_t GrowArrayAdd(GrowArray* array, ListValue entry) {
  InsertEntry(&array->count, &array->entries, array->count, entry);
  return array->count;
}

void GrowArrayInsert(GrowArray* array, uint16_t index, ListValue entry) {
  auto at = uint16_t(Minimum(index, array->count));
  InsertEntry(&array->count, &array->entries, at, entry);
}

int32_t GrowArrayFind(const GrowArray* array, ListValue entry) {
  int32_t index = array->count - 1;
  while (index >= 0 && array->entries[index] != entry) --index;
  return index;
}

void GrowArrayRemove(GrowArray* array, ListValue entry) {
  int32_t index = GrowArrayFind(array, entry);
  if (index >= 0) GrowArrayRemoveAt(array, uint16_t(index));
}

void GrowArrayRemoveAt(GrowArray* array, uint16_t index) {
  RemoveEntry(&array->count, &array->entries, index);
}

// ---- Listeners ----------------------------------------------------------------------------------------------------

namespace {

// A walk over a notifier that is under way; walks nest.
struct NotifierWalk {
  const Notifier* notifier;
  int32_t left; // entries that have not had their turn, from the first on
  NotifierWalk* outer;
};

NotifierWalk* walks;

// Those that walk on are to find each of the others where it now stands.
void NoteRemoval(const Notifier* notifier, int32_t index) {
  for (NotifierWalk* walk = walks; walk; walk = walk->outer) {
    if (walk->notifier == notifier && index < walk->left) --walk->left;
  }
}

} // namespace

void NotifierAdd(Notifier* notifier, NoticeFunction function, void* argument) {
  InsertEntry(&notifier->count, &notifier->entries, notifier->count, {function, argument});
}

void NotifierRemove(Notifier* notifier, NoticeFunction function, void* argument) {
  for (int32_t i = notifier->count - 1; i >= 0; --i) {
    const NotifierEntry& entry = notifier->entries[i];
    if (entry.function != function || entry.argument != argument) continue;
    RemoveEntry(&notifier->count, &notifier->entries, uint16_t(i));
    NoteRemoval(notifier, i);
    return;
  }
}

void NotifierSend(const Notifier* notifier, intptr_t subject) {
  NotifierWalk walk = {notifier, notifier->count, walks};
  walks = &walk;
  while (walk.left > 0) {
    const NotifierEntry entry = notifier->entries[--walk.left];
    entry.function(subject, entry.argument);
  }
  walks = walk.outer;
}

void NotifierClear(Notifier* notifier) {
  for (int32_t i = notifier->count - 1; i >= 0; --i) NoteRemoval(notifier, i);
  MemFree(notifier->entries);
  *notifier = {};
}

// ---- Keyed words --------------------------------------------------------------------------------------------------

namespace {

int32_t FindAttribute(const AttributeTable* table, ListValue key) {
  int32_t index = table->count - 1;
  while (index >= 0 && table->entries[index].key != key) --index;
  return index;
}

} // namespace

void AttributeSet(AttributeTable* table, ListValue key, ListValue value) {
  AttributeDrop(table, key);
  InsertEntry(&table->count, &table->entries, table->count, {key, value});
}

bool AttributeHas(const AttributeTable* table, ListValue key) {
  return FindAttribute(table, key) >= 0;
}

ListValue AttributeDrop(AttributeTable* table, ListValue key) {
  int32_t index = FindAttribute(table, key);
  if (index < 0) return 0;
  ListValue value = table->entries[index].value;
  RemoveEntry(&table->count, &table->entries, uint16_t(index));
  return value;
}

void AttributeClear(AttributeTable* table) {
  MemFree(table->entries);
  *table = {};
}

// ---- Records ------------------------------------------------------------------------------------------------------

namespace {

size_t BytesFor(const RecordArray* array, uint16_t elements) {
  return size_t{elements} * array->elementSize;
}

} // namespace

void RecordArrayInit(RecordArray* array, uint16_t elementSize, uint16_t growthStep) {
  *array = {0, growthStep, elementSize, growthStep, nullptr};
  array->block = static_cast<uint8_t*>(MemAlloc(BytesFor(array, array->capacity)));
}

void RecordArrayAppend(RecordArray* array, const void* element) {
  if (array->count == array->capacity || !array->block) return;
  std::memcpy(array->block + BytesFor(array, array->count), element, array->elementSize);
  ++array->count;
  if (array->count < array->capacity) return;
  auto wider = uint16_t(Minimum(array->capacity + array->growthStep, UINT16_MAX));
  void* block = MemRealloc(array->block, BytesFor(array, wider));
  if (!block) return;
  array->block = static_cast<uint8_t*>(block);
  array->capacity = wider;
}

void* RecordArrayAt(const RecordArray* array, uint16_t index) {
  return index < array->count ? array->block + BytesFor(array, index) : nullptr;
}

int32_t RecordArrayFind(const RecordArray* array, const void* element) {
  for (int32_t i = array->count - 1; i >= 0; --i) {
    const void* candidate = RecordArrayAt(array, uint16_t(i));
    if (std::memcmp(candidate, element, array->elementSize) == 0) return i;
  }
  return -1;
}

void RecordArrayRemoveAt(RecordArray* array, uint16_t index) {
  if (index >= array->count) return;
  --array->count;
  uint8_t* gap = array->block + BytesFor(array, index);
  std::memmove(gap, gap + array->elementSize, BytesFor(array, uint16_t(array->count - index)));
}

void RecordArrayFree(RecordArray* array) {
  MemFree(array->block);
  *array = {};
}

} // namespace framereel
