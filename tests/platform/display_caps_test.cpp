// What the program knows of the display. When it is told of a change stands in window_test.cpp.
#include "platform/display/display_caps.h"

#include <gtest/gtest.h>

#include "core/memory.h"
#include "platform/bitmaps/screen_colours.h"
#include "platform/pump/engine_start.h"
#include "support/desktop.h"
#include "win32/memory/memory_display.h"

namespace framereel {
namespace {

TEST(DisplayCaps, TellDepthColourSizeAndColoursOfEveryDisplay) {
  for (const int depth : {1, 2, 4, 8, 12, 16, 24, 32}) {
    SCOPED_TRACE(depth);
    const Desktop desktop(300 + depth, 200, depth);
    const DisplayCaps& caps = TheDisplayCaps();
    EXPECT_EQ(caps.screenDepth, depth);
    EXPECT_EQ(caps.screenPlanes * caps.screenPlaneBits, depth);
    EXPECT_EQ(caps.screenHasColour, depth > 1);
    EXPECT_EQ(caps.screenWidth, 300 + depth);
    EXPECT_EQ(caps.screenHeight, 200);
    if (depth > 8) {
      ColourList list;
      ScreenColours(&list);
      EXPECT_EQ(list.count, 512U); // an even spread, and true colour has them all
      MemFree(list.colours);
      continue;
    }
    const ColourList list = ScreenPixelSpec().colours;
    ASSERT_EQ(list.count, 1U << depth);
    for (uint32_t i = 0; i < list.count; ++i) {
      const PaletteColour& has = TheMemoryDisplay().palette[i];
      const Colour wide = {uint16_t(has.red * 257), uint16_t(has.green * 257), uint16_t(has.blue * 257)};
      EXPECT_TRUE(SameColour(list.colours[i], wide)) << i;
    }
    MemFree(list.colours);
  }
}

TEST(StartUp, AnswersFalseWithoutADisplay) {
  MemoryDisplayReset(64, 48, 24);
  TheMemoryDisplay().present = false;
  EXPECT_FALSE(EngineStartUp());
}

} // namespace
} // namespace framereel
