// The log for people: a line of text for each line of the log.
#pragma once

#include <string>

#include "simulator/base/Json.h"

namespace simulator {

/// A line of the log as text that ends with a line break: the time in seconds, what it is, and its
/// fields in words, in columns. `isColoured`: with the escapes that colour it on a terminal. Text
/// of the plug-in is made printable. A line of a kind that is not known shows its fields as they
/// are. [any-thread]
std::string logText(const Json& line, bool isColoured);

/// The fields of a line alone, in the same words. [any-thread]
std::string logWords(const Json& line);

}  // namespace simulator
