// See window_script.h.
#include "support/window_script.h"

#include <gtest/gtest.h>

#include <list>

#include "core/notices.h"
#include "core/timers.h"
#include "platform/display/display_caps.h"
#include "platform/drawing/current_port.h"
#include "platform/input/mouse.h"
#include "platform/pump/pump.h"
#include "platform/windows/active_window.h"
#include "platform/windows/modal.h"
#include "win32/memory/memory_display.h"
#include "win32/pixels/rectangles.h"
#include "win32/win32_drawing.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
#include "win32/windows/window.h"
#include "win32/windows/window_tree.h"

namespace framereel {
namespace {

WindowScript* script;
std::map<const ChildWindow*, std::string> names; // of a record's last window
std::list<std::string> later;                    // the words of timers

// By which the script opened it, whatever became of its title; another window's title.
std::string NameOf(const ChildWindow* window) {
  const auto found = names.find(window);
  return found != names.end() ? found->second : window ? window->title : "";
}

template <typename... Parts> void Hear(ChildWindow* window, const Parts&... parts) {
  EXPECT_EQ(CurrentPort(), &window->port) << "a window is the current Port while it is called";
  script->Say(Text(NameOf(window), parts...));
}

std::string CharacterOf(uint8_t c) {
  return c > 32 && c < 127 ? std::string(1, char(c)) : std::to_string(c);
}

void HearPaint(ChildWindow* window) {
  RECT box = {};
  ::GetClipBox(CurrentContext(), &box);
  Hear(window, '#', box.left, ',', box.top, '+', box.right - box.left, 'x', box.bottom - box.top);
}

// All but paint, in the order of the record.
void HearAll(WindowMethods& m) {
  m.mouseDown = [](ChildWindow* w, uint16_t flags, int16_t x, int16_t y) { Hear(w, 'v', flags, '@', x, ',', y); };
  m.mouseUp = [](ChildWindow* w, uint16_t flags, int16_t x, int16_t y) { Hear(w, '^', flags, '@', x, ',', y); };
  m.menuCommand = [](ChildWindow* w, MenuItem* item) { Hear(w, item ? ".item" : ".go"); };
  m.mouseMoved = [](ChildWindow* w, int16_t x, int16_t y) { Hear(w, '~', x, ',', y); };
  m.keyDown = [](ChildWindow* w, const KeyEvent& e, int16_t, int16_t) {
    Hear(w, ':', CharacterOf(e.character), '/', CharacterOf(e.unshifted), '/', e.modifiers);
  };
  m.keyUp = [](ChildWindow* w, const KeyEvent& e, int16_t, int16_t) {
    Hear(w, '\'', int(e.unshifted), '/', e.modifiers, e.character ? "?" : "");
  };
  m.mayClose = [](ChildWindow* w) {
    Hear(w, '?');
    return (w->flags & kWindowResizable) == 0; // one that does not want to
  };
  m.close = [](ChildWindow* w) { Hear(w, ".close"); };
  m.resized = [](ChildWindow* w) { Hear(w, '=', w->geometry.clientWidth, 'x', w->geometry.clientHeight); };
  m.moved = [](ChildWindow* w) { Hear(w, '=', w->geometry.clientLeft, ',', w->geometry.clientTop); };
  m.activated = [](ChildWindow* w) { Hear(w, '+'); };
  m.deactivated = [](ChildWindow* w) { Hear(w, '-'); };
  m.mouseEntered = [](ChildWindow* w) { Hear(w, '<'); };
  m.mouseLeft = [](ChildWindow* w) { Hear(w, '>'); };
}

uint32_t FlagsOf(const std::string& kind) {
  const std::pair<char, uint32_t> letters[] = {
      {'m', kWindowModal},    {'p', kWindowPopup},  {'l', kWindowLoosePopup}, {'t', kWindowPalette},
      {'c', kWindowMayClose}, {'f', kWindowFilled}, {'r', kWindowResizable},  {'b', kWindowNoMinimise}};
  uint32_t flags = kind.find('k') == std::string::npos ? kWindowUnclamped : 0u;
  for (const auto& [letter, flag] : letters) flags |= kind.find(letter) == std::string::npos ? 0u : flag;
  return flags;
}

// When it tells of another display, the new depth is known.
void HearNotice(intptr_t code, void*) {
  script->Say(Text('!', code) + (code == kChangeDisplay ? Text("on", TheDisplayCaps().screenDepth) : ""));
}

std::string NameOf(HWND window) {
  return window && window == TheMainWindow()->window ? "main" : NameOf(window ? FindChildWindow(window) : nullptr);
}

std::string PlaceOf(const WindowGeometry& g) {
  return Text(g.clientLeft, ',', g.clientTop, '+', g.clientWidth, 'x', g.clientHeight);
}

// The record is what the platform has, in toolkit coordinates.
void ExpectAgreement(const WindowGeometry& g, HWND window) {
  const MainWindow* main = TheMainWindow();
  const PixelRect r = ClientOnScreen(*window);
  EXPECT_EQ(PlaceOf(g), Text(r.left - main->originX, ',', r.top - main->originY, '+', WidthOf(r), 'x', HeightOf(r)));
}

} // namespace

WindowScript::WindowScript(int32_t width, int32_t height, int32_t bits) : program(width, height, bits) {
  script = this;
  names.clear();
  later.clear();
  SetMainClientSize(nullptr, 600, 440);
  Settle();
  AddWords();
  settle = [this] {
    if (settles) Settle();
  };
  Heard();
  NotifyAdd(HearNotice, nullptr);
  TheLaterModules().blockMenus = [](bool block) { script->Say(block ? "block" : "free"); };
  TheLaterModules().menuShortcut = [](const KeyEvent& event) {
    script->Say(Text("shortcut:", CharacterOf(event.unshifted)));
    return true;
  };
}

WindowScript::~WindowScript() {
  NotifyRemove(HearNotice, nullptr);
  TheLaterModules() = before;
  TimerClearAll();
}

void WindowScript::Say(const std::string& entry) {
  log += (log.empty() ? "" : " ") + entry;
  React(entry);
}

std::string WindowScript::Heard() {
  const DisplayWindow* captured = TheMemoryDisplay().desktop.captured;
  std::string off = IsEnabled(TheMainWindow()->window) ? "" : "main";
  EXPECT_EQ(ModalIsBlocking(), off != "");
  if (!TheMainWindow()->iconic) ExpectAgreement(TheMainWindow()->geometry, TheMainWindow()->window);
  for (const ChildWindow* w = NextChildWindow(nullptr); w; w = NextChildWindow(w)) {
    if (!IsEnabled(w->window)) off += ',' + NameOf(w);
    if (!TheMainWindow()->iconic && !w->iconic) ExpectAgreement(w->geometry, w->window);
  }
  for (const auto& [fact, now] :
       std::initializer_list<std::pair<const char*, std::string>>{{"active", NameOf(ActiveWindow())},
                                                                  {"modal", NameOf(GetModalWindow())},
                                                                  {"off", off},
                                                                  {"focus", NameOf(TheWindows().focus)},
                                                                  {"mouse", captured ? captured->title : ""}}) {
    if (std::exchange(facts[fact], now) != now) log += Text(log.empty() ? "" : " ", fact, '=', now);
  }
  return std::exchange(log, "");
}

void WindowScript::Walk(std::initializer_list<ScriptStep> steps) {
  int number = 0;
  for (const ScriptStep& step : steps) {
    Act(step.words);
    EXPECT_EQ(Heard(), step.brings) << "step " << number << ": " << step.words;
    ++number;
  }
}

// A new window that tells what it hears.
ChildWindow* WindowScript::Make(std::istream& in) {
  const std::string name = Word(in), kind = Word(in);
  ChildWindow* window = OpenChildWindow(nullptr, name.c_str(), FlagsOf(kind));
  windows[name] = window;
  names[window] = name;
  HearAll(window->methods);
  const auto hearEnd = [](intptr_t subject, void* w) {
    script->Say(ToListValue(w) == subject ? NameOf(static_cast<ChildWindow*>(w)) + ".gone" : "wrong");
  };
  NotifierAdd(&window->listeners, hearEnd, window);
  SizeChildWindow(window, 200, 100);
  PlaceChildWindow(window, 100, 100);
  return window;
}

// ---- The words ---------------------------------------------------------------------------------------------------

template <> ChildWindow* Told<ChildWindow*>(std::istream& in) {
  return script->Window(Word(in));
}

namespace {

// A pass of the event loop, and the time that it took.
void Pass(bool mayWait) {
  const uint32_t before = ::GetTickCount();
  PumpOneEvent(nullptr, mayWait);
  if (::GetTickCount() != before) script->Say(Text(::GetTickCount() - before, "ms"));
}

DisplayWindow* MainOnDisplay() {
  return MemoryWindowTitled("Framereel");
}

} // namespace

void WindowScript::AddWords() {
  // The user and the desktop.
  Add("d", [] { MemoryPressButton(1); });
  Add("u", [] { MemoryReleaseButton(1); });
  Add("rd", [] { MemoryPressButton(3); });
  Add("ru", [] { MemoryReleaseButton(3); });
  Add("over", [](ChildWindow* window, int16_t x, int16_t y) {
    const Point p = OnScreen(window, x, y);
    MemoryMovePointerTo(p.h, p.v);
  });
  Add("leave", [] { MemoryGiveKeyboard(nullptr); });
  Add("return", [] { MemoryGiveKeyboard(MainOnDisplay()); });
  Add("minimise", [] { MemoryMinimiseWindow(MainOnDisplay(), true); });
  Add("restore", [] { MemoryMinimiseWindow(MainOnDisplay(), false); });
  // The program.
  Add("run", RunEventLoop);
  Add("end", EndEventLoop);
  Add("suspend", SuspendActivation);
  Add("resume", ResumeActivation);
  Add("evaluate", EvaluateActiveWindow);
  Add("flush", FlushPaints);
  Add("dismiss", DismissPopup);
  Add("drop", ReleaseHeldCapture);
  Add("main", [](int16_t x, int16_t y) { MoveMainWindow(nullptr, x, y); });
  Add("mainsize", [](int16_t width, int16_t height) { SetMainClientSize(nullptr, width, height); });
  Add("wheremain", [] { script->Say(PlaceOf(TheMainWindow()->geometry)); });
  // Of a window.
  Add("show", ShowChildWindow);
  Add("front", BringChildWindowForward);
  Add("behind", SendChildWindowBack);
  Add("close", CloseChildWindow);
  Add("centre", CentreChildWindow);
  Add("upper", PlaceChildWindowUpper);
  Add("grab", HoldCapture);
  Add("paint", InvalidateChildWindow);
  Add("paints", [](ChildWindow* w) { w->methods.paint = HearPaint; });
  Add("loop", [](ChildWindow* w) { RunModalLoop(w, false); });
  Add("restricted", [](ChildWindow* w) { RunModalLoop(w, true); });
  Add("where", [](ChildWindow* w) { script->Say(PlaceOf(w->geometry)); });
  Add("menuclose", [](ChildWindow* w) { ::SendMessageA(w->window, WM_SYSCOMMAND, SC_CLOSE + 1, 0); });
  Add("at", PlaceChildWindow);
  Add("size", SizeChildWindow);
  Add("max", SetMaxChildSize);
  Add("inside", KeepChildWindowInside);
  Add("reroute", [](ChildWindow* w, int16_t x, int16_t y) { ReroutePress(w, kFlagLeftButton, x, y); });
  words["open"] = [this](std::istream& in) { ShowChildWindow(Make(in)); };
  words["make"] = [this](std::istream& in) { Make(in); };
  // Time.
  Add("settle", Settle);
  Add("wait", RunFor);
  Add("pass", [] { Pass(false); });
  Add("idle", [] { Pass(true); });
  words["together"] = [this](std::istream&) { settles = false; };
  words["say"] = [this](std::istream& in) { Say(Word(in)); };
  words["after"] = [](std::istream& in) {
    const auto delay = Told<int32_t>(in);
    later.push_back(UpToTheDot(in));
    TimerSchedule([](void* what) { script->Act(*static_cast<std::string*>(what)); }, &later.back(), delay);
  };
}

} // namespace framereel
