// The words of the scene, each a line of a table, and the log that its windows keep.
#include "win32/window_scene.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <list>
#include <map>
#include <sstream>
#include <vector>

#include "win32/pixels/rectangles.h"
#include "win32/win32_dialogs.h"
#include "win32/win32_drawing.h"
#include "win32/win32_input.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
#include "win32/windows/create.h"
#include "win32/windows/window.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

struct Scene {
  std::vector<std::pair<std::string, std::string>> log; // the event of each entry, "" for an answer
  std::list<std::pair<std::string, std::string>> reactions;
  std::map<UINT, Handler> handlers;
  std::map<std::string, std::function<void(std::istream&)>> words; // the test's own
  std::map<HWND, COLORREF> paints;
};

Scene& TheScene() {
  static Scene scene;
  return scene;
}

template <typename... Parts> std::string Text(const Parts&... parts) {
  std::ostringstream text;
  (text << ... << parts);
  return text.str();
}

template <typename... Parts> void Tell(const Parts&... parts) {
  TheScene().log.emplace_back("", Text(parts...));
}

// ---- The log -----------------------------------------------------------------------------------------------------

// The name of each message in the log, and behind a colon a letter for what else it tells.
const std::map<UINT, std::string> kEvents = {
    {WM_GETMINMAXINFO, "limits"}, {WM_NCCREATE, "nccreate"},    {WM_CREATE, "create"},
    {WM_DESTROY, "destroy"},      {WM_NCDESTROY, "gone"},       {WM_SETFOCUS, "focus"},
    {WM_KILLFOCUS, "blur"},       {WM_PAINT, "paint"},          {WM_ERASEBKGND, "erase"},
    {WM_CLOSE, "close"},          {WM_CAPTURECHANGED, "loose"}, {WM_WININICHANGE, "settings"},
    {WM_SHOWWINDOW, "shown:n"},   {WM_ACTIVATEAPP, "app:n"},    {WM_NCACTIVATE, "lit:n"},
    {WM_ACTIVATE, "act:n"},       {WM_ENABLE, "enable:n"},      {WM_CHAR, "char:n"},
    {WM_SYSCHAR, "syschar:n"},    {WM_ENTERIDLE, "idle:n"},     {WM_QUIT, "quit:n"},
    {WM_KEYDOWN, "key:k"},        {WM_KEYUP, "keyup:k"},        {WM_SYSKEYDOWN, "syskey:k"},
    {WM_SYSKEYUP, "syskeyup:k"},  {WM_NCMOUSEMOVE, "ncm:m"},    {WM_NCLBUTTONDOWN, "ncd:m"},
    {WM_NCLBUTTONUP, "ncu:m"},    {WM_MOUSEMOVE, "m:m"},        {WM_LBUTTONDOWN, "d:m"},
    {WM_LBUTTONUP, "u:m"},        {WM_LBUTTONDBLCLK, "dd:m"},   {WM_RBUTTONDOWN, "rd:m"},
    {WM_RBUTTONUP, "ru:m"},       {WM_MBUTTONDOWN, "md:m"},     {WM_MBUTTONUP, "mu:m"},
    {WM_MOUSEWHEEL, "wheel:m"},   {WM_SIZE, "size:s"},          {WM_DISPLAYCHANGE, "display:s"},
    {WM_MOVE, "moved:p"},         {WM_NCCALCSIZE, "frame:f"},   {WM_WINDOWPOSCHANGED, "pos:w"},
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
  TheScene().log.emplace_back(event, entry);
  auto& reactions = TheScene().reactions;
  const auto reaction = std::find_if(reactions.begin(), reactions.end(),
                                     [&](const auto& each) { return entry.rfind(each.first, 0) == 0; });
  if (reaction == reactions.end()) return;
  const std::string words = reaction->second;
  reactions.erase(reaction);
  Act(words);
}

