// The panel as its user has it: what each control does, when it can be used, and what stands on the screen.
#include "app/panel.h"

#include <cstring>

#include "app/application_program.h"
#include "core/rects.h"
#include "platform/records/window_records.h"
#include "platform/windows/child_window.h"
#include "recorder/engine/frame_rates.h"
#include "toolkit/controls/alert.h"
#include "toolkit/controls/check_box.h"
#include "toolkit/views/box.h"
#include "toolkit/views/child_set.h"
#include "toolkit/views/stack.h"
#include "toolkit/views/view.h"
#include "win32/pixels/scale.h"
#include "win32/win32_input.h"

namespace framereel {
namespace {

// On an ordinary screen and on one of twice the resolution.
class PanelTest : public ApplicationTest, public testing::WithParamInterface<int> {
protected:
  PanelTest() : ApplicationTest(GetParam()) {}
  // The Popup of a Row that has a label ahead of it, brought to its entry by a drag over the list, which opens with the
  // entry that holds under the mouse.
  void Choose(const View* row, int from, int to) {
    const View* popup = ChildAt(ChildSetOf(row), 1);
    const int entry = app.panel.statusLine->height + kThinLine, middle = popup->y + popup->height / 2;
    Press(popup->window, int16_t(popup->x + 9), int16_t(middle));
    RunFor(1000); // longer than a click
    MoveOver(popup->window, int16_t(popup->x + 9), int16_t(middle + (to - from) * entry));
    Release();
  }
  std::string Settings() { return ReadWholeFile(folder.usersSettings); }
  // A letter for each button that can be pressed: start, grab, stop, select; then one for each option box.
  std::string Usable() const {
    std::string usable;
    const Panel& p = app.panel;
    for (const auto& [view, letter] : {std::pair{p.startButton, 's'},
                                       {p.grabButton, 'g'},
                                       {p.stopButton, 'e'},
                                       {p.selectButton, 'a'},
                                       {p.recordingSizePopup, 'z'},
                                       {p.frameRatePopup, 'f'}}) {
      if (ViewIsEnabled(view)) usable += letter;
    }
    for (int i = 0; i < kOptionBoxCount; ++i) {
      if (ViewIsEnabled(p.options[i].view)) usable += char('0' + i);
    }
    return usable;
  }
};

TEST_P(PanelTest, EveryOptionIsWrittenAtOnceAndComesBackInTheNextRun) {
  Start();
  const char* const keys[kOptionBoxCount] = {
      "Interframe Transparency", "Record Timing Info", "Loop",
      "Overlay Border",          "Overlay Cursor",     "Explorer 2.0 Compatible"};
  for (int i = 0; i < kOptionBoxCount; ++i) {
    const bool was = *app.panel.options[i].option;
    Click(app.panel.options[i].view);
    EXPECT_NE(Settings().find(keys[i] + std::string(was ? ":No\r\n" : ":Yes\r\n")), std::string::npos) << keys[i];
  }
  Choose(app.panel.frameRatePopup, FrameRateIndex(333), 2);
  EXPECT_EQ(app.options.frameDelay, 3000);
  app.recorder.captureArea = {10, 10, 110, 110};
  Choose(app.panel.recordingSizePopup, 2, 1);
  EXPECT_EQ(Area(), "{ 9, 9, 111, 111 }"); // in whole blocks of 3
  EXPECT_NE(Settings().find("Recording Area:9,9 102x102\r\nFrame Delay:3000\r\n"), std::string::npos);
  EXPECT_NE(Settings().find("Recording Size:44\r\n"), std::string::npos);
  const RecordingOptions chosen = app.options;
  End();
  Start();
  EXPECT_EQ(std::memcmp(&chosen, &app.options, sizeof chosen), 0);
  for (const OptionBox& box : app.panel.options) EXPECT_EQ(CheckBoxValue(box.view), *box.option);
  EXPECT_EQ(Area(), "{ 9, 9, 111, 111 }");
}

TEST_P(PanelTest, RecordsByItsButtonsWhichCanBeUsedAsTheRecorderSays) {
  Start();
  const std::string always = "f015", free = "sgazf012345";
  EXPECT_EQ(Usable(), free);
  Click(app.panel.selectButton);
  SelectByKeysAndMouse(50, 60, 150, 140);
  Click(app.panel.startButton);
  EXPECT_EQ(Usable(), "eazf012345");
  Click(app.panel.stopButton); // in the countdown
  EXPECT_EQ(Usable(), free);
  Click(app.panel.grabButton);
  EXPECT_EQ(app.recorder.frameCount, 1u);
  EXPECT_EQ(Usable(), "sg" + always);
  Click(app.panel.startButton);
  RunFor(4000);
  EXPECT_EQ(Usable(), "e" + always);
  MemoryPaintWindow(*scene, {90, 90, 100, 100}, kRed);
  RunFor(1000);
  Click(app.panel.options[kLoopBox].view);
  Click(app.panel.selectButton); // both are frozen
  EXPECT_TRUE(app.options.loop);
  EXPECT_EQ(app.area.backdrop, nullptr);
  Click(app.panel.stopButton);
  EXPECT_EQ(app.recorder.frameCount, 2u);
  EXPECT_EQ(Seen(0, 0, 0), kBlack); // the border
  EXPECT_EQ(Seen(0, 45, 35), kBlue);
  EXPECT_EQ(Seen(1, 45, 35), kRed);
}

TEST_P(PanelTest, AScreenThatCannotBeRecordedIsToldAndTheWindowGrowsForIt) {
  const int32_t side = TheMemoryDisplay().width;
  MemoryDisplaySetMode(side, side, 24);
  Start();
  const WindowGeometry &panel = app.panel.window->geometry, &frame = TheMainWindow()->geometry;
  const int16_t height = panel.clientHeight, top = TheMainWindow()->originY;
  MemoryDisplaySetMode(side, side, 12);
  Settle();
  EXPECT_EQ(Usable(), "azf012345");
  EXPECT_GT(panel.clientHeight, height + 2 * app.panel.statusLine->height); // several lines
  EXPECT_LE(app.panel.messageText->x + app.panel.messageText->width, panel.clientWidth);
  EXPECT_EQ(frame.clientHeight, panel.clientHeight);
  EXPECT_EQ(TheMainWindow()->originY, top);
  MemoryDisplaySetMode(side, side, 24);
  Settle();
  EXPECT_EQ(Usable(), "sgazf012345");
  EXPECT_EQ(frame.clientHeight, height);
}

INSTANTIATE_TEST_SUITE_P(Resolutions, PanelTest, testing::Values(96, 192));

// ---- What stands on the screen -----------------------------------------------------------------------------------

struct Screen {
  int32_t depth, dotsPerInch;
};

class PanelLook : public ApplicationTest, public testing::WithParamInterface<Screen> {
protected:
  PanelLook() : ApplicationTest(GetParam().dotsPerInch) {}

