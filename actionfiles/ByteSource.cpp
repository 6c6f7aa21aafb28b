#include "actionfiles/ByteSource.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "actionfiles/ActionFileError.h"
#include "hostutil/File.h"

namespace actionfiles {

namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 16;

File open(const std::string& file) {
  File stream(std::fopen(file.c_str(), "rb"));
  if (!stream) throw ActionFileError(file, std::strerror(errno));
  return stream;
}

}  // namespace

FileSource::FileSource(const std::string& file)
    : name_(file), own_(open(file)), stream_(own_.get()), buffer_(new char[kPieceSize]) {
  // Pieces are read straight into the buffer.
  std::setvbuf(stream_, nullptr, _IONBF, 0);
  measure();
}

FileSource::FileSource(std::FILE* stream, std::string name)
    : name_(std::move(name)), stream_(stream), buffer_(new char[kPieceSize]) {
  measure();
}

// A device can be positioned and has no end to measure, so its size of 0 is not believed; the size
// of an empty file shows at the first read.
void FileSource::measure() {
  const long start = std::ftell(stream_);
  if (start < 0 || std::fseek(stream_, 0, SEEK_END) != 0) return;
  const long end = std::ftell(stream_);
  std::fseek(stream_, start, SEEK_SET);
  if (end > start) size_ = static_cast<std::uint64_t>(end - start);
}

std::string_view FileSource::next() {
  errno = 0;
  const std::size_t count = std::fread(buffer_.get(), 1, kPieceSize, stream_);
  if (count == 0 && std::ferror(stream_) != 0) {
    throw ActionFileError(name_, std::strerror(errno));
  }
  return {buffer_.get(), count};
}

}  // namespace actionfiles
