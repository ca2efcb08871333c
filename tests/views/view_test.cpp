// Views: their life and state, their tree in a Box, and how mouse, keys and paints travel through it.
#include "toolkit/views/view.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "core/rects.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/input/mouse.h"
#include "platform/windows/modal.h"
#include "support/window_program.h"
#include "toolkit/views/box.h"
#include "toolkit/views/child_set.h"
#include "toolkit/views/view_class.h"
#include "toolkit/views_start.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

std::string calls;

// A View of the tests' class has its letter in userData and says what happens to it.
std::string NameOf(const View* view) {
  return std::string(1, char(view->userData));
}

void Say(const View* view, const char* what) {
  calls += NameOf(view) + what + " ";
}

void SayAt(const View* view, const char* what, int x, int y) {
  Say(view, (what + std::to_string(x) + "," + std::to_string(y)).c_str());
}

ViewClass *noting, *deaf; // the second wants no keys

void MakeClasses() {
  if (noting) return;
  noting = ClassNew();
  noting->destroy = [](View* view) { Say(view, "x"); };
  noting->draw = [](View* view) { Say(view, "draw"); };
  noting->mouseEntered = [](View* view) { Say(view, "<"); };
  noting->mouseLeft = [](View* view) { Say(view, ">"); };
  noting->mouseDown = [](View* view, uint16_t, int16_t x, int16_t y) { SayAt(view, "v", x, y); };
  noting->mouseMoved = [](View* view, int16_t x, int16_t y) { SayAt(view, "~", x, y); };
  noting->mouseUp = [](View* view, uint16_t, int16_t x, int16_t y) { SayAt(view, "^", x, y); };
  noting->keyDown = [](View* view, const KeyEvent& event, int16_t, int16_t) {
    Say(view, (std::string(":") + char(event.character)).c_str());
  };
  noting->hidden = [](View* view, bool deep) { Say(view, deep ? "hidden" : "hidden alone"); };
  noting->shown = [](View* view, bool deep) { Say(view, deep ? "shown" : "shown alone"); };
  noting->enabled = [](View* view) { Say(view, "on"); };
  noting->disabled = [](View* view) { Say(view, "off"); };
  deaf = ClassNew();
  const auto passKeyDown = deaf->keyDown;
  *deaf = *noting;
  deaf->keyDown = passKeyDown;
}

class ViewTest : public ::testing::Test {
protected:
  ViewTest() : start((ViewsStartUp(), 0)) {
    MakeClasses();
    UseWindow(OpenTestWindow(kWindowUnclamped));
    calls.clear();
  }

  void OpenDialog() { UseWindow(OpenTestWindow(kWindowModal | kWindowUnclamped)); }

  void UseWindow(ChildWindow* used) {
    window = used;
    window->methods.mouseDown = [](ChildWindow*, uint16_t, int16_t, int16_t) { calls += "Wv "; };
    window->methods.mouseUp = [](ChildWindow*, uint16_t, int16_t, int16_t) { calls += "W^ "; };
    window->methods.keyDown = [](ChildWindow*, const KeyEvent&, int16_t, int16_t) { calls += "W: "; };
  }

  std::string Heard() { return std::exchange(calls, ""); }

  View* Named(View* view, char name) {
    view->userData = uintptr_t(name);
    return view;
  }
  View* Top(char name, int16_t x, int16_t y) { return Named(ViewCreateTop(noting, window, x, y), name); }
  View* In(View* parent, char name, int16_t x, int16_t y) { return Named(ViewCreateAt(noting, parent, x, y), name); }
  // A Box without a frame over 100 by 80 pixels at 10, 10.
  View* Container() {
    View* box = ViewCreateTop(BoxClass(), window, 10, 10);
    BoxSetFrame(box, false);
    ViewResize(box, 100, 80);
    return Named(box, 'B');
  }
  // That, with children a at 0, 0 and b at 30, 0 of it; shown.
  View* Family() {
    View* box = Container();
    a = In(box, 'a', 0, 0);
    b = In(box, 'b', 30, 0);
    ViewShow(box);
    Settle();
    Heard();
    return box;
  }

  int start; // hands the toolkit down ahead of the program
  WindowProgram program;
  ChildWindow* window;
  View *a, *b;
};

// ---- Life and state ----------------------------------------------------------------------------------------------

