// The class "edit": what keys, mouse and messages do to its text, against a plain twin and by tables.
#include <random>

#include "win32/input/clipboard.h"
#include "win32/pixels/utf8.h"
#include "win32/win32_controls.h"
#include "win32/win32_drawing.h"
#include "win32/win32_input.h"
#include "win32/win32_system.h"
#include "win32/win32_windows.h"
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

// The user does it, and the program takes it.
void Press(const std::string& words) {
  Act(words);
  Drain();
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

// The twin's text has a letter for each character; these stand for longer ones and for a stray byte.
std::string Real(const std::string& letters) {
  std::string real;
  for (const char letter : letters) {
    real += letter == 'E'   ? "\xC3\xA9"
            : letter == 'G' ? "\xF0\x9F\x98\x80"
            : letter == 'X' ? "\x80"
                            : std::string(1, letter);
  }
  return real;
}

struct Twin {
  std::string text, before; // the second: ahead of the last change
  size_t anchor = 0, caret = 0;
  char joins = 0; // the kind of the last change, while another of its kind joins it

  size_t From() const { return std::min(anchor, caret); }
  size_t To() const { return std::max(anchor, caret); }
  std::string Marked() const { return text.substr(From(), To() - From()); }
  void Change(char kind, size_t from, size_t to, const std::string& with) {
    if (kind == 0 || kind != joins || (kind == 't' && from < to)) before = text;
    joins = kind;
    text.replace(from, to - from, with);
    anchor = caret = from + with.size();
  }
  void Enter(char kind, std::string with, size_t limit) {
    const size_t room = limit - Real(text).size() + Real(Marked()).size();
    while (Real(with).size() > room) with.pop_back();
    if (!with.empty()) Change(kind, From(), To(), with);
  }
  void Erase(char kind, size_t to) {
    if (anchor != caret) return Change(0, From(), To(), "");
    if (to != caret) Change(kind, std::min(to, caret), std::max(to, caret), "");
  }
  void Move(size_t to, bool selects) {
    caret = to;
    if (!selects) anchor = to;
    joins = 0;
  }
  char KindAt(size_t i) const { return i >= text.size() ? 0 : text[i] == ' ' ? 'b' : text[i] == '.' ? 's' : 'w'; }
  size_t Left() const { return caret - (caret > 0); }
  size_t Right() const { return caret + (caret < text.size()); }
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
  const char* name;
  size_t (Twin::*target)() const;
  size_t (Twin::*withControl)() const;
  char erases; // 0: it moves
};
constexpr TwinKey kTwinKeys[] = {
    {"left", &Twin::Left, &Twin::WordLeft, 0},        {"right", &Twin::Right, &Twin::WordRight, 0},
    {"home", &Twin::Start, &Twin::Start, 0},          {"end", &Twin::End, &Twin::End, 0},
    {"backspace", &Twin::Left, &Twin::WordLeft, 'b'}, {"delete", &Twin::Right, &Twin::WordRight, 'd'},
};
constexpr size_t kTwinLimit = 40;

void PressTwinKey(const TwinKey& key, bool shift, bool control, Twin* twin) {
  Press(std::string(shift ? "shift+" : "") + (control ? "ctrl+" : "") + key.name);
  size_t to = (twin->*(control ? key.withControl : key.target))();
  if (key.erases) return twin->Erase(key.erases, to);
  const bool leaves = !shift && !control && twin->anchor != twin->caret;
  if (leaves && key.target == &Twin::Left) to = twin->From();
  if (leaves && key.target == &Twin::Right) to = twin->To();
  twin->Move(to, shift);
}

TEST_F(Edit, DoesWithRandomKeysWhatAPlainTwinDoes) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    std::mt19937 random(seed);
    HWND edit = Show("");
    ::SendMessageA(edit, EM_LIMITTEXT, kTwinLimit, 0);
    SetClipboardText("");
    Twin twin;
    std::string clipboard;
    for (int step = 0; step < 200; ++step) {
      const unsigned act = random() % 16;
      const bool shift = random() % 3 == 0, control = random() % 3 == 0;
      if (act < std::size(kTwinKeys)) {
        // Shift+Delete cuts.
        PressTwinKey(kTwinKeys[act], shift && act != 5, control, &twin);
      } else if (act < 8) {
        ::SendMessageA(edit, act == 6 ? WM_CUT : WM_COPY, 0, 0);
        if (twin.anchor == twin.caret) continue;
        clipboard = twin.Marked();
        if (act == 6) twin.Change(0, twin.From(), twin.To(), "");
      } else if (act == 8) {
        ::SendMessageA(edit, WM_PASTE, 0, 0);
        twin.Enter(0, clipboard, kTwinLimit);
      } else if (act == 9) {
        Press("ctrl+Z");
        std::swap(twin.text, twin.before);
        // Where the caret goes is looked at in a table.
        ::SendMessageA(edit, EM_SETSEL, 0, 0);
        twin.Move(0, false);
      } else {
        const std::string letter(1, "ab .EGX"[random() % 7]);
        for (const char byte : Real(letter)) ::SendMessageA(edit, WM_CHAR, uint8_t(byte), 0);
        twin.Enter('t', letter, kTwinLimit);
      }
      const size_t from = Real(twin.text.substr(0, twin.From())).size(), to = from + Real(twin.Marked()).size();
      ASSERT_EQ(Shown(edit), Bracketed(Real(twin.text), from, to)) << seed << " step " << step;
    }
    ::DestroyWindow(edit);
  }
}

