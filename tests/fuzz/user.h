// A user who does anything at any time, with the mouse, the keyboard, the desktop and other programs, and does not wait
// for an answer. A new feature of the program is a new row of kDeeds in deeds.cpp.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <list>
#include <random>

#include "app/application.h"
#include "core/timers.h"
#include "fuzz/other_programs.h"

namespace framereel {

struct User {
  uint32_t seed;
  std::mt19937 random;
  Application& app;
  OtherPrograms& others;
  std::FILE* steps;       // what he does, a line each
  uint32_t began;         // the tick
  bool wantsLine = false; // Show Area is ticked
  // Of the animation, or of now while there is none.
  bool ownMayBeSeen = false;   // windows of ours were in the area, or may have been
  bool areaLeftScreen = false; // some of it
  bool coloursChanged = false;
  PixelRect ownSeen = {}; // where windows of ours were when he last looked

  // What he does with the panel happens in the event loop.
  struct Wish {
    User* user;
    Timer* timer;
    std::function<void(User&)> act;
  };
  std::list<Wish> wishes = {};
};

int32_t Below(User& user, int32_t n); // 0 to n - 1
void Tell(User& user, const char* format, ...) __attribute__((format(printf, 2, 3)));
// In the event loop, soon.
void WishFor(User& user, std::function<void(User&)> act);

// Something, at random.
void DoSomething(User& user);
// Lets go of all keys and buttons.
void LetGo();
// Notes where windows of ours are; comes ahead of each deed.
void LookAtWindows(User& user);

} // namespace framereel
