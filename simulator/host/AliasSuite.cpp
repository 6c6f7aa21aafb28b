// Aliases of paths.
#include <filesystem>
#include <system_error>

#include "simulator/host/FileReferences.h"
#include "simulator/host/HostCall.h"
#include "simulator/host/Suites.h"

namespace simulator {

namespace {

constexpr OSErr kFileNotFound = -43;  // fnfErr

// As on the platform, only what exists has an alias.
void requireFile(const char* path) {
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) throw HostError{kFileNotFound};
}

SPErr newAlias(const char* path, AliasHandle* alias) {
  constexpr const char* procedure = "AliasSuite.MacNewAliasFromCString";
  return hostCall<SPErr>(SuiteId::alias, procedure, [&] {
    destination(alias) = nullptr;
    requireFile(&destination(path));
    *alias = makeAlias(path, procedure);
  });
}

}  // namespace

const PSAliasSuite aliasSuite = {.MacNewAliasFromCString = newAlias};

}  // namespace simulator
