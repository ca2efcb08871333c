// Numbers, places and titles.
#include "record/aimed_window.h"

#include <algorithm>

#include "platform/display/display_caps.h"
#include "recorder/engine/recorder_core.h"
#include "win32/win32_windows.h"

namespace framereel {

namespace {

BOOL ListWindow(HWND window, LPARAM to) {
  RECT place;
  const DisplayCaps& screen = TheDisplayCaps();
  if (!::GetWindowRect(window, &place)) return TRUE;
  if (place.right <= 0 || place.bottom <= 0 || place.left >= screen.screenWidth || place.top >= screen.screenHeight) {
    return TRUE;
  }
  char title[4096];
  ::GetWindowTextA(window, title, sizeof title);
  Refusal shown; // one line, whatever the title holds
  Refuse(shown, "%s", title);
  fprintf(reinterpret_cast<FILE*>(to), "0x%x\t%d,%d %dx%d\t%s\n", ::HandleToULong(window), place.left, place.top,
          place.right - place.left, place.bottom - place.top, shown.text);
  return TRUE;
}

} // namespace

bool FindNumberedWindow(uint32_t number, HWND* window, WantedArea* area, Refusal& refusal) {
  *window = ::ULongToHandle(number);
  if (!*window || !::IsWindow(*window)) return Refuse(refusal, "there is no window 0x%x", number);
  RECT place;
  if (!::GetWindowRect(*window, &place)) {
    return Refuse(refusal, "the window 0x%x cannot be seen; it may be minimised", number);
  }
  *area = {place.left, place.top, place.right - place.left, place.bottom - place.top};
  return true;
}

void AimBegin(AimedWindow& aimed, RecorderState& recorder, HWND window) {
  aimed = {&recorder, window, 0, 0};
  RECT place = {};
  ::GetWindowRect(window, &place);
  aimed.left = recorder.captureArea.left - place.left;
  aimed.top = recorder.captureArea.top - place.top;
}

bool AimFollow(AimedWindow& aimed) {
  if (!::IsWindow(aimed.window)) return false;
  RECT place;
  if (!::GetWindowRect(aimed.window, &place)) return true;
  const Rect& area = aimed.recorder->captureArea;
  const DisplayCaps& screen = TheDisplayCaps();
  const int32_t mostLeft = std::max(screen.screenWidth - (area.right - area.left), 0);
  const int32_t mostTop = std::max(screen.screenHeight - (area.bottom - area.top), 0);
  const auto left = int16_t(std::clamp(place.left + aimed.left, 0, mostLeft));
  const auto top = int16_t(std::clamp(place.top + aimed.top, 0, mostTop));
  if (left != area.left || top != area.top) RecorderMoveArea(*aimed.recorder, left, top);
  return true;
}

void ListWindows(FILE* to) {
  ::EnumWindows(ListWindow, reinterpret_cast<LPARAM>(to));
}

} // namespace framereel
