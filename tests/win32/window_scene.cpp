#include "win32/window_scene.h"

#include <algorithm>
#include <map>
#include <vector>

#include "win32/window.h"

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

std::string Number(int64_t number) {
  return std::string(1, ' ').append(std::to_string(number));
}

std::string Size(int64_t width, int64_t height) {
  return Number(width).append("x").append(std::to_string(height));
}

std::string Pair(LPARAM lParam) {
  return Number(SHORT(LOWORD(uintptr_t(lParam)))).append(",").append(std::to_string(SHORT(HIWORD(uintptr_t(lParam)))));
}

std::string Nothing(WPARAM, LPARAM) {
  return "";
}
std::string FirstNumber(WPARAM wParam, LPARAM) {
  return Number(int64_t(wParam));
}
std::string Point(WPARAM, LPARAM lParam) {
  return Pair(lParam);
}
std::string NumberAndPoint(WPARAM wParam, LPARAM lParam) {
  return Number(int64_t(wParam)) + " at" + Pair(lParam);
}
std::string NumberAndSize(WPARAM wParam, LPARAM lParam) {
  return Number(int64_t(wParam)) + Size(LOWORD(uintptr_t(lParam)), HIWORD(uintptr_t(lParam)));
}
std::string Proposed(WPARAM, LPARAM lParam) {
  const RECT& r = *reinterpret_cast<const RECT*>(lParam);
  return Size(r.right - r.left, r.bottom - r.top);
}
std::string Position(WPARAM, LPARAM lParam) {
  const WINDOWPOS& pos = *reinterpret_cast<const WINDOWPOS*>(lParam);
  std::string text;
  if (!(pos.flags & SWP_NOMOVE)) text.append(Number(pos.x)).append(",").append(std::to_string(pos.y));
  if (!(pos.flags & SWP_NOSIZE)) text += Size(pos.cx, pos.cy);
  if (!(pos.flags & SWP_NOZORDER)) text += " order";
  return text;
}

struct Known {
  UINT message;
  const char* name;
  std::string (*tell)(WPARAM, LPARAM);
};
const Known kKnown[] = {{WM_CREATE, "CREATE", Nothing},
                        {WM_DESTROY, "DESTROY", Nothing},
                        {WM_MOVE, "MOVE", Point},
                        {WM_SIZE, "SIZE", NumberAndSize},
                        {WM_ACTIVATE, "ACTIVATE", FirstNumber},
                        {WM_SETFOCUS, "SETFOCUS", Nothing},
                        {WM_KILLFOCUS, "KILLFOCUS", Nothing},
                        {WM_ENABLE, "ENABLE", FirstNumber},
                        {WM_PAINT, "PAINT", Nothing},
                        {WM_CLOSE, "CLOSE", Nothing},
                        {WM_ERASEBKGND, "ERASEBKGND", Nothing},
                        {WM_SHOWWINDOW, "SHOWWINDOW", FirstNumber},
                        {WM_WININICHANGE, "WININICHANGE", Nothing},
                        {WM_ACTIVATEAPP, "ACTIVATEAPP", FirstNumber},
                        {WM_GETMINMAXINFO, "GETMINMAXINFO", Nothing},
                        {WM_WINDOWPOSCHANGED, "WINDOWPOSCHANGED", Position},
                        {WM_DISPLAYCHANGE, "DISPLAYCHANGE", NumberAndSize},
                        {WM_NCCREATE, "NCCREATE", Nothing},
                        {WM_NCDESTROY, "NCDESTROY", Nothing},
                        {WM_NCCALCSIZE, "NCCALCSIZE", Proposed},
                        {WM_NCACTIVATE, "NCACTIVATE", FirstNumber},
                        {WM_NCMOUSEMOVE, "NCMOUSEMOVE", NumberAndPoint},
                        {WM_NCLBUTTONDOWN, "NCLBUTTONDOWN", NumberAndPoint},
                        {WM_NCLBUTTONUP, "NCLBUTTONUP", NumberAndPoint},
                        {WM_KEYDOWN, "KEYDOWN", FirstNumber},
                        {WM_KEYUP, "KEYUP", FirstNumber},
                        {WM_CHAR, "CHAR", FirstNumber},
                        {WM_SYSKEYDOWN, "SYSKEYDOWN", FirstNumber},
                        {WM_SYSKEYUP, "SYSKEYUP", FirstNumber},
                        {WM_SYSCHAR, "SYSCHAR", FirstNumber},
                        {WM_SYSCOMMAND, "SYSCOMMAND", FirstNumber},
                        {WM_ENTERIDLE, "ENTERIDLE", FirstNumber},
                        {WM_MOUSEMOVE, "MOUSEMOVE", NumberAndPoint},
                        {WM_LBUTTONDOWN, "LBUTTONDOWN", NumberAndPoint},
                        {WM_LBUTTONUP, "LBUTTONUP", NumberAndPoint},
                        {WM_RBUTTONDOWN, "RBUTTONDOWN", NumberAndPoint},
                        {WM_RBUTTONUP, "RBUTTONUP", NumberAndPoint},
                        {WM_MBUTTONDOWN, "MBUTTONDOWN", NumberAndPoint},
                        {WM_MBUTTONUP, "MBUTTONUP", NumberAndPoint}};

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
  const auto known = std::find_if(std::begin(kKnown), std::end(kKnown),
                                  [message](const Known& one) { return one.message == message; });
  const bool isKnown = known != std::end(kKnown);
  const std::string name = isKnown ? known->name : "?";
  scene.log.emplace_back(name, window->title + " " + name + (isKnown ? known->tell(wParam, lParam) : Number(message)));
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
