// How a window comes into being, and how it goes.
#include "win32/windows/create.h"

#include <algorithm>
#include <new>

#include "win32/pixels/cursor.h"
#include "win32/pixels/presenter.h"
#include "win32/win32_windows.h"
#include "win32/windows/activation.h"
#include "win32/windows/classes.h"
#include "win32/windows/message_queue.h"
#include "win32/windows/placement.h"
#include "win32/windows/presenting.h"
#include "win32/windows/screen_changes.h"
#include "win32/windows/sending.h"
#include "win32/windows/window_contexts.h"
#include "win32/windows/window_surfaces.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

WindowRole RoleOf(const Win32Window& window) {
  const bool topmost = window.extendedStyle & WS_EX_TOPMOST, captioned = Has(window, WS_CAPTION);
  if (!window.windowClass->background && topmost && !captioned) return WindowRole::kCover;
  if (!window.owner && !Has(window, WS_POPUP)) return WindowRole::kMain;
  if (!topmost) return WindowRole::kDialog;
  return captioned ? WindowRole::kPalette : WindowRole::kPopup;
}

PixelRect FirstPlace(DWORD style, int x, int y, int width, int height) {
  const bool overlapped = !(style & (WS_POPUP | WS_CHILD));
  const ScreenFacts screen = DisplayScreen();
  if (x == CW_USEDEFAULT) x = y = overlapped ? screen.width / 8 : 0;
  if (width == CW_USEDEFAULT) {
    width = overlapped ? screen.width / 2 : 0;
    height = overlapped ? screen.height / 2 : 0;
  }
  return {x, y, x + std::max(width, 0), y + std::max(height, 0)};
}

HWND NewRecord(WindowClass* windowClass, DWORD style, DWORD extendedStyle, const char* title, HWND parent) {
  auto record = std::make_unique<Win32Window>();
  record->windowClass = windowClass;
  record->procedure = windowClass->procedure;
  record->style = style & ~WS_VISIBLE;
  record->extendedStyle = extendedStyle;
  record->title = title ? title : "";
  if (style & WS_CHILD) {
    record->parent = parent;
  } else {
    record->owner = TopLevelOf(parent);
  }
  HWND window = record.get();
  TheWindows().windows.push_back(std::move(record));
  return window;
}

bool OpenOnDisplay(HWND window) {
  window->top = std::make_unique<TopLevel>();
  window->top->role = RoleOf(*window);
  DisplayWindow* owner = window->owner ? window->owner->top->shown.display : nullptr;
  ShownSurface& shown = window->top->shown;
  shown.display = DisplayNewWindow({window->top->role, DisplayPlace(*window), owner, window->title.c_str()});
  if (!shown.display) return false;
  if (HICON icon = window->windowClass->icon) DisplayIconWindow(shown.display, icon->sizes);
  TheWindows().shown.push_back(&shown);
  ShowPointerOn(&shown, window->windowClass->cursor);
  return true;
}

// Joins the tree; false when the display has no window to give.
bool Join(HWND window) {
  SiblingsOf(window).insert(SiblingsOf(window).begin(), window);
  if (window->parent) return true;
  if (!OpenOnDisplay(window)) return false;
  Restack(window, true);
  return true;
}

// Takes the record out of everything that knows it. It stays in memory until nobody can be working on it.
void Forget(HWND window) {
  WindowSystem& system = TheWindows();
  ForgetContexts(window);
  ReleaseFrom(window);
  if (system.active == window) system.active = nullptr;
  std::vector<HWND>& siblings = SiblingsOf(window);
  siblings.erase(std::remove(siblings.begin(), siblings.end(), window), siblings.end());
  ForgetQueued(window);
  if (window->top) FreeShown(&window->top->shown);
  const auto place = std::find_if(system.windows.begin(), system.windows.end(),
                                  [=](const auto& live) { return live.get() == window; });
  system.destroyed.push_back(std::move(*place));
  system.windows.erase(place);
}

bool Creates(HWND window, const PixelRect& asked) {
  window->place = window->client = asked;
  if (!Join(window)) return false;
  window->place = window->client = LimitedPlace(window, asked);
  if (!IsLive(window) || !Send(window, WM_NCCREATE, 0, 0) || !IsLive(window)) return false;
  const PixelRect client = ClientFor(window, window->place);
  if (!IsLive(window)) return false;
  window->client = client;
  window->normalPlace = window->place;
  if (window->top) {
    DisplayPlaceWindow(window->top->shown.display, DisplayPlace(*window));
    if (!FitSurface(window)) return false;
  }
  return Send(window, WM_CREATE, 0, 0) != -1 && IsLive(window);
}

void DestroyTree(HWND window) {
  Send(window, WM_DESTROY, 0, 0);
  while (IsLive(window) && !window->children.empty()) DestroyTree(window->children.front());
  if (!IsLive(window)) return;
  Send(window, WM_NCDESTROY, 0, 0);
  if (IsLive(window)) Forget(window);
}

void DestroyOwned(HWND owner) {
  const std::vector<HWND> topLevels = TheWindows().topLevels;
  for (HWND window : topLevels) {
    if (IsLive(window) && IsLive(owner) && window->owner == owner) ::DestroyWindow(window);
  }
}

} // namespace

void ForgetAllWindows() {
  WindowSystem& system = TheWindows();
  for (const auto& held : system.contexts) held->given = false;
  FreeContexts();
  for (HWND window : system.topLevels) FreeShown(&window->top->shown);
  system = {};
}

} // namespace framereel

using namespace framereel;

HWND CreateWindowExA(DWORD extendedStyle, const char* className, const char* title, DWORD style, int x, int y,
                     int width, int height, HWND parent, HMENU menu, HINSTANCE, void*) {
  WindowClass* windowClass = ClassNamed(className);
  const bool childless = style & WS_CHILD && !IsLive(parent);
  if (!windowClass || childless || (parent && !IsLive(parent)) || !DisplayOpen()) return nullptr;
  NoteScreen();
  PresentWindowsBy(PresentAll);
  HWND window = NewRecord(windowClass, style, extendedStyle, title, parent);
  window->id = reinterpret_cast<LONG_PTR>(menu);
  if (!Creates(window, FirstPlace(style, x, y, width, height))) {
    if (IsLive(window)) Forget(window);
    return nullptr;
  }
  if (style & WS_VISIBLE) ::ShowWindow(window, SW_SHOW);
  return IsLive(window) ? window : nullptr;
}

BOOL DestroyWindow(HWND window) {
  if (!IsLive(window) || window->beingDestroyed) return FALSE;
  window->beingDestroyed = true;
  if (window->top) DestroyOwned(window);
  if (IsLive(window) && window->top) ActivateNextOf(window);
  if (IsLive(window)) SetVisible(window, false);
  if (IsLive(window)) ReleaseFrom(window);
  if (IsLive(window)) DestroyTree(window);
  // Contexts are kept for the next window, and there is none.
  if (TheWindows().windows.empty()) FreeContexts();
  return TRUE;
}
