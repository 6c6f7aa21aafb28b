// Settings of the kernel by name.
#pragma once

#include <cstddef>

extern "C" {

/// Reads the setting into `oldp` of `*oldlenp` bytes and writes how many it took there. 0, or -1
/// where there is no such setting. [any-thread]
int sysctlbyname(const char* name, void* oldp, std::size_t* oldlenp, void* newp,
                 std::size_t newlen);
}
