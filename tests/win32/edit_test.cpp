// The class "edit": what keys, mouse and messages do to its text, against a plain twin and by tables.
#include <optional>
#include <random>

#include "win32/input/clipboard.h"
#include "win32/window_scene.h"

namespace framereel {
namespace {

std::string TextOf(HWND edit) {
  std::string text(size_t(::GetWindowTextLengthA(edit)) + 1, 'x');
  text.resize(size_t(::GetWindowTextA(edit, text.data(), int(text.size()))));
  return text;
}

// The text with the selection in brackets, or "|" at the caret.
std::string Bracketed(const std::string& text, size_t from, size_t to) {
  const std::string ahead = text.substr(0, from), marked = text.substr(from, to - from), behind = text.substr(to);
  return from == to ? ahead + "|" + behind : ahead + "[" + marked + "]" + behind;
}

std::string Shown(HWND edit) {
  DWORD from = 0, to = 0;
  ::SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  return Bracketed(TextOf(edit), from, to);
}

void Replace(HWND edit, const char* text) {
  ::SendMessageA(edit, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(text));
}

class Edit : public OneWindow {
protected:
  // With the focus, the caret at the end of the text.
  HWND Show(const char* text, DWORD style = 0, const PixelRect& place = {10, 10, 110, 100}) {
    HWND edit = ShowControl("edit", text, style, place, main, 5);
    ::SetFocus(edit);
    ::SendMessageA(edit, EM_SETSEL, WPARAM(-1), -1);
    Drain();
    return edit;
  }
  void Type(const char* letters) {
    for (; *letters; ++letters) MemoryTypeKey(uint8_t(*letters));
    Drain();
  }
  // How far the text "before" reaches in a control: where a caret behind it stands.
  int WidthOf(const std::string& before) {
    HDC context = ::GetDC(main);
    SIZE size = {0, 0};
    ::GetTextExtentPointA(context, before.data(), int(before.size()), &size);
    ::ReleaseDC(main, context);
    return size.cx;
  }
};

// ---- Keys, against a plain twin ----------------------------------------------------------------------------------

// The characters of a text of one line, where anchor and caret stand among them, and the text before the last change.
struct Twin {
  std::vector<std::string> text, before;
  size_t anchor = 0, caret = 0;
  char joins = 0; // the kind of the last change, while another of its kind joins it

