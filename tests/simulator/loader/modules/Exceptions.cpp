// Exceptions that cross every kind of frame that the compiler makes.
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "TestHost.h"

namespace {

struct Witness {
  explicit Witness(int number) : value(number) {}
  ~Witness() { testRecord(value); }
  int value;
};

struct Base {
  virtual ~Base() = default;
  virtual int code() const { return 1; }
};

struct Derived : Base {
  int code() const override { return 2; }
};

void keepInMemory(void* block) { asm volatile("" : : "r"(block) : "memory"); }

// Overwrites callee-saved registers, which only the unwinder can then restore.
__attribute__((noinline)) void spoilRegistersAndThrow() {
  asm volatile(
      "movq $-1, %%rbx\n\tmovq $-1, %%r12\n\tmovq $-1, %%r13\n\t"
      "movq $-1, %%r14\n\tmovq $-1, %%r15"
      :
      :
      : "rbx", "r12", "r13", "r14", "r15");
  throw std::uint32_t{7};
}

__attribute__((noinline)) void throwThroughLargeFrame() {
  char large[6000];
  keepInMemory(large);
  Witness witness(101);
  spoilRegistersAndThrow();
  keepInMemory(large);
}

__attribute__((noinline)) void throwThroughVariableFrame(int size) {
  void* const block = __builtin_alloca(static_cast<unsigned>(size));
  keepInMemory(block);
  Witness witness(102);
  throwThroughLargeFrame();
  keepInMemory(block);
}

// A frame without saved registers, too large for its size to fit the encoding. Without a base
// pointer, the encoding then refers to the size in the code.
__attribute__((noinline)) void throwThroughPlainLargeFrame() {
  long large[700];
  keepInMemory(large);
  spoilRegistersAndThrow();
  keepInMemory(large);
}

volatile long seeds[] = {11, 13, 17, 19, 23, 29};

}  // namespace

EXPORT int catchesOwnException() {
  try {
    Witness witness(100);
    throwThroughVariableFrame(64);
  } catch (std::uint32_t code) {
    return static_cast<int>(code);
  }
  return -1;
}

EXPORT int catchesBySuperclass() {
  try {
    throw Derived();
  } catch (const Base& caught) {
    return caught.code();
  }
}

EXPORT int rethrows() {
  try {
    try {
      throwThroughLargeFrame();
    } catch (...) {
      testRecord(200);
      throw;
    }
  } catch (std::uint32_t code) {
    return static_cast<int>(code);
  }
  return -1;
}

EXPORT int catchesThroughPlainLargeFrame() {
  try {
    throwThroughPlainLargeFrame();
  } catch (std::uint32_t code) {
    return static_cast<int>(code);
  }
  return -1;
}

EXPORT void letsExceptionOut() { throwThroughVariableFrame(128); }

EXPORT int catchesHostException() {
  try {
    Witness witness(300);
    testThrow(9);
  } catch (int value) {
    return value;
  }
  return -1;
}

EXPORT void passesHostExceptionOn() {
  Witness witness(400);
  testThrow(10);
}

// The exception crosses host frames between two frames of the module.
EXPORT int catchesAcrossHostFrames() {
  try {
    testCall(&throwThroughLargeFrame);
  } catch (std::uint32_t code) {
    return static_cast<int>(code);
  }
  return -1;
}

// Keeps enough values across the call to occupy the registers that the callee overwrites.
EXPORT long keepsRegistersAfterThrow() {
  const long a = seeds[0], b = seeds[1], c = seeds[2], d = seeds[3], e = seeds[4], f = seeds[5];
  try {
    throwThroughLargeFrame();
  } catch (std::uint32_t) {
    testRecord(500);
  }
  return a + 100 * b + 10000 * c + 1000000 * d + 100000000 * e + 10000000000 * f;
}

EXPORT int throwsFromLibrary() {
  try {
    std::vector<int> numbers;
    numbers.resize(static_cast<std::size_t>(seeds[0]) << 60);
  } catch (const std::exception&) {
    return 1;
  }
  return -1;
}