void Fill(HDC context, const RECT& r, COLORREF colour) {
  HBRUSH brush = ::CreateSolidBrush(colour);
  ::FillRect(context, &r, brush);
  ::DeleteObject(brush);
}

LRESULT Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  Hear(window, message, wParam, lParam);
  const auto handler = TheScene().handlers.find(message);
  if (handler != TheScene().handlers.end()) return handler->second(window, wParam, lParam);
  if (message != WM_PAINT || !TheScene().paints.count(window)) {
    return ::DefWindowProcA(window, message, wParam, lParam);
  }
  PAINTSTRUCT paint;
  if (HDC context = ::BeginPaint(window, &paint)) Fill(context, {-9, -9, 2000, 2000}, TheScene().paints[window]);
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
                           {"over", "Log", kFrame, 0}, // paints over its children
                           {"dialog", "Log", WS_POPUP | WS_CAPTION | WS_SYSMENU, 0},
                           {"bare", "Log", WS_POPUP | WS_CAPTION, 0}, // without a menu
                           {"plain", "Log", WS_POPUP, 0},
                           {"border", "Log", WS_POPUP | WS_BORDER, 0},
                           {"popup", "Log", WS_POPUP | WS_BORDER, WS_EX_TOPMOST},
                           {"palette", "Log", WS_POPUP | WS_CAPTION, WS_EX_TOPMOST},
                           {"cover", "LogCover", WS_POPUP, WS_EX_TOPMOST}, // shows the screen
                           {"child", "Log", kChild, 0},
                           {"careless", "Log", WS_CHILD, 0}, // draws over its siblings
                           {"parent", "Log", kChild | WS_CLIPCHILDREN, 0},
                           {"framed", "Log", kChild | kFrame, 0},
                           {"anew", "LogAnew", kChild, 0}, // painted whole on every new size
                           {"own", "LogOwn", kChild, 0},   // has a context of its own
                           {"twice", "LogTwice", kChild, 0}};

