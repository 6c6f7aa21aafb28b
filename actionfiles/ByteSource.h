// Where the bytes of an action file come from.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "hostutil/File.h"

namespace actionfiles {

/// Bytes that are handed out in pieces, in order. [any-thread, one at a time]
class ByteSource {
 public:
  virtual ~ByteSource() = default;

  /// The name that stands for the source in errors.
  virtual const std::string& name() const = 0;

  /// The number of all bytes; nullopt if it cannot be known before they are read.
  virtual std::optional<std::uint64_t> size() const = 0;

  /// The next piece, which is valid until the next call; empty at the end. Throws ActionFileError
  /// if the system cannot read.
  virtual std::string_view next() = 0;
};

/// The bytes of a file, or of a stream that is already open, from its current position.
class FileSource : public ByteSource {
 public:
  /// Throws ActionFileError if the file cannot be opened.
  explicit FileSource(const std::string& file);

  /// Reads a stream that stays the caller's, such as standard input.
  FileSource(std::FILE* stream, std::string name);

  const std::string& name() const override { return name_; }
  std::optional<std::uint64_t> size() const override { return size_; }
  std::string_view next() override;

 private:
  void measure();

  std::string name_;
  File own_;
  std::FILE* stream_;
  std::optional<std::uint64_t> size_;
  std::unique_ptr<char[]> buffer_;
};

/// Bytes in memory, which must outlive the source.
class MemorySource : public ByteSource {
 public:
  explicit MemorySource(std::string_view bytes, std::string name = "memory")
      : name_(std::move(name)), left_(bytes), size_(bytes.size()) {}

  const std::string& name() const override { return name_; }
  std::optional<std::uint64_t> size() const override { return size_; }
  std::string_view next() override { return std::exchange(left_, {}); }

 private:
  std::string name_;
  std::string_view left_;
  std::uint64_t size_;
};

}  // namespace actionfiles
