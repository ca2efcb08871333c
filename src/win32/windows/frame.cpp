// The frame that this layer draws round windows: border, caption, system menu button, minimise and close boxes, and the
// strip for the bar of menus.
//
// A window with a caption has a raised border and a caption with a line under it; below that stands
// its bar of menus, if it has one (menu_bar.h). One with a border alone has a black line. What presses on the frame do
// is told in frame_mouse.cpp.
#include "win32/windows/frame.h"

#include <algorithm>
#include <string>

#include "win32/drawing/fitted_text.h"
#include "win32/drawing/relief.h"
#include "win32/drawing/system_colours.h"
#include "win32/pixels/rectangles.h"
#include "win32/pixels/scale.h"
#include "win32/win32_drawing.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"
#include "win32/windows/menu_bar.h"
#include "win32/windows/window_contexts.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr Scaled kEdge{3};      // the raised border
constexpr Scaled kCaption{18};  // the coloured strip
constexpr Scaled kUnderline{1}; // between it and the client area
constexpr Scaled kBoxWidth{16}, kBoxHeight{14}, kBoxGap{2};

// Signs on the boxes: rows from the top, the leftmost pixel in the top bit.
constexpr uint8_t kCross[] = {0xC3, 0x66, 0x3C, 0x18, 0x3C, 0x66, 0xC3};
constexpr uint8_t kBar[] = {0x00, 0x00, 0x00, 0x00, 0x00, 0x7E, 0x7E};
constexpr uint8_t kWindowSign[] = {0xFF, 0xFF, 0x81, 0x81, 0x81, 0x81, 0xFF}; // back from a caption alone
constexpr uint8_t kMenuSign[] = {0x00, 0x00, 0xFF, 0x81, 0xFF, 0x00, 0x00};
constexpr int32_t kSignWidth = 8, kSignHeight = 7;

bool HasCaption(const Win32Window& window) {
  return Has(window, WS_CAPTION);
}

void DrawSign(HDC context, const PixelRect& box, const uint8_t* sign, int32_t shift) {
  const int32_t side = PictureScale();
  const int32_t left = box.left + (WidthOf(box) - kSignWidth * side) / 2 + shift;
  const int32_t top = box.top + (HeightOf(box) - kSignHeight * side) / 2 + shift;
  for (int32_t y = 0; y < kSignHeight; ++y) {
    for (int32_t x = 0; x < kSignWidth; ++x) {
      const int32_t atX = left + x * side, atY = top + y * side;
      const bool set = sign[y] >> (7 - x) & 1;
      if (set) FillPixels(context, {atX, atY, atX + side, atY + side}, ::GetSysColor(kColourButtonText));
    }
  }
}

void DrawBox(HDC context, const PixelRect& box, const uint8_t* sign, bool pressed) {
  if (IsEmpty(box)) return;
  DrawRaised(context, box, pressed);
  DrawSign(context, box, sign, pressed ? PictureScale() : 0);
}

// The strip of the caption, in a window at the given place.
PixelRect CaptionStrip(const PixelRect& place) {
  return {place.left + kEdge, place.top + kEdge, place.right - kEdge,
          std::min(place.top + kEdge + kCaption, place.bottom - kEdge)};
}

PixelRect MenuBarStrip(const Win32Window& window, const PixelRect& place) {
  const int32_t left = place.left + kEdge, right = place.right - kEdge;
  const int32_t top = place.top + kEdge + kCaption + kUnderline;
  return {left, top, right, top + MenuBarHeight(window, right - left)};
}

// A box in the caption, the first or second from the right.
PixelRect BoxFromRight(const PixelRect& strip, int32_t number) {
  const int32_t right = strip.right - kBoxGap - number * (kBoxWidth + kBoxGap);
  return {right - kBoxWidth, strip.top + kBoxGap, right, strip.top + kBoxGap + kBoxHeight};
}

PixelRect Part(const Win32Window& window, const PixelRect& place, int hit) {
  const PixelRect strip = CaptionStrip(place);
  const PixelRect none = {0, 0, 0, 0};
  if (!HasCaption(window)) return none;
  switch (hit) {
  case HTCAPTION:
    return strip;
  case HTMENU:
    return MenuBarStrip(window, place);
  case HTSYSMENU:
    return Has(window, WS_SYSMENU) ? PixelRect{strip.left + kBoxGap, strip.top + kBoxGap,
                                               strip.left + kBoxGap + kBoxWidth, strip.top + kBoxGap + kBoxHeight}
                                   : none;
  case HTCLOSE:
    return Has(window, WS_SYSMENU) ? BoxFromRight(strip, 0) : none;
  case HTMINBUTTON:
    return Has(window, WS_MINIMIZEBOX) ? BoxFromRight(strip, Has(window, WS_SYSMENU) ? 1 : 0) : none;
  default:
    return none;
  }
}

