// The event loop: the only place where the program waits, and where everything it does begins.
//
// A pass dispatches one message of the platform or, when there is none, polls the mouse and sleeps until the next timer
// is due. At most one timer fires in a pass. Records that are closed or destroyed in a pass can be read until it ends
// and, in a nested loop, until the outermost pass does: what they are in the middle of may be on its stack.
#pragma once

#include <cstdint>

namespace framereel {

struct ChildWindow;

// Runs passes until EndEventLoop or EndAllLoops, or until the display is lost (ScreenIsLost).
void RunEventLoop();
// RunEventLoop ends after the pass at hand, once the loops nested in that have ended.
void EndEventLoop();
// The nested loops end too, each after the pass at hand and with its window still there. A signal handler may call it.
void EndAllLoops();
bool LoopsMayRun(); // none has been told to end so, and there is a screen

// One pass. With a window it sees that window's messages alone, and no timer fires. mayWait: an idle pass sleeps, at
// most 50 ms, and not even a message wakes it.
void PumpOneEvent(ChildWindow* window, bool mayWait);
// Passes until the window is closed; restricted to its messages if asked. It also ends at EndAllLoops and when the
// display is lost, with the window still there.
void RunModalLoop(ChildWindow* window, bool restrict);
// Dispatches the paints that are due. All other messages stay in the queue, in their order.
void FlushPaints();
// Sleeps for all of the time, in ms, however often the platform wakes. Nothing is dispatched meanwhile; what the
// display is afterwards is known at once (display_caps.h).
void SleepFor(uint32_t milliseconds);

void PumpStartUp();

} // namespace framereel
