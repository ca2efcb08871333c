// SmallestFrames: the frames of an animation in few bytes, for recordings that have time for it. The standard way is
// GifWriteImage; the pictures are the same.
//
// It knows what is shown, so it finds out itself which pixels have to change. Of those that need not, some are free to
// be transparent, where that makes fewer codes (phrase_parser.h). The file's colour table is as large as the first
// frame needs, the most frequent colours first; a frame whose colours are few or new brings a table of its own. Both
// make codes narrower.
//
//   SmallestBegin        with the first frame, ahead of the head records: the file's colour table
//   SmallestTakeFrame    ahead of the graphic control extension: how the frame is written
//   SmallestWriteImage   behind it
#pragma once

#include <cstdint>

#include "gif/gif_records.h"
#include "gif/phrase_parser.h"

namespace framereel {

// A frame as the engine has it: a rectangle of colour indices in which one index may mean "as before".
struct FramePixels {
  int16_t left, top, width, height; // inside the logical screen, not empty
  PixelCursor pixels;
  bool marked;  // pixels of index `mark` are unchanged; in the first frame there are none
  uint8_t mark; // not looked at unless `marked`
  bool mayMark; // the file's frame may have transparent pixels
  bool inPlace; // the rectangle keeps its top left corner
};

// How a frame stands in the file.
struct SmallestFrame {
  int16_t left, top, width, height;
  bool transparent;
  uint8_t transparentIndex;        // 0 if nothing is
  uint8_t tableBits;               // of the frame's own colour table; 0: it has none
  uint8_t indices[kPhraseSymbols]; // of each symbol, in its table or the file's
  PhraseCodes phrases;
};

inline constexpr uint16_t kNoPlace = 256;

struct SmallestFrames {
  int16_t width, height;              // of the logical screen
  uint8_t colours[kColourTableBytes]; // of the engine's indices
  uint16_t place[256];                // of each of them in the file's colour table, or kNoPlace
  // Owned, each with room for width x height:
  uint8_t* shown;   // in the engine's indices
  uint8_t* symbols; // of the frame at hand
  Freedom* freedom; // of its pixels
  bool anyShown;
  uint32_t phrasesOfLate;                // of the last frame, for 65,536 pixels
  uint32_t symbolCount;                  // of the frame at hand
  uint8_t symbolColours[kPhraseSymbols]; // the engine's index of each of its symbols
  SmallestFrame frame, trial;            // the best so far; what is tried
  PhraseParser parser;
  CodePacker packer;
};

// A record for an animation of that size, from MemAlloc; `colours` are 256 triples of red, green, blue.
SmallestFrames* SmallestNew(int16_t width, int16_t height, const uint8_t* colours);
// Null does nothing.
void SmallestFree(SmallestFrames* smallest);

// Chooses the file's colour table from the first frame, which covers all. Answers its bits and fills 2^bits triples.
int SmallestBegin(SmallestFrames& smallest, const FramePixels& first, uint8_t* table);

// Decides how the frame is written.
const SmallestFrame& SmallestTakeFrame(SmallestFrames& smallest, const FramePixels& frame);

// Appends the frame's image descriptor, its colour table, if it has one, and its pixels.
void SmallestWriteImage(SmallestFrames& smallest, GifWriter& gif);

} // namespace framereel
