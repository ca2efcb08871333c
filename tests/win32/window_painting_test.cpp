// Update regions, what contexts may draw on, and what reaches the screen.
#include "win32/window_scene.h"

namespace framereel {
namespace {

using WindowPainting = OneWindow;
using WindowContext = OneWindow;
using WindowPresenting = OneWindow;

// ---- What is asked for -------------------------------------------------------------------------------------------

TEST_F(WindowPainting, ErasesWithTheClassesColourPaintsParentsFirstAndOnlyWhatIsAskedFor) {
  Walk("paint erase",
       {{"new child child main 10 10 50 50 rgb? main 0 0 paints main r paints child g erase child erase main",
         "w | main.paint main.erase child.paint child.erase"},
        {"rgb? main 9 10 rgb? main 10 10 invalidate main 0 0 200 200", "r g | main.paint"},
        {"fill main w 0 0 200 200 invalidate main 10 80 20 20 invalidate main -50 190 70 810 update? main update main "
         "update? main",
         "0,80+30x120 main.paint 0,0+0x0"},
        {"rgb? main 10 80 rgb? main 30 99 rgb? main 19 199 rgb? main 9 150 update main", "r w r w"},
        {"hide child then invalidate child update child", "main.paint main.erase"},
        {"showna child", "| child.paint child.erase"},
        {"when main.erase update main . erase main update main rgb? main 100 100", "main.paint main.erase r"}});
}

TEST_F(WindowPainting, IsAskedOnlyForWhatIsNew) {
  Walk("none", {{"new child child main 10 10 50 50 place child 20 25 60 50 update? child", "50,0+10x50"},
                {"place main 100 100 226 225 update? main", "200,0+20x200"},
                {"new low child main 0 0 50 50 top low hide low update? child", "0,0+30x25"},
                {"new box framed main 5 60 100 50 place box 5 60 60 50 then rgb? main 64 90 rgb? main 65 90", "k w"},
                {"place box 5 60 140 90 then rgb? main 64 90", "w"}});
}

// Where another window lies over it, there is nothing to be moved.
TEST_F(WindowPainting, ScrollsWhatIsSeenAndIsAskedForTheRest) {
  TheScript().Add("scroll", [](HWND w, int dx, int dy) { ::ScrollWindow(w, dx, dy, nullptr, nullptr); });
  Walk("none",
       {{"new a child main 10 10 50 50 new b child main 40 0 50 40 top b fill a r 0 0 20 20 fill b g 0 0 50 40", ""},
        {"scroll a 15 5 rgb? main 25 15 rgb? main 39 34 rgb? main 40 34 rgb? main 25 35", "r r g w"},
        {"then rgb? main 24 20 rgb? main 25 20 update? a", "w r 0,0+0x0"},
        {"scroll a -20 -15 then rgb? main 10 10 rgb? main 19 19 rgb? main 20 20", "r r w"},
        // What was to be painted goes along.
        {"paints a k invalidate a 0 30 10 10 scroll a 20 0 then rgb? main 29 45", "k"},
        {"rgb? main 30 45 rgb? main 39 45 rgb? main 40 45 rgb? main 30 39", "k k w w"},
        {"new own own main 100 100 50 50 paints own r invalidate own 0 0 5 5 then fill own g 0 0 50 50 rgb? own 40 40",
         "g"}});
}

// ---- Contexts ----------------------------------------------------------------------------------------------------

TEST_F(WindowContext, FollowsItsWindowAndOutlivesItUntilItIsGivenBack) {
  Act("new child child main 10 10 50 50 new own own main 150 150 50 50");
  const HDC contexts[] = {::GetDC(Named("child")), ::GetDC(Named("own"))};
  TheScript().Add("draw", [&](int x, Ink ink) {
    for (HDC context : contexts) ::SetPixel(context, x, 2, ink.colour);
  });
  Walk("none", {{"place child 100 100 50 50 draw 2 r", ""},
                {"rgb? main 102 102 rgb? main 152 152 place main 0 0 206 225 then draw 7 g", "r r"},
                {"rgb? main 107 102 rgb? main 102 102 destroy child destroy own draw 2 g", "g r"},
                {"rgb? main 102 102 destroy main", "w"},
                {"new next frame - 100 100 206 225 draw 2 r fill next g 0 0 9 9 rgb? next 2 2", "g"}});
  for (HDC context : contexts) {
    ::SetTextColor(context, RGB(1, 2, 3));
    EXPECT_EQ(::ReleaseDC(nullptr, context), 0);
  }
}

// ---- The screen --------------------------------------------------------------------------------------------------

TEST_F(WindowPresenting, ComesBeforeTheScreenItselfIsReadOrDrawnOn) {
  HDC screen = ::CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
  Act("fill main r 0 0 10 10");
  EXPECT_EQ(::GetPixel(screen, 103, 122), RGB(255, 0, 0));
  Act("fill main g 0 0 10 10");
  FillPixels(screen, {103, 122, 108, 127}, RGB(0, 0, 255));
  Walk("none", {{"rgb? 107 122 rgb? 108 122", "b g"}}); // the present did not come after it
  ::DeleteDC(screen);
}

} // namespace
} // namespace framereel
