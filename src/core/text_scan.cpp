// A new conversion is a function and a row of Convert.
#include "core/text_scan.h"

#include <cstdarg>
#include <cstring>

#include "core/directives.h"
#include "core/memory.h"
#include "core/strings.h"

namespace framereel {

namespace {

// The state of one run.
struct Scan {
  const char* input; // the next byte
  va_list outputs;
};

void SkipAll(Scan& scan, char c) {
  while (*scan.input && *scan.input == c) ++scan.input;
}

// ---- Numbers ------------------------------------------------------------------------------------------------------

struct NumberModifiers {
  char size;            // b, l, s or 0
  uint32_t fieldLength; // digits
  bool isStored;
};

// Reads the modifiers and does the skips that they ask for.
NumberModifiers TakeNumberModifiers(Scan& scan, Modifiers modifiers) {
  constexpr uint32_t kDefaultLength = 10;
  NumberModifiers answer = {TakeSizeLetter(modifiers), 0, true};
  bool skipsSpaces = true;
  while (modifiers.at < modifiers.end) {
    if (Take(modifiers, 'l')) {
      answer.fieldLength = TakeNumber(modifiers);
    } else if (Take(modifiers, 's')) {
      if (modifiers.at < modifiers.end) SkipAll(scan, *modifiers.at++);
    } else if (Take(modifiers, 'w')) {
      answer.isStored = false;
    } else if (Take(modifiers, 'x')) {
      skipsSpaces = false;
    } else {
      break;
    }
  }
  if (answer.fieldLength == 0) answer.fieldLength = kDefaultLength;
  if (skipsSpaces) SkipAll(scan, ' ');
  return answer;
}

// The value of a digit of either base; 16 for any other byte.
uint32_t DigitValue(char c) {
  if (IsDigit(c)) return uint32_t(c - '0');
  char upper = UpperCase(c);
  return 'A' <= upper && upper <= 'F' ? uint32_t(upper - 'A') + 10 : 16;
}

// Takes a sign; true for "-".
bool TakeSign(Scan& scan) {
  bool isNegative = *scan.input == '-';
  if (isNegative || *scan.input == '+') ++scan.input;
  return isNegative;
}

void StoreInteger(Scan& scan, char size, uint32_t value) {
  void* out = va_arg(scan.outputs, void*);
  if (size == 'b') {
    auto low = uint8_t(value);
    std::memcpy(out, &low, sizeof low);
  } else if (size == 's') {
    auto low = uint16_t(value);
    std::memcpy(out, &low, sizeof low);
  } else {
    std::memcpy(out, &value, sizeof value);
  }
}

bool ScanInteger(Scan& scan, const Modifiers& modifiers, uint32_t base, bool takesSign) {
  NumberModifiers wanted = TakeNumberModifiers(scan, modifiers);
  bool isNegative = takesSign && TakeSign(scan);
  uint32_t value = 0;
  uint32_t digits = 0;
  for (; digits < wanted.fieldLength && DigitValue(*scan.input) < base; ++digits) {
    value = value * base + DigitValue(*scan.input++);
  }
  if (wanted.isStored) StoreInteger(scan, wanted.size, isNegative ? 0 - value : value);
  return digits > 0;
}

// The digits at the input, read as the decimals of a number.
double TakeDecimals(Scan& scan) {
  constexpr double kBeyondPrecision = 1e300; // digits from here on change nothing, and would run into infinity
  double digits = 0;
  double power = 1;
  for (; IsDigit(*scan.input); ++scan.input) {
    if (power >= kBeyondPrecision) continue;
    digits = digits * 10 + (*scan.input - '0');
    power *= 10;
  }
  return digits / power;
}

bool ScanFraction(Scan& scan, const Modifiers& modifiers) {
  const char* start = scan.input;
  NumberModifiers wanted = TakeNumberModifiers(scan, modifiers);
  bool isNegative = TakeSign(scan);
  double value = 0;
  for (; IsDigit(*scan.input); ++scan.input) value = value * 10 + (*scan.input - '0');
  if (*scan.input == '.') {
    ++scan.input;
    value += TakeDecimals(scan);
  }
  if (wanted.isStored) *va_arg(scan.outputs, double*) = isNegative ? -value : value;
  return scan.input != start;
}

// ---- Text ---------------------------------------------------------------------------------------------------------

enum class TextTarget : uint8_t { kBuffer, kNewString, kTemporary, kNothing };

struct TextModifiers {
  TextTarget target;
  char delimiter;
};

// Reads the modifiers and does the skips that they ask for.
TextModifiers TakeTextModifiers(Scan& scan, Modifiers modifiers) {
  TextModifiers answer = {TextTarget::kBuffer, ' '};
  bool isStored = true;
  bool skipsSpaces = true;
  while (modifiers.at < modifiers.end) {
    char letter = *modifiers.at++;
    bool takesByte = (letter == 'd' || letter == 's') && modifiers.at < modifiers.end;
    if (letter == 'a') {
      answer.target = TextTarget::kNewString;
    } else if (letter == 't') {
      answer.target = TextTarget::kTemporary;
    } else if (letter == 'd' && takesByte) {
      answer.delimiter = *modifiers.at++;
    } else if (letter == 's' && takesByte) {
      SkipAll(scan, *modifiers.at++);
    } else if (letter == 'w') {
      isStored = false;
    } else if (letter == 'x') {
      skipsSpaces = false;
    } else {
      break;
    }
  }
  if (!isStored) answer.target = TextTarget::kNothing;
  if (skipsSpaces) SkipAll(scan, ' ');
  return answer;
}

void StoreText(Scan& scan, TextTarget target, const char* text, size_t length) {
  if (target == TextTarget::kBuffer) {
    StrCopyN(text, va_arg(scan.outputs, char*), length);
  } else if (target == TextTarget::kNewString) {
    *va_arg(scan.outputs, char**) = StrDupN(text, length);
  } else if (target == TextTarget::kTemporary) {
    *va_arg(scan.outputs, char**) = StrTempN(text, length);
  }
}

bool ScanString(Scan& scan, const Modifiers& modifiers) {
  TextModifiers wanted = TakeTextModifiers(scan, modifiers);
  const char* start = scan.input;
  scan.input = StrFindEnd(start, wanted.delimiter);
  if (scan.input == start) return false;
  StoreText(scan, wanted.target, start, size_t(scan.input - start));
  return true;
}

bool ScanByte(Scan& scan) {
  if (!*scan.input) return false;
  *va_arg(scan.outputs, char*) = *scan.input++;
  return true;
}

// ---- The run ------------------------------------------------------------------------------------------------------

bool Convert(Scan& scan, const Directive& directive) {
  switch (directive.letter) {
  case 'd':
    return ScanInteger(scan, directive.modifiers, 10, true);
  case 'u':
    return ScanInteger(scan, directive.modifiers, 10, false);
  case 'x':
    return ScanInteger(scan, directive.modifiers, 16, true);
  case 'f':
    return ScanFraction(scan, directive.modifiers);
  case 's':
    return ScanString(scan, directive.modifiers);
  case 'c':
    return ScanByte(scan);
  default:
    return false;
  }
}

// Whether the input has all that the format names. A "%" at the very end is a literal.
bool Walk(Scan& scan, const char* format) {
  const char* at = format;
  while (*at) {
    if (*at == '%' && at[1]) {
      Directive directive = ReadDirective(at);
      if (!Convert(scan, directive)) return false;
      at = directive.behind;
    } else {
      if (*scan.input != *at) return false;
      ++scan.input;
      ++at;
    }
  }
  return true;
}

bool RunScan(const char* input, const char* format, va_list outputs) {
  const char* copy = PrivateFormat(format);
  Scan scan;
  scan.input = input;
  va_copy(scan.outputs, outputs);
  const bool success = Walk(scan, copy);
  va_end(scan.outputs);
  return success;
}

} // namespace

bool ScanText(const char* input, const char* format, ...) {
  va_list outputs;
  va_start(outputs, format);
  bool success = RunScan(input, format, outputs);
  va_end(outputs);
  return success;
}

int32_t ScanInt(const char* input) {
  int32_t value = 0;
  ScanText(input, "%d%", &value);
  return value;
}

} // namespace framereel
