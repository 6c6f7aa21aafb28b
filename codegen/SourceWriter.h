// Writes generated source text to a C stdio stream, piece by piece, indented by `tabLevel`.
//
//   SourceWriter out(stream);
//   out.indentedLine("if (", name, " != NULL) CFRelease(", name, ");");
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

/// A string literal. What would end the literal or the line, and bytes that are no UTF-8, become
/// escape sequences; all else stands as it is.
struct StringLiteral {
  std::string_view text;
};

/// A name as LongToStr gives it, outside of a literal. What stands between the apostrophes of a
/// four-character code is escaped as in a literal.
struct BareName {
  std::string_view name;
};

/// Text behind "//" up to the end of the line, escaped as in a literal. A backslash at the end
/// would join the next line to the comment; it becomes an octal escape.
struct CommentText {
  std::string_view text;
};

/// Collects text and hands it to the stream in large pieces; the rest when it is destroyed. Errors
/// of the stream are passed over. [main-thread]
class SourceWriter {
 public:
  /// With a null `stream` everything written goes nowhere.
  explicit SourceWriter(std::FILE* stream);
  ~SourceWriter() { flush(); }
  SourceWriter(const SourceWriter&) = delete;
  SourceWriter& operator=(const SourceWriter&) = delete;

  /// `tabLevel` copies of five spaces; none for a level of zero or less.
  void indent();

  /// Writes the parts one after another.
  template <class... Parts>
  void write(const Parts&... parts) {
    (append(parts), ...);
  }

  /// The same, then a newline.
  template <class... Parts>
  void line(const Parts&... parts) {
    write(parts..., "\n");
  }

  template <class... Parts>
  void indentedLine(const Parts&... parts) {
    indent();
    line(parts...);
  }

  /// The indented check that follows each host call in the generated code, and an empty line.
  void errorCheck();

 private:
  static constexpr std::size_t kBufferSize = 1 << 16;

  void append(std::string_view text) {
    if (text.size() > kBufferSize - used_) return appendLong(text);
    std::memcpy(buffer_.get() + used_, text.data(), text.size());
    used_ += text.size();
  }
  /// A literal, of which the length is known. REQUIRES: no zero byte but the last.
  template <std::size_t size>
  void append(const char (&literal)[size]) {
    append(std::string_view(literal, size - 1));
  }
  void append(std::int32_t number) { append(std::int64_t{number}); }
  void append(std::uint32_t number) { append(std::int64_t{number}); }
  void append(std::int64_t number);
  /// Six significant digits, as a stream's default form has them, whatever the current locale.
  void append(double number);
  void append(StringLiteral literal);
  void append(BareName name);
  void append(CommentText comment);
  void appendEscaped(std::string_view text, char quote);
  void appendLong(std::string_view text);
  void flush();

  std::FILE* stream_;
  std::size_t used_ = 0;
  std::unique_ptr<char[]> buffer_;
};
