// Conversion of the host's text for the generator.
#pragma once

#include <ASZStringSuite.h>

#include <optional>
#include <string>
#include <string_view>

/// `text` in UTF-8, with U+FFFD for each unpaired surrogate. Ends at the first zero unit, as the
/// generated code passes the text on as a C string. nullopt if the host or the platform cannot
/// convert it, or the host reports a length that is not a count (HostValues.h). REQUIRES: the
/// string suite is held. [main-thread]
std::optional<std::string> textToUTF8(ASZString text);

/// The UTF-16 units of `text`, of which any may be 0 and any surrogate may be unpaired. nullopt if
/// the host cannot convert it, or reports a length that is not a count. REQUIRES: the string suite
/// is held. [main-thread]
std::optional<std::u16string> textToUnits(ASZString text);

/// `units` in UTF-8; nullopt if a C string cannot hold them exactly, because one is 0 or a
/// surrogate without its partner. [any-thread]
std::optional<std::string> unitsToCString(std::u16string_view units);