  size_t From() const { return std::min(anchor, caret); }
  size_t To() const { return std::max(anchor, caret); }
  std::string Part(size_t from, size_t to) const {
    std::string part;
    for (size_t i = from; i < to; ++i) part += text[i];
    return part;
  }
  void Change(char kind, size_t from, size_t to, const std::vector<std::string>& with) {
    if (kind == 0 || kind != joins || (kind == 't' && from < to)) before = text;
    joins = kind;
    text.erase(text.begin() + ptrdiff_t(from), text.begin() + ptrdiff_t(to));
    text.insert(text.begin() + ptrdiff_t(from), with.begin(), with.end());
    anchor = caret = from + with.size();
  }
  void Enter(char kind, std::vector<std::string> with, size_t limit) {
    size_t room = limit - (Part(0, text.size()).size() - Part(From(), To()).size()), fits = 0;
    while (fits < with.size() && with[fits].size() <= room) room -= with[fits++].size();
    with.resize(fits);
    if (fits > 0) Change(kind, From(), To(), with);
  }
  void Erase(char kind, size_t to) {
    if (anchor != caret) return Change(0, From(), To(), {});
    if (to != caret) Change(kind, std::min(to, caret), std::max(to, caret), {});
  }
  void Move(size_t to, bool selects) {
    caret = to;
    if (!selects) anchor = to;
    joins = 0;
  }
  char KindAt(size_t i) const { return i >= text.size() ? 0 : text[i] == " " ? 'b' : text[i] == "." ? 's' : 'w'; }
  size_t Left() const { return caret > 0 ? caret - 1 : 0; }
  size_t Right() const { return std::min(caret + 1, text.size()); }
  size_t Start() const { return 0; }
  size_t End() const { return text.size(); }
  size_t WordLeft() const {
    size_t at = caret;
    while (at > 0 && KindAt(at - 1) == 'b') --at;
    for (const char run = at ? KindAt(at - 1) : '-'; at > 0 && KindAt(at - 1) == run;) --at;
    return at;
  }
  size_t WordRight() const {
    size_t at = caret;
    for (const char run = KindAt(at); run && KindAt(at) == run;) ++at;
    while (KindAt(at) == 'b') ++at;
    return at;
  }
};

struct TwinKey {
  int key;
  size_t (Twin::*target)() const;
  size_t (Twin::*withControl)() const;
  char erases; // 0: it moves
};
constexpr TwinKey kTwinKeys[] = {
    {VK_LEFT, &Twin::Left, &Twin::WordLeft, 0},   {VK_RIGHT, &Twin::Right, &Twin::WordRight, 0},
    {VK_HOME, &Twin::Start, &Twin::Start, 0},     {VK_END, &Twin::End, &Twin::End, 0},
    {VK_BACK, &Twin::Left, &Twin::WordLeft, 'b'}, {VK_DELETE, &Twin::Right, &Twin::WordRight, 'd'},
};
constexpr size_t kTwinLimit = 40;

void PressTwinKey(const TwinKey& key, bool shift, bool control, Twin* twin) {
  if (shift) MemoryPressKey(VK_SHIFT);
  if (control) MemoryPressKey(VK_CONTROL);
  MemoryTypeKey(uint8_t(key.key));
  MemoryReleaseKey(VK_CONTROL);
  MemoryReleaseKey(VK_SHIFT);
  Drain();
  size_t to = (twin->*(control ? key.withControl : key.target))();
  if (key.erases) return twin->Erase(key.erases, to);
  const bool leaves = !shift && !control && twin->anchor != twin->caret;
  if (leaves && key.key == VK_LEFT) to = twin->From();
  if (leaves && key.key == VK_RIGHT) to = twin->To();
  twin->Move(to, shift);
}

TEST_F(Edit, DoesWithRandomKeysWhatAPlainTwinDoes) {
  const std::vector<std::string> characters = {"a", "b", " ", ".", "\xC3\xA9", "\xF0\x9F\x98\x80", "\x80"};
  for (unsigned seed = 0; seed < 40; ++seed) {
    std::mt19937 random(seed);
    HWND edit = Show("");
    ::SendMessageA(edit, EM_LIMITTEXT, kTwinLimit, 0);
    Twin twin;
    std::vector<std::string> clipboard;
    SetClipboardText("");
    for (int step = 0; step < 200; ++step) {
      const unsigned act = random() % 16;
      const bool shift = random() % 3 == 0, control = random() % 3 == 0;
      if (act < std::size(kTwinKeys)) {
        // Shift+Delete cuts.
        PressTwinKey(kTwinKeys[act], shift && kTwinKeys[act].key != VK_DELETE, control, &twin);
      } else if (act < 8) {
        ::SendMessageA(edit, act == 6 ? WM_CUT : WM_COPY, 0, 0);
        if (twin.anchor == twin.caret) continue;
        clipboard.assign(twin.text.begin() + ptrdiff_t(twin.From()), twin.text.begin() + ptrdiff_t(twin.To()));
        if (act == 6) twin.Change(0, twin.From(), twin.To(), {});
      } else if (act == 8) {
        ::SendMessageA(edit, WM_PASTE, 0, 0);
        twin.Enter(0, clipboard, kTwinLimit);
      } else if (act == 9) {
        TypeWith({VK_CONTROL}, 'Z');
        Drain();
        std::swap(twin.text, twin.before);
        // Where the caret goes is looked at in a table.
        ::SendMessageA(edit, EM_SETSEL, 0, 0);
        twin.Move(0, false);
      } else {
        const std::string& character = characters[random() % characters.size()];
        for (const char byte : character) ::SendMessageA(edit, WM_CHAR, uint8_t(byte), 0);
        twin.Enter('t', {character}, kTwinLimit);
      }
      const size_t from = twin.Part(0, twin.From()).size(), to = twin.Part(0, twin.To()).size();
      ASSERT_EQ(Shown(edit), Bracketed(twin.Part(0, twin.End()), from, to)) << seed << " step " << step;
    }
    ::DestroyWindow(edit);
  }
}

// ---- Lines -------------------------------------------------------------------------------------------------------

TEST_F(Edit, GoesUpAndDownByTheLinesThatItShows) {
  struct Key {
    std::vector<uint8_t> held;
    uint8_t key;
    const char* shown;
  };
  HWND edit = Show("first line\r\n\r\nthird lines", ES_MULTILINE, {10, 10, 190, 100});
  const Key keys[] = {
      {{}, VK_UP, "first line\r\n|\r\nthird lines"},
      {{}, VK_UP, "first line|\r\n\r\nthird lines"},
      {{}, VK_UP, "first line|\r\n\r\nthird lines"},
      {{VK_SHIFT}, VK_DOWN, "first line[\r\n]\r\nthird lines"},
      {{VK_SHIFT}, VK_LEFT, "first line|\r\n\r\nthird lines"},
      {{}, VK_HOME, "|first line\r\n\r\nthird lines"},
      {{VK_CONTROL}, VK_RIGHT, "first |line\r\n\r\nthird lines"},
      {{VK_CONTROL}, VK_RIGHT, "first line|\r\n\r\nthird lines"},
      {{VK_CONTROL}, VK_RIGHT, "first line\r\n\r\n|third lines"},
      {{VK_CONTROL}, VK_LEFT, "first line|\r\n\r\nthird lines"},
      {{}, VK_DELETE, "first line|\r\nthird lines"},
      {{}, VK_BACK, "first lin|\r\nthird lines"},
      {{}, VK_RETURN, "first lin\r\n|\r\nthird lines"},
      {{VK_CONTROL}, 'Z', "first lin|\r\nthird lines"},
      {{VK_CONTROL}, 'Z', "first lin\r\n|\r\nthird lines"},
      {{}, VK_NEXT, "first lin\r\n\r\n|third lines"},
      {{VK_CONTROL, VK_SHIFT}, VK_END, "first lin\r\n\r\n[third lines]"},
      {{VK_CONTROL}, 'C', "first lin\r\n\r\n[third lines]"},
      {{VK_CONTROL}, 'A', "[first lin\r\n\r\nthird lines]"},
      {{VK_CONTROL}, 'V', "third lines|"},
  };
  for (const Key& key : keys) {
    for (const uint8_t held : key.held) MemoryPressKey(held);
    MemoryTypeKey(key.key);
    for (const uint8_t held : key.held) MemoryReleaseKey(held);
    Drain();
    ASSERT_EQ(Shown(edit), key.shown) << int(key.key);
  }
}

TEST_F(Edit, BreaksLinesBetweenWordsAtItsFormattingRectangle) {
  HWND edit = Show("one two three", ES_MULTILINE);
  const auto lines = [edit](int width) {
    const RECT format = {0, 0, width, 90};
    ::SendMessageA(edit, EM_SETRECTNP, 0, reinterpret_cast<LPARAM>(&format));
    // The ends of lines, as Home shows their beginnings from the last one up.
    std::string text = TextOf(edit);
    for (size_t end = text.size();;) {
      ::SendMessageA(edit, EM_SETSEL, WPARAM(end), LPARAM(end));
      MemoryTypeKey(VK_HOME);
      Drain();
      DWORD from = 0;
      ::SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&from), 0);
      if (from == 0) return text;
      text = text.substr(0, from) + "/" + text.substr(from);
      end = from - 1;
    }
  };
  EXPECT_EQ(lines(WidthOf("one two three")), "one two three");
  EXPECT_EQ(lines(WidthOf("one two three") - 1), "one two /three");
  EXPECT_EQ(lines(WidthOf("one two") - 1), "one /two /three");
  // A broken line ends ahead of the blank that it is broken behind.
  ::SendMessageA(edit, EM_SETSEL, WPARAM(-1), -1);
  MemoryTypeKey(VK_UP);
  Drain();
  EXPECT_EQ(Shown(edit), "one two| three");
  EXPECT_EQ(lines(WidthOf("three") - 1), "one /two /thre/e");
  EXPECT_EQ(lines(1), "o/n/e /t/w/o /t/h/r/e/e");
  EXPECT_EQ(lines(0), "one two three");
}

