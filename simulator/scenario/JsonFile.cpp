#include "simulator/scenario/JsonFile.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace simulator {

namespace {

/// The parser's message without its own prefix, which ends with the first "] ".
std::string reasonOf(const Json::parse_error& error) {
  const std::string message = error.what();
  const std::size_t prefix = message.find("] ");
  return prefix == std::string::npos ? message : message.substr(prefix + 2);
}

}  // namespace

std::string readTextFile(const std::string& file) {
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  if (stream) text << stream.rdbuf();
  // Opening a folder succeeds; reading its first byte fails.
  const bool isRead = stream.is_open() && !stream.bad() && (text || stream.peek() == EOF);
  if (!isRead || errno == EISDIR) {
    throw BadJsonFile(fmt::format("{}: cannot be read: {}", file, std::strerror(errno)));
  }
  return text.str();
}

Json parseJson(const std::string& text, const std::string& name) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    throw BadJsonFile(onOneLine(fmt::format("{}: {}", name, reasonOf(error))));
  }
}

std::string onOneLine(std::string text) {
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < 0x20) c = ' ';
  }
  return text;
}

}  // namespace simulator
