// Every change goes through InsertBetween and ListRemove.
#include "core/list.h"

#include "core/memory.h"

namespace framereel {

namespace {

void InsertBetween(List* list, ListNode* previous, ListNode* next, ListValue value) {
  auto* node = static_cast<ListNode*>(MemAlloc(sizeof(ListNode)));
  list->cursor = node;
  if (!node) return; // only while the program ends for want of memory
  *node = {value, next, previous};
  (previous ? previous->next : list->first) = node;
  (next ? next->previous : list->last) = node;
  ++list->count;
}

ListValue MoveTo(List* list, ListNode* node) {
  list->cursor = node;
  return ListCurrent(list);
}

} // namespace

List* ListNew() {
  auto* list = static_cast<List*>(MemAlloc(sizeof(List)));
  if (list) *list = {nullptr, nullptr, nullptr, 0};
  return list;
}

uint16_t ListCount(const List* list) {
  return list->count;
}

ListValue ListFirst(List* list) {
  return MoveTo(list, list->first);
}

ListValue ListLast(List* list) {
  return MoveTo(list, list->last);
}

ListValue ListNext(List* list) {
  return MoveTo(list, list->cursor ? list->cursor->next : list->first);
}

ListValue ListCurrent(const List* list) {
  return list->cursor ? list->cursor->value : 0;
}

void ListInsertAfter(List* list, ListValue value) {
  ListNode* previous = list->cursor ? list->cursor : list->last;
  InsertBetween(list, previous, previous ? previous->next : nullptr, value);
}

void ListInsertBefore(List* list, ListValue value) {
  ListNode* next = list->cursor ? list->cursor : list->first;
  InsertBetween(list, next ? next->previous : nullptr, next, value);
}

void ListAppend(List* list, ListValue value) {
  ListLast(list);
  ListInsertAfter(list, value);
}

void ListPrepend(List* list, ListValue value) {
  ListFirst(list);
  ListInsertBefore(list, value);
}

ListValue ListRemove(List* list) {
  ListNode* node = list->cursor;
  if (!node) return 0;
  (node->previous ? node->previous->next : list->first) = node->next;
  (node->next ? node->next->previous : list->last) = node->previous;
  list->cursor = node->next;
  --list->count;
  ListValue value = node->value;
  MemFree(node);
  return value;
}

void ListFree(List* list) {
  MemFree(list);
}

void ListDrain(List* list, ListFunction function) {
  while (list->first) {
    ListFirst(list);
    function(ListRemove(list));
  }
}

void ListDelete(List* list) {
  while (list->first) {
    ListFirst(list);
    ListRemove(list);
  }
  ListFree(list);
}

bool ListFindFrom(List* list, ListValue argument, ListPredicate predicate) {
  while (list->cursor && !predicate(argument, list->cursor->value)) ListNext(list);
  return list->cursor != nullptr;
}

bool ListFind(List* list, ListValue argument, ListPredicate predicate) {
  ListFirst(list);
  return ListFindFrom(list, argument, predicate);
}

ListValue ListFindRemove(List* list, ListValue argument, ListPredicate predicate) {
  return ListFind(list, argument, predicate) ? ListRemove(list) : 0;
}

bool ListSameValue(ListValue argument, ListValue value) {
  return argument == value;
}

ListHandle ListNodeHandle(const List* list) {
  return list->cursor;
}

ListValue ListSeek(List* list, ListHandle handle) {
  return MoveTo(list, handle);
}

ListHandle ListAppendHandle(List* list, ListValue value) {
  ListAppend(list, value);
  return ListNodeHandle(list);
}

ListValue ListRemoveHandle(List* list, ListHandle handle) {
  ListSeek(list, handle);
  return ListRemove(list);
}

} // namespace framereel
