// The toolkit's one general container: a doubly linked list with a cursor inside it.
//
// The cursor is part of the list, so two walks of one list at one time disturb each other; each operation says what
// it does to it. Small counted arrays stand in arrays.h.
#pragma once

#include <cstdint>

namespace framereel {

// What a list holds: a number or a pointer. What a pointer leads to is the caller's.
using ListValue = intptr_t;

template <typename T> ListValue ToListValue(T* pointer) {
  return reinterpret_cast<ListValue>(pointer);
}
template <typename T> T* FromListValue(ListValue value) {
  return reinterpret_cast<T*>(value);
}

struct ListNode {
  ListValue value;
  ListNode *next, *previous;
};

struct List {
  ListNode *first, *last; // null when empty
  ListNode* cursor;       // null: off the list
  uint16_t count;         // wraps past 65,535; no operation depends on it
};

// A node as seen from outside: good until that node is removed. Null stands for the place off the list.
using ListHandle = ListNode*;

using ListFunction = void (*)(ListValue value);
using ListPredicate = bool (*)(ListValue argument, ListValue value);

// An empty list; the caller ends it with ListDelete, or with ListFree once it is empty.
List* ListNew();
uint16_t ListCount(const List* list);

// These move the cursor and answer the value that it then stands on, or 0 when it is off the list. Since 0 may be a
// value, the answer 0 tells the end only to a caller that stores no 0.
ListValue ListFirst(List* list); // onto the first node
ListValue ListLast(List* list);  // onto the last node
ListValue ListNext(List* list);  // one forward; from off the list onto the first node

// A new last node, and the cursor onto it.
void ListAppend(List* list, ListValue value);

// Removes the node under the cursor and answers its value; the cursor moves to the node behind it, off the list
// when there is none. Off the list it does nothing and answers 0.
ListValue ListRemove(List* list);

// Frees the record only: for a list that is empty.
void ListFree(List* list);
// From the first node on, removes each value and hands it to the function, which may change the list. The record
// stays.
void ListDrain(List* list, ListFunction function);
// Removes all values and frees the record.
void ListDelete(List* list);

// The first value for which predicate(argument, value) holds: true with the cursor on it, else false with the cursor
// off the list.
bool ListFind(List* list, ListValue argument, ListPredicate predicate);
// ListFind, then ListRemove; the value, or 0 when nothing was found.
ListValue ListFindRemove(List* list, ListValue argument, ListPredicate predicate);
// The predicate of the common search: true when the two words are equal.
bool ListSameValue(ListValue argument, ListValue value);

// The same as ListAppend, answering the new node.
ListHandle ListAppendHandle(List* list, ListValue value);
// Sets the cursor, then ListRemove.
ListValue ListRemoveHandle(List* list, ListHandle handle);

} // namespace framereel
