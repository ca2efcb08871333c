// What we share on the X11 display: owning a selection, and giving its text to whoever asks.
//
// A text that is larger than a request may be goes out in pieces (INCR), each when the receiver has deleted the last
// one, so that nobody is waited for. Windows of other programs tell of that by events that we select on them.
#include <X11/Xatom.h>
#include <X11/extensions/Xfixes.h>

#include <algorithm>
#include <utility>

#include "win32/pixels/utf8.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

constexpr size_t kPieceMax = 256 * 1024; // bytes
constexpr size_t kRequestHead = 256;     // bytes of a request that are not text, with room to spare
constexpr size_t kSendingMax = 16;       // receivers that don't go on make room for others
constexpr int32_t kPatienceMs = 1000;

// The most text of one request.
size_t PieceOf(Display* display) {
  const long units = std::max(XExtendedMaxRequestSize(display), XMaxRequestSize(display));
  return std::min(kPieceMax, size_t(units) * 4 - kRequestHead);
}

X11SharedText* SharedBy(X11Connection* x, Atom selection) {
  for (const SharedText which : {SharedText::kClipboard, SharedText::kSelected}) {
    if (X11SelectionOf(x, which) == selection) return &x->selections.shared[size_t(which)];
  }
  return nullptr;
}

// Times of the server wrap, too.
bool IsBefore(Time a, Time b) {
  return int32_t(uint32_t(a) - uint32_t(b)) < 0;
}

// ---- In pieces ---------------------------------------------------------------------------------------------------

void EndSending(X11Connection* x, size_t index) {
  std::vector<X11Sending>& sending = x->selections.sending;
  const Window to = sending[index].to;
  const long heard = sending[index].heard;
  sending.erase(sending.begin() + static_cast<ptrdiff_t>(index));
  const bool more = std::any_of(sending.begin(), sending.end(), [=](const X11Sending& each) { return each.to == to; });
  if (!more) XSelectInput(x->display, to, heard);
}

bool BeginSending(X11Connection* x, X11Sending begun) {
  std::vector<X11Sending>& sending = x->selections.sending;
  // Who asks again has given up what he asked for before.
  for (size_t i = sending.size(); i-- > 0;) {
    if (sending[i].to == begun.to && sending[i].property == begun.property) EndSending(x, i);
  }
  if (sending.size() >= kSendingMax) EndSending(x, 0);
  XWindowAttributes attributes{};
  if (!XGetWindowAttributes(x->display, begun.to, &attributes)) return false;
  begun.heard = attributes.your_event_mask;
  for (const X11Sending& each : sending) {
    if (each.to == begun.to) begun.heard = each.heard;
  }
  XSelectInput(x->display, begun.to, attributes.your_event_mask | PropertyChangeMask | StructureNotifyMask);
  X11WriteItems(x, begun.to, begun.property, X11AtomOf(x, kIncr), {begun.text.size()});
  sending.push_back(std::move(begun));
  return true;
}

// A piece without bytes is the end.
void SendPiece(X11Connection* x, size_t index) {
  X11Sending& each = x->selections.sending[index];
  const std::string_view piece = std::string_view(each.text).substr(each.sent, PieceOf(x->display));
  X11WriteBytes(x, each.to, each.property, each.type, piece);
  each.sent += piece.size();
  if (piece.empty()) EndSending(x, index);
  XFlush(x->display);
}

bool TakeReceiver(X11Connection* x, const XEvent& event) {
  std::vector<X11Sending>& sending = x->selections.sending;
  if (event.type == DestroyNotify) {
    const Window gone = event.xdestroywindow.window;
    std::erase_if(sending, [=](const X11Sending& each) { return each.to == gone; });
    return false;
  }
  const XPropertyEvent& property = event.xproperty;
  if (event.type != PropertyNotify || property.state != PropertyDelete) return false;
  for (size_t i = 0; i < sending.size(); i++) {
    if (sending[i].to != property.window || sending[i].property != property.atom) continue;
    SendPiece(x, i);
    return true;
  }
  return false;
}

// ---- Answers -----------------------------------------------------------------------------------------------------

struct Question {
  const X11SharedText* shared;
  Window to;
  Atom property;
};

bool GiveText(X11Connection* x, const Question& asked, Atom type, const std::string& text) {
  if (text.size() > PieceOf(x->display)) return BeginSending(x, {asked.to, asked.property, type, text, 0, 0});
  X11WriteBytes(x, asked.to, asked.property, type, text);
  return true;
}

bool GiveUtf8(X11Connection* x, const Question& asked) {
  return GiveText(x, asked, X11AtomOf(x, kUtf8String), WellFormed(asked.shared->text));
}

bool GiveLatin1(X11Connection* x, const Question& asked) {
  return GiveText(x, asked, XA_STRING, Latin1Of(asked.shared->text));
}

bool GiveTime(X11Connection* x, const Question& asked) {
  X11WriteItems(x, asked.to, asked.property, XA_INTEGER, {asked.shared->since});
  return true;
}

bool GiveTargets(X11Connection* x, const Question& asked);
bool GiveMany(X11Connection* x, const Question& asked);

struct Target {
  Atom (*atom)(X11Connection* x);
  bool (*give)(X11Connection* x, const Question& asked);
};
constexpr Target kTargetTable[] = {
    {[](X11Connection* x) { return X11AtomOf(x, kTargets); }, GiveTargets},
    {[](X11Connection* x) { return X11AtomOf(x, kTimestamp); }, GiveTime},
    {[](X11Connection* x) { return X11AtomOf(x, kMultiple); }, GiveMany},
    {[](X11Connection* x) { return X11AtomOf(x, kUtf8String); }, GiveUtf8},
    {[](X11Connection*) { return Atom{XA_STRING}; }, GiveLatin1},
};

