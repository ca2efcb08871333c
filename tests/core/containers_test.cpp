// The list and the arrays under random operations, each beside a plain twin: contents and answers are the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "core/arrays.h"
#include "core/list.h"
#include "core/memory.h"
#include "core/notices.h"
#include "support/dice.h"

namespace framereel {
namespace {

using Values = std::vector<ListValue>;

// ---- The list -----------------------------------------------------------------------------------------------------

bool IsAbove(ListValue argument, ListValue value) {
  return value > argument;
}

Values drained;

class TwinList : public testing::Test {
protected:
  ~TwinList() override { ListDelete(list); }

  using Place = std::list<ListValue>::iterator;
  ListValue MoveTo(Place place) {
    cursor = place;
    return place == twin.end() ? 0 : *place;
  }
  ListValue Remove() {
    const ListValue value = MoveTo(cursor);
    if (cursor != twin.end()) cursor = twin.erase(cursor);
    return value;
  }
  bool FindAbove(ListValue value) {
    cursor = std::find_if(twin.begin(), twin.end(), [value](ListValue each) { return each > value; });
    return cursor != twin.end();
  }

  // `place` is that of the node.
  void Step(int operation, ListValue v, Place place, ListHandle node) {
    const Place end = twin.end();
    ListValue answer = 0, expected = 0;
    if (operation == 0) answer = ListFirst(list), expected = MoveTo(twin.begin());
    if (operation == 1) answer = ListLast(list), expected = MoveTo(twin.empty() ? end : std::prev(end));
    if (operation == 2) answer = ListNext(list), expected = MoveTo(cursor == end ? twin.begin() : std::next(cursor));
    if (operation == 3) ListAppend(list, v), cursor = twin.insert(end, v);
    if (operation == 4) answer = ListAppendHandle(list, v)->value, expected = v, cursor = twin.insert(end, v);
    if (operation == 5) answer = ListFind(list, v, IsAbove), expected = FindAbove(v);
    if (operation == 6) answer = ListFindRemove(list, v, IsAbove), expected = FindAbove(v) ? Remove() : 0;
    if (operation == 7) answer = ListRemove(list), expected = Remove();
    if (operation == 8) answer = ListRemoveHandle(list, node), MoveTo(place), expected = Remove();
    ASSERT_EQ(answer, expected);
  }

  void Check() {
    ASSERT_EQ(ListCount(list), twin.size());
    const ListNode *previous = nullptr, *node = list->first;
    for (Place place = twin.begin(); place != twin.end(); ++place) {
      ASSERT_TRUE(node->value == *place && node->previous == previous && (list->cursor == node) == (cursor == place));
      previous = std::exchange(node, node->next);
    }
    ASSERT_TRUE(node == nullptr && list->last == previous && (list->cursor == nullptr) == (cursor == twin.end()));
  }

