// When frames are taken: scripts of what the user does and others paint, and the log of what comes of them, exact to
// the tick of the display's clock.
#include "recorder/control/recording_control.h"

#include "recorder/recording.h"
#include "resources/bitmaps.h"
#include "support/timed_script.h"
#include "support/window_program.h"
#include "win32/win32_system.h"

namespace framereel {
namespace {

constexpr int kWidth = 200, kHeight = 160;
constexpr Rect kArea = {10, 20, 150, 180};
constexpr PixelRect kPicturePlace = {68, 48, 132, 111}; // in its middle

// The engine with its control beside another program, which has the keyboard and paints the whole screen.
struct Stage : WindowProgram, Recording {
  const uint32_t white = PixelBits(TheMemoryDisplay().layout);
  DisplayWindow* scene;
  int changes = 0;                             // of what the scene shows
  bool marked = false, lively = false;         // lively: a pixel changes all the time
  uint32_t frames = 0, otherSize = UINT32_MAX; // that the stream pretends to have
  std::string log, last, delay;                // of the last frame
  Script script;

  Stage(int screenDepth, const Rect& area) : WindowProgram(kWidth, kHeight, screenDepth), Recording(area) {
    options.overlayBorder = options.overlayCursor = false;
    options.frameDelay = 99; // a frame each 100 ms
    recorder.panel.pictureWork = [](void* owner, const Rect&, PictureWork work) {
      static_cast<Stage*>(static_cast<Recording*>(owner))->Mark(work != PictureWork::kBegins);
    };
    RecorderInit(recorder);
    scene = MemoryOpenWindow("Scene", {0, 0, kWidth, kHeight}, 0);
    scene->paint = [this] { Paint(); };
    MemoryGiveKeyboard(scene);
    Settle();
    Paint();
    Mark(true);
    script.Add("start", [this] { RecorderStart(recorder); });
    script.Add("stop", [this] { RecorderStop(recorder); });
    script.Add("grab", [this] { RecorderGrab(recorder); });
    script.Add("thaw", [this] { RecorderThaw(recorder); });
    script.Add("shutdown", [this] { RecorderShutDown(recorder); });
    script.Add("delay", [this](uint16_t time) { options.frameDelay = time; });
    script.Add("busy", [this] { recorder.panel.setStatus = [](void*, const char*) { ::Sleep(7); }; }); // at each frame
    script.Add("fill", [this] { std::swap(stream.streamSize, otherSize); });
    script.Add("mode", [](int32_t bits) { MemoryDisplaySetMode(kWidth, kHeight, bits); });
    script.Add("paint", [this] { ++changes, Paint(); });
    script.Add("lively", [this] { lively = !lively; });
  }
  ~Stage() { RecorderShutDown(recorder); }

  void Paint() {
    const bool hadMark = marked;
    for (int x = 0; x < kWidth; x += 5) MemoryPaintWindow(*scene, {x, 0, x + 5, kHeight}, x % 2 ? 0 : white);
    for (int n = 0; n < changes; ++n) MemoryPaintWindow(*scene, {90 + n, 70, 140 + n, 71 + n}, n % 2 ? white : 0);
    marked = false;
    Mark(hadMark);
  }
  // As the line does, it stands across the picture and makes way while that changes.
  void Mark(bool on) {
    if (marked != on) MemoryPixel(100, 80) ^= white;
    marked = on;
  }

  bool Stands(const BitmapResource& picture) const {
    for (int y = 0; y < picture.height; y += 3) {
      for (int x = 0; x < picture.width; x += 2) {
        const uint32_t pixel = MemoryPixel(kPicturePlace.left + x, kPicturePlace.top + y);
        if (pixel != (picture.rows[y][x] == '#' ? 0 : white)) return false;
      }
    }
    return true;
  }

  // From now on at each tick.
  void Log() {
    std::string now = " ";
    for (const int picture : {512, 513, 514, 517}) {
      if (Stands(*FindBitmapResource(uint16_t(picture)))) now += picture == 517 ? 'P' : char('1' + picture - 512);
    }
    if (buttons.start) now += 'S';
    if (buttons.grab) now += 'G';
    if (buttons.stop) now += 'T';
    if (!optionsEnabled) now += 'F';
    now.append(TheMemoryDesktop().beeps, '!');
    if (recorder.frameCount != frames) delay = std::to_string(Read().frames.back().delay);
    if ((frames = recorder.frameCount) != 0) now += std::to_string(frames) + ":" + delay;
    if (now != last && !log.empty()) log += ", ";
    if (now != last) log.append(std::to_string(::GetTickCount())).append(now);
    last = now;
    if (lively) MemoryPixel(30, 30) ^= white;
    MemoryAt(::GetTickCount() + 1, [this] { Log(); });
  }

