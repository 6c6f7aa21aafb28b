// Aliases: handles that lead to a file. A simulated one holds the file's path behind a mark.
#pragma once

#include <Carbon/Carbon.h>

#include <optional>
#include <string>

namespace simulator {

/// An alias of `path`. `maker` as in MemoryHandles::make. [any-thread]
AliasHandle makeAlias(const std::string& path, const char* maker);

/// The path behind an alias that `makeAlias` made and that is alive; none for any other handle. A
/// handle that is not alive is a misuse by `procedure`. [any-thread]
std::optional<std::string> pathOfAlias(AliasHandle alias, const char* procedure);

}  // namespace simulator
