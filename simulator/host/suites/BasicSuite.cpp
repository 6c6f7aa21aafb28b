// Acquiring and releasing suites, comparing host strings, plain memory.
#include <fmt/format.h>

#include <cstdlib>
#include <cstring>

#include "simulator/base/Log.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

namespace {

int& holdsOf(const OfferedSuite& suite) {
  return hostState().holds[static_cast<std::size_t>(suite.id)];
}

void logSuite(const char* what, const char* name, int32 version, SPErr result) {
  if (!theLog().enabled()) return;
  theLog().write("suite", {{"do", what},
                           {"name", name ? Json(name) : Json(nullptr)},
                           {"version", version},
                           {"result", result}});
}

SPErr acquireSuite(const char* name, int32 version, const void** table) {
  const SPErr result = hostCall<SPErr>(SuiteId::basic, "Basic.AcquireSuite", [&] {
    const OfferedSuite* suite = findSuite(name, version);
    if (suite == nullptr) throw CallError{kSPSuiteNotFoundError};
    destination(table) = suite->procedures;
    ++holdsOf(*suite);
  });
  logSuite("acquire", name, version, result);
  return result;
}

[[noreturn]] void releasedTooOften(const char* name, int32 version) {
  theLog().misuse(fmt::format("Basic.ReleaseSuite: suite \"{}\" version {} is not held",
                              name ? name : "", version));
  throw CallError{kSPSuiteNotFoundError};
}

SPErr releaseSuite(const char* name, int32 version) {
  const SPErr result = hostRelease<SPErr>(SuiteId::basic, "Basic.ReleaseSuite", [&] {
    const OfferedSuite* suite = findSuite(name, version);
    if (suite == nullptr || holdsOf(*suite) == 0) releasedTooOften(name, version);
    --holdsOf(*suite);
  });
  logSuite("release", name, version, result);
  return result;
}

// No order to fail reaches this one: it has no way to say so.
SPBoolean isEqual(const char* left, const char* right) {
  const HostEntry entry(SuiteId::basic, "Basic.IsEqual");
  return left && right ? std::strcmp(left, right) == 0 : left == right;
}

SPErr allocateBlock(std::size_t size, void** block) {
  return hostCall<SPErr>(SuiteId::basic, "Basic.AllocateBlock", [&] {
    HostState& state = hostState();
    destination(block) = std::malloc(size + 1);  // one byte more: an empty block is one, too
    if (*block == nullptr) throw CallError{memFullErr};
    state.memoryBlocks.emplace(*block, ++state.lastMemoryBlock);
  });
}

void forgetBlock(void* block, const char* procedure) {
  if (hostState().memoryBlocks.erase(block) > 0) return;
  theLog().misuse(fmt::format("{}: the memory block given is not alive", procedure));
  throw CallError{paramErr};
}

SPErr freeBlock(void* block) {
  return hostRelease<SPErr>(SuiteId::basic, "Basic.FreeBlock", [&] {
    forgetBlock(block, "Basic.FreeBlock");
    std::free(block);
  });
}

SPErr reallocateBlock(void* block, std::size_t newSize, void** newBlock) {
  return hostCall<SPErr>(SuiteId::basic, "Basic.ReallocateBlock", [&] {
    HostState& state = hostState();
    void*& result = destination(newBlock);
    forgetBlock(block, "Basic.ReallocateBlock");
    result = std::realloc(block, newSize + 1);
    state.memoryBlocks.emplace(result, ++state.lastMemoryBlock);
  });
}

SPErr undefined() { return kSPUnimplementedError; }

}  // namespace

SPBasicSuite basicSuite = {
    .AcquireSuite = acquireSuite,
    .ReleaseSuite = releaseSuite,
    .IsEqual = isEqual,
    .AllocateBlock = allocateBlock,
    .FreeBlock = freeBlock,
    .ReallocateBlock = reallocateBlock,
    .Undefined = undefined,
};

}  // namespace simulator
