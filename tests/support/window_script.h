// A program with windows that tell what they hear, and a script of words: what the user, the program and its timers do.
// A test is a table of such steps and of what each one brings.
#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <sstream>
#include <string>

#include "platform/records/later_modules.h"
#include "support/window_program.h"

namespace framereel {

struct ScriptStep {
  const char *words, *brings;
};

// The main window's client area has 600 by 440 pixels. A window's name is its title.
//
// The words of the user: "m X Y" moves the pointer on the screen, "over NAME X Y" in a window. "d" and "u" are the left
// button, "rd" and "ru" the right one. "space", "left", "f4" and so on are keys, and so is each digit and capital; with
// + ahead a key goes down only, with - up. "leave" and "return" take the keyboard away and bring it back.
//
// Of the program: "open NAME KIND" makes and shows a window of 200 by 100 client pixels at 100, 100 in toolkit
// coordinates, "make" one that is not shown. KIND is d(ocument) or some of m(odal), p(opup), l(oose popup), t for a
// palette, c(losable), r(esizable: such a one does not want to close), f(illed), b(ox left out), k(ept inside the main
// window). "paints NAME": it tells its paints from now on. "menuclose NAME" is the item of its system menu. "where
// NAME" tells its client place. The other words are each a call: window_script.cpp has the tables.
//
// From "together" on the program hears of nothing but by "settle" and the words of time.
//
// Of time: "wait MS" passes it, "tick MS" moves the clock alone. "pass", "idle" and "alone NAME" are a pass of the
// event loop, one that may wait, and one for a window; they tell the time that they took.
//
// What is done later, up to the next "." or the end: "after MS ..." by a timer, "when ENTRY ..." as soon as an entry of
// the log begins so.
//
// The log has an entry for each call, of window a for instance: "av16@10,20" a press with its flags, "a^" the release,
// "a~" a move, "a:Q/q/2" a key's characters and modifiers, "a'" its release, "a<" and "a>" entered and left, "a+" and
// "a-" activated and deactivated, "a?" whether it may be closed, "a.close", "a.gone" to its listeners, "a.go" to a
// popup, "a=" its new place or size, "a#" a paint with its clip, and letters for the scroll bars. "!5" is a notice by
// its code.
class WindowScript {
public:
  explicit WindowScript(int32_t width = 800, int32_t height = 600, int32_t depth = 24);
  ~WindowScript();

  // The queue is empty behind each word, but not behind those that run inside another one.
  void Act(const std::string& script);
  // What has been told since the last time, and then what has changed: who is active, modal and off (disabled), who has
  // the keyboard's focus and has captured the mouse. All records agree with the platform.
  std::string Heard();
  // Each step and what it brings.
  void Walk(std::initializer_list<ScriptStep> steps);
  void Say(const std::string& entry);
  ChildWindow* Window(const std::string& name) const { return windows.at(name); }

  std::map<std::string, std::function<void(std::istream&)>> words;
  std::string log;

private:
  void AddWords();
  ChildWindow* Make(std::istream& in);
  ChildWindow* Named(std::istream& in) const;

  WindowProgram program;
  const LaterModules before = TheLaterModules();
  std::map<std::string, ChildWindow*> windows; // closed ones among them
  std::map<std::string, std::string> reactions, facts;
  bool settles = true;
  int nesting = 0; // of words that run inside words
};

} // namespace framereel
