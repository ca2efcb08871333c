// The DrawStates and colours that all parts of the toolkit share, made at start-up.
#pragma once

#include "platform/drawing/draw_state.h"
#include "platform/records/colour.h"

namespace framereel {

// Makes them; runs after the main window has been made. StandardDrawingShutDown forgets them, and DrawingShutDown frees
// the states.
void StandardDrawingStartUp();
void StandardDrawingShutDown();

// Each of black on white unless it says otherwise, in the default font; null until they have been made.
DrawState* DrawStateDefault(); // Views, text, plain copying
DrawState* DrawStateInverse(); // white on black
DrawState* DrawStateFill();    // its colours are changed as needed ahead of a fill
DrawState* DrawStateSecond();  // a second default font, for the windows of alerts and the like
// Those of the toolkit's controls. The foreground is the system's colour of that name.
DrawState* DrawStateEdge();    // lines: the window frame's
DrawState* DrawStateFrame();   // lines: the window frame's
DrawState* DrawStateWhite();   // light lines: white
DrawState* DrawStateCaption(); // captions: the active caption's
DrawState* DrawStateFace();    // faces: the button face's
DrawState* DrawStateShadow();  // shadows: the button shadow's

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
