// The signals that ask the program to end: SIGINT, SIGTERM and SIGHUP.
//
// They end its loops, and what follows is the end that a user's Quit has: nothing is left on the screen. The second
// signal of a kind ends the process at once, should it hang. One that was ignored when the program began stays so, as
// nohup and shells without job control want it.
#pragma once

namespace framereel {

// From here on the signals end the loops, until EndSignalsRelease gives them their former effect back.
void EndSignalsWatch();
void EndSignalsRelease();

// The number of the last one that came since EndSignalsWatch; 0 for none.
int EndSignalThatCame();

} // namespace framereel
