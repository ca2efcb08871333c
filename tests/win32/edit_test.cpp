// The class "edit": what keys, mouse and messages do to its text, by tables.
#include "win32/input/clipboard.h"
#include "win32/window_scene.h"

namespace framereel {
namespace {

constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr PixelRect kPlace = {10, 10, 190, 100}; // in the client area

// Words, besides the scene's: "here" gives the edit the focus, "select FROM TO", "char BYTE" and "type TEXT", "behind
// TEXT" moves the pointer to where that text would end, "look MS" tells after a while whether the caret stands in the
// empty edit. "anew" makes another edit, with some lines on the clipboard, and "shared?" tells what that has and what
// is selected anywhere. All that a word does is taken at once.
class Edit : public OneWindow {
protected:
  Edit() {
    Script& script = TheScript();
    script.settle = Drain;
    script.Add("here", [this] { ::SetFocus(edit); });
    script.Add("select", [this](WPARAM from, LPARAM to) { Send(EM_SETSEL, from, to); });
    script.Add("char", [this](WPARAM byte) { Send(WM_CHAR, byte); });
    script.words["type"] = [](std::istream& in) { MemoryTypeText(Word(in)); };
    script.words["behind"] = [this](std::istream& in) {
      const std::string text = UpToTheDot(in);
      HDC context = ::GetDC(main);
      SIZE size = {0, 0};
      ::GetTextExtentPointA(context, text.data(), int(text.size()) - 1, &size);
      ::ReleaseDC(main, context);
      const POINT at = OnScreen(main, 13 + size.cx, 55);
      MemoryMovePointerTo(at.x, at.y);
    };
    script.Add("look", [this](uint32_t wait) {
      ::Sleep(wait);
      for (int i = 0; i < 2; ++i) Drain();
      Tell(HasInk(kPlace) ? "|" : ".");
    });
    script.Add("anew", [this] {
      ::DestroyWindow(edit);
      SetClipboardText("a\nb\r\nc");
      DisplayShareText(SharedText::kSelected, "");
      Show("");
    });
    script.Add("shared?", [] { Tell(Text(ClipboardText(), '/', DisplaySharedText(SharedText::kSelected))); });
  }

