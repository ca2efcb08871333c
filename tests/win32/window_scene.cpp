// The words of the scene, each a line of a table, and the log that its windows keep.
#include "win32/window_scene.h"

#include <cctype>

#include "win32/windows/create.h"

namespace framereel {
namespace {

struct Scene {
  Script script;
  std::vector<std::pair<std::string, std::string>> log; // the event of each entry, "" for an answer
  std::map<UINT, Handler> handlers;
  std::map<HWND, COLORREF> paints;
};

Scene* scene;

// ---- The log -----------------------------------------------------------------------------------------------------

// The name of each message in the log, and behind a colon a letter for what else it tells.
const std::map<UINT, std::string> kEvents = {
    {WM_GETMINMAXINFO, "limits"}, {WM_DESTROY, "destroy"},    {WM_NCDESTROY, "gone"},
    {WM_SETFOCUS, "focus"},       {WM_KILLFOCUS, "blur"},     {WM_PAINT, "paint"},
    {WM_ERASEBKGND, "erase"},     {WM_CLOSE, "close"},        {WM_SHOWWINDOW, "shown:n"},
    {WM_ACTIVATEAPP, "app:n"},    {WM_NCACTIVATE, "lit:n"},   {WM_ACTIVATE, "act:n"},
    {WM_ENABLE, "enable:n"},      {WM_CHAR, "char:n"},        {WM_SYSCHAR, "syschar:n"},
    {WM_KEYDOWN, "key:k"},        {WM_KEYUP, "keyup:k"},      {WM_SYSKEYDOWN, "syskey:k"},
    {WM_SYSKEYUP, "syskeyup:k"},  {WM_NCMOUSEMOVE, "ncm:m"},  {WM_MOUSEMOVE, "m:m"},
    {WM_LBUTTONDOWN, "d:m"},      {WM_LBUTTONUP, "u:m"},      {WM_LBUTTONDBLCLK, "dd:m"},
    {WM_RBUTTONDOWN, "rd:m"},     {WM_RBUTTONUP, "ru:m"},     {WM_MBUTTONDOWN, "md:m"},
    {WM_MBUTTONUP, "mu:m"},       {WM_MOUSEWHEEL, "wheel:m"}, {WM_SIZE, "size:s"},
    {WM_MOVE, "moved:p"},         {WM_NCCALCSIZE, "frame:f"}, {WM_WINDOWPOSCHANGED, "pos:w"},
    {WM_SYSCOMMAND, "command:h"}, {WM_COMMAND, "notice:c"}};

// Which key it is, and * for one that was down.
std::string KeyOf(WPARAM wParam, LPARAM lParam) {
  EXPECT_EQ(uint32_t(lParam) & 0xFFFFFF, wParam << 16 | 1);
  const std::string name = std::isupper(int(wParam)) ? std::string(1, char(wParam)) : Text(wParam);
  return Text(':', name, lParam & 1 << 30 ? "*" : "");
}

std::string ChangeOf(const WINDOWPOS& pos) {
  return (pos.flags & SWP_NOMOVE ? "" : Text('@', pos.x, ',', pos.y)) +
         (pos.flags & SWP_NOSIZE ? "" : Text(':', pos.cx, 'x', pos.cy)) + (pos.flags & SWP_NOZORDER ? "" : "^");
}

std::string DetailOf(char letter, WPARAM wParam, LPARAM lParam) {
  const int low = SHORT(LOWORD(lParam)), high = SHORT(HIWORD(lParam));
  const RECT* r = reinterpret_cast<const RECT*>(lParam);
  if (letter == 'n') return Text(':', wParam);
  if (letter == 'h') return Text(':', std::hex, wParam);
  if (letter == 'c') return Text(':', LOWORD(wParam), '/', HIWORD(wParam));
  if (letter == 'k') return KeyOf(wParam, lParam);
  if (letter == 'm') return Text(':', wParam, '@', low, ',', high);
  if (letter == 'p') return Text('@', low, ',', high);
  if (letter == 's') return Text(':', wParam, ',', low, 'x', high);
  if (letter == 'f') return Text(':', r->right - r->left, 'x', r->bottom - r->top);
  return ChangeOf(*reinterpret_cast<const WINDOWPOS*>(lParam));
}

// The name of a message, and what it tells.
std::pair<std::string, std::string> EventOf(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto found = kEvents.find(message);
  const std::string event = found == kEvents.end() ? Text(message) : found->second;
  const size_t colon = event.find(':');
  return {event.substr(0, colon), colon == std::string::npos ? "" : DetailOf(event.back(), wParam, lParam)};
}

void Hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto [event, detail] = EventOf(message, wParam, lParam);
  const std::string entry = window->title + "." + event + detail;
  scene->log.emplace_back(event, entry);
  scene->script.React(entry);
}

LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  Hear(window, message, wParam, lParam);
  const auto handler = scene->handlers.find(message);
  if (handler != scene->handlers.end()) return handler->second(window, wParam, lParam);
  if (message != WM_PAINT || !scene->paints.count(window)) {
    return ::DefWindowProcA(window, message, wParam, lParam);
  }
  PAINTSTRUCT paint;
  if (HDC context = ::BeginPaint(window, &paint)) FillPixels(context, {-9, -9, 2000, 2000}, scene->paints[window]);
  ::EndPaint(window, &paint);
  return 0;
}