  // What stands on the screen is what the scene would paint now, and the last frame shows the same.
  void ExpectScene(const Rect& area) {
    const std::vector<uint32_t> seen = TheMemoryDisplay().screen;
    Paint();
    EXPECT_TRUE(seen == TheMemoryDisplay().screen);
    const GifPicture film = recorder.frameCount == 0 ? GifPicture{} : Read();
    const std::vector<uint32_t> shown = Composite(film, SIZE_MAX);
    for (int i = 0; i < film.width * film.height; ++i) {
      const uint32_t pixel = MemoryPixel(area.left + i % film.width, area.top + i / film.width);
      ASSERT_EQ(shown[size_t(i)] != 0, pixel != 0) << i % film.width << " " << i / film.width;
    }
  }
};

// Scripts by the clock, of keys and the words of Stage. What comes of them, with the time at which it is seen first:
// the picture on the screen (1, 2, 3, P for the pause sign), the buttons that can be pressed (Start, Grab, sTop), F
// while the options are frozen, a ! for each beep, and the number of frames with the last one's delay. The chords are
// looked for each 201 ms, digits change each 1001, a frame comes each 100.
const struct {
  const char* script;
  uint32_t end;
  const char* log;
} kCases[] = {
    // Held, a chord counts once.
    {"250 +ctrl+alt+shift 450 -ctrl+alt+shift 3900 +ctrl+alt+shift 6000 -ctrl+alt+shift", 6500,
     "0 SG, 403 T, 404 3T, 1405 2T, 2406 1T, 3407 TF1:0, 3907 PSGF1:0, 4657 SGF1:0"},
    {"210 +ctrl+alt+space 2000 -ctrl+alt+space 2500 paint 2600 +ctrl+alt+shift+space 3000 -ctrl+alt+shift+space 3100 "
     "+ctrl+alt 3500 -ctrl+alt 3600 +ctrl+alt+space 3605 -ctrl+alt+space 4000 +ctrl+alt+shift 4300 -ctrl+alt+shift "
     "4400 +ctrl+alt+space 7200 -ctrl+alt+space",
     7500, "0 SG, 403 SGF1:9, 4021 TF1:9, 4022 3TF1:9, 5023 2TF1:9, 6024 1TF1:9, 7025 TF2:662"},
    // A stop in the countdown, ahead of the first digit, in each of them, and just ahead of the first frame.
    {"250 +ctrl+alt+shift 450 -ctrl+alt+shift 1700 +ctrl+alt+shift 2800 -ctrl+alt+shift", 4000,
     "0 SG, 403 T, 404 3T, 1405 2T, 2406 PSG, 3156 SG"},
    {"1 start 1 stop 1000 start 1500 stop 3000 start 4500 stop 6000 start 9006 stop", 10000,
     "0 SG, 1 PSG, 752 SG, 1000 T, 1003 3T, 1500 PSG, 2251 SG, 3000 T, 3004 3T, 4005 2T, 4500 PSG, 5251 SG, "
     "6000 T, 6004 3T, 7005 2T, 8006 1T, 9006 PSG, 9757 SG"},
    {"1 stop 10 grab 20 thaw 1000 start 4500 thaw 5500 start 7000 shutdown", 8000,
     "0 SG, 10 SGF1:9, 20 SG1:9, 1000 T1:9, 1005 3T1:9, 2006 2T1:9, 3007 1T1:9, 4008 TF1:9, 4500 PSGF1:9, "
     "5251 SG1:9, 5500 T1:9, 5502 3T1:9, 6503 2T1:9, 7000 T1:9"},
    // A screen that cannot be recorded: nothing can be done, and the chord alone ends what is under way.
    {"100 mode:12 250 +ctrl+alt+shift 450 -ctrl+alt+shift 650 +ctrl+alt+space 850 -ctrl+alt+space", 1000,
     "0 SG, 101 , 403 !, 805 !!"},
    {"1 grab 500 start 1000 mode:12 2000 mode:24 6000 mode:12 6500 mode:24 7000 stop", 8000,
     "0 SG, 1 SGF1:9, 500 TF1:9, 503 3TF1:9, 1000 TF1:9, 1003 F1:9, 1504 2F1:9, 2000 F1:9, 2004 TF1:9, "
     "2505 1TF1:9, 3506 TF1:9, 6005 F1:9, 6505 TF1:9, 7000 PSGF1:9, 7751 SGF1:9"},
    {"1 start 3100 mode:12 3500 +ctrl+alt+shift 3800 -ctrl+alt+shift 5000 mode:24", 5200,
     "0 SG, 1 T, 51 3T, 1052 2T, 2053 1T, 3054 TF1:0, 3104 F1:0, 3554 PF1:0, 4304 F1:0, 5007 SGF1:0"},
    // An animation that no more fits into.
    {"1 start 3100 fill 5000 fill", 5200,
     "0 SG, 1 T, 51 3T, 1052 2T, 2053 1T, 3054 TF1:0, 3154 PF1:0, 3904 F1:0, 5110 SGF1:0"},
    // Others paint where a picture stands; behind the first frame they are asked to do so anew.
    {"1 start 1500 paint 1600 paint 3500 paint 3600 stop 3700 paint 5000 grab", 5200,
     "0 SG, 1 T, 51 3T, 1052 2T, 1500 T, 2053 1T, 3054 TF1:0, 3154 TF2:10, 3554 TF3:40, 3600 PSGF3:40, "
     "3700 SGF3:40, 5000 SGF4:9"},
    // The interval runs from the start of a frame to the start of the next, and a new one is taken up behind a frame.
    {"1 start 10 delay:24 20 busy 3000 lively 3180 delay:498 4210 lively 4211 paint", 4750,
     "0 SG, 1 T, 51 3T, 1052 2T, 2053 1T, 3054 TF1:0, 3079 TF2:2, 3104 TF3:2, 3129 TF4:2, 3154 TF5:2, 3179 TF6:2, "
     "3204 TF7:2, 3703 TF8:49, 4202 TF9:49, 4701 TF10:49"},
};

TEST(Control, TakesFramesAsTheUserWants) {
  for (const auto& one : kCases) {
    SCOPED_TRACE(one.script);
    Stage stage(24, kArea);
    ActAt(stage.script, one.script);
    stage.Log();
    RunFor(one.end);
    EXPECT_EQ(stage.log, one.log);
    stage.ExpectScene(kArea);
  }
}

std::vector<uint32_t> seen; // on the screen when the status line was told of a frame

// Another program paints pixels that the picture does not have, under each digit and beside it: they are what stands
// there from then on, and all others are as they were. Only behind the frame is it asked to paint anew.
TEST(Control, PutsBackOnlyWhatStillShowsThePictureAlsoAtTheEdges) {
  for (const int depth : {1, 2, 4, 8, 16, 32}) {
    SCOPED_TRACE(depth);
    // Parts of the picture lie off the screen.
    for (const Rect& area : {Rect{0, 0, 4, 6}, Rect{150, 190, 160, 200}, Rect{-40, 190, 20, 230}}) {
      Stage edge(depth, area);
      edge.script.Act("start");
      RunFor(1500);
      EXPECT_NE(edge.recorder.control.savedScreen, nullptr);
      edge.script.Act("stop");
      edge.ExpectScene(area);
    }
    Stage stage(depth, kArea);
    stage.recorder.panel.setStatus = [](void*, const char*) { seen = TheMemoryDisplay().screen; };
    std::vector<uint32_t> expected = TheMemoryDisplay().screen;
    const uint32_t refreshes = TheMemoryDesktop().refreshes;
    stage.script.Act("start");
    for (const PixelRect& where : {PixelRect{60, 50, 90, 70}, {80, 60, 99, 100}, {68, 105, 132, 106}}) {
      RunFor(500);
      for (int y = where.top; y < where.bottom; ++y) {
        for (int x = where.left; x < where.right; ++x) {
          const uint32_t painted = expected[size_t(y * kWidth + x)] = MemoryPixel(x, y) ^ stage.white;
          MemoryPaintWindow(*stage.scene, {x, y, x + 1, y + 1}, painted);
        }
      }
      RunFor(500);
    }
    EXPECT_EQ(TheMemoryDesktop().refreshes, refreshes);
    RunFor(60);
    EXPECT_EQ(stage.recorder.frameCount, 1u);
    EXPECT_TRUE(seen == expected);
    EXPECT_EQ(TheMemoryDesktop().refreshes, refreshes + 1);
  }
}

} // namespace
} // namespace framereel
