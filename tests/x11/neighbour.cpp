// See neighbour.h.
#include "x11/neighbour.h"

#include <algorithm>
#include <utility>

#include <X11/Xatom.h>

namespace framereel {

Neighbour::Neighbour(NeighbourHas h) : has(std::move(h)) {
  std::promise<Window> ready;
  std::future<Window> owner = ready.get_future();
  thread = std::thread(&Neighbour::Run, this, std::move(ready));
  window = owner.get();
}

Neighbour::~Neighbour() {
  Display* other = XOpenDisplay(nullptr);
  XEvent end{};
  end.xclient.type = ClientMessage;
  end.xclient.window = window;
  end.xclient.format = 32;
  XSendEvent(other, window, False, NoEventMask, &end);
  XCloseDisplay(other);
  thread.join();
}

void Neighbour::Run(std::promise<Window> ready) {
  display = XOpenDisplay(nullptr);
  const Window owner = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
  XSetSelectionOwner(display, AtomOf(has.selection), owner, CurrentTime);
  XSync(display, False);
  ready.set_value(owner);
  for (XEvent event{}; event.type != ClientMessage;) {
    XNextEvent(display, &event);
    if (event.type == SelectionRequest) {
      ++asked;
      const XSelectionRequestEvent& request = event.xselectionrequest;
      XEvent answer{};
      answer.xselection = {
          SelectionNotify,  0,           False, display, request.requestor, request.selection, request.target,
          request.property, request.time};
      if (!Answer(request)) answer.xselection.property = None;
      XSendEvent(display, request.requestor, False, NoEventMask, &answer);
    } else if (event.type == PropertyNotify && event.xproperty.state == PropertyDelete &&
               event.xproperty.window == receiver && event.xproperty.atom == property) {
      GivePiece();
    }
    XFlush(display);
  }
  XCloseDisplay(display);
}

bool Neighbour::Answer(const XSelectionRequestEvent& request) {
  const auto known = [&](const std::string& each) { return AtomOf(each) == request.target; };
  if (std::none_of(has.forms.begin(), has.forms.end(), known)) return false;
  if (request.target == AtomOf("TARGETS")) {
    std::vector<Atom> atoms;
    for (const std::string& each : has.forms) atoms.push_back(AtomOf(each));
    XChangeProperty(display, request.requestor, request.property, XA_ATOM, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(atoms.data()), int(atoms.size()));
    return true;
  }
  if (has.piece == 0) {
    XChangeProperty(display, request.requestor, request.property, request.target, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(has.text.data()), int(has.text.size()));
    return true;
  }
  receiver = request.requestor;
  property = request.property;
  form = request.target;
  given = 0;
  XSelectInput(display, receiver, PropertyChangeMask);
  const auto size = long(has.text.size());
  XChangeProperty(display, receiver, property, AtomOf("INCR"), 32, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(&size), 1);
  return true;
}

void Neighbour::GivePiece() {
  if (has.pieces-- == 0) return;
  const std::string piece = has.text.substr(given, has.piece);
  given += piece.size();
  const Atom type = piece.empty() ? XA_INTEGER : form; // nobody has to look at that of the end
  XChangeProperty(display, receiver, property, type, 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(piece.data()), int(piece.size()));
}

} // namespace framereel
