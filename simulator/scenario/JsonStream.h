// Reads a JSON document of any length from its beginning to its end, and knows where everything is.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "simulator/base/Json.h"
#include "simulator/scenario/InputFile.h"

namespace simulator {

/// A place in a text, both counted from 1; the column counts characters.
struct Position {
  std::uint64_t line = 1;
  std::uint64_t column = 1;
};

/// Thrown if a text is not the JSON that is accepted. `what` is the reason alone.
class JsonError : public std::runtime_error {
 public:
  JsonError(Position position, const std::string& reason)
      : runtime_error(reason), position_(position) {}
  const Position& position() const { return position_; }

 private:
  Position position_;
};

/// Receives the document in pieces. What a function throws is passed on.
struct JsonPieces {
  /// The list in the document's object whose elements are passed on one by one; empty: none is.
  std::string streamed;
  /// A member of the document's object, except the streamed list.
  std::function<void(const std::string& name, const Json& value)> member;
  /// An element of the streamed list, with its index.
  std::function<void(const Json& value, std::uint64_t index, Position position)> element;
  /// Takes an element of a form that it knows, with the comma after it, straight from the text,
  /// which goes on for at least `kLongestQuickElement` bytes or to the document's end. Returns the
  /// number of bytes; 0 leaves the element to the parser. Not called for the first and the last
  /// element.
  std::function<std::size_t(std::string_view text, std::uint64_t index, Position position)> quick;
  /// The document, if it is not an object; an empty list stands for any list. If `member` is not
  /// set, any document, whole.
  std::function<void(Json value)> document;
};

/// Reads the document and passes on each piece when it is complete. Memory does not grow with the
/// streamed list. Throws JsonError for what is not JSON, for a key that stands twice in an object,
/// for a number that a double cannot hold, and for more than `kMostLevels` of nesting or
/// `kMostMembers` of one object.
void readJson(const ByteSource& source, const JsonPieces& pieces);

constexpr std::size_t kLongestQuickElement = 256;
constexpr std::size_t kMostLevels = 10000;
constexpr std::size_t kMostMembers = 1000;

/// Where a value and, for a member of an object, its key stand.
struct JsonPlace {
  Position value;
  std::optional<Position> key;
};

/// Finds the value that a JSON pointer names, or the innermost one on the way to it.
/// REQUIRES: the document is JSON up to that place.
JsonPlace placeOf(const ByteSource& source, const std::string& pointer);

}  // namespace simulator
