// The record as it is until somebody fills it in.
#include "platform/records/later_modules.h"

namespace framereel {

LaterModules& TheLaterModules() {
  static LaterModules modules = {
      [] {}, [](uint16_t) {}, [](const KeyEvent&) { return false; }, [](bool) {}, [](const KeyEvent*) {},
  };
  return modules;
}

} // namespace framereel
