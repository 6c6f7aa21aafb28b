// The host's text as the generator writes it.
#pragma once

#include <ASZStringSuite.h>

#include <optional>
#include <string>

/// The text in UTF-8, with U+FFFD for each surrogate that has no partner. It ends at its first zero
/// unit, as the C string does that the generated code passes on. Nothing where the host or the
/// platform cannot convert it. REQUIRES: the string suite is held. [main-thread]
std::optional<std::string> textToUTF8(ASZString text);
