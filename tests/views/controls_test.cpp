// Controls by script: how they measure, what a press does to them, and what stands on the screen.
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "core/rects.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/drawing/standard_drawing.h"
#include "platform/windows/main_window.h"
#include "toolkit/controls/check_box.h"
#include "toolkit/controls/label.h"
#include "toolkit/controls/picture_view.h"
#include "toolkit/controls/popup.h"
#include "toolkit/controls/popup_list.h"
#include "toolkit/controls/separator.h"
#include "toolkit/controls/text_pane.h"
#include "toolkit/text/text_layout.h"
#include "toolkit/views/view.h"
#include "views/toolkit_program.h"
#include "win32/memory/memory_windows.h"

namespace framereel {
namespace {

std::string heard;

class Controls : public ::testing::Test {
protected:
  Controls() { heard.clear(); }

  View* Make(const ViewClass* viewClass, int16_t x = 10, int16_t y = 10) {
    return ViewCreateTop(viewClass, program.window, x, y);
  }
  std::string Heard() { return std::exchange(heard, ""); }

  ToolkitProgram program;
};

int Ink(const View* view) {
  const std::string picture = PictureOf(view);
  return int(std::count(picture.begin(), picture.end(), '#'));
}

TEST_F(Controls, MeasureThemselves) {
  View* label = Make(LabelClass());
  EXPECT_EQ(BoundsText(label), "10,10 4x7"); // a divider, framed
  LabelSetValue(label, "Frames");
  LabelSetFramed(label, false);
  EXPECT_EQ(BoundsText(label), "10,10 4x7");
  ViewFit(label);
  SetPortWindow(program.window);
  UseDrawState(DrawStateDefault());
  const TextMeasure text = MeasureText("Frames");
  EXPECT_EQ(label->width, text.width);
  EXPECT_EQ(label->height, text.ascent + text.descent);
  View* pane = Make(TextPaneClass());
  TextPaneSetText(pane, "one two three four five six");
  ViewResize(pane, 60, 0);
  EXPECT_LE(pane->width, 64);
  EXPECT_GT(pane->height, 2 * label->height);
  View* picture = Make(PictureViewClass());
  ViewFit(picture);
  EXPECT_EQ(BoundsText(picture), "10,10 32x32");
  const int thickness[] = {0, 3, 5, 1, 2, 2, 1, 1, 0, 0};
  View* separator = Make(SeparatorClass());
  for (uint16_t kind = 0; kind < 10; ++kind) {
    SeparatorSetKind(separator, kind);
    ViewResize(separator, 20, 9);
    ViewFit(separator);
    EXPECT_EQ(separator->height, thickness[kind]) << kind;
  }
  View* box = Make(CheckBoxClass());
  EXPECT_EQ(BoundsText(box), "10,10 20x20");
  CheckBoxSetLabel(box, "Loop");
  ViewFit(box);
  EXPECT_EQ(box->width, 16 + 4 + MeasureTextBlock("Loop", TextAlign::kLeft, TextWrap::kNone, kWideOpen).width + 4);
  View* popup = Make(PopupClass());
  const char* const texts[] = {"5 spf", nullptr, "40 fps"};
  PopupSetItems(popup, 3, texts);
  ViewFit(popup);
  const int h = text.ascent + text.descent + 5, u = h / 6 + 1, mark = 2 * u / 6 * 4 + 3;
  EXPECT_EQ(popup->height, h);
  EXPECT_EQ(popup->width, 2 * u + MeasureText("40 fps").width + 12 + mark + 1);
}

TEST_F(Controls, LooksAreDrawn) {
  View* separator = Make(SeparatorClass());
  SeparatorSetKind(separator, 2);
  ViewResize(separator, 8, 0);
  ViewShow(separator);
  Settle();
  EXPECT_EQ(PictureOf(separator), "........\n.######.\n........\n.######.\n........\n");
  View* box = Make(CheckBoxClass(), 50, 50);
  ViewResize(box, 20, 16);
  ViewShow(box);
  Settle();
  const int empty = Ink(box);
  CheckBoxSetValue(box, true, true);
  Settle();
  EXPECT_GT(Ink(box), empty + 20);
  View* label = Make(LabelClass(), 50, 80);
  LabelSetValue(label, "Framed");
  ViewFit(label);
  ViewShow(label);
  Settle();
  const int enabled = Ink(label);
  EXPECT_GT(enabled, 2 * (label->width + label->height));
  ViewDisable(label);
  Settle();
  EXPECT_LT(Ink(label), enabled); // the letters are grey
}

TEST_F(Controls, ACheckBoxFlipsWhenThePressEndsOverIt) {
  View* box = Make(CheckBoxClass());
  CheckBoxSetCallback(box, [](View*, bool value) { heard += value ? "on " : "off "; });
  ViewShow(box);
  Settle();
  Press(program.window, 15, 15);
  EXPECT_EQ(Heard(), "");
  Release();
  EXPECT_EQ(Heard(), "on ");
  Press(program.window, 15, 15);
  MoveOver(program.window, 100, 100);
  Release();
  EXPECT_EQ(Heard(), "");
  Press(program.window, 15, 15);
  MoveOver(program.window, 100, 100);
  MoveOver(program.window, 16, 16);
  Release();
  EXPECT_EQ(Heard(), "off ");
  CheckBoxSetValue(box, false, true);
  EXPECT_EQ(Heard(), "");
  ViewDisable(box);
  Press(program.window, 15, 15);
  Release();
  EXPECT_EQ(Heard(), "");
  ViewEnable(box);
  CheckBoxSetCallback(box, [](View* view, bool) { ViewDestroy(view); });
  Press(program.window, 15, 15);
  Release();
}

// ---- Popups ------------------------------------------------------------------------------------------------------

const char* const kEntries[] = {"one", "two", nullptr, "four"};

class Popups : public Controls {
protected:
  Popups() {
    popup = Make(PopupClass(), 100, 60);
    PopupSetItems(popup, 4, kEntries);
    PopupSetCallback(popup, [](View*, uint16_t index) { heard += std::to_string(index) + " "; });
    ViewFit(popup);
    ViewShow(popup);
    Settle();
    row = popup->height - 5 + 1;
  }

