// Text routines of the host's plug-in toolkit: length-prefixed strings, bounded concatenation, a
// suffix match, and conversion between numbers and text.
//
// A length-prefixed string is a buffer of 256 bytes: the length (0 to 255), then the characters.
// Routines that append to one also write a zero byte after the last character, which makes the
// string zero-terminated from its second byte on. To leave room for that byte, they limit the
// length to 254. Lengths of zero-terminated strings are signed 16-bit numbers: no routine but
// `PIstrlcat` reads more than 32767 characters.
//
//   unsigned char text[256] = {};
//   DoubleToString(text, 1, 1.25);                // "1.3"
//   HostStringMatch(text, ".3", false);           // 1: the text ends with the pattern
//
// Some results look odd; other code and files in the field depend on them as they are. No routine
// throws. [any-thread], on buffers that no other thread uses.
//
// REQUIRES, of every routine: buffers have the sizes above; pointers are not null unless the
// routine's comment allows it; source and destination do not overlap unless it allows that.
#pragma once

#include <cstddef>
#include <cstdint>

/// The most characters of a length-prefixed string, and of one with a zero byte at its end.
inline constexpr unsigned char kLongestPString = 255;
inline constexpr unsigned char kLongestTerminatedPString = 254;

/// Appends bytes of `source`, from index `start` on, to the length-prefixed `destination`, adds a
/// zero byte, and returns the new length. With `length` the old length of `destination`, the number
/// of bytes appended is `count` if `count - start + length` is below 256, else
/// `start + 255 - length`. Before each byte the length is incremented modulo 256; the byte is
/// stored at the new length. A final length of 255 becomes 254.
/// REQUIRES: all bytes taken from `source` can be read, as is the case for a length-prefixed source
/// with `start` 1 and its length as `count`.
short AppendString(unsigned char* destination, const unsigned char* source, short start,
                   short count);

/// Appends `character` and a zero byte to the length-prefixed `destination` and returns the new
/// length. If `destination` has 254 or 255 characters, `character` is dropped and the length
/// becomes 254.
short AppendCharToString(unsigned char* destination, char character);

/// The length of a zero-terminated string, at most 32767.
short PIstrlen(const char* text);

/// Appends `source` to the zero-terminated `destination` in a buffer of `size` bytes, cut to fit,
/// with a terminator, and returns the length that the uncut result would have. If `destination` has
/// no zero byte within `size` bytes, writes nothing and returns `size` plus the length of `source`.
std::size_t PIstrlcat(char* destination, const char* source, std::size_t size);

/// Appends `source` to the zero-terminated `destination`, up to a length of 32767 characters, and
/// returns the new length. If `destination` is that long already, it is left unchanged.
/// REQUIRES: room in `destination` for the result and its zero byte.
short HostStringCat(char* destination, const char* source);

/// Converts 'A' to 'Z' to 'a' to 'z'; returns every other character unchanged.
char UpperToLower(char character);

/// The index at which the zero-terminated `text` ends with `pattern`, or -1 if it does not.
///
/// The search walks through `text` and never goes back:
/// - A character that breaks a partial match is not tried as the start of another: "aabc" does not
///   match "abc".
/// - If the text ends inside a match, the result is the start of that match: "xxab" with "abc"
///   gives 2.
/// - The walk stops at index `limit` + 1 at the latest, but not before index 1. The result is -1
///   unless it stops at a zero byte or at a byte of 128 or above.
/// - If `limit` is below 256, the walk stops at the first zero byte; otherwise only at a zero byte
///   that directly follows a match of the whole pattern.
///
/// REQUIRES: if `limit` is 256 or more, `text` can be read up to index `limit` + 1; if `text` and
/// `pattern` are both empty, both can be read up to index `limit` + 1, at least up to index 1.
short HostMatch(const char* text, const char* pattern, bool ignoreCase, short limit);

/// Limits the length of the length-prefixed `text` to 254, writes a zero byte after its last
/// character, and returns `HostMatch` of its characters with its length as the limit.
short HostStringMatch(unsigned char* text, const char* pattern, bool ignoreCase);

/// `base` to the power of `exponent`, by repeated multiplication. Returns 1.0 if the low 16 bits of
/// `exponent` are zero; any other exponent below 1 counts as 1.
double power(std::uint32_t base, std::int32_t exponent);