bool IsPressed(const Win32Window& window, int hit) {
  const WindowSystem& system = TheWindows();
  const bool menu = hit == HTSYSMENU && system.menuOwner == &window && system.markedTitle == kSystemMenuTitle;
  return menu || (system.pressedWindow == &window && system.pressedBox == hit);
}

void DrawTitle(HDC context, const Win32Window& window, const PixelRect& place, COLORREF stripColour) {
  const PixelRect strip = CaptionStrip(place);
  int32_t left = strip.left + 2 * kBoxGap, right = strip.right - kBoxGap;
  for (const int box : {HTCLOSE, HTMINBUTTON}) {
    const PixelRect part = Part(window, place, box);
    if (!IsEmpty(part)) right = std::min(right, part.left - kBoxGap);
  }
  if (Has(window, WS_SYSMENU)) left += kBoxWidth + kBoxGap;
  const COLORREF text = ::GetSysColor(window.captionLit ? kColourCaptionText : kColourInactiveCaptionText);
  ::SetTextColor(context, Legible(context, text, stripColour));
  ::SetBkMode(context, TRANSPARENT);
  ::SetTextAlign(context, 0);
  const std::string title = FittedText(context, window.title, right - left, TextCut::kEnd);
  ::TextOutA(context, left, strip.top + (kCaption - LineHeight(context)) / 2, title.data(), int(title.size()));
}

// Where the screen has too few colours for a light edge, a window would have none against another one.
int OuterEdge(HDC context) {
  const COLORREF light = ::GetNearestColor(context, ::GetSysColor(COLOR_3DLIGHT));
  return light == ::GetNearestColor(context, ::GetSysColor(COLOR_BTNFACE)) ? kColourButtonDarkShadow : COLOR_3DLIGHT;
}

void DrawCaptioned(HDC context, const Win32Window& window, const PixelRect& place) {
  FillPixels(context, place, ::GetSysColor(COLOR_BTNFACE));
  DrawEdge(context, place, OuterEdge(context), kColourButtonDarkShadow);
  DrawEdge(context, Shrunk(place, kThinLine), kColourButtonHighlight, COLOR_BTNSHADOW);
  const COLORREF strip = ::GetSysColor(window.captionLit ? COLOR_ACTIVECAPTION : kColourInactiveCaption);
  FillPixels(context, CaptionStrip(place), strip);
  DrawTitle(context, window, place, strip);
  DrawBox(context, Part(window, place, HTSYSMENU), kMenuSign, IsPressed(window, HTSYSMENU));
  DrawBox(context, Part(window, place, HTMINBUTTON), window.minimised ? kWindowSign : kBar,
          IsPressed(window, HTMINBUTTON));
  DrawBox(context, Part(window, place, HTCLOSE), kCross, IsPressed(window, HTCLOSE));
  DrawMenuTitles(context, window, Part(window, place, HTMENU));
}

} // namespace

PixelRect ClientInside(const Win32Window& window, const PixelRect& place) {
  if (HasCaption(window)) {
    const PixelRect bar = MenuBarStrip(window, place);
    return {bar.left, bar.bottom, bar.right, place.bottom - kEdge};
  }
  return Shrunk(place, Has(window, WS_BORDER) ? int32_t{kThinLine} : 0);
}

PixelRect FramePart(const Win32Window& window, int hit) {
  return Part(window, PlaceOnScreen(window), hit);
}

int HitTest(const Win32Window& window, int32_t x, int32_t y) {
  if (Holds(ClientOnScreen(window), x, y)) return HTCLIENT;
  for (const int hit : {HTCLOSE, HTMINBUTTON, HTSYSMENU, HTCAPTION, HTMENU}) {
    if (Holds(FramePart(window, hit), x, y)) return hit;
  }
  return Holds(PlaceOnScreen(window), x, y) ? HTBORDER : HTNOWHERE;
}

void PaintFrame(HWND window) {
  window->frameDirty = false;
  if (TopLevelOf(window)->top->role == WindowRole::kCover) return;
  WindowContext* held = BeginContext(window, true);
  const PixelRect place = {0, 0, WidthOf(window->place), HeightOf(window->place)};
  if (HasCaption(*window)) {
    DrawCaptioned(held->context, *window, place);
  } else if (Has(*window, WS_BORDER)) {
    DrawEdge(held->context, place, COLOR_WINDOWFRAME, COLOR_WINDOWFRAME);
  }
  EndContext(held);
}

} // namespace framereel
