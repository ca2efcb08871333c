// What the engine tells the user: the status line, and why the screen cannot be recorded.
#pragma once

#include <cstdint>

#include "recorder/engine/recorder_state.h"

namespace framereel {

// A number of bytes in words, "1 byte" to "1.5G", into `text`, which has room for kByteSizeText bytes. Tenths are cut,
// and left out where they are 0, from 100K and from 100M up.
inline constexpr int kByteSizeText = 16;
void FormatByteSize(uint32_t bytes, char* text);

// Shows the number of frames and the stream's size; RefreshStatus only if the number is not the one shown.
void RecorderShowStatus(RecorderState& recorder);
void RecorderRefreshStatus(RecorderState& recorder);

// Which actions the user may take in the engine's present state; and that told to the panel.
RecordButtons RecorderButtons(const RecorderState& recorder);
void UpdateRecordButtons(const RecorderState& recorder);

// The panel stands now, or another one does: it is told the present state whole.
void RecorderTakePanel(RecorderState& recorder, const RecorderPanel& panel);

// Looks at the screen's format and size and at the room that is left in the stream. Sets screenStatus and
// recordingAllowed, and when the verdict is another than before, tells the panel: buttons and message.
void RecorderCheckScreen(RecorderState& recorder);

} // namespace framereel
