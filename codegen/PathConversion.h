// Conversions between paths and the two forms in which the host stores a file in a descriptor: an
// alias and a bookmark. All of them may be called on the main thread. [main-thread]
#pragma once

#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>
#include <cstdint>

/// Writes the POSIX path of the file that `alias` leads to. Where it leads nowhere, or the path
/// with its terminator takes more than `size` bytes, `path` becomes empty. Null `path`: does
/// nothing. REQUIRES: `size` > 0 unless `path` is null.
void AliasToFullPath(AliasHandle alias, char* path, std::size_t size);

/// Has the host make an alias of a POSIX path; null where it cannot. The caller disposes of it with
/// the handle suite's DisposeRegularHandle.
/// Throws the error as std::uint32_t where the host's alias suite cannot be acquired.
/// REQUIRES: `path` is not null.
void FullPathToAlias(const char* path, AliasHandle& alias);

/// Writes the path of the file that `bookmark` leads to, without asking the user and without
/// mounting a volume. Where it leads nowhere, or the path does not fit, `path` becomes empty and
/// the system log says why. Null `path`: does nothing.
/// REQUIRES: `size` > 0 unless `path` is null.
void BookmarkToFullPath(CFDataRef bookmark, char* path, std::size_t size);

/// Makes bookmark data for the file at `path`; null where there is no such file, or, with a line in
/// the system log, where `path` makes no URL, as the empty one. The caller releases the data.
/// REQUIRES: `path` is not null.
void FullPathToBookmark(const char* path, CFDataRef& bookmark);

/// Writes the path of the user's desktop folder in UTF-8 with a slash at its end. Returns 0, or the
/// parameter error 'Parm': for a null `path` or a `size` below 1, which write nothing; where path
/// and slash do not fit, `path` holding as much of them as does, terminated; where the system names
/// no such folder, `path` being empty.
int GetFullPathToDesktop(char* path, std::int32_t size);
