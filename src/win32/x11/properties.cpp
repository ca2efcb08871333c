// Properties of windows: what programs tell each other and the window manager.
#include "win32/pixels/exhaustion.h"
#include "win32/x11/x11_display.h"

namespace framereel {

namespace {

// The most that is read in one answer, in units of 32 bits.
constexpr long kUnitsMax = 65536;

// What XGetWindowProperty answers, its data freed with it.
struct Answer {
  Atom type = None;
  int format = 0;
  unsigned long count = 0, rest = 0;
  unsigned char* data = nullptr;

  Answer(X11Connection* x, Window window, Atom property, long from) {
    const int status = XGetWindowProperty(x->display, window, property, from, kUnitsMax, False, AnyPropertyType, &type,
                                          &format, &count, &rest, &data);
    if (status == BadAlloc) EndWithoutMemory(); // of Xlib's own memory: the server's errors come as BadRequest
    if (status != Success) type = None;
  }
  ~Answer() {
    if (data) XFree(data);
  }
  Answer(const Answer&) = delete;
};

} // namespace

void X11WriteItems(X11Connection* x, Window window, Atom property, Atom type, const std::vector<unsigned long>& items) {
  XChangeProperty(x->display, window, property, type, 32, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(items.data()), int(items.size()));
}

void X11WriteBytes(X11Connection* x, Window window, Atom property, Atom type, std::string_view bytes) {
  XChangeProperty(x->display, window, property, type, 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(bytes.data()), int(bytes.size()));
}

std::vector<unsigned long> X11ReadItems(X11Connection* x, Window window, Atom property, Atom type) {
  const Answer answer(x, window, property, 0);
  if (answer.format != 32 || answer.type != type) return {};
  const unsigned long* first = reinterpret_cast<const unsigned long*>(answer.data);
  return std::vector<unsigned long>(first, first + answer.count);
}

Atom X11ReadBytes(X11Connection* x, Window window, Atom property, size_t most, std::string* bytes) {
  Atom type = None;
  for (long from = 0; X11Live(); from += kUnitsMax) {
    const Answer answer(x, window, property, from);
    type = answer.type;
    if (answer.format != 8) return type;
    bytes->append(reinterpret_cast<const char*>(answer.data), answer.count);
    if (answer.rest == 0) return type;
    if (bytes->size() > most) return None;
  }
  return None;
}

} // namespace framereel
