// Aliases of paths, and the files of items.
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "actionfiles/FilePath.h"
#include "simulator/host/model/HostCall.h"
#include "simulator/host/suites/ItemAccess.h"
#include "simulator/host/suites/Suites.h"
#include "simulator/macos/Aliases.h"
#include "simulator/macos/Bookmarks.h"
#include "simulator/macos/MemoryHandles.h"

namespace simulator {

namespace alias_suite {
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
}  // namespace alias_suite

constinit const HostSuite<PSAliasSuite> aliasSuite = suiteOf<alias_suite::kProcedures>();

FilePath fileOfAlias(Handle alias, const char* procedure) {
  constexpr std::size_t kHeaderSize = 6;
  std::string bytes = theMemoryHandles().bytes(alias, procedure);
  if (auto path = pathOfAlias(reinterpret_cast<AliasHandle>(alias), procedure)) return {*path};
  if (bytes.size() < kHeaderSize) throw CallError{paramErr};
  const auto name = actionfiles::fileNameOfAlias(bytes);
  return {name ? name->utf8 : "", std::move(bytes)};
}

FilePath fileOfBookmark(CFDataRef bookmark) {
  constexpr std::size_t kMarkSize = 4;
  if (bookmark == nullptr) throw CallError{paramErr};
  if (auto path = pathOfBookmark(bookmark)) return {*path};
  std::string bytes(reinterpret_cast<const char*>(CFDataGetBytePtr(bookmark)),
                    static_cast<std::size_t>(CFDataGetLength(bookmark)));
  if (bytes.size() < kMarkSize) throw CallError{paramErr};
  return {"", std::move(bytes)};
}

Handle aliasOf(const FilePath& file, const char* procedure) {
  if (file.bytes) return theMemoryHandles().make(*file.bytes, procedure);
  return reinterpret_cast<Handle>(makeAlias(file.path, procedure));
}

CFDataRef bookmarkOf(const FilePath& file) {
  if (!file.bytes) return makeBookmark(file.path);
  return CFDataCreate(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(file.bytes->data()),
                      static_cast<CFIndex>(file.bytes->size()));
}

}  // namespace simulator
