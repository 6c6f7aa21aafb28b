#include "simulator/scenario/JsonFile.h"

#include <fmt/format.h>

#include <utility>

#include "simulator/scenario/JsonStream.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

std::string readTextFile(const std::string& file) { return InputFile(file).text(); }

Json parseJson(const std::string& text, const std::string& name) {
  Json document;
  JsonPieces pieces;
  pieces.document = [&](Json whole) { document = std::move(whole); };
  try {
    readJson(TextSource(text), pieces);
  } catch (const JsonError& error) {
    const Position at = error.position();
    throw BadJsonFile(fmt::format("{}:{}:{}: {}", name, at.line, at.column, error.what()));
  }
  return document;
}

std::string faultAt(const ByteSource& source, const std::string& name, const std::string& pointer,
                    const std::string& reason) {
  const Position at = placeOf(source, pointer).value;
  return fmt::format("{}:{}:{}: {}: {}", name, at.line, at.column, printablePlace(pointer), reason);
}

std::string printablePlace(const std::string& pointer) {
  return pointer.empty() ? "/" : printable(pointer, 60);
}

std::string onOneLine(std::string text) {
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < 0x20) c = ' ';
  }
  return text;
}

}  // namespace simulator
