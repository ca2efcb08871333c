// Update regions, what contexts may draw on, and what reaches the screen.
#include <list>

#include "support/dice.h"
#include "win32/window_scene.h"

namespace framereel {
namespace {

using WindowPainting = OneWindow;
using WindowContext = OneWindow;
using WindowPresenting = OneWindow;

// ---- Random windows beside a plain twin --------------------------------------------------------------------------

// A child that shows squares in colours of its own, scrolled by some pixels.
struct Twin {
  HWND window;
  PixelRect place;
  bool shown;
  int red, dx, dy;

  COLORREF At(int x, int y) const { return RGB(red, ((x - dx) >> 2 & 15) * 16, ((y - dy) >> 2 & 15) * 16); }
  // The squares that the rectangle touches.
  void DrawIn(HDC context, const RECT& r) const {
    for (int y = r.top - ((r.top - dy) & 3); y < r.bottom; y += 4) {
      for (int x = r.left - ((r.left - dx) & 3); x < r.right; x += 4) {
        FillPixels(context, {x, y, x + 4, y + 4}, At(x, y));
      }
    }
  }
};

class TwinProgram {
public:
  explicit TwinProgram(uint32_t seed) : dice(seed) {
    Act("make P plain - 5 5 70 50 showna P");
    for (int i = 0; i < 8; ++i) {
      const PixelRect r = AnyPlace();
      const std::string title(1, char('A' + i));
      Act(Text("make ", title, i % 2 ? " own P " : " child P ", r.left, ' ', r.top, ' ', WidthOf(r), ' ', HeightOf(r),
               " showna ", title));
      twins.push_front({Named(title), r, true, 20 + 20 * i, 0, 0});
    }
    Answer(WM_PAINT, [this](HWND window, WPARAM wParam, LPARAM lParam) {
      const auto twin =
          std::find_if(twins.begin(), twins.end(), [=](const Twin& each) { return each.window == window; });
      if (twin == twins.end()) return ::DefWindowProcA(window, WM_PAINT, wParam, lParam);
      PAINTSTRUCT paint;
      ::BeginPaint(window, &paint);
      twin->DrawIn(paint.hdc, paint.rcPaint);
      return LRESULT(::EndPaint(window, &paint));
    });
  }

  // The program does something with any of the windows.
  void Change() {
    const auto one = std::next(twins.begin(), dice.Below(int(twins.size())));
    HWND window = one->window;
    const PixelRect any = AnyPlace();
    const RECT part = RectOf(any);
    const int act = dice.Below(8), dx = dice.Below(40) - 20, dy = dice.Below(40) - 20;
    if (act < 2) { // it only moves, or takes another size too
      one->place = act ? Moved(one->place, any.left - one->place.left, any.top - one->place.top) : any;
      ::MoveWindow(window, one->place.left, one->place.top, WidthOf(one->place), HeightOf(one->place), TRUE);
    } else if (act == 2) {
      one->shown = !one->shown;
      ::ShowWindow(window, one->shown ? SW_SHOWNA : SW_HIDE);
    } else if (act == 3) {
      const bool top = dice.OneIn(2);
      Act((top ? "top " : "bottom ") + window->title);
      twins.splice(top ? twins.begin() : twins.end(), twins, one);
    } else if (act <= 5) { // it draws at once, or has a part painted that it has spoilt
      HDC context = ::GetDC(window);
      if (act == 4) one->dx = dx, one->DrawIn(context, {-9, -9, 70, 60});
      if (act == 5) FillPixels(context, any, 0), ::InvalidateRect(window, &part, dice.OneIn(2));
      ::ReleaseDC(window, context);
    } else {
      ::ScrollWindow(window, dx, dy, nullptr, nullptr);
      one->dx += dx, one->dy += dy;
    }
  }
  void ExpectTheSame() const {
    Drain();
    for (int i = 0; i < 70 * 50; ++i) {
      const int x = i % 70, y = i / 70;
      const auto seen = std::find_if(twins.begin(), twins.end(),
                                     [=](const Twin& twin) { return twin.shown && Holds(twin.place, x, y); });
      const COLORREF colour =
          seen == twins.end() ? RGB(255, 255, 255) : seen->At(x - seen->place.left, y - seen->place.top);
      ASSERT_EQ(ColourAt({x + 5, y + 5}), colour) << x << ", " << y;
    }
  }

private:
  PixelRect AnyPlace() {
    const int left = dice.Below(70) - 15, top = dice.Below(50) - 10;
    return {left, top, left + 1 + dice.Below(60), top + 1 + dice.Below(50)};
  }

  Dice dice;
  WindowScene scene = WindowScene(80, 60, 24);
  std::list<Twin> twins; // from the top down
};

TEST(WindowsAndATwin, ShowTheSameWhateverIsMovedShownStackedSpoiltOrScrolled) {
  for (uint32_t seed = 0; seed < 80; ++seed) {
    TwinProgram program(seed);
    for (int step = 0; step < 60; ++step) {
      program.Change();
      if (step % 4) continue;
      ASSERT_NO_FATAL_FAILURE(program.ExpectTheSame()) << "seed " << seed << " step " << step;
    }
  }
}

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

TEST_F(WindowPainting, IsAskedOnlyForWhatIsNewUnlessTheClassWantsItAll) {
  Walk("none", {{"new child child main 10 10 50 50 place child 20 25 60 50 update? child", "50,0+10x50"},
                {"place main 100 100 226 225 update? main", "200,0+20x200"},
                {"new low child main 0 0 50 50 top low hide low update? child", "0,0+30x25"},
                {"new anew anew main 0 0 50 50 place anew 0 0 50 40 update? anew", "0,0+50x40"},
                {"new box framed main 5 60 100 50 place box 5 60 60 50 then rgb? main 64 90 rgb? main 65 90", "k w"},
                {"place box 5 60 140 90 then rgb? main 64 90", "w"}});
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

TEST_F(WindowContext, OfAClassOfItsOwnKeepsItsStateAndOthersBeginAnew) {
  Act("new own own main 0 0 50 50");
  for (const auto& [window, kept] : {std::pair{main, RGB(0, 0, 0)}, std::pair{Named("own"), RGB(1, 2, 3)}}) {
    for (const COLORREF expected : {RGB(0, 0, 0), kept}) {
      HDC context = ::GetDC(window);
      EXPECT_EQ(::SetTextColor(context, RGB(1, 2, 3)), expected);
      ::ReleaseDC(window, context);
    }
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
