// What happens to the whole display: its palette changes, the connection breaks, and nothing stays behind. And the
// clock.
#include "x11/user.h"

#include <cstring>
#include <functional>

namespace framereel {

namespace {

class X11Whole : public X11WindowTest {
protected:
  // The server throws the display's connection out.
  void Break() { XKillClient(artist.display, XGContextFromGC(X11Live()->drawing)); }
};

TEST_F(X11Whole, TellsThePaletteAsItIsNow) {
  std::vector<PaletteColour> told(256, PaletteColour{1, 2, 3});
  const auto colour = [&](unsigned long cell) {
    DisplayPalette(told.data());
    return told[cell].red * 65536 + told[cell].green * 256 + told[cell].blue;
  };
  if (artist.Depth() > 8) GTEST_SKIP() << "it has none";
  EXPECT_EQ(colour(artist.Black()), 0);
  EXPECT_EQ(colour(artist.White()), 0xFFFFFF);
  const bool fixed = DefaultVisual(artist.display, DefaultScreen(artist.display))->c_class != PseudoColor;
  Drain();
  if (fixed) return;
  const Colormap map = DefaultColormap(artist.display, DefaultScreen(artist.display));
  XColor cell{0, 0x12FF, 0xFF00, 0x7F80, DoRed | DoGreen | DoBlue, 0};
  ASSERT_TRUE(XAllocColorCells(artist.display, map, False, nullptr, 0, &cell.pixel, 1));
  XStoreColor(artist.display, map, &cell);
  Drain();
  EXPECT_EQ(colour(cell.pixel), 0x12FF7F);
  cell.red = 0;
  XStoreColor(artist.display, map, &cell);
  OwnSurface into(10, 10);
  ASSERT_TRUE(DisplayReadScreen({0, 0, 10, 10}, into.surface, 0, 0)); // tells as much as events
  EXPECT_EQ(colour(cell.pixel), 0x00FF7F);
  XFreeColors(artist.display, map, &cell.pixel, 1, 0);
}

TEST_F(X11Whole, TellsTheResolutionThatTheUserHasSetForText) {
  const std::pair<const char*, int32_t> settings[] = {
      {"Xft.antialias:\t1\nXft.dpi:\t192\n", 192}, {"*dpi: 144.5", 144}, {"Xft.dpi: -1", 0}, {"", 0}};
  for (const auto& [text, told] : settings) {
    XChangeProperty(artist.display, artist.root, XA_RESOURCE_MANAGER, XA_STRING, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(text), int(std::strlen(text)));
    XSync(artist.display, False);
    DisplayClose();
    ASSERT_TRUE(DisplayOpen());
    EXPECT_EQ(DisplayDotsPerInch(), told) << text;
  }
  XDeleteProperty(artist.display, artist.root, XA_RESOURCE_MANAGER);
}

TEST_F(X11Whole, OutlivesABrokenConnectionWhicheverCallFindsIt) {
  const uint8_t pattern[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  const PixelRect all = {0, 0, 300, 300};
  const DisplayWindowSpec spec = {WindowRole::kMain, {10, 10, 110, 110}, nullptr, ""};
  int32_t x = 7, y = 8;
  PaletteColour colours[256] = {{9, 9, 9}};
  DisplayEvent event;
  Surface surface{};
  DisplayWindow* window = nullptr;
  const std::function<bool()> calls[] = {
      // True is an answer that only a standing connection could give.
      [&] { return DisplayScreen().width != 0; },
      [&] { return DisplayReadScreen(all, surface, 0, 0); },
      [&] { return DisplayDrawScreen(surface, all, 0, 0); },
      [&] { return DisplayInvertScreen(all, pattern); },
      [&] { return DisplayPointer() != nullptr; },
      [&] { return DisplayPointerPlace(&x, &y) || x != 7; },
      [&] { return DisplayMovePointer(1, 1), false; },
      [&] { return DisplayPalette(colours), colours[0].red != 9; },
      [&] { return DisplayFreeSurface(&surface), DisplayNewSurface(300, 300, &surface) && artist.HasSharedMemory(); },
      [&] { return DisplayIsLost() && (DisplayOpen() || !DisplayIsLost()); },
      [&] { return DisplayNewWindow(spec) != nullptr; },
      [&] { return DisplayShowWindow(window, true), false; },
      [&] { return DisplayPlaceWindow(window, all), false; },
      [&] { return DisplayStackWindow(window, true), false; },
      [&] { return DisplayMinimiseWindow(window, true), false; },
      [&] { return DisplayActivateWindow(window), false; },
      [&] { return DisplayDragWindow(window, 20, 20); },
      [&] { return DisplayPresent(window, surface, all), false; },
      [&] { return DisplayRefresh(all), false; },
      [&] { return DisplayCapturePointer(window), false; },
      [&] { return DisplayPointerShape(window, PointerShape::kWait, nullptr), false; },
      [&] { return DisplayBeep(), false; },
      [&] { return DisplayKeyIsDown('A') || DisplayCapsLockIsOn(); },
      // From what it knows it answers until the loss is found.
      [&] { return DisplayIsLost() && DisplayKeyCharacter(38, false, false) != 0; },
      [&] { return DisplayShareText(SharedText::kClipboard, "x"), false; },
      [&] { return DisplayHasSharedText(SharedText::kClipboard); },
      [&] { return !DisplaySharedText(SharedText::kSelected).empty(); },
      [&] { return DisplayNextEvent(&event); },
  };
  for (const auto& finds : calls) {
    OwnSurface recorded(300, 300, 0x5A);
    ASSERT_TRUE(DisplayNewSurface(300, 300, &surface));
    window = DisplayNewWindow(spec);
    Drain();
    EXPECT_FALSE(DisplayIsLost());
    Break();
    EXPECT_FALSE(finds());
    EXPECT_TRUE(DisplayIsLost());
    for (const auto& call : calls) EXPECT_FALSE(call());
    DisplayFreeWindow(window);
    DisplayFreeSurface(&surface);
    DisplayClose();
    ASSERT_TRUE(DisplayOpen());
    EXPECT_EQ(RowOf(recorded.surface, 299)[0], 0x5A); // it can still be saved
  }
  EXPECT_TRUE(X11Live()->segments.empty());
}

TEST(X11Clock, SleepsAtLeastSoLong) {
  const uint32_t start = DisplayTick();
  DisplaySleep(15);
  EXPECT_GE(DisplayTick() - start, 15u);
}

} // namespace

} // namespace framereel
