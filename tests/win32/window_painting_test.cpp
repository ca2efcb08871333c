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

// A window and those inside it, from the top down. It shows squares in colours of its own, scrolled by some pixels.
struct Twin {
  HWND window;
  PixelRect place; // in its parent
  bool shown, spares;
  int red, dx, dy;
  std::list<Twin> children;

  COLORREF At(int x, int y) const { return RGB(red, ((x - dx) >> 2 & 15) * 16, ((y - dy) >> 2 & 15) * 16); }
};

// The colour at a point of the windows' parent, and which window it is; black and null for none.
std::pair<COLORREF, HWND> SeenAt(const std::list<Twin>& windows, int x, int y) {
  for (const Twin& twin : windows) {
    const int inX = x - twin.place.left, inY = y - twin.place.top;
    if (!twin.shown || inX < 0 || inY < 0 || x >= twin.place.right || y >= twin.place.bottom) continue;
    const auto inside = SeenAt(twin.children, inX, inY);
    return inside.second ? inside : std::pair(twin.At(inX, inY), twin.window);
  }
  return {0, nullptr};
}

class TwinProgram {
public:
  explicit TwinProgram(uint32_t seed) : dice(seed) {
    Add(&roots, nullptr, "plain");
    for (int i = 0; i < 9; ++i) {
      Twin& parent = i % 3 ? roots.front().children.front() : roots.front();
      Add(&parent.children, parent.window, i == 6 || i % 3 == 2 ? "child" : i % 3 ? "own" : "parent");
    }
    MemoryGiveKeyboard(MemoryOpenWindow("other", {70, 50, 90, 70}, 0));
    Answer(WM_PAINT, [this](HWND window, WPARAM, LPARAM) {
      PAINTSTRUCT paint;
      ::BeginPaint(window, &paint);
      DrawIn(paint.hdc, *twins[window], paint.rcPaint);
      return ::EndPaint(window, &paint);
    });
  }

  // The program or the user does something with any of the windows, and perhaps more.
  void Change() {
    std::list<Twin>* among = &roots;
    auto one = among->begin();
    while (!one->children.empty() && !dice.OneIn(3)) {
      among = &one->children;
      one = std::next(among->begin(), dice.Below(int(among->size())));
    }
    do {
      Change(among, one);
    } while (dice.OneIn(2));
  }
  void ExpectTheSame() const {
    Drain();
    for (int i = 0; i < 80 * 60; ++i) {
      const POINT at = {i % 80, i / 80};
      if (MemoryWindowAt(at.x, at.y) == TheMemoryDesktop().keyboard) continue;
      const auto [colour, window] = SeenAt(roots, at.x, at.y);
      ASSERT_EQ(ColourAt(at), colour) << at.x << ", " << at.y;
      ASSERT_TRUE(i % 7 || ::WindowFromPoint(at) == window) << at.x << ", " << at.y;
    }
  }

private:
  void Change(std::list<Twin>* among, std::list<Twin>::iterator one) {
    const PixelRect any = AnyPlace();
    const RECT part = RectOf(any);
    const int act = dice.Below(9);
    if (act < 2) { // it only moves, or takes another size too
      one->place = act ? Moved(one->place, any.left - one->place.left, any.top - one->place.top) : any;
      ::MoveWindow(one->window, one->place.left, one->place.top, WidthOf(one->place), HeightOf(one->place), TRUE);
    } else if (act == 2) {
      one->shown = !one->shown;
      ::ShowWindow(one->window, one->shown ? SW_SHOWNA : SW_HIDE);
    } else if (act == 3) {
      const bool top = dice.OneIn(2);
      ::SetWindowPos(one->window, top ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      among->splice(top ? among->begin() : among->end(), *among, one);
    } else if (act == 4 && (one->spares || one->children.empty())) { // it draws at once
      one->dx = dice.Below(16);
      HDC context = ::GetDC(one->window);
      DrawIn(context, *one, {-9, -9, 70, 60});
      ::ReleaseDC(one->window, context);
    } else if (act <= 5) { // it spoils a part, and its children if it does not spare them
      HDC context = ::GetDC(one->window);
      ::FillRect(context, &part, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
      ::ReleaseDC(one->window, context);
      ::InvalidateRect(one->window, &part, dice.OneIn(2));
    } else if (act >= 6 && act < 8 && (one->spares || one->children.empty())) {
      const int dx = dice.Below(40) - 20, dy = dice.Below(40) - 20;
      ::ScrollWindow(one->window, dx, dy, nullptr, nullptr);
      one->dx += dx, one->dy += dy;
    } else if (act == 8) {
      MemoryMoveWindow(TheMemoryDesktop().keyboard, any);
    }
  }
  void Add(std::list<Twin>* to, HWND parent, const std::string& kind) {
    const std::string title(1, char('A' + twins.size()));
    const PixelRect r = parent ? AnyPlace() : PixelRect{5, 5, 75, 55};
    Act(Text("make ", title, ' ', kind, ' ', parent ? parent->title : "-", ' ', r.left, ' ', r.top, ' ', WidthOf(r),
             ' ', HeightOf(r), " showna ", title));
    to->push_front({Named(title), r, true, kind == "parent", 20 + 20 * int(twins.size()), 0, 0, {}});
    twins[to->front().window] = &to->front();
  }
  // The squares that the rectangle touches.
  static void DrawIn(HDC context, const Twin& twin, const RECT& r) {
    for (int y = r.top - ((r.top - twin.dy) & 3); y < r.bottom; y += 4) {
      for (int x = r.left - ((r.left - twin.dx) & 3); x < r.right; x += 4) {
        FillPixels(context, {x, y, x + 4, y + 4}, twin.At(x, y));
      }
    }
  }
  PixelRect AnyPlace() {
    const int left = dice.Below(70) - 15, top = dice.Below(50) - 10;
    return {left, top, left + 1 + dice.Below(60), top + 1 + dice.Below(50)};
  }

  Dice dice;
  WindowScene scene = WindowScene(80, 60, 24);
  std::list<Twin> roots;
  std::map<HWND, const Twin*> twins;
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
