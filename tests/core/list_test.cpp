// The list and what each operation does to its cursor.
#include "core/list.h"

#include <gtest/gtest.h>
#include <vector>

namespace framereel {
namespace {

using Values = std::vector<ListValue>;

class ListTest : public ::testing::Test {
protected:
  List* list = ListNew();

  ~ListTest() override { ListDelete(list); }

  void Fill(const Values& values) {
    for (ListValue value : values) ListAppend(list, value);
  }

  // What stands in the list, without touching its cursor, after a look at all links and the count.
  Values Contents() {
    Values values;
    const ListNode* previous = nullptr;
    for (const ListNode* node = list->first; node; previous = node, node = node->next) {
      EXPECT_EQ(node->previous, previous);
      values.push_back(node->value);
    }
    EXPECT_EQ(list->last, previous);
    EXPECT_EQ(ListCount(list), values.size());
    return values;
  }
};

TEST_F(ListTest, AWalkStartsOffTheListAndEndsThere) {
  EXPECT_EQ(ListNext(list), 0);
  Fill({1, 2, 3});
  ListSeek(list, nullptr);
  for (const ListValue value : {1, 2, 3, 0, 1}) EXPECT_EQ(ListNext(list), value);
  ListSeek(list, nullptr);
  for (const ListValue value : {3, 2, 1, 0, 3}) EXPECT_EQ(ListPrev(list), value);
  EXPECT_EQ(ListFirst(list), 1);
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
  ListSeek(list, nullptr); // off the list, the ends are taken
  ListInsertAfter(list, 6);
  ListSeek(list, nullptr);
  ListInsertBefore(list, -1);
  EXPECT_EQ(Contents(), (Values{-1, 0, 1, 2, 3, 4, 5, 6}));
}

TEST_F(ListTest, RemovingMovesTheCursorToTheNodeBehind) {
  EXPECT_EQ(ListRemove(list), 0);
  Fill({1, 2, 3});
  ListPrev(list);
  EXPECT_EQ(ListRemove(list), 2);
  EXPECT_EQ(ListCurrent(list), 3);
  EXPECT_EQ(ListRemove(list), 3);
  EXPECT_EQ(list->cursor, nullptr);
  EXPECT_EQ(ListReplace(list, 9), 0);
  EXPECT_EQ(Contents(), Values{1});
  ListFirst(list);
  EXPECT_EQ(ListReplace(list, 7), 1);
  EXPECT_EQ(ListRemove(list), 7);
  EXPECT_EQ(Contents(), Values{});
}

TEST_F(ListTest, FindingStopsOnTheMatchOrOffTheList) {
  EXPECT_EQ(ListFindRemove(list, 0, ListSameValue), 0);
  Fill({5, 6, 5});
  EXPECT_TRUE(ListFind(list, 5, ListSameValue));
  EXPECT_EQ(list->cursor, list->first);
  ListNext(list);
  EXPECT_TRUE(ListFindFrom(list, 5, ListSameValue));
  EXPECT_EQ(list->cursor, list->last);
  EXPECT_FALSE(ListFind(list, 9, ListSameValue));
  EXPECT_EQ(list->cursor, nullptr);
  EXPECT_FALSE(ListFindFrom(list, 5, ListSameValue));
  auto isAbove = [](ListValue argument, ListValue value) { return value > argument; };
  EXPECT_EQ(ListFindRemove(list, 5, isAbove), 6);
  EXPECT_EQ(Contents(), (Values{5, 5}));
}

TEST_F(ListTest, HandlesOutliveChangesElsewhere) {
  ListHandle one = ListAppendHandle(list, 1);
  ListHandle two = ListAppendHandle(list, 2);
  ListPrepend(list, 0);
  EXPECT_EQ(ListSeek(list, two), 2);
  EXPECT_EQ(ListNodeHandle(list), two);
  EXPECT_EQ(ListRemoveHandle(list, one), 1);
  EXPECT_EQ(ListCurrent(list), 2);
  EXPECT_EQ(Contents(), (Values{0, 2}));
}

TEST_F(ListTest, DrainingHandsOverEachValueOnceInOrder) {
  static Values drained;
  auto note = [](ListValue value) { drained.push_back(value); };
  ListDrain(list, note);
  Fill({3, 0, 1});
  ListDrain(list, note);
  EXPECT_EQ(drained, (Values{3, 0, 1}));
  EXPECT_EQ(Contents(), Values{});
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
