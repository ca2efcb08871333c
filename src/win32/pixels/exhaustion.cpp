// The process's new-handler is called as a failed new would call it.
#include "win32/pixels/exhaustion.h"

#include <cstdlib>
#include <new>

namespace framereel {

void EndWithoutMemory() {
  if (const std::new_handler handler = std::get_new_handler()) handler();
  std::abort();
}

} // namespace framereel
