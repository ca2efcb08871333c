// Where characters of UTF-8 begin and end, and which they are.
#include "win32/pixels/utf8.h"

#include <algorithm>
#include <cstdint>

namespace framereel {
namespace {

constexpr size_t kLongest = 4;

// Bytes of the sequences that begin with the byte; 1 for one that begins none.
size_t LengthFor(uint8_t first) {
  if (first < 0xC2 || first > 0xF4) return 1;
  return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// Whether a byte can follow. The second one is what keeps out longer forms of short sequences, the halves of UTF-16 and
// what lies beyond U+10FFFF.
bool Continues(uint8_t first, size_t index, uint8_t byte) {
  uint8_t low = 0x80, high = 0xBF;
  if (index == 1 && first == 0xE0) low = 0xA0;
  if (index == 1 && first == 0xED) high = 0x9F;
  if (index == 1 && first == 0xF0) low = 0x90;
  if (index == 1 && first == 0xF4) high = 0x8F;
  return byte >= low && byte <= high;
}

// How many bytes from the place on are of the sequence that its first byte begins.
size_t PartThere(std::string_view text, size_t at) {
  const auto first = uint8_t(text[at]);
  size_t count = 1;
  while (count < LengthFor(first) && at + count < text.size() && Continues(first, count, uint8_t(text[at + count]))) {
    ++count;
  }
  return count;
}

} // namespace

size_t CharacterLength(std::string_view text, size_t at) {
  if (at >= text.size()) return 0;
  const size_t length = LengthFor(uint8_t(text[at]));
  return PartThere(text, at) == length ? length : 1;
}

size_t NextCharacter(std::string_view text, size_t at) {
  return at + CharacterLength(text, at);
}

size_t PreviousCharacter(std::string_view text, size_t at) {
  for (size_t length = std::min(at, kLongest); length > 1; --length) {
    if (CharacterLength(text, at - length) == length) return at - length;
  }
  return at - std::min(at, size_t{1});
}

size_t BoundaryAt(std::string_view text, size_t at) {
  at = std::min(at, text.size());
  for (size_t back = 1; back < kLongest && back <= at; ++back) {
    if (CharacterLength(text, at - back) > back) return at - back;
  }
  return at;
}

bool IsBegunCharacter(std::string_view bytes) {
  return !bytes.empty() && PartThere(bytes, 0) == bytes.size() && bytes.size() < LengthFor(uint8_t(bytes[0]));
}

CodePoint CodePointAt(std::string_view text, size_t at) {
  const size_t length = CharacterLength(text, at);
  const auto first = uint8_t(text[at]);
  if (length == 1) return {first < 0x80 ? first : kReplacement, 1};
  // The first byte has a 1 for each byte, a 0, and then what it says of the character.
  char32_t code = first & (0x7F >> length);
  for (size_t i = 1; i < length; ++i) code = code << 6 | (uint8_t(text[at + i]) & 0x3F);
  return {code, length};
}

std::string Utf8Of(char32_t code) {
  if (code < 0x80) return {char(code)};
  const auto follower = [code](int shift) { return char(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x800) return {char(0xC0 | code >> 6), follower(0)};
  if (code < 0x10000) return {char(0xE0 | code >> 12), follower(6), follower(0)};
  return {char(0xF0 | code >> 18), follower(12), follower(6), follower(0)};
}

std::string WellFormed(std::string_view text) {
  std::string whole;
  for (size_t at = 0; at < text.size(); at = NextCharacter(text, at)) whole += Utf8Of(CodePointAt(text, at).code);
  return whole;
}

std::string Utf8OfLatin1(std::string_view text) {
  std::string utf8;
  for (const char byte : text) utf8 += Utf8Of(uint8_t(byte));
  return utf8;
}

std::string Latin1Of(std::string_view text) {
  std::string latin1;
  for (size_t at = 0; at < text.size(); at = NextCharacter(text, at)) {
    const char32_t code = CodePointAt(text, at).code;
    latin1 += code < 0x100 ? char(code) : '?';
  }
  return latin1;
}

} // namespace framereel
