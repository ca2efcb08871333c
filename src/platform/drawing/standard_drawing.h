// The DrawStates and colours that all parts of the toolkit share, made at start-up.
#pragma once

#include "platform/drawing/draw_state.h"
#include "platform/records/colour.h"

namespace framereel {

// Makes them; runs after the main window has been made. StandardDrawingShutDown forgets them, and DrawingShutDown frees
// the states.
void StandardDrawingStartUp();
void StandardDrawingShutDown();

// Each of black on white, in the default font; null until they have been made.
DrawState* DrawStateDefault(); // Views, text, plain copying
DrawState* DrawStateFill();    // its colours are changed as needed ahead of a fill
DrawState* DrawStateSecond();  // a second default font, for the windows of alerts and the like

// Eight full colours: bit 2 of i is red, bit 1 green, bit 0 blue. So 0 is black and 7 is white.
Colour PrimaryColour(int i);

// The system's colours, as they were at start-up.
const Colour& ColourWorkspace();
const Colour& ColourMenu(); // the panels' background
const Colour& ColourFace();
const Colour& ColourShadow();
const Colour& ColourLight();
COLORREF ColourGreyText(); // of disabled text; never black

} // namespace framereel
