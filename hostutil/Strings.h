// Text routines of the host's plug-in toolkit: length-prefixed strings, bounded concatenation, a
// suffix match, and conversion between numbers and text.
//
// A length-prefixed string is a buffer of 256 bytes: the length (0 to 255), then the characters.
// Routines that grow one also keep a zero byte behind the last character, so that the string is a
// zero-terminated one from its second byte on; to leave room for that byte they cap the length at
// 254. A zero-terminated string is counted in signed 16 bits: no routine but `PIstrlcat` looks
// further than 32767 characters.
//
//   unsigned char text[256] = {};
//   DoubleToString(text, 1, 1.25);                // "1.3"
//   HostStringMatch(text, ".3", false);           // 1: the text ends with the pattern
//
// Much here looks odd and is meant: other code and files in the field depend on the results as they
// are. Every routine may be called from any thread [any-thread] on buffers of the caller's own;
// none throws.
//
// REQUIRES, of every routine: buffers of the sizes above; no null pointer but where one is allowed;
// buffers of source and destination do not overlap but where it says so.
#pragma once

#include <cstddef>
#include <cstdint>

/// The most characters of a length-prefixed string, and of one that leaves room for a zero byte.
inline constexpr unsigned char kLongestPString = 255;
inline constexpr unsigned char kLongestTerminatedPString = 254;

/// Appends bytes of `source`, from index `start` on, to the length-prefixed `destination`.
/// The number of bytes is `count` where `count - start + length of destination` is below 256, else
/// `start + 255 - length of destination`; the length byte is raised, as 8 bits, before each byte is
/// stored at the new length. A length of 255 becomes 254 at the end. Returns the new length.
/// REQUIRES: `source` can be read from `start` on for as many bytes as are taken. That holds for
/// every length-prefixed source with start 1 and its length as count.
short AppendString(unsigned char* destination, const unsigned char* source, short start,
                   short count);

/// Appends `character` to the length-prefixed `destination` and returns the new length. A string of
/// 254 or 255 characters becomes, and stays, one of 254: the character is dropped.
short AppendCharToString(unsigned char* destination, char character);

/// The length of a zero-terminated string, at most 32767.
short PIstrlen(const char* text);

/// Bounded concatenation with the usual contract: appends `source` to the zero-terminated
/// `destination` in a buffer of `size` bytes, cutting it off where the room ends, and returns the
/// length that the full result would have. Without a zero byte within `size` bytes nothing is
/// written, and the result is `size` plus the length of `source`.
std::size_t PIstrlcat(char* destination, const char* source, std::size_t size);

/// Appends `source` to the zero-terminated `destination`, at most up to 32767 characters, and
/// returns the new length. A destination of 32767 characters or more is left as it is.
/// REQUIRES: room in `destination` for the result and its zero byte.
short HostStringCat(char* destination, const char* source);

/// 'A' to 'Z' become 'a' to 'z'; every other character stays.
char UpperToLower(char character);

/// Answers whether the zero-terminated `text` ends with `pattern`, and where that ending starts:
/// the index, or -1. The walk through the text never goes back, so a character that breaks a
/// partial match is not tried as the start of another: "aabc" does not match "abc". A text that
/// ends inside a match answers where it started: "xxab" with "abc" gives 2. With `limit` below 256
/// the walk stops at the zero byte or at index `limit` + 1, whichever comes first, but not before
/// index 1; it answers only where it stopped at a zero byte or at a byte of 128 and above. With
/// `limit` of 256 or more a zero byte ends the walk only where the whole pattern was matched just
/// before it. REQUIRES: with a limit of 256 or more, `text` can be read up to index `limit` + 1; an
/// empty text with an empty pattern, both can be read up to index `limit` + 1 (at least 1) as well.
short HostMatch(const char* text, const char* pattern, bool ignoreCase, short limit);

/// Caps the length of the length-prefixed `text` at 254, puts a zero byte behind its last
/// character, and returns `HostMatch` of its characters with its length as the limit.
short HostStringMatch(unsigned char* text, const char* pattern, bool ignoreCase);

/// `base` multiplied into 1.0 `exponent` times. An exponent whose low 16 bits are zero gives 1.0;
/// any other below 1 gives `base` once.
double power(std::uint32_t base, std::int32_t exponent);

