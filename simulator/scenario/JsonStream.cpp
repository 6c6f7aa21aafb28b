#include "simulator/scenario/JsonStream.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "simulator/host/json/JsonFields.h"
#include "simulator/scenario/Wording.h"

namespace simulator {

namespace {

/// Reads the bytes of a source in order and notes where each token begins.
class SourceCursor {
 public:
  explicit SourceCursor(const ByteSource& source) : source_(source) { fill(); }

  bool atEnd() const { return used_ == size_; }
  char current() const { return buffer_[used_]; }

  void advance() {
    const char c = current();
    const bool separates = c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == ',' || c == ':';
    if (between_ && !separates) {
      token_ = here_;
      between_ = false;
    }
    last_ = here_;
    if (c == '\n') {
      here_ = {here_.line + 1, 1};
    } else if ((c & 0xC0) != 0x80) {
      ++here_.column;
    }
    lastByte_ = c;
    if (++used_ == size_) fill();
    if (c == ',' && std::exchange(beforeComma_, false)) skip();
  }

  /// Sets what may take text after a comma that `expectComma` announced: it gets what is in memory,
  /// which begins with a token, and its position, and returns the number of bytes taken. It leaves
  /// characters that are not ASCII.
  void setSkipper(std::function<std::size_t(std::string_view, Position)> skipper) {
    skipper_ = std::move(skipper);
  }

  /// The next comma is followed by text that may be taken.
  void expectComma() { beforeComma_ = skipper_ != nullptr; }

  /// Where the token that was read last begins. Asking for it ends the token.
  Position endToken() {
    const Position begin = between_ ? last_ : token_;
    between_ = true;
    return begin;
  }

  /// Where the byte that was read last stands, and that byte.
  Position last() const { return last_; }
  char lastByte() const { return lastByte_; }

  /// Where the first byte that was not read stands.
  Position here() const { return here_; }

 private:
  void fill() {
    used_ = 0;
    size_ = source_.read(offset_, buffer_.data(), buffer_.size());
    offset_ += size_;
  }

  /// Brings as many bytes into memory as the skipper was promised.
  void fillAhead() {
    if (size_ - used_ >= kAhead) return;
    std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(used_),
              buffer_.begin() + static_cast<std::ptrdiff_t>(size_), buffer_.begin());
    size_ -= std::exchange(used_, 0);
    while (size_ < kAhead) {
      const std::size_t more =
          source_.read(offset_, buffer_.data() + size_, buffer_.size() - size_);
      if (more == 0) return;
      size_ += more;
      offset_ += more;
    }
  }

  /// Lets the skipper take text as long as it does.
  void skip() {
    while (true) {
      fillAhead();
      const std::string_view rest(buffer_.data() + used_, size_ - used_);
      const std::size_t blank = std::min(rest.find_first_not_of(" \t\n\r"), rest.size());
      Position begin = here_;
      pass(rest.substr(0, blank), begin);
      const std::size_t taken = skipper_(rest.substr(blank), begin);
      if (taken == 0) return;
      pass(rest.substr(0, blank), here_);
      pass(rest.substr(blank, taken - 1), here_);
      last_ = here_;
      ++here_.column;
      lastByte_ = ',';
      used_ += blank + taken;
      if (used_ == size_) fill();
    }
  }

  static void pass(std::string_view text, Position& position) {
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    position = lines == 0 ? Position{position.line, position.column + text.size()}
                          : Position{position.line + lines, text.size() - text.rfind('\n')};
  }

  // An element and as much white space before it.
  static constexpr std::size_t kAhead = 2 * kLongestQuickElement;

  const ByteSource& source_;
  std::array<char, 65536> buffer_;
  std::uint64_t offset_ = 0;
  std::size_t used_ = 0, size_ = 0;
  Position here_, last_, token_;
  char lastByte_ = ' ';
  bool between_ = true;  ///< no token has begun since the last one ended
  std::function<std::size_t(std::string_view, Position)> skipper_;
  bool beforeComma_ = false;
};

/// The form in which the parser takes its input.
class CursorIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = char;