  // Reports each of the Views that has no room for its content, shows none, is cut off, or meets another one.
  void ExpectWhole(const GrowArray& views, const Rect& room) {
    for (uint16_t i = 0; i < views.count; ++i) {
      auto* view = FromListValue<View>(views.entries[i]);
      SCOPED_TRACE(testing::Message() << "View " << i << " from " << room.top);
      EXPECT_TRUE(ViewFullyShown(view, view));
      EXPECT_TRUE(RectInside(ViewBounds(view), room));
      for (uint16_t j = 0; j < i; ++j) {
        const Rect both = RectIntersect(ViewBounds(view), ViewBounds(FromListValue<View>(views.entries[j])));
        EXPECT_FALSE(both.left < both.right && both.top < both.bottom) << j;
      }
      if (view->viewClass == StackClass()) {
        ExpectWhole(ChildSetOf(view)->children, ViewBounds(view));
      } else if (view->viewClass != BoxClass() && view != app.panel.messageText) {
        ExpectInk(view);
      }
    }
  }
  // Something stands there, it is more than a line, and it ends ahead of the View's right edge.
  static void ExpectInk(const View* view) {
    const auto at = [view](int x, int y) {
      const Point p = OnScreen(view->window, int16_t(view->x + x), int16_t(view->y + y));
      return MemoryPixel(p.h, p.v);
    };
    int ink = 0;
    for (int x = 0; x < view->width; ++x) {
      for (int y = 0; y < view->height; ++y) ink += at(x, y) != at(view->width - 1, 0);
    }
    EXPECT_GT(ink, view->width / 2);
  }
};

TEST_P(PanelLook, ShowsAllItsControlsWholeAndAsLargeAsThePersonIsToSeeThem) {
  const auto [depth, dotsPerInch] = GetParam();
  MemoryDisplaySetMode(TheMemoryDisplay().width, TheMemoryDisplay().height, depth);
  Settle();
  Start();
  ExpectWhole(app.panel.window->views, ChildBounds(app.panel.window));
  ChildWindow* alert = AlertBuild(nullptr, "", 130, "Why?", "One", depth > 8 ? "Other" : nullptr, nullptr, nullptr);
  ShowChildWindow(alert);
  Settle();
  ExpectWhole(alert->views, ChildBounds(alert));
  Type(VK_RETURN);
  // A line of text is a cell of 15 pixels at 96 to the inch; what is hardly more than that changes nothing.
  const int32_t scaled = dotsPerInch < 144 ? 96 : dotsPerInch;
  EXPECT_EQ(app.panel.statusLine->height, (15 * scaled + 48) / 96);
  EXPECT_NEAR(app.panel.root->height * 96 / scaled, 380, 12);
  // So does what the user presses on the frame: the second box from the right.
  const MainWindow* main = TheMainWindow();
  MemoryClick(main->originX + main->geometry.outerWidth - 30 * scaled / 96, main->originY + 10 * scaled / 96);
  Settle();
  EXPECT_TRUE(MainIsIconic(nullptr));
}

INSTANTIATE_TEST_SUITE_P(Screens, PanelLook,
                         testing::Values(Screen{1, 96}, Screen{4, 120}, Screen{8, 192}, Screen{24, 96}, Screen{24, 144},
                                         Screen{24, 192}, Screen{24, 240}, Screen{24, 288}, Screen{24, 384}));

} // namespace
} // namespace framereel
