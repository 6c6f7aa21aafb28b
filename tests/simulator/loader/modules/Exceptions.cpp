// Exceptions that cross every kind of frame that the compiler makes.
#include <cstdint>
#include <exception>
#include <string>
#include <vector>

#include "TestHost.h"

// Types that other files may have, too. On arm64 the pointers to their names are marked.
struct __attribute__((visibility("default"))) SharedBase {
  virtual ~SharedBase() = default;
  virtual int code() const { return 3; }
};

struct __attribute__((visibility("default"))) SharedDerived : SharedBase {
  int code() const override { return 4; }
};

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
#if defined(__aarch64__)
  asm volatile(
      "mov x19, #-1\n\tmov x20, #-1\n\tmov x21, #-1\n\tmov x22, #-1\n\tmov x23, #-1\n\t"
      "mov x24, #-1\n\tmov x25, #-1\n\tmov x26, #-1\n\tmov x27, #-1\n\tmov x28, #-1\n\t"
      "movi d8, #0\n\tmovi d9, #0\n\tmovi d10, #0\n\tmovi d11, #0\n\t"
      "movi d12, #0\n\tmovi d13, #0\n\tmovi d14, #0\n\tmovi d15, #0"
      :
      :
      : "x19", "x20", "x21", "x22", "x23", "x24", "x25", "x26", "x27", "x28", "d8", "d9", "d10",
        "d11", "d12", "d13", "d14", "d15");
#else
  asm volatile(
      "movq $-1, %%rbx\n\tmovq $-1, %%r12\n\tmovq $-1, %%r13\n\t"
      "movq $-1, %%r14\n\tmovq $-1, %%r15"
      :
      :
      : "rbx", "r12", "r13", "r14", "r15");
#endif
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
volatile double numbers[] = {1, 2, 3, 4, 5, 6, 7, 8};

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

EXPORT int catchesBySharedSuperclass() {
  try {
    throw SharedDerived();
  } catch (const SharedBase& caught) {
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

// The same with numbers that one of the processors keeps in registers.
EXPORT double keepsVectorRegistersAfterThrow() {
  const double a = numbers[0], b = numbers[1], c = numbers[2], d = numbers[3];
  const double e = numbers[4], f = numbers[5], g = numbers[6], h = numbers[7];
  try {
    throwThroughLargeFrame();
  } catch (std::uint32_t) {
    testRecord(600);
  }
  return a + 10 * b + 100 * c + 1e3 * d + 1e4 * e + 1e5 * f + 1e6 * g + 1e7 * h;
}

EXPORT int throwsFromLibrary() {
  try {
    std::vector<int> many;
    many.resize(static_cast<std::size_t>(seeds[0]) << 60);
  } catch (const std::exception&) {
    return 1;
  }
  return -1;
}
