// Aliases of paths.
#include <filesystem>
#include <system_error>

#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"
#include "simulator/macos/Aliases.h"
#include "simulator/macos/Bookmarks.h"

namespace simulator {

namespace {

// As on the platform, only what exists has an alias.
void requireFile(const char* path) {
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) throw CallError{fnfErr};
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
