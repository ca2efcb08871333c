#include "win32/window_scene.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <vector>

#include "win32/pixels/rectangles.h"
#include "win32/windows/create.h"
#include "win32/windows/window.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

struct Scene {
  std::vector<std::pair<std::string, std::string>> log; // the name of each message, and its line
  std::map<UINT, Handler> handlers;
  std::map<HWND, COLORREF> colours;
};

Scene& TheScene() {
  static Scene scene;
  return scene;
}

using Names = std::vector<std::pair<UINT, const char*>>;
#define NAMED(name) std::pair(UINT(WM_##name), #name)

// The log tells nothing of these but their names.
const Names kPlain = {NAMED(CREATE),        NAMED(DESTROY),  NAMED(SETFOCUS),   NAMED(KILLFOCUS),
                      NAMED(PAINT),         NAMED(CLOSE),    NAMED(ERASEBKGND), NAMED(WININICHANGE),
                      NAMED(GETMINMAXINFO), NAMED(NCCREATE), NAMED(NCDESTROY),  NAMED(CAPTURECHANGED)};
// Of these a place or a size.
const Names kPlaced = {NAMED(MOVE), NAMED(SIZE), NAMED(DISPLAYCHANGE), NAMED(NCCALCSIZE), NAMED(WINDOWPOSCHANGED)};
// Of these wParam.
const Names kNumbered = {NAMED(ACTIVATE), NAMED(ENABLE),     NAMED(SHOWWINDOW), NAMED(ACTIVATEAPP), NAMED(NCACTIVATE),
                         NAMED(KEYDOWN),  NAMED(KEYUP),      NAMED(CHAR),       NAMED(SYSKEYDOWN),  NAMED(SYSKEYUP),
                         NAMED(SYSCHAR),  NAMED(SYSCOMMAND), NAMED(ENTERIDLE)};
// Of these wParam and the point.
const Names kMouse = {NAMED(NCMOUSEMOVE), NAMED(NCLBUTTONDOWN), NAMED(NCLBUTTONUP), NAMED(MOUSEMOVE),
                      NAMED(LBUTTONDOWN), NAMED(LBUTTONUP),     NAMED(RBUTTONDOWN), NAMED(RBUTTONUP),
                      NAMED(MBUTTONDOWN), NAMED(MBUTTONUP),     NAMED(MOUSEWHEEL),  NAMED(LBUTTONDBLCLK)};
// Of this the control's id and its notice.
const Names kCommand = {NAMED(COMMAND)};
#undef NAMED

// Null when the message is none of them.
const char* NameIn(const Names& names, UINT message) {
  for (const auto& [number, name] : names) {
    if (number == message) return name;
  }
  return nullptr;
}

std::string NameOf(UINT message) {
  for (const Names* names : {&kPlain, &kPlaced, &kNumbered, &kMouse, &kCommand}) {
    if (const char* name = NameIn(*names, message)) return name;
  }
  return std::to_string(message);
}

// What the log tells behind the name.
std::string DetailOf(UINT message, WPARAM wParam, LPARAM lParam) {
  const int low = SHORT(LOWORD(uintptr_t(lParam))), high = SHORT(HIWORD(uintptr_t(lParam)));
  std::ostringstream text;
  if (NameIn(kNumbered, message)) text << ' ' << wParam;
  if (NameIn(kMouse, message)) text << ' ' << wParam << " at " << low << ',' << high;
  if (message == WM_COMMAND) text << ' ' << LOWORD(wParam) << ':' << HIWORD(wParam);
  if (message == WM_MOVE) text << ' ' << low << ',' << high;
  if (message == WM_SIZE || message == WM_DISPLAYCHANGE) text << ' ' << wParam << ' ' << low << 'x' << high;
  if (message == WM_NCCALCSIZE) {
    const RECT& r = *reinterpret_cast<const RECT*>(lParam);
    text << ' ' << r.right - r.left << 'x' << r.bottom - r.top;
  }
  if (message == WM_WINDOWPOSCHANGED) {
    const WINDOWPOS& pos = *reinterpret_cast<const WINDOWPOS*>(lParam);
    if (!(pos.flags & SWP_NOMOVE)) text << ' ' << pos.x << ',' << pos.y;
    if (!(pos.flags & SWP_NOSIZE)) text << ' ' << pos.cx << 'x' << pos.cy;
    if (!(pos.flags & SWP_NOZORDER)) text << " order";
  }
  return text.str();
}

void PaintColour(HWND window) {
  PAINTSTRUCT paint;
  HDC context = ::BeginPaint(window, &paint);
  const RECT all = {0, 0, ClientSize(window).cx, ClientSize(window).cy};
  HBRUSH brush = ::CreateSolidBrush(TheScene().colours[window]);
  ::FillRect(context, &all, brush);
  ::DeleteObject(brush);
  ::EndPaint(window, &paint);
}

