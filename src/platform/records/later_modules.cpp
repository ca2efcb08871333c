// The record as it is until somebody fills it in.
#include "platform/records/later_modules.h"

namespace framereel {

LaterModules& TheLaterModules() {
  static LaterModules modules = {
      .menuShortcut = [](const KeyEvent&) { return false; },
      .blockMenus = [](bool) {},
      .endEditSession = [](const KeyEvent*) {},
      .isEditedThere = [](const ChildWindow*, int16_t, int16_t) { return false; },
  };
  return modules;
}

} // namespace framereel
