// Reads JSON files; every error is one line.
#pragma once

#include <stdexcept>
#include <string>

#include "simulator/base/Log.h"

namespace simulator {

/// Thrown if a file cannot be read or is not JSON; `what` is one line that begins with the file's
/// name.
class BadJsonFile : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// The file's bytes. Throws BadJsonFile.
std::string readTextFile(const std::string& file);

/// Parses a JSON text; `name` stands for the file in errors. Throws BadJsonFile.
Json parseJson(const std::string& text, const std::string& name);

/// The text with each line break or other control byte replaced by a space.
std::string onOneLine(std::string text);

}  // namespace simulator
