// The words for Views, and the classes whose Views tell what they hear.
#include "views/view_scene.h"

#include "toolkit/views/child_set.h"
#include "toolkit/views_start.h"

namespace framereel {
namespace {

ViewScene* scene;
bool tellsDraws;

const ViewClass* DeafClass() { // hands its keys on
  static ViewClass deaf = *TellingClass();
  deaf.keyDown = LabelClass()->keyDown;
  return &deaf;
}

const ViewClass* StubbornClass() { // leaves its children as they are
  static ViewClass stubborn = *BoxClass();
  stubborn.resizeChild = [](View*, View* child, int16_t width, int16_t) { Say(child, Text(width, '?')); };
  return &stubborn;
}

const std::map<std::string, const ViewClass* (*)()> kKinds = {{"tells", TellingClass}, {"deaf", DeafClass},
                                                              {"plain", BoxClass},     {"framed", BoxClass},
                                                              {"stack", StackClass},   {"stubborn", StubbornClass}};

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

void Say(const View* view, const std::string& what) {
  for (const auto& [name, each] : scene->views) {
    if (each == view) Answer(name + what);
  }
}

void Answer(const std::string& answer) {
  scene->script.Say(answer);
}

template <> View* Told<View*>(std::istream& in) {
  return scene->Named(Word(in));
}

ViewScene::ViewScene() : start((ViewsStartUp(), 1)) {
  scene = this;
  tellsDraws = false;
  script.Add("show", ViewShow);
  script.Add("quiet", ViewShowQuiet);
  script.Add("hide", ViewHide);
  script.Add("hidequiet", ViewHideQuiet);
  script.Add("enable", ViewEnable);
  script.Add("disable", ViewDisable);
  script.Add("destroy", ViewDestroy);
  script.Add("fit", ViewFit);
  script.Add("modal", SetModalView);
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

std::string BoundsText(const View* view) {
  return Text(view->x, ',', view->y, '+', view->width, 'x', view->height);
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
