// One writer serves both passes: without a buffer it only counts, so that the measure of a text
// is what is then written. A new conversion is a function and a row of Convert.
#include "core/text_format.h"

#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstring>

#include "core/directives.h"
#include "core/memory.h"
#include "core/numbers.h"
#include "core/strings.h"
#include "core/temporary_blocks.h"

namespace framereel {

namespace {

struct Writer {
  char* buffer; // null: count only
  size_t length;
};

void Put(Writer& writer, char c) {
  if (writer.buffer) writer.buffer[writer.length] = c;
  ++writer.length;
}

void PutBytes(Writer& writer, const char* bytes, size_t count) {
  if (writer.buffer) std::memcpy(writer.buffer + writer.length, bytes, count);
  writer.length += count;
}

void PutTimes(Writer& writer, char c, int32_t times) {
  while (times-- > 0) Put(writer, c);
}

// The arguments of one pass, in a record so that they move on in whoever reads them.
struct Arguments {
  va_list list;
};

uint32_t NextWord(Arguments& arguments) {
  return va_arg(arguments.list, uint32_t);
}

// ---- Widths -------------------------------------------------------------------------------------------------------

struct WidthGroup {
  char padding;
  uint8_t minimum, maximum;
};

bool StartsWidth(char c) {
  return IsDigit(c) || c == 'v';
}

// A width is held in one byte; a larger one keeps its low bits.
uint8_t TakeWidth(Modifiers& modifiers, Arguments& arguments) {
  return uint8_t(Take(modifiers, 'v') ? NextWord(arguments) : TakeNumber(modifiers));
}

WidthGroup TakeWidthGroup(Modifiers& modifiers, Arguments& arguments, WidthGroup defaults) {
  WidthGroup group = defaults;
  bool isOver = modifiers.at == modifiers.end;
  if (!isOver && (Peek(modifiers) == '0' || !StartsWidth(Peek(modifiers)))) group.padding = *modifiers.at++;
  if (StartsWidth(Peek(modifiers))) group.minimum = TakeWidth(modifiers, arguments);
  Modifiers behindComma = modifiers;
  if (Take(behindComma, ',') && StartsWidth(Peek(behindComma))) {
    group.maximum = TakeWidth(behindComma, arguments);
    modifiers = behindComma;
  }
  return group;
}

// ---- Integers -----------------------------------------------------------------------------------------------------

WidthGroup TakeIntegerModifiers(Modifiers modifiers, Arguments& arguments) {
  TakeSizeLetter(modifiers);
  return TakeWidthGroup(modifiers, arguments, {' ', 0, 255});
}

void PutMagnitude(Writer& writer, uint32_t magnitude, uint32_t base, const WidthGroup& width) {
  char digits[10]; // of 2^32 - 1 in decimal
  int32_t count = 0;
  do {
    digits[9 - count++] = "0123456789ABCDEF"[magnitude % base];
    magnitude /= base;
  } while (magnitude);
  PutTimes(writer, width.padding, width.minimum - count);
  int32_t shown = Minimum(count, int32_t(width.maximum));
  PutBytes(writer, digits + 10 - shown, size_t(shown));
}

void PutSigned(Writer& writer, const Modifiers& modifiers, Arguments& arguments) {
  WidthGroup width = TakeIntegerModifiers(modifiers, arguments);
  uint32_t value = NextWord(arguments);
  bool isNegative = int32_t(value) < 0;
  if (isNegative) Put(writer, '-');
  PutMagnitude(writer, isNegative ? 0 - value : value, 10, width);
}

void PutUnsigned(Writer& writer, const Modifiers& modifiers, Arguments& arguments, uint32_t base) {
  WidthGroup width = TakeIntegerModifiers(modifiers, arguments);
  PutMagnitude(writer, NextWord(arguments), base, width);
}

// ---- Fractions ----------------------------------------------------------------------------------------------------

struct FractionModifiers {
  bool wantsSign;
  WidthGroup integer, fraction;
};

FractionModifiers TakeFractionModifiers(Modifiers modifiers, Arguments& arguments) {
  FractionModifiers answer;
  answer.wantsSign = Take(modifiers, '+');
  if (!answer.wantsSign && Take(modifiers, 's')) answer.wantsSign = (NextWord(arguments) & 0xFF) != 0;
  answer.integer = TakeWidthGroup(modifiers, arguments, {' ', 0, 255});
  Take(modifiers, '.');
  answer.fraction = TakeWidthGroup(modifiers, arguments, {'0', 0, 10});
  return answer;
}

// How many decimals the magnitude needs: up to the last one among places minimum + 1 to maximum that is not 0. It
// is judged by the first 25 digits of its exact value.
int32_t ChooseDecimals(double magnitude, int32_t minimum, int32_t maximum) {
  constexpr int32_t kDigits = 25;
  char text[kDigits + 16]; // "d.ddd...e+ddd"
  char* end = std::to_chars(text, text + sizeof text, magnitude, std::chars_format::scientific, kDigits - 1).ptr;
  int32_t exponent = 0;
  const char* exponentText = text + 1 + kDigits + 1;
  if (*exponentText == '+') ++exponentText;
  std::from_chars(exponentText, end, exponent);
  // The digit at decimal place n, counted from 1, has the index exponent + n; the point stands behind index 0.
  int32_t decimals = minimum;
  for (int32_t place = Maximum(minimum + 1, -exponent); place <= maximum && exponent + place < kDigits; ++place) {
    int32_t index = exponent + place;
    if (text[index == 0 ? 0 : index + 1] != '0') decimals = place;
  }
  return decimals;
}

// A rounded number in digits, without its point.
struct Digits {
  char text[640];       // 309 ahead of the point, one of it, up to 255 behind it
  int32_t integerCount; // digits ahead of the point, at least one
};

void RoundTo(double magnitude, int32_t decimals, Digits& out) {
  char* end = std::to_chars(out.text, out.text + sizeof out.text, magnitude, std::chars_format::fixed, decimals).ptr;
  out.integerCount = int32_t(end - out.text) - (decimals ? decimals + 1 : 0);
  if (decimals) std::memmove(out.text + out.integerCount, out.text + out.integerCount + 1, decimals);
}

// Columns above the digits get padding, and digits above the columns are dropped.
void PutIntegerPart(Writer& writer, const Digits& digits, const WidthGroup& width) {
  int32_t columns = Maximum(1, PinValue(width.minimum, digits.integerCount, width.maximum));
  PutTimes(writer, width.padding, columns - digits.integerCount);
  int32_t shown = Minimum(columns, digits.integerCount);
  PutBytes(writer, digits.text + digits.integerCount - shown, size_t(shown));
}

void PutFraction(Writer& writer, const Modifiers& modifiers, Arguments& arguments) {
  FractionModifiers wanted = TakeFractionModifiers(modifiers, arguments);
  double value = va_arg(arguments.list, double);
  if (std::isnan(value)) {
    PutBytes(writer, "NAN", 3);
    return;
  }
  if (value < 0) {
    Put(writer, '-');
  } else if (wanted.wantsSign) {
    Put(writer, '+');
  }
  double magnitude = std::fabs(value);
  if (std::isinf(magnitude)) {
    PutBytes(writer, "inf", 3);
    return;
  }
  int32_t decimals = ChooseDecimals(magnitude, wanted.fraction.minimum, wanted.fraction.maximum);
  Digits digits;
  RoundTo(magnitude, decimals, digits);
  PutIntegerPart(writer, digits, wanted.integer);
  if (decimals == 0) return;
  Put(writer, '.');
  PutBytes(writer, digits.text + digits.integerCount, size_t(decimals));
}

// ---- The passes ---------------------------------------------------------------------------------------------------

void Convert(Writer& writer, const Directive& directive, Arguments& arguments) {
  switch (directive.letter) {
  case 'd':
    PutSigned(writer, directive.modifiers, arguments);
    break;
  case 'u':
    PutUnsigned(writer, directive.modifiers, arguments, 10);
    break;
  case 'x':
    PutUnsigned(writer, directive.modifiers, arguments, 16);
    break;
  case 'f':
    PutFraction(writer, directive.modifiers, arguments);
    break;
  case 'c':
    Put(writer, char(NextWord(arguments)));
    break;
  case '%':
    Put(writer, '%');
    break;
  case 's': {
    const char* text = va_arg(arguments.list, const char*);
    PutBytes(writer, text, StrLength(text));
    break;
  }
  default:
    break; // an unknown directive gives nothing
  }
}

// Writes the text without a terminator to the buffer, or only measures it when that is null; answers its length.
size_t RunFormat(char* buffer, const char* format, va_list list) {
  Writer writer = {buffer, 0};
  Arguments arguments;
  va_copy(arguments.list, list);
  const char* at = format;
  while (*at) {
    if (*at != '%') {
      Put(writer, *at++);
    } else if (at[1] == 0) {
      break;
    } else {
      Directive directive = ReadDirective(at);
      Convert(writer, directive, arguments);
      at = directive.behind;
    }
  }
  va_end(arguments.list);
  return writer.length;
}

// Null only while the program ends for want of memory.
char* FormatNewList(const char* format, va_list list) {
  const char* copy = PrivateFormat(format);
  auto* text = static_cast<char*>(MemAlloc(RunFormat(nullptr, copy, list) + 1));
  if (text) text[RunFormat(text, copy, list)] = 0;
  return text;
}

} // namespace

char* FormatNew(const char* format, ...) {
  va_list list;
  va_start(list, format);
  char* text = FormatNewList(format, list);
  va_end(list);
  return text;
}

char* FormatTemp(const char* format, ...) {
  va_list list;
  va_start(list, format);
  char* text = FormatNewList(format, list);
  va_end(list);
  return static_cast<char*>(TempAdopt(text));
}

char* FormatInto(char* buffer, const char* format, ...) {
  va_list list;
  va_start(list, format);
  buffer[RunFormat(buffer, PrivateFormat(format), list)] = 0;
  va_end(list);
  return buffer;
}

char* FormatInt(char* buffer, int32_t value) {
  return FormatInto(buffer, "%d%", value);
}

} // namespace framereel
