// The texts that programs share: ours to others and theirs to us, in every form, whole and in pieces. The other program
// is xclip, and the artist where it has to be a strange one.
#include "x11/user.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "support/temporary_folder.h"

namespace framereel {

namespace {

// Of some MB, with characters of one to four bytes.
std::string LongText() {
  std::string text;
  while (text.size() < 3'000'000) text += std::to_string(text.size()) + "\n\u00E9\u20AC\U0001F600";
  return text;
}

class X11ClipboardTest : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    for (const Atom selection : {clipboard, XA_PRIMARY})
      XSetSelectionOwner(artist.display, selection, None, CurrentTime);
  }
  // Another program has the text from here on.
  void TheyShare(const std::string& text, const std::string& form) {
    const TemporaryFolder folder;
    WriteWholeFile(folder / "text", text);
    XSetSelectionOwner(artist.display, clipboard, None, CurrentTime);
    const std::string command = "xclip -selection clipboard -target " + form + " -in " + (folder / "text");
    ASSERT_EQ(std::system((command + " >/dev/null 2>&1").c_str()), 0);
    Until([&] { return XGetSelectionOwner(artist.display, clipboard) != None; });
  }
  // What it gets of ours, which goes on taking its events meanwhile.
  std::string Pasted(const std::string& form, const std::string& selection = "clipboard") {
    FILE* pipe = ::popen(("xclip -selection " + selection + " -target " + form + " -out 2>/dev/null").c_str(), "r");
    ::fcntl(::fileno(pipe), F_SETFL, O_NONBLOCK);
    std::string text, bytes(1 << 16, 0);
    Until([&] {
      Drain();
      const ssize_t length = ::read(::fileno(pipe), bytes.data(), bytes.size());
      if (length > 0) text.append(bytes, 0, size_t(length));
      return length == 0;
    });
    ::pclose(pipe);
    return text;
  }
  // The same in the forms that few programs ask for; whether there is an answer.
  bool IsGiven(const char* target, Time time = CurrentTime) {
    XConvertSelection(artist.display, clipboard, Atom(AtomOf(target)), Atom(AtomOf("ANSWER")), asker, time);
    XEvent answer{};
    Until([&] { return Drain(), XCheckTypedWindowEvent(artist.display, asker, SelectionNotify, &answer); });
    return answer.xselection.property != None;
  }

  const Atom clipboard = Atom(AtomOf("CLIPBOARD"));
  const Window asker = XCreateSimpleWindow(artist.display, artist.root, 0, 0, 1, 1, 0, 0, 0);
};

TEST_F(X11ClipboardTest, OursIsGivenInTheFormsThatAreAskedFor) {
  EXPECT_EQ(Pasted("UTF8_STRING"), "");
  DisplayShareText(SharedText::kSelected, "selected");
  DisplayShareText(SharedText::kClipboard, "first");
  DisplayShareText(SharedText::kClipboard, "a\xC3\xA9\xE2\x82\xAC\x80\nz");
  EXPECT_EQ(Pasted("UTF8_STRING"), "a\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBD\nz");
  EXPECT_EQ(Pasted("STRING"), "a\xE9??\nz");
  EXPECT_EQ(Pasted("UTF8_STRING", "primary"), "selected");
  EXPECT_EQ(Pasted("text/html"), "");
  EXPECT_EQ(Pasted("TARGETS"), "TARGETS\nTIMESTAMP\nMULTIPLE\nUTF8_STRING\nSTRING\n");
  EXPECT_TRUE(IsGiven("TIMESTAMP") && Items(asker, "ANSWER").size() == 1);
  EXPECT_FALSE(IsGiven("UTF8_STRING", 1)); // from before it was shared
  WriteItems(asker, "ANSWER", Atom(AtomOf("ATOM_PAIR")),
             {AtomOf("STRING"), AtomOf("ONE"), AtomOf("MULTIPLE"), AtomOf("TWO")});
  EXPECT_TRUE(IsGiven("MULTIPLE"));
  EXPECT_EQ(Items(asker, "ANSWER"), (std::vector<long>{AtomOf("STRING"), AtomOf("ONE"), AtomOf("MULTIPLE"), None}));
  EXPECT_EQ(Text(asker, "ONE"), "a\xE9??\nz");
}

TEST_F(X11ClipboardTest, ALargeTextGoesOutInPiecesAndLeavesNothingBehind) {
  const std::string text = LongText();
  DisplayShareText(SharedText::kClipboard, text);
  // One that begins, twice, and never goes on.
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(IsGiven("UTF8_STRING"));
  EXPECT_TRUE(Pasted("UTF8_STRING") == text);
  EXPECT_EQ(X11Live()->selections.sending.size(), 1U);
  XDestroyWindow(artist.display, asker);
  Drain();
  EXPECT_TRUE(X11Live()->selections.sending.empty());
}

TEST_F(X11ClipboardTest, TheirsTakesThePlaceOfOursInWhateverFormTheyHaveIt) {
  DisplayShareText(SharedText::kClipboard, "ours");
  EXPECT_EQ(DisplaySharedText(SharedText::kClipboard), "ours");
  EXPECT_EQ(DisplaySharedText(SharedText::kSelected), "");
  const std::string large = LongText(); // in pieces
  const struct {
    std::string theirs;
    const char* form;
    std::string taken;
  } texts[] = {{"caf\xC3\xA9\x80", "UTF8_STRING", "caf\xC3\xA9\x80"},
               {large, "UTF8_STRING", large},
               {"caf\xE9", "STRING", "caf\u00E9"},
               {"no text", "image/png", ""}};
  for (const auto& [theirs, form, taken] : texts) {
    EXPECT_TRUE(DisplayHasSharedText(SharedText::kClipboard));
    TheyShare(theirs, form);
    Until([&] { return DisplaySharedText(SharedText::kClipboard) == taken; });
  }
  EXPECT_FALSE(DisplayHasSharedText(SharedText::kClipboard));
}

TEST_F(X11ClipboardTest, AStuckNeighbourIsNotWaitedForAndNothingIsMissedMeanwhile) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  Activate(window);
  X11WatchSelections(X11Live());
  X11Live()->selections.patience = 20; // ms
  XSetSelectionOwner(artist.display, XA_PRIMARY, asker, CurrentTime);
  Key(XK_x, true);
  EXPECT_EQ(DisplaySharedText(SharedText::kSelected), "");
  EXPECT_FALSE(DisplayHasSharedText(SharedText::kSelected));
  Key(XK_x, false);
  EXPECT_EQ(Next(Kind::kKeyDown, window).text, "x");
  EXPECT_EQ(Next(Kind::kKeyUp, window).key, 'X');
  // What comes too late finds somebody, or it would be an error that ends the other program,
  XEvent late{};
  while (XCheckTypedWindowEvent(artist.display, asker, SelectionRequest, &late)) {
    EXPECT_NE(artist.State(late.xselectionrequest.requestor).all_event_masks, 0);
  }
  EXPECT_EQ(late.type, SelectionRequest);
  // and does not get in the way of the next.
  X11Live()->selections.patience = 20000;
  TheyShare("whole", "UTF8_STRING");
  EXPECT_EQ(DisplaySharedText(SharedText::kClipboard), "whole");
}

} // namespace

} // namespace framereel
