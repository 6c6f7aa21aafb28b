// Conversion between numbers and text.
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "hostutil/Strings.h"

namespace {

constexpr int kMostPowersOfTen = 309;  // 10 to the power of 309 exceeds the range of a double

// Repeated products by 10.0, each of them rounded, so not always the double nearest to the power.
constexpr std::array<double, kMostPowersOfTen> kPowersOfTen = [] {
  std::array<double, kMostPowersOfTen> powers{1.0};
  for (std::size_t k = 1; k < powers.size(); ++k) powers[k] = powers[k - 1] * 10.0;
  return powers;
}();

double powerOfTen(int k) {
  if (k <= 0) return 1.0;
  if (k >= kMostPowersOfTen) return std::numeric_limits<double>::infinity();
  return kPowersOfTen[static_cast<std::size_t>(k)];
}

// The low 32 bits of `value` truncated to a 64-bit integer; 0 if it is out of range or NaN.
std::uint32_t truncated(double value) {
  constexpr double kBeyond = 9223372036854775808.0;
  if (!(std::fabs(value) < kBeyond)) return 0;
  return static_cast<std::uint32_t>(static_cast<std::int64_t>(value));
}

// The digit of `value` after the one of weight 1/`scale`, with the later digits as its fraction.
double nextDigit(double value, double scale) {
  const double scaled = value * scale;
  return (scaled - truncated(scaled)) * 10.0;
}

double rounded(double magnitude, int places) {
  if (nextDigit(magnitude, powerOfTen(places)) < 5.0) return magnitude;
  return magnitude + 5.0 / powerOfTen(places + 1);
}

// Drops one place at most, however many zeros there are; kept as texts in the field have it.
int withoutTrailingZero(double magnitude, int places) {
  const bool dropped = places >= 2 && nextDigit(magnitude, powerOfTen(places - 1)) < 1.0;
  return dropped ? places - 1 : places;
}

// Appends digits of `fraction` while any are left, at least 1, at most `places`; returns the last.
int appendFraction(unsigned char* destination, double fraction, int places) {
  std::uint32_t digit;
  do {
    fraction *= 10.0;
    digit = truncated(fraction);
    AppendCharToString(destination, static_cast<char>('0' + digit));
    fraction -= digit;
    --places;
  } while (fraction > 0.0 && places >= 1);
  return static_cast<int>(digit);
}

bool isSeparator(unsigned char c) { return (c | 2) == '.'; }  // '.' or ','

// The state of reading a text as a whole number.
struct Reading {
  int digits = 0;
  bool negative = false;
  bool trailing = false;
};

// Reads one character; false if it cannot be part of a number. Moves digits to the text's front.
bool takeCharacter(unsigned char c, unsigned char* text, Reading& reading) {
  if (c == ' ') {
    reading.trailing = reading.digits > 0;
    return true;
  }
  if (reading.trailing) return false;
  if (c == '-') {
    const bool first = reading.digits == 0 && !reading.negative;
    reading.negative = reading.negative || first;
    return first;
  }
  if (c < '0' || c > '9') return false;
  text[++reading.digits] = c;
  return true;
}

void setLength(unsigned char* text, int length) {
  text[0] = static_cast<unsigned char>(length);
  if (length < 255) text[length + 1] = 0;
}

}  // namespace

double power(std::uint32_t base, std::int32_t exponent) {
  if ((exponent & 0xFFFF) == 0) return 1.0;
  double product = base;
  while (--exponent >= 1) {
    const double next = product * base;
    if (next == product) break;  // 0, 1 or infinity: further steps change nothing
    product = next;
  }
  return product;
}

void NumToString(std::int32_t number, unsigned char* destination) {
  if (destination == nullptr) return;
  char* const first = reinterpret_cast<char*>(destination) + 1;
  char* const end = std::to_chars(first, first + 254, number).ptr;
  *end = 0;
  destination[0] = static_cast<unsigned char>(end - first);
}

int DoubleToString(unsigned char* destination, short places, double value) {
  if (destination == nullptr) return 0;
  const double magnitude = rounded(std::fabs(value), places);
  const int shownPlaces = withoutTrailingZero(magnitude, places);
  // Only the integer part has the sign, so values between -1 and 0 lose it; kept as callers in the
  // field have it.
  NumToString(static_cast<std::int32_t>(truncated(std::copysign(magnitude, value))), destination);
  AppendCharToString(destination, '.');
  return appendFraction(destination, magnitude - truncated(magnitude), shownPlaces);
}

void DivideAtDecimal(unsigned char* number, unsigned char* fraction) {
  const int length = number[0];
  int separator = length;
  while (separator > 0 && !isSeparator(number[separator])) --separator;
  if (separator == 0) return;
  AppendString(fraction, number, static_cast<short>(separator + 1),
               static_cast<short>(length - separator));
  number[0] = static_cast<unsigned char>(separator - 1);
  number[separator] = 0;
}

int StringToNumber(unsigned char* text, std::int32_t* value) {
  const int length = text[0];
  Reading reading;
  bool valid = true;
  for (int i = 1; valid && i <= length; ++i) valid = takeCharacter(text[i], text, reading);
  if (reading.digits == 0 && !reading.negative) return 0;
  setLength(text, reading.digits);
  if (!valid) return 0;
  // Fewer than 10 digits are left to StringToNum, which does nothing, so they read as 0; kept as
  // callers in the field have it.
  *value = reading.digits < 10 ? 0 : std::numeric_limits<std::int32_t>::max();
  if (reading.digits < 10) StringToNum(text, value);
  if (reading.negative) *value = -*value;
  return reading.negative ? 2 : 1;
}

void StringToNum(const unsigned char*, std::int32_t*) {}

int StringToDouble(unsigned char* text, double* value) {
  unsigned char fraction[256] = {};
  DivideAtDecimal(text, fraction);
  std::int32_t integerValue = 0;
  std::int32_t fractionValue = 0;
  const int integerKind = StringToNumber(text, &integerValue);
  const int fractionKind = StringToNumber(fraction, &fractionValue);
  if (integerKind == 0 && fractionKind == 0) return 0;
  const bool negative = integerKind == 2 || fractionKind == 2;
  const double part = fractionValue / powerOfTen(fraction[0]);
  *value = (negative ? -part : part) + integerValue;
  return negative ? 2 : 1;
}
