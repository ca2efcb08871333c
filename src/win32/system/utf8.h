// UTF-8 (RFC 3629): where characters begin and end. A byte that belongs to no well-formed sequence is a character of
// its own, so every text has characters, and going forward and back meets the same ones. Internal to the layer.
#pragma once

#include <cstddef>
#include <string_view>

namespace framereel {

// Bytes of the character that begins at the place; 0 at the end of the text.
size_t CharacterLength(std::string_view text, size_t at);
// Where the character behind or ahead of a boundary ends or begins; at the text's own ends, the place itself.
size_t NextCharacter(std::string_view text, size_t at);
size_t PreviousCharacter(std::string_view text, size_t at);
// The boundary at the place, or the last one ahead of it.
size_t BoundaryAt(std::string_view text, size_t at);
// Whether the bytes are the beginning of a character that is not complete.
bool IsBegunCharacter(std::string_view bytes);

} // namespace framereel
