// Another program that has a selection, for the tests of the texts that programs share. It answers on a thread and a
// connection of its own, since whoever pastes waits for it.
#pragma once

#include <atomic>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

// Behind gtest, which uses names that this makes macros of.
#include <X11/Xlib.h>

namespace framereel {

struct NeighbourHas {
  std::string text;
  std::vector<std::string> forms; // the targets that it knows, TARGETS among them
  size_t piece = 0;               // bytes of each piece; 0: whole
  size_t pieces = ~size_t{0};     // after so many it falls silent
  const char* selection = "CLIPBOARD";
};

class Neighbour {
public:
  // It has the selection when this comes back.
  explicit Neighbour(NeighbourHas has);
  // It ends, and nobody has the selection.
  ~Neighbour();
  Neighbour(const Neighbour&) = delete;

  std::atomic<int> asked = 0; // how often it was asked for anything

private:
  void Run(std::promise<Window> ready);
  bool Answer(const XSelectionRequestEvent& request);
  void GivePiece();
  Atom AtomOf(const std::string& name) const { return XInternAtom(display, name.c_str(), False); }

  NeighbourHas has;
  Display* display = nullptr;
  Window window = None;
  Window receiver = None; // of pieces
  Atom property = None, form = None;
  size_t given = 0;
  std::thread thread;
};

} // namespace framereel
