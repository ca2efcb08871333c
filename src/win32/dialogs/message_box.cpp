// Message boxes: dialogs that are laid out round their text.
#include <algorithm>
#include <initializer_list>

#include "win32/controls/control_base.h"
#include "win32/controls/static.h"
#include "win32/dialogs/dialog.h"
#include "win32/drawing/contexts.h"
#include "win32/drawing/relief.h"
#include "win32/pixels/rectangles.h"
#include "win32/pixels/scale.h"
#include "win32/win32_controls.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_drawing.h"
#include "win32/win32_windows.h"
#include "win32/windows/screen_room.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

constexpr Scaled kMargin{12}, kGap{8};               // around everything, and between neighbours
constexpr Scaled kButtonWidth{80}, kButtonMargin{5}; // the margin above and below a button's text
constexpr int32_t kStoredSide = 32;                  // of a picture
constexpr int kTextId = 0xFFFF;
constexpr int kMostButtons = 3;

struct ButtonKind {
  int id;
  const char* text;
};
constexpr ButtonKind kOk = {IDOK, "OK"}, kCancel = {IDCANCEL, "Cancel"}, kAbort = {IDABORT, "&Abort"},
                     kRetry = {IDRETRY, "&Retry"}, kIgnore = {IDIGNORE, "&Ignore"}, kYes = {IDYES, "&Yes"},
                     kNo = {IDNO, "&No"}, kNone = {0, nullptr};

// By the low four bits of the flags.
constexpr ButtonKind kButtons[][kMostButtons] = {
    {kOk, kNone, kNone},  {kOk, kCancel, kNone}, {kAbort, kRetry, kIgnore},
    {kYes, kNo, kCancel}, {kYes, kNo, kNone},    {kRetry, kCancel, kNone},
};
constexpr UINT kButtonBits = 0xF, kPictureBits = 0xF0, kDefaultBits = 0x300;

const ButtonKind (&ButtonsOf(UINT flags))[kMostButtons] {
  const UINT kind = flags & kButtonBits;
  return kButtons[kind < std::size(kButtons) ? kind : MB_OK];
}

// The number of the bitmap resource; 0 for none.
WORD PictureOf(UINT flags) {
  switch (flags & kPictureBits) {
  case MB_ICONHAND:
    return 4128;
  case MB_ICONASTERISK:
    return 4129;
  case MB_ICONEXCLAMATION:
    return 4130;
  case MB_ICONQUESTION:
    return 4131;
  default:
    return 0;
  }
}

// What Escape and the close box answer; 0 for nothing.
int EscapeOf(UINT flags) {
  const ButtonKind(&buttons)[kMostButtons] = ButtonsOf(flags);
  for (const int way : {IDCANCEL, IDNO}) {
    for (const ButtonKind& button : buttons) {
      if (button.id == way) return way;
    }
  }
  return buttons[1].id ? 0 : buttons[0].id;
}

int32_t PictureSide() {
  return kStoredSide * PictureScale();
}

// ---- The layout --------------------------------------------------------------------------------------------------

std::string WithLineEnds(const char* text) {
  std::string lines;
  for (const char* at = text ? text : ""; *at; ++at) {
    if (*at == '\n') lines += '\r';
    if (*at != '\r') lines += *at;
  }
  return lines;
}

// Text that is not much wider than high and leaves the screen free around it.
SIZE TextSize(HDC context, const std::string& text, const PixelRect& room) {
  const int32_t widest = WidthOf(room) * 3 / 4;
  for (int32_t width = std::min<int32_t>(Scaled(400), widest);; width = std::min(widest, width * 3 / 2)) {
    const SIZE size = WrappedTextSize(context, text.c_str(), width);
    if (size.cy <= HeightOf(room) / 2 || width == widest) return size;
  }
}

void AddText(DialogPlan* plan, const std::string& text, SIZE size, int32_t left) {
  const int32_t top = kMargin + (left > kMargin ? std::max(0, (PictureSide() - size.cy) / 2) : 0);
  constexpr DWORD style = WS_CHILD | WS_VISIBLE | SS_NOPREFIX;
  plan->controls.push_back({kTextId, "static", text, {left, top, left + size.cx, top + size.cy}, style});
  plan->width = left + size.cx + kMargin;
  plan->height = std::max(top + size.cy, left > kMargin ? kMargin + PictureSide() : 0) + kGap + kMargin;
}

