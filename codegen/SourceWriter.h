// Writes generated source text, indented by `tabLevel`, to a C stdio stream.
//
//   SourceWriter out(stream);
//   out.indentedLine("if (", name, " != NULL) CFRelease(", name, ");");
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "codegen/Terminology.h"

/// Text to be written as a string literal. Quotes, backslashes, control characters and bytes that
/// are not valid UTF-8 become escape sequences; everything else is unchanged.
struct StringLiteral {
  std::string_view text;
};

/// Text to be written between "//" and the end of the line, escaped as in a literal. A backslash at
/// the end, which would join the next line to the comment, becomes an octal escape.
struct CommentText {
  std::string_view text;
};

/// Collects text and writes it to the stream in large pieces, the rest on destruction. Errors of
/// the stream are ignored. [main-thread]
class SourceWriter {
 public:
  /// With a null `stream` all text is discarded.
  explicit SourceWriter(std::FILE* stream);
  /// Appends to `text`, which must outlive the writer.
  explicit SourceWriter(std::string& text);
  ~SourceWriter() { flush(); }
  SourceWriter(const SourceWriter&) = delete;
  SourceWriter& operator=(const SourceWriter&) = delete;

  /// Writes five spaces for each level of `tabLevel`; nothing if it is 0 or less.
  void indent();

  /// Writes the parts one after another.
  template <class... Parts>
  void write(const Parts&... parts) {
    (append(parts), ...);
  }

  /// Writes the parts and a newline.
  template <class... Parts>
  void line(const Parts&... parts) {
    write(parts..., "\n");
  }

  template <class... Parts>
  void indentedLine(const Parts&... parts) {
    indent();
    line(parts...);
  }

  /// Writes the indented check that follows each host call in the generated code, and an empty
  /// line.
  void errorCheck();

  /// Writes what is still held back.
  void flush();

 private:
  static constexpr std::size_t kBufferSize = 1 << 16;

  void append(std::string_view text) {
    if (text.size() > kBufferSize - used_) return appendLong(text);
    text.copy(buffer_.get() + used_, text.size());
    used_ += text.size();
  }
  /// A literal, whose length is known at compile time. REQUIRES: no zero byte but the last.
  template <std::size_t size>
  void append(const char (&literal)[size]) {
    append(std::string_view(literal, size - 1));
  }
  void append(std::int32_t number) { append(std::int64_t{number}); }
  void append(std::uint32_t number) { append(std::int64_t{number}); }
  void append(std::int64_t number);
  /// Six significant digits, as "%g" writes them, with a point in every locale.
  void append(double number);
  void append(StringLiteral literal);
  /// A name outside a string literal, escaped as in one. In a code, the characters between the
  /// apostrophes are escaped; any other name keeps its apostrophes.
  void append(IDName name);
  void append(CommentText comment);
  void appendEscaped(std::string_view text, char quote);
  void appendLong(std::string_view text);

  std::FILE* stream_;
  std::string* text_ = nullptr;
  std::size_t used_ = 0;
  std::unique_ptr<char[]> buffer_;
};
