// Registering the classes; the numbered ones by the program's own strings.
#include "platform/windows/window_classes.h"

#include "core/memory.h"
#include "core/strings.h"
#include "core/text_format.h"
#include "core/text_scan.h"
#include "win32/win32_input.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"

namespace framereel {
namespace {

constexpr UINT kClassRangeString = 102, kClassDigitsString = 103;
constexpr WORD kMainIcon = 1;
constexpr WORD kIconsOfNewShell = 10; // the icons for windows of the newer kind of system begin so much higher

struct NumberedClass {
  char* name; // owned
  uint16_t cursorCell;
};

struct ClassState {
  uint16_t first, last; // ids
  NumberedClass* numbered;
  uint16_t plainCell;
  NumberedClass* selected;
};

ClassState state;

HBRUSH SystemBrush(int colour) {
  return reinterpret_cast<HBRUSH>(intptr_t{colour + 1});
}

WNDCLASSA ChildClass(HINSTANCE instance, WNDPROC procedure, const char* name) {
  WNDCLASSA what = {};
  what.lpfnWndProc = procedure;
  what.hInstance = instance;
  what.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  what.hbrBackground = SystemBrush(COLOR_WINDOW);
  what.lpszClassName = name;
  return what;
}

void RegisterMainClass(HINSTANCE instance, WNDPROC procedure) {
  WNDCLASSA what = {};
  what.style = CS_VREDRAW | CS_HREDRAW | CS_OWNDC;
  what.lpfnWndProc = procedure;
  what.hInstance = instance;
  what.hIcon = ::LoadIconA(instance, MAKEINTRESOURCEA(kMainIcon));
  if (!what.hIcon) what.hIcon = ::LoadIconA(nullptr, IDI_APPLICATION);
  what.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  what.hbrBackground = SystemBrush(COLOR_APPWORKSPACE);
  what.lpszClassName = kMainWindowClass;
  ::RegisterClassA(&what);
}

void RegisterNumberedClass(HINSTANCE instance, WNDPROC procedure, uint16_t index, bool erased) {
  NumberedClass* numbered = &state.numbered[index];
  WNDCLASSA what = ChildClass(instance, procedure, numbered->name);
  what.hIcon = ::LoadIconA(instance, MAKEINTRESOURCEA(WORD(state.first + index + kIconsOfNewShell)));
  if (!erased) what.hbrBackground = nullptr;
  ::RegisterClassA(&what);
}

void ReadClassRange() {
  char range[32];
  int16_t first = 200, last = 200;
  if (::LoadStringA(nullptr, kClassRangeString, range, sizeof range)) ScanText(range, "%ds% %ds%", &first, &last);
  state.first = uint16_t(first);
  state.last = uint16_t(last < first ? first : last);
}

// The records outlive PlatformShutdown: the platform's classes do, and they are the same at the next start.
void MakeNumberedRecords(uint16_t count) {
  if (state.numbered) return;
  state.numbered = static_cast<NumberedClass*>(MemAlloc(count * sizeof(NumberedClass)));
  for (uint16_t i = 0; i < count; ++i) {
    char name[32];
    FormatInto(name, "JChildWindow-%d%", uint32_t{i});
    state.numbered[i] = {StrDup(name), 0};
  }
}

} // namespace

void RegisterWindowClasses(HINSTANCE instance, WNDPROC mainProcedure, WNDPROC childProcedure) {
  ReadClassRange();
  const auto count = uint16_t(state.last - state.first + 1);
  MakeNumberedRecords(count);
  const WNDCLASSA plain = ChildClass(instance, childProcedure, "JChildWindow");
  ::RegisterClassA(&plain);
  RegisterMainClass(instance, mainProcedure);
  char digits[64];
  const int length = ::LoadStringA(nullptr, kClassDigitsString, digits, sizeof digits);
  for (uint16_t i = 0; i < count; ++i) {
    const int digit = i < length ? digits[i] - '0' : 0;
    RegisterNumberedClass(instance, childProcedure, i, digit % 2 == 0);
  }
}

void SelectWindowClass(uint16_t id) {
  if (id >= state.first && id <= state.last) state.selected = &state.numbered[id - state.first];
}

ChildWindowClass TakeSelectedWindowClass() {
  NumberedClass* selected = state.selected;
  state.selected = nullptr;
  if (!selected) return {"JChildWindow", &state.plainCell};
  return {selected->name, &selected->cursorCell};
}

} // namespace framereel
