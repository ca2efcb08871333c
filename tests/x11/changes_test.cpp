// What has changed on the screen: a picture of which only those rows are read again is the screen's, whatever other
// programs and ours have done to it.
#include "x11/user.h"

#include <X11/cursorfont.h>
#include <X11/extensions/Xrender.h>

#include <optional>
#include <random>

#include "gif/stream_bytes.h"
#include "platform/pump/engine_start.h"
#include "recorder/engine/recorder_core.h"
#include "win32/pixels/region.h"

namespace framereel {

namespace {

constexpr PixelRect kArea = {30, 20, 430, 320}, kMark = {100, 80, 164, 143};

class X11WindowChanges : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    pictures.emplace();
  }
  void TearDown() override {
    pictures.reset();
    X11WindowTest::TearDown();
  }

  // Brings the picture up to date, and answers what was read for that.
  Region Update() {
    Region rows;
    DisplayAddChanges(kArea, &rows);
    rows.ForEach([&](const PixelRect& r) {
      EXPECT_TRUE(DisplayReadScreen(r, pictures->kept.surface, r.left - kArea.left, r.top - kArea.top));
    });
    return rows;
  }
  std::string Fault() const {
    EXPECT_TRUE(DisplayReadScreen(kArea, pictures->whole.surface, 0, 0));
    return Difference(pictures->kept.Pixels(), pictures->whole.Pixels());
  }
  // A compositor shows changes in its own time.
  void ExpectUpdated(std::source_location where = std::source_location::current()) {
    Update();
    if (HasCompositor()) return Until([&] { return Fault().empty() || (Update(), false); }, where);
    EXPECT_EQ(Fault(), "") << "line " << where.line();
  }
  bool TellsRows() const { return artist.Depth() > 8 && artist.HasExtension("DAMAGE"); }
  // Whether just a part is read, if the server tells any.
  void ExpectRead(int32_t top, int32_t bottom, std::source_location where = std::source_location::current()) {
    const Region rows = Update();
    const PixelRect expected = {kArea.left, top, kArea.right, bottom}, all = TellsRows() ? expected : kArea;
    EXPECT_TRUE(IsEmpty(all) ? rows.IsEmpty() : rows.Bounds() == all) << "line " << where.line();
    EXPECT_EQ(Fault(), "") << "line " << where.line();
  }

  Window Open(int32_t depth, Window parent) {
    XVisualInfo visual;
    if (!XMatchVisualInfo(artist.display, DefaultScreen(artist.display), depth, TrueColor, &visual)) return parent;
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    attributes.colormap = XCreateColormap(artist.display, artist.root, visual.visual, AllocNone);
    const Window window = XCreateWindow(artist.display, parent, 60, 50, 150, 120, 1, depth, InputOutput, visual.visual,
                                        CWOverrideRedirect | CWColormap | CWBackPixel | CWBorderPixel, &attributes);
    XMapRaised(artist.display, window);
    return window;
  }

  void Fill(Drawable to, const PixelRect& r, int mode) {
    XGCValues values{};
    values.foreground = static_cast<unsigned long>(random()) & artist.PixelBits();
    values.subwindow_mode = mode;
    const GC context = XCreateGC(artist.display, to, GCForeground | GCSubwindowMode, &values);
    XFillRectangle(artist.display, to, context, r.left, r.top, r.right - r.left, r.bottom - r.top);
    if (mode == ClipByChildren) XCopyArea(artist.display, to, to, context, 5, 5, 40, 30, Any(90), Any(90));
    XFreeGC(artist.display, context);
  }

  void OpenWindows() {
    artist.Show(artist.Noise(300, 200, 1), 50, 70);
    const Window plain = Open(artist.Depth(), artist.root);
    theirs = {plain, Open(artist.Depth(), plain), Open(32, artist.root), Open(32, plain)};
  }

  // What programs may do to windows of their own, and to the root.
  void Disturb() {
    for (int deeds = Any(3); deeds > 0; --deeds) Disturb(theirs[size_t(Any(4))]);
  }
  void Disturb(Window window) {
    Display* display = artist.display;
    const int x = Any(350), y = Any(250);
    const PixelRect block = {x / 3, y / 3, x / 3 + 1 + Any(30), y / 3 + 1 + Any(20)};
    switch (Any(9)) {
    case 0:
      return void(XMoveWindow(display, window, x, y));
    case 1:
      return void(XResizeWindow(display, window, 20 + x / 2, 20 + y / 2));
    case 2:
      return void(XUnmapWindow(display, window));
    case 3:
      return void(XMapRaised(display, window));
    case 4:
      return void(XLowerWindow(display, window));
    case 5:
      XSetWindowBackground(display, Any(2) == 0 ? window : artist.root, random() & artist.PixelBits());
      return void(XClearWindow(display, artist.root));
    case 6:
      return Fill(artist.root, Moved(block, x, y), IncludeInferiors);
    case 7: {
      const XRenderColor colour = {uint16_t(random()), uint16_t(random()), 0, 0x7FFF};
      XRenderPictFormat* format = XRenderFindVisualFormat(display, artist.State(window).visual);
      const ::Picture picture = XRenderCreatePicture(display, window, format, 0, nullptr);
      XRenderFillRectangle(display, PictOpOver, picture, &colour, block.left, block.top, 30, 20);
      return XRenderFreePicture(display, picture);
    }
    default:
      return Fill(window, block, ClipByChildren);
    }
  }

