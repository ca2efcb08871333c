// What the program draws on the screen while another one paints its window: a line of inverted pixels, and a picture.
// With a compositor both stand over all that moves, and nobody reads them by accident; without one the root has them.
#include "x11/user.h"

#include <cstdlib>
#include <string_view>

namespace framereel {

namespace {

constexpr PixelRect kScene = {40, 40, 300, 240};
constexpr PixelRect kLine = {50, 60, 290, 61}, kPlace = {100, 100, 164, 163};
constexpr PixelRect kBeside = {250, 200, 300, 240}; // the part of the scene that no mark touches
constexpr uint8_t kStripes[8] = {0xF0, 0xE1, 0xC3, 0x87, 0x0F, 0x1E, 0x3C, 0x78};

class X11WindowMarks : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    const char* desktop = std::getenv("FRAMEREEL_DESKTOP");
    if (desktop && std::string_view(desktop) == "xfwm4") Until([&] { return HasCompositor(); }); // it may still start
    scene = artist.Show(bare, kScene.left, kScene.top);
    Paint(kScene);
  }

  // In a colour that is no inverse of another; once it is on the screen, so is what stands over it. What is painted
  // under a mark without a compositor paints over the mark, so that only a part moves there.
  void Paint(const PixelRect& part) {
    colour = (colour + 0x010305) & 0x3F3F3F & artist.PixelBits();
    Picture paint = artist.Paper(part.right - part.left, part.bottom - part.top);
    paint.pixels.assign(paint.pixels.size(), colour);
    Copy(paint, paint.All(), part.left - kScene.left, part.top - kScene.top, &bare);
    XSetWindowBackground(artist.display, scene, colour); // it repaints by itself what is uncovered
    artist.Put(paint, scene, artist.Depth(), part.left - kScene.left, part.top - kScene.top);
    Until([&] { return Seen().pixels.back() == colour; });
  }
  void Paint() { Paint(HasCompositor() ? kScene : kBeside); }

  Picture Seen() const { return artist.Look(kScene); }
  // What a frame of the scene has.
  Picture Read() const {
    const OwnSurface into(bare.width, bare.height);
    EXPECT_TRUE(DisplayReadScreen(kScene, into.surface, 0, 0));
    return into.Pixels();
  }
  void UntilSeen(const Picture& expected, Place where = Place::current()) {
    Until([&] { return Difference(Seen(), expected).empty(); }, where);
  }

  void ToggleLine() {
    ASSERT_TRUE(DisplayInvertScreen(kLine, kStripes));
    DisplaySleep(0);
  }
  // The scene of now with the line, inverted when the scene was of that colour.
  Picture WithLine(uint32_t of) const {
    Picture marked = bare;
    for (int32_t x = kLine.left; x < kLine.right; ++x) {
      const bool striped = kStripes[kLine.top % 8] >> (7 - x % 8) & 1;
      if (striped) marked.At(x - kScene.left, kLine.top - kScene.top) = of ^ artist.Black() ^ artist.White();
    }
    return marked;
  }

  Window scene = None;
  uint32_t colour = 0;
  Picture bare = artist.Paper(kScene.right - kScene.left, kScene.bottom - kScene.top); // the scene as it was painted
};

TEST_F(X11WindowMarks, StandOverWhatMovesAndAreInNoFrame) {
  const Picture picture = artist.Noise(kPlace.right - kPlace.left, kPlace.bottom - kPlace.top, 1);
  const OwnSurface drawn(picture), below(picture.width, picture.height), there(picture.width, picture.height);
  const uint32_t first = colour;
  for (int round = 0; round < 8; ++round) {
    const uint32_t of = HasCompositor() ? colour : first;
    const auto marked = [&] {
      Picture seen = WithLine(of);
      Copy(picture, picture.All(), kPlace.left - kScene.left, kPlace.top - kScene.top, &seen);
      return seen;
    };
    ASSERT_TRUE(DisplayReadScreen(kPlace, below.surface, 0, 0));
    ASSERT_TRUE(DisplayDrawScreen(drawn.surface, picture.All(), kPlace.left, kPlace.top));
    ToggleLine();
    UntilSeen(marked());
    for (int look = 0; look < 4; ++look) {
      Paint();
      EXPECT_EQ(Difference(Seen(), marked()), "");
    }
    if (HasCompositor()) {
      EXPECT_EQ(Difference(Read(), bare), "");
      UntilSeen(marked());
    }
    // Whoever has drawn the picture and looks at just its place finds it, and puts back what was there.
    ASSERT_TRUE(DisplayReadScreen(kPlace, there.surface, 0, 0));
    EXPECT_EQ(Difference(there.Pixels(), picture), "");
    ASSERT_TRUE(DisplayDrawScreen(below.surface, picture.All(), kPlace.left, kPlace.top));
    ToggleLine();
    EXPECT_EQ(Difference(Read(), bare), "") << "round " << round;
    EXPECT_EQ(Difference(Seen(), bare), "");
  }
}