TEST_F(ViewTest, ANewViewIsSmallHiddenEnabledAndNotHit) {
  View* view = Top('v', 5, 6);
  EXPECT_TRUE(RectEqual(ViewBounds(view), {6, 5, 22, 21}));
  EXPECT_FALSE(ViewIsVisible(view));
  EXPECT_TRUE(ViewIsEnabled(view));
  EXPECT_FALSE(ViewHitTest(view, 5, 6));
  ViewShow(view);
  EXPECT_TRUE(ViewHitTest(view, 5, 6));
  EXPECT_TRUE(ViewHitTest(view, 20, 21));
  EXPECT_FALSE(ViewHitTest(view, 21, 21));
  ViewDisable(view);
  EXPECT_FALSE(ViewHitTest(view, 5, 6));
  ViewShow(view);
  ViewDisable(view);
  ViewSetEnabled(view, true);
  ViewEnable(view);
  ViewHideQuiet(view);
  ViewHide(view);
  EXPECT_EQ(Heard(), "vshown voff von vhidden alone ");
}

TEST_F(ViewTest, SizesAndPlacesAreAskedOfTheParent) {
  View* view = Top('v', 5, 6);
  ViewResize(view, 0, 40);
  EXPECT_TRUE(RectEqual(ViewBounds(view), {6, 5, 46, 21}));
  ViewMove(view, 7, 8);
  EXPECT_TRUE(RectEqual(ViewBounds(view), {8, 7, 48, 23}));
  ViewResize(nullptr, 1, 1);
  static ViewClass stubborn;
  stubborn = *BoxClass();
  stubborn.resizeChild = [](View*, View*, int16_t width, int16_t) { calls += std::to_string(width) + "? "; };
  View* child = In(ViewCreateTop(&stubborn, window, 0, 0), 'c', 0, 0);
  ViewResize(child, 16, 16); // it has that size
  ViewResize(child, 17, 16);
  EXPECT_EQ(Heard(), "17? ");
  EXPECT_EQ(child->width, 16);
}

void NoteDeath(intptr_t view, void* what) {
  calls += NameOf(reinterpret_cast<View*>(view)) + static_cast<const char*>(what) + " ";
}

char first[] = "first", second[] = "second";

TEST_F(ViewTest, DestructionIsToldFromTheLastListenerAndGoesThroughTheTree) {
  View* box = Family();
  ViewAddListener(a, NoteDeath, first);
  ViewAddListener(a, NoteDeath, second);
  ViewAddListener(a, NoteDeath, first);
  ViewRemoveListener(a, NoteDeath, first);
  ViewSetAttribute(a, 7, 70);
  ViewSetAttribute(a, 7, 71);
  EXPECT_EQ(ViewGetAttribute(a, 7), 71);
  EXPECT_EQ(ViewDropAttribute(a, 7), 71);
  EXPECT_FALSE(ViewHasAttribute(a, 7));
  ViewDestroy(box);
  EXPECT_EQ(Heard(), "asecond afirst ax bx ");
  EXPECT_EQ(window->views.count, 0);
}

TEST_F(ViewTest, AContainerShowsAllOfItselfOrItselfAloneAndGoesWithItsWindow) {
  View* box = Container();
  In(box, 'a', 0, 0);
  ViewShowQuiet(box);
  EXPECT_EQ(Heard(), "");
  ViewHideQuiet(box);
  ViewShow(box);
  EXPECT_EQ(Heard(), "ashown ");
  ViewHide(box);
  EXPECT_EQ(Heard(), "ahidden ");
  Top('t', 0, 0);
  CloseChildWindow(window);
  EXPECT_EQ(Heard(), "ax tx ");
}

TEST_F(ViewTest, TheBackgroundIsThatOfTheNextContainerWithOne) {
  View* box = Family();
  window->background = {1, 2, 3};
  EXPECT_EQ(ViewBackground(a).blue, 3);
  BoxSetBackground(box, {4, 5, 6});
  EXPECT_EQ(ViewBackground(a).blue, 3);
  BoxSetFilled(box, true);
  EXPECT_EQ(ViewBackground(a).blue, 6);
  EXPECT_EQ(ViewBackground(nullptr).blue, 0xFFFF);
}

TEST_F(ViewTest, FullyShownMeansInsideOfEveryContainer) {
  View* box = Family();
  EXPECT_TRUE(ViewFullyShown(a, a));
  ViewMove(a, 90, 0);
  EXPECT_FALSE(ViewFullyShown(a, a));
  ViewMove(box, 150, 10);
  ViewMove(a, 0, 0);
  EXPECT_TRUE(ViewFullyShown(a, a));
  EXPECT_FALSE(ViewFullyShown(box, box)); // it reaches out of the window
  ViewMove(a, 60, 0);
  EXPECT_FALSE(ViewFullyShown(a, a));
}

// ---- The Box -----------------------------------------------------------------------------------------------------

