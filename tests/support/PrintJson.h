// How a failing test prints JSON.
#pragma once

#include <iosfwd>

#include "simulator/base/Json.h"

namespace nlohmann {

/// Prints the value on one line. Without this GoogleTest would compile a printer of containers into
/// every source that compares JSON.
void PrintTo(const ordered_json& value, std::ostream* stream);

}  // namespace nlohmann