/// Writes `number` in decimal as a length-prefixed string with a zero byte at the end. Does nothing
/// if `destination` is null.
void NumToString(std::int32_t number, unsigned char* destination);

/// Writes `value` in fixed-point notation, rounded to `places` decimal places, as a length-prefixed
/// string with a zero byte at the end, and returns the last digit written, as a number. If
/// `destination` is null, writes nothing and returns 0.
///
/// - At least one place is written. Of several trailing zeros only one is dropped: 2.0 with 2
///   places gives "2.0".
/// - Values between -1 and 0 lose their sign.
/// - The last place may be one too low: 2.502 with 3 places gives "2.501".
/// - The integer part is the low 32 bits, as a signed number, of `value` truncated to a 64-bit
///   integer; 0 if `value` is out of that range or NaN.
int DoubleToString(unsigned char* destination, short places, double value);

/// Splits the length-prefixed `number` at its last '.' or ',': appends the characters after it to
/// the length-prefixed `fraction` and leaves those before it in `number`. If there is no separator,
/// nothing changes.
void DivideAtDecimal(unsigned char* number, unsigned char* fraction);

/// Reads a whole number from the length-prefixed `text`: spaces, at most one '-' before the first
/// digit, digits, spaces. Returns 0 if it is not a number (`*value` is not written), 1 if it is not
/// negative, 2 if it is. Fewer than 10 digits give the value 0, 10 or more 2147483647 or
/// -2147483647.
///
/// `text` is replaced by the digits before its first invalid character, with a zero byte unless
/// there are 255; it is left unchanged if neither a digit nor a '-' comes before that character.
int StringToNumber(unsigned char* text, std::int32_t* value);

/// Placeholder: does not read `text` and does not write `*value`. `StringToNumber` calls it for
/// fewer than 10 digits; its results depend on it.
void StringToNum(const unsigned char* text, std::int32_t* value);

/// Reads a number from the length-prefixed `text`, with an optional fraction after the last '.' or
/// ','. Both parts are read with `StringToNumber`; a part that is not a number counts as 0. Returns
/// 0 if neither part is a number (`*value` is not written), 1 if neither is negative, 2 otherwise.
///
/// `*value` is the fraction, divided by 10 to the power of its number of digits and negated if the
/// result is 2, plus the integer part. `text` is replaced by its integer part as `StringToNumber`
/// leaves it.
int StringToDouble(unsigned char* text, double* value);

/// Appends `source` to `destination`, both length-prefixed, and returns the new length: the sum of
/// both lengths modulo 256. Characters beyond 255 are dropped. Writes no zero byte. The two may be
/// the same buffer.
unsigned char PStrCat(const unsigned char* source, unsigned char* destination);

/// Inserts `source` before the characters of `destination`, both length-prefixed, and returns the
/// new length: the sum of both lengths modulo 256. Characters beyond 255 are dropped at the end.
/// Writes no zero byte. The two may be the same buffer.
unsigned char PStrInsert(const unsigned char* source, unsigned char* destination);

/// Converts the length-prefixed `source` to a zero-terminated string in `destination`. The two may
/// be the same buffer. REQUIRES: room in `destination` for the characters and the zero byte.
void PToCStr(const unsigned char* source, char* destination);

/// Converts the zero-terminated `source`, cut to 32767 characters, to a length-prefixed string with
/// a zero byte at the end. All characters are copied; the length byte is the length modulo 256.
/// The two may be the same buffer.
/// REQUIRES: room in `destination` for the length byte, the characters and the zero byte.
void CToPStr(const char* source, unsigned char* destination);

/// Writes the four bytes of `type` as characters, most significant first, and a zero byte.
/// REQUIRES: `buffer` has at least 5 bytes.
void PIType2Char(std::uint32_t type, char* buffer);

/// The code that four characters make, most significant first. Each character is sign-extended and
/// merged with OR, so a character of 128 or above sets all higher bits.
/// REQUIRES: `characters` has at least 4 bytes.
std::uint32_t PIChar2Type(const char* characters);

/// Copies the length-prefixed `message`, cut to 254 characters, to the host's length-prefixed
/// `errorString`, unless that is null, and returns the host's report-string error, -30904.
short HostReportError(unsigned char* errorString, const unsigned char* message);
