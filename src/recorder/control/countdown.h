// The pictures on the screen, in the middle of the area: 3, 2 and 1 ahead of a recording and the pause sign behind it.
//
// They are drawn on the screen itself, over every program's windows; what they cover is kept and put back, so that no
// frame ever shows them. Where a program has painted meanwhile, what was kept is no longer true, and all programs are
// asked to paint there once more. One picture is up at a time.
#pragma once

#include "recorder/engine/recorder_state.h"

namespace framereel {

enum CountdownPicture { kPictureOne, kPictureTwo, kPictureThree, kPicturePause };

void LoadCountdownPictures(RecorderControl& control);
void FreeCountdownPictures(RecorderControl& control);

// Keeps what lies in the middle of the area, under the pictures to come. Without memory for that no picture is shown.
void SavePictureArea(RecorderState& recorder);
// Both do nothing when nothing has been saved. Once RestorePictureArea has returned, nothing of the picture is read
// from the screen any more.
void ShowPicture(RecorderControl& control, CountdownPicture picture);
void RestorePictureArea(RecorderState& recorder);

} // namespace framereel
