// The records of the recording engine: the user's options, the one state record, and what the engine is handed.
//
// The road of a frame begins in recorder_core.h; who fills which field stands beside it.
#pragma once

#include <cstdint>

#include "core/geometry.h"
#include "gif/animation_stream.h"
#include "gif/gif_records.h"
#include "recorder/engine/pixel_format.h"
#include "recorder/engine/recording_scale.h"
#include "win32/win32_types.h"

namespace framereel {

struct DibBuffer;
struct Offscreen;
struct SmallestFrames;
struct Timer;

// The user's settings. The engine reads them at the moments that stand beside them.
struct RecordingOptions {
  uint16_t frameDelay = 333;          // ms; at every tick and every grabbed frame
  bool interframeTransparency = true; // at every frame
  bool recordTimingInfo = true;       // at every frame
  bool loop = true;                   // once, at the first frame
  bool overlayBorder = true;          // at every frame
  bool overlayCursor = true;          // once, at the first frame
  bool explorerCompatible = false;    // at every later frame
  uint16_t recordingSize = kSize100;  // once, at the first frame
  bool fakeScreen = true;             // never; a setting that is kept for the file's sake
  bool smallest = false;              // once, at the first frame; no setting. The same pictures in fewer bytes
  bool trueTime = false;              // which rule for delays (pacing.h); the same for a whole animation
};

// Which of the three actions the user may take now.
struct RecordButtons {
  bool start, grab, stop;
};

// What the countdown is doing to the screen where its pictures stand: it draws there, has done so, or is going to have
// all programs paint anew.
enum class PictureWork : uint8_t { kBegins, kEnds, kRepaints };

// What the engine shows and where: the program's panel, or nothing. A null function is not called.
struct RecorderPanel {
  void* owner = nullptr; // passed to the functions
  void (*setStatus)(void* owner, const char* text) = nullptr;
  void (*showMessage)(void* owner, const char* text) = nullptr; // of screenStatus, in words
  void (*hideMessage)(void* owner) = nullptr;
  void (*enableButtons)(void* owner, const RecordButtons& buttons) = nullptr;
  // The options that hold for a whole animation can be changed, or not any more: the area, loop, border, pointer and
  // recording size.
  void (*enableOptions)(void* owner, bool enabled) = nullptr;
  // What else is drawn on the screen there makes way meanwhile: it is neither kept as the screen's own nor drawn over.
  void (*pictureWork)(void* owner, const Rect& where, PictureWork work) = nullptr;
};

// When frames are taken; see control.h.
struct RecorderControl {
  bool recording = false;           // Start was taken and Stop not yet
  int16_t countdown = 0;            // steps left of it: 4 down to 0
  bool optionsFrozen = false;       // those of enableOptions
  uint16_t lastKeyState = 0;        // of KeyBit, at the last poll
  Timer* activeTimer = nullptr;     // the one that is pending
  Offscreen* pictures[4] = {};      // the digits 1, 2 and 3, and the pause sign; owned
  Rect pictureRect = {};            // where the one on the screen stands, or stood last
  Offscreen* savedScreen = nullptr; // what lies under it; null when none is up
  Offscreen* shownScreen = nullptr; // what was drawn there; null when none is up
  bool paintedOver = false;         // others have painted there, and have not been asked to do so anew
};

// What the user is told about the screen and the animation. The first that holds, in the order of RecorderCheckScreen.
enum ScreenStatus : uint16_t {
  kScreenFine = 0,
  kScreenUnsupported = 1, // no frames: its depth cannot be recorded
  kScreenDiffers = 2,     // no frames: it has another depth than the animation
  kScreenTooSmall = 3,    // part of the area lies off it; frames go on
  kAnimationFull = 4,     // no frames: another one might not fit into the stream
};

// The mouse pointer in a frame.
struct FramePointer {
  HCURSOR picture = nullptr; // the platform's; null where there is none
  uint32_t serial = 0;       // of that picture
  int32_t left = 0, top = 0, right = 0, bottom = 0;

