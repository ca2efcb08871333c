// The texts that programs share: ours to others and theirs to us, in every form, whole and in pieces.
#include "x11/neighbour.h"
#include "x11/user.h"

#include <random>

#include <X11/Xatom.h>

namespace framereel {

namespace {

using Forms = std::vector<std::string>;

// Of some MB, every character of one to four bytes.
std::string LongText() {
  std::mt19937 random(1);
  std::string text;
  while (text.size() < 3'000'000) {
    const char* const some[] = {"a", "\n", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
    text += some[random() % std::size(some)];
  }
  return text;
}

class X11ClipboardTest : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    asker = XCreateSimpleWindow(artist.display, artist.root, 0, 0, 1, 1, 0, 0, 0);
    XSelectInput(artist.display, asker, PropertyChangeMask);
  }
  void TearDown() override {
    XDestroyWindow(artist.display, asker);
    X11WindowTest::TearDown();
  }

  // Another program asks for a form of our text, and waits for the answer.
  bool IsGiven(const char* target, const char* selection = "CLIPBOARD", Time time = CurrentTime) {
    XConvertSelection(artist.display, Atom(AtomOf(selection)), Atom(AtomOf(target)), Atom(AtomOf("ANSWER")), asker,
                      time);
    const XEvent answer =
        Await([&](XEvent* e) { return XCheckTypedWindowEvent(artist.display, asker, SelectionNotify, e) == True; });
    return answer.xselection.property != None;
  }
  // What it gets: "TYPE bytes", or "refused".
  std::string Given(const char* target, const char* selection = "CLIPBOARD", Time time = CurrentTime) {
    const Atom property = Atom(AtomOf("ANSWER"));
    if (!IsGiven(target, selection, time)) return "refused";
    std::string type = TypeOf(asker, "ANSWER"), text = Text(asker, "ANSWER");
    if (type != "INCR") return type + " " + text;
    type = text = "";
    for (;;) {
      for (XEvent old; XCheckWindowEvent(artist.display, asker, PropertyChangeMask, &old);) {
      }
      XDeleteProperty(artist.display, asker, property);
      Await([&](XEvent* e) {
        return XCheckWindowEvent(artist.display, asker, PropertyChangeMask, e) &&
               e->xproperty.state == PropertyNewValue;
      });
      const std::string piece = Text(asker, "ANSWER");
      type = TypeOf(asker, "ANSWER");
      if (piece.empty()) return type + " " + text;
      EXPECT_LT(piece.size(), 1'000'000U);
      text += piece;
    }
  }

  // While our program goes on taking its events.
  XEvent Await(const std::function<bool(XEvent*)>& found) {
    XEvent event{};
    Until([&] { return Drain(), found(&event); });
    return event;
  }

  std::string TypeOf(Window window, const char* property) const {
    Atom type = None;
    int format;
    unsigned long count, rest;
    unsigned char* data = nullptr;
    XGetWindowProperty(artist.display, window, Atom(AtomOf(property)), 0, 0, False, AnyPropertyType, &type, &format,
                       &count, &rest, &data);
    if (data) XFree(data);
    return type ? NameOf(type) : "";
  }
  std::string NameOf(Atom atom) const {
    char* name = XGetAtomName(artist.display, atom);
    std::string copy = name;
    XFree(name);
    return copy;
  }

