// UTF-8 (RFC 3629): where characters begin and end, which they are, and the same in Latin-1. A byte that belongs to no
// well-formed sequence is a character of its own, so every text has characters, and going forward and back meets the
// same ones. Internal to the layer and its displays.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace framereel {

// What stands for a byte that is no UTF-8.
inline constexpr char32_t kReplacement = 0xFFFD;

// Bytes of the character that begins at the place; 0 at the end of the text.
size_t CharacterLength(std::string_view text, size_t at);
// Where the character behind or ahead of a boundary ends or begins; at the text's own ends, the place itself.
size_t NextCharacter(std::string_view text, size_t at);
size_t PreviousCharacter(std::string_view text, size_t at);
// The boundary at the place, or the last one ahead of it.
size_t BoundaryAt(std::string_view text, size_t at);
// Whether the bytes are the beginning of a character that is not complete.
bool IsBegunCharacter(std::string_view bytes);

// The character that begins at the place, which is ahead of the text's end, and how many bytes it has.
struct CodePoint {
  char32_t code; // kReplacement for a stray byte
  size_t length;
};
CodePoint CodePointAt(std::string_view text, size_t at);
// The bytes of a character that UTF-8 can say: up to U+10FFFF, and no half of a pair of UTF-16.
std::string Utf8Of(char32_t code);
// With kReplacement for every stray byte, for those who take no others.
std::string WellFormed(std::string_view text);

std::string Utf8OfLatin1(std::string_view text);
// With "?" for what Latin-1 does not have.
std::string Latin1Of(std::string_view text);

} // namespace framereel