  bool operator==(const FramePointer&) const = default;
};

// The road of pixels from the screen to rows; see grab.h. The buffer holds a band of the image's rows at a time.
struct GrabPipeline {
  Offscreen* offscreen = nullptr;   // the frame as it was grabbed last, with the pointer
  bool holdsFrame = false;          // there has been one
  FramePointer pointer;             // drawn in it
  HRGN newRows = nullptr;           // of it: all others are as in the frame before; owned
  DibBuffer* buffer = nullptr;      // receives rows of the Offscreen in the format's layout
  PixelFormat format = kFormatNone; // the layout of `buffer`
  uint32_t grabRowBytes = 0;        // from a row of `buffer` to the next
  uint8_t* grabTopRow = nullptr;    // the band's top row, the last one in `buffer`; the next lies grabRowBytes before
  int32_t bandRows = 0;             // rows that `buffer` has room for
  int32_t bandFirst = 0;            // the image's row at grabTopRow
  int32_t bandCount = 0;            // rows that have been read
  int32_t lead = 0;                 // pixels of each row ahead of the frame's first; only format 6 has any
};

// The tables of one animation; see colour_tables.h.
struct AnimationColours {
  uint8_t captureTransparent = 0;   // marks an unchanged pixel in workFrame ahead of the reduction
  uint8_t outputTransparent = 0;    // the index that the graphic control extension names
  uint8_t blackIndex = 0;           // the darkest colour; the border is drawn with it
  uint8_t darkestEntry = 0;         // of the screen's palette, as last read
  uint8_t* screenPalette = nullptr; // 256 RGB triples, for reduced recordings; allocated once
  uint32_t* paletteLanes = nullptr; // 256 words, for recordings at 44 %; allocated once
};

// The one state record of the engine. It is made by RecorderSetUp and lives for the program's run.
struct RecorderState {
  AnimationStream* stream = nullptr;         // where frames go; not owned
  GifWriter* gif = nullptr;                  // writes into `stream`; not owned
  const RecordingOptions* options = nullptr; // not owned
  const char* ownerName = "";                // for the comment; not owned
  RecorderPanel panel;

  bool recordingAllowed = true;
  bool screenFormatSupported = false;
  bool animationStarted = false;
  bool captureBusy = false;                  // guards RecorderCaptureFrame against itself
  bool cursorOverlayOn = false;              // the option as it stood at the first frame
  PixelFormat screenFormat = kFormatNone;    // as last detected
  PixelFormat animationFormat = kFormatNone; // kFormatNone: there is no animation
  ScreenStatus screenStatus = kScreenFine;
  uint32_t frameCount = 0;      // frames in the stream
  uint32_t frameBytes = 0;      // the stream's size with the last of them whole; another may be under way behind it
  int32_t shownFrameCount = -1; // the count that the status line shows

  // What is to be recorded, in screen pixels, inside the screen. Read at the first frame.
  Rect captureArea = {0, 0, 0, 0};
  // The frame's geometry and the option as they stood at the first frame; the engine's own until RecorderReset,
  // whatever becomes of captureArea and the options meanwhile.
  int16_t frameLeft = 0, frameTop = 0, frameWidth = 0, frameHeight = 0;
  uint16_t recordingSize = kSize100;
  int16_t outputWidth = 0, outputHeight = 0; // of the GIF's logical screen, by the size table
  Rect dirty = {0, 0, 0, 0}; // the part of the frame to be written, from the frame's corner; empty: a width below 1

  // frameWidth x frameHeight colour indices each, without padding, the top row first.
  uint8_t* previousFrame = nullptr;   // the frame last seen, at full size, never with a transparent mark
  uint8_t* workFrame = nullptr;       // the frame on its way to the compressor
  uint8_t* rowIndices = nullptr;      // a row of the frame being compared
  SmallestFrames* smallest = nullptr; // what writes frames where the option asked for it; owned
  GrabPipeline grab;
  AnimationColours colours;

  RecorderControl control;

  uint32_t frameTick = 0;     // in true time: when the next frame begins, in ms
  uint32_t lastFrameTick = 0; // of the frame last written, in ms; in true time when the file shows it
  bool haveLastFrameTick = false;
  uint32_t lastControl = 0; // in true time: where the stream has that frame's control record
};

} // namespace framereel