  explicit CursorIterator(SourceCursor* cursor = nullptr) : cursor_(cursor) {}
  char operator*() const { return cursor_->current(); }
  CursorIterator& operator++() {
    cursor_->advance();
    return *this;
  }
  void operator++(int) { cursor_->advance(); }
  bool operator==(const CursorIterator& other) const { return isEnd() == other.isEnd(); }

 private:
  bool isEnd() const { return cursor_ == nullptr || cursor_->atEnd(); }
  SourceCursor* cursor_;
};

/// The parser's message without the part of the document that it quotes.
std::string withoutQuote(std::string message) {
  const std::size_t begin = message.find("; last read: '");
  const std::size_t end = message.rfind('\'');
  const std::size_t expected = message.rfind("; expected ");
  if (begin == std::string::npos) return message;
  const bool goesOn = expected != std::string::npos && expected > begin;
  message.erase(begin, goesOn ? expected - begin : end - begin);
  return message;
}

/// What the parser's message means, in our words.
std::string inOurWords(const std::string& message) {
  static constexpr std::pair<const char*, const char*> kWords[] = {
      {"ill-formed UTF-8", "a text holds bytes that are not UTF-8"},
      {"control character", "a text holds a control character; write it as an escape such as \\n"},
      {"U+DC00..U+DFFF", "a text holds half of a pair of \\u escapes"},
      {"U+D800..U+DBFF", "a text holds half of a pair of \\u escapes"},
      {"followed by 4 hex digits", "\\u needs four hexadecimal digits"},
      {"forbidden character after backslash", "JSON does not know this escape in a text"},
      {"missing closing quote", "a text has no closing quote"},
      {"invalid number", "this is not a number as JSON writes it"},
      {"; expected end of input", "something follows the end of the document"},
      {"; expected string literal", "expected a key in double quotes"},
      {"parsing object key", "expected a key in double quotes"},
      {"; expected ':'", "expected a colon after the key"},
      {"; expected ']'", "expected a comma or the end of the list"},
      {"; expected '}'", "expected a comma or the end of the object"},
  };
  for (const auto& [theirs, ours] : kWords) {
    if (message.find(theirs) != std::string::npos) return ours;
  }
  return "expected a value: {, [, a number, true, false, null, or a text in double quotes";
}

/// Whether the fault is a byte inside a text rather than a whole token.
bool isInsideText(const std::string& message) {
  return message.find("invalid string") != std::string::npos;
}

bool isCutOff(const std::string& message) {
  return message.find("unexpected end of input") != std::string::npos ||
         message.find("missing closing quote") != std::string::npos;
}

/// What all readers of the parser's events share: the positions and the errors.
class Events {
 public:
  explicit Events(SourceCursor& cursor) : cursor_(cursor) {}

  template <class Error>
  bool parse_error(std::size_t, const std::string& token, const Error& error) {
    const std::string message = withoutQuote(error.what());
    const Position begin = cursor_.endToken();
    if (message.find("number overflow") != std::string::npos) {
      throw JsonError(begin, fmt::format("{} is beyond the numbers that can be held, which end at "
                                         "1.8e308",
                                         printable(token, 40)));
    }
    if (isCutOff(message) && cursor_.lastByte() == '\0') {
      throw JsonError(cursor_.last(), "the document holds a zero byte");
    }
    if (cursor_.atEnd() && isCutOff(message)) {
      throw JsonError(cursor_.here(), "the document ends too early");
    }
    throw JsonError(isInsideText(message) ? cursor_.last() : begin, inOurWords(message));
  }

 protected:
  SourceCursor& cursor_;
};

/// Builds the values of a document and passes the pieces on.
class PieceBuilder : public Events {
 public:
  PieceBuilder(SourceCursor& cursor, const JsonPieces& pieces) : Events(cursor), pieces_(pieces) {
    if (!pieces.quick) return;
    cursor.setSkipper([this](std::string_view text, Position position) {
      const std::size_t taken = pieces_.quick(text, index_, position);
      if (taken > 0) ++index_;
      return taken;
    });
  }

