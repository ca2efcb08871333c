// The program as its user has it, on a real desktop: the mouse draws the area, the chord records a moving scene while
// another program holds the keyboard, and the file shows the scene and nothing of ours.
#include "x11/user.h"

#include "app/application.h"
#include "app/slide_frame.h"
#include "area/ants.h"
#include "area/selection.h"
#include "core/notices.h"
#include "core/timers.h"
#include "platform/pump/platform_start.h"
#include "platform/pump/pump.h"
#include "platform/windows/child_window.h"
#include "platform/windows/main_window.h"
#include "support/gif_reader.h"
#include "support/temporary_folder.h"
#include "toolkit/views/view.h"
#include "toolkit/views_start.h"
#include "win32/win32_input.h"
#include "win32/win32_windows.h"

namespace framereel {

namespace {

constexpr PixelRect kScene = {20, 100, 260, 280}, kArea = {40, 120, 240, 260};
constexpr int kBlock = 30;

char module;

class X11Program : public X11WindowTest {
protected:
  void SetUp() override {
    X11WindowTest::SetUp();
    ViewsStartUp();
    ASSERT_TRUE(PlatformInit(reinterpret_cast<HINSTANCE>(&module), nullptr, "", SW_SHOWNORMAL));
    ApplicationStart(app);
    app.options.overlayBorder = app.options.overlayCursor = false;
    scene = artist.Show(SceneAt(0), kScene.left, kScene.top);
  }
  void TearDown() override {
    ApplicationEnd(app);
    PlatformShutdown();
    X11WindowTest::TearDown();
  }

  // Passes of the event loop until it holds.
  void Run(const std::function<bool()>& holds, Place where = Place::current()) {
    Until([&] { return holds() || (PumpOneEvent(nullptr, true), false); }, where);
  }

  // White, with a black block in the area that moves from state to state.
  Picture SceneAt(int state) const {
    Picture all = artist.Paper(kScene.right - kScene.left, kScene.bottom - kScene.top), block = {kBlock, kBlock, {}};
    block.pixels.assign(kBlock * kBlock, artist.Black());
    Copy(block, block.All(), kArea.left - kScene.left + state * 25, kArea.top - kScene.top + 50, &all);
    return all;
  }
  Picture AreaAt(int state) const {
    Picture area = artist.Paper(kArea.right - kArea.left, kArea.bottom - kArea.top);
    return Copy(SceneAt(state), SceneAt(state).All(), kScene.left - kArea.left, kScene.top - kArea.top, &area), area;
  }
  // The line round it stays as it is.
  void PaintArea(int state) const {
    artist.Put(AreaAt(state), scene, artist.Depth(), kArea.left - kScene.left, kArea.top - kScene.top);
  }
  // All of the scene, what lies round the area included, is on the screen with nothing over it.
  void UntilSceneStands(int state) {
    Run([&] { return Difference(artist.Look(kScene), SceneAt(state)).empty(); });
  }

  void Chord(bool down) {
    for (const KeySym key : {XK_Control_L, XK_Alt_L, XK_Shift_L}) Key(key, down);
  }
  // Types the file's name once the dialog has the keyboard, in whose loop it is by then.
  static void TypeName(void* argument) {
    const auto& test = *static_cast<X11Program*>(argument);
    const Window focus = test.Focus();
    if (focus <= PointerRoot || test.Text(focus, "WM_NAME") != "Save File") {
      TimerSchedule(TypeName, argument, 20);
      return;
    }
    for (const KeySym key : {XK_c, XK_l, XK_i, XK_p, XK_period, XK_g, XK_i, XK_f, XK_Return})
      test.Type(test.CodeOf(key));
  }
  void Click(const View* view) {
    const MainWindow* main = TheMainWindow();
    const WindowGeometry& g = view->window->geometry;
    const int32_t x = main->originX + g.clientLeft + view->x + view->width / 2;
    const int32_t y = main->originY + g.clientTop + view->y + view->height / 2;
    // A window manager that is behind has it elsewhere still, or the splash over it.
    Run([&] { return Text(WindowAt(x, y), "WM_NAME").starts_with("Framereel"); });
    MovePointer(x, y);
    X11WindowTest::Click(1);
  }

  WorkingFolder folder;
  Application app;
  Window scene = None;
};

TEST_F(X11Program, HearsTheFirstClickRecordsByChordTheAreaThatTheMouseHasDrawnAndSavesByKeys) {
  Run([] { return !SlideFrameIsRunning(); });
  FocusOn(scene);
  Run([] { return !ActiveGet(); });
  Click(app.panel.showAreaBox);
  Run([&] { return AntsAreUp(app.area); });
  Click(app.panel.showAreaBox);
  Run([&] { return !AntsAreUp(app.area); });

  Click(app.panel.selectButton);
  Run([&] { return artist.State(WindowAt(kArea.left, kArea.top)).c_class == InputOnly; }); // the backdrop
  MovePointer(kArea.left, kArea.top);
  Button(1, true);
  Run([&] { return app.area.selectionDragging; });
  MovePointer(kArea.right - 1, kArea.bottom - 1);
  Run([&] { return app.area.cornerX == kArea.right - 1 && app.area.cornerY == kArea.bottom - 1; });
  Button(1, false);
  Run([&] { return !app.area.backdrop; });
  UntilSceneStands(0);
  AntsShow(app.area); // the line stays up while frames are taken

  GrabKeys();
  Chord(true);
  Run([&] { return app.recorder.control.recording; });
  Chord(false);
  Run([&] { return app.recorder.frameCount == 1; });
  for (int state = 1; state <= 5; ++state) {
    const uint32_t frames = app.recorder.frameCount;
    PaintArea(state);
    Run([&] { return app.recorder.frameCount > frames; });
  }
  Chord(true);
  Run([&] { return !app.recorder.control.recording; });
  Chord(false);
  XUngrabKeyboard(artist.display, CurrentTime);
  AntsHide(app.area);
  UntilSceneStands(5);

  const HomeIn lives(folder);
  Key(XK_Control_L, true), Type(CodeOf(XK_s)), Key(XK_Control_L, false);
  TimerSchedule(TypeName, this, 0);
  Run([&] {
    const Window focus = Focus();
    return app.document.file && focus > PointerRoot && Text(focus, "WM_NAME") == "Framereel - clip";
  });
  const GifPicture gif = ReadGifFile(folder / "clip.gif");
  ASSERT_GE(gif.frames.size(), 6u) << gif.error;
  int state = 0;
  for (size_t frame = 0; frame < gif.frames.size(); ++frame) {
    std::vector<uint32_t> seen = Composite(gif, frame);
    for (uint32_t& pixel : seen) pixel = pixel == 0xFFFFFF ? artist.White() : artist.Black();
    while (state < 5 && seen != AreaAt(state).pixels) ++state;
    EXPECT_TRUE(seen == AreaAt(state).pixels) << "frame " << frame << " shows something else than the scene";
  }
  EXPECT_EQ(state, 5);
}

} // namespace

} // namespace framereel
