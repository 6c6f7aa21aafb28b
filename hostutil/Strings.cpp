#include "hostutil/Strings.h"

#include <PIGeneral.h>

#include <algorithm>
#include <bitset>
#include <cstdint>
#include <cstring>

namespace {

constexpr int kLongestCString = 32767;

int boundedLength(const char* text, int bound) {
  const void* end = std::memchr(text, 0, static_cast<std::size_t>(bound));
  return end == nullptr ? bound : static_cast<int>(static_cast<const char*>(end) - text);
}

bool areSame(char a, char b, bool ignoreCase) {
  return a == b || (ignoreCase && UpperToLower(a) == UpperToLower(b));
}

// The set of characters that can be part of a match.
std::bitset<256> charactersOf(const char* pattern, int length, bool ignoreCase) {
  std::bitset<256> characters;
  for (int i = 0; i < length; ++i) {
    const char c = ignoreCase ? UpperToLower(pattern[i]) : pattern[i];
    characters[static_cast<unsigned char>(c)] = true;
    if (ignoreCase && c >= 'a' && c <= 'z') characters[static_cast<unsigned char>(c - 32)] = true;
  }
  return characters;
}

// The last index from which a walk gives the same result as from index 0: a character that cannot
// be part of a match discards everything before it. For walks that end at a zero byte or the limit.
int lastFreshStart(const char* text, const char* pattern, int patternLength, bool ignoreCase,
                   int limit) {
  if (text[0] == 0) return 0;
  const auto characters = charactersOf(pattern, patternLength, ignoreCase);
  int i = limit < 1 ? 0 : boundedLength(text + 1, limit);
  while (i > 0 && characters[static_cast<unsigned char>(text[i])]) --i;
  return i;
}

}  // namespace

short AppendString(unsigned char* destination, const unsigned char* source, short start,
                   short count) {
  const int length = destination[0];
  // The bound mixes the index in the source with the room in the destination. It decides which
  // bytes a caller gets near the end of the buffer; kept as callers in the field have it.
  const int taken = count - start + length < 256 ? count : start + 255 - length;
  for (int i = 0; i < taken; ++i) {
    ++destination[0];  // first, modulo 256: a length that wraps stays inside the buffer
    destination[destination[0]] = source[start + i];
  }
  destination[0] = std::min(destination[0], kLongestTerminatedPString);
  destination[destination[0] + 1] = 0;
  return destination[0];
}

short AppendCharToString(unsigned char* destination, char character) {
  if (destination[0] < kLongestTerminatedPString) {
    const unsigned char length = ++destination[0];
    destination[length] = static_cast<unsigned char>(character);
    destination[length + 1] = 0;
    return length;
  }
  destination[0] = kLongestTerminatedPString;
  destination[kLongestTerminatedPString + 1] = 0;
  return kLongestTerminatedPString;
}

short PIstrlen(const char* text) {
  return static_cast<short>(boundedLength(text, kLongestCString));
}

std::size_t PIstrlcat(char* destination, const char* source, std::size_t size) {
  const std::size_t sourceLength = std::strlen(source);
  const void* end = size == 0 ? nullptr : std::memchr(destination, 0, size);
  if (end == nullptr) return size + sourceLength;
  const auto length = static_cast<std::size_t>(static_cast<const char*>(end) - destination);
  const std::size_t taken = std::min(sourceLength, size - length - 1);
  std::memcpy(destination + length, source, taken);
  destination[length + taken] = 0;
  return length + sourceLength;
}

short HostStringCat(char* destination, const char* source) {
  const int length = PIstrlen(destination);
  if (length == kLongestCString) return kLongestCString;
  const int taken = std::min<int>(PIstrlen(source), kLongestCString - length);
  std::memcpy(destination + length, source, static_cast<std::size_t>(taken));
  destination[length + taken] = 0;
  return static_cast<short>(length + taken);
}

char UpperToLower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

short HostMatch(const char* text, const char* pattern, bool ignoreCase, short limit) {
  const int patternLength = PIstrlen(pattern);
  const bool zeroByteEnds = limit < 256;
  // The walk below reads the byte after the first one, which may not exist here.
  if (text[0] == 0 && patternLength > 0 && zeroByteEnds) return -1;
  int matched = 0;
  int start = -1;
  int i = zeroByteEnds ? lastFreshStart(text, pattern, patternLength, ignoreCase, limit) : 0;
  do {
    // After the whole pattern this compares with its zero byte: only a match at the end of the text
    // survives. Characters before the current one are never tried again.
    if (areSame(text[i], pattern[matched], ignoreCase)) {
      if (matched++ == 0) start = i;
    } else {
      matched = 0;
      start = -1;
    }
    ++i;
  } while (i <= limit && (text[i] != 0 || (!zeroByteEnds && matched < patternLength)));
  // A byte of 128 or above is negative as a signed character and counts as an end, too.
  return static_cast<signed char>(text[i]) <= 0 ? static_cast<short>(start) : short{-1};
}

short HostStringMatch(unsigned char* text, const char* pattern, bool ignoreCase) {
  text[0] = std::min(text[0], kLongestTerminatedPString);
  text[text[0] + 1] = 0;
  return HostMatch(reinterpret_cast<const char*>(text) + 1, pattern, ignoreCase, text[0]);
}

unsigned char PStrCat(const unsigned char* source, unsigned char* destination) {
  const int length = destination[0];
  const int taken = std::min<int>(source[0], kLongestPString - length);
  const auto sum = static_cast<unsigned char>(length + source[0]);
  std::memmove(destination + 1 + length, source + 1, static_cast<std::size_t>(taken));
  return destination[0] = sum;  // modulo 256: the length shows that characters are lost
}

unsigned char PStrInsert(const unsigned char* source, unsigned char* destination) {
  const int inserted = source[0];
  const int kept = std::min<int>(destination[0], kLongestPString - inserted);
  const auto sum = static_cast<unsigned char>(destination[0] + inserted);
  std::memmove(destination + 1 + inserted, destination + 1, static_cast<std::size_t>(kept));
  std::memmove(destination + 1, source + 1, static_cast<std::size_t>(inserted));
  return destination[0] = sum;  // modulo 256: the length shows that characters are lost
}

void PToCStr(const unsigned char* source, char* destination) {
  const std::size_t length = source[0];
  std::memmove(destination, source + 1, length);
  destination[length] = 0;
}

void CToPStr(const char* source, unsigned char* destination) {
  const auto length = static_cast<std::size_t>(PIstrlen(source));
  std::memmove(destination + 1, source, length);
  destination[length + 1] = 0;
  destination[0] =
      static_cast<unsigned char>(length);  // modulo 256, as callers in the field have it
}

void PIType2Char(std::uint32_t type, char* buffer) {
  for (int i = 0; i < 4; ++i) buffer[i] = static_cast<char>(type >> (24 - 8 * i));
  buffer[4] = 0;
}

std::uint32_t PIChar2Type(const char* characters) {
  std::uint32_t type = 0;
  for (int i = 0; i < 4; ++i) {
    // Sign-extended, so a character of 128 or above sets all higher bits; kept as callers in the
    // field have it.
    const std::int32_t extended = static_cast<signed char>(characters[i]);
    type = (type << 8) | static_cast<std::uint32_t>(extended);
  }
  return type;
}

short HostReportError(unsigned char* errorString, const unsigned char* message) {
  if (errorString == nullptr) return errReportString;
  errorString[0] = 0;
  AppendString(errorString, message, 1, message[0]);
  return errReportString;
}
