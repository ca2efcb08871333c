// The texts that programs share on the X11 display: the selections CLIPBOARD and PRIMARY, by the ICCCM (version 2.0,
// chapter 2). Others are given ours in selections.cpp; selection_requests.cpp asks others for theirs.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <X11/Xlib.h>

#include "win32/pixels/display_windows.h"

namespace framereel {

struct X11Connection;

inline constexpr int32_t kSharedTexts = 2; // in the order of SharedText

struct X11SharedText {
  bool ours;        // we have it
  Time since;       // from then on, by the server's clock
  std::string text; // of ours
  bool unsure;      // of another's: who has it may have changed since somebody looked
  bool has;         // and then it was text, or was not
};

// A text that goes out piece by piece (INCR): the next one once the receiver has taken the last away.
struct X11Sending {
  Window to;
  Atom property, type;
  std::string text;
  size_t sent;
  long heard; // which events of the window we had selected before
};

// What we have asked another program for. Its answers come as events.
struct X11Asked {
  Window window; // receives, for this question alone; None: nothing is asked for
  Atom target;
  bool answered; // and refused when the property is None
  Atom property;
  bool arrived; // the property has been written once more
  bool owes;    // the answer, or the rest of it, may still come
};

struct X11Selections {
  Window window;    // has for us what we share; None until it is needed
  int32_t event;    // the number of the notice that a selection has changed hands, or -1
  Time serverTime;  // as told last
  int32_t patience; // ms of silence after which another program is not waited for any longer
  X11SharedText shared[kSharedTexts];
  std::vector<X11Sending> sending;
  X11Asked asked;
};

// ---- selections.cpp ----

// Makes the window and follows who has what, once.
void X11WatchSelections(X11Connection* x);
// The server's time at this moment; 0 when the connection is lost.
Time X11ServerTime(X11Connection* x);
Atom X11SelectionOf(const X11Connection* x, SharedText which);
// True when the event was of selections.
bool X11TakeSelectionEvent(X11Connection* x, const XEvent& event);

// ---- selection_requests.cpp ----

// What another program answers. True when the event was that.
bool X11TakeSelectionAnswer(X11Connection* x, const XEvent& event);

} // namespace framereel