// ---- Lines -------------------------------------------------------------------------------------------------------

TEST_F(Edit, GoesUpAndDownByTheLinesThatItShows) {
  HWND edit = Show("first line\r\n\r\nthird lines", ES_MULTILINE, {10, 10, 190, 100});
  const std::pair<const char*, const char*> keys[] = {
      {"up", "first line\r\n|\r\nthird lines"},
      {"up", "first line|\r\n\r\nthird lines"},
      {"up", "first line|\r\n\r\nthird lines"},
      {"shift+down", "first line[\r\n]\r\nthird lines"},
      {"shift+left", "first line|\r\n\r\nthird lines"},
      {"home", "|first line\r\n\r\nthird lines"},
      {"ctrl+right", "first |line\r\n\r\nthird lines"},
      {"ctrl+right", "first line|\r\n\r\nthird lines"},
      {"ctrl+right", "first line\r\n\r\n|third lines"},
      {"ctrl+left", "first line|\r\n\r\nthird lines"},
      {"delete", "first line|\r\nthird lines"},
      {"backspace", "first lin|\r\nthird lines"},
      {"enter", "first lin\r\n|\r\nthird lines"},
      {"ctrl+Z", "first lin|\r\nthird lines"},
      {"ctrl+Z", "first lin\r\n|\r\nthird lines"},
      {"pagedown", "first lin\r\n\r\n|third lines"},
      {"shift+ctrl+end", "first lin\r\n\r\n[third lines]"},
      {"ctrl+C", "first lin\r\n\r\n[third lines]"},
      {"ctrl+A", "[first lin\r\n\r\nthird lines]"},
      {"ctrl+V", "third lines|"},
  };
  for (const auto& [key, expected] : keys) {
    Press(key);
    ASSERT_EQ(Shown(edit), expected) << key;
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
      Press("home");
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
  Press("up");
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

TEST_F(Edit, BeepsForWhatItsLimitLeavesOutAndGivesWholeCharacters) {
  HWND edit = Show("");
  ::SendMessageA(edit, EM_LIMITTEXT, 4, 0);
  ::SendMessageA(edit, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>("ab\xC3\xA9z"));
  ::SendMessageA(edit, EM_SETSEL, 0, 3); // a place inside a character
  EXPECT_EQ(Shown(edit), "[ab]\xC3\xA9");
  EXPECT_EQ(TheMemoryDisplay().desktop.beeps, 1U);
  char small[4];
  EXPECT_EQ(::GetWindowTextA(edit, small, sizeof small), 2);
}

TEST_F(Edit, TellsEachChangeAndMayEndInTheNoticeOfOne) {
  HWND edit = Show("abc");
  Walk("notice", {{"X", "| main.notice:5/768"}, {"delete ctrl+C", ""}});
  ::SetWindowTextA(edit, "new");
  Walk("notice", {{"ctrl+Z", "main.notice:5/768"}}); // there is nothing to take back
  EXPECT_EQ(Shown(edit), "|new");
  Answer(WM_COMMAND, [edit](HWND, WPARAM, LPARAM) { return ::DestroyWindow(edit); });
  Press("Y Z");
  EXPECT_FALSE(Lives(edit));
}

// ---- Texts that programs share -----------------------------------------------------------------------------------

// What a sign in a script stands for; all others are typed as they stand.
struct Sign {
  char sign;
  const char* words;
};
constexpr Sign kSigns[] = {{'^', "home"},        {'(', "shift+left"},   {'A', "ctrl+A"},
                           {'C', "ctrl+C"},      {'X', "ctrl+X"},       {'V', "ctrl+V"},
                           {'i', "ctrl+insert"}, {'I', "shift+insert"}, {'D', "shift+delete"}};

TEST_F(Edit, TypesAndSharesWholeCharacters) {
  const struct {
    const char* deeds; // signs; * is the middle button at the left end, ! half a character and the loss of the focus
    const char* shown;
    const char *clipboard, *selected;
  } scripts[] = {
      {"\u00E9\u20AC\U0001F600", "\u00E9\u20AC\U0001F600|", "other", ""},
      {"a\u00E9(", "a[\u00E9]", "other", "\u00E9"},
      {"a\u00E9(C^V", "\u00E9|a\u00E9", "\u00E9", "\u00E9"},
      {"a\u00E9AX", "|", "a\u00E9", "a\u00E9"},
      {"ab(i^I", "b|ab", "b", "b"},
      {"ab(D^V", "b|a", "b", "b"},
      {"x\u00FC!n", "x\u00FC\xC3n|", "other", ""},
      {"xV", "xother|", "other", ""},
      {"ab(\u00E9*", "b|a\u00E9", "other", "b"}, // lasts when the selection is gone
      {"*x", "x|", "other", ""},
  };
  HWND edit = Show("", 0, {10, 10, 190, 40});
  const POINT leftEnd = OnScreen(main, 12, 25);
  for (const auto& script : scripts) {
    ::SetWindowTextA(edit, "");
    SetClipboardText("other");
    DisplayShareText(SharedText::kSelected, "");
    const std::string_view deeds = script.deeds;
    for (size_t at = 0; at < deeds.size(); at = NextCharacter(deeds, at)) {
      const Sign* sign = std::find_if(kSigns, std::end(kSigns), [&](const Sign& s) { return s.sign == deeds[at]; });
      if (sign != std::end(kSigns)) {
        Press(sign->words);
      } else if (deeds[at] == '*') {
        MemoryClick(leftEnd.x, leftEnd.y, 2);
      } else if (deeds[at] == '!') {
        ::SendMessageA(edit, WM_CHAR, 0xC3, 0);
        ::SetFocus(main);
        ::SetFocus(edit);
      } else {
        MemoryTypeText(deeds.substr(at, CharacterLength(deeds, at)));
      }
      Drain();
    }
    EXPECT_EQ(Shown(edit), script.shown) << script.deeds;
    EXPECT_EQ(ClipboardText(), script.clipboard) << script.deeds;
    EXPECT_EQ(DisplaySharedText(SharedText::kSelected), script.selected) << script.deeds;
  }
}

// ---- The mouse, what is seen, the caret --------------------------------------------------------------------------

TEST_F(Edit, SelectsByTheMouse) {
  HWND edit = Show("some words here", 0, {10, 10, 190, 100});
  ::SetFocus(main);
  const struct {
    const char *upTo, *words, *shown; // the pointer goes behind that text; null: it stays
  } acts[] = {
      {"som", "+lb", "som|e words here"},
      {"some w", "", "som[e w]ords here"},
      {"s", "", "s[om]e words here"},
      {nullptr, "takemouse -lb", "s[om]e words here"},
      {"some w", "", "s[om]e words here"},
      {"some words", "+shift lb -shift", "som[e words] here"},
      {"some word", "tick 1000 lb +lb", "some [words] here"}, // a word, and on by words
      {"so", "", "[some words] here"},
      {"some words h", "", "some [words here]"},
      {nullptr, "-lb", "some [words here]"},
  };
  for (const auto& act : acts) {
    if (act.upTo) Act("m main " + std::to_string(13 + WidthOf(act.upTo)) + " 55");
    Press(act.words);
    EXPECT_EQ(Shown(edit), act.shown) << act.words;
  }
  EXPECT_EQ(::GetFocus(), edit);
}

// The leftmost pixel there that has another colour than the paper, in the window's client area.
std::optional<POINT> FirstInk(HWND main, const PixelRect& place, COLORREF paper = RGB(255, 255, 255)) {
  for (int x = place.left; x < place.right; ++x) {
    for (int y = place.top; y < place.bottom; ++y) {
      const POINT at = OnScreen(main, x, y);
      if (ColourAt(at) != paper) return POINT{x, y};
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
  Press("end");
  EXPECT_LT(FirstInk(main, place).value_or(POINT{200, 0}).x, 20);
  Press("home m main 60 25 +lb m main 130 25");
  const auto wait = [edit](int times) {
    while (times-- > 0) (::Sleep(50), Drain());
    return Shown(edit).find(']');
  };
  const size_t before = wait(0), then = wait(4);
  EXPECT_GT(then, before + 4);
  Press("-lb");
  EXPECT_EQ(wait(4), then);
}

TEST_F(Edit, BlinksOnlyWhileItHasTheKeyboard) {
  HWND edit = Show("", 0, {10, 10, 110, 40});
  std::string seen;
  TheScript().Add("look", [&](uint32_t wait) {
    ::Sleep(wait);
    for (int i = 0; i < 2; ++i) Drain();
    seen += FirstInk(main, {10, 10, 110, 40}) ? '|' : '.';
  });
  Act("look 0 look 499 look 1 look 500 look 499 A backspace look 0 look 499 look 1"); // a key begins anew
  ::SetFocus(main);
  Act("look 0 look 500 look 500");
  ::SetFocus(edit);
  Act("look 0 keyboard other look 0 look 500");
  EXPECT_EQ(seen, "||.||||....|..");
  const uint64_t presented = TheMemoryDisplay().desktop.presentedPixels;
  Act("look 2000");
  EXPECT_EQ(TheMemoryDisplay().desktop.presentedPixels, presented);
}

} // namespace
} // namespace framereel
