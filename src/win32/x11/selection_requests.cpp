// What others share on the X11 display: asking the owner of a selection for its text.
//
// The owner is another program and may be slow, stuck or gone, so it is waited for only so long. Events that arrive
// meanwhile are taken as ever, and those for the caller wait in their queue. Each question has a window of its own to
// be answered on: what comes too late is not taken for the answer to the next one.
#include <X11/Xatom.h>
#include <poll.h>

#include <algorithm>

#include "win32/pixels/utf8.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

constexpr size_t kBytesMax = size_t{64} << 20; // more than anybody pastes
constexpr uint32_t kWholeMs = 10'000;          // for a text in pieces that go on coming

// Waits until it holds; false when it doesn't in time, or the connection is lost.
template <typename Holds> bool Await(X11Connection* x, uint32_t begun, const Holds& holds) {
  const uint32_t start = DisplayTick();
  for (;;) {
    X11TakeEvents(x, QueuedAfterFlush);
    if (!X11Live()) return false;
    if (holds()) return true;
    const uint32_t now = DisplayTick();
    const int64_t left = std::min(int64_t{x->selections.patience} - (now - start), int64_t{kWholeMs} - (now - begun));
    if (left <= 0) return false;
    pollfd connection = {ConnectionNumber(x->display), POLLIN, 0};
    ::poll(&connection, 1, int(left));
  }
}

// The window that answers come to, for as long as somebody asks. One that something may still come to stays until the
// connection ends: writing to a window that has gone is an error that many a program dies of, and the user's text with
// it.
struct Receiver {
  X11Connection* x;

  explicit Receiver(X11Connection* connection) : x(connection) {
    XSetWindowAttributes attributes{};
    attributes.event_mask = PropertyChangeMask;
    x->selections.asked.window =
        XCreateWindow(x->display, x->root, -1, -1, 1, 1, 0, 0, InputOnly, CopyFromParent, CWEventMask, &attributes);
  }
  ~Receiver() {
    const X11Asked& asked = x->selections.asked;
    if (X11Live() && !asked.owes) XDestroyWindow(x->display, asked.window);
    x->selections.asked = {};
  }
  Receiver(const Receiver&) = delete;
};

enum class Outcome : uint8_t { kGiven, kRefused, kSilent };

// Asks for the selection in one form. What is given stands in the window's property.
Outcome Ask(X11Connection* x, Atom selection, Atom target) {
  X11Asked& asked = x->selections.asked;
  const Time now = X11ServerTime(x);
  if (!X11Live()) return Outcome::kSilent;
  asked = {asked.window, target, false, None, false, true};
  XConvertSelection(x->display, selection, target, X11AtomOf(x, kFramereelText), asked.window, now);
  if (!Await(x, DisplayTick(), [&] { return asked.answered; })) return Outcome::kSilent;
  asked.owes = asked.property != None;
  return asked.owes ? Outcome::kGiven : Outcome::kRefused;
}

// Takes the property away, which an owner that sends piece by piece waits for.
Atom TakeBytes(X11Connection* x, std::string* bytes) {
  const Atom property = X11AtomOf(x, kFramereelText);
  const Window window = x->selections.asked.window;
  const Atom type = X11ReadBytes(x, window, property, kBytesMax, bytes);
  if (X11Live()) XDeleteProperty(x->display, window, property);
  return type;
}

// What has been given, whole; None when it stops halfway.
Atom Receive(X11Connection* x, std::string* bytes) {
  X11Asked& asked = x->selections.asked;
  const uint32_t begun = DisplayTick();
  asked.arrived = false; // what has stood there so far
  Atom type = TakeBytes(x, bytes);
  asked.owes = type == X11AtomOf(x, kIncr);
  if (!asked.owes) return type;
  for (;;) {
    if (!Await(x, begun, [&] { return asked.arrived; })) return None;
    asked.arrived = false;
    const size_t before = bytes->size();
    const Atom pieceType = TakeBytes(x, bytes);
    if (before == 0) type = pieceType; // the last one is empty, and of any
    asked.owes = bytes->size() > before;
    if (!asked.owes) return type;
    if (bytes->size() > kBytesMax) return None;
  }
}

bool GivesText(X11Connection* x, Atom selection) {
  const Receiver receiver(x);
  if (Ask(x, selection, X11AtomOf(x, kTargets)) != Outcome::kGiven) return false;
  const std::vector<unsigned long> all =
      X11ReadItems(x, x->selections.asked.window, X11AtomOf(x, kFramereelText), XA_ATOM);
  x->selections.asked.owes = all.empty();
  return std::any_of(all.begin(), all.end(),
                     [x](Atom target) { return target == X11AtomOf(x, kUtf8String) || target == XA_STRING; });
}

} // namespace

bool X11TakeSelectionAnswer(X11Connection* x, const XEvent& event) {
  X11Asked& asked = x->selections.asked;
  if (event.type == SelectionNotify) {
    const XSelectionEvent& answer = event.xselection;
    if (answer.requestor != asked.window || answer.target != asked.target) return true;
    asked.answered = true;
    asked.property = answer.property;
    return true;
  }
  if (event.type != PropertyNotify || event.xproperty.window != asked.window) return false;
  const bool written = event.xproperty.state == PropertyNewValue;
  if (written && event.xproperty.atom == X11AtomOf(x, kFramereelText)) asked.arrived = true;
  return true;
}

std::string DisplaySharedText(SharedText which) {
  X11Connection* x = X11Live();
  if (!x) return "";
  X11WatchSelections(x);
  X11TakeEvents(x, QueuedAfterReading); // it may have been taken from us
  if (!X11Live()) return "";
  const X11SharedText& shared = x->selections.shared[size_t(which)];
  if (shared.ours) return shared.text;
  const Atom selection = X11SelectionOf(x, which);
  const Receiver receiver(x);
  Outcome outcome = Outcome::kRefused;
  for (const Atom target : {X11AtomOf(x, kUtf8String), Atom{XA_STRING}}) {
    if (outcome == Outcome::kRefused) outcome = Ask(x, selection, target);
  }
  if (outcome != Outcome::kGiven) return "";
  std::string bytes;
  const Atom type = Receive(x, &bytes);
  if (type == XA_STRING) return Utf8OfLatin1(bytes);
  return type == X11AtomOf(x, kUtf8String) ? bytes : "";
}

bool DisplayHasSharedText(SharedText which) {
  X11Connection* x = X11Live();
  if (!x) return false;
  X11WatchSelections(x);
  X11TakeEvents(x, QueuedAfterReading);
  if (!X11Live()) return false;
  X11SharedText& shared = x->selections.shared[size_t(which)];
  if (shared.ours) return !shared.text.empty();
  if (!shared.unsure && x->selections.event >= 0) return shared.has;
  shared.unsure = false; // what changes from here on is told
  shared.has = GivesText(x, X11SelectionOf(x, which));
  return X11Live() && shared.has;
}

} // namespace framereel
