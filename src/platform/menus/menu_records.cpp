// The lists of all bars, menus and items, and the numbers by which the platform knows menus and items.
#include "platform/menus/menu_records.h"

#include "core/memory.h"
#include "core/strings.h"
#include "win32/win32_menus.h"

namespace framereel {
namespace {

struct MenuRecords {
  List *bars, *menus, *items;
  GrowArray freeIds; // below lastId
  uint32_t lastId;
};

MenuRecords state;

uint32_t TakeId() {
  if (state.freeIds.count == 0) return ++state.lastId;
  const uint16_t last = uint16_t(state.freeIds.count - 1);
  const auto id = uint32_t(state.freeIds.entries[last]);
  GrowArrayRemoveAt(&state.freeIds, last);
  return id;
}

void GiveBackId(uint32_t id) {
  if (id == state.lastId) {
    --state.lastId;
  } else {
    GrowArrayAdd(&state.freeIds, ListValue(id));
  }
}

template <typename Record> Record* NewRecord(List* list) {
  auto* record = static_cast<Record*>(MemAlloc(sizeof(Record)));
  *record = {};
  record->node = ListAppendHandle(list, ToListValue(record));
  return record;
}

} // namespace

bool IsSeparator(const MenuItem* item) {
  return StrEqual(item->text, "-");
}

MenuItem* NewItemRecord(const char* text) {
  auto* item = NewRecord<MenuItem>(state.items);
  item->text = StrDup(text);
  item->id = TakeId();
  return item;
}

Menu* NewMenuRecord(const char* title) {
  auto* menu = NewRecord<Menu>(state.menus);
  menu->title = StrDup(title);
  menu->flags = kMenuWants;
  menu->popup = ::CreatePopupMenu();
  menu->id = TakeId();
  return menu;
}

MenuBar* NewBarRecord() {
  auto* bar = NewRecord<MenuBar>(state.bars);
  bar->platformMenu = ::CreateMenu();
  return bar;
}

void DeleteItemRecord(MenuItem* item) {
  ListRemoveHandle(state.items, item->node);
  GiveBackId(item->id);
  StrFree(item->text);
  MemFree(item);
}

void DeleteMenuRecord(Menu* menu) {
  ListRemoveHandle(state.menus, menu->node);
  GiveBackId(menu->id);
  ::DestroyMenu(menu->popup);
  StrFree(menu->title);
  MemFree(menu);
}

void DeleteBarRecord(MenuBar* bar) {
  ListRemoveHandle(state.bars, bar->node);
  ::DestroyMenu(bar->platformMenu);
  MemFree(bar);
}

MenuItem* AnyItemRecord() {
  return FromListValue<MenuItem>(ListFirst(state.items));
}

Menu* AnyMenuRecord() {
  return FromListValue<Menu>(ListFirst(state.menus));
}

MenuBar* AnyBarRecord() {
  return FromListValue<MenuBar>(ListFirst(state.bars));
}

void MenuRecordsStartUp() {
  state = {};
  state.bars = ListNew();
  state.menus = ListNew();
  state.items = ListNew();
}

void MenuRecordsShutDown() {
  ListFree(state.bars);
  ListFree(state.menus);
  ListFree(state.items);
  while (state.freeIds.count > 0) GrowArrayRemoveAt(&state.freeIds, 0);
  state = {};
}

} // namespace framereel