  // The parser's events.
  bool null() { return value(nullptr); }
  bool boolean(bool v) { return value(v); }
  bool number_integer(Json::number_integer_t v) { return value(v); }
  bool number_unsigned(Json::number_unsigned_t v) { return value(v); }
  bool number_float(Json::number_float_t v, const std::string&) { return value(v); }
  bool string(std::string& v) { return value(std::move(v)); }
  bool binary(Json::binary_t&) { return false; }

  bool start_object(std::size_t) {
    const Position begin = cursor_.endToken();
    enter(begin);
    // The members of the document itself are passed on and not kept.
    if (levels_ == 1 && pieces_.member) {
      inDocument_ = true;
      return true;
    }
    open(Json::object(), begin);
    return true;
  }

  bool key(std::string& name) {
    const Position begin = cursor_.endToken();
    if (open_.empty()) {
      expectNew(begin, name, names_);
      names_.push_back(name);
      member_ = name;
      return true;
    }
    Json& object = *open_.back();
    if (object.contains(name)) failTwice(begin, name);
    if (object.size() >= kMostMembers) failMany(begin);
    object[name] = nullptr;
    slot_ = &object[name];
    return true;
  }

  bool end_object() {
    cursor_.endToken();
    leave();
    return true;
  }

  bool start_array(std::size_t) {
    const Position begin = cursor_.endToken();
    enter(begin);
    if (levels_ == 1 && pieces_.member) pieces_.document(Json::array());
    if (inDocument_ && levels_ == 2 && member_ == pieces_.streamed) {
      inStreamed_ = true;
      return true;
    }
    open(Json::array(), begin);
    return true;
  }

  bool end_array() {
    cursor_.endToken();
    if (inStreamed_ && open_.empty()) {
      inStreamed_ = false;
      --levels_;
      return true;
    }
    leave();
    return true;
  }

 private:
  [[noreturn]] static void failTwice(Position position, const std::string& name) {
    throw JsonError(position,
                    fmt::format("the key \"{}\" stands twice in one object", printable(name)));
  }

  [[noreturn]] static void failMany(Position position) {
    throw JsonError(position, fmt::format("an object has more than {} members", kMostMembers));
  }

  static void expectNew(Position position, const std::string& name,
                        const std::vector<std::string>& names) {
    for (const std::string& other : names) {
      if (other == name) failTwice(position, name);
    }
    if (names.size() >= kMostMembers) failMany(position);
  }

  void enter(Position position) {
    if (++levels_ <= kMostLevels) return;
    throw JsonError(position,
                    fmt::format("the document is nested deeper than {} levels", kMostLevels));
  }

  /// Puts a value where the next one belongs and returns its place.
  Json* place(Json&& value, Position begin) {
    if (open_.empty()) {
      piece_ = std::move(value);
      begin_ = begin;
      return &piece_;
    }
    Json& parent = *open_.back();
    if (parent.is_array()) {
      parent.push_back(std::move(value));
      return &parent.back();
    }
    *slot_ = std::move(value);
    return slot_;
  }

  void open(Json&& container, Position begin) {
    open_.push_back(place(std::move(container), begin));
  }

  template <class Value>
  bool value(Value&& v) {
    place(Json(std::forward<Value>(v)), cursor_.endToken());
    if (open_.empty()) passOn();
    return true;
  }

  void leave() {
    --levels_;
    if (open_.empty()) return;
    open_.pop_back();
    if (open_.empty()) passOn();
  }

  void passOn() {
    Json piece = std::exchange(piece_, Json());
    if (inStreamed_) {
      pieces_.element(piece, index_++, begin_);
      // After a number, the parser has read the comma already.
      if (piece.is_structured()) cursor_.expectComma();
    } else if (inDocument_) {
      pieces_.member(member_, piece);
    } else {
      pieces_.document(std::move(piece));
    }
  }

  const JsonPieces& pieces_;
  std::size_t levels_ = 0;
  bool inDocument_ = false;  ///< the document is an object whose members are passed on
  bool inStreamed_ = false;
  std::vector<std::string> names_;  ///< of the document's members so far
  std::string member_;
  std::uint64_t index_ = 0;
  Json piece_;  ///< the value that will be passed on
  Position begin_;
  std::vector<Json*> open_;  ///< the containers in the piece that are not complete
  Json* slot_ = nullptr;     ///< where the value of the last key belongs
};