// ---- Windows -----------------------------------------------------------------------------------------------------

struct Kind {
  const char *name, *className;
  DWORD style, extendedStyle;
};
constexpr DWORD kFrame = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX, kChild = WS_CHILD | WS_CLIPSIBLINGS;
constexpr Kind kKinds[] = {{"frame", "Log", kFrame | WS_CLIPCHILDREN, 0},
                           {"dialog", "Log", WS_POPUP | WS_CAPTION | WS_SYSMENU, 0},
                           {"border", "Log", WS_POPUP | WS_BORDER, 0},
                           {"popup", "Log", WS_POPUP | WS_BORDER, WS_EX_TOPMOST},
                           {"child", "Log", kChild, 0},
                           {"framed", "Log", kChild | kFrame, 0},
                           {"own", "LogOwn", kChild, 0}}; // has a context of its own

void Register(const char* name, UINT style) {
  WNDCLASSA windowClass = {};
  windowClass.style = style;
  windowClass.lpfnWndProc = Procedure;
  windowClass.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  windowClass.lpszClassName = name;
  ::RegisterClassA(&windowClass);
}

DisplayWindow* DisplayNamed(const std::string& title) {
  for (const auto& window : TheMemoryDesktop().windows) {
    if (window->title == title) return window.get();
  }
  return title == "other" ? MemoryOpenWindow("other", {0, 350, 90, 450}, 0) : nullptr;
}

// ---- What the words are told -------------------------------------------------------------------------------------

constexpr std::pair<char, COLORREF> kColours[] = {
    {'r', RGB(255, 0, 0)},     {'g', RGB(0, 255, 0)},     {'b', RGB(0, 0, 255)},
    {'k', RGB(0, 0, 0)},       {'w', RGB(255, 255, 255)}, {'s', RGB(192, 192, 192)},
    {'d', RGB(128, 128, 128)}, {'n', RGB(0, 0, 128)},     {'l', RGB(223, 223, 223)}};

} // namespace

template <> HWND Told<HWND>(std::istream& in) {
  return Named(Word(in));
}
template <> DisplayWindow* Told<DisplayWindow*>(std::istream& in) {
  return DisplayNamed(Word(in));
}
template <> PixelRect Told<PixelRect>(std::istream& in) {
  const int left = Told<int>(in), top = Told<int>(in), width = Told<int>(in), height = Told<int>(in);
  return {left, top, left + width, top + height};
}
template <> POINT Told<POINT>(std::istream& in) {
  const int next = (in >> std::ws).peek();
  const bool isOnScreen = next == '-' || std::isdigit(next);
  HWND window = isOnScreen ? nullptr : Told<HWND>(in);
  const int x = Told<int>(in), y = Told<int>(in);
  return isOnScreen ? POINT{x, y} : OnScreen(window, x, y);
}
template <> Ink Told<Ink>(std::istream& in) {
  const std::string letter = Word(in);
  for (const auto& [name, colour] : kColours) {
    if (name == letter[0]) return {colour};
  }
  ADD_FAILURE() << "no colour " << letter;
  return {};
}

