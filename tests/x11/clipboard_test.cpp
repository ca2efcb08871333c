// The texts that programs share: ours to others and theirs to us, in every form, whole and in pieces.
#include "x11/user.h"

#include <atomic>
#include <random>
#include <thread>

namespace framereel {

namespace {

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

struct NeighbourHas {
  std::string text;
  std::vector<std::string> forms; // the targets that it knows, TARGETS among them
  size_t piece = 0;               // bytes of each piece; 0: whole
  size_t pieces = ~size_t{0};     // after so many it falls silent
  const char* selection = "CLIPBOARD";
};

// Another program that has a selection from here on until it goes. It answers on a thread and a connection of its own,
// since whoever pastes waits for it.
class Neighbour {
public:
  explicit Neighbour(NeighbourHas h) : has(std::move(h)) {
    XSetSelectionOwner(program.display, AtomOf(has.selection), window, CurrentTime);
    thread = std::thread([this] {
      for (XEvent event{}; event.type != ClientMessage;) {
        XNextEvent(program.display, &event);
        const XPropertyEvent& taken = event.xproperty;
        if (event.type == SelectionRequest) Answer(event.xselectionrequest);
        if (event.type != PropertyNotify || taken.state != PropertyDelete || has.pieces == 0) continue;
        if (taken.window == receiving.requestor && taken.atom == receiving.property) GivePiece();
      }
    });
  }
  ~Neighbour() {
    XEvent end{};
    end.xclient = {ClientMessage, 0, False, nullptr, window, None, 32, {}};
    XSendEvent(Artist().display, window, False, NoEventMask, &end);
    thread.join();
  }
  Neighbour(const Neighbour&) = delete;

  std::atomic<int> asked = 0; // how often it was asked for anything

private:
  Atom AtomOf(const std::string& name) const { return XInternAtom(program.display, name.c_str(), False); }
  void Write(Atom type, int format, const void* items, size_t count) const {
    XChangeProperty(program.display, receiving.requestor, receiving.property, type, format, PropModeReplace,
                    static_cast<const unsigned char*>(items), int(count));
  }
  void Answer(const XSelectionRequestEvent& request) {
    ++asked;
    receiving = request;
    std::vector<Atom> forms;
    for (const std::string& each : has.forms) forms.push_back(AtomOf(each));
    const bool knows = std::find(forms.begin(), forms.end(), request.target) != forms.end();
    if (knows && request.target == AtomOf("TARGETS")) {
      Write(XA_ATOM, 32, forms.data(), forms.size());
    } else if (knows && has.piece == 0) {
      Write(request.target, 8, has.text.data(), has.text.size());
    } else if (knows) {
      const size_t size = has.text.size();
      XSelectInput(program.display, request.requestor, PropertyChangeMask);
      Write(AtomOf("INCR"), 32, &size, 1);
    }
    const Atom written = knows ? request.property : None;
    XEvent answer{};
    answer.xselection = {SelectionNotify, 0,       False,       nullptr, request.requestor, request.selection,
                         request.target,  written, request.time};
    XSendEvent(program.display, request.requestor, False, NoEventMask, &answer);
  }
  // The last one is empty, and nobody looks at its type.
  void GivePiece() {
    --has.pieces;
    const std::string piece = has.text.substr(0, has.piece);
    has.text.erase(0, piece.size());
    Write(piece.empty() ? XA_INTEGER : receiving.target, 8, piece.data(), piece.size());
  }

  NeighbourHas has;
  Artist program;
  Window window = XCreateSimpleWindow(program.display, program.root, 0, 0, 1, 1, 0, 0, 0);
  XSelectionRequestEvent receiving{};
  std::thread thread;
};

class X11ClipboardTest : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    asker = NewWindow();
    XSelectInput(artist.display, asker, PropertyChangeMask);
  }
  Window NewWindow() const { return XCreateSimpleWindow(artist.display, artist.root, 0, 0, 1, 1, 0, 0, 0); }

  void Ask(Window window, const char* target, const char* selection = "CLIPBOARD", Time time = CurrentTime) const {
    XConvertSelection(artist.display, Atom(AtomOf(selection)), Atom(AtomOf(target)), Atom(AtomOf("ANSWER")), window,
                      time);
  }
  // Another program asks for a form of our text, and waits for the answer while ours goes on taking its events.
  bool IsGiven(const char* target, const char* selection = "CLIPBOARD", Time time = CurrentTime) {
    Ask(asker, target, selection, time);
    XEvent answer{};
    Until([&] { return Drain(), XCheckTypedWindowEvent(artist.display, asker, SelectionNotify, &answer); });
    return answer.xselection.property != None;
  }
  // What it gets: "TYPE bytes", or "refused".
  std::string Given(const char* target, const char* selection = "CLIPBOARD", Time time = CurrentTime) {
    if (!IsGiven(target, selection, time)) return "refused";
    Atom type = None;
    std::string piece = Text(asker, "ANSWER", &type), text;
    if (NameOf(type) != "INCR") return NameOf(type) + " " + piece;
    do {
      XEvent event;
      const auto isWritten = [&] {
        return XCheckWindowEvent(artist.display, asker, PropertyChangeMask, &event) &&
               event.xproperty.state == PropertyNewValue;
      };
      while (XCheckWindowEvent(artist.display, asker, PropertyChangeMask, &event)) continue;
      XDeleteProperty(artist.display, asker, Atom(AtomOf("ANSWER")));
      Until([&] { return Drain(), isWritten(); });
      text += piece = Text(asker, "ANSWER", &type);
      EXPECT_LT(piece.size(), 1'000'000U);
    } while (!piece.empty());
    return NameOf(type) + " " + text;
  }
  std::string NameOf(Atom atom) const {
    const std::unique_ptr<char, decltype(&XFree)> name(XGetAtomName(artist.display, atom), XFree);
    return name.get();
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
  const Window stuck = NewWindow();
  Ask(stuck, "UTF8_STRING");
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
