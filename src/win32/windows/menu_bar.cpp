// The rows of titles in a frame, measured whenever somebody asks: they follow from the menu and the window's width.
#include "win32/windows/menu_bar.h"

#include <algorithm>

#include "win32/drawing/contexts.h"
#include "win32/drawing/mnemonics.h"
#include "win32/drawing/relief.h"
#include "win32/drawing/system_colours.h"
#include "win32/pixels/rectangles.h"
#include "win32/pixels/scale.h"
#include "win32/win32_menus.h"
#include "win32/win32_windows.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr Scaled kTitleSide{7}, kTitleMargin{2}; // round a title's text

bool IsMarked(const Win32Window& window, size_t title) {
  return TheWindows().menuOwner == &window && TheWindows().markedTitle == int32_t(title);
}

void DrawTitle(HDC context, const MenuEntry& item, const PixelRect& place, bool marked) {
  const COLORREF ground = ::GetSysColor(marked ? kColourHighlight : COLOR_MENU);
  const COLORREF ink = ::GetSysColor(marked ? kColourHighlightText : kColourMenuText);
  if (marked) FillPixels(context, place, ground);
  DrawMnemonicText(context, place.left + kTitleSide, place.top + kTitleMargin, MnemonicTextOf(item.text),
                   item.flags & MF_GRAYED, ground, Legible(context, ink, ground));
}

} // namespace

bool HasMenuBar(const Win32Window& window) {
  return window.menuBar && !window.menuBar->items.empty() && Has(window, WS_CAPTION) && !window.parent &&
         !window.minimised;
}

std::vector<PixelRect> MenuTitlePlaces(const Win32Window& window, const PixelRect& bar) {
  std::vector<PixelRect> places;
  if (!HasMenuBar(window)) return places;
  HDC context = NewContext();
  const int32_t height = LineHeight(context) + 2 * kTitleMargin;
  int32_t x = bar.left, y = bar.top;
  for (const MenuEntry& item : window.menuBar->items) {
    const int32_t width = TextWidth(context, MnemonicTextOf(item.text).shown) + 2 * kTitleSide;
    if (x > bar.left && x + width > bar.right) {
      x = bar.left;
      y += height;
    }
    places.push_back({x, y, std::max(x, std::min(x + width, bar.right)), y + height});
    x += width;
  }
  FreeContext(context);
  return places;
}

int32_t MenuBarHeight(const Win32Window& window, int32_t width) {
  const std::vector<PixelRect> places = MenuTitlePlaces(window, {0, 0, width, 0});
  return places.empty() ? 0 : places.back().bottom;
}

void DrawMenuTitles(HDC context, const Win32Window& window, const PixelRect& bar) {
  FillPixels(context, bar, ::GetSysColor(COLOR_MENU));
  const std::vector<PixelRect> places = MenuTitlePlaces(window, bar);
  for (size_t i = 0; i < places.size(); ++i) {
    DrawTitle(context, window.menuBar->items[i], places[i], IsMarked(window, i));
  }
}

} // namespace framereel