// ---- Messages ----------------------------------------------------------------------------------------------------

TEST_F(Edit, GivesAndTakesLinesAsTheClipboardHasThem) {
  SetClipboardText("a\nb\r\nc");
  HWND one = Show("");
  ::SendMessageA(one, WM_PASTE, 0, 0);
  EXPECT_EQ(Shown(one), "a b c|");
  HWND many = Show("", ES_MULTILINE);
  ::SendMessageA(many, WM_PASTE, 0, 0);
  EXPECT_EQ(Shown(many), "a\r\nb\r\nc|");
  ::SendMessageA(many, EM_SETSEL, 0, 4);
  ::SendMessageA(many, WM_CUT, 0, 0);
  EXPECT_EQ(Shown(many), "|\r\nc");
  EXPECT_EQ(ClipboardText(), "a\nb");
}

TEST_F(Edit, TakesWholeCharactersUpToItsLimitAndBeepsForTheRest) {
  HWND edit = Show("");
  ::SendMessageA(edit, EM_LIMITTEXT, 4, 0);
  Replace(edit, "ab\xE2\x82\xAC");
  EXPECT_EQ(Shown(edit), "ab|");
  Replace(edit, "\xC3\xA9");
  EXPECT_EQ(Shown(edit), "ab\xC3\xA9|");
  EXPECT_EQ(TheMemoryDisplay().desktop.beeps, 1U);
  ::SendMessageA(edit, EM_SETSEL, 0, 3); // a place inside a character
  EXPECT_EQ(Shown(edit), "[ab]\xC3\xA9");
  ::SetWindowTextA(edit, "longer than that");
  ::SendMessageA(edit, EM_SETSEL, 0, 1);
  Type("X");
  EXPECT_EQ(Shown(edit), "[l]onger than that");
  EXPECT_EQ(TheMemoryDisplay().desktop.beeps, 2U);
  char small[5];
  EXPECT_EQ(::GetWindowTextA(edit, small, sizeof small), 4);
  EXPECT_STREQ(small, "long");
}