/// Follows a JSON pointer.
class Finder : public Events {
 public:
  Finder(SourceCursor& cursor, const std::string& pointer) : Events(cursor) {
    for (std::size_t at = 0; at < pointer.size();) {
      const std::size_t next = std::min(pointer.find('/', at + 1), pointer.size());
      wanted_.push_back(pointer.substr(at + 1, next - at - 1));
      at = next;
    }
  }

  const JsonPlace& found() const { return found_; }

  bool null() { return value(); }
  bool boolean(bool) { return value(); }
  bool number_integer(Json::number_integer_t) { return value(); }
  bool number_unsigned(Json::number_unsigned_t) { return value(); }
  bool number_float(Json::number_float_t, const std::string&) { return value(); }
  bool string(std::string&) { return value(); }
  bool binary(Json::binary_t&) { return false; }
  bool start_object(std::size_t) { return start(false); }
  bool end_object() { return end(); }
  bool start_array(std::size_t) { return start(true); }
  bool end_array() { return end(); }

  bool key(std::string& name) {
    key_ = cursor_.endToken();
    if (!levels_.empty()) levels_.back().onTheWay = onTheWay() && isWanted(pointerStep(name));
    return true;
  }

  // Faults after the place do not matter here.
  template <class Error>
  bool parse_error(std::size_t, const std::string&, const Error&) {
    return false;
  }

 private:
  struct Level {
    bool isList;
    std::uint64_t next = 0;  ///< the index of the next element
    bool parentOnTheWay = true;
    bool onTheWay = false;  ///< whether the member or element that comes next is
  };

  bool isWanted(const std::string& step) const {
    const std::size_t depth = levels_.size() - 1;
    return depth < wanted_.size() && wanted_[depth] == step;
  }

  bool onTheWay() const { return levels_.back().parentOnTheWay; }

  /// Whether the value that begins now is on the way; false ends the search.
  bool begins() {
    const Position begin = cursor_.endToken();
    bool onTheWay = true;
    if (!levels_.empty()) {
      Level& level = levels_.back();
      if (level.isList) {
        level.onTheWay = level.parentOnTheWay && isWanted(std::to_string(level.next++));
      }
      onTheWay = level.onTheWay;
      if (onTheWay) found_.key = level.isList ? std::nullopt : std::optional(key_);
    }
    if (onTheWay) found_.value = begin;
    return onTheWay;
  }

  bool isThere(bool onTheWay) const { return onTheWay && levels_.size() == wanted_.size(); }

  bool value() { return !isThere(begins()); }

  bool start(bool isList) {
    const bool onTheWay = begins();
    if (isThere(onTheWay)) return false;
    levels_.push_back({isList, 0, onTheWay, false});
    return true;
  }

  bool end() {
    cursor_.endToken();
    levels_.pop_back();
    return true;
  }

  std::vector<std::string> wanted_;
  std::vector<Level> levels_;
  Position key_;
  JsonPlace found_;
};

template <class Handler>
bool parse(SourceCursor& cursor, Handler& handler) {
  return Json::sax_parse(CursorIterator(&cursor), CursorIterator(), &handler);
}

}  // namespace

void readJson(const ByteSource& source, const JsonPieces& pieces) {
  SourceCursor cursor(source);
  if (cursor.atEnd()) throw JsonError(cursor.here(), "the document is empty");
  PieceBuilder builder(cursor, pieces);
  parse(cursor, builder);
  // The parser takes a zero byte for the end.
  const bool endsHere = cursor.atEnd() && cursor.lastByte() != '\0';
  if (!endsHere) throw JsonError(cursor.last(), "the document holds a zero byte");
}

JsonPlace placeOf(const ByteSource& source, const std::string& pointer) {
  SourceCursor cursor(source);
  Finder finder(cursor, pointer);
  parse(cursor, finder);
  return finder.found();
}

}  // namespace simulator
