// Views in the windows of a script: words for what the program does with them, and a log of what they hear.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>

#include "core/rects.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/records/view_record.h"
#include "platform/windows/main_window.h"
#include "platform/windows/modal.h"
#include "support/window_script.h"
#include "toolkit/controls/label.h"
#include "toolkit/views/box.h"
#include "toolkit/views/stack.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "win32/memory/memory_display.h"
#include "win32/memory/memory_windows.h"

namespace framereel {

// A program with the open window "w", of 200 by 100 pixels, and the words of window_script.h with these:
//
//   view NAME KIND PARENT X Y   makes a View in a window or in a View; kKinds in view_scene.cpp has the kinds
//   show quiet hide hidequiet enable disable destroy fit modal NAME, resize NAME WIDTH HEIGHT, move NAME X Y
//   bounds? NAME, hit? NAME X Y, whole? NAME (nothing of it is cut off)
//
// The log has a View's name and "<" ">" for the mouse that enters and leaves, "v" "~" "^" for a press, a move and a
// release with their place, ":" for a key with its character; "+" and "-" shown and hidden (with 1: it alone), "on",
// "off", "x" for its end. Its draws ("#") are told from the word "draws" on.
class ViewScene : public ::testing::Test {
public:
  ViewScene();

  View* Named(const std::string& name) const { return views.at(name); }
  ChildWindow* Window() const { return script.Window("w"); }
  // A new View in the window, "v" if it has no other name.
  View* Make(const ViewClass* viewClass, int16_t x = 10, int16_t y = 10, const std::string& name = "v");
  View* Keep(const std::string& name, View* view); // answers it
  void Walk(std::initializer_list<ScriptStep> steps) { script.Walk(steps); }
  void Play(std::initializer_list<ScriptStep> steps); // the same, of what Views hear and questions answer alone

  const int start;                    // hands the toolkit down ahead of the program
  std::map<std::string, View*> views; // destroyed ones among them
  WindowScript script;
};

template <> View* Told<View*>(std::istream& in); // by its name

// A class whose Views tell what they hear.
const ViewClass* TellingClass();
void Say(const View* view, const std::string& what);
void Answer(const std::string& answer); // to a question

// "x,y+WIDTHxHEIGHT" of a View.
std::string BoundsText(const View* view);
// A View's pixels on the screen as rows of '#' for black, '.' for white, '-' for anything else.
std::string PictureOf(const View* view);

} // namespace framereel
