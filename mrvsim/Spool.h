// Text that is kept until all of it is known.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "simulator/scenario/InputFile.h"

namespace simulator {

/// A short text stays in memory; a longer one goes to a temporary file without a name.
/// [main-thread]
class Spool {
 public:
  /// Throws TemporaryFileError.
  void append(std::string_view text);

  /// The number of bytes appended so far.
  std::uint64_t size() const { return inFile_ + held_.size(); }

  /// Passes on everything that was appended, piece by piece. Throws TemporaryFileError, and what
  /// `take` throws.
  void each(const std::function<void(std::string_view)>& take) const;

 private:
  std::string held_;
  TemporaryFile file_;
  std::uint64_t inFile_ = 0;
};

}  // namespace simulator
