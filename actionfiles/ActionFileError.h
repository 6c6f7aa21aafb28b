// What is thrown if an action file cannot be read.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace actionfiles {

/// `what` is one line: the file's name, the place, what is expected there and what was found, for
/// example "FILE: at byte 123: an item type is expected, found 'abcd'".
class ActionFileError : public std::runtime_error {
 public:
  /// An error at the byte `offset`, counted from 0.
  ActionFileError(const std::string& file, std::uint64_t offset, const std::string& reason);

  /// An error of the whole file, which cannot be opened or read.
  ActionFileError(const std::string& file, const std::string& reason);

  /// The offset; 0 for an error of the whole file.
  std::uint64_t offset() const { return offset_; }

 private:
  std::uint64_t offset_ = 0;
};

}  // namespace actionfiles
