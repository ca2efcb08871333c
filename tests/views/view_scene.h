// Views in the windows of a script: words for what the program does with them, and a log of what they hear.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/records/view_record.h"
#include "support/window_script.h"
#include "toolkit/controls/label.h"
#include "toolkit/views/box.h"
#include "toolkit/views/stack.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "toolkit/views_start.h"
#include "win32/memory/memory_display.h"
#include "win32/memory/memory_windows.h"

namespace framereel {

template <> View* Told<View*>(std::istream& in); // by its name

// "x,y+WIDTHxHEIGHT" of a View.
inline std::string BoundsText(const View* view) {
  return Text(view->x, ',', view->y, '+', view->width, 'x', view->height);
}

// A View's pixels on the screen as rows of '#' for black, '.' for white, '-' for anything else.
inline std::string PictureOf(const View* view) {
  std::string picture;
  for (int16_t y = 0; y < view->height; ++y) {
    for (int16_t x = 0; x < view->width; ++x) {
      const Point p = OnScreen(view->window, int16_t(view->x + x), int16_t(view->y + y));
      const uint32_t pixel = MemoryPixel(p.h, p.v);
      picture += pixel == 0 ? '#' : pixel == 0xFFFFFF ? '.' : '-';
    }
    picture += '\n';
  }
  return picture;
}

// A program with the open window "w", of 200 by 100 pixels, and the words of window_script.h with these:
//
//   view NAME KIND PARENT X Y   makes a View in a window or in a View; kKinds has the kinds
//   show hide enable disable destroy fit NAME, resize NAME WIDTH HEIGHT, move NAME X Y
//   bounds? NAME, hit? NAME X Y, whole? NAME (nothing of it is cut off)
//
// The log has a View's name and "<" ">" for the mouse that enters and leaves, "v" "~" "^" for a press, a move and a
// release with their place, ":" for a key with its character; "+" and "-" shown and hidden (with 1: it alone), "on",
// "off", "x" for its end. Its draws ("#") are told from the word "draws" on.
class ViewScene : public ::testing::Test {
public:
  ViewScene() : start((ViewsStartUp(), 1)) {
    scene = this;
    tellsDraws = false;
    script.Add("show", ViewShow);
    script.Add("hide", ViewHide);
    script.Add("enable", ViewEnable);
    script.Add("disable", ViewDisable);
    script.Add("destroy", ViewDestroy);
    script.Add("fit", ViewFit);
    script.Add("resize", ViewResize);
    script.Add("move", ViewMove);
    script.Add("bounds?", [](View* view) { Answer(BoundsText(view)); });
    script.Add("whole?", [](View* view) { Answer(ViewFullyShown(view, view) ? "yes" : "no"); });
    script.Add("hit?", [](View* view, int16_t x, int16_t y) { Answer(ViewHitTest(view, x, y) ? "yes" : "no"); });
    script.Add("draws", [] { tellsDraws = true; });
    script.words["view"] = [this](std::istream& in) {
      const std::string name = Word(in), kind = Word(in), parent = Word(in);
      const auto x = Told<int16_t>(in), y = Told<int16_t>(in);
      const ViewClass* viewClass = kKinds.at(kind)();
      View* view = views.count(parent) ? ViewCreateAt(viewClass, Named(parent), x, y)
                                       : ViewCreateTop(viewClass, script.Window(parent), x, y);
      if (kind == "plain") BoxSetFrame(view, false);
      if (kind == "stack") StackSetFrame(view, false);
      Keep(name, view);
    };
    script.Act("open w d");
    script.Heard();
  }

  View* Named(const std::string& name) const { return views.at(name); }
  ChildWindow* Window() const { return script.Window("w"); }
  // A new View in the window, "v" if it has no other name.
  View* Make(const ViewClass* viewClass, int16_t x = 10, int16_t y = 10, const std::string& name = "v") {
    return Keep(name, ViewCreateTop(viewClass, Window(), x, y));
  }
  View* Keep(const std::string& name, View* view) {
    std::erase_if(views,
                  [view](const auto& other) { return other.second == view; }); // it has the place of one that went
    return views[name] = view;
  }
  void Walk(std::initializer_list<ScriptStep> steps) { script.Walk(steps); }
  // The same, of what Views hear and questions answer alone.
  void Play(std::initializer_list<ScriptStep> steps) {
    for (const ScriptStep& step : steps) {
      said.clear();
      script.Act(step.words);
      EXPECT_EQ(said, step.brings) << step.words;
    }
    script.Heard();
  }

  // A class whose Views tell what they hear.
  static const ViewClass* TellingClass() {
    static ViewClass* telling = nullptr;
    if (telling) return telling;
    telling = ClassNew();
    telling->destroy = [](View* view) { Say(view, "x"); };
    telling->draw = [](View* view) {
      if (tellsDraws) Say(view, "#");
    };
    telling->mouseEntered = [](View* view) { Say(view, "<"); };
    telling->mouseLeft = [](View* view) { Say(view, ">"); };
    telling->mouseDown = [](View* view, uint16_t, int16_t x, int16_t y) { Say(view, Text('v', x, ',', y)); };
    telling->mouseMoved = [](View* view, int16_t x, int16_t y) { Say(view, Text('~', x, ',', y)); };
    telling->mouseUp = [](View* view, uint16_t, int16_t x, int16_t y) { Say(view, Text('^', x, ',', y)); };
    telling->keyDown = [](View* view, const KeyEvent& event, int16_t, int16_t) {
      Say(view, Text(':', char(event.character)));
    };
    telling->hidden = [](View* view, bool deep) { Say(view, deep ? "-" : "-1"); };
    telling->shown = [](View* view, bool deep) { Say(view, deep ? "+" : "+1"); };
    telling->enabled = [](View* view) { Say(view, "on"); };
    telling->disabled = [](View* view) { Say(view, "off"); };
    return telling;
  }
  static void Say(const View* view, const std::string& what) {
    for (const auto& [name, each] : scene->views) {
      if (each == view) Answer(name + what);
    }
  }
  static void Answer(const std::string& answer) { // to a question
    scene->said += (scene->said.empty() ? "" : " ") + answer;
    scene->script.Say(answer);
  }

  static inline ViewScene* scene = nullptr;
  static inline bool tellsDraws = false;
  const int start;                    // hands the toolkit down ahead of the program
  std::map<std::string, View*> views; // destroyed ones among them
  std::string said;
  WindowScript script;

private:
  static const ViewClass* DeafClass() { // hands its keys on
    static ViewClass deaf = *TellingClass();
    deaf.keyDown = LabelClass()->keyDown;
    return &deaf;
  }

  static inline const std::map<std::string, const ViewClass* (*)()> kKinds = {
      {"tells", TellingClass}, {"deaf", DeafClass}, {"plain", BoxClass}, {"framed", BoxClass}, {"stack", StackClass}};
};

template <> inline View* Told<View*>(std::istream& in) {
  return ViewScene::scene->Named(Word(in));
}

} // namespace framereel
