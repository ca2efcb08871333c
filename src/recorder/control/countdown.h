// The pictures on the screen, in the middle of the area: 3, 2 and 1 ahead of a recording and the pause sign behind it.
//
// They are drawn on the screen itself, over every program's windows; what they cover is kept and put back, so that no
// frame ever shows them. What other programs paint there meanwhile is theirs and stays. Where they have painted just
// what the picture shows there cannot be told, so that they are asked to paint the place once more. One picture is up
// at a time.
#pragma once

#include "recorder/engine/recorder_state.h"

namespace framereel {

enum CountdownPicture { kPictureOne, kPictureTwo, kPictureThree, kPicturePause };

void LoadCountdownPictures(RecorderControl& control);
void FreeCountdownPictures(RecorderControl& control);

// Shows the picture in the middle of the area, or in the place of the one that stands. Without memory for what it
// covers no picture is shown.
void ShowPicture(RecorderState& recorder, CountdownPicture picture);
// Takes the picture off, if one stands: nothing of it is read from the screen any more.
void RestorePictureArea(RecorderState& recorder);
// The same for a program that ends because memory has: what was kept is put back as it is, and no memory is asked for.
void PutBackPictureArea(const RecorderState& recorder);
// Has all programs paint the place anew if some have painted there under a picture. They do so in their own time, and
// until then their windows may be empty there: behind a frame, not ahead of it.
void RepaintPictureArea(RecorderState& recorder);

} // namespace framereel
