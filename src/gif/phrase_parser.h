// PhraseParser: the pixels of one image cut into LZW's strings with an eye to few bytes, where lzw_encoder.h has one to
// time. A phrase is a string of the dictionary that a code stands for.
//
// What it has over the plain encoder:
// - A pixel may be free: it has a colour or the marker, whichever makes the phrase longer.
// - A full dictionary is forgotten only where that pays: both ways are tried as far as a new dictionary reaches.
// - A phrase may end early where it and the one behind it then reach further.
#pragma once

#include <cstdint>

#include "gif/code_packer.h"
#include "gif/phrase_trie.h"

namespace framereel {

// The codes of an image as they go out, clear codes among them, without the end code.
struct PhraseCodes {
  uint16_t* codes; // room for PhraseCodesMax of the image's pixels
  uint32_t count;
  uint64_t bits;    // of all of them and the end code
  uint8_t codeSize; // the image's
};

constexpr uint64_t PhraseCodesMax(uint64_t pixels) {
  return pixels + pixels / 1024 + 16;
}

// What is kept from image to image: memory, and how it went of late to keep a full dictionary.
struct PhraseParser {
  PhraseTrie* trie;    // owned
  PhraseTrie* other;   // owned
  uint16_t* keptCodes; // owned
  uint32_t losses;     // grows with the times in a row that keeping was the worse way
  uint32_t untried;    // so many times more it is not tried to the end
};

void PhraseParserInit(PhraseParser& parser);
void PhraseParserFree(PhraseParser& parser);

// Cuts the image into phrases. False, and no codes, as soon as they are seen to take more than `limit` bits.
bool ParsePhrases(PhraseParser& parser, const PhraseImage& image, uint64_t limit, PhraseCodes& phrases);

// Packs the codes and the end code. In the file symbol s is symbols[s].
void PackPhrases(CodePacker& packer, const PhraseCodes& phrases, const uint8_t* symbols);

} // namespace framereel
