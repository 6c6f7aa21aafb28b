// Acquires and releases suites, compares host strings, and allocates memory.
#include <fmt/format.h>

#include <cstdlib>
#include <cstring>

#include "simulator/base/Log.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"

namespace simulator {

namespace basic_suite {
namespace {

int& holdsOf(const OfferedSuite& suite) {
  return hostState().holds[static_cast<std::size_t>(suite.id)];
}

void logSuite(const char* what, const char* name, int32 version, SPErr result) {
  if (!theLog().enabled()) return;
  theLog().write("suite", {{"do", what},
                           {"name", name ? JsonValue(name) : nullptr},
                           {"version", version},
                           {"result", result}});
}

SPErr acquireSuite(const char* procedure, const char* name, int32 version, const void** table) {
  const SPErr result = hostCall<SPErr>(SuiteId::basic, procedure, [&] {
    const OfferedSuite* suite = findSuite(name, version);
    if (suite == nullptr) throw CallError{kSPSuiteNotFoundError};
    destination(table) = suite->record;
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

SPErr releaseSuite(const char* procedure, const char* name, int32 version) {
  const SPErr result = hostRelease<SPErr>(SuiteId::basic, procedure, [&] {
    const OfferedSuite* suite = findSuite(name, version);
    if (suite == nullptr || holdsOf(*suite) == 0) releasedTooOften(name, version);
    --holdsOf(*suite);
  });
  logSuite("release", name, version, result);
  return result;
}

// Cannot be made to fail: it has no error code.
SPBoolean isEqual(const char* procedure, const char* left, const char* right) {
  const HostEntry entry(SuiteId::basic, procedure);
  return left && right ? std::strcmp(left, right) == 0 : left == right;
}

SPErr allocateBlock(const char* procedure, std::size_t size, void** block) {
  return hostCall<SPErr>(SuiteId::basic, procedure, [&] {
    HostState& state = hostState();
    void*& result = destination(block);
    result = std::malloc(size + 1);  // an empty block has an address, too
    if (result == nullptr) throw CallError{memFullErr};
    state.memoryBlocks.emplace(result, ++state.lastMemoryBlock);
  });
}

void forgetBlock(void* block, const char* procedure) {
  if (hostState().memoryBlocks.erase(block) > 0) return;
  theLog().misuse(fmt::format("{}: the memory block given is not alive", procedure));
  throw CallError{paramErr};
}

SPErr freeBlock(const char* procedure, void* block) {
  return hostRelease<SPErr>(SuiteId::basic, procedure, [&] {
    forgetBlock(block, procedure);
    std::free(block);
  });
}

SPErr reallocateBlock(const char* procedure, void* block, std::size_t newSize, void** newBlock) {
  return hostCall<SPErr>(SuiteId::basic, procedure, [&] {
    HostState& state = hostState();
    void*& result = destination(newBlock);
    forgetBlock(block, procedure);
    result = std::realloc(block, newSize + 1);
    state.memoryBlocks.emplace(result, ++state.lastMemoryBlock);
  });
}

SPErr undefined() { return kSPUnimplementedError; }

constexpr auto kProcedures = std::to_array<Procedure<SPBasicSuite>>({
    row<"Basic.AcquireSuite", &SPBasicSuite::AcquireSuite, acquireSuite>,
    row<"Basic.ReleaseSuite", &SPBasicSuite::ReleaseSuite, releaseSuite>,
    row<"Basic.IsEqual", &SPBasicSuite::IsEqual, isEqual>,
    row<"Basic.AllocateBlock", &SPBasicSuite::AllocateBlock, allocateBlock>,
    row<"Basic.FreeBlock", &SPBasicSuite::FreeBlock, freeBlock>,
    row<"Basic.ReallocateBlock", &SPBasicSuite::ReallocateBlock, reallocateBlock>,
});

}  // namespace
}  // namespace basic_suite

constinit HostSuite<SPBasicSuite> basicSuite = suiteOf<basic_suite::kProcedures>(
    [](SPBasicSuite& record) { record.Undefined = basic_suite::undefined; });

}  // namespace simulator
