// Conversions between paths and the two forms in which the host stores a file in a descriptor:
// aliases and bookmarks. [main-thread]
#pragma once

#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

/// Writes the POSIX path of the file that `alias` refers to, with a terminator. `size`: the bytes
/// at `path`. If the alias cannot be resolved, or path and terminator need more than `size` bytes,
/// `path` becomes empty. Does nothing if `path` is null.
/// REQUIRES: `size` > 0 unless `path` is null.
void AliasToFullPath(AliasHandle alias, char* path, std::size_t size);

/// Sets `alias` to a new alias for the POSIX path `path`, or to null if the host cannot make one.
/// The caller disposes of it with the handle suite's DisposeRegularHandle.
/// If the host's alias suite cannot be acquired, `alias` becomes null and the error is thrown as
/// std::uint32_t. REQUIRES: `path` is not null.
void FullPathToAlias(const char* path, AliasHandle& alias);

/// The same with the type that the generated code declares and the host's suites take.
void FullPathToAlias(const char* path, Handle& alias);

/// Writes the path of the file that `bookmark` refers to, with a terminator, without user
/// interaction and without mounting a volume. `size`: the bytes at `path`. If the bookmark cannot
/// be resolved, or the path does not fit, `path` becomes empty and the system log says why. Does
/// nothing if `path` is null. REQUIRES: `size` > 0 unless `path` is null.
void BookmarkToFullPath(CFDataRef bookmark, char* path, std::size_t size);

/// The path that an alias or bookmark data hold, whether the file exists or not; nullopt if they
/// hold none. REQUIRES: they are not null.
std::optional<std::string> pathInAlias(AliasHandle alias);
std::optional<std::string> pathInBookmark(CFDataRef bookmark);

/// Sets `bookmark` to new bookmark data for the file at `path`, which the caller releases. Null if
/// the file does not exist, or if `path` is not a valid URL (e.g. empty); the latter is also
/// logged. REQUIRES: `path` is not null.
void FullPathToBookmark(const char* path, CFDataRef& bookmark);

/// Writes the path of the user's desktop folder in UTF-8, with a slash and a terminator at its end.
/// `size`: the bytes at `path`. Returns 0, or the parameter error 'Parm':
/// - if `path` is null or `size` is below 1; nothing is written;
/// - if the system has no desktop folder, or its path cannot be converted to UTF-8 or could take
///   more than 1,048,576 bytes; `path` becomes empty;
/// - if the text does not fit; `path` gets as much of it as fits, with a terminator.
int GetFullPathToDesktop(char* path, std::int32_t size);
