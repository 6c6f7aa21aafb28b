// Counts the bytes that a test program asks from operator new.
#pragma once

#include <cstddef>

namespace testing_support {

/// Counts from its construction on. Use one at a time.
class AllocationCounter {
 public:
  AllocationCounter();

  /// The most bytes that were allocated at one time, without those that were allocated before.
  std::size_t peak() const;

  /// The largest single allocation.
  std::size_t largest() const;
};

}  // namespace testing_support