  // With the focus, the caret at the end of the text.
  void Show(const std::string& text, DWORD style = 0) {
    edit = ShowControl("edit", "", style, kPlace, main, 5);
    ::SetWindowTextA(edit, text.c_str());
    Act("here select -1 -1");
    Heard();
  }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return ::SendMessageA(edit, message, wParam, lParam);
  }
  // The text with the selection in brackets, or "|" at the caret.
  std::string Shown() {
    std::string text(size_t(::GetWindowTextLengthA(edit)) + 1, 'x');
    text.resize(size_t(::GetWindowTextA(edit, text.data(), int(text.size()))));
    DWORD from = 0, to = 0;
    Send(EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    text.insert(to, 1, from == to ? '|' : ']');
    return from == to ? text : text.insert(from, 1, '[');
  }
  void Walk(std::initializer_list<Step> steps) {
    for (const Step& step : steps) {
      Act(step.words);
      const std::string told = Heard("none");
      EXPECT_EQ(told + (told.empty() ? "" : " ") + Shown(), step.brings) << step.words;
    }
  }
  bool HasInk(const PixelRect& r) {
    const POINT at = OnScreen(main, r.left, r.top);
    const PixelRect where = {at.x, at.y, at.x + WidthOf(r), at.y + HeightOf(r)};
    return Count(where, kPaper) < int64_t{WidthOf(r)} * HeightOf(r);
  }

  HWND edit = nullptr;
};

TEST_F(Edit, MovesSelectsErasesAndTakesBackByCharactersAndWords) {
  Show("one two.\u00E9 x");
  Walk({{"ctrl+left ctrl+left", "one two.|\u00E9 x"},
        {"ctrl+left ctrl+left", "one |two.\u00E9 x"},
        {"ctrl+right", "one two|.\u00E9 x"},
        {"shift+left shift+ctrl+left", "one [two].\u00E9 x"},
        {"right shift+right shift+right left", "one two|.\u00E9 x"},
        {"backspace backspace", "one t|.\u00E9 x"},
        {"ctrl+Z", "one two|.\u00E9 x"}, // a run of the same
        {"ctrl+Z", "one t|.\u00E9 x"},   // and that again
        {"delete delete", "one t| x"},
        {"ctrl+Z", "one t.\u00E9| x"},
        {"A B shift+left C D", "one t.\u00E9acd| x"},
        {"ctrl+Z", "one t.\u00E9ab| x"},
        {"ctrl+backspace", "one t.| x"},
        {"ctrl+delete", "one t.|x"},
        {"home delete left shift+left E left F ctrl+Z", "|ene t.x"},
        {"ctrl+backspace backspace", "|ene t.x"},
        {"ctrl+Z", "f|ene t.x"},
        {"shift+end backspace", "f|"},
        {"ctrl+Z", "fene t.x|"}});
}

TEST_F(Edit, OfLinesGoesUpAndDownByThemAndBreaksThemBetweenWords) {
  Show("first line\r\n\r\nthird lines", ES_MULTILINE);
  Walk({{"up", "first line\r\n|\r\nthird lines"},
        {"up shift+down", "first line[\r\n]\r\nthird lines"},
        {"shift+left home ctrl+right ctrl+right ctrl+right", "first line\r\n\r\n|third lines"},
        {"ctrl+left delete backspace enter", "first lin\r\n|\r\nthird lines"},
        {"pagedown shift+ctrl+end ctrl+C ctrl+A", "[first lin\r\n\r\nthird lines]"},
        {"enter ctrl+V", "\r\nthird lines|"},
        {"select 0 2 ctrl+X ctrl+V", "\r\n|third lines"}});
  for (const auto& [width, caret] : {std::pair{50, "\r\nthird |lines"}, {1, "\r\nthird line|s"}}) {
    const RECT format = {0, 0, width, 90};
    Send(EM_SETRECTNP, 0, reinterpret_cast<LPARAM>(&format));
    Walk({{"ctrl+end home", caret}});
  }
}

TEST_F(Edit, TypesAndSharesWholeCharacters) {
  Act("m main 12 25");
  Walk({{"anew type \u00E9\u20AC\U0001F600 shared?", "a\nb\r\nc/ \u00E9\u20AC\U0001F600|"},
        {"anew type a\u00E9 shift+left ctrl+C home ctrl+V shared?", "\u00E9/\u00E9 \u00E9|a\u00E9"},
        {"anew type a\u00E9 ctrl+A ctrl+X shared?", "a\u00E9/a\u00E9 |"},
        {"anew A B shift+left ctrl+insert home shift+insert", "b|ab"},
        {"anew A B shift+left shift+delete home ctrl+V", "b|a"},
        {"anew type x\u00FC char 195 focus main here N", "x\u00FC\xC3n|"}, // half a character is a stray byte
        {"anew X ctrl+V", "xa b c|"},
        {"anew A B shift+left type \u00E9 mb shared?", "a\nb\r\nc/b b|a\u00E9"}}); // lasts when the selection is gone
  Send(EM_LIMITTEXT, 4);
  Send(WM_SETTEXT);
  Send(EM_REPLACESEL, 0, reinterpret_cast<LPARAM>("ab\xC3\xA9z"));
  Walk({{"select 0 3", "[ab]\xC3\xA9"}}); // a place inside a character
  EXPECT_EQ(TheMemoryDisplay().desktop.beeps, 1U);
  char small[4];
  EXPECT_EQ(::GetWindowTextA(edit, small, sizeof small), 2);
}

TEST_F(Edit, TellsEachChangeAndMayEndInTheNoticeOfOne) {
  Show("abc");
  Act("X delete ctrl+C");
  EXPECT_EQ(Heard("notice"), "main.notice:5/768");
  ::SetWindowTextA(edit, "new");
  Walk({{"ctrl+Z", "|new"}}); // there is nothing to take back
  Answer(WM_COMMAND, [this](HWND, WPARAM, LPARAM) { return ::DestroyWindow(edit); });
  Act("Y Z");
  EXPECT_FALSE(IsLive(edit));
}

TEST_F(Edit, SelectsByTheMouse) {
  Show("some words here");
  Walk({{"focus main behind som . +lb", "som|e words here"},
        {"behind some w .", "som[e w]ords here"},
        {"behind s . takemouse -lb behind some w .", "s[om]e words here"},
        {"behind some words . +shift lb -shift", "som[e words] here"},
        {"behind some word . tick 1000 lb +lb", "some [words] here"}, // a word, and on by words
        {"behind so .", "[some words] here"},
        {"behind some words h . -lb", "some [words here]"}});
  EXPECT_EQ(DisplaySharedText(SharedText::kSelected), "words here");
  EXPECT_EQ(::GetFocus(), edit);
}

TEST_F(Edit, ScrollsWithTheCaretAndOnWhileTheMouseIsHeldOutside) {
  constexpr PixelRect kLeft = {14, 10, 60, 100}; // behind the caret
  Show(std::string(20, ' ') + std::string(30000, 'm'));
  EXPECT_TRUE(HasInk(kLeft));
  Act("home");
  EXPECT_FALSE(HasInk(kLeft));
  const auto selectedUpTo = [this](int waits) {
    while (waits-- > 0) Act("wait 50");
    return Shown().find(']');
  };
  Act("m main 60 25 +lb m main 210 25");
  const size_t before = selectedUpTo(0), then = selectedUpTo(4);
  EXPECT_GT(then, before + 4);
  Act("-lb");
  EXPECT_EQ(selectedUpTo(4), then);
}

TEST_F(Edit, BlinksOnlyWhileItHasTheKeyboard) {
  Show("");
  Walk({{"look 0 look 499 look 1 look 500 look 499", "| | . | | |"},
        {"A backspace look 0 look 499 look 1", "| | . |"}, // a key begins anew
        {"focus main look 0 look 500 look 500 here look 0", ". . . | |"},
        {"keyboard other look 0 look 500", ". . |"}});
  const uint64_t presented = TheMemoryDisplay().desktop.presentedPixels;
  Act("look 2000");
  EXPECT_EQ(TheMemoryDisplay().desktop.presentedPixels, presented);
}

} // namespace
} // namespace framereel
