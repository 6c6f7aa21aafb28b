#include "tests/simulator/scenario/LibraryFaults.h"

#include <dlfcn.h>
#include <execinfo.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string_view>

namespace testing_support {

LibraryFaults& libraryFaults() {
  static constinit LibraryFaults faults;  // its construction must not allocate
  return faults;
}

namespace {

std::string_view fileOf(const void* address) {
  Dl_info info = {};
  return dladdr(address, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname
                                                                  : std::string_view();
}

/// Whether the plug-in calls, directly or through the C++ library. What the simulator does for the
/// plug-in is not the plug-in's own call.
bool isCallOfPlugin() {
  std::array<void*, 32> frames;
  const int count = backtrace(frames.data(), static_cast<int>(frames.size()));
  for (int i = 0; i < count; ++i) {
    const std::string_view file = fileOf(frames[static_cast<std::size_t>(i)]);
    if (file.ends_with("MrvPhotoshop.so")) return true;
    if (file.ends_with("libMrvSimulator.so")) return false;
  }
  return false;
}

bool mustFail(std::string_view call) {
  LibraryFaults& faults = libraryFaults();
  static thread_local bool asking = false;
  if (faults.times == 0 || faults.call != call || asking) return false;
  asking = true;
  const bool counts = isCallOfPlugin();
  asking = false;
  if (!counts) return false;
  if (faults.after > 0) {
    --faults.after;
    return false;
  }
  --faults.times;
  ++faults.fired;
  return true;
}

void* allocated(std::size_t size) {
  if (mustFail("operator new")) return nullptr;
  return std::malloc(std::max<std::size_t>(size, 1));
}

void* orThrow(void* memory) {
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

template <class Function>
Function* theLibrarys(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

}  // namespace testing_support

using namespace testing_support;

void* operator new(std::size_t size) { return orThrow(allocated(size)); }
void* operator new[](std::size_t size) { return orThrow(allocated(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocated(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocated(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

extern "C" std::FILE* fopen(const char* path, const char* mode) {
  static const auto own = theLibrarys<std::FILE*(const char*, const char*)>("fopen");
  return mustFail("fopen") ? nullptr : own(path, mode);
}

extern "C" std::size_t fread(void* buffer, std::size_t size, std::size_t count, std::FILE* file) {
  static const auto own =
      theLibrarys<std::size_t(void*, std::size_t, std::size_t, std::FILE*)>("fread");
  return mustFail("fread") ? 0 : own(buffer, size, count, file);
}

extern "C" int fseek(std::FILE* file, long offset, int origin) {
  static const auto own = theLibrarys<int(std::FILE*, long, int)>("fseek");
  return mustFail("fseek") ? -1 : own(file, offset, origin);
}

/// A stream that cannot be closed is gone all the same.
extern "C" int fclose(std::FILE* file) {
  static const auto own = theLibrarys<int(std::FILE*)>("fclose");
  const bool fails = mustFail("fclose");
  const int result = own(file);
  return fails ? EOF : result;
}
