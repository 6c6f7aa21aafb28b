// Aliases: handles from which a file can be found. A simulated one is a fixed prefix and a path.
#pragma once

#include <Carbon/Carbon.h>

#include <optional>
#include <string>

namespace simulator {

/// Makes an alias of `path`, which need not exist. `maker` is as in MemoryHandles::make.
/// [any-thread]
AliasHandle makeAlias(const std::string& path, const char* maker);

/// The path of an alias made by `makeAlias`; nullopt for any other handle. Reports a misuse by
/// `procedure` if the handle was disposed of or never issued. [any-thread]
std::optional<std::string> pathOfAlias(AliasHandle alias, const char* procedure);

}  // namespace simulator
