#include "actionfiles/ByteInput.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "actionfiles/ActionFileError.h"

namespace actionfiles {

namespace {

constexpr const char* kEnd = "the end of the file";

}  // namespace

bool ByteInput::refill() {
  const std::string_view piece = source_.next();
  next_ = piece.data();
  end_ = next_ + piece.size();
  offsetOfEnd_ += piece.size();
  return !piece.empty();
}

/// Copies bytes that do not all lie in the current piece.
void ByteInput::gather(char* bytes, std::size_t size, const char* what) {
  const std::uint64_t start = offset();
  while (size > 0) {
    if (left() == 0 && !refill()) fail(start, what, kEnd);
    const std::size_t part = std::min(size, left());
    std::memcpy(bytes, next_, part);
    bytes += part;
    next_ += part;
    size -= part;
  }
}

/// Throws if so many things cannot follow the count, which was just read. Nothing is known about a
/// source without a size.
void ByteInput::checkCount(std::uint32_t count, std::size_t leastSize, const char* what) const {
  if (!size_) return;
  const std::uint64_t most = rest() / leastSize;
  if (count <= most) return;
  fail(offset() - sizeof count, std::string(what) + " of at most " + std::to_string(most),
       std::to_string(count));
}

/// What is left of a source of known size; 0 of any other. A file may have grown since it was
/// measured.
std::uint64_t ByteInput::rest() const {
  const std::uint64_t size = size_.value_or(0);
  return size > offset() ? size - offset() : 0;
}

std::string_view ByteInput::gather(std::size_t length, std::string& buffer, const char* what) {
  const std::uint64_t start = offset();
  buffer.clear();
  if (length <= rest()) buffer.reserve(length);
  while (buffer.size() < length) {
    if (left() == 0 && !refill()) fail(start, what, kEnd);
    const std::size_t part = std::min(length - buffer.size(), left());
    buffer.append(next_, part);
    next_ += part;
  }
  return buffer;
}

void ByteInput::fail(std::uint64_t offset, const std::string& what,
                     const std::string& found) const {
  throw ActionFileError(source_.name(), offset, what + " is expected, found " + found);
}

std::string quotedCode(std::uint32_t code) {
  std::string text = "'";
  for (int shift = 24; shift >= 0; shift -= 8) {
    const unsigned byte = (code >> shift) & 0xFF;
    if (byte >= 0x20 && byte < 0x7F) {
      text += static_cast<char>(byte);
    } else {
      char escape[5];
      std::snprintf(escape, sizeof escape, "\\x%02X", byte);
      text += escape;
    }
  }
  return text + "'";
}

}  // namespace actionfiles