TEST_F(Edit, TellsEachChangeAndMayEndInTheNoticeOfOne) {
  HWND edit = Show("abc");
  Type("X");
  EXPECT_EQ(TakeLog({"COMMAND"}), "main COMMAND 5:768");
  MemoryTypeKey(VK_DELETE);
  TypeWith({VK_CONTROL}, 'C');
  Drain();
  EXPECT_EQ(TakeLog({"COMMAND"}), "");
  ::SetWindowTextA(edit, "new");
  TypeWith({VK_CONTROL}, 'Z'); // there is nothing to take back
  Drain();
  EXPECT_EQ(TakeLog({"COMMAND"}), "main COMMAND 5:768");
  EXPECT_EQ(Shown(edit), "|new");
  Answer(WM_COMMAND, [edit](HWND, WPARAM, LPARAM) { return ::DestroyWindow(edit); });
  Type("YZ");
  EXPECT_FALSE(Lives(edit));
}

WNDPROC earlier;
LRESULT WithoutLetters(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return message == WM_CHAR ? 0 : ::CallWindowProcA(earlier, window, message, wParam, lParam);
}

TEST_F(Edit, CanBeSubclassed) {
  HWND edit = Show("text");
  const auto before = ::SetWindowLongPtrA(edit, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(WithoutLetters));
  earlier = reinterpret_cast<WNDPROC>(before);
  Type("AB");
  MemoryTypeKey(VK_LEFT);
  Drain();
  EXPECT_EQ(Shown(edit), "tex|t");
  EXPECT_EQ(::GetParent(edit), main);
}

// ---- The mouse, what is seen, the caret --------------------------------------------------------------------------

TEST_F(Edit, SelectsByTheMouse) {
  HWND edit = Show("some words here", 0, {10, 10, 190, 100});
  ::SetFocus(main);
  struct Act {
    const char* upTo; // the pointer goes there; null: it stays
    const char* does; // P presses, R releases, S holds and s leaves Shift, C takes the mouse away, . waits a second
    const char* shown;
  };
  const Act acts[] = {
      {"som", "P", "som|e words here"},
      {"some w", "", "som[e w]ords here"},
      {"s", "", "s[om]e words here"},
      {"", "CR", "s[om]e words here"},
      {"some w", "", "s[om]e words here"},
      {"some words", "SPRs", "som[e words] here"},
      {"some word", ".PRP", "some [words] here"}, // a word, and on by words
      {"so", "", "[some words] here"},
      {"some words h", "", "some [words here]"},
      {"", "R", "some [words here]"},
  };
  for (const Act& act : acts) {
    const POINT to = OnScreen(main, 12 + WidthOf(act.upTo) + 1, 55);
    if (*act.does != 'C' && *act.does != 'R') MemoryMovePointerTo(to.x, to.y);
    for (const char* each = act.does; *each; ++each) {
      if (*each == 'P') MemoryPressButton();
      if (*each == 'R') MemoryReleaseButton();
      if (*each == 'S') MemoryPressKey(VK_SHIFT);
      if (*each == 's') MemoryReleaseKey(VK_SHIFT);
      if (*each == 'C') MemoryTakeCapture();
      if (*each == '.') TheMemoryDisplay().tick += 1000;
    }
    Drain();
    EXPECT_EQ(Shown(edit), act.shown) << act.upTo << act.does;
  }
  EXPECT_EQ(::GetFocus(), edit);
}

