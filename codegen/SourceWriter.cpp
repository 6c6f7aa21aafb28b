#include "codegen/SourceWriter.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "codegen/DumpState.h"
#include "codegen/Escapes.h"
#include "codegen/Terminology.h"

namespace {

constexpr std::size_t kTabSize = 5;

}  // namespace

SourceWriter::SourceWriter(std::FILE* stream)
    : stream_(stream), buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)) {}

SourceWriter::SourceWriter(std::string& text) : SourceWriter(nullptr) { text_ = &text; }

void SourceWriter::indent() {
  static constexpr std::string_view kTabs = "                                        ";
  std::size_t spaces = tabLevel > 0 ? static_cast<std::size_t>(tabLevel) * kTabSize : 0;
  for (; spaces > kTabs.size(); spaces -= kTabs.size()) append(kTabs);
  append(kTabs.substr(0, spaces));
}

void SourceWriter::errorCheck() {
  indent();
  append("if (error) goto returnError;\n\n");
}

void SourceWriter::append(std::int64_t number) {
  char digits[20];  // the length of INT64_MIN
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  append(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void SourceWriter::append(double number) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%g", number);
  const std::string_view text = digits;
  // The locale may have another decimal point, which a compiler would reject.
  constexpr std::string_view kNumber = "+-0123456789aefin";
  const std::size_t point = text.find_first_not_of(kNumber);
  if (point == std::string_view::npos) return append(text);
  write(text.substr(0, point), ".", text.substr(text.find_first_of(kNumber, point)));
}

void SourceWriter::append(StringLiteral literal) {
  append("\"");
  appendEscaped(literal.text, '"');
  append("\"");
}

void SourceWriter::append(IDName name) {
  constexpr std::size_t kWholeCode = 6;
  if (name.kind != NameKind::kCode) return appendEscaped(name.text, '"');
  append("'");
  appendEscaped(name.text.substr(1, 4), '\'');
  if (name.text.size() == kWholeCode) append("'");  // a code with a zero byte is cut before this
}

void SourceWriter::append(CommentText comment) {
  const std::string_view text = comment.text;
  const std::size_t last = text.find_last_not_of(' ');
  if (last == std::string_view::npos || text[last] != '\\') return appendEscaped(text, '"');
  appendEscaped(text.substr(0, last), '"');
  write("\\134", text.substr(last + 1));
}

void SourceWriter::appendEscaped(std::string_view text, char quote) {
  while (!text.empty()) {
    const std::size_t plain = plainLength(text, quote);
    append(text.substr(0, plain));
    if (plain == text.size()) return;
    append(escapeSequence(text[plain]));
    text.remove_prefix(plain + 1);
  }
}

void SourceWriter::appendLong(std::string_view text) {
  flush();
  while (text.size() > kBufferSize) {
    const std::string_view piece = text.substr(0, kBufferSize);
    append(piece);
    flush();
    text.remove_prefix(piece.size());
  }
  append(text);
}

void SourceWriter::flush() {
  if (stream_ != nullptr) std::fwrite(buffer_.get(), 1, used_, stream_);
  if (text_ != nullptr) text_->append(buffer_.get(), used_);
  used_ = 0;
}
