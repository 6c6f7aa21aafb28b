// Conversion of the host's text for the generator.
#pragma once

#include <ASZStringSuite.h>

#include <optional>
#include <string>

/// `text` in UTF-8, with U+FFFD for each unpaired surrogate. Ends at the first zero unit, as the
/// generated code passes the text on as a C string. nullopt if the host or the platform cannot
/// convert it, or the host reports a length that is not a count (HostValues.h). REQUIRES: the
/// string suite is held. [main-thread]
std::optional<std::string> textToUTF8(ASZString text);