// In the middle below all else, which they may make wider.
void AddButtons(DialogPlan* plan, UINT flags, int32_t lineHeight) {
  const ButtonKind(&buttons)[kMostButtons] = ButtonsOf(flags);
  const auto count = int32_t(std::count_if(std::begin(buttons), std::end(buttons), [](auto b) { return b.id != 0; }));
  const int32_t height = lineHeight + 2 * kButtonMargin, row = count * kButtonWidth + (count - 1) * kGap;
  plan->width = std::max(plan->width, row + 2 * kMargin);
  const auto wanted = int32_t((flags & kDefaultBits) / MB_DEFBUTTON2);
  int32_t left = (plan->width - row) / 2;
  for (int32_t i = 0; i < count; ++i) {
    const DWORD kind = i == (wanted < count ? wanted : 0) ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    const PixelRect place = {left, plan->height, left + kButtonWidth, plan->height + height};
    plan->controls.push_back({buttons[i].id, "button", buttons[i].text, place,
                              WS_CHILD | WS_VISIBLE | WS_TABSTOP | (i == 0 ? WS_GROUP : 0) | kind});
    left += kButtonWidth + kGap;
  }
  plan->height += height + kMargin;
}

DialogPlan PlanOf(const char* text, const char* title, UINT flags, const PixelRect& room) {
  DialogPlan plan = {};
  plan.title = title ? title : "";
  plan.style = WS_POPUP | WS_CAPTION | WS_SYSMENU;
  plan.centred = true;
  plan.font = DialogFont("MS Sans Serif", 8);
  const std::string lines = WithLineEnds(text);
  HDC context = NewContext();
  ::SelectObject(context, plan.font.get());
  const int32_t textLeft = kMargin + (PictureOf(flags) ? PictureSide() + kMargin : 0);
  AddText(&plan, lines, TextSize(context, lines, room), textLeft);
  AddButtons(&plan, flags, LineHeight(context));
  FreeContext(context);
  return plan;
}

// ---- The procedure -----------------------------------------------------------------------------------------------

UINT FlagsOf(HWND box) {
  return UINT(box->userData);
}

void DrawPicture(HWND box) {
  PAINTSTRUCT paint;
  HDC context = ::BeginPaint(box, &paint);
  HBITMAP picture = ::LoadBitmapA(nullptr, MAKEINTRESOURCEA(PictureOf(FlagsOf(box))));
  HDC from = ::CreateCompatibleDC(context);
  const HGDIOBJ before = ::SelectObject(from, picture);
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
  ::SetTextColor(context, Legible(context, RGB(0, 0, 0), face));
  ::SetBkColor(context, face);
  const int32_t side = PictureSide();
  if (picture) ::StretchBlt(context, kMargin, kMargin, side, side, from, 0, 0, kStoredSide, kStoredSide, SRCCOPY);
  ::SelectObject(from, before);
  ::DeleteDC(from);
  ::DeleteObject(picture);
  ::EndPaint(box, &paint);
}

// The default button has the keyboard from the start.
void BeginAt(HWND box) {
  DialogState* state = DialogStateOf(box);
  state->focus = ::GetDlgItem(box, state->defaultId);
}

intptr_t BoxProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_INITDIALOG:
    box->userData = lParam;
    BeginAt(box);
    ::MessageBeep(FlagsOf(box));
    return TRUE;
  case WM_PAINT:
    DrawPicture(box);
    return TRUE;
  case WM_COMMAND: {
    const int id = LOWORD(wParam), answer = id == IDCANCEL ? EscapeOf(FlagsOf(box)) : id;
    if (HIWORD(wParam) == BN_CLICKED && answer) ::EndDialog(box, answer);
    return TRUE;
  }
  default:
    return FALSE;
  }
}

// ---- Above what --------------------------------------------------------------------------------------------------

// The window that the user is at work in or, while he is elsewhere, would come back to: popups and covers come and go.
HWND OwnerFor(HWND owner) {
  if (IsLive(owner)) return TopLevelOf(owner);
  const WindowSystem& system = TheWindows();
  const auto serves = [](HWND window) {
    const WindowRole role = window->top->role;
    return (role == WindowRole::kMain || role == WindowRole::kDialog) && Has(*window, WS_VISIBLE) && !IsGoing(window);
  };
  if (system.active && serves(system.active)) return system.active;
  const auto found = std::find_if(system.topLevels.begin(), system.topLevels.end(),
                                  [&](HWND window) { return serves(window) && IsEnabled(window); });
  return found == system.topLevels.end() ? nullptr : *found;
}

} // namespace
} // namespace framereel

using namespace framereel;

int MessageBoxA(HWND owner, const char* text, const char* title, UINT flags) {
  if (!DisplayOpen()) return 0;
  const HWND over = OwnerFor(owner);
  const PixelRect room = RoomAround(over ? PlaceOnScreen(*over) : PixelRect{0, 0, 0, 0});
  const bool ofTask = flags & MB_TASKMODAL;
  const std::vector<HWND> disabled = ofTask ? TheWindows().topLevels : std::vector<HWND>{over};
  const intptr_t answer = RunDialog(PlanOf(text, title, flags, room), over, disabled, BoxProcedure, LPARAM(flags));
  return answer < 0 ? EscapeOf(flags) : int(answer);
}