LRESULT LoggingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  Scene& scene = TheScene();
  const std::string name = NameOf(message);
  scene.log.emplace_back(name, window->title + " " + name + DetailOf(message, wParam, lParam));
  const auto handler = scene.handlers.find(message);
  if (handler != scene.handlers.end()) return handler->second(window, wParam, lParam);
  if (message == WM_PAINT && scene.colours.count(window)) {
    PaintColour(window);
    return 0;
  }
  return ::DefWindowProcA(window, message, wParam, lParam);
}

void Register(const char* name, UINT style, int background) {
  WNDCLASSA windowClass = {};
  windowClass.style = style;
  windowClass.lpfnWndProc = LoggingProcedure;
  windowClass.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(intptr_t{background});
  windowClass.lpszClassName = name;
  ::RegisterClassA(&windowClass);
}

} // namespace

WindowScene::WindowScene(int32_t width, int32_t height, int32_t depth) {
  MemoryDisplayReset(width, height, depth);
  TheScene() = {};
  Register("Log", 0, COLOR_WINDOW + 1);
  Register("LogAnew", CS_HREDRAW | CS_VREDRAW, COLOR_WINDOW + 1);
  Register("LogOwn", CS_OWNDC, COLOR_WINDOW + 1);
  Register("LogBare", 0, 0);
  Register("LogTwice", CS_DBLCLKS, COLOR_WINDOW + 1);
}

WindowScene::~WindowScene() {
  ForgetAllWindows();
  TheScene() = {};
}

HWND MakeWindow(const char* title, DWORD style, const PixelRect& place, HWND parent, const char* className,
                DWORD extendedStyle) {
  return ::CreateWindowExA(extendedStyle, className, title, style, place.left, place.top, place.right - place.left,
                           place.bottom - place.top, parent, nullptr, nullptr, nullptr);
}

HWND ShowFrame(const char* title, const PixelRect& place, HWND owner) {
  HWND window = MakeWindow(title, owner ? kFrameStyle | WS_POPUP : kFrameStyle, place, owner);
  ::ShowWindow(window, SW_SHOWNORMAL);
  Drain();
  TakeLog();
  return window;
}

HWND ShowChild(const char* title, const PixelRect& place, HWND parent, DWORD style) {
  HWND window = MakeWindow(title, style | WS_VISIBLE, place, parent);
  Drain();
  TakeLog();
  return window;
}

HWND ShowControl(const char* className, const char* text, DWORD style, const PixelRect& r, HWND parent, int id) {
  HWND control =
      ::CreateWindowExA(0, className, text, style | kChildStyle | WS_VISIBLE, r.left, r.top, r.right - r.left,
                        r.bottom - r.top, parent, reinterpret_cast<HMENU>(intptr_t{id}), nullptr, nullptr);
  Drain();
  TakeLog();
  return control;
}

HWND ShowCover(HWND owner) {
  HWND cover = MakeWindow("cover", WS_POPUP | WS_BORDER, {-2000, -2000, 2000, 2000}, owner, "LogBare", WS_EX_TOPMOST);
  ::ShowWindow(cover, SW_SHOWNORMAL);
  Drain();
  TakeLog();
  return cover;
}

std::string TakeLog(std::initializer_list<const char*> names) {
  std::string text;
  for (const auto& [name, line] : std::exchange(TheScene().log, {})) {
    const bool wanted = names.size() == 0 || std::find(names.begin(), names.end(), name) != names.end();
    if (wanted) text += (text.empty() ? "" : "; ") + line;
  }
  return text;
}

void Answer(UINT message, Handler handler) {
  TheScene().handlers[message] = std::move(handler);
}

void Drain() {
  MSG message;
  while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
  }
}

void TypeWith(std::initializer_list<uint8_t> held, uint8_t key) {
  for (const uint8_t one : held) MemoryPressKey(one);
  MemoryTypeKey(key);
  for (auto one = std::rbegin(held); one != std::rend(held); ++one) MemoryReleaseKey(*one);
}

void PaintIn(HWND window, COLORREF colour) {
  TheScene().colours[window] = colour;
}

bool Lives(HWND window) {
  return IsLive(window);
}

SIZE ClientSize(HWND window) {
  return {WidthOf(window->client), HeightOf(window->client)};
}

POINT OnScreen(HWND window, int x, int y) {
  const PixelRect client = ClientOnScreen(*window);
  return {client.left + x, client.top + y};
}

COLORREF ColourAt(int32_t x, int32_t y) {
  const PaletteColour colour = MemoryColourOf(MemoryPixel(x, y));
  return RGB(colour.red, colour.green, colour.blue);
}

} // namespace framereel
