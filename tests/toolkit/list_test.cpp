// The list and what each operation does to its cursor.
#include "toolkit/core/list.h"

#include <gtest/gtest.h>
#include <vector>

namespace framereel {
namespace {

class ListTest : public ::testing::Test {
protected:
  List* list = ListNew();

  ~ListTest() override { ListDelete(list); }

  void Fill(const std::vector<ListValue>& values) {
    for (ListValue value : values) ListAppend(list, value);
  }

  // What stands in the list, without touching its cursor, after a look at all links and the count.
  std::vector<ListValue> Values() {
    std::vector<ListValue> values;
    const ListNode* previous = nullptr;
    for (const ListNode* node = list->first; node; node = node->next) {
      EXPECT_EQ(node->previous, previous);
      values.push_back(node->value);
      previous = node;
    }
    EXPECT_EQ(list->last, previous);
    EXPECT_EQ(ListCount(list), values.size());
    return values;
  }
};

using Numbers = std::vector<ListValue>;

TEST_F(ListTest, AWalkCanStartWithNextAndEndsOffTheList) {
  Fill({1, 2, 3});
  ListSeek(list, nullptr);
  EXPECT_EQ(ListNext(list), 1);
  EXPECT_EQ(ListNext(list), 2);
  EXPECT_EQ(ListNext(list), 3);
  EXPECT_EQ(ListNext(list), 0);
  EXPECT_EQ(ListCurrent(list), 0);
  EXPECT_EQ(ListNext(list), 1);
}

TEST_F(ListTest, AWalkBackStartsAtTheLastNode) {
  Fill({1, 2});
  ListSeek(list, nullptr);
  EXPECT_EQ(ListPrev(list), 2);
  EXPECT_EQ(ListPrev(list), 1);
  EXPECT_EQ(ListPrev(list), 0);
  EXPECT_EQ(ListFirst(list), 1);
  EXPECT_EQ(ListLast(list), 2);
}

TEST_F(ListTest, AnEmptyListAnswersZeroToEverything) {
  EXPECT_EQ(ListFirst(list), 0);
  EXPECT_EQ(ListLast(list), 0);
  EXPECT_EQ(ListNext(list), 0);
  EXPECT_EQ(ListPrev(list), 0);
  EXPECT_EQ(ListRemove(list), 0);
  EXPECT_EQ(ListReplace(list, 5), 0);
  EXPECT_EQ(ListFindRemove(list, 0, ListSameValue), 0);
  EXPECT_EQ(ListCount(list), 0);
}

TEST_F(ListTest, InsertingPutsTheCursorOnTheNewNode) {
  ListInsertAfter(list, 2);
  ListInsertBefore(list, 1);
  EXPECT_EQ(ListCurrent(list), 1);
  ListLast(list);
  ListInsertAfter(list, 4);
  ListInsertBefore(list, 3);
  EXPECT_EQ(ListCurrent(list), 3);
  ListPrepend(list, 0);
  EXPECT_EQ(list->cursor, list->first);
  ListAppend(list, 5);
  EXPECT_EQ(ListCurrent(list), 5);
  EXPECT_EQ(Values(), (Numbers{0, 1, 2, 3, 4, 5}));
}

TEST_F(ListTest, InsertingOffTheListGoesToItsEnds) {
  Fill({2});
  ListSeek(list, nullptr);
  ListInsertAfter(list, 3);
  ListSeek(list, nullptr);
  ListInsertBefore(list, 1);
  EXPECT_EQ(Values(), (Numbers{1, 2, 3}));
}

TEST_F(ListTest, RemovingMovesTheCursorToTheNodeBehind) {
  Fill({1, 2, 3});
  ListFirst(list);
  ListNext(list);
  EXPECT_EQ(ListRemove(list), 2);
  EXPECT_EQ(ListCurrent(list), 3);
  EXPECT_EQ(ListRemove(list), 3);
  EXPECT_EQ(list->cursor, nullptr);
  EXPECT_EQ(Values(), Numbers{1});
  ListFirst(list);
  EXPECT_EQ(ListRemove(list), 1);
  EXPECT_EQ(list->first, nullptr);
  EXPECT_EQ(list->last, nullptr);
  EXPECT_EQ(list->cursor, nullptr);
}

TEST_F(ListTest, ReplacingKeepsTheNode) {
  Fill({1, 2});
  ListHandle handle = ListNodeHandle(list);
  EXPECT_EQ(ListReplace(list, 7), 2);
  EXPECT_EQ(ListNodeHandle(list), handle);
  EXPECT_EQ(Values(), (Numbers{1, 7}));
}

TEST_F(ListTest, FindingStopsOnTheMatchOrOffTheList) {
  Fill({5, 6, 5});
  EXPECT_TRUE(ListFind(list, 5, ListSameValue));
  EXPECT_EQ(list->cursor, list->first);
  ListNext(list);
  EXPECT_TRUE(ListFindFrom(list, 5, ListSameValue));
  EXPECT_EQ(list->cursor, list->last);
  EXPECT_FALSE(ListFind(list, 9, ListSameValue));
  EXPECT_EQ(list->cursor, nullptr);
  EXPECT_FALSE(ListFindFrom(list, 5, ListSameValue));
  EXPECT_EQ(ListFindRemove(list, 6, ListSameValue), 6);
  EXPECT_EQ(Values(), (Numbers{5, 5}));
}

TEST_F(ListTest, ThePredicateGetsTheArgumentFirst) {
  Fill({1, 5, 9});
  auto isAbove = [](ListValue argument, ListValue value) { return value > argument; };
  EXPECT_TRUE(ListFind(list, 4, isAbove));
  EXPECT_EQ(ListCurrent(list), 5);
}

TEST_F(ListTest, HandlesOutliveChangesElsewhere) {
  ListHandle one = ListAppendHandle(list, 1);
  ListHandle two = ListAppendHandle(list, 2);
  ListPrepend(list, 0);
  EXPECT_EQ(ListSeek(list, two), 2);
  EXPECT_EQ(ListRemoveHandle(list, one), 1);
  EXPECT_EQ(ListCurrent(list), 2);
  EXPECT_EQ(Values(), (Numbers{0, 2}));
}

std::vector<ListValue> drained;

TEST_F(ListTest, DrainingHandsOverEachValueOnceInOrder) {
  drained.clear();
  auto note = [](ListValue value) { drained.push_back(value); };
  ListDrain(list, note);
  EXPECT_TRUE(drained.empty());
  Fill({3, 0, 1});
  ListDrain(list, note);
  EXPECT_EQ(drained, (Numbers{3, 0, 1}));
  EXPECT_EQ(ListCount(list), 0);
}

TEST_F(ListTest, MoreValuesThanTheCountHoldsAreAllThere) {
  constexpr ListValue kMany = 65'537;
  for (ListValue value = 1; value <= kMany; ++value) ListAppend(list, value);
  EXPECT_EQ(ListCount(list), 1);
  ListValue seen = 0;
  for (ListValue value = ListFirst(list); value; value = ListNext(list)) seen = value;
  EXPECT_EQ(seen, kMany);
}

} // namespace
} // namespace framereel
