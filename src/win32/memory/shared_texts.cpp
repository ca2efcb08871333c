// The texts that the programs on the desktop in memory share.
#include "win32/memory/memory_display.h"

namespace framereel {

void DisplayShareText(SharedText which, std::string_view text) {
  TheMemoryDesktop().sharedTexts[size_t(which)] = text;
}

std::string DisplaySharedText(SharedText which) {
  return TheMemoryDesktop().sharedTexts[size_t(which)];
}

bool DisplayHasSharedText(SharedText which) {
  return !DisplaySharedText(which).empty();
}

} // namespace framereel