  Window asker = None;
};

TEST_F(X11ClipboardTest, OursIsGivenInTheFormsThatAreAskedFor) {
  EXPECT_EQ(Given("UTF8_STRING"), "refused");
  DisplayShareText(SharedText::kSelected, "selected");
  DisplayShareText(SharedText::kClipboard, "first");
  DisplayShareText(SharedText::kClipboard, "a\xC3\xA9\xE2\x82\xAC\x80\nz");
  EXPECT_EQ(Given("UTF8_STRING"), "UTF8_STRING a\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBD\nz");
  EXPECT_EQ(Given("STRING"), "STRING a\xE9??\nz");
  EXPECT_EQ(Given("UTF8_STRING", "PRIMARY"), "UTF8_STRING selected");
  for (const char* none : {"text/html", "PIXMAP"}) EXPECT_EQ(Given(none), "refused");
  EXPECT_EQ(Given("UTF8_STRING", "CLIPBOARD", 1), "refused"); // from before it was shared
  EXPECT_TRUE(IsGiven("TIMESTAMP"));
  EXPECT_EQ(TypeOf(asker, "ANSWER"), "INTEGER");
  EXPECT_EQ(Items(asker, "ANSWER"), std::vector<long>{long(X11Live()->selections.shared[0].since)});
  EXPECT_TRUE(IsGiven("TARGETS"));
  std::string targets;
  for (const long each : Items(asker, "ANSWER")) targets += NameOf(Atom(each)) + " ";
  EXPECT_EQ(targets, "TARGETS TIMESTAMP MULTIPLE UTF8_STRING STRING ");

  WriteItems(asker, "ANSWER", Atom(AtomOf("ATOM_PAIR")),
             {AtomOf("STRING"), AtomOf("ONE"), AtomOf("PIXMAP"), AtomOf("TWO"), AtomOf("MULTIPLE"), AtomOf("THREE")});
  EXPECT_TRUE(IsGiven("MULTIPLE"));
  EXPECT_EQ(Items(asker, "ANSWER"),
            (std::vector<long>{AtomOf("STRING"), AtomOf("ONE"), AtomOf("PIXMAP"), None, AtomOf("MULTIPLE"), None}));
  EXPECT_EQ(Text(asker, "ONE"), "a\xE9??\nz");
}

TEST_F(X11ClipboardTest, OursLastsUntilAnotherProgramHasOne) {
  DisplayShareText(SharedText::kClipboard, "ours");
  EXPECT_TRUE(DisplayHasSharedText(SharedText::kClipboard));
  EXPECT_EQ(DisplaySharedText(SharedText::kClipboard), "ours");
  EXPECT_FALSE(DisplayHasSharedText(SharedText::kSelected));
  EXPECT_EQ(DisplaySharedText(SharedText::kSelected), "");
  {
    Neighbour text({"theirs", {"TARGETS", "UTF8_STRING"}});
    EXPECT_EQ(DisplaySharedText(SharedText::kClipboard), "theirs");
    const int before = text.asked;
    for (int i = 0; i < 3; i++) EXPECT_TRUE(DisplayHasSharedText(SharedText::kClipboard));
    EXPECT_EQ(text.asked, before + 1);
    Neighbour picture({"", {"TARGETS", "image/png"}});
    EXPECT_FALSE(DisplayHasSharedText(SharedText::kClipboard));
    EXPECT_EQ(DisplaySharedText(SharedText::kClipboard), "");
  }
  EXPECT_FALSE(DisplayHasSharedText(SharedText::kClipboard));
  DisplayShareText(SharedText::kClipboard, "ours again");
  EXPECT_EQ(Given("STRING"), "STRING ours again");
}

TEST_F(X11ClipboardTest, ALargeTextGoesOutInPiecesToSeveralAtOnceAndLeavesNothingBehind) {
  const std::string text = LongText();
  DisplayShareText(SharedText::kClipboard, text);
  // One that begins and never goes on, one that goes in the middle, and our own windows' events stay as they are.
  Window stuck = XCreateSimpleWindow(artist.display, artist.root, 0, 0, 1, 1, 0, 0, 0);
  XConvertSelection(artist.display, Atom(AtomOf("CLIPBOARD")), Atom(AtomOf("UTF8_STRING")), Atom(AtomOf("STUCK")),
                    stuck, CurrentTime);
  EXPECT_TRUE(IsGiven("UTF8_STRING")); // and asks once more before it has taken anything
  EXPECT_TRUE(Given("UTF8_STRING") == "UTF8_STRING " + text);
  EXPECT_EQ(X11Live()->selections.sending.size(), 1U);
  XDestroyWindow(artist.display, stuck);
  Drain();
  EXPECT_TRUE(X11Live()->selections.sending.empty());
  XWindowAttributes seen{};
  XGetWindowAttributes(X11Live()->display, asker, &seen);
  EXPECT_EQ(seen.your_event_mask, 0);
}

TEST_F(X11ClipboardTest, TheirsIsTakenInTheFormsThatTheyHave) {
  const std::string text = LongText(), latin = "caf\xE9";
  const struct {
    NeighbourHas has;
    std::string taken;
  } neighbours[] = {
      {{"caf\xC3\xA9\x80", {"UTF8_STRING", "STRING"}}, "caf\xC3\xA9\x80"},
      {{latin, {"STRING"}}, "caf\xC3\xA9"},
      {{latin, {"STRING"}, 1}, "caf\xC3\xA9"},
      {{"", {"UTF8_STRING"}}, ""},
      {{text, {"UTF8_STRING"}}, text}, // in one, as far as the server takes it
      {{text, {"UTF8_STRING"}, 100'000}, text},
      {{"selected", {"UTF8_STRING"}, 3, ~size_t{0}, "PRIMARY"}, "selected"},
  };
  for (const auto& each : neighbours) {
    Neighbour neighbour(each.has);
    const bool selected = std::string(each.has.selection) == "PRIMARY";
    EXPECT_TRUE(DisplaySharedText(selected ? SharedText::kSelected : SharedText::kClipboard) == each.taken)
        << each.taken.substr(0, 100);
  }
}

TEST_F(X11ClipboardTest, AStuckNeighbourIsNotWaitedForAndNothingIsMissedMeanwhile) {
  DisplayWindow* window = Show(Role::kMain, {10, 10, 110, 110});
  Activate(window);
  DisplayHasSharedText(SharedText::kClipboard);
  X11Live()->selections.patience = 20;
  Neighbour stuck({"never whole", {"UTF8_STRING"}, 4, 1});
  // One that takes no events at all.
  XSetSelectionOwner(artist.display, XA_PRIMARY, asker, CurrentTime);
  Key(XK_x, true);
  EXPECT_EQ(DisplaySharedText(SharedText::kClipboard), "");
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
  Neighbour next({"whole", {"UTF8_STRING"}, 4});
  X11Live()->selections.patience = 20000;
  EXPECT_EQ(DisplaySharedText(SharedText::kClipboard), "whole");
}

} // namespace

} // namespace framereel
