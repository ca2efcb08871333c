// Making the standard DrawStates and reading the system's colours.
#include "platform/drawing/standard_drawing.h"

#include "win32/win32_windows.h"

namespace framereel {
namespace {

struct StandardDrawing {
  DrawState *standard, *fill, *second;
  Colour workspace, menu, faceColour, shadowColour, light;
  COLORREF greyText;
};

StandardDrawing standards;

Colour SystemColour(int index) {
  const COLORREF colour = ::GetSysColor(index);
  return {uint16_t(GetRValue(colour) * 257), uint16_t(GetGValue(colour) * 257), uint16_t(GetBValue(colour) * 257)};
}

} // namespace

void StandardDrawingStartUp() {
  standards.workspace = SystemColour(COLOR_APPWORKSPACE);
  standards.menu = SystemColour(COLOR_MENU);
  standards.faceColour = SystemColour(COLOR_BTNFACE);
  standards.shadowColour = SystemColour(COLOR_BTNSHADOW);
  standards.light = SystemColour(COLOR_3DLIGHT);
  standards.greyText = ::GetSysColor(COLOR_GRAYTEXT);

  standards.standard = NewDrawState();
  standards.fill = NewDrawState();
  standards.second = NewDrawState();
}

void StandardDrawingShutDown() {
  standards = {};
}

DrawState* DrawStateDefault() {
  return standards.standard;
}
DrawState* DrawStateFill() {
  return standards.fill;
}
DrawState* DrawStateSecond() {
  return standards.second;
}
Colour PrimaryColour(int i) {
  const auto channel = [i](int bit) { return uint16_t(i & bit ? 0xFFFF : 0); };
  return {channel(4), channel(2), channel(1)};
}

const Colour& ColourWorkspace() {
  return standards.workspace;
}
const Colour& ColourMenu() {
  return standards.menu;
}
const Colour& ColourFace() {
  return standards.faceColour;
}
const Colour& ColourShadow() {
  return standards.shadowColour;
}
const Colour& ColourLight() {
  return standards.light;
}
COLORREF ColourGreyText() {
  return standards.greyText;
}

} // namespace framereel
