// The window that is recorded: by the number that other programs know it by too, and as it moves.
#pragma once

#include <cstdio>

#include "core/refusal.h"
#include "record/options.h"
#include "recorder/engine/recorder_state.h"

namespace framereel {

struct AimedWindow {
  RecorderState* recorder = nullptr; // whose area follows; not owned
  HWND window = nullptr;
  int32_t left = 0, top = 0; // of the area, from the window's corner
};

// The window of that number: its handle, and where it stands, with what a window manager has put around it. False with
// the reason when there is none or it cannot be seen.
bool FindNumberedWindow(uint32_t number, HWND* window, WantedArea* area, Refusal& refusal);

// The area, which stands, keeps its place in the window from here on.
void AimBegin(AimedWindow& aimed, RecorderState& recorder, HWND window);
// Moves the recorder's area to where the window is now, as far as the area then still lies on the screen. It stays
// where it was while the window cannot be seen. False when the window has gone.
bool AimFollow(AimedWindow& aimed);

// A line for each window of which something is on the screen, from the top down: number, rectangle as --area takes it,
// title, with tabs between. The display is open.
void ListWindows(FILE* to);

} // namespace framereel
