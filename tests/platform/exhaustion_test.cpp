// What the hook for exhausted memory may still call: windows and drawing, each part of which there may be no memory
// for.
#include <gtest/gtest.h>
#include <unistd.h>

#include "core/memory.h"
#include "platform/bitmaps/dib_buffers.h"
#include "platform/bitmaps/offscreens.h"
#include "platform/drawing/clip.h"
#include "platform/drawing/draw_state.h"
#include "platform/drawing/ports.h"
#include "platform/drawing/primitives.h"
#include "platform/windows/child_window.h"
#include "support/allocations.h"
#include "support/window_program.h"

namespace framereel {
namespace {

void Draw() {
  const Point corners[] = {{5, 5}, {5, 60}, {40, 30}};
  UseDrawState(NewDrawState());
  static uint16_t size = 20;
  SetFontSize(++size); // none has been made in this size
  SetPattern(kPatternStripes);
  const SavedClip clip = NarrowClip(1, 1, 50, 50);
  DrawPolygon(3, corners);
  DrawPolyline(3, corners);
  DrawText(10, 30, "out of memory");
  RestoreClip(clip);
}

void DrawEverywhere() {
  if (Offscreen* offscreen = NewOffscreen(70, 50, true)) {
    SetPortOffscreen(offscreen);
    Draw();
    DibBuffer* pixels = NewDibBuffer24(70, 50);
    ReadDibBuffer24(pixels, 0, offscreen, 0, 50);
    FreeDibBuffer(pixels);
    FreeOffscreen(offscreen);
  }
  if (Offscreen* oneBit = NewOffscreen(9, 9, false)) FreeOffscreen(oneBit);
  ChildWindow* window = OpenChildWindow(nullptr, "Quit", kWindowModal | kWindowFilled);
  if (!window) return;
  SetChildWindowTitle(window, "Why?");
  ShowChildWindow(window);
  Settle();
  SetPortWindow(window);
  Draw();
  CloseChildWindow(window);
  Settle();
}

bool badEnd;

// A `new` that fails here comes back to the hook, and the program ends.
void GoOn(void*, uint32_t count) {
  if (count > 1) return;
  FailEachAllocation([](int status) { badEnd |= status != 0 && WEXITSTATUS(status) != kWentOn; });
  DrawEverywhere();
  FailEachAllocation(nullptr);
  ::_exit(badEnd ? 1 : 5);
}

TEST(ExhaustionDeathTest, WhatFollowsItMakesDoWithWhatThereIs) {
  const auto exhaust = [](int32_t depth) {
    WindowProgram program(640, 480, depth);
    DrawEverywhere(); // fonts are looked for now
    SetMemFailureHook(GoOn, nullptr);
    FatalExit();
  };
  for (const int32_t depth : {8, 24}) EXPECT_EXIT(exhaust(depth), testing::ExitedWithCode(5), "") << depth;
}

} // namespace
} // namespace framereel