  // In another shape, or another colour of the same.
  void ShapePointer() {
    const Cursor cursor = XCreateFontCursor(artist.display, Any(2) == 0 ? XC_crosshair : XC_arrow);
    XColor ink = {0, uint16_t(random()), uint16_t(random()), 0, 0, 0}, rim = {};
    XRecolorCursor(artist.display, cursor, &ink, &rim);
    XDefineCursor(artist.display, artist.root, cursor);
    for (const Window each : theirs) XDefineCursor(artist.display, each, cursor);
  }

  // What ours may do: marks that go on and off, another rectangle that is asked of.
  void DisturbOurselves() {
    constexpr uint8_t stripes[8] = {0xF0, 0xE1, 0xC3, 0x87, 0x0F, 0x1E, 0x3C, 0x78};
    switch (Any(4)) {
    case 0:
      EXPECT_TRUE(DisplayInvertScreen({40, 60, 290, 61}, stripes));
      return DisplaySleep(0);
    case 1:
      EXPECT_TRUE(pictured || DisplayReadScreen(kMark, pictures->below.surface, 0, 0));
      pictured = !pictured;
      EXPECT_TRUE(DisplayDrawScreen((pictured ? pictures->mark : pictures->below).surface, {0, 0, 64, 63}, kMark.left,
                                    kMark.top));
      return;
    case 2: {
      Region rows;
      DisplayAddChanges(kMark, &rows);
      EXPECT_TRUE(rows.Bounds() == kMark);
      return;
    }
    default:
      return MovePointer(Any(450), Any(350));
    }
  }

  // X11 has a macro of the name that dice have for this.
  int Any(int limit) { return int(random() % uint32_t(limit)); }

  std::mt19937 random{7};
  std::vector<Window> theirs;
  // Made once the display stands.
  struct Pictures {
    OwnSurface kept{400, 300}, whole{400, 300}, mark{64, 63, 0x3C}, below{64, 63};
  };
  std::optional<Pictures> pictures;
  bool pictured = false;
};

TEST_F(X11WindowChanges, LeaveNothingUnreadThatHasChanged) {
  OpenWindows();
  for (int step = 0; step < (HasCompositor() ? 60 : 400); ++step) {
    Disturb();
    if (Any(4) == 0) DisturbOurselves();
    ASSERT_NO_FATAL_FAILURE(ExpectUpdated());
    ASSERT_FALSE(HasFailure()) << "step " << step;
  }
}

// With the pointer in it: whoever reads the screen whole behind a frame finds nothing else.
TEST_F(X11WindowChanges, AreAllInTheNextFrame) {
  if (HasCompositor()) GTEST_SKIP() << "it paints between the two";
  ASSERT_TRUE(EngineStartUp());
  OwnWriter gif;
  const RecordingOptions options;
  RecorderState recorder;
  RecorderSetUp(recorder, &gif.ownStream, &gif, &options);
  recorder.captureArea = {kArea.top, kArea.left, kArea.bottom, kArea.right};
  OpenWindows();
  for (int step = 0; step < 300; ++step) {
    Disturb();
    if (Any(2) == 0) MovePointer(Any(450), Any(350));
    if (Any(4) == 0) ShapePointer();
    RecorderCaptureFrame(recorder, false);
    const uint32_t frames = recorder.frameCount;
    recorder.grab.holdsFrame = false;
    RecorderCaptureFrame(recorder, false);
    ASSERT_EQ(recorder.frameCount, frames) << "step " << step;
  }
  EXPECT_GT(recorder.frameCount, 150u);
  RecorderTearDown(recorder);
  EngineShutDown();
}

TEST_F(X11WindowChanges, AreTheRowsThatWereDrawnOnAndNoMore) {
  if (HasCompositor()) GTEST_SKIP() << "its doings are its own";
  const Window window = artist.Show(artist.Noise(640, 480, 2), 0, 0);
  Catch();
  EXPECT_TRUE(Update().Bounds() == kArea); // the first time
  ExpectRead(0, 0);
  Fill(window, {50, 100, 58, 116}, IncludeInferiors);
  ExpectRead(100, 116);
  Fill(window, {50, 10, 58, 30}, IncludeInferiors); // over the edge
  ExpectRead(20, 30);
  Fill(window, {0, 0, 20, 400}, IncludeInferiors); // beside it
  Fill(window, {500, 0, 600, 400}, IncludeInferiors);
  ExpectRead(0, 0);
  for (const int32_t x : {200, 300}) { // the server's own drawing
    MovePointer(x, 150);
    ExpectRead(kArea.top, kArea.bottom);
    ExpectRead(0, 0);
  }
  XForceScreenSaver(artist.display, ScreenSaverActive);
  ExpectUpdated();
  XForceScreenSaver(artist.display, ScreenSaverReset);
  ExpectUpdated();
  for (const int32_t width : {500, 640}) {
    artist.ResizeScreen(width, width == 640 ? 480 : 400);
    ExpectRead(kArea.top, kArea.bottom);
  }
  ExpectRead(0, 0);
}

} // namespace

} // namespace framereel