bool Give(X11Connection* x, const Question& asked, Atom target) {
  for (const Target& known : kTargetTable) {
    if (known.atom(x) == target) return known.give(x, asked);
  }
  return false;
}

bool GiveTargets(X11Connection* x, const Question& asked) {
  std::vector<unsigned long> targets;
  for (const Target& known : kTargetTable) targets.push_back(known.atom(x));
  X11WriteItems(x, asked.to, asked.property, XA_ATOM, targets);
  return true;
}

// The property has pairs of a target and a property for it, which becomes None where there is no such target.
bool GiveMany(X11Connection* x, const Question& asked) {
  const Atom pair = X11AtomOf(x, kAtomPair), many = X11AtomOf(x, kMultiple);
  std::vector<unsigned long> pairs = X11ReadItems(x, asked.to, asked.property, pair);
  if (pairs.empty()) return false;
  for (size_t i = 0; i + 1 < pairs.size(); i += 2) {
    const bool given = pairs[i] != many && pairs[i + 1] && Give(x, {asked.shared, asked.to, pairs[i + 1]}, pairs[i]);
    if (!given) pairs[i + 1] = None;
  }
  X11WriteItems(x, asked.to, asked.property, pair, pairs);
  return true;
}

void Answer(X11Connection* x, const XSelectionRequestEvent& request) {
  const X11SharedText* shared = SharedBy(x, request.selection);
  const bool ours = shared && shared->ours && (request.time == CurrentTime || !IsBefore(request.time, shared->since));
  // Programs of old name no property.
  const Atom property = request.property ? request.property : request.target;
  const bool given = ours && Give(x, {shared, request.requestor, property}, request.target);
  XEvent answer{};
  answer.xselection.type = SelectionNotify;
  answer.xselection.requestor = request.requestor;
  answer.xselection.selection = request.selection;
  answer.xselection.target = request.target;
  answer.xselection.property = given ? property : None;
  answer.xselection.time = request.time;
  XSendEvent(x->display, request.requestor, False, NoEventMask, &answer);
  XFlush(x->display);
}

// Another program has one to give.
void Forget(X11SharedText* shared) {
  shared->ours = false;
  shared->text = {};
  shared->unsure = true;
}

void Lose(X11Connection* x, const XSelectionClearEvent& event) {
  X11SharedText* shared = SharedBy(x, event.selection);
  if (shared && !IsBefore(event.time, shared->since)) Forget(shared);
}

} // namespace

void X11WatchSelections(X11Connection* x) {
  X11Selections& selections = x->selections;
  if (selections.window) return;
  XSetWindowAttributes attributes{};
  attributes.event_mask = PropertyChangeMask;
  selections.window =
      XCreateWindow(x->display, x->root, -1, -1, 1, 1, 0, 0, InputOnly, CopyFromParent, CWEventMask, &attributes);
  selections.patience = kPatienceMs;
  selections.event = -1;
  for (X11SharedText& shared : selections.shared) shared.unsure = true;
  int events = 0, errors = 0;
  if (!XFixesQueryExtension(x->display, &events, &errors)) return;
  selections.event = events + XFixesSelectionNotify;
  constexpr unsigned long changes =
      XFixesSetSelectionOwnerNotifyMask | XFixesSelectionWindowDestroyNotifyMask | XFixesSelectionClientCloseNotifyMask;
  for (const SharedText which : {SharedText::kClipboard, SharedText::kSelected}) {
    XFixesSelectSelectionInput(x->display, x->root, X11SelectionOf(x, which), changes);
  }
}

Time X11ServerTime(X11Connection* x) {
  // The server tells it with the change of a property that changes nothing.
  XChangeProperty(x->display, x->selections.window, X11AtomOf(x, kTimestamp), XA_INTEGER, 32, PropModeAppend, nullptr,
                  0);
  XSync(x->display, False);
  X11TakeEvents(x, QueuedAlready);
  return X11Live() ? x->selections.serverTime : 0;
}

Atom X11SelectionOf(const X11Connection* x, SharedText which) {
  return which == SharedText::kClipboard ? X11AtomOf(x, kClipboard) : XA_PRIMARY;
}

bool X11TakeSelectionEvent(X11Connection* x, const XEvent& event) {
  X11Selections& selections = x->selections;
  if (!selections.window) return false;
  if (event.type == selections.event) {
    const auto& change = reinterpret_cast<const XFixesSelectionNotifyEvent&>(event);
    if (X11SharedText* shared = SharedBy(x, change.selection)) shared->unsure = true;
    return true;
  }
  if (event.type == SelectionRequest) return Answer(x, event.xselectionrequest), true;
  if (event.type == SelectionClear) return Lose(x, event.xselectionclear), true;
  if (event.type == PropertyNotify && event.xproperty.window == selections.window) {
    selections.serverTime = event.xproperty.time;
  }
  return X11TakeSelectionAnswer(x, event) || TakeReceiver(x, event);
}

void DisplayShareText(SharedText which, std::string_view text) {
  X11Connection* x = X11Live();
  if (!x) return;
  X11WatchSelections(x);
  const Time now = X11ServerTime(x);
  if (!X11Live()) return;
  x->selections.shared[size_t(which)] = {true, now, std::string(text), false, false};
  XSetSelectionOwner(x->display, X11SelectionOf(x, which), x->selections.window, now);
  // Another program that was quicker has it, and nobody tells us that we do not.
  const Window owner = XGetSelectionOwner(x->display, X11SelectionOf(x, which));
  if (X11Live() && owner != x->selections.window) Forget(&x->selections.shared[size_t(which)]);
}

} // namespace framereel
