// A user who does anything at any time, with the mouse, the keyboard, the panel, the desktop and other programs, and
// does not wait for an answer. What he can do is a row of kDeeds in deeds.cpp each.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

#include "app/application.h"
#include "core/timers.h"
#include "fuzz/other_programs.h"
#include "support/dice.h"
#include "support/script.h"

namespace framereel {

// What else than other programs may be in the animation; while there is none, in one that begins now.
struct Mixture {
  bool ownWindows = false;     // may have been in the area
  bool offScreen = false;      // the area reached beyond the screen's edges
  bool coloursChanged = false; // the palette's, and stay so: pixels mean something else
  PixelRect ownSeen = {};      // where our windows were when the user last looked
};

struct User {
  uint32_t seed;
  Dice dice;
  Application& app;
  OtherPrograms& others;
  std::FILE* steps; // what he does, a line each
  uint32_t began;   // the tick
  Mixture mixture = {};
  Script script = {};
  Timer* wish = nullptr; // of the panel, which hears of it in the event loop
};

// ---- deeds.cpp ----------------------------------------------------------------------------------------------------

void Tell(User& user, const char* format, ...) __attribute__((format(printf, 2, 3)));
void At(User& user, uint32_t milliseconds, std::function<void(User&)> act); // so long from now
void AddWords(User& user);                                                  // to his script
void DoSomething(User& user);                                               // at random
void LetGo();                                                               // of all keys and buttons
DisplayWindow* OurWindow();                                                 // the main one; null when it cannot be seen

// ---- recorded.cpp -------------------------------------------------------------------------------------------------

// Comes ahead of everything that he does: our window moves once, and straight, between two looks.
void LookAtWindows(User& user);
// Reads the animation back, if there is one. `screenIsRecorded`: its last frame is of this moment.
void CheckAnimation(User& user, bool screenIsRecorded);

// ---- random_user.cpp ----------------------------------------------------------------------------------------------

// When it does not hold, says so, and ends the process.
void Expect(const User& user, bool holds, const std::string& what);

} // namespace framereel