TEST_F(X11WindowMarks, AreInNoFrameOfACompositorThatHasYetToShowThem) {
  if (!HasCompositor()) GTEST_SKIP() << "the root has them";
  const Picture picture = artist.Noise(kPlace.right - kPlace.left, kPlace.bottom - kPlace.top, 1);
  const OwnSurface drawn(picture), below(picture.width, picture.height);
  for (int frame = 0; frame < 40; ++frame) {
    if (frame % 3 == 0) ToggleLine();
    if (frame % 8 == 0) {
      ASSERT_TRUE(DisplayReadScreen(kPlace, below.surface, 0, 0));
      ASSERT_TRUE(DisplayDrawScreen(drawn.surface, picture.All(), kPlace.left, kPlace.top));
    }
    if (frame % 8 == 5) {
      ASSERT_TRUE(DisplayDrawScreen(below.surface, picture.All(), kPlace.left, kPlace.top));
    }
    EXPECT_EQ(Difference(Read(), bare), "") << "frame " << frame;
  }
}

TEST_F(X11WindowMarks, StayOnTopAndAreNobodysToPressOn) {
  ToggleLine();
  UntilSeen(WithLine(colour));
  EXPECT_EQ(WindowAt(kLine.left, kLine.top), scene);
  EXPECT_EQ(DisplayWindowAt(0, kLine.left, kLine.top), scene);

  const Picture paper = artist.Paper(40, 20);
  artist.Show(paper, 80, 50);
  Until([&] { return artist.Look().At(81, 51) == artist.White(); });
  const uint8_t others[8] = {0x0F, 0x1E, 0x3C, 0x78, 0xF0, 0xE1, 0xC3, 0x87};
  ASSERT_TRUE(DisplayInvertScreen(kLine, others)); // all of it is inverted now
  DisplaySleep(0);
  Until([&] {
    const Picture seen = artist.Look();
    int32_t x = 80;
    const auto isMarked = [&] { return others[kLine.top % 8] >> (7 - x % 8) & 1; }; // over the paper
    while (x < 120 && (!isMarked() || seen.At(x, kLine.top) == artist.Black())) ++x;
    return x == 120;
  });
}

TEST_F(X11WindowMarks, FollowACompositorThatComesAndGoes) {
  if (HasCompositor() || artist.Depth() != 24) GTEST_SKIP() << "one that is there stays";
  if (!artist.HasExtension("DAMAGE")) GTEST_SKIP() << "none comes";
  for (int round = 0; round < 2; ++round) {
    ToggleLine();
    UntilSeen(WithLine(colour));
    ASSERT_EQ(std::system("picom --backend xrender --config /dev/null --no-use-damage -b"), 0);
    Until([&] { return HasCompositor(); });
    Drain();
    // The line may have been inverted anew when the compositor had not painted yet, so only its place is looked at.
    Until([&] {
      Paint();
      const Picture seen = Seen(), line = WithLine(colour);
      bool stands = true;
      for (size_t i = 0; i < line.pixels.size(); ++i) {
        stands &= (seen.pixels[i] == bare.pixels[i]) == (line.pixels[i] == bare.pixels[i]);
      }
      return stands;
    });
    ToggleLine();
    EXPECT_EQ(Difference(Read(), bare), "");
    EXPECT_EQ(Difference(Seen(), bare), "");
    ToggleLine();
    UntilSeen(WithLine(colour));
    XKillClient(artist.display, XGetSelectionOwner(artist.display, AtomOf("_NET_WM_CM_S0")));
    Until([&] { return !HasCompositor(); });
    Drain();
    UntilSeen(WithLine(colour));
    ToggleLine();
    UntilSeen(bare);
  }
}

} // namespace

} // namespace framereel
