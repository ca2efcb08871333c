// What the pointer tells of itself.
#include "win32/canvas.h"

namespace framereel {
namespace {

TEST(Pointer, TellsItsHotSpotAndPlaceAndThatItHasNoPicture) {
  MemoryDisplayReset(4, 4, 24);
  EXPECT_EQ(::GetCursor(), nullptr);
  ICONINFO info;
  EXPECT_FALSE(::GetIconInfo(nullptr, &info));
  MemoryDisplay& display = TheMemoryDisplay();
  display.hasPointer = true;
  display.pointerWidth = 2, display.pointerHeight = 3, display.hotX = 1, display.hotY = 2;
  display.pointerPixels.resize(6);
  ASSERT_TRUE(::GetIconInfo(::GetCursor(), &info));
  EXPECT_EQ(info.xHotspot, 1U);
  EXPECT_EQ(info.yHotspot, 2U);
  EXPECT_EQ(info.hbmMask, nullptr);
  EXPECT_EQ(info.hbmColor, nullptr);
  DisplayMovePointer(-3, 700);
  POINT place;
  ASSERT_TRUE(::GetCursorPos(&place));
  EXPECT_EQ(place.x, 0); // it stays on the screen
  EXPECT_EQ(place.y, 3);
  display.lost = true;
  EXPECT_EQ(::GetCursor(), nullptr);
  EXPECT_FALSE(::GetCursorPos(&place));
}

} // namespace
} // namespace framereel