// ---- The words ---------------------------------------------------------------------------------------------------

namespace {

HWND Make(std::istream& in) {
  const std::string name = Word(in), kindName = Word(in);
  HWND parent = Told<HWND>(in);
  const auto r = Told<PixelRect>(in);
  for (const Kind& kind : kKinds) {
    if (kindName != kind.name) continue;
    return ::CreateWindowExA(kind.extendedStyle, kind.className, name.c_str(), kind.style, r.left, r.top, WidthOf(r),
                             HeightOf(r), parent, nullptr, nullptr, nullptr);
  }
  ADD_FAILURE() << "no kind " << kindName;
  return nullptr;
}

void TellRect(const RECT& r) {
  Tell(Text(r.left, ',', r.top, '+', r.right - r.left, 'x', r.bottom - r.top));
}

void TellUpdate(HWND window) {
  HRGN region = ::CreateRectRgn(0, 0, 0, 0);
  ::GetUpdateRgn(window, region, FALSE);
  RECT r;
  ::GetRgnBox(region, &r);
  ::DeleteObject(region);
  TellRect(r);
}

void TellColour(POINT point) {
  ::Sleep(0);
  for (const auto& [name, colour] : kColours) {
    if (colour == ColourAt(point)) return Tell(Text(name));
  }
  Tell(Text(std::hex, ColourAt(point)));
}

std::string TitleOf(HWND window) {
  return window ? window->title : "-";
}

template <int how> void Show(HWND window) {
  ::ShowWindow(window, how);
}

void AddWords(Script* script) {
  script->words["make"] = Make;
  script->words["new"] = [](std::istream& in) {
    ::ShowWindow(Make(in), SW_SHOWNA);
    Drain();
    Heard();
  };
  script->Add("then", Drain);
  script->Add("m", [](POINT to) { MemoryMovePointerTo(to.x, to.y); });
  script->Add("loose", ::ReleaseCapture);
  script->Add("quit", ::PostQuitMessage);
  // Of a window of ours.
  script->Add("show", Show<SW_SHOWNORMAL>);
  script->Add("showna", Show<SW_SHOWNA>);
  script->Add("hide", Show<SW_HIDE>);
  script->Add("iconify", Show<SW_MINIMIZE>);
  script->Add("back", Show<SW_RESTORE>);
  script->Add("destroy", ::DestroyWindow);
  script->Add("focus", ::SetFocus);
  script->Add("capture", ::SetCapture);
  script->Add("enable", [](HWND w) { ::EnableWindow(w, TRUE); });
  script->Add("disable", [](HWND w) { ::EnableWindow(w, FALSE); });
  script->Add("top", ::BringWindowToTop);
  script->Add("bottom",
              [](HWND w) { ::SetWindowPos(w, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE); });
  script->Add("update", ::UpdateWindow);
  script->Add("place", [](HWND w, PixelRect r) { ::MoveWindow(w, r.left, r.top, WidthOf(r), HeightOf(r), TRUE); });
  script->Add("erase", [](HWND w) { ::InvalidateRect(w, nullptr, TRUE); });
  script->Add("invalidate", [](HWND w, PixelRect r) {
    const RECT part = RectOf(r);
    ::InvalidateRect(w, &part, FALSE);
  });
  script->Add("paints", [](HWND w, Ink ink) { scene->paints[w] = ink.colour; });
  script->Add("fill", [](HWND w, Ink ink, PixelRect r) {
    HDC context = ::GetDC(w);
    FillPixels(context, r, ink.colour);
    EXPECT_EQ(::ReleaseDC(w, context), 1);
  });
  // Of what the desktop shows, whosever it is.
  script->Add("keyboard", MemoryGiveKeyboard);
  script->Add("minimise", [](DisplayWindow* w) { MemoryMinimiseWindow(w, true); });
  script->Add("restore", [](DisplayWindow* w) { MemoryMinimiseWindow(w, false); });
  script->Add("kill", MemoryDestroyWindow);
  script->Add("shift", [](DisplayWindow* w, PixelRect r) { MemoryMoveWindow(w, r); });
  // Questions.
  script->Add("focus?", [] { Tell(TitleOf(::GetFocus())); });
  script->Add("order?", [] {
    for (HWND each = ::GetTopWindow(nullptr); each; each = ::GetWindow(each, GW_HWNDNEXT)) Tell(each->title);
  });
  script->Add("place?", [](HWND w) {
    RECT r;
    ::GetWindowRect(w, &r);
    TellRect(r);
  });
  script->Add("update?", TellUpdate);
  script->Add("rgb?", TellColour);
  script->Add("at?", [](POINT at) { Tell(TitleOf(::WindowFromPoint(at))); });
}

} // namespace

