// Reads whole JSON files; every error is one line.
#pragma once

#include <string>

#include "simulator/base/Json.h"
#include "simulator/scenario/InputFile.h"

namespace simulator {

/// Thrown if a text is not JSON; `what` is one line that begins with the file's name, the line and
/// the column.
class BadJsonFile : public BadInput {
 public:
  using BadInput::BadInput;
};

/// The file's bytes; "-" is standard input. Throws BadInput.
std::string readTextFile(const std::string& file);

/// Parses a JSON text; `name` stands for the file in errors. A key must not stand twice in an
/// object. Throws BadJsonFile.
Json parseJson(const std::string& text, const std::string& name);

/// "FILE:LINE:COLUMN: /place: reason" for a fault at a JSON pointer in a text that is JSON.
std::string faultAt(const ByteSource& source, const std::string& name, const std::string& pointer,
                    const std::string& reason);

/// A JSON pointer as messages show it: "/" for the whole document, and cut if it is long.
std::string printablePlace(const std::string& pointer);

/// The text with each line break or other control byte replaced by a space.
std::string onOneLine(std::string text);

}  // namespace simulator
