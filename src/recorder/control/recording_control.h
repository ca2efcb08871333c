// When frames are taken: the actions of the user, the countdown ahead of a recording, and the chords that do the same
// from any program.
//
//   Ready      IdlePoll every 200 ms looks for the chords
//   Counting   CountdownTick every second: 3, 2, 1
//   Recording  FrameTick every frameDelay ms takes a frame and looks for the chord that ends it
//
// Exactly one timer is pending at any time. All of it runs in the event loop. A screen that cannot be recorded takes
// the actions away, but changes nothing of the rest: frames go on when it can be recorded again.
#pragma once

#include "recorder/engine/recorder_state.h"

namespace framereel {

// Loads the pictures and begins to look for the chords. The record has gone through RecorderSetUp, and it stays where
// it is until RecorderShutDown, which leaves no timer behind and nothing on the screen.
void RecorderInit(RecorderState& recorder);
void RecorderShutDown(RecorderState& recorder);

// The user's actions, as far as RecorderButtons enables them.
void RecorderStart(RecorderState& recorder); // frames from 3 s on
void RecorderGrab(RecorderState& recorder);  // one frame at once
// Shows the pause sign for 750 ms, in which nothing else happens. Does nothing when not recording.
void RecorderStop(RecorderState& recorder);

// Stops, and lets the options be changed that hold for an animation; ahead of RecorderReset.
void RecorderThaw(RecorderState& recorder);

} // namespace framereel