// ---- What tests call ---------------------------------------------------------------------------------------------

WindowScene::WindowScene(int32_t width, int32_t height, int32_t depth) {
  MemoryDisplayReset(width, height, depth);
  scene = new Scene;
  AddWords(&scene->script);
  Register("Log", 0);
  Register("LogOwn", CS_OWNDC);
}

WindowScene::~WindowScene() {
  ForgetAllWindows();
  delete scene;
}

Script& TheScript() {
  return scene->script;
}

void Act(const std::string& words) {
  scene->script.Act(words);
}

void Tell(const std::string& answer) {
  scene->log.emplace_back("", answer);
}

std::string Heard(const std::string& events) {
  std::string text;
  for (const auto& [event, entry] : std::exchange(scene->log, {})) {
    const bool wanted =
        events.empty() || event.empty() || (" " + events + " ").find(" " + event + " ") != std::string::npos;
    if (wanted) text += (text.empty() ? "" : " ") + entry;
  }
  return text;
}

void Walk(const std::string& events, std::initializer_list<Step> steps) {
  for (const Step& step : steps) {
    Act(step.words);
    std::string heard = Heard(events);
    Drain();
    const std::string then = Heard(events);
    if (!then.empty()) heard += (heard.empty() ? "| " : " | ") + then;
    EXPECT_EQ(heard, step.brings) << step.words;
  }
}

HWND Named(const std::string& title) {
  for (const auto& window : TheWindows().windows) {
    if (window->title == title) return window.get();
  }
  EXPECT_EQ(title, "-") << "no such window";
  return nullptr;
}

HWND ShowMain() {
  Act("make main frame - 100 100 206 225 show main then");
  Heard();
  return Named("main");
}

HWND ShowControl(const char* className, const char* title, DWORD style, const PixelRect& r, HWND parent, int id) {
  HWND control = ::CreateWindowExA(0, className, title, style | kChild | WS_VISIBLE, r.left, r.top, WidthOf(r),
                                   HeightOf(r), parent, reinterpret_cast<HMENU>(intptr_t{id}), nullptr, nullptr);
  Drain();
  Heard();
  return control;
}

void Answer(UINT message, Handler handler) {
  scene->handlers[message] = std::move(handler);
}

void Drain() {
  MSG message;
  while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
  }
}

POINT OnScreen(HWND window, int x, int y) {
  const PixelRect client = ClientOnScreen(*window);
  return {client.left + x, client.top + y};
}

COLORREF ColourAt(const POINT& point) {
  const PaletteColour colour = MemoryColourOf(MemoryPixel(point.x, point.y));
  return RGB(colour.red, colour.green, colour.blue);
}

int64_t Count(const PixelRect& where, COLORREF colour) {
  HDC context = ::CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  const COLORREF shown = ::GetNearestColor(context, colour);
  ::DeleteDC(context);
  int64_t count = 0;
  for (int32_t y = where.top; y < where.bottom; ++y) {
    for (int32_t x = where.left; x < where.right; ++x) count += ColourAt({x, y}) == shown;
  }
  return count;
}

} // namespace framereel
