// Views: their life and state, their tree in a Box, and how mouse, keys and paints travel through it.
#include "views/view_scene.h"

namespace framereel {
namespace {

using ViewTest = ViewScene;

// A container of 100 by 80 pixels at 10, 10 with two children.
constexpr char kFamily[] = "view B plain w 10 10 resize B 100 80 view a tells B 0 0 view b tells B 30 0 show B ";

TEST_F(ViewTest, AreMadeSmallHiddenAndEnabledAndAreHitWhileTheyAreShownAndEnabled) {
  Walk({{"view v tells w 5 6 bounds? v hit? v 5 6", "5,6+16x16 no"},
        {"show v hit? v 5 6 hit? v 20 21 hit? v 21 21 hit? v 20 22", "v+ yes yes no no"},
        {"disable v hit? v 5 6 show v disable v enable v enable v hide v hide v", "voff no von v-"},
        {"resize v 0 40 bounds? v move v 7 8 bounds? v", "5,6+16x40 7,8+16x40"}});
}

TEST_F(ViewTest, TellTheirEndAndGoWithTheirContainerOrTheirWindow) {
  script.Act(std::string(kFamily) + "view t tells w 0 0");
  const auto hear = [](intptr_t view, void*) { Say(reinterpret_cast<View*>(view), "."); };
  for (int i = 0; i < 3; ++i) ViewAddListener(Named("a"), hear, nullptr);
  ViewRemoveListener(Named("a"), hear, nullptr);
  script.Heard();
  Walk({{"destroy B", "a. a. ax bx"}, {"close w", "w.gone tx active="}});
}

// ---- The Box -----------------------------------------------------------------------------------------------------

TEST_F(ViewTest, ABoxShowsItsChildrenSizesItselfRoundThemAndTakesThemAlong) {
  Walk({{"view B plain w 10 10 resize B 100 80 fit B bounds? B", "10,10+16x16"},
        {"view a tells B 40 20 bounds? a fit B bounds? B", "50,30+16x16 10,10+56x36"},
        {"show B hide B", "a+ a-"},
        {"move B 20 30 bounds? a move a 32767 0 bounds? a", "60,50+16x16 60,30+16x16"},
        {"destroy a fit B bounds? B", "ax 20,30+16x16"},
        {"whole? B move B 190 10 whole? B move B 20 30", "yes no"}, // of which the window cuts some
        {"view F framed w 0 0 view c tells F 0 0 fit F bounds? c bounds? F", "2,2+16x16 0,0+20x20"}});
}

// ---- Painting ----------------------------------------------------------------------------------------------------

TEST_F(ViewTest, AreDrawnInOrderWhereTheyNeedItWithinTheirContainer) {
  script.Act(std::string(kFamily) + "view t tells w 5 5 draws"); // t is hidden
  script.Heard();
  Walk({{"paint w", "a# b#"}, {"hide B", "a- b-"}, {"paint w", ""}});
  static ViewClass flood;
  flood = *TellingClass();
  flood.draw = [](View* view) {
    UseDrawState(DrawStateFill());
    SetForeColour({0xFFFF, 0, 0});
    FillRect(ChildBounds(view->window));
  };
  ViewShow(ViewCreate(&flood, Named("B")));
  script.Act("show B paint w wait 60");
  for (const auto& [x, y] : {std::pair{10, 10}, {109, 89}, {9, 10}, {110, 89}}) {
    const Point p = OnScreen(Window(), int16_t(x), int16_t(y));
    EXPECT_EQ(MemoryPixel(p.h, p.v) == MemoryPixelOf(255, 0, 0), x >= 10 && x < 110) << x;
  }
}

// ---- The mouse and the keys --------------------------------------------------------------------------------------

TEST_F(ViewTest, AClickTravelsDownToTheLastShownAndEnabledChildWhichHasItUntilTheRelease) {
  script.Act(std::string(kFamily) + "view d deaf B 60 0 show d");
  script.Heard();
  Walk({{"over w 15 15 K d over w 45 15", "w< a< a~15,15 a:k w'75/0 av15,15 a~45,15 mouse=Framereel"},
        {"u over w 75 15 K over w 180 90 K",
         "a^45,15 a> b< b> d< d~75,15 w:k/k/0 w'75/0 d> w~180,90 w:k/k/0 w'75/0 mouse="},
        {"view c tells B 5 0 show c over w 18 15 d u", "c+ c< c~18,15 cv18,15 c^18,15"},
        {"disable c disable b over w 18 16 d u", "coff boff c> a< a~18,16 av18,16 a^18,16"},
        {"over w 45 15 d u", "a> w~45,15 wv16@45,15 w^16@45,15"},
        {"over w 15 15 d destroy a u over w 45 16", "a< a~15,15 av15,15 ax w^16@15,15 w~45,16"},
        {"grab w over w 75 16 d u drop", "d< d~75,16 wv16@75,16 w^16@75,16"}});
}

TEST_F(ViewTest, MayDestroyThemselvesOrTheirWindowInAHandler) {
  static ViewClass fatal;
  fatal = *TellingClass();
  fatal.mouseUp = [](View* view, uint16_t, int16_t, int16_t) {
    View* container = view->parent;
    ViewDestroy(view);
    EXPECT_TRUE(ViewIsDestroyed(view));
    ViewDestroy(container);
  };
  fatal.keyDown = [](View* view, const KeyEvent&, int16_t, int16_t) { CloseChildWindow(view->window); };
  script.Act(kFamily);
  Keep("f", ViewCreateAt(&fatal, Named("B"), 60, 0));
  Keep("g", ViewCreateTop(&fatal, Window(), 20, 95));
  script.Act("show f show g over w 75 15 d");
  script.Heard();
  Walk({{"u", "fx ax bx mouse="}, {"over w 25 98 K", "g< g~25,98 w.gone gx active="}});
}

} // namespace
} // namespace framereel
