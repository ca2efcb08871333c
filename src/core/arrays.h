// Small counted arrays. They are resized at each change and freed when they become empty, so an owner that is
// zeroed holds empty ones; RecordArray alone grows in steps and has to be made. Counts are 16 bits: an array of
// 65,535 entries takes no more. An index that is not below the count does nothing and answers 0 or null.
#pragma once

#include <cstdint>

#include "core/list.h"

namespace framereel {

// ---- Words --------------------------------------------------------------------------------------------------------

struct GrowArray {
  uint16_t count;
  ListValue* entries; // exactly `count`; null when there are none
};

// Stores the entry last; answers the new count.
uint16_t GrowArrayAdd(GrowArray* array, ListValue entry);
// Stores the entry at the index and moves those from there on one up. An index past the end means the end.
void GrowArrayInsert(GrowArray* array, uint16_t index, ListValue entry);
// Index of the last entry equal to the word; -1 when absent.
int32_t GrowArrayFind(const GrowArray* array, ListValue entry);
// Removes the last entry equal to the word; absent: nothing.
void GrowArrayRemove(GrowArray* array, ListValue entry);
void GrowArrayRemoveAt(GrowArray* array, uint16_t index);

// ---- Listeners ----------------------------------------------------------------------------------------------------

// `subject` is what the notice is about: a code, or a pointer to the record that changed.
using NoticeFunction = void (*)(intptr_t subject, void* argument);

struct NotifierEntry {
  NoticeFunction function;
  void* argument;
};

struct Notifier {
  uint16_t count;
  NotifierEntry* entries;
};

void NotifierAdd(Notifier* notifier, NoticeFunction function, void* argument);
// Removes the last entry with this very pair; absent: nothing.
void NotifierRemove(Notifier* notifier, NoticeFunction function, void* argument);
// Calls function(subject, argument) of each entry once, from the last to the first. A listener may remove itself or
// others, and one that is gone before its turn is not called; nor is one that is added meanwhile.
void NotifierSend(const Notifier* notifier, intptr_t subject);
void NotifierClear(Notifier* notifier);

// ---- Keyed words --------------------------------------------------------------------------------------------------

struct Attribute {
  ListValue key, value;
};

struct AttributeTable {
  uint16_t count;
  Attribute* entries;
};

// Puts the pair at the end; a pair that has the key already is removed.
void AttributeSet(AttributeTable* table, ListValue key, ListValue value);
bool AttributeHas(const AttributeTable* table, ListValue key);
// Removes the pair and answers its value; 0 when absent.
ListValue AttributeDrop(AttributeTable* table, ListValue key);
void AttributeClear(AttributeTable* table);

// ---- Records ------------------------------------------------------------------------------------------------------

struct RecordArray {
  uint16_t count, capacity; // elements; the capacity stays above the count until it reaches 65,535
  uint16_t elementSize;     // bytes
  uint16_t growthStep;      // elements; not 0
  uint8_t* block;
};

// Makes an empty array with room for `growthStep` elements.
void RecordArrayInit(RecordArray* array, uint16_t elementSize, uint16_t growthStep);
// Copies the element to the end.
void RecordArrayAppend(RecordArray* array, const void* element);
// Good until the array changes.
void* RecordArrayAt(const RecordArray* array, uint16_t index);
// Index of the last element that is byte for byte the same; -1 when absent.
int32_t RecordArrayFind(const RecordArray* array, const void* element);
// Moves the later elements down; the room stays.
void RecordArrayRemoveAt(RecordArray* array, uint16_t index);
// Frees the block. The array is to be made anew before it is used again.
void RecordArrayFree(RecordArray* array);

} // namespace framereel
