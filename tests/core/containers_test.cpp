// The list and its cursor, arrays under random operations beside a plain twin, and listeners.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/arrays.h"
#include "core/list.h"
#include "core/memory.h"
#include "core/notices.h"
#include "support/dice.h"
#include "support/script.h"

namespace framereel {
namespace {

using Values = std::vector<ListValue>;

// ---- The list -----------------------------------------------------------------------------------------------------

bool IsAbove(ListValue argument, ListValue value) {
  return value > argument;
}

// The values, with the cursor's in brackets, and "|" where it is off the list.
std::string Shown(const List* list) {
  std::string text;
  const ListNode* previous = nullptr;
  for (const ListNode* node = list->first; node; previous = node, node = node->next) {
    EXPECT_EQ(node->previous, previous);
    text += Text(' ', node == list->cursor ? Text('[', node->value, ']') : Text(node->value));
  }
  EXPECT_EQ(list->last, previous);
  return text + (list->cursor ? "" : " |");
}

TEST(Lists, AnswerWithTheCursorOnWhatWasMeant) {
  List* list = ListNew();
  static Values drained;
  const std::pair<std::function<ListValue()>, const char*> steps[] = {
      {[=] { return ListFirst(list) + ListLast(list) + ListNext(list) + ListRemove(list); }, "0 |"},
      {[=] { return ListAppendHandle(list, 3)->value; }, "3 [3]"},
      {[=] { return ListAppend(list, 0), ListAppend(list, 5), ListCount(list); }, "3 3 0 [5]"},
      {[=] { return ListNext(list); }, "0 3 0 5 |"},
      {[=] { return ListNext(list); }, "3 [3] 0 5"},
      {[=] { return ListNext(list); }, "0 3 [0] 5"},
      {[=] { return ListRemove(list); }, "0 3 [5]"},
      {[=] { return ListAppend(list, 4), ListFirst(list); }, "3 [3] 5 4"},
      {[=] { return ListLast(list); }, "4 3 5 [4]"},
      {[=] { return ListFind(list, 3, IsAbove); }, "1 3 [5] 4"},
      {[=] { return ListFindRemove(list, 5, IsAbove); }, "0 3 5 4 |"},
      {[=] { return ListRemove(list) + ListFind(list, 9, IsAbove); }, "0 3 5 4 |"},
      {[=] { return ListRemoveHandle(list, list->first->next); }, "5 3 [4]"},
      {[=] { return ListRemoveHandle(list, nullptr); }, "0 3 4 |"},
      {[=] { return ListFindRemove(list, 3, IsAbove); }, "4 3 |"},
      {[=] { return ListRemoveHandle(list, list->first); }, "3 |"},
      {[=] { return ListAppend(list, 1), ListAppend(list, 2), ListCount(list); }, "2 1 [2]"},
      {[=] { return ListDrain(list, [](ListValue value) { drained.push_back(value); }), drained[0]; }, "1 |"},
  };
  for (const auto& [act, brings] : steps) {
    const ListValue answer = act();
    EXPECT_EQ(Text(answer, Shown(list)), brings);
  }
  EXPECT_EQ(drained, Values({1, 2}));
  for (const ListValue value : {1, 2}) ListAppend(list, value);
  ListDelete(list);
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
  EXPECT_EQ(*static_cast<uint32_t*>(RecordArrayAt(&records, UINT16_MAX - 1)), 65'534u);
  EXPECT_EQ(RecordArrayAt(&records, UINT16_MAX), nullptr);
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
