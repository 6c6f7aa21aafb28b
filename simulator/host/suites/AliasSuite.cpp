// Aliases of paths.
#include <filesystem>
#include <system_error>

#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/Suites.h"
#include "simulator/macos/Aliases.h"
#include "simulator/macos/Bookmarks.h"

namespace simulator {

namespace {

// As on the platform, only an existing file has an alias.
void requireFile(const char* path) {
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) throw CallError{fnfErr};
}

SPErr newAlias(const char* procedure, const char* path, AliasHandle* alias) {
  return hostCall<SPErr>(SuiteId::alias, procedure, [&] {
    destination(alias) = nullptr;
    requireFile(&destination(path));
    *alias = makeAlias(path, procedure);
  });
}

constexpr auto kProcedures = std::to_array<Procedure<PSAliasSuite>>({
    row<"AliasSuite.MacNewAliasFromCString", &PSAliasSuite::MacNewAliasFromCString, newAlias>,
});

}  // namespace

constinit const HostSuite<PSAliasSuite> aliasSuite = suiteOf<kProcedures>();

}  // namespace simulator