  List* list = ListNew();
  std::list<ListValue> twin;
  Place cursor = twin.end();
};

TEST_F(TwinList, IsAsItsTwinAndIsDrainedInOrder) {
  Dice dice(1);
  for (int step = 0; step < 20'000; ++step) {
    const int operation = dice.Below(9);
    Place place = twin.begin();
    ListHandle node = list->first;
    for (int i = dice.Below(int(twin.size()) + 1); i > 0; --i) ++place, node = node->next;
    Step(operation, dice.Below(6), place, node); // with equal values, and with 0
    Check();
    ASSERT_FALSE(HasFailure()) << "operation " << operation << ", step " << step;
    if (!dice.OneIn(300)) continue;
    drained.clear();
    ListDrain(list, [](ListValue value) { drained.push_back(value); });
    ASSERT_EQ(drained, Values(twin.begin(), twin.end()));
    twin.clear();
    cursor = twin.end();
  }
}

// ---- The arrays ---------------------------------------------------------------------------------------------------

// The last one equal to the value; -1 when there is none.
int32_t LastOf(const Values& values, ListValue value) {
  return int32_t(std::find(values.rbegin(), values.rend(), value).base() - values.begin()) - 1;
}

TEST(Arrays, AreAsTheirTwins) {
  GrowArray words = {};
  RecordArray records;
  RecordArrayInit(&records, sizeof(ListValue), 2);
  Values twin;
  size_t most = 0;
  Dice dice(2);
  for (int step = 0; step < 5000; ++step) {
    const ListValue value = dice.Below(4);
    const int32_t size = int32_t(twin.size()), last = LastOf(twin, value);
    ASSERT_EQ(GrowArrayFind(&words, value), last);
    ASSERT_EQ(RecordArrayFind(&records, &value), last);
    const int32_t any = dice.Below(size + 3), place = std::min(any, size); // past the end, too
    GrowArrayInsert(&words, uint16_t(any), value);
    ASSERT_EQ(words.entries[place], value);
    GrowArrayRemoveAt(&words, uint16_t(place));
    const int operation = dice.Below(4);
    const int32_t gone = operation == 0 ? last : any;
    if (operation == 0) GrowArrayRemove(&words, value);
    if (operation == 1) GrowArrayRemoveAt(&words, uint16_t(any));
    if (operation <= 1) RecordArrayRemoveAt(&records, uint16_t(gone));
    if (operation <= 1 && gone >= 0 && gone < size) twin.erase(twin.begin() + gone);
    if (operation >= 2) twin.push_back(value), RecordArrayAppend(&records, &value);
    ASSERT_TRUE(operation <= 1 || GrowArrayAdd(&words, value) == twin.size());
    most = std::max(most, twin.size());
    const auto* block = reinterpret_cast<ListValue*>(records.block);
    ASSERT_EQ(Values(words.entries, words.entries + words.count), twin) << "step " << step;
    ASSERT_EQ(Values(block, block + records.count), twin) << "step " << step;
    ASSERT_EQ(words.entries == nullptr, twin.empty());
    ASSERT_EQ(records.capacity, (most / 2 + 1) * 2) << "it grows by its step as soon as it is full";
    ASSERT_EQ(RecordArrayAt(&records, uint16_t(any)), size_t(any) < twin.size() ? block + any : nullptr);
  }
  MemFree(words.entries);
  RecordArrayFree(&records);
}

TEST(Arrays, StayAsTheyAreAtTheEndOfTheirCount) {
  GrowArray words = {UINT16_MAX - 1, static_cast<ListValue*>(MemAlloc((UINT16_MAX - 1) * sizeof(ListValue)))};
  words.entries[0] = 1;
  for (const ListValue value : {2, -1}) EXPECT_EQ(GrowArrayAdd(&words, value), UINT16_MAX);
  GrowArrayInsert(&words, 0, -1);
  EXPECT_EQ(words.entries[0] + words.entries[UINT16_MAX - 1], 3);
  MemFree(words.entries);
  RecordArray records;
  RecordArrayInit(&records, sizeof(uint32_t), 40'000);
  for (uint32_t i = 0; i < 70'000; ++i) RecordArrayAppend(&records, &i);
  EXPECT_EQ(records.count, UINT16_MAX);
  EXPECT_EQ(*static_cast<uint32_t*>(RecordArrayAt(&records, UINT16_MAX - 1)), 65'534u);
  RecordArrayFree(&records);
}

// ---- Listeners ----------------------------------------------------------------------------------------------------

// Listeners have letters. "+a" adds one, "-a" removes the last of that letter, "!" all, and ">" sends.
Notifier notifier = {};
std::map<char, std::string> does; // when a listener is told for the first time
std::string told;

void Act(const std::string& deeds);

void Hear(intptr_t, void* letter) {
  told += *static_cast<char*>(letter);
  Act(std::exchange(does[told.back()], ""));
}

void Act(const std::string& deeds) {
  static char letters[] = "abcd";
  for (size_t i = 0; i < deeds.size(); ++i) {
    char* next = &letters[i + 1 < deeds.size() ? (deeds[i + 1] - 'a') & 3 : 0];
    if (deeds[i] == '+') NotifierAdd(&notifier, Hear, next);
    if (deeds[i] == '-') NotifierRemove(&notifier, Hear, next);
    if (deeds[i] == '!') NotifierClear(&notifier);
    if (deeds[i] == '>') told += "(", NotifierSend(&notifier, 0), told += ")";
  }
}

TEST(Notifiers, TellEachListenerThatStoodAndStandsOnceFromTheLastOn) {
  const struct {
    const char *deeds, *b, *c, *tells;
  } cases[] = {
      {"+a+b+c>-d>", "", "", "(cba)(cba)"}, {"+a+b+a-a>", "", "", "(ba)"},       {"+a+b+c>", "-b", "", "(cba)"},
      {"+a+b+c>", "", "-b", "(ca)"},        {"+a+b+c>", "-c", "", "(cba)"},      {"+a+b+c>>", "+d", "", "(cba)(dcba)"},
      {"+a+b+c>", "!", "", "(cb)"},         {"+a+b+c>", "!+d+d+d", "", "(cb)"},  {"+a+b+c>", "", "-b+b", "(ca)"},
      {"+a+b+c>", ">", "", "(cb(cba)a)"},   {"+a+b+c>", "-a", "-c>", "(c(b)b)"}, {"+a+b+c>", "", ">-b", "(c(cba)a)"},
      {"+a+b+c>", "-b", ">", "(c(cba)a)"},
  };
  for (const auto& one : cases) {
    does = {{'b', one.b}, {'c', one.c}};
    told.clear();
    Act(one.deeds);
    Act("!");
    EXPECT_EQ(told, one.tells) << one.deeds << " b: " << one.b << " c: " << one.c;
  }
}

} // namespace
} // namespace framereel
