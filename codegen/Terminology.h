// The names of the host's identifiers: the published constants with their four-character codes,
// and the string IDs that the host keeps for identifiers made at run time.
//
//   char name[kNameSize];
//   LongToStr(0x73657464, "event", name);   // "eventSet"
//   LongToStr(0x73657464, "unit", name);    // "'setd'", as no unit has this code
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// One published constant. An identifier may stand in several rows, as a key and a class, say.
struct PSConst {
  std::uint32_t id;
  const char* name;
};

inline constexpr std::size_t kPSConstCount = 2032;

/// The host's published terminology. Where an identifier is searched, the first row that fits wins.
extern const PSConst PSConstA[kPSConstCount];

/// The size of every buffer for a name, the terminating zero included.
inline constexpr std::size_t kNameSize = 1024;

/// The greatest run-time identifier: four-character codes lie above it.
inline constexpr std::int32_t kLastRuntimeID = 0x2020201F;

/// True for an identifier that the host made at run time. The number counts as signed here, so
/// every identifier with its top bit set is one. [any-thread]
constexpr bool isRuntimeID(std::uint32_t id) {
  return static_cast<std::int32_t>(id) <= kLastRuntimeID;
}

/// The display name of `id`: for a run-time identifier the host's string ID; else,
/// or where the host has none, the first name of PSConstA for `id` that contains `kind`; where
/// there is none, the identifier's four bytes between apostrophes. It lies in `buffer` or in the
/// table.
/// `kind`: "event", "key", "class", "enum", "type", "unit" or "form"; any text is searched for,
/// case-sensitive, anywhere in the names; the empty text is in each.
/// A zero byte within an identifier ends the text there, as it ends any C string.
/// REQUIRES: `kind` is not null; `buffer` holds kNameSize characters.
/// Throws the error as std::uint32_t where the host's action control suite is needed and cannot be
/// acquired. [main-thread]
std::string_view nameOfID(std::uint32_t id, const char* kind, char* buffer);

/// The same, written to `out` and ended with a zero byte. Where it throws, `out` is empty.
/// REQUIRES: as above, for `out`. [main-thread]
void LongToStr(std::int32_t id, const char* kind, char* out);

/// The identifier of the first four characters, the first one in the most significant byte. A
/// character of 0x80 or more is negative and sets all bits above its own.
/// REQUIRES: `text` has four characters that may be read. [any-thread]
std::uint32_t PIUCharToID(const char* text);
