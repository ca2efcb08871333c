// Making the standard DrawStates and reading the system's colours.
#include "platform/drawing/standard_drawing.h"

#include "win32/win32_windows.h"

namespace framereel {
namespace {

struct StandardDrawing {
  DrawState *standard, *inverse, *fill, *second, *edge, *frame, *white, *caption, *face, *shadow;
  Colour workspace, menu, faceColour, shadowColour, light;
  COLORREF greyText;
};

StandardDrawing standards;

Colour SystemColour(int index) {
  const COLORREF colour = ::GetSysColor(index);
  return {uint16_t(GetRValue(colour) * 257), uint16_t(GetGValue(colour) * 257), uint16_t(GetBValue(colour) * 257)};
}

DrawState* NewColouredState(const Colour& foreground, const Colour& background) {
  DrawState* state = NewDrawState();
  UseDrawState(state);
  SetForeColour(foreground);
  SetBackColour(background);
  return state;
}

} // namespace

void StandardDrawingStartUp() {
  const Colour black = PrimaryColour(0), white = PrimaryColour(7);
  standards.workspace = SystemColour(COLOR_APPWORKSPACE);
  standards.menu = SystemColour(COLOR_MENU);
  standards.faceColour = SystemColour(COLOR_BTNFACE);
  standards.shadowColour = SystemColour(COLOR_BTNSHADOW);
  standards.light = SystemColour(COLOR_3DLIGHT);
  standards.greyText = ::GetSysColor(COLOR_GRAYTEXT);

  standards.standard = NewDrawState();
  standards.inverse = NewColouredState(white, black);
  standards.fill = NewDrawState();
  standards.second = NewDrawState();
  standards.edge = NewColouredState(SystemColour(COLOR_WINDOWFRAME), white);
  standards.frame = NewColouredState(SystemColour(COLOR_WINDOWFRAME), white);
  standards.white = NewColouredState(white, white);
  standards.caption = NewColouredState(SystemColour(COLOR_ACTIVECAPTION), white);
  standards.face = NewColouredState(standards.faceColour, white);
  standards.shadow = NewColouredState(standards.shadowColour, white);
}

void StandardDrawingShutDown() {
  standards = {};
}

DrawState* DrawStateDefault() {
  return standards.standard;
}
DrawState* DrawStateInverse() {
  return standards.inverse;
}
DrawState* DrawStateFill() {
  return standards.fill;
}
DrawState* DrawStateSecond() {
  return standards.second;
}
DrawState* DrawStateEdge() {
  return standards.edge;
}
DrawState* DrawStateFrame() {
  return standards.frame;
}
DrawState* DrawStateWhite() {
  return standards.white;
}
DrawState* DrawStateCaption() {
  return standards.caption;
}
DrawState* DrawStateFace() {
  return standards.face;
}
DrawState* DrawStateShadow() {
  return standards.shadow;
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
