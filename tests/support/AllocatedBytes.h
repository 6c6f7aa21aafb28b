// How much memory the process has asked for.
#pragma once

#include <malloc.h>

#include <cstddef>

namespace testing_support {

/// The bytes that are allocated and not freed, in all threads.
inline std::size_t allocatedBytes() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

}  // namespace testing_support