  // The middle of an entry of the list, seen from the box while the first is selected.
  int16_t At(int entry) const {
    const int top = 62 + entry * row - (entry > 2 ? row - 4 : 0); // a divider takes 4 pixels
    return int16_t(top + (entry == 2 ? 2 : row / 2));
  }
  void Over(int entry, int jitter = 0) { MoveOver(program.window, int16_t(115 + jitter), At(entry)); }
  void Click(int entry) {
    Press(program.window, 115, At(entry));
    Release();
  }

  View* popup;
  int row;
};

TEST_F(Popups, AreDraggedThrough) {
  Press(program.window, 115, At(0));
  EXPECT_TRUE(PopupListIsOpen());
  Over(1);
  Over(1, 1);
  Over(3);
  Release();
  EXPECT_FALSE(PopupListIsOpen());
  EXPECT_EQ(Heard(), "3 ");
  EXPECT_EQ(PopupSelected(popup), 3);
}

TEST_F(Popups, AreClickedOpenAndClickedAgain) {
  Click(0);
  EXPECT_TRUE(PopupListIsOpen());
  Over(0, 1);
  Over(1);
  Over(1, 1);
  Click(1);
  EXPECT_FALSE(PopupListIsOpen());
  EXPECT_EQ(Heard(), "1 ");
}

TEST_F(Popups, CloseWithoutAChoice) {
  const auto wander = [&] {
    Press(program.window, 115, At(PopupSelected(popup)));
    Over(1);
    Over(3);
  };
  wander();
  Over(0);
  Release(); // on the selected one
  EXPECT_FALSE(PopupListIsOpen());
  wander();
  Over(2);
  Release(); // on the divider
  EXPECT_FALSE(PopupListIsOpen());
  wander();
  MoveOver(program.window, 5, At(3));
  Release(); // beside it
  EXPECT_FALSE(PopupListIsOpen());
  Click(0);
  Over(1);
  Over(3);
  Press(program.window, 5, 190); // beside it
  EXPECT_FALSE(PopupListIsOpen());
  Release();
  for (const bool held : {false, true}) {
    held ? wander() : Click(0);
    Type(VK_LEFT);
    EXPECT_TRUE(PopupListIsOpen());
    Type(VK_ESCAPE);
    EXPECT_FALSE(PopupListIsOpen());
    Release();
  }
  Click(0);
  LeaveProgram();
  EXPECT_FALSE(PopupListIsOpen());
  ReturnToProgram();
  Click(0);
  EXPECT_TRUE(PopupListIsOpen());
  ViewDestroy(popup);
  EXPECT_FALSE(PopupListIsOpen());
  Settle();
  EXPECT_EQ(Heard(), "");
}

TEST_F(Popups, StayShutWhileDisabledOrEmpty) {
  ViewDisable(popup);
  Click(0);
  EXPECT_FALSE(PopupListIsOpen());
  ViewEnable(popup);
  PopupSetItems(popup, 0, nullptr);
  Click(0);
  EXPECT_FALSE(PopupListIsOpen());
}

TEST_F(Popups, ScrollToBothEndsWhenTheListIsTooHigh) {
  constexpr uint16_t kMany = 60;
  const char* texts[kMany];
  for (const char*& text : texts) text = "entry";
  PopupSetItems(popup, kMany, texts);
  PopupSetSelected(popup, 30);
  Click(0);
  PixelRect list = {};
  for (const auto& window : TheMemoryDesktop().windows) {
    if (window->ours && window->role == WindowRole::kPopup) list = window->place;
  }
  const int height = TheMainWindow()->geometry.clientHeight - 8;
  const int frame = list.bottom - list.top - height;
  EXPECT_GE(frame, 0);
  EXPECT_LE(frame, 2); // its border alone
  // Beyond the end the list runs until it has shown its last entry; there the mouse chooses.
  for (const bool down : {true, false}) {
    const int32_t x = (list.left + list.right) / 2;
    const int32_t end = down ? list.bottom : list.top, in = down ? -1 : 1;
    MemoryMovePointerTo(x, end + in * 100);
    Settle();
    MemoryMovePointerTo(x, end + in * 130);
    Settle();
    MemoryMovePointerTo(x, end + in * 4);
    RunFor(20000);
    MemoryMovePointerTo(x, end + in * 18);
    Settle();
    MemoryPressButton();
    Settle();
    MemoryReleaseButton();
    Settle();
    EXPECT_EQ(PopupSelected(popup), down ? kMany - 1 : 0);
    if (down) Click(0);
  }
  EXPECT_EQ(Heard(), "59 0 ");
}

} // namespace
} // namespace framereel
