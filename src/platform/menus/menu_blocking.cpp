// Greying the menus of the bar, and giving them back.
#include "platform/menus/menu_blocking.h"

#include "core/strings.h"
#include "platform/menus/edit_menu.h"
#include "platform/menus/menu_listeners.h"
#include "platform/menus/menus.h"
#include "platform/menus/platform_menus.h"
#include "platform/records/later_modules.h"

namespace framereel {
namespace {

bool blocked;

void Block(Menu* menu) {
  const char* spared = EditMenuTitle();
  if (!(menu->flags & kMenuEnabled) || (spared && StrEqual(menu->title, spared))) return;
  menu->flags |= kMenuBlocked;
  SetMenuEnabled(menu, false);
}

void Unblock(Menu* menu) {
  if (!(menu->flags & kMenuBlocked)) return;
  menu->flags &= ~kMenuBlocked;
  SetMenuEnabled(menu, true);
}

void OnMenuChange(intptr_t subject, void*) {
  const auto& change = *reinterpret_cast<const MenuChange*>(subject);
  if (change.kind != MenuChangeKind::kMenu) return;
  auto* menu = static_cast<Menu*>(change.object);
  if (menu->parent != CurrentMenuBar()) return;
  (change.code == MenuChangeCode::kInserted ? Block : Unblock)(menu);
}

} // namespace

void BlockMenus(bool block) {
  if (blocked == block) return;
  blocked = block;
  if (block) {
    AddMenuListener(OnMenuChange, nullptr);
  } else {
    RemoveMenuListener(OnMenuChange, nullptr);
  }
  const MenuBar* bar = CurrentMenuBar();
  for (uint16_t i = bar ? bar->menus.count : uint16_t{0}; i-- > 0;) (block ? Block : Unblock)(MenuAt(bar, i));
}

void MenuBlockingStartUp() {
  blocked = false;
  TheLaterModules().blockMenus = BlockMenus;
}

} // namespace framereel