// The leftmost pixel there that has another colour than the paper, in the window's client area.
std::optional<POINT> FirstInk(HWND main, const PixelRect& place, COLORREF paper = RGB(255, 255, 255)) {
  for (int x = place.left; x < place.right; ++x) {
    for (int y = place.top; y < place.bottom; ++y) {
      const POINT at = OnScreen(main, x, y);
      if (ColourAt(at.x, at.y) != paper) return POINT{x, y};
    }
  }
  return {};
}

TEST_F(Edit, ScrollsWithTheCaretAndOnWhileTheMouseIsHeldOutside) {
  const PixelRect place = {10, 10, 110, 40};
  HWND edit = Show("", 0, place);
  ::SetWindowTextA(edit, (std::string(20, ' ') + std::string(30000, 'm')).c_str());
  Drain();
  EXPECT_GT(FirstInk(main, {14, 10, 110, 40}).value_or(POINT{0, 0}).x, 60); // behind the caret and the blanks
  MemoryTypeKey(VK_END);
  Drain();
  EXPECT_LT(FirstInk(main, place).value_or(POINT{200, 0}).x, 20);
  MemoryTypeKey(VK_HOME);
  const POINT inside = OnScreen(main, 60, 25), outside = OnScreen(main, 130, 25);
  MemoryMovePointerTo(inside.x, inside.y);
  MemoryPressButton();
  MemoryMovePointerTo(outside.x, outside.y);
  Drain();
  const auto wait = [edit](int times) {
    while (times-- > 0) (::Sleep(50), Drain());
    return Shown(edit).find(']');
  };
  const size_t before = wait(0), then = wait(4);
  EXPECT_GT(then, before + 4);
  MemoryReleaseButton();
  Drain();
  EXPECT_EQ(wait(4), then);
}

TEST_F(Edit, TurnsItsLinesWithTheWheelAsFarAsThereAreAny) {
  const PixelRect place = {10, 10, 110, 60};
  std::string text = "first";
  for (int i = 0; i < 20; ++i) text += "\r\n";
  ShowControl("edit", text.c_str(), ES_MULTILINE, place, main, 5);
  const POINT inside = OnScreen(main, 60, 30);
  MemoryMovePointerTo(inside.x, inside.y);
  for (const int notches : {-1, -100, 1, 100}) {
    MemoryTurnWheel(int8_t(notches));
    Drain();
    EXPECT_EQ(FirstInk(main, place).has_value(), notches == 100) << notches;
    EXPECT_EQ(TakeLog({"MOUSEWHEEL"}), "");
  }
  MemoryTurnWheel(1);
  Drain();
  EXPECT_NE(TakeLog({"MOUSEWHEEL"}), "");
}

TEST_F(Edit, BlinksOnlyWhileItHasTheKeyboard) {
  const PixelRect place = {10, 10, 110, 40};
  HWND edit = Show("", 0, place);
  std::string seen;
  const auto look = [&](uint32_t wait) {
    ::Sleep(wait);
    Drain();
    Drain();
    seen += FirstInk(main, place) ? '|' : '.';
  };
  for (const uint32_t wait : {0, 499, 1, 500, 499}) look(wait);
  Type("A"); // begins anew behind the letter
  MemoryTypeKey(VK_BACK);
  for (const uint32_t wait : {0, 499, 1}) look(wait);
  EXPECT_EQ(seen, "||.||||.");
  seen.clear();
  ::SetFocus(main);
  for (const uint32_t wait : {0, 500, 500}) look(wait);
  ::SetFocus(edit);
  look(0);
  MemoryGiveKeyboard(MemoryOpenWindow("other", {400, 100, 500, 200}, 0));
  for (const uint32_t wait : {0, 500}) look(wait);
  EXPECT_EQ(seen, "...|..");
  const uint64_t presented = TheMemoryDisplay().desktop.presentedPixels;
  ::Sleep(2000);
  Drain();
  EXPECT_EQ(TheMemoryDisplay().desktop.presentedPixels, presented);
}

} // namespace
} // namespace framereel