/// Writes the decimal text of `number` as a length-prefixed string that ends with a zero byte.
/// A null destination is ignored.
void NumToString(std::int32_t number, unsigned char* destination);

/// Writes the fixed-point text of `value` with up to `places` decimal places as a length-prefixed
/// string, and returns the last digit written as a number. A null destination: nothing is written,
/// and the result is 0.
///
/// At least one place is always written, and of several trailing zeros only one place is dropped
/// beforehand; 2.0 with 2 places is "2.0". Values between -1 and 0 lose their sign. Values of which
/// the last place is not exact may lose it: 2.502 with 3 places is "2.501".
/// The integer part is taken from the low 32 bits of the value's truncation to a 64-bit integer,
/// which counts as 0 for values beyond that range and for what is not a number.
int DoubleToString(unsigned char* destination, short places, double value);

/// Splits the length-prefixed `number` at its last '.' or ',': what follows is appended to the
/// length-prefixed `fraction`, `number` keeps what comes before. Without a separator nothing
/// changes.
void DivideAtDecimal(unsigned char* number, unsigned char* fraction);

/// Reads a whole number: spaces, at most one '-' before the first digit, digits, spaces. `text` is
/// rewritten as its bare digits as far as it could be read, unless it has neither a digit nor a
/// '-'. Returns 0 (not a number, `*value` is not written), 1 (not negative) or 2 (negative). Fewer
/// than 10 digits read as the value 0, 10 or more as 2147483647 or -2147483647. A text of 255
/// digits has no room for the zero byte and gets none.
int StringToNumber(unsigned char* text, std::int32_t* value);

/// Does nothing, on purpose: it stands where a host reads the digits of a short number, and the
/// results of `StringToNumber` depend on its not doing so.
void StringToNum(const unsigned char* text, std::int32_t* value);

/// Reads a number with an optional fraction behind the last '.' or ',', each part as
/// `StringToNumber` reads it; a part that does not read counts as 0. `text` is left as its integer
/// part, rewritten as its digits. The fraction is divided by 10 to the power of its rewritten
/// length and negated, where the number is negative, before the integer part is added. Returns 0
/// (neither part is a number, `*value` is not written), 1 (not negative) or 2 (negative).
int StringToDouble(unsigned char* text, double* value);

/// Appends the characters of `source` to `destination`, both length-prefixed and possibly the same,
/// and returns the new length: the sum of both modulo 256. Characters that do not fit into 255 are
/// dropped. No zero byte is written.
unsigned char PStrCat(const unsigned char* source, unsigned char* destination);

/// Puts the characters of `source` in front of those of `destination`, both length-prefixed and
/// possibly the same, and returns the new length: the sum of both modulo 256. Characters that do
/// not fit into 255 are dropped at the end. No zero byte is written.
unsigned char PStrInsert(const unsigned char* source, unsigned char* destination);

/// Copies the characters of the length-prefixed `source` and ends them with a zero byte. The two
/// may be the same buffer. REQUIRES: room in `destination` for the characters and the zero byte.
void PToCStr(const unsigned char* source, char* destination);

/// Copies the zero-terminated `source` (at most 32767 characters) behind the length byte of
/// `destination`, with a zero byte at the end. The length byte gets the low 8 bits of the length.
/// The two may be the same buffer.
/// REQUIRES: room in `destination` for the length byte, the characters and the zero byte.
void CToPStr(const char* source, unsigned char* destination);

/// Writes the four characters of `type`, most significant first, and a zero byte.
/// REQUIRES: `buffer` has at least 5 bytes.
void PIType2Char(std::uint32_t type, char* buffer);

/// The code of four characters, most significant first. Each character is taken as a signed byte
/// and merged with OR, so a character of 128 and above sets all the bits before it. REQUIRES:
/// `characters` has at least 4 bytes.
std::uint32_t PIChar2Type(const char* characters);

/// Puts the length-prefixed `message` into the host's length-prefixed `errorString`, unless that is
/// null, and returns the host's report-string error, -30904.
short HostReportError(unsigned char* errorString, const unsigned char* message);