TEST_F(ViewTest, ABoxSizesItselfRoundItsChildrenAndTakesThemAlong) {
  View* box = Container();
  EXPECT_EQ(ChildSetOf(box)->client.right, 110);
  ViewFit(box);
  EXPECT_EQ(box->width, 16);
  View* child = In(box, 'a', 40, 20);
  EXPECT_EQ(child->x, 50);
  ViewFit(box);
  EXPECT_TRUE(RectEqual(ViewBounds(box), {10, 10, 46, 66}));
  ViewMove(box, 20, 30);
  EXPECT_TRUE(RectEqual(ViewBounds(child), {50, 60, 66, 76}));
  ViewMove(child, kKeepPlace, 0);
  EXPECT_TRUE(RectEqual(ViewBounds(child), {30, 60, 46, 76}));
  ViewDestroy(child);
  ViewFit(box);
  EXPECT_EQ(box->width, 16);
}

TEST_F(ViewTest, AFrameKeepsTwoPixelsFree) {
  View* box = ViewCreateTop(BoxClass(), window, 0, 0);
  View* child = In(box, 'a', 0, 0);
  EXPECT_EQ(child->x, 2);
  ViewFit(box);
  EXPECT_EQ(box->width, 20);
  EXPECT_TRUE(RectEqual(ChildSetOf(box)->client, {2, 2, 18, 18}));
}

TEST_F(ViewTest, AnAnchorStaysWhereItIsWhenTheChildGrows) {
  View* box = Container();
  const std::pair<uint32_t, Rect> cases[] = {
      {0, {30, 40, 50, 70}},
      {kAnchorRight | kAnchorBottom, {26, 26, 46, 56}},
      {kAnchorCentreAcross | kAnchorCentreDown, {28, 33, 48, 63}},
  };
  for (const auto& [anchor, expected] : cases) {
    View* child = In(box, 'a', 30, 20);
    child->anchor = anchor;
    ViewResize(child, 30, 20);
    EXPECT_TRUE(RectEqual(ViewBounds(child), expected)) << anchor;
    ViewDestroy(child);
  }
}

// ---- Painting ----------------------------------------------------------------------------------------------------

TEST_F(ViewTest, ViewsAreDrawnInOrderWhereTheyNeedIt) {
  View* box = Family();
  Top('t', 5, 5);
  ViewInvalidateRect(box, ChildBounds(window));
  Settle();
  EXPECT_EQ(Heard(), "adraw bdraw "); // t is hidden
  ViewInvalidate(b);
  Settle();
  EXPECT_EQ(Heard(), "bdraw ");
  ViewHideQuiet(box);
  ViewInvalidate(box);
  Heard();
  ViewInvalidate(a);
  Settle();
  EXPECT_EQ(Heard(), ""); // a is visible, but nobody draws its container
}

TEST_F(ViewTest, ChildrenAreClippedToTheirContainer) {
  static ViewClass flood;
  flood = *noting;
  flood.draw = [](View* view) {
    UseDrawState(DrawStateFill());
    SetForeColour({0xFFFF, 0, 0});
    FillRect(ChildBounds(view->window));
  };
  View* box = Container();
  Named(ViewCreate(&flood, box), 'f');
  ViewShow(box);
  InvalidateChildWindow(window);
  Settle();
  RunFor(60);
  const auto pixel = [&](int16_t x, int16_t y) {
    const Point p = OnScreen(window, x, y);
    return MemoryPixel(p.h, p.v);
  };
  const uint32_t red = MemoryPixelOf(255, 0, 0);
  EXPECT_EQ(pixel(10, 10), red);
  EXPECT_EQ(pixel(109, 89), red);
  EXPECT_NE(pixel(9, 10), red);
  EXPECT_NE(pixel(110, 89), red);
}

// ---- The mouse ---------------------------------------------------------------------------------------------------

TEST_F(ViewTest, AClickTravelsDownToTheChildAndHoldsItUntilTheRelease) {
  Family();
  MoveOver(window, 15, 15);
  EXPECT_EQ(Heard(), "a< a~15,15 ");
  Press(window, 15, 15);
  MoveOver(window, 45, 15);
  EXPECT_EQ(Heard(), "a~15,15 av15,15 a~45,15 "); // on b, but a has the press
  Release();
  EXPECT_EQ(Heard(), "a^45,15 a> b< ");
  MoveOver(window, 180, 90); // off the container
  EXPECT_EQ(Heard(), "b> ");
}

