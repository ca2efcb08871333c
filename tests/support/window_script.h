// A program with windows that tell what they hear, and words for its scripts.
#pragma once

#include <initializer_list>
#include <map>
#include <string>

#include "platform/records/later_modules.h"
#include "support/script.h"
#include "support/window_program.h"

namespace framereel {

struct ScriptStep {
  const char *words, *brings;
};

template <> ChildWindow* Told<ChildWindow*>(std::istream& in); // by its name

// The main window's client area has 600 by 440 pixels. A window's name is its title.
//
// Words of the user, besides those of script.h: "over NAME X Y" moves the pointer in a window; "d" and "u" are the left
// button, "rd" and "ru" the right one; "leave" and "return" take the keyboard away and bring it back.
//
// Of the program: "open NAME KIND" makes and shows a window of 200 by 100 client pixels at 100, 100 in toolkit
// coordinates, "make" one that is not shown. KIND is d(ocument) or some of m(odal), p(opup), l(oose popup), t for a
// palette, c(losable), r(esizable: such a one does not want to close), f(illed), b(ox left out), k(ept inside the main
// window). "paints NAME": it tells its paints from now on. "menuclose NAME" is the item of its system menu. "where
// NAME" tells its client place. The other words are each a call: AddWords has them.
//
// From "together" on the program hears of nothing but by "settle" and the words of time.
//
// Of time: "wait MS" runs the event loop. "pass" and "idle" are a pass of it and one that may wait; they tell the time
// that they took. "after MS ..." is done by a timer, up to the next "." or the end.
//
// The log has an entry for each call, of window a for instance: "av16@10,20" a press with its flags, "a^" the release,
// "a~" a move, "a:Q/q/2" a key's characters and modifiers, "a'" its release, "a<" and "a>" entered and left, "a+" and
// "a-" activated and deactivated, "a?" whether it may be closed, "a.close", "a.gone" to its listeners, "a.go" to a
// popup, "a=" its new place or size, "a#" a paint with its clip. "!5" is a notice by its code.
class WindowScript : public Script {
public:
  explicit WindowScript(int32_t width = 800, int32_t height = 600, int32_t depth = 24);
  ~WindowScript();

  // What has been told since the last time, and then what has changed: who is active, modal and off (disabled), who has
  // the keyboard's focus and has captured the mouse. All records agree with the platform.
  std::string Heard();
  // Each step and what it brings.
  void Walk(std::initializer_list<ScriptStep> steps);
  void Say(const std::string& entry);
  ChildWindow* Window(const std::string& name) const { return windows.at(name); }

  std::string log;

private:
  void AddWords();
  ChildWindow* Make(std::istream& in);

  WindowProgram program;
  const LaterModules before = TheLaterModules();
  std::map<std::string, ChildWindow*> windows; // closed ones among them
  std::map<std::string, std::string> facts;
  bool settles = true; // the queue is empty behind each word that is not inside
                       // another one
};

} // namespace framereel