void Register(const char* name, UINT style, int background) {
  WNDCLASSA windowClass = {};
  windowClass.style = style;
  windowClass.lpfnWndProc = Procedure;
  windowClass.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(intptr_t{background});
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

std::string Word(std::istream& in) {
  std::string word;
  in >> word;
  return word;
}

int Number(std::istream& in) {
  int number = 0;
  in >> number;
  return number;
}

std::string UpToTheDot(std::istream& in) {
  std::string text;
  for (std::string word; in >> word && word != ".";) text += word + " ";
  return text;
}

bool NumberIsNext(std::istream& in) {
  const int next = (in >> std::ws).peek();
  return in && (next == '-' || std::isdigit(next));
}

RECT Place(std::istream& in) {
  const int left = Number(in), top = Number(in), width = Number(in), height = Number(in);
  return {left, top, left + width, top + height};
}

POINT Point(std::istream& in) {
  HWND window = NumberIsNext(in) ? nullptr : Named(Word(in));
  const int x = Number(in), y = Number(in);
  return window ? OnScreen(window, x, y) : POINT{x, y};
}

constexpr std::pair<char, COLORREF> kColours[] = {
    {'r', RGB(255, 0, 0)},     {'g', RGB(0, 255, 0)},     {'b', RGB(0, 0, 255)},
    {'k', RGB(0, 0, 0)},       {'w', RGB(255, 255, 255)}, {'s', RGB(192, 192, 192)},
    {'d', RGB(128, 128, 128)}, {'n', RGB(0, 0, 128)},     {'l', RGB(223, 223, 223)}};

COLORREF Colour(std::istream& in) {
  const std::string letter = Word(in);
  for (const auto& [name, colour] : kColours) {
    if (name == letter[0]) return colour;
  }
  ADD_FAILURE() << "no colour " << letter;
  return 0;
}

// ---- The words ---------------------------------------------------------------------------------------------------

HWND Make(std::istream& in) {
  const std::string name = Word(in), kindName = Word(in);
  HWND parent = Named(Word(in));
  const int x = Number(in), y = Number(in), width = Number(in), height = Number(in);
  for (const Kind& kind : kKinds) {
    if (kindName != kind.name) continue;
    return ::CreateWindowExA(kind.extendedStyle, kind.className, name.c_str(), kind.style, x, y, width, height, parent,
                             nullptr, nullptr, nullptr);
  }
  ADD_FAILURE() << "no kind " << kindName;
  return nullptr;
}

void MoveTo(const POINT& point) {
  MemoryMovePointerTo(point.x, point.y);
}

void When(std::istream& in) {
  const std::string entry = Word(in);
  TheScene().reactions.emplace_back(entry, UpToTheDot(in));
}

void Later(std::istream& in) {
  std::istringstream all(UpToTheDot(in));
  uint32_t at = ::GetTickCount();
  for (std::string words; std::getline(all, words, ',');) MemoryAt(at += 20, [words] { Act(words); });
}

void Invalidate(HWND window, std::istream& in, bool erase) {
  const bool part = NumberIsNext(in);
  const RECT place = part ? Place(in) : RECT{};
  ::InvalidateRect(window, part ? &place : nullptr, erase);
}

void TellRect(const RECT& r) {
  Tell(r.left, ',', r.top, '+', r.right - r.left, 'x', r.bottom - r.top);
}

void TellUpdate(HWND window) {
  HRGN region = ::CreateRectRgn(0, 0, 0, 0);
  ::GetUpdateRgn(window, region, FALSE);
  RECT r;
  ::GetRgnBox(region, &r);
  ::DeleteObject(region);
  TellRect(r);
}

void TellColour(const POINT& point) {
  ::Sleep(0);
  for (const auto& [name, colour] : kColours) {
    if (colour == ColourAt(point)) return Tell(name);
  }
  Tell(std::hex, ColourAt(point));
}

std::string TitleOf(HWND window) {
  return window ? window->title : "-";
}

void TellNext() {
  MSG message;
  if (!::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) return Tell("nothing");
  Tell(TitleOf(message.hwnd), '.', EventOf(message.message, message.wParam, message.lParam).first);
}

constexpr std::pair<const char*, void (*)(std::istream&)> kWords[] = {
    {"then", [](std::istream&) { Drain(); }},
    {"when", When},
    {"later", Later},
    {"make", [](std::istream& in) { Make(in); }},
    {"new",
     [](std::istream& in) {
       ::ShowWindow(Make(in), SW_SHOWNA);
       Drain();
       Heard();
     }},
    {"loose", [](std::istream&) { ::ReleaseCapture(); }},
    {"quit", [](std::istream& in) { ::PostQuitMessage(Number(in)); }},
    {"m", [](std::istream& in) { MoveTo(Point(in)); }},
    {"wheel", [](std::istream& in) { MemoryTurnWheel(int8_t(Number(in))); }},
    {"takemouse", [](std::istream&) { MemoryTakeCapture(); }},
    {"wait", [](std::istream& in) { ::Sleep(uint32_t(Number(in))); }},
    {"tick", [](std::istream& in) { TheMemoryDisplay().tick += uint32_t(Number(in)); }},
    {"focus?", [](std::istream&) { Tell(TitleOf(::GetFocus())); }},
    {"pass?", [](std::istream&) { TellNext(); }},
    {"rgb?", [](std::istream& in) { TellColour(Point(in)); }},
    {"at?", [](std::istream& in) { Tell(TitleOf(::WindowFromPoint(Point(in)))); }},
    {"order?",
     [](std::istream&) {
       for (HWND each = ::GetTopWindow(nullptr); each; each = ::GetWindow(each, GW_HWNDNEXT)) Tell(each->title);
     }},
};

// Of a window of ours.
constexpr std::pair<const char*, void (*)(HWND, std::istream&)> kWindowWords[] = {
    {"show", [](HWND w, std::istream&) { ::ShowWindow(w, SW_SHOWNORMAL); }},
    {"showna", [](HWND w, std::istream&) { ::ShowWindow(w, SW_SHOWNA); }},
    {"hide", [](HWND w, std::istream&) { ::ShowWindow(w, SW_HIDE); }},
    {"iconify", [](HWND w, std::istream&) { ::ShowWindow(w, SW_MINIMIZE); }},
    {"back", [](HWND w, std::istream&) { ::ShowWindow(w, SW_RESTORE); }},
    {"destroy", [](HWND w, std::istream&) { ::DestroyWindow(w); }},
    {"focus", [](HWND w, std::istream&) { ::SetFocus(w); }},
    {"capture", [](HWND w, std::istream&) { ::SetCapture(w); }},
    {"enable", [](HWND w, std::istream&) { ::EnableWindow(w, TRUE); }},
    {"disable", [](HWND w, std::istream&) { ::EnableWindow(w, FALSE); }},
    {"top", [](HWND w, std::istream&) { ::BringWindowToTop(w); }},
    {"bottom",
     [](HWND w, std::istream&) {
       ::SetWindowPos(w, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
     }},
    {"update", [](HWND w, std::istream&) { ::UpdateWindow(w); }},
    {"place",
     [](HWND w, std::istream& in) {
       const RECT r = Place(in);
       ::MoveWindow(w, r.left, r.top, r.right - r.left, r.bottom - r.top, TRUE);
     }},
    {"erase", [](HWND w, std::istream& in) { Invalidate(w, in, true); }},
    {"invalidate", [](HWND w, std::istream& in) { Invalidate(w, in, false); }},
    {"paints", [](HWND w, std::istream& in) { TheScene().paints[w] = Colour(in); }},
    {"fill",
     [](HWND w, std::istream& in) {
       HDC context = ::GetDC(w);
       const COLORREF colour = Colour(in);
       Fill(context, Place(in), colour);
       EXPECT_EQ(::ReleaseDC(w, context), 1);
     }},
    {"place?",
     [](HWND w, std::istream&) {
       RECT r;
       ::GetWindowRect(w, &r);
       TellRect(r);
     }},
    {"update?", [](HWND w, std::istream&) { TellUpdate(w); }},
};

// Of what the desktop shows, whosever it is.
constexpr std::pair<const char*, void (*)(DisplayWindow*, std::istream&)> kDesktopWords[] = {
    {"keyboard", [](DisplayWindow* w, std::istream&) { MemoryGiveKeyboard(w); }},
    {"minimise", [](DisplayWindow* w, std::istream&) { MemoryMinimiseWindow(w, true); }},
    {"restore", [](DisplayWindow* w, std::istream&) { MemoryMinimiseWindow(w, false); }},
    {"ask", [](DisplayWindow* w, std::istream&) { MemoryAskToClose(w); }},
    {"kill", [](DisplayWindow* w, std::istream&) { MemoryDestroyWindow(w); }},
    {"shift", [](DisplayWindow* w, std::istream& in) { MemoryMoveWindow(w, PixelsOf(Place(in))); }},
};

// 0 for none.
uint8_t KeyNamed(const std::string& name) {
  static const std::map<std::string, int> keys = {
      {"shift", VK_SHIFT},  {"ctrl", VK_CONTROL},  {"alt", VK_MENU},      {"tab", VK_TAB},        {"pageup", VK_PRIOR},
      {"caps", VK_CAPITAL}, {"space", VK_SPACE},   {"insert", VK_INSERT}, {"esc", VK_ESCAPE},     {"enter", VK_RETURN},
      {"left", VK_LEFT},    {"right", VK_RIGHT},   {"up", VK_UP},         {"down", VK_DOWN},      {"home", VK_HOME},
      {"end", VK_END},      {"pagedown", VK_NEXT}, {"delete", VK_DELETE}, {"backspace", VK_BACK}, {"f4", VK_F4},
      {"f6", VK_F6},        {"f10", VK_F10},       {"acute", 0xDE},       {"grave", 0xC0},        {"lb", VK_LBUTTON},
      {"mb", VK_MBUTTON},   {"rb", VK_RBUTTON}};
  const auto found = keys.find(name);
  if (found != keys.end()) return uint8_t(found->second);
  return name.size() == 1 && std::isupper(name[0]) ? uint8_t(name[0]) : 0;
}

void SetKey(uint8_t key, bool down) {
  const uint8_t button = key == VK_LBUTTON ? 1 : key == VK_MBUTTON ? 2 : key == VK_RBUTTON ? 3 : 0;
  if (button) return down ? MemoryPressButton(button) : MemoryReleaseButton(button);
  down ? MemoryPressKey(key) : MemoryReleaseKey(key);
}

// One key, or some that are held together.
bool TypeKeys(const std::string& word) {
  std::vector<uint8_t> keys;
  std::istringstream names(word.substr(word[0] == '+' || word[0] == '-'));
  for (std::string name; std::getline(names, name, '+');) keys.push_back(KeyNamed(name));
  if (keys.empty() || std::count(keys.begin(), keys.end(), 0)) return false;
  for (auto key = keys.begin(); key != keys.end() && word[0] != '-'; ++key) SetKey(*key, true);
  for (auto key = keys.rbegin(); key != keys.rend() && word[0] != '+'; ++key) SetKey(*key, false);
  return true;
}

// The act of that word in a table; null for none.
template <typename Act, size_t n> Act ActOf(const std::pair<const char*, Act> (&words)[n], const std::string& word) {
  const auto found = std::find_if(words, words + n, [&](const auto& each) { return each.first == word; });
  return found == words + n ? nullptr : found->second;
}

} // namespace

// ---- What tests call ---------------------------------------------------------------------------------------------

WindowScene::WindowScene(int32_t width, int32_t height, int32_t depth) {
  MemoryDisplayReset(width, height, depth);
  TheScene() = {};
  Register("Log", 0, COLOR_WINDOW + 1);
  Register("LogAnew", CS_HREDRAW | CS_VREDRAW, COLOR_WINDOW + 1);
  Register("LogOwn", CS_OWNDC, COLOR_WINDOW + 1);
  Register("LogCover", 0, 0);
  Register("LogTwice", CS_DBLCLKS, COLOR_WINDOW + 1);
}

WindowScene::~WindowScene() {
  ForgetAllWindows();
  TheScene() = {};
}

void Act(const std::string& words) {
  std::istringstream in(words);
  for (std::string word; in >> word;) {
    if (TheScene().words.count(word)) {
      TheScene().words[word](in);
    } else if (const auto act = ActOf(kWords, word)) {
      act(in);
    } else if (const auto actOnWindow = ActOf(kWindowWords, word)) {
      actOnWindow(Named(Word(in)), in);
    } else if (const auto actOnDesktop = ActOf(kDesktopWords, word)) {
      actOnDesktop(DisplayNamed(Word(in)), in);
    } else if (!TypeKeys(word)) {
      ADD_FAILURE() << "there is no word " << word << " in " << words;
    }
  }
}

void AddWord(const std::string& word, std::function<void(std::istream&)> act) {
  TheScene().words[word] = std::move(act);
}

uint32_t Schedule(const std::string& script) {
  uint32_t at = ::GetTickCount() + 20;
  std::istringstream words(script);
  for (std::string word; words >> word; at += word == "rest" ? 300 : 20) {
    std::replace(word.begin(), word.end(), ':', ' ');
    if (word != "rest") MemoryAt(at, [word] { Act(word); });
  }
  return at;
}

std::string Heard(const std::string& events) {
  std::string text;
  for (const auto& [event, entry] : std::exchange(TheScene().log, {})) {
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
  TheScene().handlers[message] = std::move(handler);
}

void Drain() {
  MSG message;
  while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    ::TranslateMessage(&message);
    ::DispatchMessageA(&message);
  }
}

bool Lives(HWND window) {
  return IsLive(window);
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