TEST_F(ViewTest, OfOverlappingChildrenTheLastOneIsHitUnlessItIsOff) {
  View* box = Family();
  View* over = In(box, 'c', 5, 0);
  ViewShow(over);
  Settle();
  Heard();
  Press(window, 18, 15);
  EXPECT_EQ(Heard(), "c< c~18,15 cv18,15 ");
  Release();
  ViewDisable(over);
  ViewDisable(b);
  Heard();
  Press(window, 18, 15);
  Release();
  EXPECT_EQ(Heard(), "c> a< a~18,15 av18,15 a^18,15 ");
  Press(window, 45, 15); // only the container is left there
  Release();
  EXPECT_EQ(Heard(), "a> Wv W^ ");
}

View* victim;

TEST_F(ViewTest, AViewMayDestroyItselfItsContainerOrItsWindowInAHandler) {
  static ViewClass fatal;
  fatal = *noting;
  fatal.mouseUp = [](View* view, uint16_t, int16_t, int16_t) {
    Say(view, "^");
    ViewDestroy(victim);
    EXPECT_TRUE(ViewIsDestroyed(victim));
    ViewDestroy(victim); // once is enough
  };
  View* box = Family();
  View* self = victim = Named(ViewCreateAt(&fatal, box, 60, 0), 'f');
  ViewShow(self);
  Press(window, 75, 15);
  Heard();
  Release();
  EXPECT_EQ(Heard(), "f^ fx ");
  MoveOver(window, 15, 15);
  EXPECT_EQ(Heard(), "a< a~15,15 ");
  ViewShow(Named(ViewCreateAt(&fatal, box, 60, 0), 'f'));
  victim = box;
  Press(window, 75, 15);
  Heard();
  Release();
  EXPECT_EQ(Heard(), "f^ ax bx fx ");
  EXPECT_EQ(window->views.count, 0);
  fatal.mouseDown = [](View* view, uint16_t, int16_t, int16_t) { CloseChildWindow(view->window); };
  box = Family();
  ViewShow(ViewCreateAt(&fatal, box, 60, 0));
  Press(window, 75, 15);
  Release();
  EXPECT_FALSE(IsOpenChildWindow(window));
}

TEST_F(ViewTest, AChildThatDiesUnderTheMouseIsForgottenWithoutACall) {
  View* box = Family();
  MoveOver(window, 15, 15);
  Press(window, 15, 15);
  Heard();
  ViewDestroy(a);
  EXPECT_EQ(ChildSetOf(box)->entered, nullptr);
  EXPECT_EQ(ChildSetOf(box)->pressed, nullptr);
  Release();
  EXPECT_EQ(Heard(), "ax W^ ");
  MoveOver(window, 45, 15);
  EXPECT_EQ(Heard(), "b< b~45,15 ");
}

TEST_F(ViewTest, WithAModalViewNoOtherTakesPart) {
  OpenDialog();
  View* box = Family();
  SetModalView(b);
  MoveOver(window, 45, 15);
  EXPECT_EQ(Heard(), "b< b~45,15 ");
  MoveOver(window, 15, 15);
  EXPECT_EQ(Heard(), "b> ");
  Press(window, 15, 15);
  Release();
  EXPECT_EQ(Heard(), "bv15,15 b^15,15 "); // presses are its, wherever they fall
  Type('K');
  EXPECT_EQ(Heard(), "b:k ");
  ViewDestroy(b);
  EXPECT_EQ(GetModalView(), nullptr);
  Heard();
  MoveOver(window, 15, 15);
  EXPECT_EQ(Heard(), "a< a~15,15 ");
  SetModalView(Named(ViewCreateAt(deaf, box, 60, 0), 'd'));
  Settle();
  Heard();
  Type('K');
  EXPECT_EQ(Heard(), "W: ");
}

TEST_F(ViewTest, WhileTheCaptureIsHeldPressesAreTheWindows) {
  Family();
  MoveOver(window, 15, 15);
  HoldCapture(window);
  Heard();
  Press(window, 15, 15);
  Release();
  EXPECT_EQ(Heard(), "a~15,15 Wv W^ ");
  ReleaseHeldCapture();
}

// ---- The keys ----------------------------------------------------------------------------------------------------

TEST_F(ViewTest, AKeyGoesToTheChildUnderTheMouseElseToTheWindow) {
  ViewShow(Named(ViewCreateAt(deaf, Family(), 60, 0), 'd'));
  const struct {
    int16_t x, y;
    const char* heard;
  } cases[] = {{15, 15, "a:k "}, {75, 15, "W: "}, {80, 60, "W: "}, {180, 90, "W: "}};
  for (const auto& c : cases) {
    MoveOver(window, c.x, c.y);
    Heard();
    Type('K');
    EXPECT_EQ(Heard(), c.heard) << c.x;
  }
}

} // namespace
} // namespace framereel
