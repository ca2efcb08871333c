// The part of the screen that the task bar leaves free, and how the main window keeps up with the display.
#pragma once

#include "core/geometry.h"

namespace framereel {

struct MainWindow;

// The screen without the task bar, and the whole of it. True when the first is not what was last handed out, and at the
// first call.
bool QueryUsableArea(Rect* usable, Rect* screen);
void StoreUsableArea(MainWindow* main, const Rect& usable, const Rect& screen);

// Reads the display and the usable area again, and keeps the main window's record up to date. A main window that filled
// the usable area goes on filling it.
void DisplayChanged();

void UsableAreaStartUp();

} // namespace framereel
