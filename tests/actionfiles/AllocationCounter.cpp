#include "tests/actionfiles/AllocationCounter.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

// Tests of the reader have one thread.
std::size_t live = 0;
std::size_t liveAtStart = 0;
std::size_t mostLive = 0;
std::size_t largestOne = 0;

/// In front of each block: its size.
constexpr std::size_t kHead = alignof(std::max_align_t);
static_assert(kHead >= sizeof(std::size_t));

}  // namespace

void* operator new(std::size_t size) {
  auto* block = static_cast<char*>(std::malloc(kHead + size));
  if (block == nullptr) throw std::bad_alloc();
  *reinterpret_cast<std::size_t*>(block) = size;
  live += size;
  mostLive = std::max(mostLive, live);
  largestOne = std::max(largestOne, size);
  return block + kHead;
}

void* operator new[](std::size_t size) { return operator new(size); }

void operator delete(void* memory) noexcept {
  if (memory == nullptr) return;
  char* block = static_cast<char*>(memory) - kHead;
  live -= *reinterpret_cast<std::size_t*>(block);
  std::free(block);
}

void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }

namespace testing_support {

AllocationCounter::AllocationCounter() {
  liveAtStart = mostLive = live;
  largestOne = 0;
}

std::size_t AllocationCounter::peak() const { return mostLive - liveAtStart; }

std::size_t AllocationCounter::largest() const { return largestOne; }

}  // namespace testing_support
