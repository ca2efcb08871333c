// Every change goes through ListAppendHandle and ListRemove.
#include "core/list.h"

#include "core/memory.h"

namespace framereel {

namespace {

ListValue MoveTo(List* list, ListNode* node) {
  list->cursor = node;
  return node ? node->value : 0;
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

void ListAppend(List* list, ListValue value) {
  ListAppendHandle(list, value);
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

bool ListFind(List* list, ListValue argument, ListPredicate predicate) {
  ListFirst(list);
  while (list->cursor && !predicate(argument, list->cursor->value)) ListNext(list);
  return list->cursor != nullptr;
}

ListValue ListFindRemove(List* list, ListValue argument, ListPredicate predicate) {
  return ListFind(list, argument, predicate) ? ListRemove(list) : 0;
}

bool ListSameValue(ListValue argument, ListValue value) {
  return argument == value;
}

ListHandle ListAppendHandle(List* list, ListValue value) {
  auto* node = static_cast<ListNode*>(MemAlloc(sizeof(ListNode)));
  list->cursor = node;
  if (!node) return nullptr; // only while the program ends for want of memory
  *node = {value, nullptr, list->last};
  (list->last ? list->last->next : list->first) = node;
  list->last = node;
  ++list->count;
  return node;
}

ListValue ListRemoveHandle(List* list, ListHandle handle) {
  list->cursor = handle;
  return ListRemove(list);
}

} // namespace framereel
