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

/// One published constant. An identifier may have several rows, for example as a key and as a
/// class.
struct PSConst {
  std::uint32_t id;
  const char* name;
};

inline constexpr std::size_t kPSConstCount = 2032;

/// The host's published terminology. A search returns the first row that matches.
extern const PSConst PSConstA[kPSConstCount];

/// The size of every buffer for a name, in bytes, terminator included.
inline constexpr std::size_t kNameSize = 1024;

/// The greatest run-time identifier; four-character codes lie above it.
inline constexpr std::int32_t kLastRuntimeID = 0x2020201F;

/// True for an identifier that the host made at run time. Compares the number as signed, so every
/// identifier with its top bit set counts as one. [any-thread]
constexpr bool isRuntimeID(std::uint32_t identifier) {
  return static_cast<std::int32_t>(identifier) <= kLastRuntimeID;
}

/// What a name is, which its characters do not show: a host's string ID may begin with an
/// apostrophe, too.
enum class NameKind {
  kStringID,  ///< the host's string ID of a run-time identifier: any characters
  kConstant,  ///< a constant of the published terminology
  kCode,      ///< an identifier's four bytes between apostrophes, cut off at the first zero byte
  kVariable   ///< a variable of the generated function
};

struct IDName {
  std::string_view text;
  NameKind kind;
};

/// The display name of `id`, the first of these that exists:
/// - for a run-time identifier, the host's string ID;
/// - the first name in PSConstA for `id` that contains `kind`;
/// - the code of the identifier.
/// The text lies in `buffer` or in the table.
/// `kind`: "event", "key", "class", "enum", "type", "unit" or "form". Any other text works, too: it
/// is searched for anywhere in the names, case-sensitively; an empty one is found in each.
/// Throws the error as std::uint32_t if the host's action control suite is needed and cannot be
/// acquired. REQUIRES: `kind` is not null; `buffer` holds kNameSize characters. [main-thread]
IDName nameOfID(std::uint32_t id, const char* kind, char* buffer);

/// Writes the text of nameOfID to `out`, with a terminator. Throws as nameOfID
/// does; `out` is empty then.
/// REQUIRES: `kind` is not null; `out` holds kNameSize characters. [main-thread]
void LongToStr(std::int32_t id, const char* kind, char* out);

/// The identifier that the first four characters of `text` make, the first one in the most
/// significant byte. A character of 0x80 or above is sign-extended and sets all bits above its own.
/// REQUIRES: four characters can be read at `text`. [any-thread]
std::uint32_t PIUCharToID(const char* text);
