// The small counted arrays, with their 16-bit ends.
#include "core/arrays.h"

#include <cstring>

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "core/memory.h"

namespace framereel {
namespace {

std::vector<ListValue> Entries(const GrowArray& array) {
  return {array.entries, array.entries + array.count};
}

TEST(GrowArrays, InsertAtTheIndexAndRemoveTheLastOfEquals) {
  GrowArray array = {};
  EXPECT_EQ(GrowArrayAdd(&array, 2), 1);
  EXPECT_EQ(GrowArrayAdd(&array, 4), 2);
  GrowArrayInsert(&array, 0, 4);
  GrowArrayInsert(&array, 2, 3);
  GrowArrayInsert(&array, 99, 5); // past the end means the end
  EXPECT_EQ(Entries(array), (std::vector<ListValue>{4, 2, 3, 4, 5}));
  EXPECT_EQ(GrowArrayFind(&array, 4), 3);
  EXPECT_EQ(GrowArrayFind(&array, 6), -1);
  GrowArrayRemove(&array, 4);
  GrowArrayRemove(&array, 6);
  GrowArrayRemoveAt(&array, 4);
  EXPECT_EQ(Entries(array), (std::vector<ListValue>{4, 2, 3, 5}));
  while (array.count) GrowArrayRemoveAt(&array, 0);
  EXPECT_EQ(array.entries, nullptr);
}

TEST(GrowArrays, AFullOneStaysAsItIs) {
  GrowArray array = {UINT16_MAX - 1, static_cast<ListValue*>(MemAlloc((UINT16_MAX - 1) * sizeof(ListValue)))};
  for (uint16_t i = 0; i < array.count; ++i) array.entries[i] = i;
  EXPECT_EQ(GrowArrayAdd(&array, 65'534), UINT16_MAX);
  EXPECT_EQ(GrowArrayAdd(&array, -1), UINT16_MAX);
  GrowArrayInsert(&array, 0, -1);
  EXPECT_EQ(array.entries[0], 0);
  EXPECT_EQ(array.entries[65'534], 65'534);
  MemFree(array.entries);
}

// ---- Notifiers ----------------------------------------------------------------------------------------------------

std::string calls;

// Notes its name and the subject, and does what it is told to.
struct Listener {
  char name;
  void (*act)(Notifier& notifier, Listener& self);
  Notifier* notifier;
};

void Hear(intptr_t subject, void* argument) {
  Listener& listener = *static_cast<Listener*>(argument);
  calls += listener.name + std::to_string(subject);
  if (listener.act) listener.act(*listener.notifier, listener);
}

TEST(Notifiers, RunFromTheLastToTheFirstAndMayChangeMeanwhile) {
  calls.clear();
  Notifier notifier = {};
  Listener a = {'a', nullptr, &notifier}, b = {'b', nullptr, &notifier};
  Listener leaves = {'l', [](Notifier& n, Listener& self) { NotifierRemove(&n, Hear, &self); }, &notifier};
  Listener adds = {'+', [](Notifier& n, Listener& self) { NotifierAdd(&n, Hear, &self); }, &notifier};
  Listener ends = {'e', [](Notifier& n, Listener&) { NotifierClear(&n); }, &notifier};
  // Takes the first away, sends within the sending, and each of the others still has its turn once.
  Listener drops = {'d',
                    [](Notifier& n, Listener& self) {
                      self.act = nullptr;
                      NotifierRemove(&n, n.entries[0].function, n.entries[0].argument);
                      NotifierSend(&n, 0);
                    },
                    &notifier};
  NotifierSend(&notifier, 1);
  for (Listener* one : {&a, &b, &a, &leaves}) NotifierAdd(&notifier, Hear, one);
  NotifierSend(&notifier, 2);
  NotifierRemove(&notifier, Hear, &a); // the last of the two
  NotifierRemove(&notifier, Hear, &leaves);
  NotifierAdd(&notifier, Hear, &adds);
  NotifierSend(&notifier, 3);
  NotifierAdd(&notifier, Hear, &drops);
  NotifierSend(&notifier, 4);
  NotifierAdd(&notifier, Hear, &ends);
  NotifierSend(&notifier, 5);
  EXPECT_EQ(calls, "l2a2b2a2+3b3a3d4d0+0+0b0+4+4b4e5");
  EXPECT_EQ(notifier.count, 0);
}

// ---- Attributes ---------------------------------------------------------------------------------------------------

TEST(AttributeTables, AKeyHasOneValueAndAZeroOneIsThereToo) {
  AttributeTable table = {};
  AttributeSet(&table, 1, 10);
  AttributeSet(&table, 2, 20);
  AttributeSet(&table, 1, 0);
  EXPECT_EQ(table.count, 2);
  EXPECT_EQ(table.entries[1].key, 1);
  EXPECT_EQ(AttributeGet(&table, 1), 0);
  EXPECT_TRUE(AttributeHas(&table, 1));
  EXPECT_FALSE(AttributeHas(&table, 3));
  EXPECT_EQ(AttributeDrop(&table, 2), 20);
  EXPECT_EQ(AttributeDrop(&table, 2), 0);
  AttributeDrop(&table, 1);
  EXPECT_EQ(table.entries, nullptr);
  AttributeSet(&table, 5, 6);
  AttributeClear(&table);
  EXPECT_FALSE(AttributeHas(&table, 5));
}

// ---- Records ------------------------------------------------------------------------------------------------------

struct Triple {
  uint8_t bytes[3];
};

TEST(RecordArrays, GrowByTheirStepAsSoonAsTheyAreFull) {
  RecordArray array;
  RecordArrayInit(&array, sizeof(Triple), 2);
  EXPECT_EQ(array.capacity, 2);
  for (uint8_t i = 0; i < 5; ++i) {
    Triple triple = {{i, i, i}};
    RecordArrayAppend(&array, &triple);
    EXPECT_EQ(array.count, i + 1);
    EXPECT_EQ(array.capacity, (array.count / 2 + 1) * 2);
  }
  Triple wanted = {{3, 3, 3}};
  EXPECT_EQ(RecordArrayFind(&array, &wanted), 3);
  RecordArrayRemoveAt(&array, 1);
  EXPECT_EQ(RecordArrayFind(&array, &wanted), 2);
  EXPECT_EQ(static_cast<Triple*>(RecordArrayAt(&array, 3))->bytes[2], 4);
  EXPECT_EQ(RecordArrayAt(&array, 4), nullptr);
  RecordArrayRemoveAt(&array, 4);
  EXPECT_EQ(array.count, 4);
  wanted.bytes[0] = 9;
  EXPECT_EQ(RecordArrayFind(&array, &wanted), -1);
  RecordArrayFree(&array);
}

TEST(RecordArrays, StopAtTheEndOfTheirCount) {
  RecordArray array;
  RecordArrayInit(&array, sizeof(uint32_t), 40'000);
  for (uint32_t i = 0; i < 70'000; ++i) RecordArrayAppend(&array, &i);
  EXPECT_EQ(array.count, UINT16_MAX);
  uint32_t last = 0;
  std::memcpy(&last, RecordArrayAt(&array, UINT16_MAX - 1), sizeof last);
  EXPECT_EQ(last, 65'534u);
  RecordArrayFree(&array);
}

} // namespace
} // namespace framereel
