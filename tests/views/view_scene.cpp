// The words for Views, and the classes whose Views tell what they hear.
#include "views/view_scene.h"

#include "platform/windows/modal.h"
#include "toolkit/controls/label.h"
#include "toolkit/views/box.h"
#include "toolkit/views/child_set.h"
#include "toolkit/views/stack.h"
#include "toolkit/views/view.h"
#include "toolkit/views/view_class.h"
#include "toolkit/views_start.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

WindowScript* told;
const std::map<std::string, View*>* known;
bool tellsDraws;

std::string At(const char* ahead, int x, int y) {
  return std::string(ahead).append(std::to_string(x)).append(",").append(std::to_string(y));
}

const ViewClass* DeafClass() { // hands its keys on
  static ViewClass deaf = *TellingClass();
  deaf.keyDown = LabelClass()->keyDown;
  return &deaf;
}

const ViewClass* StubbornClass() { // leaves its children as they are
  static ViewClass stubborn = *BoxClass();
  stubborn.resizeChild = [](View*, View* child, int16_t width, int16_t) { Say(child, std::to_string(width) + "?"); };
  return &stubborn;
}

const std::map<std::string, const ViewClass* (*)()> kKinds = {{"tells", TellingClass}, {"deaf", DeafClass},
                                                              {"plain", BoxClass},     {"framed", BoxClass},
                                                              {"stack", StackClass},   {"stubborn", StubbornClass}};

const std::pair<const char*, void (*)(View*)> kViewWords[] = {
    {"show", ViewShow},
    {"quiet", ViewShowQuiet},
    {"hide", ViewHide},
    {"hidequiet", ViewHideQuiet},
    {"enable", ViewEnable},
    {"disable", ViewDisable},
    {"destroy", ViewDestroy},
    {"fit", ViewFit},
    {"modal", SetModalView},
    {"bounds?", [](View* view) { Answer(BoundsText(view)); }},
    {"whole?", [](View* view) { Answer(ViewFullyShown(view, view) ? "yes" : "no"); }},
};

const std::pair<const char*, void (*)(View*, int16_t, int16_t)> kPlaceWords[] = {
    {"resize", ViewResize},
    {"move", ViewMove},
    {"hit?", [](View* view, int16_t x, int16_t y) { Answer(ViewHitTest(view, x, y) ? "yes" : "no"); }},
};

} // namespace

const ViewClass* TellingClass() {
  static ViewClass* telling = nullptr;
  if (telling) return telling;
  telling = ClassNew();
  telling->destroy = [](View* view) { Say(view, "x"); };
  telling->draw = [](View* view) {
    if (tellsDraws) Say(view, "#");
  };
  telling->mouseEntered = [](View* view) { Say(view, "<"); };
  telling->mouseLeft = [](View* view) { Say(view, ">"); };
  telling->mouseDown = [](View* view, uint16_t, int16_t x, int16_t y) { Say(view, At("v", x, y)); };
  telling->mouseMoved = [](View* view, int16_t x, int16_t y) { Say(view, At("~", x, y)); };
  telling->mouseUp = [](View* view, uint16_t, int16_t x, int16_t y) { Say(view, At("^", x, y)); };
  telling->keyDown = [](View* view, const KeyEvent& event, int16_t, int16_t) {
    Say(view, std::string(":") + char(event.character));
  };
  telling->hidden = [](View* view, bool deep) { Say(view, deep ? "-" : "-1"); };
  telling->shown = [](View* view, bool deep) { Say(view, deep ? "+" : "+1"); };
  telling->enabled = [](View* view) { Say(view, "on"); };
  telling->disabled = [](View* view) { Say(view, "off"); };
  return telling;
}

void Say(const View* view, const std::string& what) {
  for (const auto& [name, each] : *known) {
    if (each == view) told->Say(name + what);
  }
}

void Say(const View* view, const char* what, int number) {
  Say(view, std::string(what).append(std::to_string(number)));
}

void Answer(const std::string& answer) {
  told->Say(answer);
}

ViewScene::ViewScene() : start((ViewsStartUp(), 1)) {
  told = &script;
  known = &views;
  tellsDraws = false;
  for (const auto& [word, act] : kViewWords) AddWord(word, act);
  for (const auto& [word, act] : kPlaceWords) {
    script.words[word] = [this, act = act](std::istream& in) {
      std::string name;
      int16_t x = 0, y = 0;
      in >> name >> x >> y;
      act(Named(name), x, y);
    };
  }
  script.words["draws"] = [](std::istream&) { tellsDraws = true; };
  script.words["view"] = [this](std::istream& in) {
    std::string name, kind, parent;
    int16_t x = 0, y = 0;
    in >> name >> kind >> parent >> x >> y;
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

void ViewScene::Play(std::initializer_list<ScriptStep> steps) {
  for (const ScriptStep& step : steps) {
    script.Act(step.words);
    std::istringstream heard(script.Heard());
    std::string said;
    for (std::string word; heard >> word;) {
      const bool isFact = word.find('=') > 1 && word.find('=') != std::string::npos;
      const bool isOfWindow = word[0] == 'w' && (!std::isalpha(word[1]) || word.find('@') != std::string::npos);
      if (!isOfWindow && !isFact) said += (said.empty() ? "" : " ") + word;
    }
    EXPECT_EQ(said, step.brings) << step.words;
  }
}

View* ViewScene::Make(const ViewClass* viewClass, int16_t x, int16_t y, const std::string& name) {
  return Keep(name, ViewCreateTop(viewClass, Window(), x, y));
}

View* ViewScene::Keep(const std::string& name, View* view) {
  std::erase_if(views, [view](const auto& other) { return other.second == view; }); // it has the place of one that went
  return views[name] = view;
}

void ViewScene::AddWord(const std::string& word, void (*act)(View*)) {
  script.words[word] = [this, act](std::istream& in) {
    std::string name;
    in >> name;
    act(Named(name));
  };
}

std::string BoundsText(const View* view) {
  return At("", view->x, view->y) + "+" + std::to_string(view->width) + "x" + std::to_string(view->height);
}

std::string PictureOf(const View* view) {
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

} // namespace framereel
